// Which running program a temporary file belongs to.
#pragma once

#include <QString>

namespace engine {

// A process of this computer. Its number alone is given away again, the sooner after a restart of the
// computer, so that its beginning goes with it.
struct Prozess {
    qint64 nummer = 0;
    // In clock ticks since the computer started (field 22 of /proc/<number>/stat); 0 where it cannot be read.
    quint64 beginn = 0;
    bool operator==(const Prozess&) const = default;
};

Prozess eigenerProzess();

// True also when it cannot be told.
bool laeuft(const Prozess& prozess);

// "<computer>-<number>-<beginning>", as it stands in the names of temporary files: on a shared drive nobody
// takes those of a program that runs elsewhere for refuse.
QString prozesskennung(const Prozess& prozess);

// A regular expression for it, with a group for each of the two numbers; other computers' do not fit.
QString prozessmuster();

}  // namespace engine

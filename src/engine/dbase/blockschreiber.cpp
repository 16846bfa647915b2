// Writes a file in large blocks.
#include "engine/dbase/blockschreiber.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>

namespace dbase {
namespace {

constexpr qsizetype kBlock = 1 << 20;

}  // namespace

Blockschreiber::Blockschreiber(const QString& pfad, QString name)
    : griff_(::open(QFile::encodeName(pfad).constData(), O_WRONLY | O_CLOEXEC)), name_(std::move(name)) {
    if (!griff_.offen()) engine::systemfehler(name_, QStringLiteral("geschrieben"));
    puffer_.reserve(kBlock + (1 << 16));
}

void Blockschreiber::anhaengen(const char* daten, qint64 anzahl) {
    puffer_.append(daten, anzahl);
    if (puffer_.size() >= kBlock) leeren();
}

void Blockschreiber::auffuellen(char byte, qint64 anzahl) {
    puffer_.append(anzahl, byte);
}

void Blockschreiber::leeren() {
    engine::ganzSchreiben(*griff_, puffer_.constData(), puffer_.size(), name_);
    puffer_.resize(0);
}

void Blockschreiber::anfangErsetzen(const QByteArray& daten) {
    leeren();
    if (::lseek(*griff_, 0, SEEK_SET) != 0) engine::systemfehler(name_, QStringLiteral("geschrieben"));
    engine::ganzSchreiben(*griff_, daten.constData(), daten.size(), name_);
}

void Blockschreiber::abschliessen() {
    leeren();
}

}  // namespace dbase

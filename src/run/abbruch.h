// What every run does when it was stopped.
#pragma once

#include <QString>
#include <functional>

// Rolls back, halts the progress and lets the run clear away with `aufraeumen`, which passes over its
// failures. Meanwhile the information line shows `text` and there is no second abort.
void LaufAbbrechen(const QString& text, const std::function<void()>& aufraeumen);

// Ends a whole operation: closes with `schliessen` what is open, drops every table that was made, brings back
// what was to be overwritten, does `danach`, and goes to frame 3.
void VorgangAbbrechen(
    const std::function<void()>& schliessen = [] {}, const std::function<void()>& danach = [] {});

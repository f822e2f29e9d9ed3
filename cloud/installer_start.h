// Starting what was downloaded.
#pragma once

#include <QString>

#include <functional>

class Clock;

// Starts the program at `path` with `start`, which says whether that worked. A
// virus scanner may hold a program that is new: what fails is tried again for
// three seconds, during which the calling thread waits, and logged when it
// never works. Any thread.
void startInstaller(const QString &path, Clock &clock,
                    const std::function<bool(const QString &path)> &start);

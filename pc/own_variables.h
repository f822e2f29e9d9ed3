// Variables of the environment that are meant for this process alone: libraries
// read them, and Steam, games and adb, which use the same libraries, shall not
// find them.
#pragma once

#include <QByteArray>
#include <QProcessEnvironment>

namespace own_variables {

// Sets a variable for this process: qgetenv() and all that is made of it find it,
// also for later windows; programs that we start do not. The value has no
// letters beyond ASCII. Before any other thread is started; nobody else changes
// the environment later, which might undo it.
void set(const char *name, const QByteArray &value);

// Has this process do without a variable that it has inherited; programs that we start
// find it. When, as above.
void hide(const char *name);

// What a QProcess is to be given as its environment. Any thread.
QProcessEnvironment forChildren();

} // namespace own_variables

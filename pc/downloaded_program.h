// What Windows does about programs that came from the net.
#pragma once

#include <QString>

namespace downloaded_program {

// Notes beside the file that it came from the net, so that the system looks into it
// before it is started; `from` is the address. False where the disk keeps no such
// note. Any thread.
bool mark(const QString &path, const QString &from);

// Opens the program, or the package, as a double click does: the system checks it,
// asks the user where it has doubts, and tells him of a failure itself. Waits until
// he has answered. False when the file is not there, when somebody writes to it, or
// without a thread to do it on: then nobody was asked. Nobody changes the file meanwhile.
// Any thread.
bool open(const QString &path);

// Whose valid signature the file has; empty when it has none. Takes a moment; any
// thread.
QString signerOf(const QString &path);

} // namespace downloaded_program

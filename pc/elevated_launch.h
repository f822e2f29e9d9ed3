// Starting a program with administrator rights.
#pragma once

#include <QString>

namespace elevated_launch {

// Starts `program` in the folder `workingDir`, after Windows has asked the
// user for the rights. Returns the shell's result code: above 32 when the
// program was started. Waits for the user's answer, not for the program. GUI
// thread.
qint64 start(const QString &program, const QString &workingDir);

} // namespace elevated_launch

// Starting a program with administrator rights.
#pragma once

#include <QString>

#include <functional>

namespace elevated_launch {

// Whether a program may be started; `signer` is whose valid signature it has, empty
// when it has none.
using MayStart = std::function<bool(const QString &signer)>;

// The shell's result code for rights that were refused, also by `mayStart`.
constexpr qint64 refused = 5;

// Starts `program` in the folder `workingDir`, after Windows has asked the
// user for the rights. Returns the shell's result code: above 32 when the
// program was started. Waits for the user's answer, not for the program. GUI
// thread.
//
// `mayStart` is asked before, unless there is no such program or somebody writes to
// it. From before that until the program has started nobody can change it.
qint64 start(const QString &program, const QString &workingDir, const MayStart &mayStart);

} // namespace elevated_launch

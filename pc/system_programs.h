// Where Windows' own programs are.
#pragma once

#include <QString>

// A program that is looked for may be anybody's: the working folder and the folders of
// the search path come into question as well, in which others may write.
namespace system_programs {

// The full path of one of Windows' own programs that we start ("cmd", "explorer",
// "netsh", "powershell", "taskkill"; also with ".exe"), whether or not it is there.
// Any other name, or path, stays as it is. Any thread.
QString pathOf(const QString &name);

// For tests: they are looked for in `folder` instead, all of them; an empty one gives
// the system's back. While no other thread asks.
void lookIn(const QString &folder);

} // namespace system_programs

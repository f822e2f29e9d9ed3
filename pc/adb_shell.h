// The system's command interpreter, which runs adb's command lines. Any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace adb_shell {

struct Call
{
    QString program;
    QStringList arguments;
};

// What to start so that the interpreter runs `line`: commands joined by "&&",
// the program of each looked for in the working folder first and then on the
// search path.
Call call(const QString &line);

// `path`, one word of a line (adb_rules::isWord()), so that the interpreter
// reads it as it is.
QString word(const QString &path);

// Output with CR LF at the ends of its lines.
QByteArray withWindowsLineEnds(const QByteArray &output);

} // namespace adb_shell

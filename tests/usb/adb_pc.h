// A PC on which the stand-in adb is real: its processes, its search path.
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

// On Linux a simulated PC that shows the real processes, on Windows the PC
// itself.
class AdbPc
{
public:
    AdbPc();
    // Ends every adb of this PC.
    ~AdbPc();

    // Where the command interpreter looks for adb.
    void setSearchPath(const QString &folder);
    // A copy of the stand-in, as adb.exe in a folder that is made.
    static QString install(const QString &folder);
    // Starts the server of an installed one.
    bool startServer(const QString &program);
    bool serverRuns() const;
    // How many processes of adb there are, the server among them.
    static int processes();

    void plug(const QByteArray &devices) const;
    // Lets every call hang from now on, or no longer.
    void hang(bool hangs) const;
    // Each call so far: "PROGRAM arguments...", arguments in brackets.
    QStringList calls() const;
    // What is asked of the server itself; not counted among the calls.
    QString ask(const QStringList &arguments) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

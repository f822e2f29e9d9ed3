// A child process that ends together with everything it has started.
#pragma once

#include <QProcess>

#include <memory>

// A QProcess whose program does its work through programs that it starts, as a
// command interpreter does: QProcess::kill() would end the interpreter alone.
//
// What belongs together is what was started between startGroup() and the end of
// the program. On Windows that is a job, which ends with this process as well,
// however that ends. What outlives the program is let go of: a server that the
// command brought up may by then serve others. (One that a command has brought
// up which is still at work ends with it: it is as old as that command, and on
// Windows nothing tells it from the rest. Who needs it starts it anew.)
// Elsewhere it is a process group, which a server leaves by itself.
//
// On the thread that made it.
class GroupedProcess : public QProcess
{
public:
    explicit GroupedProcess(QObject *parent = nullptr);
    ~GroupedProcess() override;

    // As start(), which refuses as long as a program runs.
    void startGroup(const QString &program, const QStringList &arguments);
    // Gives the order to end the program and whatever it has started, without
    // asking them; finished() comes as ever. Nothing when no program runs.
    void endGroup();

protected:
    void setupChildProcess() override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

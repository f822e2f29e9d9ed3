// The streaming server's process, as SimHost runs it.
#pragma once

#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>

// One process at a time. It dies with the thread that started it, also when
// that is killed. Everything but runningPid() on one thread.
class ServerProcess
{
public:
    ServerProcess();
    ~ServerProcess(); // as end()

    // Ends the one before, if it still runs. False when the program cannot be
    // started.
    bool begin(const QString &program, const QStringList &arguments);
    // Asks it to end and waits; one that does not listen is killed.
    void end();

    // 0 when none runs.
    qint64 runningPid() const { return pid_; }

    ServerProcess(const ServerProcess &) = delete;
    ServerProcess &operator=(const ServerProcess &) = delete;

private:
    class Child;
    std::unique_ptr<Child> child_;
    std::atomic<qint64> pid_{0};
};

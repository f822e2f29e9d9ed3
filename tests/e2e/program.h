// The real program in a home of its own on a simulated PC.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>

// How many times faster than real time the program lives in these tests. Less
// where the program itself is slower, so that it keeps up with its PC.
#ifdef KOLM_SLOW_PROGRAM
constexpr int testSpeed = 5;
#else
constexpr int testSpeed = 20;
#endif

class Program
{
public:
    // Lays out the scenario's home and working folder below `dir`.
    Program(const QString &dir, const QString &scenario);
    ~Program();

    // Set before start().
    QProcessEnvironment environment;
    QStringList arguments;

    // Where the standard output goes instead of here; before start().
    void redirectOutput(const QString &path) { process_.setStandardOutputFile(path); }

    bool start();
    // Waits until it has ended by itself; its exit code, or -1.
    int wait(int milliseconds = 60000);
    // Waits until the standard output holds `text`, `times` times.
    bool waitForOutput(const QString &text, int times = 1, int milliseconds = 60000);
    // With SIMPC_DIRECTED: has it do what the line says and waits until that is
    // done; what it answers, or why it could not, or empty when it says nothing.
    QString tell(const QString &line, int milliseconds = 60000);
    // As above with several lines, which it does one right after the other, and
    // their answers. None is waited for before `meanwhile` has run.
    QStringList tellAll(const QStringList &lines, const std::function<void()> &meanwhile = {},
                        int milliseconds = 60000);
    // Asks it to close like its close button, and waits.
    int close();
    // Sends it the signal; nothing when it has ended.
    void signal(int number);
    void kill();

    QString output();       // standard output so far
    QString errors();       // standard error so far
    QStringList progress(); // the lines of the progress, without their times

    QString home() const { return home_; }
    QString work() const { return work_; }
    QString dataDir() const;
    QByteArray read(const QString &path) const;
    QJsonObject json(const QString &path) const;
    QString log() const;       // the log of this run
    QString serverLog() const; // what the streaming server sent and got
    QStringList journal();     // what the program did to the PC, without times
    QString screenshot() const;

    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    qint64 pid() const { return process_.processId(); }

private:
    void collect();

    QString dir_;
    QString home_;
    QString work_;
    QProcess process_;
    QByteArray output_;
    QByteArray errors_;
};

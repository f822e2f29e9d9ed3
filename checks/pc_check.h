// Whether this PC can stream: what it is beside what is needed, the verdict on
// its hardware, and who holds the ports.
#pragma once

#include <QString>
#include <QStringList>

class SystemInfo;

// GUI thread.
class PcCheck
{
public:
    explicit PcCheck(const SystemInfo &system) : system_(system) {}

    // Compares the PC with what is needed: fills the two lists below.
    void compare();
    // The three columns (this PC, minimum, recommended) and the short summary
    // of processor and graphics card, as compact JSON; "[]" before compare().
    QString systemInfo() const { return systemInfo_; }
    QString simplySystemInfo() const { return simplySystemInfo_; }

    // Keeps the names of graphics card and processor for the questions below;
    // before that they are empty.
    void rememberNames();
    QString gpuName() const { return gpuName_; }
    QString cpuName() const { return cpuName_; }

    struct Verdict
    {
        bool canRun = false;
        bool driverTooOld = false; // only looked at when it can run
    };
    // Asks for system version, rules and drivers anew.
    Verdict judge() const;

    // Whether a system of this version can stream.
    static bool isNewEnough(const QString &version);
    // Whether hardware of this score can stream.
    static bool isEnough(int score);

    // The programs that hold the streaming server's ports and are no part of
    // streaming, by name, as the system lists them.
    static QStringList portBlockers();
    // Leaves out the names that belong to streaming itself.
    static QStringList withoutOurOwn(const QStringList &names);

private:
    const SystemInfo &system_;
    QString systemInfo_ = QStringLiteral("[]");
    QString simplySystemInfo_ = QStringLiteral("[]");
    QString gpuName_;
    QString cpuName_;
};

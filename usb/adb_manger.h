// The headset on the USB cable, reached through adb.
#pragma once

#include "base/long_wait.h"
#include "usb/adb_rules.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

class Clock;
class GroupedProcess;
class UsbWatcher;

// Looks for headsets when told to, sets up the ports between them and this PC,
// and undoes that at the end. What adb's output means is decided by
// adb_rules; here it is only carried out.
//
// One adb command runs at a time; one that is wanted while another still runs
// is dropped. One that hangs is ended when it is given up, so that the next
// question is really asked.
//
// Lives on the GUI thread and never waits there for adb, but killAdb() waits
// for the processes that it ends, and the destructor a few seconds at most.
class AdbManger : public QObject
{
    Q_OBJECT

public:
    struct Dependencies
    {
        Clock &clock;
        // Starts a command line in a folder (empty: this program's own) in
        // place of the command interpreter; its output goes to take().
        std::function<void(const QString &line, const QString &folder)> start = {};
        // With it: ends the command at work, if there is one.
        std::function<void()> end = {};
        // Of an adb that takes long to be ended, which blocks: "adb".
        long_wait::Tell tell = {};
        // As setBeforeForwardsGo(); empty: nobody.
        std::function<void(const QStringList &)> beforeForwardsGo = {};
    };

    // Decides which adb to use and begins to watch for headsets.
    explicit AdbManger(const Dependencies &dependencies, QObject *parent = nullptr);
    // Ends adb, or when its server had been running before, only takes back
    // the ports.
    ~AdbManger() override;

    static AdbManger &instance();

    // Told before adb is ended, or all forwards are taken back, which of them are not
    // ours ("serial local remote"), as far as adb has said. To be set before the
    // first instance.
    using ForeignForwards = std::function<void(const QStringList &)>;
    static void setBeforeForwardsGo(ForeignForwards tell);

    // Ends every adb process of this PC.
    void killAdb();

    // Runs one command line in which adb is called "adb".
    void runAdb(const QString &command);

    // How it stands: what is waited for, whose adb it is, what was found.
    const adb_rules::AdbState &adbState() const { return now_; }

    // What a chunk of standard output makes it do.
    void take(const QByteArray &output);

public slots:
    // Looks once for attached headsets.
    void checkDevice();

signals:
    // Something was plugged in or out; look for headsets.
    void checkdevice();
    // A headset does not answer; the user should plug it in again.
    void showAdbTipToast();
    // A headset was attached (`connect`, with its serial) or is gone.
    void deviceConnect(bool connect, QString sn);

private:
    void chooseAdb();
    void useAdb(const QString &path, const QString &folder);
    void start(const QString &line);
    void endCommand();
    bool isOverdue() const;
    void setUpPorts();
    void dropCommand();
    void takePortsBack();
    void tellForwards();
    void onOutput();

    Clock &clock_;
    const std::function<void(const QString &, const QString &)> start_;
    const std::function<void()> end_;
    const long_wait::Tell tell_;
    GroupedProcess *process_;
    qint64 startedAt_ = 0; // the command at work, by the clock
    const std::function<void(const QStringList &)> beforeForwardsGo_;
    QStringList foreignForwards_; // that adb has listed and that nobody was told of
    adb_rules::AdbState now_;
    QString adbPath_; // empty while the adb on the search path is used
    std::unique_ptr<UsbWatcher> watcher_;
};

// A manager of adb whose command lines are noted down, and what adb says to them.
#pragma once

#include "base/manual_clock.h"
#include "usb/adb_manger.h"

#include <QStringList>

#include <memory>

inline const QString headsetPath =
    QStringLiteral(R"(\\?\usb#vid_05c6&pid_903a#pa7910#{a5dcbf10-6530-11d2-901f-00c04fb951ed})");
inline const QString version = QStringLiteral("adb --version");
inline const QString list = QStringLiteral("adb devices && adb forward --list");
inline const QString forward =
    QStringLiteral("adb forward tcp:9943 tcp:9943 && adb forward tcp:9944 tcp:9944 && "
                   "adb reverse tcp:50000 tcp:50000 && adb reverse tcp:50001 tcp:50001");
inline const QString listPorts = QStringLiteral("adb forward --list && adb reverse --list");
inline const QString removePorts =
    QStringLiteral("adb forward --remove-all && adb reverse --remove-all");
inline const QByteArray noDevice = "List of devices attached\r\n\r\n";

inline QByteArray device(const QByteArray &serial)
{
    return "List of devices attached\r\n" + serial + "\tdevice\r\n\r\n";
}

// A manager whose command lines are noted down instead of run.
struct Adb
{
    explicit Adb(ManualClock &time) : clock(time)
    {
        QObject::connect(manager.get(), &AdbManger::deviceConnect,
                         [this](bool connect, const QString &serial) {
                             said << (connect ? "connect " : "gone ") + serial;
                         });
        QObject::connect(manager.get(), &AdbManger::showAdbTipToast, [this] { said << "tip"; });
    }

    // Brings the version query to its end.
    void settle()
    {
        manager->take("Android Debug Bridge version 1.0.41\r\n");
        clock.advance(600);
        lines.clear();
    }
    // A check with its question and the answers to it.
    void check(const QByteArray &devices, const QByteArray &forwards)
    {
        manager->checkDevice();
        clock.advance(800);
        manager->take(devices);
        manager->take(forwards);
    }

    ManualClock &clock;
    QStringList lines;
    QStringList folders;
    QStringList said;
    QList<QStringList> lost; // the forwards of others, each time before they went
    std::unique_ptr<AdbManger> manager = std::make_unique<AdbManger>(
        AdbManger::Dependencies{clock,
                                [this](const QString &line, const QString &folder) {
                                    lines << line;
                                    folders << folder;
                                },
                                {},
                                {},
                                [this](const QStringList &forwards) { lost << forwards; }});
};

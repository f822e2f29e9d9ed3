// The headset on the USB cable, as adb reports it.
#pragma once

#include "usb/adb_rules.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>

class AdbManger;

// Hands on what adb reports, and keeps it whatever the link is: adb itself
// speaks only of what changes. GUI thread.
class UsbHeadset : public QObject
{
    Q_OBJECT

public:
    // `adb` is called when adb is needed, no sooner: once it is there, it
    // watches the cable. It outlives this object.
    explicit UsbHeadset(std::function<AdbManger &()> adb, QObject *parent = nullptr);

    // Listens to adb from now on; once is enough.
    void watch();
    // Lets adb look once for headsets, and says how adb stands now; the answer
    // takes about a second.
    adb_rules::AdbState checkDevices();
    // Ends every adb process; that blocks until they are gone.
    void stop();

    // The serial that adb reported last; nothing while no headset is attached,
    // and before the first report.
    std::optional<QString> serial() const { return serial_; }

signals:
    void attached(const QString &serial);
    void detached();
    // It does not answer; the user should plug it in again.
    void unreachable();

private:
    void take(bool connect, const QString &serial);

    std::function<AdbManger &()> adb_;
    bool watching_ = false;
    std::optional<QString> serial_;
};

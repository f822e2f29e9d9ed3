// The headset on the USB cable, reached through adb.
#pragma once

#include <QObject>
#include <QString>

// Lives on the GUI thread.
class AdbManger : public QObject
{
    Q_OBJECT

public:
    explicit AdbManger(QObject *parent = nullptr);

    static AdbManger &instance();

    // Ends every adb process of this PC.
    void killAdb();

public slots:
    // Looks once for attached headsets. No adb is driven yet: no headset is
    // ever found.
    void checkDevice();

signals:
    // Something was plugged in or out; look for headsets.
    void checkdevice();
    // A headset does not answer; the user should plug it in again.
    void showAdbTipToast();
    // A headset was attached (`connect`, with its serial) or is gone.
    void deviceConnect(bool connect, QString sn);
};

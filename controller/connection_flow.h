// How a headset gets connected, lost, found again and let go.
#pragma once

#include "link/headset_link.h"

#include <QObject>
#include <QStringList>

class Clock;
class ConfigManager;
class SystemInfo;
class VRListModel;

// What is known of the headset and what the user wants of it. GUI thread; a
// connect blocks it for 200 ms.
//
// States in wireless mode: no headset yet, waiting for the user's choice among
// several, connecting, connected, lost (reconnects by itself), disconnected by
// the user (does not).
class ConnectionFlow : public QObject
{
    Q_OBJECT

public:
    ConnectionFlow(Clock &clock, ConfigManager &config, SystemInfo &system, VRListModel &model,
                   QObject *parent = nullptr);

    // The link to the streaming server, once there is one. Until then nothing
    // is sent and no headset is known. It outlives this object.
    void setLink(HeadsetLink *link) { link_ = link; }

    // Sends the question that the next look answers; 200 ms later the answer
    // should be there. False when this turn is to be left out.
    bool ask(bool wired);

    // Takes over what the server reported. The wireless look connects, picks
    // up and reconnects headsets by itself and shows the list; the wired one
    // leaves that to showWiredList().
    void lookWireless();
    void lookWired(bool steamVRRunning);
    void showWiredList();

    // Connects the headset or lets the current one go.
    void connectHeadset(const QString &name, const QString &address, bool connect);

    // adb found a headset on USB, or lost it.
    void usbHeadset(const QString &serial);

    // Wireless mode begins: the first-contact rule applies again.
    void forgetHeadset();

    QString headsetSerial() const { return serial_; }
    bool isConnected() const { return connected_; }
    bool disconnectedByUser() const { return userDisconnected_; }
    QString reconnectSerial() const { return reconnectSerial_; }
    QString currentSerial() const { return currentSerial_; }
    void setCurrentSerial(const QString &serial) { currentSerial_ = serial; }
    QStringList recentHeadsets() const { return recent_; }
    void setRecentHeadsets(const QStringList &serials) { recent_ = serials; }

    HeadsetLink *link() const { return link_; }

signals:
    void connectionChanged();
    void listShown(bool isConnected, bool disconnectedByUser);
    void severalHeadsets();
    // The stored settings of the connecting headset are current now.
    void settingsLoaded();
    // Time to look again (1000 ms after a connect or disconnect).
    void lookAgain();

private:
    void firstContact(const HeadsetList &headsets);
    void followHeadset(const HeadsetList &headsets, const QString &previous);
    void makeCurrent(const QString &serial);

    Clock &clock_;
    ConfigManager &config_;
    SystemInfo &system_;
    VRListModel &model_;
    HeadsetLink *link_ = nullptr;

    QString serial_;  // of the connected headset
    QString address_; // of the connected headset
    bool connected_ = false;
    bool skipNext_ = false;
    bool userDisconnected_ = false;
    bool firstContactHandled_ = false;
    QString reconnectSerial_;
    QStringList recent_;
    QString currentSerial_; // last reported by the link
};

// How a headset gets connected, lost, found again and let go.
#pragma once

#include "config/link_kind.h"
#include "controller/connection_state.h"
#include "link/headset_link.h"

#include <QObject>
#include <QStringList>

class Clock;
class ConfigManager;
class SystemInfo;
class VRListModel;

// What is known of the headset and what the user wants of it. Where that puts
// the connection is for connection::stateOf() to say. GUI thread; a connect
// blocks it for 200 ms.
class ConnectionFlow : public QObject
{
    Q_OBJECT

public:
    ConnectionFlow(Clock &clock, ConfigManager &config, SystemInfo &system, VRListModel &model,
                   QObject *parent = nullptr);

    // The link to the streaming server, once there is one. Until then nothing
    // is sent and no headset is known. It outlives this object.
    void setLink(HeadsetLink *link) { link_ = link; }

    // Asks the server for what the next step takes over; 200 ms later the
    // answer should be there. False when this turn is to be left out.
    [[nodiscard]] bool requestReport(LinkKind kind);

    // Takes over what the server reported. The wireless step connects, picks
    // up and reconnects headsets by itself and shows the list; the wired one
    // leaves that to showWiredList().
    void stepWireless();
    void stepWired(bool steamVRRunning);
    void showWiredList();

    // Connects the headset or lets the current one go.
    void connectHeadset(const QString &name, const QString &address, bool connect);

    // adb found a headset on USB, or lost it.
    void usbAttached(const QString &serial);
    void usbDetached();

    // Wireless mode begins: the first-contact rule applies again.
    void forgetHeadset();

    // The link or SteamVR has changed: nothing that was reported before says
    // anything of the connection of the moment.
    void awaitReport();
    // The program that is connected as the streaming server, "vrserver.exe (4711)" with
    // the number of its process; empty when none is, or the PC does not say.
    [[nodiscard]] QString serverProgram() const;
    // What the server reported since then, and what the user wants.
    [[nodiscard]] connection::Facts facts(LinkKind kind) const;

    // Of the headset that is connected, or on the cable.
    QString connectedSerial() const { return connectedSerial_; }
    bool isConnected() const { return connected_; }
    bool disconnectedByUser() const { return userDisconnected_; }
    // Of the headset that is to be connected again when it shows up.
    QString wantedSerial() const { return wantedSerial_; }
    // Last reported or asked for; its model's settings are the current ones.
    QString knownSerial() const { return knownSerial_; }
    QStringList recentHeadsets() const { return recent_; }
    void setRecentHeadsets(const QStringList &serials) { recent_ = serials; }

signals:
    // One that was not known yet is among the recent headsets.
    void headsetAdded();
    void connectionChanged();
    void listShown(bool isConnected, bool disconnectedByUser);
    void severalHeadsets();
    // The stored settings of the connecting headset are current now.
    void settingsLoaded();
    // The server has been asked between two polls (1000 ms after a connect or
    // disconnect): time for a step.
    void stepDue();

private:
    void firstContact(const HeadsetList &headsets);
    void followHeadset(const HeadsetList &headsets, const QString &previous);
    void makeCurrent(const QString &serial);
    void takeUsbHeadset(const QString &serial);
    connection::Facts withWireless(connection::Facts facts) const;

    Clock &clock_;
    ConfigManager &config_;
    SystemInfo &system_;
    VRListModel &model_;
    HeadsetLink *link_ = nullptr;

    QString connectedSerial_;
    QString connectedAddress_;
    bool connected_ = false;
    bool skipNext_ = false;
    bool userDisconnected_ = false;
    bool firstContactHandled_ = false;
    bool userAsked_ = false;         // which of several it shall be, and no answer yet
    bool wishIsOfThisLink_ = false;  // the wanted serial, or that none is wanted
    bool reportTaken_ = false;       // a step took one over since awaitReport()
    bool wasConnectedByUsb_ = false; // since awaitReport()
    QString wantedSerial_;
    QStringList recent_;
    QString knownSerial_;
};

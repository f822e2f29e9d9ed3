import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtHeron.Window 1.0
import ORBManager 1.0
import "common"

// Steam and SteamVR: are they there, do they run, and what brings them up.
Card {
    id: page

    // Both run.
    readonly property bool ready: checked && orb.haslaunchSteam && orb.haslaunchSteamVR
    // Whether the controller had a look yet; before that its values mean nothing.
    property bool checked: false

    function check() {
        checked = true;
    }

    title: qsTr("Steam软件")
    status: !checked ? qsTr("检测中") : ready ? qsTr("已就绪") : qsTr("请按以下步骤操作")
    mark: !checked ? StatusMark.Busy : ready ? StatusMark.Done : StatusMark.Attention
    foot: LinkText {
        objectName: "steamHelp"
        text: qsTr("Steam VR检测不到设备？")
        onClicked: orb.gotoWeb(ORBManagerCLS.SteamHelperUrl)
    }

    Illustration {
        source: "qrc:/res/image/orb_art_steam.png"
        Layout.fillWidth: true
    }
    SteamItem {
        id: steam
        objectName: "steamItem"
        label: phase === SteamItem.Missing ? qsTr("安装Steam软件") : qsTr("Steam软件")
        phase: !page.checked ? SteamItem.Unknown
             : orb.haslaunchSteam ? SteamItem.Running
             : orb.steamState === ORBManagerCLS.NoneSteam ? SteamItem.Missing : SteamItem.Stopped
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: 7 * utils.grid
        Layout.maximumHeight: implicitHeight
        onActivated: {
            if (phase === SteamItem.Missing)
                orb.gotoWeb(ORBManagerCLS.SteamUrl);
            else
                orb.launchSteam();
        }
    }
    SteamItem {
        id: steamVR
        objectName: "steamVRItem"
        primary: steam.phase === SteamItem.Running
        label: phase === SteamItem.Missing ? qsTr("安装Steam VR软件") : qsTr("Steam VR软件")
        phase: !page.checked ? SteamItem.Unknown
             : orb.haslaunchSteamVR ? SteamItem.Running
             : orb.steamState === ORBManagerCLS.NoneSteam
               || orb.steamState === ORBManagerCLS.NoneSteamVR ? SteamItem.Missing : SteamItem.Stopped
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: 7 * utils.grid
        Layout.maximumHeight: implicitHeight
        onActivated: {
            if (orb.steamState === ORBManagerCLS.NoneSteam)
                orb.gotoWeb(ORBManagerCLS.SteamUrl);
            else
                orb.launchSteam(true); // Steam installs it when it is missing
        }
    }
    Item {
        Layout.fillHeight: true
    }

    // The controller tells at once whether Steam is installed, but looks whether
    // it runs 1000 ms after the link type was chosen. When it finds nothing new
    // it says nothing, so silence is an answer too.
    ClockTimer {
        objectName: "steamCheckTimer"
        interval: 1500
        running: page.visible && !page.checked
        onTriggered: page.check()
    }
    Connections {
        target: orb
        function onHaslaunchSteamChange() { page.check(); }
        function onHaslaunchSteamVRChange() { page.check(); }
    }
}

import QtQuick 2.15
import QtHeron.Window 1.0
import ORBManager 1.0
import "."
import "common"
import "windows"

FramelessWindow {
    id: root

    readonly property int fixedWidth: 1360
    readonly property int fixedHeight: 875
    property alias ispullDown: cards.pulledDown
    readonly property string currentLanguage: Qt.locale().name.split("_")[0]
    readonly property QtObject updater: typeof orbupdate === "undefined" ? null : orbupdate
    readonly property QtObject stages: typeof orbstages === "undefined" ? null : orbstages
    readonly property QtObject checks: typeof orbchecks === "undefined" ? null : orbchecks
    readonly property string windows: "qrc:/qml/windows/"
    property bool leaving: false

    function showToast(str, duration) {
        toast.announce(str, duration || 2000);
    }

    function showTips(icon, tips) {
        banner.show(icon, tips);
    }

    function showSubWin() {
        dialogs.show();
    }

    function checkWin() {
        return dialogs.isBlocked();
    }

    // Shows another dialog, unless a blocking one is read. Says whether it did.
    function openDialog(page, properties) {
        return dialogs.open(page, properties);
    }

    function askToSwitch(wired) {
        openDialog(windows + "ConfirmPage.qml",
                   { text: wired ? qsTr("确定切换为无线串流") : qsTr("确定切换为有线串流") });
    }

    function switchLink() {
        orb.reportstreamMode(orb.wired, true);
        orb.wired = !orb.wired;
    }

    function closeAtOnce() {
        dialogs.close();
        close();
        // A toast may still be there, which would be the last window.
        Qt.quit();
    }

    function leave() {
        if (leaving)
            return;
        leaving = true;
        dialogs.close();
        // Sends the last reports, and meanwhile the windows still work.
        orb.closeApp();
        closeAtOnce();
    }

    title: qsTr("串流助手")
    width: fixedWidth
    height: fixedHeight
    color: "transparent"
    titleBar: titleRow

    onWidthChanged: {
        if (width !== fixedWidth) {
            width = fixedWidth;
            height = fixedHeight;
        }
    }
    onCloseAll: leave()
    Component.onCompleted: {
        titleRow.handles.forEach(item => addIgnore(item));
        selectMode.visible = !orb.isHideSelectPage();
        // Not before it has its size: the system places it by that. Seen before the
        // PC is asked what may take long.
        showNow();
        orb.checkPortUsage();
        cards.check();
    }

    Utils {
        id: utils
    }

    Rectangle {
        objectName: "window"
        anchors.fill: parent
        color: utils.orb_backgroundcolor

        TitleRow {
            id: titleRow
            objectName: "titleRow"
            width: parent.width
            height: 90
            title: root.title
            versionText: root.updater ? root.updater.version() : ""
            chinese: root.currentLanguage === "zh"
            settingsOffered: !selectMode.visible
            onHelpWanted: orb.gotoWeb(ORBManagerCLS.UserHelperUrl)
            onFeedbackWanted: root.openDialog(root.windows + "FeedbackPage.qml")
            onSettingsWanted: root.openDialog(root.windows + "SettingPage.qml")
            onMinimiseWanted: root.showMinimized()
            onCloseWanted: root.leave()
        }
        Banner {
            id: banner
            objectName: "banner"
            anchors {
                top: titleRow.bottom
                left: parent.left
                right: parent.right
                leftMargin: utils.margin
                rightMargin: utils.margin
            }
            visible: wanted && !selectMode.visible
            connected: cards.connected
            complete: cards.ready
        }
        CardSheet {
            id: cards
            width: root.fixedWidth
            height: root.fixedHeight
            visible: !selectMode.visible
            above: titleRow.height + (banner.visible ? banner.height : 0)
            // The same place, with the banner and without.
            drawerHeight: banner.visible ? 488 : 488 + 56
            stages: root.stages
            checks: root.checks
            onMoreWanted: root.openDialog(root.windows + "SystemInfoPage.qml")
            onToast: root.showToast(text)
            onSwitchWanted: root.askToSwitch(wired)
        }
        SelectModePage {
            id: selectMode
            objectName: "selectMode"
            x: utils.margin
            anchors.top: titleRow.bottom
            anchors.bottom: parent.bottom
            width: parent.width - 2 * utils.margin
            visible: false
            focus: visible
        }
        DialogHost {
            id: dialogs
            anchors.fill: parent
            owner: root
            reachable: Qt.rect(titleRow.exitsAt, 0, width - titleRow.exitsAt, titleRow.height)
            middle: Qt.point(root.fixedWidth / 2, 440)
            blockingPages: ["UsePortProcessTips.qml", "NetworkSetting.qml", "UpdateGpuDriverTips.qml"]
                           .map(file => root.windows + file)
            // Nobody has to choose a headset any more.
            settled: orb.wired || cards.connected
            asks: root.visible && !root.leaving
            onAccepted: root.switchLink()
            onToast: root.showToast(text, duration)
            onCloseMain: root.closeAtOnce()
            // Leaving may take seconds in which the dialog's place is wanted: not
            // before it has done what it is doing.
            onLeaveProgram: Qt.callLater(root.leave)
        }
    }

    // A network that is slow to answer is worth a word.
    ClockTimer {
        objectName: "leaveTimer"
        interval: 500
        running: root.leaving && root.visible
        onTriggered: root.openDialog(root.windows + "WaitPage.qml", { text: qsTr("正在退出"), limit: 0 })
    }
    // Whoever plays does not look at it, and the game needs the graphics card.
    Rest {
        objectName: "rest"
        window: root
        allowed: cards.connected
    }
    Toast {
        id: toast
        objectName: "toast"
        parentWin: root
        spot: Qt.point(root.fixedWidth / 2, 400)
    }

    Connections {
        target: orb
        function onShowToast(tips, duration) { root.showToast(tips, duration); }
        function onShowPowerTip() { root.openDialog(root.windows + "PowerDownPage.qml"); }
        // It asks once a run.
        function onShowMoreHMD() { dialogs.ask(root.windows + "MoreSettingPage.qml"); }
        function onShowNetWorkSetting() { root.openDialog(root.windows + "NetworkSetting.qml"); }
        function onShowUseProtPage(names) {
            root.openDialog(root.windows + "UsePortProcessTips.qml", { names: names });
        }
        function onShowUpdateGPUPage() {
            root.openDialog(root.windows + "UpdateGpuDriverTips.qml");
        }
        function onCloseExe() { root.closeAtOnce(); }
    }
    Connections {
        target: root.updater
        function onUpdateSignal(note, isForce) {
            const page = root.windows + "UpdatePage.qml";
            if (root.openDialog(page, { note: note, isForce: isForce }) && isForce)
                orb.stopSteam();
        }
    }
    Connections {
        target: root.checks
        function onPageWanted(page) { root.openDialog(root.windows + page + ".qml"); }
    }
}

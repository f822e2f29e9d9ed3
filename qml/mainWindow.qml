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
    property bool ispullDown: false
    readonly property string currentLanguage: Qt.locale().name.split("_")[0]
    readonly property var updater: typeof orbupdate === "undefined" ? null : orbupdate
    readonly property var road: typeof orbroad === "undefined" ? null : orbroad
    readonly property var checks: typeof orbchecks === "undefined" ? null : orbchecks
    readonly property string windows: "qrc:/qml/windows/"
    // What these say has to be read: no other dialog takes their place.
    readonly property var blockingNotices: [windows + "UsePortProcessTips.qml",
                                            windows + "NetworkSetting.qml",
                                            windows + "UpdateGpuDriverTips.qml"]
    property bool leaving: false
    // The controller asks once a run which headset it shall be. When that comes
    // while a blocking notice is read, it waits until that is closed.
    property bool choiceWaits: false
    readonly property bool dialogOpen: subWin.item !== null && subWin.item.visible

    function showToast(str, duration) {
        toast.announce(str, duration || 2000);
    }

    function showTips(icon, tips) {
        banner.show(icon, tips);
    }

    // Shows another dialog instead of the one that is open, with these
    // properties set; not while a blocking notice is read. Says whether it did.
    function openDialog(page, properties) {
        if (checkWin())
            return false;
        subWin.setSource(page, properties || {});
        showSubWin();
        return subWin.item !== null;
    }

    function chooseHeadset() {
        choiceWaits = !openDialog(windows + "MoreSettingPage.qml");
    }

    function chooseLate() {
        if (!choiceWaits || leaving || !visible)
            return;
        if (orb.wired || orb.vrIsConnect)
            choiceWaits = false; // nobody is asked any more
        else
            chooseHeadset();
    }

    function showSubWin() {
        const dialog = subWin.item;
        if (!dialog)
            return;
        dialog.x = x + fixedWidth / 2 - Math.round(dialog.width / 2);
        dialog.y = y + 440 - Math.round(dialog.height / 2);
        dialog.show();
        dialog.reqActive();
    }

    function checkWin() {
        return dialogOpen && blockingNotices.indexOf(subWin.source.toString()) >= 0;
    }

    function askToSwitch(wired) {
        openDialog(windows + "ConfirmPage.qml",
                   { text: wired ? qsTr("确定切换为无线串流") : qsTr("确定切换为有线串流") });
    }

    function switchLink() {
        orb.reportstreamMode(orb.wired, true);
        orb.wired = !orb.wired;
    }

    function closeDialog() {
        if (dialogOpen)
            subWin.item.close();
    }

    function leave() {
        if (leaving)
            return;
        leaving = true;
        closeDialog();
        // Sends the last reports, and meanwhile the windows still work.
        orb.closeApp();
        closeDialog();
        close();
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
    // Not before the notice has done what it does while it closes.
    onDialogOpenChanged: {
        if (!dialogOpen)
            Qt.callLater(chooseLate);
    }
    // The keyboard belongs to the dialog.
    onActivityChanged: {
        if (activity && dialogOpen)
            subWin.item.reqActive();
    }
    Component.onCompleted: {
        titleRow.handles.forEach(item => addIgnore(item));
        selectMode.visible = !orb.isHideSelectPage();
        // Not before it has its size: the system places it by that.
        visible = true;
        orb.checkPortUsage();
        systemPage.check();
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
            connected: headsetPage.connected
            complete: steamPage.ready
        }
        Loader {
            objectName: "details"
            x: utils.margin
            y: sheet.normalY
            width: sheet.width
            height: sheet.pulledDownY - y - 3 * utils.grid
            active: root.ispullDown
            sourceComponent: ConnectionDetails {
                road: root.road
                checks: root.checks
            }
        }
        DrawerTab {
            objectName: "drawerTab"
            x: Math.round((parent.width - width) / 2)
            y: sheet.y - height - 3
            visible: headsetPage.connected && !selectMode.visible
            open: root.ispullDown
            onClicked: root.ispullDown = !root.ispullDown
            onVisibleChanged: {
                if (!visible)
                    root.ispullDown = false;
            }
        }
        Row {
            id: sheet
            objectName: "sheet"

            readonly property int above: titleRow.height + (banner.visible ? banner.height : 0)
            readonly property int normalY: above + 22
            // The same place, with the banner and without.
            readonly property int pulledDownY: above + (banner.visible ? 488 : 488 + 56)

            readonly property int cardWidth: (width - 2 * spacing) / 3

            x: utils.margin
            y: root.ispullDown ? pulledDownY : normalY
            width: root.fixedWidth - 2 * utils.margin
            height: root.fixedHeight - y - 30
            visible: !selectMode.visible
            spacing: 3 * utils.grid

            SystemPageItem {
                id: systemPage
                objectName: "systemPage"
                collapsed: root.ispullDown
                width: sheet.cardWidth
                height: sheet.height
                onMore: root.openDialog(root.windows + "SystemInfoPage.qml")
            }
            SteamPageItem {
                id: steamPage
                objectName: "steamPage"
                collapsed: root.ispullDown
                width: sheet.cardWidth
                height: sheet.height
            }
            PageItem {
                id: headsetPage
                objectName: "headsetPage"
                collapsed: root.ispullDown
                road: root.road
                checks: root.checks
                width: sheet.width - 2 * (sheet.cardWidth + sheet.spacing)
                height: sheet.height
                onToast: root.showToast(text)
                onShowConfirmPage: root.askToSwitch(wired)
            }
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

        Rectangle {
            objectName: "dim"
            anchors.fill: parent
            visible: root.dialogOpen
            color: utils.orb_backgroundcolor
            opacity: 0.8

            // What is dimmed is out of reach, but for minimising and closing.
            MouseArea {
                anchors.fill: parent
                anchors.topMargin: titleRow.height
                hoverEnabled: true
                acceptedButtons: Qt.AllButtons
            }
            MouseArea {
                width: titleRow.exitsAt
                height: titleRow.height
                hoverEnabled: true
                acceptedButtons: Qt.AllButtons
            }
        }
    }

    // A network that is slow to answer is worth a word.
    ClockTimer {
        objectName: "leaveTimer"
        interval: 500
        running: root.leaving && root.visible
        onTriggered: root.openDialog(root.windows + "WaitPage.qml", { text: qsTr("正在退出"), limit: 0 })
    }
    // The one place of a dialog. What a dialog may declare, and what it gets, is
    // told in ARCHITECTURE.md.
    Loader {
        id: subWin
        objectName: "subWin"
        onLoaded: item.parentWin = root
    }
    // A dialog that is not seen is not kept. Whatever it still does while it
    // closes, and that may take a while, is over by then.
    ClockTimer {
        objectName: "dropTimer"
        interval: 1000
        running: subWin.item !== null && !root.dialogOpen
        onTriggered: subWin.source = ""
    }
    Connections {
        target: subWin.item
        ignoreUnknownSignals: true
        function onToast(text, duration) { root.showToast(text, duration); }
        function onOpenPage(page, properties) { root.openDialog(page, properties); }
        function onCloseMain() {
            root.closeDialog();
            root.close();
        }
        // Leaving may take seconds in which the dialog's place is wanted: not
        // before it has done what it is doing.
        function onLeaveProgram() { Qt.callLater(root.leave); }
        function onAccepted() { root.switchLink(); }
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
        function onShowMoreHMD() { root.chooseHeadset(); }
        function onShowNetWorkSetting() { root.openDialog(root.windows + "NetworkSetting.qml"); }
        function onShowUseProtPage(names) {
            root.openDialog(root.windows + "UsePortProcessTips.qml", { names: names });
        }
        function onShowUpdateGPUPage() {
            root.openDialog(root.windows + "UpdateGpuDriverTips.qml");
        }
        function onCloseExe() {
            root.closeDialog();
            root.close();
        }
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

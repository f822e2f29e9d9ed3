import QtQuick 2.15
import QtQuick.Layouts 1.15
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
    // Set by showTips(); empty while the banner speaks of how far things are.
    property url tipIcon
    property string tipText
    property bool updateForced: false

    function showToast(str, duration) {
        toastContent.text = str;
        toast.x = root.x + root.fixedWidth / 2 - toast.width / 2;
        toast.y = root.y + 400;
        toastTimer.interval = duration || 2000;
        toastTimer.restart();
        toast.visible = true;
    }

    function showTips(icon, tips) {
        tipIcon = icon;
        tipText = tips;
        banner.visible = true;
    }

    function leave() {
        orb.closeApp();
        close();
    }

    function installUpdate() {
        if (updater.setup()) {
            orb.shutdownADB();
            close();
        } else {
            showToast(qsTr("安装失败请重试！"));
        }
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
        addIgnore(logo);
        addIgnore(version);
        addIgnore(filler);
        selectMode.visible = !orb.isHideSelectPage();
        // Not before it has its size: the system places it by that.
        visible = true;
        orb.checkPortUsage();
    }

    Utils {
        id: utils
        inFront: root.activity
    }

    Rectangle {
        anchors.fill: parent
        color: utils.orb_backgroundcolor

        RowLayout {
            id: titleRow
            objectName: "titleRow"
            width: parent.width
            height: 90
            spacing: 2 * utils.grid

            Image {
                id: logo
                objectName: "logo"
                source: root.currentLanguage === "zh" ? "qrc:/res/image/orb_icon.png"
                                                      : "qrc:/res/image/orb_icon_en.png"
                Layout.leftMargin: utils.margin
                Accessible.role: Accessible.Graphic
                Accessible.name: root.title
            }
            Label {
                id: version
                objectName: "version"
                text: root.updater ? root.updater.version() : ""
                font.bold: true
            }
            Item {
                id: filler
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            PushButton {
                objectName: "help"
                text: qsTr("使用帮助")
                icon: "qrc:/res/image/orb_help.png"
                boldUnlessHovered: true
                radius: height / 2
                Layout.minimumWidth: 140
                onClicked: orb.gotoWeb(ORBManagerCLS.UserHelperUrl)
            }
            TitleBarButton {
                objectName: "minimise"
                text: qsTr("最小化")
                icon: "qrc:/res/image/orb_min.png"
                onClicked: root.showMinimized()
            }
            TitleBarButton {
                objectName: "close"
                text: qsTr("关闭")
                icon: "qrc:/res/image/orb_close.png"
                hoverColor: utils.closeHovered
                Layout.rightMargin: utils.margin - utils.grid
                onClicked: root.leave()
            }
        }

        ColumnLayout {
            anchors {
                top: titleRow.bottom
                left: parent.left
                right: parent.right
                bottom: parent.bottom
                leftMargin: utils.margin
                rightMargin: utils.margin
                bottomMargin: utils.margin
            }
            visible: !selectMode.visible
            spacing: utils.grid

            Rectangle {
                id: banner
                objectName: "banner"
                color: utils.orb_itemdowncolor
                radius: utils.itemRadius
                Layout.fillWidth: true
                Layout.preferredHeight: 56

                RowLayout {
                    anchors.fill: parent
                    anchors.leftMargin: 2 * utils.grid
                    anchors.rightMargin: 2 * utils.grid
                    spacing: 2 * utils.grid

                    Image {
                        objectName: "bannerIcon"
                        source: root.tipText ? root.tipIcon
                              : steamPage.ready && headsetPage.connected
                                ? "qrc:/res/image/orb_suc.png" : "qrc:/res/image/orb_tips.png"
                    }
                    Label {
                        objectName: "bannerText"
                        text: root.tipText ? root.tipText
                            : headsetPage.connected
                              ? qsTr("恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～")
                              : qsTr("完成下列步骤，即可畅玩Steam游戏大作")
                        Layout.fillWidth: true
                    }
                    LinkText {
                        objectName: "bannerHide"
                        text: qsTr("不再提示")
                        onClicked: banner.visible = false
                    }
                }
            }
            NoticeList {
                id: notices
                objectName: "notices"
                visible: count > 0
                Layout.fillWidth: true
                onAnswered: {
                    if (key === "switch")
                        headsetPage.focusSwitch();
                }
                onAccepted: {
                    if (key === "switch") {
                        orb.reportstreamMode(orb.wired, true);
                        orb.wired = !orb.wired;
                    } else if (key === "network") {
                        orb.openNetworkSetting();
                    } else if (key === "update") {
                        root.installUpdate();
                    }
                }
                onDismissed: {
                    if (key === "update" && root.updateForced)
                        root.leave();
                }
            }
            RowLayout {
                spacing: 3 * utils.grid
                Layout.topMargin: 22 - utils.grid

                SteamPageItem {
                    id: steamPage
                    objectName: "steamPage"
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                }
                PageItem {
                    id: headsetPage
                    objectName: "headsetPage"
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.preferredWidth: 1
                    onToast: root.showToast(text)
                    onShowConfirmPage: {
                        notices.show("switch", wired ? qsTr("确定切换为无线串流")
                                                     : qsTr("确定切换为有线串流"),
                                     qsTr("确定"), qsTr("取消"));
                        notices.focusOn("switch");
                    }
                }
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
    }

    FramelessWindow {
        id: toast
        objectName: "toast"

        // It must neither take the focus from what the user does nor stand in
        // the way of the mouse.
        flags: Qt.FramelessWindowHint | Qt.Tool | Qt.WindowDoesNotAcceptFocus
             | Qt.WindowTransparentForInput
        needShadow: false
        parentWin: root
        color: "transparent"
        width: toastContent.implicitWidth
        height: toastContent.implicitHeight
        onCloseAll: visible = false

        ToastContent {
            id: toastContent
            objectName: "toastContent"
            anchors.fill: parent
        }
        Timer {
            id: toastTimer
            objectName: "toastTimer"
            onTriggered: toast.visible = false
        }
    }

    Connections {
        target: orb
        function onShowToast(tips, duration) { root.showToast(tips, duration); }
        function onShowPowerTip() {
            notices.show("power", qsTr("电脑正在使用电池，性能可能受限，请连接电源"));
        }
        function onClosePowerTip() { notices.hide("power"); }
        function onShowMoreHMD() {
            notices.show("headsets", qsTr("发现多个VR眼镜，请在列表中选择要连接的眼镜"));
        }
        function onVrIsConnectChange() {
            if (orb.vrIsConnect)
                notices.hide("headsets");
        }
        function onWiredChange() { notices.hide("switch"); }
        function onShowNetWorkSetting() {
            notices.show("network", qsTr("当前网络为公用网络，电脑可能无法发现眼镜，请将其设为专用网络"),
                         qsTr("打开网络设置"));
        }
        function onShowUseProtPage(names) {
            notices.show("ports", qsTr("以下程序占用了串流所需的端口，请将其关闭：%1").arg(names));
        }
        function onShowUpdateGPUPage() {
            notices.show("gpu", qsTr("显卡驱动版本过低，请更新显卡驱动"));
        }
        function onCloseExe() { root.close(); }
    }
    Connections {
        target: root.updater
        function onUpdateSignal(note, isForce) {
            root.updateForced = isForce;
            const news = note.replace(/<br>/g, " ").trim();
            notices.show("update",
                         (isForce ? qsTr("需要更新到新版本才能继续使用：%1") : qsTr("发现新版本：%1")).arg(news),
                         qsTr("立即更新"), isForce ? qsTr("退出") : qsTr("以后再说"));
            if (isForce)
                orb.stopSteam();
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0
import "../common"

// The driver of the graphics card is too old.
DialogWindow {
    id: dialog

    title: qsTr("更新显卡驱动")
    width: 560
    height: 312
    onCancelled: close()
    onConfirmed: close()
    buttons: [
        PushButton {
            objectName: "help"
            text: qsTr("使用帮助")
            onClicked: orb.gotoWeb(ORBManagerCLS.UserHelperUrl)
        },
        PushButton {
            objectName: "confirm"
            text: qsTr("知道了")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    DialogMessage {
        text: qsTr("显卡驱动版本过低")
        detail: qsTr("旧版驱动可能导致画面卡顿或无法串流。请从显卡厂商的网站下载并安装最新驱动，然后重新启动电脑。")
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
}

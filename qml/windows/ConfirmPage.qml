import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// Asks before the link type is changed.
DialogWindow {
    id: dialog

    // The question.
    property string text

    // The answer is yes.
    signal accepted()

    title: qsTr("切换串流方式")
    width: 560
    height: 280
    onCancelled: close()
    onConfirmed: {
        // Gone before the answer: what follows keeps the windows from drawing.
        close();
        accepted();
    }
    buttons: [
        PushButton {
            objectName: "cancel"
            text: qsTr("取消")
            onClicked: dialog.cancelled()
        },
        PushButton {
            objectName: "confirm"
            text: qsTr("确定")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    DialogMessage {
        text: dialog.text
        detail: qsTr("切换时SteamVR会重新启动，正在运行的VR游戏会被关闭。")
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
}

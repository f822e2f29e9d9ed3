import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// The PC runs on battery. Goes by itself once it does not any more.
DialogWindow {
    id: dialog

    title: qsTr("请连接电源")
    width: 560
    height: 304
    onCancelled: close()
    onConfirmed: close()
    buttons: PushButton {
        objectName: "confirm"
        text: qsTr("知道了")
        primary: true
        focus: true
        onClicked: dialog.confirmed()
    }

    DialogMessage {
        text: qsTr("电脑正在使用电池供电")
        detail: qsTr("使用电池时，处理器和显卡会降低性能，画面可能卡顿。连接电源后，此提示会自动关闭。")
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
    Connections {
        target: orb
        function onClosePowerTip() { dialog.close(); }
    }
}

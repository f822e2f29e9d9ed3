import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// The system treats the network as a public one and keeps the headset out.
DialogWindow {
    id: dialog

    title: qsTr("网络设置")
    width: 560
    height: 312
    onCancelled: close()
    onConfirmed: {
        close();
        orb.openNetworkSetting();
    }
    buttons: [
        PushButton {
            objectName: "cancel"
            text: qsTr("以后再说")
            onClicked: dialog.cancelled()
        },
        PushButton {
            objectName: "confirm"
            text: qsTr("打开网络设置")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    DialogMessage {
        text: qsTr("当前网络为公用网络")
        detail: qsTr("在公用网络上，Windows会对其他设备隐藏这台电脑，眼镜可能找不到它。请打开网络设置，把当前网络的类型改为“专用”。")
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0
import "../common"

// Several headsets were found: which one is to be connected? Its streaming
// settings come with it, since each model has its own.
DialogWindow {
    id: dialog

    // For the main window: show that page instead, with these properties.
    signal openPage(string page, var properties)

    title: qsTr("选择VR眼镜")
    width: 640
    height: 520
    onCancelled: close()
    buttons: [
        PushButton {
            objectName: "settings"
            text: qsTr("串流设置")
            onClicked: dialog.openPage("qrc:/qml/windows/SettingPage.qml", {})
        },
        PushButton {
            id: later
            objectName: "cancel"
            text: qsTr("以后再说")
            onClicked: dialog.cancelled()
        }
    ]

    DialogOutcome {
        objectName: "searching"
        visible: headsets.count === 0
        mark: StatusMark.Busy
        text: qsTr("搜索中")
        detail: qsTr("请戴上VR眼镜，打开串流应用，并确认它和电脑在同一个网络。")
    }
    DialogMessage {
        visible: headsets.count > 0
        mark: StatusMark.Info
        text: headsets.count > 1 ? qsTr("发现多个VR眼镜，请选择要连接的眼镜")
                                 : qsTr("请选择要连接的眼镜")
        detail: qsTr("串流设置按眼镜型号保存，连接后自动生效。")
        Layout.fillWidth: true
    }
    HeadsetList {
        id: headsets

        // The keyboard stays on something that is seen.
        function passFocus() {
            if (count === 0 && focus)
                later.focus = true;
            else if (count > 0 && later.focus)
                focus = true;
        }

        visible: count > 0
        focus: true
        onCountChanged: passFocus()
        Component.onCompleted: passFocus()
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.margins: -ringRoom
        onActivated: {
            dialog.toast(qsTr("连接设备中，请稍后"), 2000);
            dialog.close();
            orb.connectVR(name, address, connect);
        }
    }
    Connections {
        target: orbconnection
        function onChanged() {
            if (orbconnection.state === ConnectionState.Connected)
                dialog.close();
        }
    }
}

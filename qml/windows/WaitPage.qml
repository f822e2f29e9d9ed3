import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtHeron.Window 1.0
import "../common"

// Something is under way that the user can only wait for. Whoever opened it
// closes it; it goes by itself when that never happens.
DialogWindow {
    id: dialog

    property string text: qsTr("请稍候")
    property int limit: 30000 // ms; 0: it never goes by itself

    title: qsTr("请稍候")
    width: 480
    height: 216
    closable: false
    onCloseAll: close()

    ClockTimer {
        objectName: "limitTimer"
        interval: dialog.limit
        running: dialog.visible && dialog.limit > 0
        onTriggered: dialog.close()
    }
    DialogMessage {
        mark: StatusMark.Busy
        text: dialog.text
        detail: qsTr("完成后此窗口会自动关闭。")
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
}

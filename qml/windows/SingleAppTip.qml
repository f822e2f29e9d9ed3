import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtHeron.Window 1.0
import ".."
import "../common"

// What a second copy of the program shows instead of itself. There is no
// controller here, and no other window.
DialogWindow {
    id: dialog

    title: qsTr("提示")
    width: 400
    height: 300
    onCancelled: close()
    onConfirmed: close()
    // Not before it has its size: the system places it by that.
    Component.onCompleted: visible = true
    buttons: PushButton {
        objectName: "confirm"
        text: qsTr("确定")
        primary: true
        focus: true
        onClicked: dialog.confirmed()
    }

    Utils {
        id: utils
    }
    ClockTimer {
        objectName: "closeTimer"
        interval: 4000
        running: true
        onTriggered: dialog.close()
    }
    DialogOutcome {
        mark: StatusMark.Info
        text: qsTr("应用程序已打开")
    }
}

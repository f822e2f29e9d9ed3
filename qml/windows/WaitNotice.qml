import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtHeron.Window 1.0
import ".."
import "../common"

// What the program waits for while its own windows cannot be drawn. There is no
// controller here, and no other window: the choice is the exit code.
DialogWindow {
    id: dialog

    property string key // what is waited for
    property bool canEnd: false
    property int lasted: 0 // s
    readonly property bool isLate: lasted >= 30

    readonly property int keepWaiting: 0
    readonly property int endPrograms: 10
    readonly property int goOn: 11

    readonly property string what: {
        switch (key) {
        case "steamvr":
            return qsTr("正在等待SteamVR关闭")
        case "cell":
            return qsTr("另一个程序占用了串流服务器的共享内存")
        case "adb":
            return qsTr("正在等待adb结束")
        default:
            return qsTr("正在等待另一个程序")
        }
    }
    readonly property string advice: {
        switch (key) {
        case "steamvr":
            return isLate ? qsTr("比平时更久。结束SteamVR会丢失游戏中未保存的进度。")
                          : qsTr("通常不超过半分钟。")
        case "cell":
            return qsTr("请关闭其他串流程序。")
        default:
            return qsTr("可以不再等待，稍后重启电脑。")
        }
    }

    title: qsTr("请稍候")
    width: 640
    height: 300
    onCancelled: Qt.exit(keepWaiting)
    onConfirmed: Qt.exit(keepWaiting)
    // Not before it has its size: the system places it by that.
    Component.onCompleted: visible = true
    buttons: [
        PushButton {
            objectName: "endPrograms"
            text: qsTr("结束SteamVR")
            visible: dialog.canEnd
            onClicked: Qt.exit(dialog.endPrograms)
        },
        PushButton {
            objectName: "goOn"
            text: qsTr("不再等待")
            onClicked: Qt.exit(dialog.goOn)
        },
        PushButton {
            objectName: "keepWaiting"
            text: qsTr("继续等待")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    Utils {
        id: utils
    }
    ClockTimer {
        objectName: "second"
        interval: 1000
        repeat: true
        running: true
        onTriggered: dialog.lasted += 1
    }
    DialogMessage {
        mark: StatusMark.Busy
        text: dialog.what
        detail: qsTr("已等待%1秒。%2").arg(dialog.lasted).arg(dialog.advice)
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
}

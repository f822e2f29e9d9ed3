import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// Other programs hold the ports of the streaming server. Looks again on request
// and says so when they are free.
DialogWindow {
    id: dialog

    // The programs, one after the other.
    property string names
    readonly property var programs: names.split(/[;；，、\n]|, /).map(name => name.trim())
                                         .filter(name => name !== "")
    property bool free: false

    function lookAgain() {
        // Who holds them is announced before this returns.
        free = true;
        orb.checkPortUsage();
    }

    title: qsTr("端口被占用")
    width: 560
    height: 408
    onCancelled: close()
    onConfirmed: {
        if (free)
            close();
        else
            lookAgain();
    }
    buttons: [
        PushButton {
            objectName: "cancel"
            text: qsTr("以后再说")
            visible: !dialog.free
            onClicked: dialog.cancelled()
        },
        PushButton {
            objectName: "confirm"
            text: dialog.free ? qsTr("确定") : qsTr("重新检测")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    DialogOutcome {
        objectName: "free"
        visible: dialog.free
        text: qsTr("端口已释放")
        detail: qsTr("现在可以开始串流了。")
    }
    DialogMessage {
        visible: !dialog.free
        text: qsTr("以下程序占用了串流所需的端口")
        detail: qsTr("请关闭这些程序，然后重新检测。")
        Layout.fillWidth: true
    }
    ScrollArea {
        objectName: "programs"
        visible: !dialog.free
        name: qsTr("占用端口的程序")
        contentHeight: list.height
        Layout.fillWidth: true
        Layout.fillHeight: true

        Column {
            id: list
            width: parent.width
            spacing: utils.grid

            Repeater {
                model: dialog.programs

                Label {
                    width: parent.width
                    text: modelData
                    wrapMode: Text.WrapAnywhere
                }
            }
        }
    }
    Connections {
        target: orb
        function onShowUseProtPage(names) {
            dialog.free = false;
            dialog.names = names;
        }
    }
}

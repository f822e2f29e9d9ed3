import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// What the program has changed that is not its own, and the way back.
DialogWindow {
    id: dialog

    property bool failed: false

    title: qsTr("更改记录")
    width: 880
    height: 640
    onCancelled: close()
    onConfirmed: close()
    Component.onCompleted: orbrecord.refresh()
    buttons: [
        PushButton {
            objectName: "giveBackAll"
            text: qsTr("全部恢复")
            enabled: orbrecord.returnable
            onClicked: dialog.failed = !orbrecord.giveBackAll()
        },
        PushButton {
            objectName: "confirm"
            text: qsTr("确定")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    DialogOutcome {
        objectName: "empty"
        visible: orbrecord.count === 0
        mark: StatusMark.Done
        text: qsTr("没有更改")
        detail: qsTr("程序没有更改过其他程序的文件。")
    }
    Label {
        objectName: "explanation"
        visible: orbrecord.count > 0
        text: qsTr("为了串流，程序更改了以下内容。恢复后，下次启动SteamVR时可能会再次更改。")
        color: utils.textSecondary
        font.pixelSize: utils.textSmall
        Layout.fillWidth: true
    }
    Label {
        objectName: "failed"
        visible: dialog.failed
        text: qsTr("有内容未能恢复：文件被占用或没有权限。请稍后再试。")
        color: utils.attention
        font.pixelSize: utils.textSmall
        Layout.fillWidth: true
    }
    ScrollArea {
        objectName: "changes"
        visible: orbrecord.count > 0
        name: qsTr("更改记录")
        contentHeight: rows.height
        Layout.fillWidth: true
        Layout.fillHeight: true

        Column {
            id: rows
            width: parent.width
            spacing: 2 * utils.grid

            Repeater {
                model: orbrecord

                RowLayout {
                    width: rows.width
                    spacing: 2 * utils.grid

                    ColumnLayout {
                        spacing: 2
                        Layout.fillWidth: true

                        Label {
                            text: what
                            font.bold: true
                            Layout.fillWidth: true
                        }
                        Label {
                            text: detail
                            font.pixelSize: utils.textSmall
                            wrapMode: Text.WrapAnywhere
                            Layout.fillWidth: true
                        }
                        Label {
                            text: inForce ? qsTr("%1 起已更改").arg(since)
                                          : qsTr("%1 曾更改，现已恢复").arg(since)
                            color: inForce ? utils.attention : utils.textSecondary
                            font.pixelSize: utils.textSmall
                            Layout.fillWidth: true
                        }
                    }
                    PushButton {
                        objectName: "giveBack"
                        text: qsTr("恢复")
                        visible: returnable
                        onClicked: dialog.failed = !orbrecord.giveBack(index)
                    }
                }
            }
        }
    }
}

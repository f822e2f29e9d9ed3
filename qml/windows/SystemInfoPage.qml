import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// This PC beside what streaming needs at least and what is recommended.
DialogWindow {
    id: dialog

    // Each [title, [[label, value], ...]]; all have the same labels.
    readonly property var columns: JSON.parse(orb.systemInfo)
    readonly property var labels: columns.length > 0 ? columns[0][1].map(row => row[0]) : []

    title: qsTr("系统信息")
    width: 1120
    height: 640
    onCancelled: close()
    onConfirmed: close()
    buttons: PushButton {
        objectName: "confirm"
        text: qsTr("确定")
        primary: true
        focus: true
        onClicked: dialog.confirmed()
    }

    DialogOutcome {
        objectName: "empty"
        visible: dialog.columns.length === 0
        mark: "busy"
        text: qsTr("检测中")
        detail: qsTr("选择串流方式后，会检测这台电脑的配置。")
    }
    RowLayout {
        visible: dialog.columns.length > 0
        spacing: 2 * utils.grid
        Layout.fillWidth: true
        Layout.fillHeight: true

        Repeater {
            model: dialog.columns

            Rectangle {
                readonly property bool first: index === 0
                readonly property string heading: modelData[0]

                objectName: "column"
                radius: utils.itemRadius
                color: utils.orb_backgroundcolor
                border { width: 1; color: first ? utils.accent : utils.orb_backgroundcolor }
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                Accessible.role: Accessible.Grouping
                Accessible.name: heading

                ColumnLayout {
                    anchors.fill: parent
                    anchors.margins: 3 * utils.grid
                    spacing: utils.grid / 2

                    Label {
                        text: heading
                        font.bold: true
                        Layout.fillWidth: true
                        Layout.bottomMargin: utils.grid
                    }
                    Repeater {
                        model: modelData[1]

                        ColumnLayout {
                            spacing: 2
                            Layout.fillWidth: true
                            Layout.preferredHeight: 9 * utils.grid

                            Label {
                                text: modelData[0]
                                color: utils.textSecondary
                                font.pixelSize: utils.textSmall
                                Layout.fillWidth: true
                            }
                            Label {
                                text: modelData[1]
                                maximumLineCount: 2
                                elide: Text.ElideRight
                                Layout.fillWidth: true
                            }
                            Item {
                                Layout.fillHeight: true
                            }
                        }
                    }
                    Item {
                        Layout.fillHeight: true
                    }
                }
            }
        }
    }
}

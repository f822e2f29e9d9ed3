import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// This PC beside what streaming needs at least and what is recommended.
DialogWindow {
    id: dialog

    // Each [title, [[label, value], ...]]; all have the same labels.
    readonly property var columns: JSON.parse(orb.systemInfo)
    readonly property int rowCount: columns.length > 0 ? columns[0][1].length : 0
    readonly property var cells: {
        const cells = [];
        columns.forEach((column, x) => column[1].forEach((row, y) => {
            cells.push({ column: x, row: y + 1, label: row[0], value: row[1] });
        }));
        return cells;
    }

    // For the main window.
    signal openPage(string page, var properties)

    title: qsTr("系统信息")
    width: 1120
    height: 640
    onCancelled: close()
    onConfirmed: close()
    buttons: [
        PushButton {
            objectName: "changes"
            text: qsTr("更改记录")
            onClicked: dialog.openPage("qrc:/qml/windows/ChangesPage.qml", {})
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
        visible: dialog.columns.length === 0
        mark: StatusMark.Busy
        text: qsTr("检测中")
        detail: qsTr("选择串流方式后，会检测这台电脑的配置。")
    }
    Item {
        id: table

        readonly property real gap: 2 * utils.grid
        readonly property real padding: 3 * utils.grid
        readonly property real columnWidth: (width - 2 * gap) / 3

        objectName: "table"
        visible: dialog.columns.length > 0
        Layout.fillWidth: true
        Layout.fillHeight: true

        Row {
            anchors.fill: parent
            spacing: table.gap

            Repeater {
                model: dialog.columns

                Rectangle {
                    width: table.columnWidth
                    height: table.height
                    radius: utils.itemRadius
                    color: utils.orb_backgroundcolor
                    border {
                        width: 1
                        color: index === 0 ? utils.accent : utils.orb_backgroundcolor
                    }
                }
            }
        }
        // One grid, so that what belongs together is level in all columns.
        GridLayout {
            anchors.fill: parent
            anchors.margins: table.padding
            columnSpacing: table.gap + 2 * table.padding
            rowSpacing: 2 * utils.grid

            Repeater {
                model: dialog.columns

                Label {
                    objectName: "columnTitle"
                    text: modelData[0]
                    font.bold: true
                    Layout.row: 0
                    Layout.column: index
                    Layout.preferredWidth: table.columnWidth - 2 * table.padding
                }
            }
            Repeater {
                model: dialog.cells

                ColumnLayout {
                    spacing: 2
                    Layout.row: modelData.row
                    Layout.column: modelData.column
                    Layout.alignment: Qt.AlignTop
                    Layout.preferredWidth: table.columnWidth - 2 * table.padding

                    Label {
                        text: modelData.label
                        color: utils.textSecondary
                        font.pixelSize: utils.textSmall
                        Layout.fillWidth: true
                    }
                    Label {
                        text: modelData.value
                        maximumLineCount: 3
                        elide: Text.ElideRight
                        Layout.fillWidth: true
                    }
                }
            }
            Item {
                Layout.row: dialog.rowCount + 1
                Layout.column: 0
                Layout.fillHeight: true
            }
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// Numbered steps, one below the other.
ColumnLayout {
    id: list

    property string title
    property var steps: []

    spacing: utils.grid

    Label {
        text: list.title
        font.bold: true
        Layout.fillWidth: true
    }
    Repeater {
        model: list.steps

        RowLayout {
            spacing: utils.grid

            Label {
                text: (index + 1) + "."
                color: utils.textSecondary
                font.pixelSize: utils.textSmall
                Layout.alignment: Qt.AlignTop
            }
            Label {
                text: modelData
                color: utils.textSecondary
                font.pixelSize: utils.textSmall
                Layout.fillWidth: true
            }
        }
    }
}

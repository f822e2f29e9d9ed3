import QtQuick 2.15
import QtQuick.Layouts 1.15

// What is set, at the left; the control that sets it; and below that, what it
// means.
GridLayout {
    id: row

    property string name
    property string explanation
    default property alias control: place.data

    columns: 2
    columnSpacing: 0
    rowSpacing: utils.grid
    Layout.fillWidth: true

    Label {
        text: row.name
        Layout.row: 0
        Layout.column: 0
        Layout.preferredWidth: utils.settingNameWidth
    }
    RowLayout {
        id: place
        Layout.row: 0
        Layout.column: 1
        Layout.fillWidth: true
        Layout.minimumHeight: utils.controlHeight
    }
    Label {
        objectName: "explanation"
        text: row.explanation
        visible: text !== ""
        color: utils.textSecondary
        font.pixelSize: utils.textSmall
        Layout.row: 1
        Layout.column: 1
        Layout.fillWidth: true
    }
}

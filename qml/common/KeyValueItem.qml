import QtQuick 2.15
import QtQuick.Layouts 1.15

// What something is called, and below it what it is.
Rectangle {
    id: item

    property string label
    property string value

    implicitHeight: Math.max(9 * utils.grid, texts.implicitHeight + 3 * utils.grid)
    radius: utils.itemRadius
    color: utils.orb_itemcolor
    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value

    ColumnLayout {
        id: texts
        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: 2 * utils.grid
            rightMargin: 2 * utils.grid
        }
        spacing: utils.grid / 2

        Label {
            text: item.label
            color: utils.textSecondary
            font.pixelSize: utils.textSmall
            Accessible.ignored: true
            Layout.fillWidth: true
        }
        Label {
            text: item.value
            maximumLineCount: 2
            elide: Text.ElideRight
            Accessible.ignored: true
            Layout.fillWidth: true
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// One of several ways to go, as a large card.
Clickable {
    id: choice

    property url icon
    property string description

    implicitWidth: 45 * utils.grid
    implicitHeight: 40 * utils.grid
    radius: utils.cardRadius
    color: utils.orb_itemdowncolor
    border {
        width: 2
        color: hovered ? utils.accent : utils.orb_itemdowncolor
    }
    Accessible.description: description

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 4 * utils.grid
        spacing: 2 * utils.grid

        Image {
            source: choice.icon
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 2 * utils.grid
        }
        Label {
            text: choice.text
            font.pixelSize: utils.textTitle
            font.bold: true
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
            Layout.topMargin: utils.grid
        }
        Label {
            text: choice.description
            color: utils.textSecondary
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// One of several ways to go, as a large card.
Rectangle {
    id: choice

    property url icon
    property string title
    property string description

    signal chosen()

    implicitWidth: 45 * utils.grid
    implicitHeight: 40 * utils.grid
    radius: utils.cardRadius
    color: utils.orb_itemdowncolor
    border {
        width: 2
        color: mouse.containsMouse ? utils.accent : utils.orb_itemdowncolor
    }

    activeFocusOnTab: true
    Keys.onReturnPressed: chosen()
    Keys.onEnterPressed: chosen()
    Keys.onSpacePressed: chosen()
    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: description
    Accessible.focusable: true
    Accessible.onPressAction: chosen()

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
            text: choice.title
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
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: choice.chosen()
    }
    FocusRing {}
}

import QtQuick 2.15

// An icon in the title row. `text` is what it means, for those who cannot see.
Clickable {
    id: button

    property url icon
    property color hoverColor: utils.buttonHovered

    implicitWidth: utils.controlHeight
    implicitHeight: utils.controlHeight
    radius: utils.itemRadius
    color: held ? Qt.darker(hoverColor, 1.4) : hovered ? hoverColor : "transparent"

    Image {
        source: button.icon
        anchors.centerIn: parent
    }
}

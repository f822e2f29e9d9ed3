import QtQuick 2.15

// An icon in the title row. `text` is what it means, for those who cannot see.
Rectangle {
    id: button

    property string text
    property url icon
    property color hoverColor: utils.buttonHovered

    signal clicked()

    implicitWidth: utils.controlHeight
    implicitHeight: utils.controlHeight
    radius: utils.itemRadius
    color: mouse.pressed ? Qt.darker(hoverColor, 1.4)
         : mouse.containsMouse ? hoverColor : "transparent"

    activeFocusOnTab: true
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Image {
        source: button.icon
        anchors.centerIn: parent
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: button.clicked()
    }
    FocusRing {}
}

import QtQuick 2.15

// Shows which control the keyboard works on.
Rectangle {
    property Item control: parent

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -3
    radius: control.radius === undefined ? utils.itemRadius : control.radius + 3
    color: "transparent"
    border { width: 2; color: utils.focus }
    visible: control.activeFocus
}

import QtQuick 2.15

// How far something is, from 0 to 1. Below 0 it is not known how far.
Item {
    id: line

    property real value: 0

    implicitHeight: utils.grid
    Accessible.role: Accessible.ProgressBar
    Accessible.name: value < 0 ? qsTr("进行中") : Math.round(value * 100) + "%"

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: utils.orb_backgroundcolor
    }
    Rectangle {
        objectName: "done"
        visible: line.value > 0
        width: Math.max(height, parent.width * Math.min(1, line.value))
        height: parent.height
        radius: height / 2
        color: utils.accent
    }
}

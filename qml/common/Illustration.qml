import QtQuick 2.15

// A picture on a field of the darker tone, to tell the cards apart at a glance.
Rectangle {
    property alias source: picture.source
    default property alias content: overlay.data

    implicitHeight: 18 * utils.grid
    radius: utils.itemRadius
    color: utils.orb_backgroundcolor

    Image {
        id: picture
        anchors.centerIn: parent
        Accessible.ignored: true
    }
    Item {
        id: overlay
        anchors.fill: parent
    }
}

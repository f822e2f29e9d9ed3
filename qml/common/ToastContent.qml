import QtQuick 2.15

// What a toast shows; as wide as its text, up to `maximumWidth`.
Rectangle {
    property alias text: label.text
    property int maximumWidth: 880

    implicitWidth: label.width + 6 * utils.grid
    implicitHeight: label.height + 4 * utils.grid
    radius: utils.cardRadius
    color: utils.orb_btnbackgroundcolor
    border { width: 1; color: utils.outline }
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    Label {
        id: label
        anchors.centerIn: parent
        width: Math.min(measure.implicitWidth, parent.maximumWidth - 6 * utils.grid)
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
    Label {
        id: measure
        visible: false
        text: label.text
        wrapMode: Text.NoWrap
    }
}

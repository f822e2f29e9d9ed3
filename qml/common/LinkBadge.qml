import QtQuick 2.15

// Which link is in use.
Rectangle {
    id: badge

    property bool wired: false

    implicitWidth: content.implicitWidth + 3 * utils.grid
    implicitHeight: 3 * utils.grid
    radius: height / 2
    color: "transparent"
    border { width: 1; color: utils.outline }
    Accessible.role: Accessible.StaticText
    Accessible.name: text.text

    Row {
        id: content
        anchors.centerIn: parent
        spacing: utils.grid / 2

        Image {
            source: badge.wired ? "qrc:/res/image/orb_link_usb.png" : "qrc:/res/image/orb_link_wifi.png"
            anchors.verticalCenter: parent.verticalCenter
        }
        Label {
            id: text
            text: badge.wired ? qsTr("有线") : qsTr("无线")
            color: utils.textSecondary
            font.pixelSize: utils.textSmall
            wrapMode: Text.NoWrap
            Accessible.ignored: true
        }
    }
}

import QtQuick 2.15

Clickable {
    id: link

    property color textColor: utils.accentText

    implicitWidth: label.implicitWidth
    implicitHeight: label.implicitHeight
    radius: utils.itemRadius - 3 // the ring around it is as round as an item
    reach: utils.grid / 2
    Accessible.role: Accessible.Link

    Text {
        id: label
        text: link.text
        color: link.textColor
        font.family: utils.orb_font
        font.pixelSize: utils.textBody
        font.underline: link.hovered
        textFormat: Text.PlainText
    }
}

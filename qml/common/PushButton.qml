import QtQuick 2.15

Clickable {
    id: button

    property url icon
    property bool primary: false
    property bool boldUnlessHovered: false

    implicitWidth: Math.max(96, content.implicitWidth + 4 * utils.grid)
    implicitHeight: utils.controlHeight
    radius: utils.itemRadius
    border { width: enabled ? 0 : 1; color: utils.outline }
    color: {
        if (!enabled)
            return "transparent";
        if (held)
            return primary ? utils.accentPressed : utils.buttonPressed;
        if (hovered)
            return primary ? utils.accentHovered : utils.buttonHovered;
        return primary ? utils.accent : utils.orb_btnbackgroundcolor;
    }

    Row {
        id: content
        anchors.centerIn: parent
        spacing: utils.grid

        Image {
            source: button.icon
            visible: button.icon.toString() !== ""
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: button.text
            color: button.enabled ? utils.text : utils.textSecondary
            font.family: utils.orb_font
            font.pixelSize: utils.textBody
            font.bold: button.boldUnlessHovered && !button.hovered
            textFormat: Text.PlainText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}

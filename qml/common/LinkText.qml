import QtQuick 2.15

Text {
    id: link

    signal clicked()

    color: utils.accentText
    font.family: utils.orb_font
    font.pixelSize: utils.textBody
    font.underline: mouse.containsMouse
    textFormat: Text.PlainText

    activeFocusOnTab: true
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onSpacePressed: clicked()
    Accessible.role: Accessible.Link
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    MouseArea {
        id: mouse
        anchors.fill: parent
        anchors.margins: -utils.grid / 2
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: link.clicked()
    }
    FocusRing {}
}

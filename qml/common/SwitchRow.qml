import QtQuick 2.15

// Something that is on or off, with a word for that. `text` is what.
Clickable {
    id: row

    property bool checked: false

    // The user wants it the other way round; whoever shows the row decides.
    signal toggled(bool wanted)

    implicitWidth: 8 * utils.grid
    implicitHeight: utils.controlHeight
    radius: utils.itemRadius
    enterPresses: false
    onClicked: toggled(!checked)
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: press()

    Rectangle {
        id: groove
        anchors.verticalCenter: parent.verticalCenter
        x: utils.grid / 2
        width: 6 * utils.grid
        height: 3 * utils.grid
        radius: height / 2
        color: row.checked ? utils.accent : utils.orb_backgroundcolor
        border { width: 1; color: row.checked ? utils.accent : utils.textSecondary }

        Rectangle {
            x: row.checked ? parent.width - width - 4 : 4
            anchors.verticalCenter: parent.verticalCenter
            width: 2 * utils.grid
            height: width
            radius: width / 2
            color: row.checked ? utils.text : utils.textSecondary
        }
    }
    Text {
        objectName: "word"
        anchors.verticalCenter: parent.verticalCenter
        anchors.left: groove.right
        anchors.leftMargin: utils.grid * 1.5
        text: row.checked ? qsTr("开") : qsTr("关")
        color: utils.textSecondary
        font.family: utils.orb_font
        font.pixelSize: utils.textBody
        textFormat: Text.PlainText
    }
}

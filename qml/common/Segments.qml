import QtQuick 2.15

// A choice of one among a few that are all in sight. Each option is an object
// with a `text` and a number, its `value`. The keyboard stops at the chosen one;
// the arrows choose another.
Rectangle {
    id: segments

    property string name
    property var options: []
    property int value: 0
    readonly property int index: options.findIndex(option => option.value === value)
    readonly property var chosen: index >= 0 ? options[index] : null

    // The user chose it.
    signal picked(int value)

    function pick(at) {
        const option = options[at];
        if (!option || option.value === value)
            return;
        value = option.value;
        picked(value);
    }

    // Makes the chosen one the first to have the keyboard in a window that is
    // not shown yet: to force it there would confuse the window.
    function focusChosen() {
        parts.itemAt(Math.max(0, index)).focus = true;
    }

    function move(at) {
        if (at < 0 || at >= options.length)
            return;
        pick(at);
        parts.itemAt(at).forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: utils.controlHeight
    implicitWidth: row.implicitWidth
    radius: utils.itemRadius
    color: utils.orb_backgroundcolor
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Row {
        id: row
        anchors.fill: parent

        Repeater {
            id: parts
            model: segments.options

            Clickable {
                id: part

                readonly property bool isChosen: index === segments.index

                objectName: "option" + modelData.value
                text: modelData.text
                width: segments.width / segments.options.length
                height: segments.height
                z: activeFocus ? 1 : 0 // the ring lies over the neighbours
                radius: segments.radius
                color: isChosen ? utils.accent : hovered ? utils.orb_itemcolor
                                                                   : utils.orb_backgroundcolor

                enterPresses: false
                onClicked: segments.pick(index)
                // The focused one has to be a stop until the focus has moved on.
                activeFocusOnTab: isChosen || activeFocus || (index === 0 && segments.index < 0)
                Keys.onLeftPressed: segments.move(index - 1)
                Keys.onUpPressed: segments.move(index - 1)
                Keys.onRightPressed: segments.move(index + 1)
                Keys.onDownPressed: segments.move(index + 1)
                Accessible.role: Accessible.RadioButton
                Accessible.description: segments.name
                Accessible.checkable: true
                Accessible.checked: isChosen

                Text {
                    anchors.centerIn: parent
                    text: part.text
                    color: part.isChosen ? utils.text : utils.textSecondary
                    font.family: utils.orb_font
                    font.pixelSize: utils.textBody
                    textFormat: Text.PlainText
                }
            }
        }
    }
}

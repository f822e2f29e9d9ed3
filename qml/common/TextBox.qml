import QtQuick 2.15

// A field to write one line or several into, with a limit. The tabulator moves
// on, since nobody writes tables here.
FocusScope {
    id: box

    property string text
    property string name
    property string placeholder
    property bool multiline: false
    property int limit: 100 // characters
    readonly property int length: text.length

    // Cuts off what is too much, but never in the middle of a character.
    function withinLimit(text) {
        if (text.length <= limit)
            return text;
        const last = text.charCodeAt(limit - 1);
        return text.substring(0, last >= 0xD800 && last <= 0xDBFF ? limit - 1 : limit);
    }

    implicitHeight: multiline ? 20 * utils.grid : utils.controlHeight
    Rectangle {
        anchors.fill: parent
        radius: utils.itemRadius
        color: utils.orb_backgroundcolor
        border { width: 1; color: utils.outline }
    }
    Flickable {
        id: flick
        anchors.fill: parent
        anchors.margins: utils.grid
        anchors.leftMargin: 2 * utils.grid
        anchors.rightMargin: 2 * utils.grid
        contentWidth: box.multiline ? width : Math.max(width, edit.implicitWidth)
        contentHeight: Math.max(height, edit.implicitHeight)
        interactive: box.multiline
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        TextEdit {
            id: edit

            function follow() {
                const at = cursorRectangle;
                if (at.y < flick.contentY)
                    flick.contentY = at.y;
                else if (at.y + at.height > flick.contentY + flick.height)
                    flick.contentY = at.y + at.height - flick.height;
                if (at.x < flick.contentX)
                    flick.contentX = at.x;
                else if (at.x + 1 > flick.contentX + flick.width)
                    flick.contentX = at.x + 1 - flick.width;
            }

            objectName: "edit"
            width: flick.contentWidth
            height: flick.contentHeight
            focus: true
            activeFocusOnTab: true
            color: utils.text
            selectionColor: utils.accent
            selectedTextColor: utils.text
            font.family: utils.orb_font
            font.pixelSize: utils.textBody
            textFormat: TextEdit.PlainText
            wrapMode: box.multiline ? TextEdit.Wrap : TextEdit.NoWrap
            verticalAlignment: box.multiline ? TextEdit.AlignTop : TextEdit.AlignVCenter
            selectByMouse: true
            onCursorRectangleChanged: follow()
            onTextChanged: {
                let kept = box.multiline ? text : text.replace(/[\r\n]+/g, " ");
                kept = box.withinLimit(kept);
                if (kept !== text) {
                    const at = cursorPosition;
                    text = kept;
                    cursorPosition = Math.min(at, kept.length);
                }
                box.text = text;
            }
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Keys.onReturnPressed: event.accepted = box.multiline && breakLine()
            Keys.onEnterPressed: event.accepted = box.multiline && breakLine()

            function breakLine() {
                insert(cursorPosition, "\n");
                return true;
            }

            Accessible.role: Accessible.EditableText
            Accessible.name: box.name
            Accessible.description: box.placeholder
            Accessible.multiLine: box.multiline
            Accessible.focusable: true
        }
    }
    Label {
        x: flick.x
        y: flick.y
        width: flick.width
        height: flick.height
        visible: edit.length === 0 && !edit.inputMethodComposing
        text: box.placeholder
        color: utils.textSecondary
        verticalAlignment: edit.verticalAlignment
        Accessible.ignored: true
    }
    FocusRing {
        visible: edit.activeFocus
    }
}

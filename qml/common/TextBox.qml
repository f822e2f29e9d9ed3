import QtQuick 2.15

// A field to write one line or several into, with a limit. The tabulator moves
// on, since nobody writes tables here. Enter breaks the line where there may be
// several, and with Ctrl it does there what it does in a single line.
FocusScope {
    id: box

    property string text
    property string name
    property string placeholder
    property bool multiline: false
    property int limit: 100 // characters
    readonly property int length: text.length

    // The user is done writing.
    signal confirmed()

    // Takes out what is too much, which is what was written last: it ends at
    // the cursor. Never splits a character in two.
    function withinLimit(text, cursor) {
        const excess = text.length - limit;
        if (excess <= 0)
            return text;
        const end = cursor >= excess ? cursor : text.length;
        let start = end - excess;
        const before = text.charCodeAt(start - 1);
        if (before >= 0xD800 && before <= 0xDBFF)
            --start;
        return text.substring(0, start) + text.substring(end);
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

            function enter(modifiers) {
                if (box.multiline && !(modifiers & Qt.ControlModifier))
                    insert(cursorPosition, "\n");
                else
                    box.confirmed();
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
                const flat = box.multiline ? text : text.replace(/\r?\n/g, " ");
                const kept = box.withinLimit(flat, cursorPosition);
                if (kept === text) {
                    box.text = text;
                    return;
                }
                const at = cursorPosition - (flat.length - kept.length);
                text = kept; // comes back here
                cursorPosition = Math.max(0, Math.min(at, kept.length));
            }
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Keys.onReturnPressed: enter(event.modifiers)
            Keys.onEnterPressed: enter(event.modifiers)

            Accessible.role: Accessible.EditableText
            Accessible.name: box.name
            Accessible.description: box.placeholder
            Accessible.multiLine: box.multiline
            Accessible.focusable: true
        }
    }
    Label {
        anchors.fill: flick
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

import QtQuick 2.15
import QtQuick.Layouts 1.15

// What the user has to know or decide now, one line each. A notice is known by
// its key; showing it again replaces it.
ColumnLayout {
    id: list

    readonly property alias count: notices.count

    // The notice's own button was pressed, or it was sent away. Either way the
    // notice is gone; answered() comes first and says so for both.
    signal answered(string key)
    signal accepted(string key)
    signal dismissed(string key)

    function show(key, text, accept, dismiss) {
        const notice = { key: key, message: text, accept: accept || "",
                         dismiss: dismiss || qsTr("知道了") };
        const at = indexOf(key);
        if (at < 0)
            notices.append(notice);
        else
            notices.set(at, notice);
    }

    function hide(key) {
        const at = indexOf(key);
        if (at >= 0)
            notices.remove(at);
    }

    // Puts the keyboard on the notice's own button.
    function focusOn(key) {
        rows.itemAt(indexOf(key)).acceptButton.forceActiveFocus(Qt.OtherFocusReason);
    }

    function settle(key, accept) {
        hide(key);
        answered(key);
        if (accept)
            accepted(key);
        else
            dismissed(key);
    }

    function indexOf(key) {
        for (let i = 0; i < notices.count; ++i) {
            if (notices.get(i).key === key)
                return i;
        }
        return -1;
    }

    function text(key) {
        const at = indexOf(key);
        return at < 0 ? "" : notices.get(at).message;
    }

    spacing: utils.grid

    ListModel {
        id: notices
    }
    Repeater {
        id: rows
        model: notices

        Rectangle {
            readonly property alias acceptButton: accept

            color: utils.orb_itemdowncolor
            radius: utils.itemRadius
            border { width: 1; color: utils.attention }
            Layout.fillWidth: true
            implicitHeight: Math.max(7 * utils.grid, message.implicitHeight + 2 * utils.grid)
            Accessible.role: Accessible.AlertMessage
            Accessible.name: message.text
            Keys.onEscapePressed: list.settle(model.key, false)

            RowLayout {
                anchors.fill: parent
                anchors.leftMargin: 2 * utils.grid
                anchors.rightMargin: 2 * utils.grid
                spacing: 2 * utils.grid

                StatusMark {
                    kind: "attention"
                }
                Label {
                    id: message
                    text: model.message
                    Layout.fillWidth: true
                }
                PushButton {
                    id: accept
                    text: model.accept
                    visible: text !== ""
                    primary: true
                    onClicked: list.settle(model.key, true)
                }
                PushButton {
                    text: model.dismiss
                    onClicked: list.settle(model.key, false)
                }
            }
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0

// Something that a check has found: what it is, what to do, and the button that
// does it, if one can.
Rectangle {
    id: card

    property int severity: Checks.Warning
    property alias title: message.text
    property alias text: message.detail
    property string actionLabel

    signal acted()

    implicitHeight: column.implicitHeight + 4 * utils.grid
    radius: utils.itemRadius
    color: utils.orb_itemcolor
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: text

    ColumnLayout {
        id: column
        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            margins: 2 * utils.grid
        }
        spacing: 2 * utils.grid

        DialogMessage {
            id: message
            mark: card.severity === Checks.Hint ? StatusMark.Info
                : card.severity === Checks.Error ? StatusMark.Failure : StatusMark.Attention
            Layout.fillWidth: true
        }
        PushButton {
            objectName: "findingAction"
            text: card.actionLabel
            visible: text !== ""
            Accessible.description: card.title
            Layout.alignment: Qt.AlignRight
            onClicked: card.acted()
        }
    }
}

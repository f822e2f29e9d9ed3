import QtQuick 2.15
import QtQuick.Layouts 1.15

// A rounded surface with a title and, below it, a line that says how things
// are. What is put into it stands below one another, and is away while the card
// is collapsed; its foot stays.
Rectangle {
    id: card

    property string title
    property string status
    property int mark: StatusMark.Todo
    property bool collapsed: false
    // Stands at the right end of the title.
    property alias corner: cornerRow.data
    property alias foot: footColumn.data
    default property alias content: column.data

    color: utils.orb_itemdowncolor
    radius: utils.cardRadius
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: status

    ColumnLayout {
        id: head
        anchors {
            top: parent.top
            left: parent.left
            right: parent.right
            margins: 3 * utils.grid
        }
        spacing: utils.grid

        RowLayout {
            spacing: 2 * utils.grid
            Layout.minimumHeight: 4 * utils.grid

            Label {
                objectName: "cardTitle"
                text: card.title
                font.pixelSize: utils.textTitle
                font.bold: true
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            RowLayout {
                id: cornerRow
                visible: children.length > 0
            }
        }
        RowLayout {
            spacing: utils.grid
            Layout.minimumHeight: 3 * utils.grid

            StatusMark {
                kind: card.mark
                Layout.alignment: Qt.AlignTop
            }
            Label {
                objectName: "cardStatus"
                text: card.status
                color: utils.textSecondary
                Layout.fillWidth: true
            }
        }
    }
    ColumnLayout {
        id: column
        anchors {
            top: head.bottom
            left: parent.left
            right: parent.right
            bottom: footColumn.top
            margins: 3 * utils.grid
            topMargin: 2 * utils.grid
            bottomMargin: 2 * utils.grid
        }
        visible: !card.collapsed
        spacing: 2 * utils.grid
    }
    ColumnLayout {
        id: footColumn
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            margins: 3 * utils.grid
        }
    }
}

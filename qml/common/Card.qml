import QtQuick 2.15
import QtQuick.Layouts 1.15

// A rounded surface with a title and, below it, a line that says how things
// are. What is put into it stands below one another.
Rectangle {
    id: card

    property string title
    property string status
    property string mark: "todo"
    // Stands at the right end of the title.
    property alias corner: cornerRow.data
    default property alias content: column.data

    color: utils.orb_itemdowncolor
    radius: utils.cardRadius
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: status

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 3 * utils.grid
        spacing: 2 * utils.grid

        RowLayout {
            spacing: 2 * utils.grid
            Layout.minimumHeight: utils.controlHeight

            Label {
                text: card.title
                font.pixelSize: utils.textTitle
                font.bold: true
                wrapMode: Text.NoWrap
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            RowLayout {
                id: cornerRow
            }
        }
        RowLayout {
            spacing: utils.grid
            Layout.bottomMargin: utils.grid

            StatusMark {
                kind: card.mark
            }
            Label {
                text: card.status
                color: utils.textSecondary
                Layout.fillWidth: true
            }
        }
    }
}

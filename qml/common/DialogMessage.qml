import QtQuick 2.15
import QtQuick.Layouts 1.15

// What a dialog has to say, in one line, and what it means for the user.
RowLayout {
    id: message

    property alias mark: statusMark.kind
    property alias text: headline.text
    property alias detail: explanation.text

    spacing: 2 * utils.grid

    StatusMark {
        id: statusMark
        kind: StatusMark.Attention
        Layout.alignment: Qt.AlignTop
    }
    ColumnLayout {
        spacing: utils.grid
        Layout.fillWidth: true

        Label {
            id: headline
            objectName: "headline"
            font.bold: true
            Layout.fillWidth: true
        }
        Label {
            id: explanation
            objectName: "detail"
            color: utils.textSecondary
            lineHeight: 1.2
            wrapMode: Text.Wrap // the path of a file may have no blank
            visible: text !== ""
            Layout.fillWidth: true
        }
    }
}

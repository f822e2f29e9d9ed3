import QtQuick 2.15
import QtQuick.Layouts 1.15

// Fills a dialog in which there is nothing to do: something is searched for, or
// done.
ColumnLayout {
    id: outcome

    property alias mark: statusMark.kind
    property alias text: headline.text
    property alias detail: explanation.text

    spacing: utils.grid
    Layout.fillWidth: true
    Layout.fillHeight: true

    Item {
        Layout.fillHeight: true
    }
    Rectangle {
        implicitWidth: 8 * utils.grid
        implicitHeight: 8 * utils.grid
        radius: width / 2
        color: utils.orb_backgroundcolor
        Layout.alignment: Qt.AlignHCenter
        Layout.bottomMargin: utils.grid

        StatusMark {
            id: statusMark
            anchors.centerIn: parent
            kind: StatusMark.Done
        }
    }
    Label {
        id: headline
        objectName: "headline"
        font.bold: true
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    Label {
        id: explanation
        objectName: "detail"
        visible: text !== ""
        color: utils.textSecondary
        lineHeight: 1.2
        horizontalAlignment: Text.AlignHCenter
        Layout.fillWidth: true
    }
    Item {
        Layout.fillHeight: true
    }
}

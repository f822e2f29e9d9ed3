import QtQuick 2.15
import QtQuick.Layouts 1.15

// One program that has to run: what it is, how it is, and the button that
// brings it further. `phase` is one of "busy", "missing", "stopped", "running".
Rectangle {
    id: item

    property string label
    property string phase: "busy"
    // Whether this is what has to be done next.
    property bool primary: true

    signal activated()

    implicitHeight: 9 * utils.grid
    radius: utils.itemRadius
    color: utils.orb_itemcolor

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 2 * utils.grid
        anchors.rightMargin: 2 * utils.grid
        spacing: 2 * utils.grid

        StatusMark {
            kind: ({ busy: "busy", missing: "attention", stopped: "todo", running: "done" })[item.phase]
        }
        Label {
            text: item.label
            maximumLineCount: 2
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        PushButton {
            text: item.phase === "missing" ? qsTr("安装")
                : item.phase === "running" ? qsTr("已启动") : qsTr("启动")
            primary: item.primary && item.phase !== "running"
            enabled: item.phase === "missing" || item.phase === "stopped"
            visible: item.phase !== "busy"
            Accessible.description: item.label
            onClicked: item.activated()
        }
    }
}

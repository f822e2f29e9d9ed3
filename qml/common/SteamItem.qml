import QtQuick 2.15
import QtQuick.Layouts 1.15

// One program that has to run: what it is, how it is, and the button that
// brings it further.
Rectangle {
    id: item

    // Unknown: nobody looked yet.
    enum Phase { Unknown, Missing, Stopped, Running }

    property string label
    property int phase: SteamItem.Unknown
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
            kind: {
                switch (item.phase) {
                case SteamItem.Missing: return StatusMark.Attention;
                case SteamItem.Stopped: return StatusMark.Todo;
                case SteamItem.Running: return StatusMark.Done;
                }
                return StatusMark.Busy;
            }
        }
        Label {
            text: item.label
            maximumLineCount: 2
            elide: Text.ElideRight
            Layout.fillWidth: true
        }
        PushButton {
            text: item.phase === SteamItem.Missing ? qsTr("安装")
                : item.phase === SteamItem.Running ? qsTr("已启动") : qsTr("启动")
            primary: item.primary && item.phase !== SteamItem.Running
            enabled: item.phase === SteamItem.Missing || item.phase === SteamItem.Stopped
            visible: item.phase !== SteamItem.Unknown
            Accessible.description: item.label
            onClicked: item.activated()
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// One headset of the list. The mouse presses its button.
Clickable {
    id: row

    property string name
    property string address
    property bool connected: false
    property bool recent: false
    // Whether it is the one to connect with, if any.
    property bool likely: true
    // The row that the keyboard works on.
    property bool current: false

    implicitHeight: 8 * utils.grid
    radius: utils.itemRadius
    color: utils.orb_itemcolor
    text: recent ? name + " " + recentMark.text : name
    takesMouse: false
    activeFocusOnTab: false // the list is one stop; its arrows choose the row
    ringed: current
    Accessible.role: Accessible.ListItem
    Accessible.description: button.text
    Accessible.selectable: true
    Accessible.selected: current

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 2 * utils.grid
        anchors.rightMargin: 2 * utils.grid
        spacing: 2 * utils.grid

        ColumnLayout {
            spacing: 0
            Layout.fillWidth: true

            Label {
                text: row.name
                elide: Text.ElideMiddle
                wrapMode: Text.NoWrap
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: utils.grid

                Label {
                    text: row.address
                    color: utils.textSecondary
                    font.pixelSize: utils.textSmall
                    wrapMode: Text.NoWrap
                }
                Rectangle {
                    visible: row.recent
                    radius: height / 2
                    color: "transparent"
                    border { width: 1; color: utils.outline }
                    implicitWidth: recentMark.implicitWidth + 2 * utils.grid
                    implicitHeight: recentMark.implicitHeight + 2

                    Label {
                        id: recentMark
                        anchors.centerIn: parent
                        text: qsTr("上次使用")
                        color: utils.textSecondary
                        font.pixelSize: utils.textSmall
                        wrapMode: Text.NoWrap
                    }
                }
            }
        }
        PushButton {
            id: button
            objectName: "connect"
            text: row.connected ? qsTr("已连接") : qsTr("连接")
            primary: row.likely && !row.connected
            activeFocusOnTab: false
            onClicked: row.clicked()
        }
    }
}

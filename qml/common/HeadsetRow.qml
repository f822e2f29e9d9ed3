import QtQuick 2.15
import QtQuick.Layouts 1.15

// One headset of the list.
Rectangle {
    id: row

    property string name
    property string address
    property bool connected: false
    property bool recent: false
    // Whether it is the one to connect with, if any.
    property bool likely: true
    // The row that the keyboard works on.
    property bool current: false

    signal activated()

    implicitHeight: 8 * utils.grid
    radius: utils.itemRadius
    color: utils.orb_itemcolor
    Accessible.role: Accessible.ListItem
    Accessible.name: recent ? name + " " + recentMark.text : name
    Accessible.description: button.text
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: current
    Accessible.onPressAction: row.activated()

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
            activeFocusOnTab: false // the list is one stop; its arrows choose the row
            onClicked: row.activated()
        }
    }
    FocusRing {
        visible: row.current
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtHeron.Window 1.0

// The window of a dialog: a title to drag it by, what the dialog shows, and its
// buttons. Escape, the icon and the system's close request mean the same, and so
// do Enter and the main button; the dialog says what.
//
// It has its final size before it is shown, since it is placed by that.
FramelessWindow {
    id: dialog

    // What is put into the dialog stands below one another.
    default property alias content: column.data
    // At the lower right, the main one last.
    property alias buttons: buttonRow.data
    property alias spacing: column.spacing
    // Whether there is an icon that closes it.
    property bool closable: true

    signal cancelled()
    signal confirmed()
    // For the main window.
    signal toast(string text, int duration)

    color: "transparent"
    needShadow: false
    titleBar: titleRow
    onCloseAll: cancelled()
    Component.onCompleted: addIgnore(heading)

    FocusScope {
        anchors.fill: parent
        focus: true
        Keys.onEscapePressed: dialog.cancelled()
        Keys.onReturnPressed: dialog.confirmed()
        Keys.onEnterPressed: dialog.confirmed()
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title

        Rectangle {
            anchors.fill: parent
            radius: utils.cardRadius
            color: utils.orb_itemdowncolor
            border { width: 1; color: utils.outline }

            ColumnLayout {
                anchors.fill: parent
                spacing: 0

                RowLayout {
                    id: titleRow
                    spacing: 2 * utils.grid
                    Layout.fillWidth: true
                    Layout.minimumHeight: 9 * utils.grid
                    Layout.maximumHeight: 9 * utils.grid

                    Label {
                        id: heading
                        objectName: "heading"
                        text: dialog.title
                        font.pixelSize: utils.textTitle
                        font.bold: true
                        wrapMode: Text.NoWrap
                        Layout.fillWidth: true
                        Layout.leftMargin: 4 * utils.grid
                    }
                    TitleBarButton {
                        objectName: "close"
                        text: qsTr("关闭")
                        icon: "qrc:/res/image/orb_close.png"
                        hoverColor: utils.closeHovered
                        visible: dialog.closable
                        Layout.rightMargin: 2 * utils.grid
                        onClicked: dialog.cancelled()
                    }
                }
                ColumnLayout {
                    id: column
                    spacing: 2 * utils.grid
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.leftMargin: 4 * utils.grid
                    Layout.rightMargin: 4 * utils.grid
                    Layout.bottomMargin: 3 * utils.grid
                }
                RowLayout {
                    id: buttonRow
                    spacing: 2 * utils.grid
                    visible: children.length > 0
                    Layout.alignment: Qt.AlignRight
                    Layout.leftMargin: 4 * utils.grid
                    Layout.rightMargin: 4 * utils.grid
                    Layout.bottomMargin: 4 * utils.grid
                }
            }
        }
    }
}

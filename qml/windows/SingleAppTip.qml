import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtHeron.Window 1.0
import ".."
import "../common"

// What a second copy of the program shows instead of itself. There is no
// controller here.
FramelessWindow {
    id: root

    title: qsTr("提示")
    width: 400
    height: 300
    color: "transparent"
    needShadow: false
    titleBar: titleRow
    onCloseAll: close()
    Component.onCompleted: {
        addIgnore(heading);
        // Not before it has its size: the system places it by that.
        visible = true;
    }

    Utils {
        id: utils
    }
    Timer {
        objectName: "closeTimer"
        interval: 4000
        running: true
        onTriggered: root.close()
    }
    Rectangle {
        anchors.fill: parent
        radius: utils.cardRadius
        color: utils.orb_backgroundcolor
        border { width: 1; color: utils.outline }
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title

        ColumnLayout {
            anchors.fill: parent
            spacing: 0

            RowLayout {
                id: titleRow
                Layout.fillWidth: true
                Layout.preferredHeight: 7 * utils.grid

                Label {
                    id: heading
                    text: root.title
                    font.bold: true
                    Layout.fillWidth: true
                    Layout.leftMargin: 3 * utils.grid
                }
                TitleBarButton {
                    objectName: "close"
                    text: qsTr("关闭")
                    icon: "qrc:/res/image/orb_close.png"
                    hoverColor: utils.closeHovered
                    Layout.rightMargin: utils.grid
                    onClicked: root.close()
                }
            }
            Label {
                text: qsTr("应用程序已打开")
                font.pixelSize: utils.textTitle
                horizontalAlignment: Text.AlignHCenter
                verticalAlignment: Text.AlignVCenter
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.margins: 3 * utils.grid
            }
            PushButton {
                objectName: "confirm"
                text: qsTr("确定")
                primary: true
                focus: true
                Layout.alignment: Qt.AlignHCenter
                Layout.preferredWidth: 20 * utils.grid
                Layout.bottomMargin: 4 * utils.grid
                onClicked: root.close()
            }
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// The first choice of all: how the headset is linked to this PC.
FocusScope {
    id: page

    function choose(wired) {
        visible = false;
        orb.wired = wired;
        orb.reportstreamMode(wired, false);
    }

    ColumnLayout {
        anchors.centerIn: parent
        spacing: 4 * utils.grid

        Label {
            text: qsTr("请选择串流方式")
            font.pixelSize: utils.textHead
            font.bold: true
            Layout.alignment: Qt.AlignHCenter
        }
        Label {
            text: qsTr("之后可以随时切换")
            color: utils.textSecondary
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: -2 * utils.grid
        }
        RowLayout {
            spacing: 4 * utils.grid
            Layout.alignment: Qt.AlignHCenter

            ModeChoice {
                objectName: "chooseWired"
                focus: true
                icon: "qrc:/res/image/orb_wired.png"
                text: qsTr("有线串流")
                description: qsTr("用USB 3.0数据线连接，画面最稳定，同时为眼镜充电")
                onClicked: page.choose(true)
            }
            ModeChoice {
                objectName: "chooseWireless"
                icon: "qrc:/res/image/orb_wireless.png"
                text: qsTr("无线串流")
                description: qsTr("通过Wi-Fi连接，活动自由，需要电脑和眼镜在同一个网络")
                onClicked: page.choose(false)
            }
        }
        Label {
            objectName: "whatLeaves"
            text: qsTr("为了改进产品，程序会向我们发送使用情况和这台电脑的配置信息（含设备标识）；可以在串流设置中关闭。")
            color: utils.textSecondary
            font.pixelSize: utils.textSmall
            horizontalAlignment: Text.AlignHCenter
            Layout.fillWidth: true
            Layout.preferredWidth: 0
        }
    }
}

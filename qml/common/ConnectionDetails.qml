import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0

// What lies behind the cards: the stages of the connection, what is streamed over
// it, and what else was found.
RowLayout {
    id: details

    property QtObject stages: null
    property QtObject checks: null

    spacing: 3 * utils.grid

    Rectangle {
        color: utils.orb_itemdowncolor
        radius: utils.cardRadius
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredWidth: 2

        ColumnLayout {
            anchors.fill: parent
            anchors.margins: 3 * utils.grid
            spacing: utils.grid

            Label {
                text: qsTr("连接进度")
                font.pixelSize: utils.textTitle
                font.bold: true
                Layout.fillWidth: true
            }
            StageList {
                objectName: "stageList"
                stages: details.stages
                Layout.fillWidth: true
            }
            Item {
                Layout.fillHeight: true
            }
        }
    }
    Rectangle {
        color: utils.orb_itemdowncolor
        radius: utils.cardRadius
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredWidth: 1

        ColumnLayout {
            anchors.fill: parent
            anchors.margins: 3 * utils.grid
            spacing: utils.grid

            Label {
                text: qsTr("连接详情")
                font.pixelSize: utils.textTitle
                font.bold: true
                Layout.fillWidth: true
            }
            KeyValueItem {
                label: qsTr("眼镜")
                value: orb.vrName
                Layout.fillWidth: true
            }
            KeyValueItem {
                label: qsTr("串流方式")
                value: orb.wired ? qsTr("有线（USB）") : qsTr("无线（Wi-Fi）")
                Layout.fillWidth: true
            }
            KeyValueItem {
                label: qsTr("帧率")
                value: StreamingChoices.hertz(orb.fpsIndex) + " Hz"
                Layout.fillWidth: true
            }
            KeyValueItem {
                label: qsTr("码率")
                value: orb.bitRate + " Mbps"
                Layout.fillWidth: true
            }
            KeyValueItem {
                objectName: "serverProgram"
                visible: value !== ""
                label: qsTr("串流服务程序")
                value: orbconnection.serverProgram
                Layout.fillWidth: true
            }
            Item {
                Layout.fillHeight: true
            }
        }
    }
    Rectangle {
        objectName: "otherFindings"
        visible: others.count > 0
        color: utils.orb_itemdowncolor
        radius: utils.cardRadius
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.preferredWidth: 2

        ColumnLayout {
            anchors.fill: parent
            anchors.margins: 3 * utils.grid
            spacing: utils.grid

            Label {
                text: qsTr("其他提示")
                font.pixelSize: utils.textTitle
                font.bold: true
                Layout.fillWidth: true
            }
            ScrollArea {
                name: qsTr("其他提示")
                contentHeight: others.implicitHeight
                Layout.fillWidth: true
                Layout.fillHeight: true

                FindingList {
                    id: others
                    width: parent.width
                    findings: details.checks ? details.checks.others : null
                }
            }
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// The connection stage by stage: how each is and since when.
ColumnLayout {
    id: list

    property QtObject stages: null

    function time(since) {
        return since && !isNaN(since.getTime()) ? Qt.formatTime(since, "HH:mm:ss") : "";
    }

    spacing: 0

    Repeater {
        model: list.stages

        RowLayout {
            id: stage

            readonly property string progress: model.reached ? qsTr("已就绪")
                                             : model.waiting ? qsTr("等待中") : qsTr("未就绪")
            readonly property string since: {
                const clock = list.time(model.since);
                return clock ? qsTr("自 %1").arg(clock) : "";
            }
            readonly property bool reached: model.reached

            objectName: "stage"
            spacing: 2 * utils.grid
            Layout.fillWidth: true
            Layout.preferredHeight: 8 * utils.grid
            Accessible.role: Accessible.StaticText
            Accessible.name: model.name + " " + progress + " " + since

            Item {
                implicitWidth: utils.iconSize
                Layout.fillHeight: true

                Rectangle {
                    visible: index > 0
                    width: 2
                    height: parent.height / 2 - utils.iconSize / 2
                    color: stage.reached ? utils.done : utils.outline
                    anchors.horizontalCenter: parent.horizontalCenter
                }
                StageMark {
                    anchors.centerIn: parent
                    reached: model.reached
                    waiting: model.waiting
                }
                Rectangle {
                    visible: index < list.stages.rowCount() - 1
                    width: 2
                    height: parent.height / 2 - utils.iconSize / 2
                    color: stage.reached ? utils.done : utils.outline
                    anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter }
                }
            }
            Label {
                text: model.name
                Accessible.ignored: true
                Layout.fillWidth: true
            }
            Label {
                text: stage.progress
                color: model.reached ? utils.done : model.waiting ? utils.text : utils.textSecondary
                font.pixelSize: utils.textSmall
                Accessible.ignored: true
            }
            Label {
                text: stage.since
                color: utils.textSecondary
                font.pixelSize: utils.textSmall
                horizontalAlignment: Text.AlignRight
                Accessible.ignored: true
                Layout.preferredWidth: 14 * utils.grid
            }
        }
    }
}

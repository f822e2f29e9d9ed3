import QtQuick 2.15

// The stages of the connection in one line: a mark a stage, from this PC to the
// headset, and below them what is waited for.
Item {
    id: strip

    property QtObject stages: null
    readonly property string waitingFor: stages ? stages.waitingFor : ""

    implicitHeight: 6 * utils.grid
    Accessible.role: Accessible.StaticText
    Accessible.name: caption.text

    Row {
        id: marks
        anchors { top: parent.top; horizontalCenter: parent.horizontalCenter }

        Repeater {
            model: strip.stages

            Row {
                readonly property bool reached: model.reached

                Rectangle {
                    visible: index > 0
                    width: 4 * utils.grid
                    height: 2
                    color: parent.reached ? utils.done : utils.outline
                    anchors.verticalCenter: parent.verticalCenter
                }
                StageMark {
                    reached: model.reached
                    waiting: model.waiting
                    width: 20
                    height: 20
                }
            }
        }
    }
    Label {
        id: caption
        anchors { bottom: parent.bottom; left: parent.left; right: parent.right }
        text: {
            if (!strip.waitingFor)
                return qsTr("全部就绪");
            const since = strip.stages.waitingSince;
            if (isNaN(since.getTime()))
                return qsTr("正在等待：%1").arg(strip.waitingFor);
            return qsTr("正在等待：%1（自 %2）").arg(strip.waitingFor)
                .arg(Qt.formatTime(since, "HH:mm:ss"));
        }
        color: utils.textSecondary
        font.pixelSize: utils.textSmall
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// A number in steps, set by dragging, by wheel or by keys, and shown with its
// unit.
RowLayout {
    id: slider

    property string name
    property int value: 0
    property int minimumValue: 0
    property int maximumValue: 100
    property int stepSize: 1
    // The value with its unit.
    property string valueText: value

    // The user set it.
    signal moved(int value)

    function set(wanted) {
        const stepped = minimumValue + Math.round((wanted - minimumValue) / stepSize) * stepSize;
        const kept = Math.max(minimumValue, Math.min(maximumValue, stepped));
        if (kept === value)
            return;
        value = kept;
        moved(kept);
    }

    spacing: 2 * utils.grid

    Label {
        text: slider.name
        Layout.preferredWidth: utils.settingNameWidth
        Accessible.ignored: true
    }
    Item {
        id: track

        // For those who read the screen.
        readonly property alias value: slider.value
        readonly property alias minimumValue: slider.minimumValue
        readonly property alias maximumValue: slider.maximumValue
        readonly property alias stepSize: slider.stepSize
        readonly property real radius: utils.itemRadius
        readonly property real room: width - knob.width
        readonly property real part: (slider.value - slider.minimumValue)
                                     / (slider.maximumValue - slider.minimumValue)

        objectName: "track"
        implicitHeight: utils.controlHeight
        Layout.fillWidth: true

        activeFocusOnTab: true
        Keys.onLeftPressed: slider.set(slider.value - slider.stepSize)
        Keys.onDownPressed: slider.set(slider.value - slider.stepSize)
        Keys.onRightPressed: slider.set(slider.value + slider.stepSize)
        Keys.onUpPressed: slider.set(slider.value + slider.stepSize)
        Keys.onPressed: {
            switch (event.key) {
            case Qt.Key_Home: slider.set(slider.minimumValue); break;
            case Qt.Key_End: slider.set(slider.maximumValue); break;
            case Qt.Key_PageUp: slider.set(slider.value + 5 * slider.stepSize); break;
            case Qt.Key_PageDown: slider.set(slider.value - 5 * slider.stepSize); break;
            default: return;
            }
            event.accepted = true;
        }
        Accessible.role: Accessible.Slider
        Accessible.name: slider.name
        Accessible.description: slider.valueText
        Accessible.focusable: true
        Accessible.onIncreaseAction: slider.set(slider.value + slider.stepSize)
        Accessible.onDecreaseAction: slider.set(slider.value - slider.stepSize)

        Rectangle {
            id: groove
            anchors.verticalCenter: parent.verticalCenter
            x: knob.width / 2
            width: track.room
            height: utils.grid / 2
            radius: height / 2
            color: utils.outline
        }
        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            x: groove.x
            width: knob.x
            height: groove.height
            radius: groove.radius
            color: utils.accent
        }
        Rectangle {
            id: knob
            objectName: "knob"
            anchors.verticalCenter: parent.verticalCenter
            x: Math.max(0, Math.min(1, track.part)) * track.room
            width: 3 * utils.grid
            height: width
            radius: width / 2
            color: mouse.pressed ? utils.accentPressed : utils.accent
            border { width: 3; color: utils.text }
        }
        MouseArea {
            id: mouse

            function follow(x) {
                const part = (x - knob.width / 2) / track.room;
                slider.set(slider.minimumValue
                           + part * (slider.maximumValue - slider.minimumValue));
            }

            anchors.fill: parent
            cursorShape: Qt.PointingHandCursor
            preventStealing: true
            onPressed: follow(mouse.x)
            onPositionChanged: follow(mouse.x)
            onWheel: slider.set(slider.value + (wheel.angleDelta.y > 0 ? 1 : -1) * slider.stepSize)
        }
        FocusRing {}
    }
    Label {
        objectName: "shownValue"
        text: slider.valueText
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.NoWrap
        Layout.preferredWidth: 11 * utils.grid
    }
}

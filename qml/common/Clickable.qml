import QtQuick 2.15

// A surface that can be pressed: with the mouse, by keys, and by those who read the
// screen. It tells what it is, whether the mouse is on it, and shows when the
// keyboard is. What it looks like is up to whoever makes something of it: all that
// is put into it lies above its mouse area.
Rectangle {
    id: control

    // What it is called, shown or not.
    property string text
    // Whether Enter presses it as Space does, and is not passed on.
    property bool enterPresses: true
    property bool takesMouse: true
    // How far beyond its edges the mouse hits it.
    property int reach: 0
    property bool ringed: activeFocus
    readonly property bool hovered: mouse.containsMouse
    readonly property bool held: mouse.pressed

    signal clicked()

    function press() {
        if (enabled)
            clicked();
    }
    function enter(event) {
        event.accepted = enterPresses;
        if (enterPresses)
            press();
    }

    color: "transparent"

    activeFocusOnTab: true
    Keys.onSpacePressed: press()
    Keys.onReturnPressed: enter(event)
    Keys.onEnterPressed: enter(event)
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: press()

    MouseArea {
        id: mouse
        anchors.fill: parent
        anchors.margins: -control.reach
        visible: control.takesMouse
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: control.press()
    }
    FocusRing {
        z: 1
        visible: control.ringed
    }
}

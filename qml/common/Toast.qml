import QtQuick 2.15
import QtHeron.Window 1.0

// A short word in a window of its own, above the one that it belongs to, and gone
// by itself.
FramelessWindow {
    id: toast

    // Where the middle of its upper edge lies, seen from the window below.
    property point spot

    // For `duration` ms, instead of what it says already.
    function announce(text, duration) {
        content.text = text;
        x = parentWin.x + spot.x - width / 2;
        y = parentWin.y + spot.y;
        timer.interval = duration;
        timer.restart();
        // What it announces may keep the program busy for seconds.
        showNow();
    }

    // It must neither take the focus from what the user does nor stand in the way of
    // the mouse.
    flags: Qt.FramelessWindowHint | Qt.Tool | Qt.WindowDoesNotAcceptFocus
         | Qt.WindowTransparentForInput
    needShadow: false
    color: "transparent"
    width: content.implicitWidth
    height: content.implicitHeight
    onCloseAll: visible = false

    ToastContent {
        id: content
        objectName: "toastContent"
        anchors.fill: parent
    }
    ClockTimer {
        id: timer
        objectName: "toastTimer"
        onTriggered: toast.visible = false
    }
}

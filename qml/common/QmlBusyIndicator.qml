import QtQuick 2.15
import QtQuick.Window 2.15

// Turns while something is under way. It stands still while another window is in
// front: nobody looks at it then, and a game needs the graphics card.
Image {
    id: indicator

    property bool running: true

    source: "qrc:/res/image/orb_busy.png"
    Accessible.ignored: true

    RotationAnimator {
        target: indicator
        from: 0
        to: 360
        duration: 1200
        loops: Animation.Infinite
        running: indicator.running && indicator.visible && indicator.Window.active
    }
}

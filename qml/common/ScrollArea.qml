import QtQuick 2.15

// A sunken surface for what may be longer than its place. Scrolls by mouse, by
// wheel and, while it has the focus, by keys; it takes the focus only when there
// is something to scroll.
Rectangle {
    id: area

    default property alias content: inner.data
    property alias contentHeight: flick.contentHeight
    property alias contentY: flick.contentY
    readonly property alias contentWidth: flick.width
    readonly property bool scrolls: flick.contentHeight > flick.height
    property string name

    function scrollBy(distance) {
        flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height,
                                              flick.contentY + distance));
    }
    // Brings what lies at `y`, `height` high, into view.
    function reveal(y, height) {
        if (y < flick.contentY)
            flick.contentY = y;
        else if (y + height > flick.contentY + flick.height)
            flick.contentY = y + height - flick.height;
    }

    radius: utils.itemRadius
    color: utils.orb_backgroundcolor

    activeFocusOnTab: scrolls
    Keys.onUpPressed: scrollBy(-4 * utils.grid)
    Keys.onDownPressed: scrollBy(4 * utils.grid)
    Keys.onPressed: {
        const page = flick.height - 4 * utils.grid;
        switch (event.key) {
        case Qt.Key_PageUp: scrollBy(-page); break;
        case Qt.Key_PageDown: scrollBy(page); break;
        case Qt.Key_Home: scrollBy(-flick.contentHeight); break;
        case Qt.Key_End: scrollBy(flick.contentHeight); break;
        default: return;
        }
        event.accepted = true;
    }
    Accessible.role: Accessible.Pane
    Accessible.name: name
    Accessible.focusable: scrolls

    Flickable {
        id: flick
        anchors.fill: parent
        anchors.margins: 2 * utils.grid
        contentWidth: width
        clip: true
        boundsBehavior: Flickable.StopAtBounds

        Item {
            id: inner
            width: flick.width
            height: flick.contentHeight
        }
    }
    Rectangle {
        objectName: "scrollBar"
        visible: area.scrolls
        x: area.width - width - utils.grid / 2
        y: flick.y + flick.height * flick.visibleArea.yPosition
        width: utils.grid / 2
        height: flick.height * flick.visibleArea.heightRatio
        radius: width / 2
        color: utils.outline
    }
    FocusRing {}
}

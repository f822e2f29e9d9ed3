import QtQuick 2.15
import QtHeron.Window 1.0

// The one place of a dialog over a window, which it covers: what lies below a dialog
// is dimmed and out of reach. What a dialog may declare, and what it gets, is told
// in ARCHITECTURE.md.
Item {
    id: host

    property FramelessWindow owner
    // What can be reached also below a dialog: it ends the uppermost strip.
    property rect reachable
    // What dialogs are centred on, seen from the owner.
    property point middle
    // What these say has to be read: no other dialog takes their place.
    property var blockingPages: []
    // Whether a question that had to wait may still come, and whether its answer is
    // known by now.
    property bool asks: true
    property bool settled: false
    readonly property bool shown: place.item !== null && place.item.visible
    // The question that waits for a blocking page to be closed; empty if none does.
    property string waiting

    // What the dialog wants of the owner.
    signal accepted()
    signal toast(string text, int duration)
    signal closeMain()
    signal leaveProgram()

    // Shows another dialog instead of the one that is there, with these properties
    // set; not while a blocking page is read. Says whether it did.
    function open(page, properties) {
        if (isBlocked())
            return false;
        place.setSource(page, properties || {});
        show();
        return place.item !== null;
    }
    // As above, but comes later if it cannot now.
    function ask(page) {
        waiting = open(page) ? "" : page;
    }
    function askNow() {
        if (waiting === "" || !asks)
            return;
        if (settled)
            waiting = "";
        else
            ask(waiting);
    }
    function isBlocked() {
        return shown && blockingPages.indexOf(place.source.toString()) >= 0;
    }
    // Centres what is loaded and shows it.
    function show() {
        const dialog = place.item;
        if (!dialog)
            return;
        dialog.x = owner.x + middle.x - Math.round(dialog.width / 2);
        dialog.y = owner.y + middle.y - Math.round(dialog.height / 2);
        dialog.show();
        dialog.reqActive();
    }
    function close() {
        if (shown)
            place.item.close();
    }

    // Not before the dialog has done what it does while it closes.
    onShownChanged: {
        if (!shown)
            Qt.callLater(askNow);
    }

    Rectangle {
        objectName: "dim"
        anchors.fill: parent
        visible: host.shown
        color: utils.orb_backgroundcolor
        opacity: 0.8

        MouseArea {
            anchors.fill: parent
            anchors.topMargin: host.reachable.height
            hoverEnabled: true
            acceptedButtons: Qt.AllButtons
        }
        MouseArea {
            width: host.reachable.x
            height: host.reachable.height
            hoverEnabled: true
            acceptedButtons: Qt.AllButtons
        }
    }
    Loader {
        id: place
        objectName: "subWin"
        onLoaded: item.parentWin = host.owner
    }
    // A dialog that is not seen is not kept. Whatever it still does while it
    // closes, and that may take a while, is over by then.
    ClockTimer {
        objectName: "dropTimer"
        interval: 1000
        running: place.item !== null && !host.shown
        onTriggered: place.source = ""
    }
    Connections {
        target: place.item
        ignoreUnknownSignals: true
        function onAccepted() { host.accepted(); }
        function onToast(text, duration) { host.toast(text, duration); }
        function onOpenPage(page, properties) { host.open(page, properties); }
        function onCloseMain() { host.closeMain(); }
        function onLeaveProgram() { host.leaveProgram(); }
    }
    // The keyboard belongs to the dialog.
    Connections {
        target: host.owner
        function onActivityChanged() {
            if (host.owner.activity && host.shown)
                place.item.reqActive();
        }
    }
}

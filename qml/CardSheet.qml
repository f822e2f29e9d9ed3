import QtQuick 2.15
import "common"

// The three cards, which move down to show what lies behind them. The small tab
// above them does that while a headset is connected.
Item {
    id: sheet

    property bool pulledDown: false
    // How high is what stands above, and what the cards make room for.
    property int above: 0
    property int drawerHeight: 0
    property QtObject stages: null
    property QtObject checks: null
    readonly property alias connected: headsetPage.connected
    // Whether Steam and SteamVR are.
    readonly property alias ready: steamPage.ready

    // The user wants to see everything about the PC.
    signal moreWanted()
    // The user wants the other link type; `wired` is the present one.
    signal switchWanted(bool wired)
    signal toast(string text)

    // Asks for the verdict on the PC.
    function check() {
        systemPage.check();
    }

    Loader {
        objectName: "details"
        x: utils.margin
        y: sheet.above + 22
        width: row.width
        height: sheet.drawerHeight - 22 - 3 * utils.grid
        active: sheet.pulledDown
        sourceComponent: ConnectionDetails {
            stages: sheet.stages
            checks: sheet.checks
        }
    }
    DrawerTab {
        objectName: "drawerTab"
        anchors { bottom: row.top; bottomMargin: 3; horizontalCenter: parent.horizontalCenter }
        visible: sheet.connected
        open: sheet.pulledDown
        onClicked: sheet.pulledDown = !sheet.pulledDown
        onVisibleChanged: {
            if (!visible)
                sheet.pulledDown = false;
        }
    }
    Row {
        id: row
        objectName: "sheet"

        readonly property int cardWidth: (width - 2 * spacing) / 3

        x: utils.margin
        y: sheet.above + (sheet.pulledDown ? sheet.drawerHeight : 22)
        width: parent.width - 2 * utils.margin
        height: parent.height - y - 30
        spacing: 3 * utils.grid

        SystemPageItem {
            id: systemPage
            objectName: "systemPage"
            collapsed: sheet.pulledDown
            width: row.cardWidth
            height: row.height
            onMore: sheet.moreWanted()
        }
        SteamPageItem {
            id: steamPage
            objectName: "steamPage"
            collapsed: sheet.pulledDown
            width: row.cardWidth
            height: row.height
        }
        PageItem {
            id: headsetPage
            objectName: "headsetPage"
            collapsed: sheet.pulledDown
            stages: sheet.stages
            checks: sheet.checks
            width: row.width - 2 * (row.cardWidth + row.spacing)
            height: row.height
            onToast: sheet.toast(text)
            onShowConfirmPage: sheet.switchWanted(wired)
        }
    }
}

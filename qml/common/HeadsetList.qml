import QtQuick 2.15
import ORBManager 1.0

// The headsets that were found, to connect one of them. The arrows choose a row,
// and the list is one stop of the keyboard.
ListView {
    id: headsets

    // Around the rows, for the ring of the one that the keyboard is on.
    readonly property int ringRoom: 4

    // The row that most likely is wanted: the first that was connected before.
    property int likelyRow: 0

    // The list is filled anew every few seconds; the row that the keyboard
    // is on stays with its headset.
    property string currentName

    // The user wants this one to be connected, or not to be any more.
    signal activated(string name, string address, bool connect)

    function findLikely() {
        let row = model.rowCount() - 1;
        while (row > 0 && !model.data(model.index(row, 0), VRListModel.RecentRole))
            --row;
        likelyRow = Math.max(row, 0);
    }
    function remember() {
        currentName = currentItem ? currentItem.name : "";
    }
    function restore() {
        let row = count - 1;
        while (row >= 0 && model.data(model.index(row, 0), VRListModel.NameRole) !== currentName)
            --row;
        currentIndex = row >= 0 ? row : Math.min(likelyRow, count - 1);
    }

    objectName: "headsets"
    Component.onCompleted: {
        findLikely();
        restore();
    }
    model: orb.vrLists
    clip: true
    spacing: utils.grid
    boundsBehavior: Flickable.StopAtBounds
    leftMargin: ringRoom
    rightMargin: ringRoom
    topMargin: ringRoom
    bottomMargin: ringRoom

    activeFocusOnTab: true
    Accessible.role: Accessible.List
    Accessible.name: qsTr("可用的VR眼镜")
    Accessible.focusable: true

    delegate: HeadsetRow {
        width: ListView.view.width - 2 * ListView.view.ringRoom
        name: model.vrName
        address: model.ip
        connected: model.vrState
        recent: model.isRecent
        likely: index === ListView.view.likelyRow
        current: ListView.isCurrentItem && ListView.view.activeFocus
        onClicked: ListView.view.activated(name, address, !connected)
    }
    Connections {
        target: headsets.model
        function onModelAboutToBeReset() { headsets.remember(); }
        function onModelReset() {
            headsets.findLikely();
            Qt.callLater(headsets.restore);
        }
    }
}

import QtQuick 2.15

// A state as an icon: each has a shape of its own, so that colour alone never
// tells it.
Item {
    id: mark

    enum Kind { Todo, Current, Done, Info, Attention, Failure, Busy }

    property int kind: StatusMark.Todo

    function icon() {
        switch (kind) {
        case StatusMark.Todo: return "orb_todo.png";
        case StatusMark.Current: return "orb_current.png";
        case StatusMark.Done: return "orb_suc.png";
        case StatusMark.Info: return "orb_tips.png";
        case StatusMark.Attention: return "orb_attention.png";
        case StatusMark.Failure: return "orb_fail.png";
        }
        return ""; // Busy turns
    }

    implicitWidth: utils.iconSize
    implicitHeight: utils.iconSize

    QmlBusyIndicator {
        anchors.fill: parent
        visible: mark.kind === StatusMark.Busy
    }
    Image {
        anchors.fill: parent
        visible: mark.kind !== StatusMark.Busy
        source: visible ? "qrc:/res/image/" + mark.icon() : ""
    }
}

import QtQuick 2.15

// A state as an icon: each has a shape of its own, so that colour alone never
// tells it. `kind` is one of "busy", "todo", "current", "done", "info",
// "attention", "failure".
Item {
    id: mark

    property string kind: "todo"
    readonly property var icons: ({
        todo: "orb_todo.png",
        current: "orb_current.png",
        done: "orb_suc.png",
        info: "orb_tips.png",
        attention: "orb_attention.png",
        failure: "orb_fail.png"
    })

    implicitWidth: utils.iconSize
    implicitHeight: utils.iconSize

    QmlBusyIndicator {
        anchors.fill: parent
        visible: mark.kind === "busy"
    }
    Image {
        anchors.fill: parent
        visible: mark.kind !== "busy"
        source: visible ? "qrc:/res/image/" + mark.icons[mark.kind] : ""
    }
}

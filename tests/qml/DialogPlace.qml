import QtQuick 2.15
import QtHeron.Window 1.0
import "qrc:/qml"
import "qrc:/qml/common"

// A window that has a place for dialogs.
FramelessWindow {
    id: root

    property int presses: 0 // of what lies below

    width: 600
    height: 400
    visible: true

    Utils {
        id: utils
    }
    MouseArea {
        anchors.fill: parent
        onClicked: ++root.presses
    }
    DialogHost {
        objectName: "host"
        anchors.fill: parent
        owner: root
        middle: Qt.point(300, 200)
        reachable: Qt.rect(500, 0, 100, 50)
        blockingPages: ["qrc:/qml/windows/notice.qml"]
    }
}

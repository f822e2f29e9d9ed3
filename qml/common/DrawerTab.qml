import QtQuick 2.15

// A small handle that opens and closes what lies behind the cards. It can be
// hit over more than its own height.
Rectangle {
    id: tab

    property bool open: false

    signal toggled()

    implicitWidth: 60
    implicitHeight: 16
    radius: utils.itemRadius
    color: mouse.containsMouse ? utils.buttonHovered : utils.orb_btnbackgroundcolor

    activeFocusOnTab: true
    Keys.onReturnPressed: toggled()
    Keys.onEnterPressed: toggled()
    Keys.onSpacePressed: toggled()
    Accessible.role: Accessible.Button
    Accessible.name: open ? qsTr("收起连接详情") : qsTr("展开连接详情")
    Accessible.focusable: true
    Accessible.onPressAction: toggled()

    Image {
        objectName: "tabArrow"
        source: tab.open ? "qrc:/res/image/orb_arrow_up.png" : "qrc:/res/image/orb_arrow_down.png"
        anchors.centerIn: parent
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        anchors.margins: -utils.grid
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: tab.toggled()
    }
    FocusRing {}
}

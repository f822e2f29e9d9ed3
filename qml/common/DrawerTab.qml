import QtQuick 2.15

// A small handle that opens and closes what lies behind the cards. It can be
// hit over more than its own height.
Clickable {
    id: tab

    property bool open: false

    text: open ? qsTr("收起连接详情") : qsTr("展开连接详情")
    implicitWidth: 60
    implicitHeight: 16
    radius: utils.itemRadius
    reach: utils.grid
    color: hovered ? utils.buttonHovered : utils.orb_btnbackgroundcolor

    Image {
        objectName: "tabArrow"
        source: tab.open ? "qrc:/res/image/orb_arrow_up.png" : "qrc:/res/image/orb_arrow_down.png"
        anchors.centerIn: parent
    }
}

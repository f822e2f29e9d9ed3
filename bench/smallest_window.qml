import QtQuick 2.15

Rectangle {
    width: 1360
    height: 875
    color: "#1A1B21"

    Text {
        anchors.centerIn: parent
        color: "white"
        text: "Hello"
    }
}

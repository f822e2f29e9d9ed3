import QtQuick 2.15
import QtHeron.Window 1.0

// Any dialog, as far as the main window is concerned.
FramelessWindow {
    id: root
    objectName: "dialog"

    property string text
    property string names
    property string note
    property bool isForce

    signal accepted()
    signal toast(string text, int duration)
    signal openPage(string page, var properties)
    signal closeMain()
    signal leaveProgram()

    width: 480
    height: 320
    needShadow: false
    onCloseAll: close()
}

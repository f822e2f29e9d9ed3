import QtQuick 2.15
import QtQuick.Layouts 1.15

// The upper row of the main window, by which it is dragged.
RowLayout {
    id: row

    property string title // of the window
    property string versionText
    property bool chinese: false
    property bool settingsOffered: true
    // What lies in it and yet is no control.
    readonly property var handles: [logo, version, filler]
    // Where minimising and closing begin.
    readonly property real exitsAt: minimise.x

    signal helpWanted()
    signal feedbackWanted()
    signal settingsWanted()
    signal minimiseWanted()
    signal closeWanted()

    spacing: 2 * utils.grid

    Image {
        id: logo
        objectName: "logo"
        source: row.chinese ? "qrc:/res/image/orb_icon.png" : "qrc:/res/image/orb_icon_en.png"
        Layout.leftMargin: utils.margin
        Accessible.role: Accessible.Graphic
        Accessible.name: row.title
    }
    Label {
        id: version
        objectName: "version"
        text: row.versionText
        font.bold: true
    }
    Item {
        id: filler
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
    PillButton {
        objectName: "help"
        text: qsTr("使用帮助")
        icon: "qrc:/res/image/orb_help.png"
        onClicked: row.helpWanted()
    }
    PillButton {
        objectName: "feedback"
        text: qsTr("用户反馈")
        icon: "qrc:/res/image/orb_feedback.png"
        onClicked: row.feedbackWanted()
    }
    PillButton {
        objectName: "setting"
        text: qsTr("设置")
        icon: "qrc:/res/image/orb_setting.png"
        visible: row.settingsOffered
        onClicked: row.settingsWanted()
    }
    TitleBarButton {
        id: minimise
        objectName: "minimise"
        text: qsTr("最小化")
        icon: "qrc:/res/image/orb_min.png"
        onClicked: row.minimiseWanted()
    }
    TitleBarButton {
        objectName: "close"
        text: qsTr("关闭")
        icon: "qrc:/res/image/orb_close.png"
        hoverColor: utils.closeHovered
        Layout.rightMargin: utils.margin - utils.grid
        onClicked: row.closeWanted()
    }
}

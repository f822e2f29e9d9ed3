import QtQuick 2.15

// The look, all of it: no other file names a colour or a font size. Each window
// that stands for itself makes one with the id "utils"; whatever it shows finds
// it by that id.
QtObject {
    readonly property string orb_font: "Source Han Sans CN Medium"
    readonly property color orb_backgroundcolor: "#1A1B21"
    readonly property color orb_itemdowncolor: "#22242C"
    // Components above 1 are cut off at 1: a breath of white on what is below.
    readonly property color orb_itemcolor: Qt.rgba(30,31,38, 0.06)
    readonly property color orb_btnbackgroundcolor: "#393939"

    readonly property color accent: "#1E68FF"
    // The accent as a text: on the dark tones the accent itself is too dim.
    readonly property color accentText: "#6E9CFF"
    readonly property color accentHovered: "#195CE6"
    readonly property color accentPressed: "#134BC0"
    readonly property color buttonHovered: "#4A4A4A"
    readonly property color buttonPressed: "#2E2E2E"
    readonly property color outline: "#3A3D4A"
    readonly property color focus: "#9CBEFF"
    readonly property color text: "#FFFFFF"
    readonly property color textSecondary: "#B4B8C5"
    readonly property color closeHovered: "#C93A37"

    // Each state also has an icon of its own shape.
    readonly property color done: "#2FBF71"
    readonly property color attention: "#F5A623"
    readonly property color failure: "#F0524F"

    readonly property int textSmall: 14
    readonly property int textBody: 16
    readonly property int textTitle: 20
    readonly property int textHead: 28

    // Distances are multiples of this.
    readonly property int grid: 8
    readonly property int margin: 30
    readonly property int cardRadius: 12
    readonly property int itemRadius: 8
    readonly property int controlHeight: 40
    readonly property int iconSize: 24
    readonly property int settingNameWidth: 168
}

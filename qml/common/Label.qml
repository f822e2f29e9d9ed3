import QtQuick 2.15

// A text of the interface. Plain, since much of what is shown comes from
// outside: names of headsets and programs, notes of the server.
Text {
    color: utils.text
    font.family: utils.orb_font
    font.pixelSize: utils.textBody
    textFormat: Text.PlainText
    wrapMode: Text.WordWrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}

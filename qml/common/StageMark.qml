import QtQuick 2.15

// How far a stage of the connection is, as an icon.
StatusMark {
    property bool reached: false
    property bool waiting: false

    kind: reached ? StatusMark.Done : waiting ? StatusMark.Current : StatusMark.Todo
}

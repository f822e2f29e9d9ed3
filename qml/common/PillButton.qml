import QtQuick 2.15
import QtQuick.Layouts 1.15

// A button of the title row.
PushButton {
    boldUnlessHovered: true
    radius: height / 2
    Layout.preferredWidth: 140
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// The cards of a list of findings, one below the other.
ColumnLayout {
    id: list

    property var findings: null
    readonly property int count: findings ? findings.count : 0

    spacing: 2 * utils.grid

    Repeater {
        model: list.findings

        FindingCard {
            objectName: "finding"
            severity: model.severity
            title: model.title
            text: model.text
            actionLabel: model.actionLabel
            Layout.fillWidth: true
            onActed: list.findings.act(index)
        }
    }
}

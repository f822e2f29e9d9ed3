import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0
import "common"

// This PC: is it good enough, and what is in it.
Card {
    id: page

    // Unknown: the controller had no look yet.
    enum Verdict { Unknown, Good, Bad }

    // Pairs of a label and a value; empty before the controller had a look.
    readonly property var rows: parsed(orb.simplySystemInfo)
    property int verdict: SystemPageItem.Unknown

    // The user wants to see everything.
    signal more()

    function parsed(text) {
        try {
            const pairs = JSON.parse(text);
            return Array.isArray(pairs) ? pairs : [];
        } catch (error) {
            return [];
        }
    }

    // Asking for the verdict makes the controller decide anew, report it and
    // maybe speak of an old graphics driver. So it is asked for once for each
    // look that the controller had, and not before the window can show a notice.
    function check() {
        if (rows.length > 0)
            verdict = orb.pcHardware !== ORBManagerCLS.NotCanRun ? SystemPageItem.Good
                                                                : SystemPageItem.Bad;
    }

    title: qsTr("PC配置")
    status: verdict === SystemPageItem.Good ? qsTr("本机配置符合要求")
          : verdict === SystemPageItem.Bad ? qsTr("本机配置无法串流") : qsTr("检测中")
    mark: verdict === SystemPageItem.Good ? StatusMark.Done
        : verdict === SystemPageItem.Bad ? StatusMark.Failure : StatusMark.Busy
    foot: LinkText {
        objectName: "systemMore"
        text: qsTr("查看更多配置")
        onClicked: page.more()
    }

    Illustration {
        source: "qrc:/res/image/orb_art_pc.png"
        Layout.fillWidth: true
    }
    Repeater {
        model: page.rows

        KeyValueItem {
            label: modelData[0]
            value: modelData[1]
            Layout.fillWidth: true
        }
    }
    Item {
        Layout.fillHeight: true
    }
    Connections {
        target: orb
        function onPcHardwareChange() { page.check(); }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15

// A line that says how far things are, or a tip, until the user sends it away.
Rectangle {
    id: banner

    property bool connected: false
    // Whether everything else is as it should be as well.
    property bool complete: false
    property bool wanted: true
    // Empty while it says how far things are.
    property string tip
    property url tipIcon

    function show(icon, text) {
        tipIcon = icon;
        tip = text;
        wanted = true;
    }

    implicitHeight: 56
    color: utils.orb_itemdowncolor
    radius: utils.itemRadius

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 2 * utils.grid
        anchors.rightMargin: 2 * utils.grid
        spacing: 2 * utils.grid

        Image {
            objectName: "bannerIcon"
            source: banner.tip ? banner.tipIcon
                  : banner.connected && banner.complete ? "qrc:/res/image/orb_suc.png"
                                                        : "qrc:/res/image/orb_tips.png"
        }
        Label {
            objectName: "bannerText"
            text: banner.tip ? banner.tip
                : banner.connected ? qsTr("恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～")
                                   : qsTr("完成下列步骤，即可畅玩Steam游戏大作")
            Layout.fillWidth: true
        }
        LinkText {
            objectName: "bannerHide"
            text: qsTr("不再提示")
            textColor: utils.accent
            onClicked: banner.wanted = false
        }
    }
}

import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0
import "common"

// The headset: where its connection stands, which ones there are, and what to
// do when none shows up.
Card {
    id: page

    readonly property bool connected: orbconnection.state === ConnectionState.Connected
    // Whether one of those that are listed has to be chosen.
    readonly property bool choosing: {
        switch (orbconnection.state) {
        case ConnectionState.AskingUser:
        case ConnectionState.Lost:
        case ConnectionState.LetGo: return headsets.visible;
        }
        return false;
    }

    property QtObject stages: null
    property QtObject checks: null

    // The user wants the other link type; `wired` is the present one.
    signal showConfirmPage(bool wired)
    signal toast(string text)

    function switchConnection(name, ip, connect) {
        toast(qsTr("连接设备中，请稍后"));
        orb.connectVR(name, ip, connect);
    }

    // The name goes on speaking of a connection that is over.
    title: connected || !orb.vrIsConnect ? orb.vrName : qsTr("星程之光眼镜")
    status: {
        if (connected)
            return qsTr("已连接，戴上眼镜开始串流吧！");
        if (choosing)
            return headsets.count > 1 ? qsTr("请选择设备连接") : qsTr("请选择眼镜连接");
        if (orbconnection.state === ConnectionState.Linking)
            return qsTr("连接中");
        if (orb.wired)
            return orbconnection.headsetFound ? qsTr("连接中") : qsTr("检测中");
        return qsTr("搜索中");
    }
    mark: connected ? StatusMark.Done : choosing ? StatusMark.Attention : StatusMark.Busy
    corner: LinkBadge {
        objectName: "linkBadge"
        wired: orb.wired
    }
    foot: RowLayout {
        spacing: utils.grid

        PushButton {
            objectName: "stopStreaming"
            text: qsTr("停止串流")
            visible: page.connected
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            onClicked: orb.connectVR("", "", false) // whichever is connected
        }
        PushButton {
            objectName: "switchMode"
            text: orb.wired ? qsTr("切换为无线串流") : qsTr("切换为有线串流")
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            onClicked: page.showConfirmPage(orb.wired)
        }
    }

    Illustration {
        source: page.connected ? "qrc:/res/image/orb_art_headset_on.png"
                               : "qrc:/res/image/orb_art_headset.png"
        visible: findings.count === 0 && (page.connected || !headsets.visible)
        Layout.fillWidth: true
    }
    StageStrip {
        objectName: "stageStrip"
        stages: page.stages
        visible: !page.connected
        Layout.fillWidth: true
    }
    FindingList {
        id: findings
        objectName: "foremost"
        findings: page.checks ? page.checks.foremost : null
        visible: count > 0
        Layout.fillWidth: true
    }
    Label {
        text: qsTr("可用的VR眼镜")
        font.bold: true
        visible: headsets.visible
    }
    HeadsetList {
        id: headsets
        visible: !orb.wired && orbconnection.headsetFound
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: 9 * utils.grid
        Layout.preferredHeight: contentHeight + topMargin + bottomMargin
        Layout.maximumHeight: Layout.preferredHeight
        Layout.margins: -ringRoom
        onActivated: page.switchConnection(name, address, connect)
    }
    StepList {
        objectName: "steps"
        visible: !page.connected && findings.count === 0
        title: qsTr("连接步骤")
        steps: {
            if (!orb.wired) {
                return [qsTr("将电脑和VR眼镜接入同一个路由器，电脑建议使用网线"),
                        qsTr("戴上VR眼镜，打开串流应用"),
                        qsTr("等待眼镜出现在列表中，然后点击“连接”")];
            }
            if (orbconnection.headsetFound) {
                return [qsTr("用USB 3.0数据线连接电脑和VR眼镜"),
                        qsTr("戴上VR眼镜，允许USB调试"),
                        qsTr("在眼镜中打开串流应用")];
            }
            return [qsTr("确认数据线支持USB 3.0"),
                    qsTr("确认数据线插在电脑的USB 3.0接口上（通常为蓝色）"),
                    qsTr("重新插拔数据线，或更换接口后再试")];
        }
        Layout.fillWidth: true
        Layout.topMargin: utils.grid
    }
    Item {
        Layout.fillHeight: true
    }
}

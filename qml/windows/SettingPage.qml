import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0
import "../common"

// How the streaming server encodes picture and sound for the current headset.
// Nothing of it is stored before the user confirms.
DialogWindow {
    id: dialog

    readonly property bool custom: definition.value === StreamingChoices.Custom
    // The one change that SteamVR needs no restart for.
    readonly property bool onlyBitRate: custom && definition.value === stored.definition
                                        && fps.value === stored.fps
                                        && encoder.value === stored.encoder
                                        && audio.checked === stored.audio
                                        && scale.value === stored.scale
                                        && bitRate.value !== stored.bitRate

    function readAll() {
        stored.read();
        definition.value = offered(definition, stored.definition, StreamingChoices.Standard);
        fps.value = stored.fps;
        encoder.value = offered(encoder, stored.encoder, StreamingChoices.Hevc);
        audio.checked = stored.audio;
        audio.installing = false;
        scale.value = stored.scale > 0 ? stored.scale : 100;
        bitRate.value = stored.bitRate > 0 ? stored.bitRate
                                           : StreamingChoices.bitRate(StreamingChoices.Standard);
    }

    // The controller announces the settings with every look at a connected
    // headset. What the user is about to change stays, unless they are others.
    function readChanges() {
        if (stored.isOutdated())
            readAll();
        encoder.value = offered(encoder, encoder.value, StreamingChoices.Hevc);
    }

    function offered(choice, value, otherwise) {
        return choice.options.some(option => option.value === value) ? value : otherwise;
    }

    // The microphone needs the virtual sound cable; without one its installer
    // is started instead.
    function switchAudio(wanted) {
        audio.installing = wanted && !orb.installAudio();
        audio.checked = wanted && !audio.installing;
    }

    function store() {
        // The page is out of sight before SteamVR's stop keeps it from going.
        close();
        if (onlyBitRate) {
            orb.setVideoBitRate(bitRate.value);
            toast(qsTr("切换码率"), 2000);
            return;
        }
        if (custom)
            orb.setVideoQuilty(scale.value, bitRate.value);
        orb.setEffects(definition.value, fps.value, encoder.value, audio.checked,
                       false, false, false);
    }

    title: qsTr("串流设置")
    width: 760
    height: 704
    onCancelled: close()
    onConfirmed: store()
    Component.onCompleted: {
        readAll();
        definition.focusChosen();
    }
    buttons: [
        PushButton {
            objectName: "cancel"
            text: qsTr("取消")
            onClicked: dialog.cancelled()
        },
        PushButton {
            objectName: "confirm"
            text: qsTr("确定")
            primary: true
            onClicked: dialog.confirmed()
        }
    ]

    SettingRow {
        name: qsTr("清晰度")

        Segments {
            id: definition
            objectName: "definition"
            name: qsTr("清晰度")
            options: [{ text: qsTr("流畅"), value: StreamingChoices.Smooth,
                        use: qsTr("适合信号较弱的网络，画面最流畅") },
                      { text: qsTr("标准"), value: StreamingChoices.Standard,
                        use: qsTr("兼顾画质和延迟，适合大多数情况") },
                      { text: qsTr("高清"), value: StreamingChoices.High,
                        use: qsTr("画质最好，适合有线连接或高速Wi-Fi") },
                      { text: qsTr("自定义"), value: StreamingChoices.Custom, use: "" }]
            Layout.fillWidth: true
        }
    }
    Rectangle {
        radius: utils.itemRadius
        color: utils.orb_itemcolor
        Layout.fillWidth: true
        Layout.preferredHeight: 13 * utils.grid
        Layout.leftMargin: utils.settingNameWidth
        Layout.topMargin: -utils.grid

        ColumnLayout {
            anchors.fill: parent
            anchors.leftMargin: 2 * utils.grid
            anchors.rightMargin: 2 * utils.grid
            anchors.topMargin: utils.grid
            anchors.bottomMargin: utils.grid
            visible: dialog.custom
            spacing: 0

            ValueSlider {
                id: scale
                objectName: "scale"
                name: qsTr("渲染比例")
                minimumValue: 50
                maximumValue: 150
                stepSize: 5
                valueText: value + "%"
            }
            ValueSlider {
                id: bitRate
                objectName: "bitRate"
                name: orb.wired ? qsTr("码率（有线）") : qsTr("码率（无线）")
                minimumValue: 10
                maximumValue: 200
                stepSize: 5
                valueText: value + " Mbps"
            }
        }
        Column {
            objectName: "preset"
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            anchors.margins: 2 * utils.grid
            visible: !dialog.custom
            spacing: utils.grid / 2

            Label {
                objectName: "presetRate"
                text: StreamingChoices.bitRate(definition.value) + " Mbps"
                font.pixelSize: utils.textTitle
            }
            Label {
                text: definition.chosen ? definition.chosen.use : ""
                color: utils.textSecondary
                width: parent.width
            }
        }
    }
    SettingRow {
        name: qsTr("帧率")

        Segments {
            id: fps
            objectName: "fps"
            name: qsTr("帧率")
            options: [StreamingChoices.Hz72, StreamingChoices.Hz90].map(
                         value => ({ text: StreamingChoices.hertz(value) + " Hz", value: value }))
            Layout.fillWidth: true
        }
    }
    SettingRow {
        name: qsTr("视频编码")

        Segments {
            id: encoder

            readonly property var all: [{ text: "H.264", value: StreamingChoices.H264 },
                                        { text: "HEVC", value: StreamingChoices.Hevc },
                                        { text: "HEVC 10-bit", value: StreamingChoices.HevcTenBit },
                                        { text: "AV1", value: StreamingChoices.Av1 }]
            // A number changes only when the list does, so that the keyboard
            // stays where it is.
            readonly property int last: StreamingChoices.lastEncoder(orb.AV1available,
                                                                     orb.nvidiaAvailable)

            objectName: "encoder"
            name: qsTr("视频编码")
            options: all.filter(option => option.value <= last)
            Layout.fillWidth: true
        }
    }
    SettingRow {
        name: qsTr("麦克风")
        explanation: audio.installing ? qsTr("需要先安装虚拟声卡。完成安装程序后，请再次打开。")
                                      : qsTr("把眼镜的麦克风用作电脑的麦克风")

        SwitchRow {
            id: audio

            property bool installing: false

            objectName: "audio"
            text: qsTr("麦克风")
            Layout.preferredWidth: 14 * utils.grid
            onToggled: dialog.switchAudio(wanted)
        }
        Item {
            Layout.fillWidth: true
        }
    }
    // Of the program, not of the headset: it holds at once, without a restart.
    SettingRow {
        name: qsTr("使用情况")
        explanation: qsTr("向我们发送使用情况和这台电脑的配置信息，立即生效")

        SwitchRow {
            objectName: "usage"
            text: qsTr("使用情况")
            checked: orbusage.on
            Layout.preferredWidth: 14 * utils.grid
            onToggled: orbusage.on = wanted
        }
        Item {
            Layout.fillWidth: true
        }
    }
    Item {
        Layout.fillHeight: true
    }
    RowLayout {
        spacing: utils.grid

        StatusMark {
            kind: dialog.onlyBitRate ? StatusMark.Done : StatusMark.Attention
        }
        Label {
            objectName: "restart"
            text: dialog.onlyBitRate ? qsTr("只更改码率，SteamVR不会重新启动")
                                     : qsTr("确定后SteamVR会重新启动，正在运行的VR游戏会被关闭")
            color: utils.textSecondary
            Layout.fillWidth: true
        }
    }
    // As it was when the page was filled.
    StoredSettings {
        id: stored
    }
    Connections {
        target: orb
        function onEffectChange() { dialog.readChanges(); }
        function onWiredChange() { dialog.readChanges(); }
    }
}

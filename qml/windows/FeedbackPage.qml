import QtQuick 2.15
import QtQuick.Layouts 1.15
import ORBManager 1.0
import "../common"

// What the user wants to tell us, and how to reach the user.
DialogWindow {
    id: dialog

    readonly property string written: orb.trimmedString(content.text)
    property bool asked: false
    readonly property int state: orbfeedback.state
    readonly property bool failed: asked && state === FeedbackStatus.NotWritten
    // Nothing more to do here: it is on its way, or has arrived somewhere.
    readonly property bool sent: asked && !failed

    function send() {
        if (written === "")
            return;
        orb.sendFeecback(written, orb.trimmedString(contact.text));
        asked = true;
        if (sent)
            done.forceActiveFocus(Qt.OtherFocusReason);
    }

    title: qsTr("用户反馈")
    width: 640
    height: 544
    onCancelled: close()
    onConfirmed: {
        if (sent)
            close();
        else
            send();
    }
    buttons: [
        PushButton {
            objectName: "cancel"
            text: qsTr("取消")
            visible: !dialog.sent
            onClicked: dialog.cancelled()
        },
        PushButton {
            objectName: "send"
            text: qsTr("提交")
            visible: !dialog.sent
            enabled: dialog.written !== ""
            primary: true
            onClicked: dialog.send()
        },
        PushButton {
            id: done
            objectName: "done"
            text: qsTr("确定")
            visible: dialog.sent
            primary: true
            onClicked: dialog.close()
        }
    ]

    DialogOutcome {
        objectName: "sending"
        visible: dialog.sent && dialog.state === FeedbackStatus.Sending
        mark: StatusMark.Busy
        text: qsTr("正在提交")
    }
    DialogOutcome {
        objectName: "kept"
        visible: dialog.sent && dialog.state === FeedbackStatus.Kept
        mark: StatusMark.Attention
        text: qsTr("反馈未能发送")
        detail: qsTr("内容已保存在这台电脑上。请检查网络，稍后再提交一次。")
    }
    DialogOutcome {
        objectName: "thanks"
        visible: dialog.sent && dialog.state === FeedbackStatus.Sent
        mark: StatusMark.Done
        text: qsTr("已提交，感谢您的反馈")
        detail: contact.text === "" ? qsTr("我们会根据您的反馈改进产品。")
                                    : qsTr("我们会根据您的反馈改进产品，需要时会与您联系。")
    }
    RowLayout {
        visible: !dialog.sent

        Label {
            text: qsTr("问题或建议")
            font.bold: true
            Layout.fillWidth: true
        }
        Label {
            objectName: "counter"
            text: content.length + "/" + content.limit
            color: content.length < content.limit ? utils.textSecondary : utils.attention
            font.pixelSize: utils.textSmall
            Accessible.name: qsTr("已输入%1个字，最多%2个字").arg(content.length).arg(content.limit)
        }
    }
    TextBox {
        id: content
        objectName: "content"
        visible: !dialog.sent
        multiline: true
        limit: 500
        focus: true
        name: qsTr("问题或建议")
        placeholder: qsTr("请描述您遇到的问题，或告诉我们您的想法")
        onConfirmed: dialog.confirmed()
        Layout.fillWidth: true
        Layout.fillHeight: true
    }
    Label {
        visible: !dialog.sent
        text: qsTr("联系方式（选填）")
        font.bold: true
        Layout.fillWidth: true
    }
    TextBox {
        id: contact
        objectName: "contact"
        visible: !dialog.sent
        limit: 50
        name: qsTr("联系方式（选填）")
        placeholder: qsTr("手机号或邮箱")
        Layout.fillWidth: true
        onConfirmed: dialog.confirmed()
    }
    Label {
        objectName: "notWritten"
        visible: dialog.failed
        text: qsTr("feedback.json未能保存（磁盘空间不足，或没有写入权限），反馈没有发送。请重试。")
        color: utils.attention
        font.pixelSize: utils.textSmall
        Layout.fillWidth: true
    }
    Label {
        objectName: "whatLeaves"
        visible: !dialog.sent && !dialog.failed
        text: qsTr("提交后，您填写的内容和这台电脑的配置信息（含设备标识）会发送给我们，以便查找问题。")
        color: utils.textSecondary
        font.pixelSize: utils.textSmall
        Layout.fillWidth: true
    }
}

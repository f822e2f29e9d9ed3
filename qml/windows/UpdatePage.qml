import QtQuick 2.15
import QtQuick.Layouts 1.15
import "../common"

// A newer version is ready to be installed. A forced one leaves only the choice
// between installing it and leaving the program.
DialogWindow {
    id: dialog

    // What is new; its lines are separated by "<br>".
    property string note
    property bool isForce: false
    // Of a download that is under way; none is while this is 0.
    property real progress: 0
    property bool failed: false

    // The main window has to close.
    signal closeMain()
    // The whole program has to end as with its close button.
    signal leaveProgram()

    function install() {
        if (!orbupdate.setup()) {
            failed = true;
            toast(qsTr("安装失败请重试！"), 2000);
            return;
        }
        orb.shutdownADB();
        close();
        closeMain();
    }

    title: qsTr("发现新版本")
    width: 640
    height: 520
    closable: !isForce
    onCancelled: {
        if (!isForce)
            close();
    }
    onConfirmed: install()
    onCloseAll: {
        if (isForce)
            leave.clicked();
    }
    buttons: [
        PushButton {
            objectName: "cancel"
            text: qsTr("以后再说")
            visible: !dialog.isForce
            onClicked: dialog.cancelled()
        },
        PushButton {
            id: leave
            objectName: "leave"
            text: qsTr("退出")
            visible: dialog.isForce
            onClicked: {
                dialog.close();
                dialog.leaveProgram();
            }
        },
        PushButton {
            objectName: "confirm"
            text: qsTr("立即更新")
            primary: true
            focus: true
            onClicked: dialog.confirmed()
        }
    ]

    DialogMessage {
        mark: dialog.failed ? StatusMark.Failure
            : dialog.isForce ? StatusMark.Attention : StatusMark.Info
        text: dialog.failed ? qsTr("安装未能开始")
            : dialog.isForce ? qsTr("需要更新到新版本才能继续使用") : qsTr("新版本已下载，可以安装")
        detail: dialog.failed ? qsTr("请重试；如果仍然失败，请重新启动程序后再更新。")
                              : qsTr("安装时程序会关闭。")
        Layout.fillWidth: true
    }
    RowLayout {
        objectName: "progress"
        visible: dialog.progress !== 0
        spacing: 2 * utils.grid

        Label {
            text: dialog.progress < 0 ? qsTr("正在下载")
                                      : qsTr("正在下载：%1%").arg(Math.round(dialog.progress * 100))
            color: utils.textSecondary
            font.pixelSize: utils.textSmall
        }
        ProgressLine {
            value: dialog.progress
            Layout.fillWidth: true
        }
    }
    ScrollArea {
        objectName: "note"
        name: qsTr("更新内容")
        contentHeight: news.height
        visible: dialog.note !== ""
        Layout.fillWidth: true
        Layout.fillHeight: true

        Label {
            id: news
            objectName: "news"
            width: parent.width - utils.grid
            text: dialog.note.replace(/<br>/g, "\n")
            lineHeight: 1.2
        }
    }
    Item {
        visible: dialog.note === ""
        Layout.fillHeight: true
    }
    Connections {
        target: orbupdate
        function onProcessStatus(val) { dialog.progress = val; }
        function onDownExeFinish() { dialog.progress = 0; }
    }
}

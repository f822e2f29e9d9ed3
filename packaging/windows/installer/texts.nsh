; What is said, in the three languages of the program.
!macro text NAME ENGLISH CHINESE JAPANESE
    LangString ${NAME} ${LANG_ENGLISH} "${ENGLISH}"
    LangString ${NAME} ${LANG_SIMPCHINESE} "${CHINESE}"
    LangString ${NAME} ${LANG_JAPANESE} "${JAPANESE}"
!macroend

!insertmacro text ProgramName \
    "${NAME_ENGLISH}" \
    "${NAME_CHINESE}" \
    "${NAME_JAPANESE}"
!insertmacro text StartMenuEntry \
    "Entry in the Start menu" \
    "开始菜单项" \
    "スタートメニューの項目"
!insertmacro text DesktopEntry \
    "Shortcut on the desktop" \
    "桌面快捷方式" \
    "デスクトップのショートカット"
!insertmacro text StartWithWindows \
    "Start with Windows" \
    "开机时自动启动" \
    "Windows と同時に起動する"
!insertmacro text OtherSetup \
    "Another installation of this program is open. Finish it first." \
    "本程序的另一个安装或卸载正在进行，请先完成它。" \
    "このプログラムの別のインストールが進行中です。先にそちらを終えてください。"
!insertmacro text OldWindows \
    "This program needs Windows 10 or 11." \
    "本程序需要 Windows 10 或 Windows 11。" \
    "このプログラムには Windows 10 または 11 が必要です。"
!insertmacro text BadFolder \
    "The program cannot be installed in $INSTDIR. Choose a folder of its own on a disk of this PC." \
    "无法安装到 $INSTDIR。请在本机磁盘上选择一个单独的文件夹。" \
    "$INSTDIR にはインストールできません。この PC のディスク上の専用フォルダーを選んでください。"
!insertmacro text NotEmpty \
    "There are files in $INSTDIR already. Choose an empty or a new folder, so that nothing foreign is started with the program." \
    "$INSTDIR 中已有文件。请选择空文件夹或新文件夹，以免随程序启动来历不明的文件。" \
    "$INSTDIR にはすでにファイルがあります。見知らぬファイルが一緒に起動されないよう、空のフォルダーか新しいフォルダーを選んでください。"
!insertmacro text ElsewhereAlready \
    "The program is installed in another folder. Uninstall it there first, or choose that folder. Settings are kept." \
    "本程序已安装在其他文件夹中。请先在那里卸载，或选择该文件夹。设置会保留。" \
    "このプログラムは別のフォルダーにインストール済みです。先にアンインストールするか、そのフォルダーを選んでください。設定は残ります。"
!insertmacro text CannotMakeFolder \
    "$INSTDIR cannot be made: there is no permission to write there. Nothing was changed." \
    "无法创建 $INSTDIR：没有写入权限。没有作任何更改。" \
    "$INSTDIR を作成できません。書き込む権限がありません。何も変更していません。"
!insertmacro text CannotWrite \
    "The files could not be written to $INSTDIR: the disk is full, or there is no permission. What was there before was not changed." \
    "无法把文件写入 $INSTDIR：磁盘已满或没有权限。原有内容没有更改。" \
    "$INSTDIR にファイルを書き込めませんでした。ディスクがいっぱいか、権限がありません。元の内容は変更していません。"
!insertmacro text Full \
    "There is not enough space for $INSTDIR. Nothing was changed." \
    "$INSTDIR 所在磁盘空间不足。没有作任何更改。" \
    "$INSTDIR のディスクに十分な空きがありません。何も変更していません。"
!insertmacro text Held \
    "Another program holds a file. The version that was there works as before. Close other programs, or restart Windows, and install again." \
    "另一个程序占用了文件。原有版本仍可正常使用。请关闭其他程序或重新启动 Windows，然后再安装。" \
    "別のプログラムがファイルを使用中です。元のバージョンはそのまま使えます。他のプログラムを閉じるか Windows を再起動してから、もう一度インストールしてください。"
!insertmacro text Runs \
    "The Streaming Assistant is running. Close it first. Nothing was changed." \
    "串流助手正在运行，请先关闭。没有作任何更改。" \
    "ストリーミングアシスタントが実行中です。先に閉じてください。何も変更していません。"
!insertmacro text MayBeClosed \
    "The Streaming Assistant is running and is closed now, as with its own close button. SteamVR ends with it. Go on?" \
    "串流助手正在运行，现在将像点击关闭按钮一样关闭它，SteamVR 也会随之退出。是否继续？" \
    "ストリーミングアシスタントが実行中です。閉じるボタンと同じように終了し、SteamVR も終了します。続けますか？"
!insertmacro text StillRuns \
    "The Streaming Assistant is still running, perhaps for another user of this PC. Close it there, then try again." \
    "串流助手仍在运行，可能由本机的其他用户打开。请在那里关闭后重试。" \
    "ストリーミングアシスタントがまだ実行中です。この PC の別のユーザーが使っているかもしれません。そちらで閉じてからやり直してください。"
!insertmacro text NewerIsThere \
    "A newer version is installed. Nothing was changed." \
    "已安装更新的版本。没有作任何更改。" \
    "より新しいバージョンがインストールされています。何も変更していません。"
!insertmacro text ReplaceNewer \
    "A newer version is installed. Replace it by version ${VERSION}?" \
    "已安装更新的版本。要用版本 ${VERSION} 替换它吗？" \
    "より新しいバージョンがインストールされています。バージョン ${VERSION} に置き換えますか？"
!insertmacro text AlsoSettings \
    "Also remove your settings, known headsets and logs? They are kept otherwise." \
    "是否同时删除您的设置、已连接过的头显记录和日志？选择“否”则保留。" \
    "設定、接続したことのあるヘッドセットの記録、ログも削除しますか？「いいえ」なら残ります。"
!insertmacro text NotGivenBack \
    "What the program had changed for SteamVR could not be restored yet: another program holds the files. Close SteamVR and Steam, then try again." \
    "尚未能恢复程序对 SteamVR 所作的更改：文件被其他程序占用。请关闭 SteamVR 和 Steam 后重试。" \
    "プログラムが SteamVR に加えた変更をまだ元に戻せません。別のプログラムがファイルを使用中です。SteamVR と Steam を閉じてからやり直してください。"

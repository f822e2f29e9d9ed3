<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP" sourcelanguage="zh_CN">
<context>
    <name>HeadsetRow</name>
    <message>
        <source>上次使用</source>
        <translation>前回使用</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>接続済み</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>接続</translation>
    </message>
</context>
<context>
    <name>NoticeList</name>
    <message>
        <source>知道了</source>
        <translation type="vanished">了解</translation>
    </message>
</context>
<context>
    <name>ORBManager</name>
    <message>
        <source>切换模式中，请稍后再试</source>
        <translation>モードを切り替え中です。しばらくしてからもう一度お試しください</translation>
    </message>
    <message>
        <source>正在重启，请稍候</source>
        <translation>再起動しています。お待ちください</translation>
    </message>
    <message>
        <source>设备连接失败，请插拔眼镜再试</source>
        <translation>デバイスに接続できませんでした。ヘッドセットを抜き差ししてもう一度お試しください</translation>
    </message>
    <message>
        <source>星程之光眼镜</source>
        <translation>VRヘッドセット</translation>
    </message>
    <message>
        <source>眼镜ID：</source>
        <translation>ヘッドセットID：</translation>
    </message>
    <message>
        <source>当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备</source>
        <translation>オーディオデバイスがないか、マルチチャンネルです。ステレオに切り替えるか、ステレオのオーディオデバイスを使用してください</translation>
    </message>
    <message>
        <source>请使用管理员权限打开steam，或安装此程序到非系统目录</source>
        <translation>Steamを管理者として実行するか、このプログラムをシステムフォルダー以外にインストールしてください</translation>
    </message>
    <message>
        <source>steam启动中，请勿操作</source>
        <translation>Steamを起動しています。操作せずにお待ちください</translation>
    </message>
    <message>
        <source>正在登录steam，请稍等</source>
        <translation>Steamにログインしています。お待ちください</translation>
    </message>
    <message>
        <source>正在准备打开或者安装SteamVR,确保已登录steam</source>
        <translation>SteamVRの起動またはインストールを準備しています。Steamにログインしていることを確認してください</translation>
    </message>
    <message>
        <source>steamVR重启设置中，请勿操作</source>
        <translation>設定を適用するためSteamVRを再起動しています。操作せずにお待ちください</translation>
    </message>
    <message>
        <source>当前配置</source>
        <translation type="vanished">このPC</translation>
    </message>
    <message>
        <source>最低配置</source>
        <translation type="vanished">最低</translation>
    </message>
    <message>
        <source>推荐配置</source>
        <translation type="vanished">推奨</translation>
    </message>
    <message>
        <source>操作系统：</source>
        <translation type="vanished">OS：</translation>
    </message>
    <message>
        <source>处理器：</source>
        <translation type="vanished">プロセッサー：</translation>
    </message>
    <message>
        <source>内存：</source>
        <translation type="vanished">メモリ：</translation>
    </message>
    <message>
        <source>显卡：</source>
        <translation type="vanished">グラフィック：</translation>
    </message>
    <message>
        <source>DirectX 版本：</source>
        <translation type="vanished">DirectX：</translation>
    </message>
</context>
<context>
    <name>PageItem</name>
    <message>
        <source>连接设备中，请稍后</source>
        <translation>デバイスに接続しています。お待ちください</translation>
    </message>
    <message>
        <source>已连接，戴上眼镜开始串流吧！</source>
        <translation>接続しました。ヘッドセットを装着してストリーミングを始めましょう！</translation>
    </message>
    <message>
        <source>连接中</source>
        <translation>接続中</translation>
    </message>
    <message>
        <source>检测中</source>
        <translation>確認中</translation>
    </message>
    <message>
        <source>请选择设备连接</source>
        <translation>接続するデバイスを選択してください</translation>
    </message>
    <message>
        <source>请选择眼镜连接</source>
        <translation>接続するヘッドセットを選択してください</translation>
    </message>
    <message>
        <source>搜索中</source>
        <translation>検索中</translation>
    </message>
    <message>
        <source>切换为无线串流</source>
        <translation>ワイヤレスに切り替え</translation>
    </message>
    <message>
        <source>切换为有线串流</source>
        <translation>有線に切り替え</translation>
    </message>
    <message>
        <source>可用的VR眼镜</source>
        <translation>利用可能なVRヘッドセット</translation>
    </message>
    <message>
        <source>连接步骤</source>
        <translation>接続手順</translation>
    </message>
    <message>
        <source>将电脑和VR眼镜接入同一个路由器，电脑建议使用网线</source>
        <translation>PCとVRヘッドセットを同じルーターに接続します。PCは有線LANをおすすめします</translation>
    </message>
    <message>
        <source>戴上VR眼镜，打开串流应用</source>
        <translation>VRヘッドセットを装着し、ストリーミングアプリを開きます</translation>
    </message>
    <message>
        <source>等待眼镜出现在列表中，然后点击“连接”</source>
        <translation>ヘッドセットが一覧に表示されたら「接続」をクリックします</translation>
    </message>
    <message>
        <source>用USB 3.0数据线连接电脑和VR眼镜</source>
        <translation>USB 3.0ケーブルでPCとVRヘッドセットを接続します</translation>
    </message>
    <message>
        <source>戴上VR眼镜，允许USB调试</source>
        <translation>VRヘッドセットを装着し、USBデバッグを許可します</translation>
    </message>
    <message>
        <source>在眼镜中打开串流应用</source>
        <translation>ヘッドセットでストリーミングアプリを開きます</translation>
    </message>
    <message>
        <source>确认数据线支持USB 3.0</source>
        <translation>ケーブルがUSB 3.0に対応していることを確認します</translation>
    </message>
    <message>
        <source>确认数据线插在电脑的USB 3.0接口上（通常为蓝色）</source>
        <translation>PCのUSB 3.0ポート（通常は青色）に接続していることを確認します</translation>
    </message>
    <message>
        <source>重新插拔数据线，或更换接口后再试</source>
        <translation>ケーブルを抜き差しするか、別のポートでもう一度お試しください</translation>
    </message>
    <message>
        <source>停止串流</source>
        <translation>ストリーミングを停止</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Steam正在启动中，请稍候</source>
        <translation>Steamを起動しています。お待ちください</translation>
    </message>
    <message>
        <source>启动Steam失败</source>
        <translation>Steamを起動できませんでした</translation>
    </message>
    <message>
        <source>未找到Steam安装路径</source>
        <translation>Steamのインストール先が見つかりませんでした</translation>
    </message>
    <message>
        <source>正在重启，请等待</source>
        <translation>再起動しています。お待ちください</translation>
    </message>
</context>
<context>
    <name>SelectModePage</name>
    <message>
        <source>请选择串流方式</source>
        <translation>ストリーミング方法を選択してください</translation>
    </message>
    <message>
        <source>之后可以随时切换</source>
        <translation>後からいつでも切り替えられます</translation>
    </message>
    <message>
        <source>有线串流</source>
        <translation>有線ストリーミング</translation>
    </message>
    <message>
        <source>用USB 3.0数据线连接，画面最稳定，同时为眼镜充电</source>
        <translation>USB 3.0ケーブルで接続します。映像が最も安定し、充電もできます</translation>
    </message>
    <message>
        <source>无线串流</source>
        <translation>ワイヤレスストリーミング</translation>
    </message>
    <message>
        <source>通过Wi-Fi连接，活动自由，需要电脑和眼镜在同一个网络</source>
        <translation>Wi-Fiで接続します。自由に動けます。PCとヘッドセットを同じネットワークに接続してください</translation>
    </message>
</context>
<context>
    <name>SingleAppTip</name>
    <message>
        <source>提示</source>
        <translation>お知らせ</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>应用程序已打开</source>
        <translation>プログラムはすでに起動しています</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>SteamItem</name>
    <message>
        <source>安装</source>
        <translation>インストール</translation>
    </message>
    <message>
        <source>已启动</source>
        <translation>起動済み</translation>
    </message>
    <message>
        <source>启动</source>
        <translation>起動</translation>
    </message>
</context>
<context>
    <name>SteamPageItem</name>
    <message>
        <source>Steam软件</source>
        <translation>Steam</translation>
    </message>
    <message>
        <source>检测中</source>
        <translation>確認中</translation>
    </message>
    <message>
        <source>已就绪</source>
        <translation>準備完了</translation>
    </message>
    <message>
        <source>请按以下步骤操作</source>
        <translation>次の手順に従ってください</translation>
    </message>
    <message>
        <source>安装Steam软件</source>
        <translation>Steamをインストール</translation>
    </message>
    <message>
        <source>安装Steam VR软件</source>
        <translation>SteamVRをインストール</translation>
    </message>
    <message>
        <source>Steam VR软件</source>
        <translation>SteamVR</translation>
    </message>
    <message>
        <source>Steam VR检测不到设备？</source>
        <translation>SteamVRがヘッドセットを検出しない場合</translation>
    </message>
</context>
<context>
    <name>SystemInfo</name>
    <message>
        <source>Intel Core i5-6600/AMD锐龙3 1300X同等性能及以上</source>
        <translation>Intel Core i5-6600／AMD Ryzen 3 1300X同等以上</translation>
    </message>
    <message>
        <source>NVDIA GeFore GTX 970/AMD RX 480 同等性能及以上</source>
        <translation>NVIDIA GeForce GTX 970／AMD RX 480同等以上</translation>
    </message>
    <message>
        <source>Intel Core i7-9700/AMD 锐龙5 3600 同等性能及以上</source>
        <translation>Intel Core i7-9700／AMD Ryzen 5 3600同等以上</translation>
    </message>
    <message>
        <source>NVDIA GeFore RTX 3060/AMD RX 6600XT 同等性能及以上</source>
        <translation>NVIDIA GeForce RTX 3060／AMD RX 6600 XT同等以上</translation>
    </message>
</context>
<context>
    <name>mainWindow</name>
    <message>
        <source>安装失败请重试！</source>
        <translation type="vanished">インストールに失敗しました。もう一度お試しください。</translation>
    </message>
    <message>
        <source>串流助手</source>
        <translation>ストリーミングアシスタント</translation>
    </message>
    <message>
        <source>使用帮助</source>
        <translation>ヘルプ</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>最小化</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～</source>
        <translation>すべての手順が完了しました。VRヘッドセットを装着してゲームを楽しみましょう！</translation>
    </message>
    <message>
        <source>完成下列步骤，即可畅玩Steam游戏大作</source>
        <translation>次の手順を完了すると、Steamのゲームをプレイできます</translation>
    </message>
    <message>
        <source>不再提示</source>
        <translation>今後表示しない</translation>
    </message>
    <message>
        <source>确定切换为无线串流</source>
        <translation>ワイヤレスストリーミングに切り替えますか？</translation>
    </message>
    <message>
        <source>确定切换为有线串流</source>
        <translation>有線ストリーミングに切り替えますか？</translation>
    </message>
    <message>
        <source>确定</source>
        <translation type="vanished">OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation type="vanished">キャンセル</translation>
    </message>
    <message>
        <source>电脑正在使用电池，性能可能受限，请连接电源</source>
        <translation type="vanished">PCがバッテリーで動作しており、性能が制限される場合があります。電源に接続してください</translation>
    </message>
    <message>
        <source>发现多个VR眼镜，请在列表中选择要连接的眼镜</source>
        <translation type="vanished">複数のVRヘッドセットが見つかりました。接続するものを一覧から選択してください</translation>
    </message>
    <message>
        <source>当前网络为公用网络，电脑可能无法发现眼镜，请将其设为专用网络</source>
        <translation type="vanished">現在のネットワークはパブリックに設定されているため、ヘッドセットが見つからない場合があります。プライベートに設定してください</translation>
    </message>
    <message>
        <source>打开网络设置</source>
        <translation type="vanished">ネットワーク設定</translation>
    </message>
    <message>
        <source>以下程序占用了串流所需的端口，请将其关闭：%1</source>
        <translation type="vanished">次のプログラムがストリーミングに必要なポートを使用しています。終了してください：%1</translation>
    </message>
    <message>
        <source>显卡驱动版本过低，请更新显卡驱动</source>
        <translation type="vanished">グラフィックドライバーが古すぎます。更新してください</translation>
    </message>
    <message>
        <source>需要更新到新版本才能继续使用：%1</source>
        <translation type="vanished">続けて使用するには新しいバージョンへの更新が必要です：%1</translation>
    </message>
    <message>
        <source>发现新版本：%1</source>
        <translation type="vanished">新しいバージョンがあります：%1</translation>
    </message>
    <message>
        <source>立即更新</source>
        <translation type="vanished">今すぐ更新</translation>
    </message>
    <message>
        <source>退出</source>
        <translation type="vanished">終了</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation type="vanished">後で</translation>
    </message>
    <message>
        <source>用户反馈</source>
        <translation>ご意見</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>設定</translation>
    </message>
</context>
</TS>

<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>Banner</name>
    <message>
        <source>恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～</source>
        <translation>All steps are done. Put on your VR headset and enjoy the games!</translation>
    </message>
    <message>
        <source>完成下列步骤，即可畅玩Steam游戏大作</source>
        <translation>Complete the steps below to play your Steam games</translation>
    </message>
    <message>
        <source>不再提示</source>
        <translation>Don&apos;t show again</translation>
    </message>
</context>
<context>
    <name>ChangesModel</name>
    <message>
        <source>串流服务的设置</source>
        <translation>Settings of the streaming server</translation>
    </message>
    <message>
        <source>无法读取而被重命名的文件</source>
        <translation>A file that could not be read and was renamed</translation>
    </message>
    <message>
        <source>其他程序的adb端口转发</source>
        <translation>Port forwards of other programs in adb</translation>
    </message>
    <message>
        <source>其他程序的SteamVR驱动</source>
        <translation>SteamVR drivers of other programs</translation>
    </message>
    <message>
        <source>SteamVR的驱动列表</source>
        <translation>SteamVR&apos;s list of drivers</translation>
    </message>
</context>
<context>
    <name>ChangesPage</name>
    <message>
        <source>更改记录</source>
        <translation>Changes</translation>
    </message>
    <message>
        <source>全部恢复</source>
        <translation>Restore all</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>没有更改</source>
        <translation>Nothing was changed</translation>
    </message>
    <message>
        <source>程序没有更改过其他程序的文件。</source>
        <translation>No files of other programs were changed.</translation>
    </message>
    <message>
        <source>为了串流，程序更改了以下内容。恢复后，下次启动SteamVR时可能会再次更改。</source>
        <translation>This was changed for streaming. What you restore may be changed again when SteamVR is started next.</translation>
    </message>
    <message>
        <source>有内容未能恢复：文件被占用或没有权限。请稍后再试。</source>
        <translation>Something could not be restored: it is in use by another program, or there is no permission. Please try again later.</translation>
    </message>
    <message>
        <source>%1 起已更改</source>
        <translation>Changed since %1</translation>
    </message>
    <message>
        <source>%1 曾更改，现已恢复</source>
        <translation>Changed on %1, restored by now</translation>
    </message>
    <message>
        <source>恢复</source>
        <translation>Restore</translation>
    </message>
</context>
<context>
    <name>Checks</name>
    <message>
        <source>操作系统：</source>
        <translation>OS:</translation>
    </message>
    <message>
        <source>处理器：</source>
        <translation>Processor:</translation>
    </message>
    <message>
        <source>显卡：</source>
        <translation>Graphics:</translation>
    </message>
    <message>
        <source>驱动版本：</source>
        <translation>Driver version:</translation>
    </message>
    <message>
        <source>本机配置无法串流</source>
        <translation>This PC cannot stream</translation>
    </message>
    <message>
        <source>请升级到Windows 10或更高版本。</source>
        <translation>Upgrade to Windows 10 or later.</translation>
    </message>
    <message>
        <source>查看更多配置</source>
        <translation>More about this PC</translation>
    </message>
    <message>
        <source>处理器或显卡低于最低配置。</source>
        <translation>The processor or the graphics card is below the minimum.</translation>
    </message>
    <message>
        <source>显卡驱动版本过低</source>
        <translation>The graphics driver is out of date</translation>
    </message>
    <message>
        <source>旧版驱动可能导致画面卡顿或无法串流。请从显卡厂商的网站下载并安装最新驱动，然后重新启动电脑。</source>
        <translation>With an old driver, the picture may stutter or streaming may fail. Install the latest driver from the website of the graphics card&apos;s maker, then restart the PC.</translation>
    </message>
    <message>
        <source>使用帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>占用端口的程序</source>
        <translation>Programs that use the ports</translation>
    </message>
    <message>
        <source>当前网络为公用网络</source>
        <translation>This is a public network</translation>
    </message>
    <message>
        <source>在公用网络上，Windows会对其他设备隐藏这台电脑，眼镜可能找不到它。请打开网络设置，把当前网络的类型改为“专用”。</source>
        <translation>On public networks, Windows hides this PC from other devices, so the headset may not find it. Open the network settings and set the profile of this network to &quot;Private&quot;.</translation>
    </message>
    <message>
        <source>打开网络设置</source>
        <translation>Open network settings</translation>
    </message>
    <message>
        <source>以下程序占用了串流所需的端口</source>
        <translation>These programs use ports that streaming needs</translation>
    </message>
    <message>
        <source>请关闭这些程序，然后重新检测。</source>
        <translation>Close them, then check again.</translation>
    </message>
    <message>
        <source>重新检测</source>
        <translation>Check again</translation>
    </message>
    <message>
        <source>电脑正在使用电池供电</source>
        <translation>The PC runs on battery</translation>
    </message>
    <message>
        <source>使用电池时，处理器和显卡会降低性能，画面可能卡顿。连接电源后，此提示会自动关闭。</source>
        <translation>On battery, the processor and the graphics card slow down and the picture may stutter. This notice closes by itself once the PC is plugged in.</translation>
    </message>
    <message>
        <source>声音</source>
        <translation>Sound</translation>
    </message>
    <message>
        <source>当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备</source>
        <translation>There is no audio device, or it is a multichannel one. Switch it to stereo or use a stereo audio device</translation>
    </message>
    <message>
        <source>安装Steam软件</source>
        <translation>Install Steam</translation>
    </message>
    <message>
        <source>请按以下步骤操作</source>
        <translation>Follow these steps</translation>
    </message>
    <message>
        <source>安装</source>
        <translation>Install</translation>
    </message>
    <message>
        <source>Steam软件</source>
        <translation>Steam</translation>
    </message>
    <message>
        <source>启动</source>
        <translation>Launch</translation>
    </message>
    <message>
        <source>Steam VR软件</source>
        <translation>SteamVR</translation>
    </message>
    <message>
        <source>数据线上没有检测到VR眼镜</source>
        <translation>No VR headset was found on the cable</translation>
    </message>
    <message>
        <source>重新插拔数据线，或更换接口后再试</source>
        <translation>Unplug the cable and plug it in again, or try another port</translation>
    </message>
    <message>
        <source>文件：</source>
        <translation>File:</translation>
    </message>
    <message>
        <source>原因：</source>
        <translation>Reason:</translation>
    </message>
    <message>
        <source>无法启动Steam</source>
        <translation>Steam could not be started</translation>
    </message>
    <message>
        <source>找不到%1。Steam可能已被移动或卸载：请重新安装Steam，或手动启动它。</source>
        <translation>%1 is missing. Steam was probably moved or removed: install it again, or start it yourself.</translation>
    </message>
    <message>
        <source>Windows无法启动%1：%2请再试一次，或手动启动Steam；如果仍然失败，请重新安装Steam。</source>
        <translation>Windows cannot start %1: %2 Try again, or start Steam yourself. If it still fails, install Steam again.</translation>
    </message>
    <message>
        <source>无法关闭SteamVR</source>
        <translation>SteamVR could not be closed</translation>
    </message>
    <message>
        <source>找不到%1。切换连接方式或更改设置之前，请手动关闭SteamVR，并在Steam中验证SteamVR文件的完整性。</source>
        <translation>%1 is missing. Close SteamVR yourself before you switch the connection or change settings, and let Steam verify the files of SteamVR.</translation>
    </message>
    <message>
        <source>Windows无法启动%1：%2切换连接方式或更改设置之前，请手动关闭SteamVR，并在Steam中验证SteamVR文件的完整性。</source>
        <translation>Windows cannot start %1: %2 Close SteamVR yourself before you switch the connection or change settings, and let Steam verify the files of SteamVR.</translation>
    </message>
    <message>
        <source>错误代码：</source>
        <translation>Error code:</translation>
    </message>
    <message>
        <source>其他程序占用了串流所需的端口</source>
        <translation>Another program is in the way</translation>
    </message>
    <message>
        <source>%1正在使用端口9932，串流服务器可能连接不到本程序。请关闭它，然后重新启动本程序。</source>
        <translation>%1 uses port 9932, so that the streaming server may not reach this program. Close it, then restart this program.</translation>
    </message>
    <message>
        <source>无法使用端口9932</source>
        <translation>Port 9932 cannot be used</translation>
    </message>
    <message>
        <source>Windows不允许本程序使用端口9932（错误%1），串流服务器连接不到本程序。请重新启动电脑后再试。</source>
        <translation>Windows does not let this program use port 9932 (error %1), so that the streaming server cannot reach it. Restart the PC and try again.</translation>
    </message>
    <message>
        <source>缺少线程的功能：</source>
        <translation>Without a thread:</translation>
    </message>
    <message>
        <source>电脑的资源已用尽</source>
        <translation>This PC has run out of resources</translation>
    </message>
    <message>
        <source>Windows无法再为本程序创建线程，部分功能无法工作。请关闭其他程序，然后重新启动本程序。</source>
        <translation>Windows has no thread left for this program, so a part of it does not work. Close other programs, then start this one again.</translation>
    </message>
</context>
<context>
    <name>ConfirmPage</name>
    <message>
        <source>切换串流方式</source>
        <translation>Switch streaming mode</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>切换时SteamVR会重新启动，正在运行的VR游戏会被关闭。</source>
        <translation>SteamVR restarts for this, which closes any running VR game.</translation>
    </message>
</context>
<context>
    <name>ConnectionDetails</name>
    <message>
        <source>眼镜</source>
        <translation>Headset</translation>
    </message>
    <message>
        <source>串流方式</source>
        <translation>Link</translation>
    </message>
    <message>
        <source>有线（USB）</source>
        <translation>Wired (USB)</translation>
    </message>
    <message>
        <source>无线（Wi-Fi）</source>
        <translation>Wireless (Wi-Fi)</translation>
    </message>
    <message>
        <source>码率</source>
        <translation>Bitrate</translation>
    </message>
    <message>
        <source>连接进度</source>
        <translation>Connection progress</translation>
    </message>
    <message>
        <source>连接详情</source>
        <translation>Connection details</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frame rate</translation>
    </message>
    <message>
        <source>其他提示</source>
        <translation>Also found</translation>
    </message>
    <message>
        <source>串流服务程序</source>
        <translation>Streaming server program</translation>
    </message>
</context>
<context>
    <name>DialogWindow</name>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>DrawerTab</name>
    <message>
        <source>收起连接详情</source>
        <translation>Hide connection details</translation>
    </message>
    <message>
        <source>展开连接详情</source>
        <translation>Show connection details</translation>
    </message>
</context>
<context>
    <name>FeedbackPage</name>
    <message>
        <source>用户反馈</source>
        <translation>Feedback</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>提交</source>
        <translation>Send</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>已提交，感谢您的反馈</source>
        <translation>Sent. Thank you for your feedback</translation>
    </message>
    <message>
        <source>我们会根据您的反馈改进产品。</source>
        <translation>We will use it to improve the product.</translation>
    </message>
    <message>
        <source>我们会根据您的反馈改进产品，需要时会与您联系。</source>
        <translation>We will use it to improve the product, and get in touch if we have to.</translation>
    </message>
    <message>
        <source>问题或建议</source>
        <translation>Problem or suggestion</translation>
    </message>
    <message>
        <source>已输入%1个字，最多%2个字</source>
        <translation>%1 of at most %2 characters</translation>
    </message>
    <message>
        <source>请描述您遇到的问题，或告诉我们您的想法</source>
        <translation>Describe the problem, or tell us what you have in mind</translation>
    </message>
    <message>
        <source>联系方式（选填）</source>
        <translation>How to reach you (optional)</translation>
    </message>
    <message>
        <source>手机号或邮箱</source>
        <translation>Phone number or e-mail address</translation>
    </message>
    <message>
        <source>提交后，您填写的内容和这台电脑的配置信息（含设备标识）会发送给我们，以便查找问题。</source>
        <translation>What you write is sent to us with a description of this PC and its identifier, so that we can find the problem.</translation>
    </message>
    <message>
        <source>正在提交</source>
        <translation>Submitting</translation>
    </message>
    <message>
        <source>反馈未能发送</source>
        <translation>The feedback could not be sent</translation>
    </message>
    <message>
        <source>内容已保存在这台电脑上。请检查网络，稍后再提交一次。</source>
        <translation>What you wrote is kept on this PC. Please check the network and submit it again later.</translation>
    </message>
    <message>
        <source>feedback.json未能保存（磁盘空间不足，或没有写入权限），反馈没有发送。请重试。</source>
        <translation>feedback.json could not be saved (the disk is full, or no permission): nothing was sent. Please try again.</translation>
    </message>
</context>
<context>
    <name>HeadsetList</name>
    <message>
        <source>可用的VR眼镜</source>
        <translation>Available VR headsets</translation>
    </message>
</context>
<context>
    <name>HeadsetRow</name>
    <message>
        <source>上次使用</source>
        <translation>Last used</translation>
    </message>
    <message>
        <source>已连接</source>
        <translation>Connected</translation>
    </message>
    <message>
        <source>连接</source>
        <translation>Connect</translation>
    </message>
</context>
<context>
    <name>LinkBadge</name>
    <message>
        <source>有线</source>
        <translation>Wired</translation>
    </message>
    <message>
        <source>无线</source>
        <translation>Wireless</translation>
    </message>
</context>
<context>
    <name>MoreSettingPage</name>
    <message>
        <source>选择VR眼镜</source>
        <translation>Choose a VR headset</translation>
    </message>
    <message>
        <source>串流设置</source>
        <translation>Streaming settings</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation>Not now</translation>
    </message>
    <message>
        <source>发现多个VR眼镜，请选择要连接的眼镜</source>
        <translation>Several VR headsets found. Choose the one to connect</translation>
    </message>
    <message>
        <source>请选择要连接的眼镜</source>
        <translation>Choose the headset to connect</translation>
    </message>
    <message>
        <source>搜索中</source>
        <translation>Searching</translation>
    </message>
    <message>
        <source>串流设置按眼镜型号保存，连接后自动生效。</source>
        <translation>Streaming settings are kept for each headset model and apply once it is connected.</translation>
    </message>
    <message>
        <source>请戴上VR眼镜，打开串流应用，并确认它和电脑在同一个网络。</source>
        <translation>Put on the VR headset, open the streaming app, and make sure that it is in the same network as the PC.</translation>
    </message>
    <message>
        <source>连接设备中，请稍后</source>
        <translation>Connecting the device, please wait</translation>
    </message>
</context>
<context>
    <name>NetworkSetting</name>
    <message>
        <source>网络设置</source>
        <translation>Network settings</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation>Not now</translation>
    </message>
    <message>
        <source>打开网络设置</source>
        <translation>Open network settings</translation>
    </message>
    <message>
        <source>当前网络为公用网络</source>
        <translation>This is a public network</translation>
    </message>
    <message>
        <source>在公用网络上，Windows会对其他设备隐藏这台电脑，眼镜可能找不到它。请打开网络设置，把当前网络的类型改为“专用”。</source>
        <translation>On public networks, Windows hides this PC from other devices, so the headset may not find it. Open the network settings and set the profile of this network to &quot;Private&quot;.</translation>
    </message>
</context>
<context>
    <name>ORBManager</name>
    <message>
        <source>切换模式中，请稍后再试</source>
        <translation>Switching modes, please try again later</translation>
    </message>
    <message>
        <source>正在重启，请稍候</source>
        <translation>Restarting, please wait</translation>
    </message>
    <message>
        <source>设备连接失败，请插拔眼镜再试</source>
        <translation>Could not connect the device. Unplug the headset, plug it in again and retry</translation>
    </message>
    <message>
        <source>星程之光眼镜</source>
        <translation>VR headset</translation>
    </message>
    <message>
        <source>眼镜ID：</source>
        <translation>Headset ID: </translation>
    </message>
    <message>
        <source>当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备</source>
        <translation>There is no audio device, or it is a multichannel one. Switch it to stereo or use a stereo audio device</translation>
    </message>
    <message>
        <source>请使用管理员权限打开steam，或安装此程序到非系统目录</source>
        <translation>Run Steam as administrator, or install this program outside of the system folders</translation>
    </message>
    <message>
        <source>steam启动中，请勿操作</source>
        <translation>Steam is starting, please wait</translation>
    </message>
    <message>
        <source>正在登录steam，请稍等</source>
        <translation>Logging in to Steam, please wait</translation>
    </message>
    <message>
        <source>正在准备打开或者安装SteamVR,确保已登录steam</source>
        <translation>Preparing to launch or install SteamVR. Make sure that you are logged in to Steam</translation>
    </message>
    <message>
        <source>steamVR重启设置中，请勿操作</source>
        <translation>SteamVR is restarting to apply the settings, please wait</translation>
    </message>
    <message>
        <source>当前配置</source>
        <translation>This PC</translation>
    </message>
    <message>
        <source>最低配置</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>推荐配置</source>
        <translation>Recommended</translation>
    </message>
    <message>
        <source>操作系统：</source>
        <translation>OS:</translation>
    </message>
    <message>
        <source>处理器：</source>
        <translation>Processor:</translation>
    </message>
    <message>
        <source>内存：</source>
        <translation>Memory:</translation>
    </message>
    <message>
        <source>显卡：</source>
        <translation>Graphics:</translation>
    </message>
    <message>
        <source>DirectX 版本：</source>
        <translation>DirectX:</translation>
    </message>
    <message>
        <source>虚拟声卡的安装程序没有有效的签名，未启动</source>
        <translation>The installer of the virtual sound card has no valid signature and was not started</translation>
    </message>
    <message>
        <source>即将启动由“%1”签名的安装程序</source>
        <translation>Starting the installer that “%1” has signed</translation>
    </message>
</context>
<context>
    <name>PageItem</name>
    <message>
        <source>连接设备中，请稍后</source>
        <translation>Connecting the device, please wait</translation>
    </message>
    <message>
        <source>已连接，戴上眼镜开始串流吧！</source>
        <translation>Connected. Put on the headset and start streaming!</translation>
    </message>
    <message>
        <source>连接中</source>
        <translation>Connecting</translation>
    </message>
    <message>
        <source>检测中</source>
        <translation>Checking</translation>
    </message>
    <message>
        <source>请选择设备连接</source>
        <translation>Choose a device to connect</translation>
    </message>
    <message>
        <source>请选择眼镜连接</source>
        <translation>Choose a headset to connect</translation>
    </message>
    <message>
        <source>搜索中</source>
        <translation>Searching</translation>
    </message>
    <message>
        <source>切换为无线串流</source>
        <translation>Switch to wireless</translation>
    </message>
    <message>
        <source>切换为有线串流</source>
        <translation>Switch to wired</translation>
    </message>
    <message>
        <source>可用的VR眼镜</source>
        <translation>Available VR headsets</translation>
    </message>
    <message>
        <source>连接步骤</source>
        <translation>How to connect</translation>
    </message>
    <message>
        <source>将电脑和VR眼镜接入同一个路由器，电脑建议使用网线</source>
        <translation>Connect the PC and the VR headset to the same router; use a network cable for the PC if you can</translation>
    </message>
    <message>
        <source>戴上VR眼镜，打开串流应用</source>
        <translation>Put on the VR headset and open the streaming app</translation>
    </message>
    <message>
        <source>等待眼镜出现在列表中，然后点击“连接”</source>
        <translation>Wait until the headset appears in the list, then click &quot;Connect&quot;</translation>
    </message>
    <message>
        <source>用USB 3.0数据线连接电脑和VR眼镜</source>
        <translation>Connect the VR headset to the PC with a USB 3.0 cable</translation>
    </message>
    <message>
        <source>戴上VR眼镜，允许USB调试</source>
        <translation>Put on the VR headset and allow USB debugging</translation>
    </message>
    <message>
        <source>在眼镜中打开串流应用</source>
        <translation>Open the streaming app on the headset</translation>
    </message>
    <message>
        <source>确认数据线支持USB 3.0</source>
        <translation>Make sure that the cable supports USB 3.0</translation>
    </message>
    <message>
        <source>确认数据线插在电脑的USB 3.0接口上（通常为蓝色）</source>
        <translation>Make sure that it is plugged into a USB 3.0 port of the PC (usually blue)</translation>
    </message>
    <message>
        <source>重新插拔数据线，或更换接口后再试</source>
        <translation>Unplug the cable and plug it in again, or try another port</translation>
    </message>
    <message>
        <source>停止串流</source>
        <translation>Stop streaming</translation>
    </message>
    <message>
        <source>星程之光眼镜</source>
        <translation>VR headset</translation>
    </message>
</context>
<context>
    <name>PowerDownPage</name>
    <message>
        <source>请连接电源</source>
        <translation>Plug in the PC</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>Got it</translation>
    </message>
    <message>
        <source>电脑正在使用电池供电</source>
        <translation>The PC runs on battery</translation>
    </message>
    <message>
        <source>使用电池时，处理器和显卡会降低性能，画面可能卡顿。连接电源后，此提示会自动关闭。</source>
        <translation>On battery, the processor and the graphics card slow down and the picture may stutter. This notice closes by itself once the PC is plugged in.</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>进行中</source>
        <translation>In progress</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>Steam正在启动中，请稍候</source>
        <translation>Steam is starting, please wait</translation>
    </message>
    <message>
        <source>启动Steam失败</source>
        <translation>Could not start Steam</translation>
    </message>
    <message>
        <source>未找到Steam安装路径</source>
        <translation>Could not find where Steam is installed</translation>
    </message>
    <message>
        <source>正在重启，请等待</source>
        <translation>Restarting, please wait</translation>
    </message>
    <message>
        <source>SteamVR未能自动关闭，请手动关闭</source>
        <translation>SteamVR did not close by itself. Close it yourself</translation>
    </message>
    <message>
        <source>上次运行意外中断，遗留的状态已恢复</source>
        <translation>The last run broke off; what it left behind has been put right</translation>
    </message>
</context>
<context>
    <name>SelectModePage</name>
    <message>
        <source>请选择串流方式</source>
        <translation>Choose how to stream</translation>
    </message>
    <message>
        <source>之后可以随时切换</source>
        <translation>You can switch at any time</translation>
    </message>
    <message>
        <source>有线串流</source>
        <translation>Wired streaming</translation>
    </message>
    <message>
        <source>用USB 3.0数据线连接，画面最稳定，同时为眼镜充电</source>
        <translation>Over a USB 3.0 cable: the steadiest picture, and the headset charges meanwhile</translation>
    </message>
    <message>
        <source>无线串流</source>
        <translation>Wireless streaming</translation>
    </message>
    <message>
        <source>通过Wi-Fi连接，活动自由，需要电脑和眼镜在同一个网络</source>
        <translation>Over Wi-Fi: free to move. The PC and the headset have to be on the same network</translation>
    </message>
    <message>
        <source>为了改进产品，程序会向我们发送使用情况和这台电脑的配置信息（含设备标识）；可以在串流设置中关闭。</source>
        <translation>To improve the product, usage events and a description of this PC with its identifier are sent to us; this can be switched off in the streaming settings.</translation>
    </message>
</context>
<context>
    <name>SettingPage</name>
    <message>
        <source>切换码率</source>
        <translation>Bitrate changed</translation>
    </message>
    <message>
        <source>串流设置</source>
        <translation>Streaming settings</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>清晰度</source>
        <translation>Quality</translation>
    </message>
    <message>
        <source>流畅</source>
        <translation>Smooth</translation>
    </message>
    <message>
        <source>标准</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>高清</source>
        <translation>High</translation>
    </message>
    <message>
        <source>自定义</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>渲染比例</source>
        <translation>Render scale</translation>
    </message>
    <message>
        <source>码率（有线）</source>
        <translation>Bitrate (wired)</translation>
    </message>
    <message>
        <source>码率（无线）</source>
        <translation>Bitrate (wireless)</translation>
    </message>
    <message>
        <source>帧率</source>
        <translation>Frame rate</translation>
    </message>
    <message>
        <source>视频编码</source>
        <translation>Video codec</translation>
    </message>
    <message>
        <source>麦克风</source>
        <translation>Microphone</translation>
    </message>
    <message>
        <source>把眼镜的麦克风用作电脑的麦克风</source>
        <translation>Use the headset&apos;s microphone as this PC&apos;s microphone</translation>
    </message>
    <message>
        <source>只更改码率，SteamVR不会重新启动</source>
        <translation>Only the bitrate changes: SteamVR keeps running</translation>
    </message>
    <message>
        <source>确定后SteamVR会重新启动，正在运行的VR游戏会被关闭</source>
        <translation>SteamVR will restart, which closes any running VR game</translation>
    </message>
    <message>
        <source>适合信号较弱的网络，画面最流畅</source>
        <translation>For weak networks, with the smoothest picture</translation>
    </message>
    <message>
        <source>兼顾画质和延迟，适合大多数情况</source>
        <translation>Good picture at low latency, right for most</translation>
    </message>
    <message>
        <source>画质最好，适合有线连接或高速Wi-Fi</source>
        <translation>The best picture, for a cable or fast Wi-Fi</translation>
    </message>
    <message>
        <source>需要先安装虚拟声卡。完成安装程序后，请再次打开。</source>
        <translation>This needs a virtual sound card. Finish its installer, then switch this on again.</translation>
    </message>
    <message>
        <source>使用情况</source>
        <translation>Usage events</translation>
    </message>
    <message>
        <source>向我们发送使用情况和这台电脑的配置信息，立即生效</source>
        <translation>Send usage events and a description of this PC to us; takes effect at once</translation>
    </message>
</context>
<context>
    <name>SingleAppTip</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>应用程序已打开</source>
        <translation>The program is already running</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>StageList</name>
    <message>
        <source>已就绪</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>等待中</source>
        <translation>Waiting</translation>
    </message>
    <message>
        <source>未就绪</source>
        <translation>Not yet</translation>
    </message>
    <message>
        <source>自 %1</source>
        <translation>since %1</translation>
    </message>
</context>
<context>
    <name>StageModel</name>
    <message>
        <source>Steam</source>
        <translation>Steam</translation>
    </message>
    <message>
        <source>SteamVR</source>
        <translation>SteamVR</translation>
    </message>
    <message>
        <source>串流服务</source>
        <translation>Streaming server</translation>
    </message>
    <message>
        <source>VR眼镜</source>
        <translation>VR headset</translation>
    </message>
    <message>
        <source>串流连接</source>
        <translation>Streaming connection</translation>
    </message>
</context>
<context>
    <name>StageStrip</name>
    <message>
        <source>全部就绪</source>
        <translation>All done</translation>
    </message>
    <message>
        <source>正在等待：%1</source>
        <translation>Waiting for: %1</translation>
    </message>
    <message>
        <source>正在等待：%1（自 %2）</source>
        <translation>Waiting for: %1 (since %2)</translation>
    </message>
</context>
<context>
    <name>SteamItem</name>
    <message>
        <source>安装</source>
        <translation>Install</translation>
    </message>
    <message>
        <source>已启动</source>
        <translation>Running</translation>
    </message>
    <message>
        <source>启动</source>
        <translation>Launch</translation>
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
        <translation>Checking</translation>
    </message>
    <message>
        <source>已就绪</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>请按以下步骤操作</source>
        <translation>Follow these steps</translation>
    </message>
    <message>
        <source>安装Steam软件</source>
        <translation>Install Steam</translation>
    </message>
    <message>
        <source>安装Steam VR软件</source>
        <translation>Install SteamVR</translation>
    </message>
    <message>
        <source>Steam VR软件</source>
        <translation>SteamVR</translation>
    </message>
    <message>
        <source>Steam VR检测不到设备？</source>
        <translation>SteamVR does not detect the headset?</translation>
    </message>
</context>
<context>
    <name>SwitchRow</name>
    <message>
        <source>开</source>
        <translation>On</translation>
    </message>
    <message>
        <source>关</source>
        <translation>Off</translation>
    </message>
</context>
<context>
    <name>SystemInfo</name>
    <message>
        <source>Intel Core i5-6600/AMD锐龙3 1300X同等性能及以上</source>
        <translation>Intel Core i5-6600 / AMD Ryzen 3 1300X equivalent or better</translation>
    </message>
    <message>
        <source>NVDIA GeFore GTX 970/AMD RX 480 同等性能及以上</source>
        <translation>NVIDIA GeForce GTX 970 / AMD RX 480 equivalent or better</translation>
    </message>
    <message>
        <source>Intel Core i7-9700/AMD 锐龙5 3600 同等性能及以上</source>
        <translation>Intel Core i7-9700 / AMD Ryzen 5 3600 equivalent or better</translation>
    </message>
    <message>
        <source>NVDIA GeFore RTX 3060/AMD RX 6600XT 同等性能及以上</source>
        <translation>NVIDIA GeForce RTX 3060 / AMD RX 6600 XT equivalent or better</translation>
    </message>
</context>
<context>
    <name>SystemInfoPage</name>
    <message>
        <source>系统信息</source>
        <translation>System information</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>检测中</source>
        <translation>Checking</translation>
    </message>
    <message>
        <source>选择串流方式后，会检测这台电脑的配置。</source>
        <translation>This PC is checked once a streaming mode is chosen.</translation>
    </message>
    <message>
        <source>更改记录</source>
        <translation>Changes</translation>
    </message>
</context>
<context>
    <name>SystemPageItem</name>
    <message>
        <source>PC配置</source>
        <translation>PC configuration</translation>
    </message>
    <message>
        <source>本机配置符合要求</source>
        <translation>This PC meets the requirements</translation>
    </message>
    <message>
        <source>本机配置无法串流</source>
        <translation>This PC cannot stream</translation>
    </message>
    <message>
        <source>检测中</source>
        <translation>Checking</translation>
    </message>
    <message>
        <source>查看更多配置</source>
        <translation>More about this PC</translation>
    </message>
</context>
<context>
    <name>TitleRow</name>
    <message>
        <source>使用帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>用户反馈</source>
        <translation>Feedback</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>最小化</source>
        <translation>Minimize</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>UnwrittenFiles</name>
    <message>
        <source>磁盘空间不足</source>
        <translation>the disk is full</translation>
    </message>
    <message>
        <source>文件被占用或没有权限</source>
        <translation>in use by another program, or no permission</translation>
    </message>
    <message>
        <source>setting.inf未能保存（%1）。下次启动时不会自动连接这副眼镜。</source>
        <translation>setting.inf could not be saved (%1). This headset will not be connected by itself at the next start.</translation>
    </message>
    <message>
        <source>session.json未能保存（%1）。串流会继续使用原来的设置。</source>
        <translation>session.json could not be saved (%1). Streaming goes on with its earlier settings.</translation>
    </message>
    <message>
        <source>set.json未能保存（%1）。当前的串流设置在下次启动时会丢失。</source>
        <translation>set.json could not be saved (%1). The present streaming settings will be lost at the next start.</translation>
    </message>
    <message>
        <source>文件不存在</source>
        <translation>there is no such file</translation>
    </message>
    <message>
        <source>文件已损坏</source>
        <translation>the file is damaged</translation>
    </message>
    <message>
        <source>openvrpaths.vrpath未能写入（%1）。SteamVR启动时没有串流驱动，眼镜中不会有画面。</source>
        <translation>openvrpaths.vrpath could not be written (%1). SteamVR starts without the streaming driver: there will be no picture in the headset.</translation>
    </message>
    <message>
        <source>usage.json未能保存（%1）。关于使用情况的选择在下次启动时会丢失。</source>
        <translation>usage.json could not be saved (%1). The choice about usage events will be lost at the next start.</translation>
    </message>
</context>
<context>
    <name>UpdateGpuDriverTips</name>
    <message>
        <source>更新显卡驱动</source>
        <translation>Update the graphics driver</translation>
    </message>
    <message>
        <source>使用帮助</source>
        <translation>Help</translation>
    </message>
    <message>
        <source>知道了</source>
        <translation>Got it</translation>
    </message>
    <message>
        <source>显卡驱动版本过低</source>
        <translation>The graphics driver is out of date</translation>
    </message>
    <message>
        <source>旧版驱动可能导致画面卡顿或无法串流。请从显卡厂商的网站下载并安装最新驱动，然后重新启动电脑。</source>
        <translation>With an old driver, the picture may stutter or streaming may fail. Install the latest driver from the website of the graphics card&apos;s maker, then restart the PC.</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>安装失败请重试！</source>
        <translation>Installation failed, please try again!</translation>
    </message>
    <message>
        <source>发现新版本</source>
        <translation>Update available</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation>Not now</translation>
    </message>
    <message>
        <source>退出</source>
        <translation>Exit</translation>
    </message>
    <message>
        <source>立即更新</source>
        <translation>Update now</translation>
    </message>
    <message>
        <source>安装未能开始</source>
        <translation>The installation did not start</translation>
    </message>
    <message>
        <source>需要更新到新版本才能继续使用</source>
        <translation>The program has to be updated before you can go on</translation>
    </message>
    <message>
        <source>新版本已下载，可以安装</source>
        <translation>A new version is ready to be installed</translation>
    </message>
    <message>
        <source>请重试；如果仍然失败，请重新启动程序后再更新。</source>
        <translation>Try again. If it still fails, restart the program and update then.</translation>
    </message>
    <message>
        <source>安装时程序会关闭。</source>
        <translation>The program closes for the installation.</translation>
    </message>
    <message>
        <source>正在下载</source>
        <translation>Downloading</translation>
    </message>
    <message>
        <source>正在下载：%1%</source>
        <translation>Downloading: %1%</translation>
    </message>
    <message>
        <source>更新内容</source>
        <translation>What&apos;s new</translation>
    </message>
</context>
<context>
    <name>UsePortProcessTips</name>
    <message>
        <source>端口被占用</source>
        <translation>Ports in use</translation>
    </message>
    <message>
        <source>以后再说</source>
        <translation>Not now</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>重新检测</source>
        <translation>Check again</translation>
    </message>
    <message>
        <source>端口已释放</source>
        <translation>The ports are free</translation>
    </message>
    <message>
        <source>以下程序占用了串流所需的端口</source>
        <translation>These programs use ports that streaming needs</translation>
    </message>
    <message>
        <source>现在可以开始串流了。</source>
        <translation>You can start streaming now.</translation>
    </message>
    <message>
        <source>请关闭这些程序，然后重新检测。</source>
        <translation>Close them, then check again.</translation>
    </message>
    <message>
        <source>占用端口的程序</source>
        <translation>Programs that use the ports</translation>
    </message>
</context>
<context>
    <name>WaitNotice</name>
    <message>
        <source>正在等待SteamVR关闭</source>
        <translation>SteamVR is being closed</translation>
    </message>
    <message>
        <source>另一个程序占用了串流服务器的共享内存</source>
        <translation>Another program holds the streaming server&apos;s shared memory</translation>
    </message>
    <message>
        <source>正在等待adb结束</source>
        <translation>adb is being ended</translation>
    </message>
    <message>
        <source>正在等待另一个程序</source>
        <translation>Another program is being waited for</translation>
    </message>
    <message>
        <source>比平时更久。结束SteamVR会丢失游戏中未保存的进度。</source>
        <translation>This is longer than usual. Ending SteamVR loses whatever the game has not saved.</translation>
    </message>
    <message>
        <source>通常不超过半分钟。</source>
        <translation>It usually takes less than half a minute.</translation>
    </message>
    <message>
        <source>请关闭其他串流程序。</source>
        <translation>Close other streaming programs.</translation>
    </message>
    <message>
        <source>可以不再等待，稍后重启电脑。</source>
        <translation>You can go on without waiting, and restart the PC later.</translation>
    </message>
    <message>
        <source>请稍候</source>
        <translation>Please wait</translation>
    </message>
    <message>
        <source>结束SteamVR</source>
        <translation>End SteamVR</translation>
    </message>
    <message>
        <source>不再等待</source>
        <translation>Go on without waiting</translation>
    </message>
    <message>
        <source>继续等待</source>
        <translation>Keep waiting</translation>
    </message>
    <message>
        <source>已等待%1秒。%2</source>
        <translation>Waiting for %1 s. %2</translation>
    </message>
</context>
<context>
    <name>WaitPage</name>
    <message>
        <source>请稍候</source>
        <translation>Please wait</translation>
    </message>
    <message>
        <source>完成后此窗口会自动关闭。</source>
        <translation>This window closes by itself when it is done.</translation>
    </message>
</context>
<context>
    <name>mainWindow</name>
    <message>
        <source>串流助手</source>
        <translation>Streaming Assistant</translation>
    </message>
    <message>
        <source>确定切换为无线串流</source>
        <translation>Switch to wireless streaming?</translation>
    </message>
    <message>
        <source>确定切换为有线串流</source>
        <translation>Switch to wired streaming?</translation>
    </message>
    <message>
        <source>正在退出</source>
        <translation>Closing the program</translation>
    </message>
</context>
</TS>

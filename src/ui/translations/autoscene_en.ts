<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>AdbDevices</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>正在启动ADB服务</source>
        <translation>Starting the ADB service…</translation>
    </message>
    <message>
        <source>ADB服务启动失败</source>
        <translation>The ADB service failed to start</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::AutoRunner</name>
    <message>
        <source>欢迎使用</source>
        <translation>Welcome</translation>
    </message>
    <message>
        <source>新建任务</source>
        <translation>New task</translation>
    </message>
    <message>
        <source>打开文件夹</source>
        <translation>Open folder</translation>
    </message>
    <message>
        <source>最近的任务</source>
        <translation>Recent tasks</translation>
    </message>
    <message>
        <source>无法打开任务 %1: %2</source>
        <translation>Cannot open the task %1: %2</translation>
    </message>
    <message>
        <source>无法新建任务 %1: %2</source>
        <translation>Cannot create a task in %1: %2</translation>
    </message>
    <message>
        <source>在任务页运行</source>
        <translation>Run on the task page</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::DeviceListDialog</name>
    <message>
        <source>ADB设备</source>
        <translation>ADB devices</translation>
    </message>
    <message>
        <source>设备</source>
        <translation>Devices</translation>
    </message>
    <message>
        <source>刷新</source>
        <translation>Refresh</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>未发现ADB设备，请先连接设备</source>
        <translation>No ADB device found; connect a device first.</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::EventTree</name>
    <message>
        <source>事件</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>%1 (已禁用)</source>
        <translation>%1 (disabled)</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::HotKeyRegistrar</name>
    <message>
        <source>截图热键</source>
        <translation>Screenshot hot key</translation>
    </message>
    <message>
        <source>启动热键</source>
        <translation>Start hot key</translation>
    </message>
    <message>
        <source>停止热键</source>
        <translation>Stop hot key</translation>
    </message>
    <message>
        <source>注册失败</source>
        <translation> could not be registered</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::LogTargetWindow</name>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>当前日志窗口:</source>
        <translation>Current log window:</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>运行目标</source>
        <translation>Targets</translation>
    </message>
    <message>
        <source>目标%1</source>
        <translation>Target %1</translation>
    </message>
    <message>
        <source>%1 截图失败</source>
        <translation>%1 screenshot failed</translation>
    </message>
    <message>
        <source>%1 进入界面 %2</source>
        <translation>%1 entered scene %2</translation>
    </message>
    <message>
        <source>%1 %2 › %3</source>
        <translation>%1 %2 › %3</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::LoopModeDialog</name>
    <message>
        <source>选择运行模式</source>
        <translation>Choose the run mode</translation>
    </message>
    <message>
        <source>顺序模式</source>
        <translation>Sequential mode</translation>
    </message>
    <message>
        <source>单事件模式</source>
        <translation>Single-event mode</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::MainWindow</name>
    <message>
        <source>界面</source>
        <translation>Scenes</translation>
    </message>
    <message>
        <source>事件</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>目标</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>工具栏</source>
        <translation>Toolbar</translation>
    </message>
    <message>
        <source>原图</source>
        <translation>Source images</translation>
    </message>
    <message>
        <source>截图</source>
        <translation>Screenshots</translation>
    </message>
    <message>
        <source>变量</source>
        <translation>Variables</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>运行</source>
        <translation>Run</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>回放</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Colours</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>模型</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>全屏模式</source>
        <translation>Full screen</translation>
    </message>
    <message>
        <source>未选择目标窗口</source>
        <translation>No target window selected</translation>
    </message>
    <message>
        <source>ADB模式</source>
        <translation>ADB mode</translation>
    </message>
    <message>
        <source>文件夹中没有 script.json</source>
        <translation>The folder holds no script.json</translation>
    </message>
    <message>
        <source>Autoscene - %1</source>
        <translation>Autoscene - %1</translation>
    </message>
    <message>
        <source>保存失败: %1</source>
        <translation>Saving failed: %1</translation>
    </message>
    <message>
        <source>任务可能保存失败,关闭后将导致任务异常,请确认是否关闭?</source>
        <translation>The task may not have been saved; closing now may leave it broken. Close anyway?</translation>
    </message>
    <message>
        <source>运行状态</source>
        <translation>Run</translation>
    </message>
    <message>
        <source>任务正在运行中,请停止后任务再关闭</source>
        <translation>The task is running; stop it before closing.</translation>
    </message>
    <message>
        <source>截图失败！</source>
        <translation>Screenshot failed!</translation>
    </message>
    <message>
        <source>截图已保存: %1</source>
        <translation>Screenshot saved: %1</translation>
    </message>
    <message>
        <source>选择窗口</source>
        <translation>Choose window</translation>
    </message>
    <message>
        <source>查看修改窗口信息</source>
        <translation>View and edit window information</translation>
    </message>
    <message>
        <source>ADB模式: %1</source>
        <translation>ADB mode: %1</translation>
    </message>
</context>
<context>
    <name>Prompts</name>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>是</source>
        <translation>Yes</translation>
    </message>
    <message>
        <source>否</source>
        <translation>No</translation>
    </message>
</context>
<context>
    <name>RunConfiguration</name>
    <message>
        <source>: 需要 window 或 serial</source>
        <translation>: needs window or serial</translation>
    </message>
    <message>
        <source>.window: 不是窗口句柄</source>
        <translation>.window: not a window handle</translation>
    </message>
    <message>
        <source>.variables.%1: 需要变量编号和文本值</source>
        <translation>.variables.%1: needs a variable id and a text value</translation>
    </message>
    <message>
        <source>第 %1 字节: %2</source>
        <translation>byte %1: %2</translation>
    </message>
    <message>
        <source>targets: 需要数组</source>
        <translation>targets: needs an array</translation>
    </message>
    <message>
        <source>名称不能为空，也不能含有 / \ : * ? &quot; &lt; &gt; |</source>
        <translation>The name must not be empty nor contain / \ : * ? &quot; &lt; &gt; |</translation>
    </message>
    <message>
        <source>无法创建文件夹 %1</source>
        <translation>Cannot create the folder %1</translation>
    </message>
    <message>
        <source>文件过大</source>
        <translation>The file is too large</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::RunControl</name>
    <message>
        <source>未发现指定窗口,是否重新选择</source>
        <translation>The window was not found. Choose again?</translation>
    </message>
    <message>
        <source>发现多个目标窗口,需要先选择窗口</source>
        <translation>Several target windows were found; choose one first.</translation>
    </message>
    <message>
        <source>当前窗口大小与选择窗口时大小不一致，可能会导致脚本运行时识别不准备，是否调整窗口大小！</source>
        <translation>The window&apos;s size differs from when it was chosen, which may make recognition inaccurate. Resize the window?</translation>
    </message>
    <message>
        <source>需要先选择目标窗口</source>
        <translation>Choose a target window first.</translation>
    </message>
    <message>
        <source>检测到你还未设置自动化任务的运行模式，请先设置运行模式后再编辑脚本</source>
        <translation>You have not set the run mode of automation tasks yet; set it before editing the task.</translation>
    </message>
    <message>
        <source>运行模式选择提示</source>
        <translation>Choose the run mode</translation>
    </message>
    <message>
        <source>运行模式修改提示</source>
        <translation>Run mode changed</translation>
    </message>
    <message>
        <source>检测到你的运行模式已修改，当前脚本的运行模式为%1，是否修改成%2执行</source>
        <translation>Your run mode has changed: this task runs in %1. Run it in %2 instead?</translation>
    </message>
    <message>
        <source>不修改</source>
        <translation>Keep</translation>
    </message>
    <message>
        <source>修改后执行</source>
        <translation>Change and run</translation>
    </message>
    <message>
        <source>截图失败！</source>
        <translation>Screenshot failed!</translation>
    </message>
    <message>
        <source>文字识别服务异常,请重启任务或手动开启文字识别服务</source>
        <translation>The text recognition service failed; restart the task or start the service by hand.</translation>
    </message>
    <message>
        <source>未发现ADB设备，请先连接设备</source>
        <translation>No ADB device found; connect a device first.</translation>
    </message>
    <message>
        <source>查看设置</source>
        <translation>View settings</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::RunFeed</name>
    <message>
        <source>全屏</source>
        <translation>Full screen</translation>
    </message>
    <message>
        <source>窗口 0x%1</source>
        <translation>Window 0x%1</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::RunView</name>
    <message>
        <source>目标</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>当前界面</source>
        <translation>Scene</translation>
    </message>
    <message>
        <source>已触发事件</source>
        <translation>Events fired</translation>
    </message>
    <message>
        <source>变量</source>
        <translation>Variables</translation>
    </message>
    <message>
        <source>值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>运行目标</source>
        <translation>Targets</translation>
    </message>
    <message>
        <source>目标%1</source>
        <translation>Target %1</translation>
    </message>
    <message>
        <source>%1: 截图失败</source>
        <translation>%1: screenshot failed</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::SceneListView</name>
    <message>
        <source>界面</source>
        <translation>Scenes</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>请输入新名称</source>
        <translation>Enter a new name</translation>
    </message>
    <message>
        <source>界面名称为空或已存在</source>
        <translation>The scene name is empty or already taken</translation>
    </message>
    <message>
        <source>是否删除界面</source>
        <translation>Delete the scene?</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::SettingView</name>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>扩大默认搜索范围</source>
        <translation>Enlarge the default search range</translation>
    </message>
    <message>
        <source>并行</source>
        <translation>Parallel</translation>
    </message>
    <message>
        <source>串行</source>
        <translation>One after another</translation>
    </message>
    <message>
        <source>注:并行运行速度快、占用资源高，串行运行效率慢、占用资源少</source>
        <translation>Note: parallel runs fast and uses more resources; one after another runs slower and uses fewer.</translation>
    </message>
    <message>
        <source>运行速度</source>
        <translation>Run speed</translation>
    </message>
    <message>
        <source>极速</source>
        <translation>Fastest</translation>
    </message>
    <message>
        <source>中等</source>
        <translation>Medium</translation>
    </message>
    <message>
        <source>偏慢</source>
        <translation>Slow</translation>
    </message>
    <message>
        <source>龟速</source>
        <translation>Very slow</translation>
    </message>
    <message>
        <source>后台截图</source>
        <translation>Background capture</translation>
    </message>
    <message>
        <source>后台键鼠</source>
        <translation>Background keyboard and mouse</translation>
    </message>
    <message>
        <source>任务</source>
        <translation>Task</translation>
    </message>
    <message>
        <source>多窗口</source>
        <translation>Several windows</translation>
    </message>
    <message>
        <source>热键</source>
        <translation>Hot keys</translation>
    </message>
    <message>
        <source>截图热键</source>
        <translation>Screenshot hot key</translation>
    </message>
    <message>
        <source>启动热键</source>
        <translation>Start hot key</translation>
    </message>
    <message>
        <source>停止热键</source>
        <translation>Stop hot key</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::TaskMainPage</name>
    <message>
        <source>选择配置</source>
        <translation>Choose configuration</translation>
    </message>
    <message>
        <source>运行目标</source>
        <translation>Targets</translation>
    </message>
    <message>
        <source>保存配置</source>
        <translation>Save configuration</translation>
    </message>
    <message>
        <source>加载配置</source>
        <translation>Load configuration</translation>
    </message>
    <message>
        <source>一键同步</source>
        <translation>Sync to all</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>启动</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>日志</source>
        <translation>Log</translation>
    </message>
    <message>
        <source>窗口列表</source>
        <translation>Window list</translation>
    </message>
    <message>
        <source>文件夹中没有 script.json</source>
        <translation>The folder holds no script.json</translation>
    </message>
    <message>
        <source>任务页 - %1</source>
        <translation>Task page - %1</translation>
    </message>
    <message>
        <source>目标</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>输入名称</source>
        <translation>Enter a name</translation>
    </message>
    <message>
        <source>保存配置失败: %1</source>
        <translation>Saving the configuration failed: %1</translation>
    </message>
    <message>
        <source>还没有保存任何配置</source>
        <translation>No configuration saved yet</translation>
    </message>
    <message>
        <source>配置 %1 无法读取: %2</source>
        <translation>The configuration %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>将当前配置信息同步给所有设备</source>
        <translation>Sync the current configuration to all devices</translation>
    </message>
    <message>
        <source>未发现指定窗口: %1</source>
        <translation>Window not found: %1</translation>
    </message>
    <message>
        <source>需要先选择目标窗口</source>
        <translation>Choose a target window first.</translation>
    </message>
    <message>
        <source>任务正在运行中,请停止后任务再关闭</source>
        <translation>The task is running; stop it before closing.</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::WindowInfoDialog</name>
    <message>
        <source>查看修改窗口信息</source>
        <translation>View and edit window information</translation>
    </message>
    <message>
        <source>窗口标题</source>
        <translation>Window title</translation>
    </message>
    <message>
        <source>完全匹配标题</source>
        <translation>Match the whole title</translation>
    </message>
    <message>
        <source>窗口类名</source>
        <translation>Window class</translation>
    </message>
    <message>
        <source>子窗口标题</source>
        <translation>Child window title</translation>
    </message>
    <message>
        <source>子窗口类名</source>
        <translation>Child window class</translation>
    </message>
    <message>
        <source>运行时调整窗口大小</source>
        <translation>Resize the window when a run starts</translation>
    </message>
    <message>
        <source>宽</source>
        <translation>Width</translation>
    </message>
    <message>
        <source>高</source>
        <translation>Height</translation>
    </message>
    <message>
        <source>注:如果使用后台键鼠失效或异常，可以尝试指定子窗口作为事件输入窗口</source>
        <translation>Note: if background keyboard and mouse input fails or misbehaves, try naming a child window as the input window.</translation>
    </message>
    <message>
        <source>窗口大小</source>
        <translation>Window size</translation>
    </message>
    <message>
        <source>请先选择窗口信息</source>
        <translation>Choose the window information first.</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::WindowListDialog</name>
    <message>
        <source>选择窗口</source>
        <translation>Choose window</translation>
    </message>
    <message>
        <source>窗口</source>
        <translation>Windows</translation>
    </message>
    <message>
        <source>%1  [%2]  %3x%4</source>
        <translation>%1  [%2]  %3x%4</translation>
    </message>
    <message>
        <source>点击目标窗口选择</source>
        <translation>Click on the target window</translation>
    </message>
    <message>
        <source>鼠标变为十字后点击目标窗口；右键或 Esc 取消</source>
        <translation>Click on the target window once the pointer is a crosshair; right-click or Esc cancels</translation>
    </message>
    <message>
        <source>鼠标正被其他程序占用，请从列表中选择</source>
        <translation>Another program holds the mouse; choose from the list</translation>
    </message>
    <message>
        <source>不能选择该窗口，请选择其他程序的窗口</source>
        <translation>This window cannot be chosen; choose a window of another program</translation>
    </message>
</context>
</TS>

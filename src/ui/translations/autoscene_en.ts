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
    <name>CycleDetails</name>
    <message>
        <source>条件组</source>
        <translation>Condition group</translation>
    </message>
    <message>
        <source>%1 识别界面 %2</source>
        <translation>%1 identify scene %2</translation>
    </message>
    <message>
        <source>%1 事件 %2 (%3)</source>
        <translation>%1 event %2 (%3)</translation>
    </message>
    <message>
        <source>→ 进入界面 %1</source>
        <translation>→ entered scene %1</translation>
    </message>
    <message>
        <source>→ 触发 %1 (%2)</source>
        <translation>→ fired %1 (%2)</translation>
    </message>
    <message>
        <source>结束于界面 %1</source>
        <translation>Ended on scene %1</translation>
    </message>
    <message>
        <source>结束时不在任何界面</source>
        <translation>Ended on no scene</translation>
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
    <name>autoscene::ui::EditedReplay</name>
    <message>
        <source>找不到文字识别服务 morvane-ocr: 屏幕文字按空白比较</source>
        <translation>Text recognition service morvane-ocr not found: screen text compares as empty</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::EventListModel</name>
    <message>
        <source>%1 (已禁用)</source>
        <translation>%1 (disabled)</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::EventTree</name>
    <message>
        <source>事件</source>
        <translation>Events</translation>
    </message>
    <message>
        <source>新事件</source>
        <translation>New event</translation>
    </message>
    <message>
        <source>添加事件</source>
        <translation>Add event</translation>
    </message>
    <message>
        <source>编辑事件 %1</source>
        <translation>Edit event %1</translation>
    </message>
    <message>
        <source>是否删除选中的事件?</source>
        <translation>Delete the selected events?</translation>
    </message>
    <message>
        <source>启用/禁用事件</source>
        <translation>Enable/disable events</translation>
    </message>
    <message>
        <source>请输入新名称</source>
        <translation>Enter a new name</translation>
    </message>
    <message>
        <source>重命名事件 %1</source>
        <translation>Rename event %1</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>粘贴</source>
        <translation>Paste</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>启用/禁用</source>
        <translation>Enable/disable</translation>
    </message>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::EvidenceView</name>
    <message>
        <source>画面与证据</source>
        <translation>Frame and evidence</translation>
    </message>
    <message>
        <source>此周期没有画面</source>
        <translation>No frame in this cycle</translation>
    </message>
    <message>
        <source>%1: %2 个像素 (阈值 %3)</source>
        <translation>%1: %2 pixels (threshold %3)</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::FieldTexts</name>
    <message>
        <source>关系</source>
        <translation>Relation</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>标签</source>
        <translation>Label</translation>
    </message>
    <message>
        <source>搜索范围</source>
        <translation>Search area</translation>
    </message>
    <message>
        <source>点击偏移</source>
        <translation>Click offset</translation>
    </message>
    <message>
        <source>变量</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>超时</source>
        <translation>Time limit</translation>
    </message>
    <message>
        <source>0 为不限时</source>
        <translation>0 = no limit</translation>
    </message>
    <message>
        <source>重置计时</source>
        <translation>Restart the clock</translation>
    </message>
    <message>
        <source>状态</source>
        <translation>State</translation>
    </message>
    <message>
        <source>与变量比较</source>
        <translation>Compare with a variable</translation>
    </message>
    <message>
        <source>比较的变量</source>
        <translation>Compared variable</translation>
    </message>
    <message>
        <source>比较的值</source>
        <translation>Compared value</translation>
    </message>
    <message>
        <source>文字区域</source>
        <translation>Text region</translation>
    </message>
    <message>
        <source>默认值</source>
        <translation>Default value</translation>
    </message>
    <message>
        <source>图像处理</source>
        <translation>Image preparation</translation>
    </message>
    <message>
        <source>阈值</source>
        <translation>Threshold</translation>
    </message>
    <message>
        <source>过滤颜色</source>
        <translation>Filter colour</translation>
    </message>
    <message>
        <source>过滤相似度</source>
        <translation>Filter similarity</translation>
    </message>
    <message>
        <source>数量</source>
        <translation>Count</translation>
    </message>
    <message>
        <source>数量容差</source>
        <translation>Count tolerance</translation>
    </message>
    <message>
        <source>相似度</source>
        <translation>Similarity</translation>
    </message>
    <message>
        <source>JavaScript代码</source>
        <translation>JavaScript code</translation>
    </message>
    <message>
        <source>鼠标操作</source>
        <translation>Mouse operation</translation>
    </message>
    <message>
        <source>等待时间</source>
        <translation>Wait</translation>
    </message>
    <message>
        <source>点击时长</source>
        <translation>Press time</translation>
    </message>
    <message>
        <source>默认为0，即普通点击</source>
        <translation>0, the default, is an ordinary click</translation>
    </message>
    <message>
        <source>点击间隔</source>
        <translation>Click interval</translation>
    </message>
    <message>
        <source>点击间隔,每次点击的间隔</source>
        <translation>Click interval, the pause between two clicks</translation>
    </message>
    <message>
        <source>点击次数</source>
        <translation>Clicks</translation>
    </message>
    <message>
        <source>坐标间隔</source>
        <translation>Interval between points</translation>
    </message>
    <message>
        <source>多个坐标之间的点击间隔,用于竖线分隔的多个坐标</source>
        <translation>Pause between the points of a list of points separated by &quot;|&quot;</translation>
    </message>
    <message>
        <source>取变量的值</source>
        <translation>Take a variable&apos;s value</translation>
    </message>
    <message>
        <source>新的值</source>
        <translation>New value</translation>
    </message>
    <message>
        <source>修改方式</source>
        <translation>Change</translation>
    </message>
    <message>
        <source>值来自变量</source>
        <translation>Value from variable</translation>
    </message>
    <message>
        <source>保存的坐标</source>
        <translation>Point saved</translation>
    </message>
    <message>
        <source>文字</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>输入变量</source>
        <translation>Typed variable</translation>
    </message>
    <message>
        <source>经过的坐标变量</source>
        <translation>Point variables passed</translation>
    </message>
    <message>
        <source>变量名,以逗号分隔</source>
        <translation>Variable names separated by commas</translation>
    </message>
    <message>
        <source>每段时长</source>
        <translation>Segment length</translation>
    </message>
    <message>
        <source>各段时间</source>
        <translation>Segment times</translation>
    </message>
    <message>
        <source>秒数,以逗号分隔</source>
        <translation>Seconds separated by commas</translation>
    </message>
    <message>
        <source>不重置的变量</source>
        <translation>Variables kept</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>点击后按下要用的键</source>
        <translation>Click, then press the key</translation>
    </message>
    <message>
        <source>组合键</source>
        <translation>Key combination</translation>
    </message>
    <message>
        <source>点击后按下要用的组合键</source>
        <translation>Click, then press the key combination</translation>
    </message>
    <message>
        <source>按键操作</source>
        <translation>Key operation</translation>
    </message>
    <message>
        <source>选择变量</source>
        <translation>Choose variable</translation>
    </message>
    <message>
        <source>滚动量</source>
        <translation>Wheel amount</translation>
    </message>
    <message>
        <source>滚动位置</source>
        <translation>Wheel position</translation>
    </message>
    <message>
        <source>最大值</source>
        <translation>Maximum</translation>
    </message>
    <message>
        <source>最小值</source>
        <translation>Minimum</translation>
    </message>
    <message>
        <source>应用路径</source>
        <translation>Application path</translation>
    </message>
    <message>
        <source>路径变量</source>
        <translation>Path variable</translation>
    </message>
    <message>
        <source>插件动作</source>
        <translation>Plug-in action</translation>
    </message>
    <message>
        <source>插件描述文件</source>
        <translation>Plug-in description file</translation>
    </message>
    <message>
        <source>包名变量</source>
        <translation>Package variable</translation>
    </message>
    <message>
        <source>Activity变量</source>
        <translation>Activity variable</translation>
    </message>
    <message>
        <source>包名</source>
        <translation>Package</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>Activity</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>作用域</source>
        <translation>Scope</translation>
    </message>
    <message>
        <source>本地</source>
        <translation>Local</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>配置变量只能在启动时设置,任务运行过程中不能修改</source>
        <translation>Configuration variables are set at start-up only and cannot change while the task runs</translation>
    </message>
    <message>
        <source>全局</source>
        <translation>Global</translation>
    </message>
    <message>
        <source>全局变量针对多窗口设计,任何一个窗口修改此变量,所有窗口都生效</source>
        <translation>Global variables are meant for several windows: a change made by any window takes effect in all of them</translation>
    </message>
    <message>
        <source>行数</source>
        <translation>Lines</translation>
    </message>
    <message>
        <source>样式</source>
        <translation>Style</translation>
    </message>
    <message>
        <source>条件可选值</source>
        <translation>Condition values</translation>
    </message>
    <message>
        <source>每行一个</source>
        <translation>One per line</translation>
    </message>
    <message>
        <source>动作可选值</source>
        <translation>Action values</translation>
    </message>
    <message>
        <source>延迟(秒)：</source>
        <translation>Delay (s):</translation>
    </message>
    <message>
        <source>第一次触发的延迟时间</source>
        <translation>Delay before the first trigger</translation>
    </message>
    <message>
        <source>间隔(秒)：</source>
        <translation>Interval (s):</translation>
    </message>
    <message>
        <source>循环间隔(默认为0即不循环)</source>
        <translation>Repeat interval (0, the default, does not repeat)</translation>
    </message>
    <message>
        <source>默认关闭</source>
        <translation>Off at start</translation>
    </message>
    <message>
        <source>延迟可配置</source>
        <translation>Delay is configurable</translation>
    </message>
    <message>
        <source>间隔可配置</source>
        <translation>Interval is configurable</translation>
    </message>
    <message>
        <source>时间：</source>
        <translation>Time:</translation>
    </message>
    <message>
        <source>重复</source>
        <translation>Repeat</translation>
    </message>
    <message>
        <source>原图</source>
        <translation>Source image</translation>
    </message>
    <message>
        <source>区域</source>
        <translation>Area</translation>
    </message>
    <message>
        <source>x,y,宽,高</source>
        <translation>x,y,width,height</translation>
    </message>
    <message>
        <source>目标</source>
        <translation>Target</translation>
    </message>
    <message>
        <source>屏幕</source>
        <translation>Screen</translation>
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
        <source>密度</source>
        <translation>Density</translation>
    </message>
    <message>
        <source>像素步长</source>
        <translation>Pixel stride</translation>
    </message>
    <message>
        <source>行填充</source>
        <translation>Row padding</translation>
    </message>
    <message>
        <source>并且</source>
        <translation>and</translation>
    </message>
    <message>
        <source>或者</source>
        <translation>or</translation>
    </message>
    <message>
        <source>鼠标左键点击</source>
        <translation>Left click</translation>
    </message>
    <message>
        <source>鼠标右键点击</source>
        <translation>Right click</translation>
    </message>
    <message>
        <source>鼠标移动到</source>
        <translation>Move the mouse</translation>
    </message>
    <message>
        <source>鼠标左键按下</source>
        <translation>Left button down</translation>
    </message>
    <message>
        <source>鼠标右键按下</source>
        <translation>Right button down</translation>
    </message>
    <message>
        <source>设置</source>
        <translation>Set</translation>
    </message>
    <message>
        <source>自增</source>
        <translation>Increment</translation>
    </message>
    <message>
        <source>自减</source>
        <translation>Decrement</translation>
    </message>
    <message>
        <source>重置变量</source>
        <translation>Reset</translation>
    </message>
    <message>
        <source>点击按键:</source>
        <translation>Click key:</translation>
    </message>
    <message>
        <source>按下:</source>
        <translation>Press:</translation>
    </message>
    <message>
        <source>抬起:</source>
        <translation>Release:</translation>
    </message>
    <message>
        <source>组合键:</source>
        <translation>Key combination:</translation>
    </message>
    <message>
        <source>只触发一次</source>
        <translation>Once</translation>
    </message>
    <message>
        <source>每天</source>
        <translation>Every day</translation>
    </message>
    <message>
        <source>存在</source>
        <translation>present</translation>
    </message>
    <message>
        <source>不存在</source>
        <translation>absent</translation>
    </message>
    <message>
        <source>等于</source>
        <translation>equal to</translation>
    </message>
    <message>
        <source>不等于</source>
        <translation>not equal to</translation>
    </message>
    <message>
        <source>大于</source>
        <translation>greater than</translation>
    </message>
    <message>
        <source>小于</source>
        <translation>less than</translation>
    </message>
    <message>
        <source>包含</source>
        <translation>contains</translation>
    </message>
    <message>
        <source>不包含</source>
        <translation>does not contain</translation>
    </message>
    <message>
        <source>开始字符等于:</source>
        <translation>starts with:</translation>
    </message>
    <message>
        <source>变化</source>
        <translation>changes</translation>
    </message>
    <message>
        <source>不变化</source>
        <translation>does not change</translation>
    </message>
    <message>
        <source>多于</source>
        <translation>more than</translation>
    </message>
    <message>
        <source>少于</source>
        <translation>fewer than</translation>
    </message>
    <message>
        <source>鼠标左键抬起</source>
        <translation>Left button up</translation>
    </message>
    <message>
        <source>鼠标右键抬起</source>
        <translation>Right button up</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Arguments</translation>
    </message>
    <message>
        <source>变量值</source>
        <translation>Variable values</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Inputs</translation>
    </message>
    <message>
        <source>选项</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>选项输入</source>
        <translation>Option inputs</translation>
    </message>
    <message>
        <source>结果</source>
        <translation>Results</translation>
    </message>
    <message>
        <source>输出</source>
        <translation>Outputs</translation>
    </message>
    <message>
        <source>彩色</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>二值化</source>
        <translation>Threshold</translation>
    </message>
    <message>
        <source>HLS</source>
        <translation>HLS</translation>
    </message>
    <message>
        <source>中心点</source>
        <translation>Centre</translation>
    </message>
    <message>
        <source>比较的文字</source>
        <translation>Compared text</translation>
    </message>
    <message>
        <source> 秒</source>
        <translation> s</translation>
    </message>
    <message>
        <source> 毫秒</source>
        <translation> ms</translation>
    </message>
    <message>
        <source> 分钟</source>
        <translation> min</translation>
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
    <name>autoscene::ui::ItemCatalog</name>
    <message>
        <source>普通</source>
        <translation>Normal</translation>
    </message>
    <message>
        <source>普通变量可保存、修改内容,每次运行任务恢复为默认值</source>
        <translation>Normal variables can be saved and changed; every run of the task starts from the default value</translation>
    </message>
    <message>
        <source>本地</source>
        <translation>Local</translation>
    </message>
    <message>
        <source>配置</source>
        <translation>Configuration</translation>
    </message>
    <message>
        <source>配置变量只能在启动时设置,任务运行过程中不能修改</source>
        <translation>Configuration variables are set at start-up only and cannot change while the task runs</translation>
    </message>
    <message>
        <source>全局</source>
        <translation>Global</translation>
    </message>
    <message>
        <source>全局变量针对多窗口设计,任何一个窗口修改此变量,所有窗口都生效</source>
        <translation>Global variables are meant for several windows: a change made by any window takes effect in all of them</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>变量</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>计时器</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>定时器</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>屏幕文字</source>
        <translation>Screen text</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>标签</source>
        <translation>Label</translation>
    </message>
    <message>
        <source>JavaScript</source>
        <translation>JavaScript</translation>
    </message>
    <message>
        <source>点击坐标</source>
        <translation>Click point</translation>
    </message>
    <message>
        <source>点击图片</source>
        <translation>Click image</translation>
    </message>
    <message>
        <source>点击颜色</source>
        <translation>Click colour</translation>
    </message>
    <message>
        <source>点击文字</source>
        <translation>Click text</translation>
    </message>
    <message>
        <source>点击标签</source>
        <translation>Click label</translation>
    </message>
    <message>
        <source>鼠标抬起</source>
        <translation>Mouse button up</translation>
    </message>
    <message>
        <source>鼠标滚轮</source>
        <translation>Mouse wheel</translation>
    </message>
    <message>
        <source>滑动</source>
        <translation>Slide</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>输入文字</source>
        <translation>Type text</translation>
    </message>
    <message>
        <source>修改变量</source>
        <translation>Change variable</translation>
    </message>
    <message>
        <source>重置所有变量</source>
        <translation>Reset all variables</translation>
    </message>
    <message>
        <source>保存屏幕内容</source>
        <translation>Save screen content</translation>
    </message>
    <message>
        <source>保存图片坐标</source>
        <translation>Save image position</translation>
    </message>
    <message>
        <source>保存标签坐标</source>
        <translation>Save label position</translation>
    </message>
    <message>
        <source>执行JS代码</source>
        <translation>Run JS code</translation>
    </message>
    <message>
        <source>插件动作</source>
        <translation>Plug-in action</translation>
    </message>
    <message>
        <source>启动应用</source>
        <translation>Start application</translation>
    </message>
    <message>
        <source>延迟</source>
        <translation>Delay</translation>
    </message>
    <message>
        <source>停止任务</source>
        <translation>Stop task</translation>
    </message>
    <message>
        <source>随机</source>
        <translation>Random</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>编写JavaScript代码</source>
        <translation>Write JavaScript code</translation>
    </message>
    <message>
        <source>JavaScript代码返回true时条件成立，其它值条件不成立</source>
        <translation>The condition holds when the JavaScript code returns true, otherwise not</translation>
    </message>
    <message>
        <source>区域超出屏幕 (%1×%2)</source>
        <translation>The area is outside the screen (%1×%2)</translation>
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
        <source>选择窗口</source>
        <translation>Choose window</translation>
    </message>
    <message>
        <source>撤销</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>重做</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>提示</source>
        <translation>Notice</translation>
    </message>
    <message>
        <source>任务已修改,是否保存?</source>
        <translation>The task has changed. Save it?</translation>
    </message>
    <message>
        <source>不保存</source>
        <translation>Don&apos;t save</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>查看修改窗口信息</source>
        <translation>View and edit window information</translation>
    </message>
    <message>
        <source>ADB模式: %1</source>
        <translation>ADB mode: %1</translation>
    </message>
    <message>
        <source>修改设置</source>
        <translation>Change settings</translation>
    </message>
    <message>
        <source>更改目标</source>
        <translation>Change target</translation>
    </message>
    <message>
        <source>任务中没有界面 %1</source>
        <translation>The task has no scene %1</translation>
    </message>
    <message>
        <source>原图已保存: %1</source>
        <translation>Source image saved: %1</translation>
    </message>
    <message>
        <source>图片</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>插件列表</source>
        <translation>Plug-in list</translation>
    </message>
    <message>
        <source>颜色列表</source>
        <translation>Colours</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::ModelsDialog</name>
    <message>
        <source>文件不存在：%1</source>
        <translation>File not found: %1</translation>
    </message>
    <message>
        <source>任务里已有另一个同名文件：%1</source>
        <translation>The task already holds a different file of that name: %1</translation>
    </message>
    <message>
        <source>无法复制到 %1</source>
        <translation>Cannot copy to %1</translation>
    </message>
    <message>
        <source>模型</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>标签</source>
        <translation>Label</translation>
    </message>
    <message>
        <source>最小概率</source>
        <translation>Minimum probability</translation>
    </message>
    <message>
        <source>原图</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>选择模型文件</source>
        <translation>Choose model files</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>没有模型</source>
        <translation>No model</translation>
    </message>
    <message>
        <source>权重文件</source>
        <translation>Weights file</translation>
    </message>
    <message>
        <source>权重 (*.weights)</source>
        <translation>Weights (*.weights)</translation>
    </message>
    <message>
        <source>配置文件</source>
        <translation>Configuration file</translation>
    </message>
    <message>
        <source>配置 (*.cfg)</source>
        <translation>Configuration (*.cfg)</translation>
    </message>
    <message>
        <source>标签名文件</source>
        <translation>Label names file</translation>
    </message>
    <message>
        <source>标签名 (*.names)</source>
        <translation>Label names (*.names)</translation>
    </message>
    <message>
        <source>模型名不可用：%1</source>
        <translation>Unusable model name: %1</translation>
    </message>
    <message>
        <source>模型文件无法读取：%1</source>
        <translation>The model files cannot be read: %1</translation>
    </message>
    <message>
        <source>没有找到：%1</source>
        <translation>Not found: %1</translation>
    </message>
    <message>
        <source>模型 %1，标签数：%2</source>
        <translation>Model %1, labels: %2</translation>
    </message>
    <message>
        <source>找到的框：%1</source>
        <translation>Boxes found: %1</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::PlaybackWindow</name>
    <message>
        <source>回放</source>
        <translation>Playback</translation>
    </message>
    <message>
        <source>录像</source>
        <translation>Recording</translation>
    </message>
    <message>
        <source>打开...</source>
        <translation>Open...</translation>
    </message>
    <message>
        <source>录像:</source>
        <translation>Recording:</translation>
    </message>
    <message>
        <source>界面变化</source>
        <translation>Scene change</translation>
    </message>
    <message>
        <source>修改后决定不同</source>
        <translation>Decides differently after the edit</translation>
    </message>
    <message>
        <source>触发事件</source>
        <translation>Event fired</translation>
    </message>
    <message>
        <source>决定</source>
        <translation>Decision</translation>
    </message>
    <message>
        <source>证据</source>
        <translation>Evidence</translation>
    </message>
    <message>
        <source>变量、计时器与定时器</source>
        <translation>Variables, timers and alarms</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>类型</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>在编辑器中打开</source>
        <translation>Open in editor</translation>
    </message>
    <message>
        <source>选择录像文件夹</source>
        <translation>Choose a recording folder</translation>
    </message>
    <message>
        <source>◀ 界面变化</source>
        <translation>◀ Scene change</translation>
    </message>
    <message>
        <source>◀ 触发</source>
        <translation>◀ Fired</translation>
    </message>
    <message>
        <source>◀ 上一周期</source>
        <translation>◀ Previous cycle</translation>
    </message>
    <message>
        <source>下一周期 ▶</source>
        <translation>Next cycle ▶</translation>
    </message>
    <message>
        <source>触发 ▶</source>
        <translation>Fired ▶</translation>
    </message>
    <message>
        <source>界面变化 ▶</source>
        <translation>Scene change ▶</translation>
    </message>
    <message>
        <source>差异 ▶</source>
        <translation>Difference ▶</translation>
    </message>
    <message>
        <source>无法打开录像: %1</source>
        <translation>Cannot open the recording: %1</translation>
    </message>
    <message>
        <source>%1: %2 个周期, %3 个目标</source>
        <translation>%1: %2 cycles, %3 target(s)</translation>
    </message>
    <message>
        <source>目标%1 周期 %2 (%3/%4) %5</source>
        <translation>Target %1 cycle %2 (%3/%4) %5</translation>
    </message>
    <message>
        <source>此周期的画面在录制时被丢弃 (磁盘跟不上)</source>
        <translation>This cycle&apos;s frame was dropped while recording (the disk fell behind)</translation>
    </message>
    <message>
        <source>无法读取画面 %1</source>
        <translation>Cannot read frame %1</translation>
    </message>
    <message>
        <source>正在用修改后的任务重放录像...</source>
        <translation>Replaying the recording with the edited task...</translation>
    </message>
    <message>
        <source>修改后的任务在录像的每个周期都作出相同的决定</source>
        <translation>The edited task decides as recorded in every cycle</translation>
    </message>
    <message>
        <source>修改后的任务在 %1 个周期作出不同的决定 (红色)</source>
        <translation>The edited task decides differently in %1 cycles (red)</translation>
    </message>
    <message>
        <source>%1 中还没有录像: config.ini 的 playback 打开时, 每次运行都会录制</source>
        <translation>No recordings in %1 yet: while playback is on in config.ini, every run is recorded</translation>
    </message>
    <message>
        <source>录像状态</source>
        <translation>Recording status</translation>
    </message>
    <message>
        <source>图例</source>
        <translation>Legend</translation>
    </message>
    <message>
        <source>修改后的重放</source>
        <translation>Replay after the edit</translation>
    </message>
    <message>
        <source>当前周期</source>
        <translation>Current cycle</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::PluginFuncsDialog</name>
    <message>
        <source>插件功能</source>
        <translation>Plug-in services</translation>
    </message>
    <message>
        <source>截屏</source>
        <translation>Capture</translation>
    </message>
    <message>
        <source>鼠标</source>
        <translation>Mouse</translation>
    </message>
    <message>
        <source>键盘</source>
        <translation>Keyboard</translation>
    </message>
    <message>
        <source>输入</source>
        <translation>Text input</translation>
    </message>
    <message>
        <source>滚轮</source>
        <translation>Wheel</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::ProbePanel</name>
    <message>
        <source>在屏幕上测试</source>
        <translation>Test on screen</translation>
    </message>
    <message>
        <source>画面</source>
        <translation>Frame</translation>
    </message>
    <message>
        <source>原图 %1</source>
        <translation>Original %1</translation>
    </message>
    <message>
        <source>候选</source>
        <translation>Candidates</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>成立</source>
        <translation>Holds</translation>
    </message>
    <message>
        <source>不成立：%1</source>
        <translation>Fails: %1</translation>
    </message>
    <message>
        <source>（阈值 %1）</source>
        <translation> (threshold %1)</translation>
    </message>
    <message>
        <source>（颜色像素 %1）</source>
        <translation> (%1 pixels of the colour)</translation>
    </message>
    <message>
        <source>，会点击 %1,%2</source>
        <translation>, would click %1,%2</translation>
    </message>
    <message>
        <source>%1  %2</source>
        <translation>%1  %2</translation>
    </message>
    <message>
        <source>%1  %2（范围外）</source>
        <translation>%1  %2 (outside the area)</translation>
    </message>
    <message>
        <source>当前目标</source>
        <translation>Current target</translation>
    </message>
    <message>
        <source>当前屏幕（未选择目标，截取整个屏幕）</source>
        <translation>Current screen (no target chosen: the whole screen)</translation>
    </message>
    <message>
        <source>正在截取画面…</source>
        <translation>Capturing the frame…</translation>
    </message>
    <message>
        <source>没有文字识别服务（找不到 morvane-ocr），读不到文字</source>
        <translation>No text recognition service (morvane-ocr not found): no text can be read</translation>
    </message>
    <message>
        <source>文字识别服务没有运行或还在启动，读不到文字；请稍后再试</source>
        <translation>The text recognition service is not running or still starting: no text was read; try again shortly</translation>
    </message>
    <message>
        <source>。%1</source>
        <translation>. %1</translation>
    </message>
    <message>
        <source>条件</source>
        <translation>Conditions</translation>
    </message>
    <message>
        <source>%1：%2</source>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>，正在查找范围外…</source>
        <translation>, looking beyond the search area…</translation>
    </message>
    <message>
        <source>这个条件组里没有条件</source>
        <translation>This condition group holds no conditions</translation>
    </message>
</context>
<context>
    <name>ProbeReasons</name>
    <message>
        <source>没有画面</source>
        <translation>No frame</translation>
    </message>
    <message>
        <source>此项不看屏幕</source>
        <translation>This item does not look at the screen</translation>
    </message>
    <message>
        <source>图片不存在或无法读取</source>
        <translation>The image file is missing or cannot be read</translation>
    </message>
    <message>
        <source>图片大于查找范围</source>
        <translation>template larger than the area</translation>
    </message>
    <message>
        <source>在查找范围之外</source>
        <translation>outside the search area</translation>
    </message>
    <message>
        <source>相似度 %1 &lt; %2</source>
        <translation>score %1 &lt; %2</translation>
    </message>
    <message>
        <source>图片在屏幕上：相似度 %1 ≥ %2</source>
        <translation>the image is on the screen: score %1 ≥ %2</translation>
    </message>
    <message>
        <source>没有加载标签模型</source>
        <translation>no label model is loaded</translation>
    </message>
    <message>
        <source>没有标签 %1 的框</source>
        <translation>no box of label %1</translation>
    </message>
    <message>
        <source>标签 %1 在屏幕上：概率 %2</source>
        <translation>label %1 is on the screen: probability %2</translation>
    </message>
    <message>
        <source>颜色已被删除</source>
        <translation>the colour was deleted</translation>
    </message>
    <message>
        <source>颜色像素 %1，不多于 %2</source>
        <translation>%1 pixels of the colour, not more than %2</translation>
    </message>
    <message>
        <source>颜色像素 %1，多于 %2</source>
        <translation>%1 pixels of the colour, more than %2</translation>
    </message>
    <message>
        <source>颜色的变化要两帧才能看出</source>
        <translation>a change of the colour shows only between two frames</translation>
    </message>
    <message>
        <source>范围内没有读到“%1”</source>
        <translation>“%1” was not read in the area</translation>
    </message>
    <message>
        <source>读到了“%1”</source>
        <translation>“%1” was read</translation>
    </message>
    <message>
        <source>不会点击：%1</source>
        <translation>would not click: %1</translation>
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
    <message>
        <source>关闭</source>
        <translation>Close</translation>
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
    <message>
        <source>插件加载失败</source>
        <translation>The plug-in failed to load</translation>
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
    <message>
        <source>新建界面</source>
        <translation>New scene</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
</context>
<context>
    <name>ScreenResources</name>
    <message>
        <source>请输入名称</source>
        <translation>Enter a name</translation>
    </message>
    <message>
        <source>请在原图上框选一个区域</source>
        <translation>Draw a rectangle on the source image</translation>
    </message>
    <message>
        <source>截图失败！</source>
        <translation>Screenshot failed!</translation>
    </message>
    <message>
        <source>任务运行中,不能修改</source>
        <translation>The task is running and cannot be changed</translation>
    </message>
    <message>
        <source>已存在此名字的图片</source>
        <translation>An image with this name already exists</translation>
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
    <message>
        <source>后台设置说明:
1、目标窗口不能最小化,部分应用不支持相关功能
2、使用ADB和全屏模式不需要设置此项
3、可以选择插件替代编辑器的后台功能，插件包括截屏、点击、输入等基础功能</source>
        <translation>Background notes:
1. The target window must not be minimised; some applications do not support this
2. ADB and full-screen mode need no background setting
3. A plug-in can replace the background functions: capture, click, input and the like</translation>
    </message>
    <message>
        <source>插件</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>选择插件</source>
        <translation>Choose plug-in</translation>
    </message>
    <message>
        <source>插件功能</source>
        <translation>Plug-in services</translation>
    </message>
    <message>
        <source>插件加载失败</source>
        <translation>The plug-in failed to load</translation>
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
    <message>
        <source>修改设置</source>
        <translation>Change settings</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::TemplatesDialog</name>
    <message>
        <source>图片</source>
        <translation>Images</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>使用次数</source>
        <translation>Uses</translation>
    </message>
    <message>
        <source>文件</source>
        <translation>File</translation>
    </message>
    <message>
        <source>范围</source>
        <translation>Rectangle</translation>
    </message>
    <message>
        <source>原图</source>
        <translation>Original</translation>
    </message>
    <message>
        <source>预览</source>
        <translation>Preview</translation>
    </message>
    <message>
        <source>使用者</source>
        <translation>Used by</translation>
    </message>
    <message>
        <source>唯一性</source>
        <translation>Uniqueness</translation>
    </message>
    <message>
        <source>重命名</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>从原图替换</source>
        <translation>Replace from original</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>图片文件不存在</source>
        <translation>The image file is missing</translation>
    </message>
    <message>
        <source>没有原图</source>
        <translation>No original</translation>
    </message>
    <message>
        <source>%1,%2（相似度 %3）</source>
        <translation>%1,%2 (score %3)</translation>
    </message>
    <message>
        <source>在这张原图上只有一处达到阈值</source>
        <translation>Only one place on this original reaches the threshold</translation>
    </message>
    <message>
        <source>在别处也达到阈值：%1</source>
        <translation>Also reaches the threshold elsewhere: %1</translation>
    </message>
    <message>
        <source>，</source>
        <translation>, </translation>
    </message>
    <message>
        <source>已有名为 %1 的图片</source>
        <translation>An image named %1 already exists</translation>
    </message>
    <message>
        <source>重命名图片 %1 为 %2</source>
        <translation>Rename image %1 to %2</translation>
    </message>
    <message>
        <source>原图 %1 不包含图片的范围</source>
        <translation>Original %1 does not hold the image&apos;s rectangle</translation>
    </message>
    <message>
        <source>从原图 %1 替换图片 %2</source>
        <translation>Replace image %2 from original %1</translation>
    </message>
    <message>
        <source>图片 %1 正在使用，不能删除：
%2</source>
        <translation>Image %1 is in use and cannot be deleted:
%2</translation>
    </message>
    <message>
        <source>正在查找原图中的其他匹配…</source>
        <translation>Looking for other matches in the original…</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::TimelineView</name>
    <message>
        <source>时间轴</source>
        <translation>Timeline</translation>
    </message>
    <message>
        <source>目标%1</source>
        <translation>Target %1</translation>
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
<context>
    <name>autoscene::ui::ColorButton</name>
    <message>
        <source>选择颜色</source>
        <translation>Choose colour</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::ColorsDialog</name>
    <message>
        <source>颜色</source>
        <translation>Colours</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>%1    %2    相似度 %3</source>
        <translation>%1    %2    similarity %3</translation>
    </message>
    <message>
        <source>是否删除 %1?</source>
        <translation>Delete %1?</translation>
    </message>
    <message>
        <source>%1 正在被以下条目使用:
%2

删除后这些条目将失效,是否删除?</source>
        <translation>%1 is used by:
%2

These items will stop working. Delete it?</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::DefinitionsDialog</name>
    <message>
        <source>新建变量</source>
        <translation>New variable</translation>
    </message>
    <message>
        <source>变量</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>新建</source>
        <translation>New</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>是否删除 %1?</source>
        <translation>Delete %1?</translation>
    </message>
    <message>
        <source>%1 正在被以下条目使用:
%2

删除后这些条目将失效,是否删除?</source>
        <translation>%1 is used by:
%2

These items will stop working. Delete it?</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::EventEditor</name>
    <message>
        <source>或者</source>
        <translation>or</translation>
    </message>
    <message>
        <source>并且</source>
        <translation>and</translation>
    </message>
    <message>
        <source>禁用</source>
        <translation>Disabled</translation>
    </message>
    <message>
        <source>编辑事件</source>
        <translation>Edit event</translation>
    </message>
    <message>
        <source>事件名称</source>
        <translation>Event name</translation>
    </message>
    <message>
        <source>编辑</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>条件</source>
        <translation>Conditions</translation>
    </message>
    <message>
        <source>添加条件</source>
        <translation>Add condition</translation>
    </message>
    <message>
        <source>添加条件组</source>
        <translation>Add condition group</translation>
    </message>
    <message>
        <source>动作</source>
        <translation>Actions</translation>
    </message>
    <message>
        <source>添加动作</source>
        <translation>Add action</translation>
    </message>
    <message>
        <source>条件组</source>
        <translation>Condition group</translation>
    </message>
    <message>
        <source>在屏幕上测试</source>
        <translation>Test on screen</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::FieldForm</name>
    <message>
        <source>范围</source>
        <translation>Range</translation>
    </message>
    <message>
        <source>计时器</source>
        <translation>Timer</translation>
    </message>
    <message>
        <source>定时器</source>
        <translation>Alarm</translation>
    </message>
    <message>
        <source>随机</source>
        <translation>Random</translation>
    </message>
    <message>
        <source>变量</source>
        <translation>Variable</translation>
    </message>
    <message>
        <source>%1不能为空</source>
        <translation>%1 must not be empty</translation>
    </message>
    <message>
        <source>%1应为 x,y,宽,高 四个数</source>
        <translation>%1 must be four numbers: x,y,width,height</translation>
    </message>
    <message>
        <source>%1应为以逗号分隔的数</source>
        <translation>%1 must be numbers separated by commas</translation>
    </message>
    <message>
        <source>%1不是有效的JSON</source>
        <translation>%1 is not valid JSON</translation>
    </message>
    <message>
        <source>其它(%1)</source>
        <translation>Other (%1)</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>%1: 没有选择</source>
        <translation>%1: nothing chosen</translation>
    </message>
    <message>
        <source>%1: %2 不存在</source>
        <translation>%1: %2 does not exist</translation>
    </message>
    <message>
        <source>%1: 没有名为 %2 的变量</source>
        <translation>%1: there is no variable named %2</translation>
    </message>
    <message>
        <source>测试</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>测试结果</source>
        <translation>Test result</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::FormDialog</name>
    <message>
        <source>此项没有需要设置的内容</source>
        <translation>This item has nothing to set.</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::OriginalView</name>
    <message>
        <source>原图</source>
        <translation>Source image</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::PluginActionForm</name>
    <message>
        <source>插件异常，插件动作:%1未找到</source>
        <translation>Plug-in error, plug-in action: %1 not found</translation>
    </message>
    <message>
        <source>插件</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>插件动作</source>
        <translation>Plug-in action</translation>
    </message>
    <message>
        <source>%1 (加载失败)</source>
        <translation>%1 (failed to load)</translation>
    </message>
    <message>
        <source>参数</source>
        <translation>Parameters</translation>
    </message>
    <message>
        <source>值</source>
        <translation>Value</translation>
    </message>
    <message>
        <source>无</source>
        <translation>None</translation>
    </message>
    <message>
        <source>任务没有加载插件: 请先在插件列表中加载插件</source>
        <translation>The task has no plug-ins: load one in the plug-in list first</translation>
    </message>
    <message>
        <source>%1的来源</source>
        <translation>Source of %1</translation>
    </message>
    <message>
        <source>结果%1保存到</source>
        <translation>Save result %1 to</translation>
    </message>
    <message>
        <source>%1 →</source>
        <translation>%1 →</translation>
    </message>
    <message>
        <source>此动作没有参数</source>
        <translation>This action has no parameters</translation>
    </message>
    <message>
        <source>没有选择插件</source>
        <translation>No plug-in chosen</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::PluginListDialog</name>
    <message>
        <source>插件文件:%1加载失败</source>
        <translation>Plug-in file: %1 failed to load</translation>
    </message>
    <message>
        <source>插件列表</source>
        <translation>Plug-in list</translation>
    </message>
    <message>
        <source>加载插件</source>
        <translation>Load plug-in</translation>
    </message>
    <message>
        <source>移除</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>重新加载</source>
        <translation>Reload</translation>
    </message>
    <message>
        <source>查看插件</source>
        <translation>Show plug-in</translation>
    </message>
    <message>
        <source>(加载失败)</source>
        <translation>(failed to load)</translation>
    </message>
    <message>
        <source>选择插件</source>
        <translation>Choose plug-in</translation>
    </message>
    <message>
        <source>将要移除插件%1,如果任务中使用相关功能移除后将会导致异常！</source>
        <translation>The plug-in %1 will be removed; tasks that use it will fail!</translation>
    </message>
    <message>
        <source>移除插件 %1</source>
        <translation>Remove plug-in %1</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::ScreenToolsDialog</name>
    <message>
        <source>原图与截图</source>
        <translation>Source images and screenshots</translation>
    </message>
    <message>
        <source>原图</source>
        <translation>Source image</translation>
    </message>
    <message>
        <source>截图</source>
        <translation>Screenshot</translation>
    </message>
    <message>
        <source>延时(秒)</source>
        <translation>Delay (s)</translation>
    </message>
    <message>
        <source> 秒</source>
        <translation> s</translation>
    </message>
    <message>
        <source>原图:</source>
        <translation>Source image:</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom out</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom in</translation>
    </message>
    <message>
        <source>适合窗口</source>
        <translation>Fit</translation>
    </message>
    <message>
        <source>原始大小</source>
        <translation>Actual size</translation>
    </message>
    <message>
        <source>工具</source>
        <translation>Tool</translation>
    </message>
    <message>
        <source>模板图片</source>
        <translation>Template image</translation>
    </message>
    <message>
        <source>搜索范围</source>
        <translation>Search area</translation>
    </message>
    <message>
        <source>点击区域</source>
        <translation>Click area</translation>
    </message>
    <message>
        <source>文字区域</source>
        <translation>Text region</translation>
    </message>
    <message>
        <source>颜色</source>
        <translation>Colour</translation>
    </message>
    <message>
        <source>所在图片</source>
        <translation>In image</translation>
    </message>
    <message>
        <source>X</source>
        <translation>X</translation>
    </message>
    <message>
        <source>Y</source>
        <translation>Y</translation>
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
        <source>相似度</source>
        <translation>Similarity</translation>
    </message>
    <message>
        <source>名称</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>保存</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>先从这张原图裁剪模板图片</source>
        <translation>Cut a template image from this source image first</translation>
    </message>
    <message>
        <source>找不到原图文件</source>
        <translation>The source image file is missing</translation>
    </message>
    <message>
        <source>在原图上点击取色</source>
        <translation>Click the source image to pick a colour</translation>
    </message>
    <message>
        <source>选区内计数: %1</source>
        <translation>Counted in the selection: %1</translation>
    </message>
    <message>
        <source>全图计数: %1</source>
        <translation>Counted in the whole image: %1</translation>
    </message>
    <message>
        <source>图片%1</source>
        <translation>Image %1</translation>
    </message>
    <message>
        <source>范围%1</source>
        <translation>Area %1</translation>
    </message>
    <message>
        <source>点击区域%1</source>
        <translation>Click area %1</translation>
    </message>
    <message>
        <source>文字区域%1</source>
        <translation>Text region %1</translation>
    </message>
    <message>
        <source>颜色%1</source>
        <translation>Colour %1</translation>
    </message>
    <message>
        <source>原图已保存: %1</source>
        <translation>Source image saved: %1</translation>
    </message>
    <message>
        <source>已保存: %1</source>
        <translation>Saved: %1</translation>
    </message>
    <message>
        <source>已保存: %1，在原图中只匹配一处</source>
        <translation>Saved: %1; it matches in one place of the source image only</translation>
    </message>
    <message>
        <source>也匹配 %1</source>
        <translation>Also matches %1</translation>
    </message>
    <message>
        <source>已保存: %1。注意: 它在 (%2, %3) 也匹配，相似度 %4 ≥ %5，点击可能落在别处</source>
        <translation>Saved: %1. Note: it also matches at (%2, %3), similarity %4 ≥ %5; clicks may land there</translation>
    </message>
    <message>
        <source>已保存: %1，正在查找原图中的其他匹配…</source>
        <translation>Saved: %1, looking for other matches in the original…</translation>
    </message>
</context>
<context>
    <name>autoscene::ui::TaskEditor</name>
    <message>
        <source>添加变量 %1</source>
        <translation>Add variable %1</translation>
    </message>
    <message>
        <source>删除变量 %1</source>
        <translation>Delete variable %1</translation>
    </message>
    <message>
        <source>修改变量 %1</source>
        <translation>Change variable %1</translation>
    </message>
    <message>
        <source>剪贴板中不是任务: %1</source>
        <translation>The clipboard holds no task: %1</translation>
    </message>
    <message>
        <source>剪贴板中没有事件</source>
        <translation>The clipboard holds no events</translation>
    </message>
    <message>
        <source>删除事件 %1</source>
        <translation>Delete event %1</translation>
    </message>
    <message numerus="yes">
        <source>删除 %n 个事件</source>
        <translation>
            <numerusform>Delete %n event</numerusform>
            <numerusform>Delete %n events</numerusform>
        </translation>
    </message>
    <message>
        <source>移动事件 %1</source>
        <translation>Move event %1</translation>
    </message>
    <message>
        <source>添加界面 %1</source>
        <translation>Add scene %1</translation>
    </message>
    <message>
        <source>删除界面 %1</source>
        <translation>Delete scene %1</translation>
    </message>
    <message>
        <source>移动界面 %1</source>
        <translation>Move scene %1</translation>
    </message>
    <message>
        <source>重命名界面 %1</source>
        <translation>Rename scene %1</translation>
    </message>
    <message numerus="yes">
        <source>粘贴 %n 个事件</source>
        <translation>
            <numerusform>Paste %n event</numerusform>
            <numerusform>Paste %n events</numerusform>
        </translation>
    </message>
    <message>
        <source>删除图片 %1</source>
        <translation>Delete image %1</translation>
    </message>
    <message>
        <source>选择模型 %1</source>
        <translation>Choose model %1</translation>
    </message>
    <message>
        <source>图片 %1 的文件名无效: %2</source>
        <translation>Image %1 has an invalid file name: %2</translation>
    </message>
    <message>
        <source>图片 %1 的文件 %2 无处可取</source>
        <translation>The file %2 of image %1 is not available to copy</translation>
    </message>
    <message>
        <source>图片 %1 不能复制到 %2</source>
        <translation>Image %1 cannot be copied to %2</translation>
    </message>
    <message>
        <source>添加图片 %1</source>
        <translation>Add image %1</translation>
    </message>
    <message>
        <source>添加颜色 %1</source>
        <translation>Add colour %1</translation>
    </message>
    <message>
        <source>修改颜色 %1</source>
        <translation>Change colour %1</translation>
    </message>
    <message>
        <source>删除颜色 %1</source>
        <translation>Delete colour %1</translation>
    </message>
    <message>
        <source>添加原图 %1</source>
        <translation>Add original %1</translation>
    </message>
</context>
</TS>

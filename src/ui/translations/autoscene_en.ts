<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
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
</TS>

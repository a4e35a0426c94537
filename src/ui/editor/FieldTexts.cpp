#include "editor/FieldTexts.h"

#include <QCoreApplication>

namespace autoscene::ui {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("autoscene::ui::FieldTexts", text);
}

struct Row {
    const char* key;
    const char* label;
    const char* hint;
    FieldUnit unit;
};

// lupdate files these under FieldTexts; tr() above looks them up there.
constexpr Row kRows[] = {
    {"relation", QT_TRANSLATE_NOOP("FieldTexts", "关系"), "", FieldUnit::None},
    {"image_id", QT_TRANSLATE_NOOP("FieldTexts", "图片"), "", FieldUnit::None},
    {"color_id", QT_TRANSLATE_NOOP("FieldTexts", "颜色"), "", FieldUnit::None},
    {"label_id", QT_TRANSLATE_NOOP("FieldTexts", "标签"), "", FieldUnit::None},
    {"search_id", QT_TRANSLATE_NOOP("FieldTexts", "搜索范围"), "", FieldUnit::None},
    {"deviation_id", QT_TRANSLATE_NOOP("FieldTexts", "点击偏移"), "", FieldUnit::None},
    {"variable_id", QT_TRANSLATE_NOOP("FieldTexts", "变量"), "", FieldUnit::None},
    {"timeout", QT_TRANSLATE_NOOP("FieldTexts", "超时"),
     QT_TRANSLATE_NOOP("FieldTexts", "0 为不限时"), FieldUnit::Seconds},
    {"reset_timeout", QT_TRANSLATE_NOOP("FieldTexts", "重置计时"), "", FieldUnit::None},
    {"state", QT_TRANSLATE_NOOP("FieldTexts", "状态"), "", FieldUnit::None},
    {"is_variable_compare", QT_TRANSLATE_NOOP("FieldTexts", "与变量比较"), "", FieldUnit::None},
    {"compare_id", QT_TRANSLATE_NOOP("FieldTexts", "比较的变量"), "", FieldUnit::None},
    {"compare_value", QT_TRANSLATE_NOOP("FieldTexts", "比较的值"), "", FieldUnit::None},
    {"text_info", QT_TRANSLATE_NOOP("FieldTexts", "文字区域"), "", FieldUnit::None},
    {"value_id", QT_TRANSLATE_NOOP("FieldTexts", "比较的变量"), "", FieldUnit::None},
    {"value", QT_TRANSLATE_NOOP("FieldTexts", "默认值"), "", FieldUnit::None},
    {"is_variable_value", QT_TRANSLATE_NOOP("FieldTexts", "与变量比较"), "", FieldUnit::None},
    {"image_type", QT_TRANSLATE_NOOP("FieldTexts", "图像处理"), "", FieldUnit::None},
    {"threshold", QT_TRANSLATE_NOOP("FieldTexts", "阈值"), "", FieldUnit::None},
    {"filter_color", QT_TRANSLATE_NOOP("FieldTexts", "过滤颜色"), "", FieldUnit::None},
    {"filter_sim", QT_TRANSLATE_NOOP("FieldTexts", "过滤相似度"), "", FieldUnit::Similarity},
    {"count", QT_TRANSLATE_NOOP("FieldTexts", "数量"), "", FieldUnit::None},
    {"count_tolerance", QT_TRANSLATE_NOOP("FieldTexts", "数量容差"), "", FieldUnit::None},
    {"sim", QT_TRANSLATE_NOOP("FieldTexts", "相似度"), "", FieldUnit::Similarity},
    {"js_code", QT_TRANSLATE_NOOP("FieldTexts", "JavaScript代码"), "", FieldUnit::None},
    {"button", QT_TRANSLATE_NOOP("FieldTexts", "鼠标操作"), "", FieldUnit::None},
    {"postpone", QT_TRANSLATE_NOOP("FieldTexts", "等待时间"), "", FieldUnit::Seconds},
    {"press_time", QT_TRANSLATE_NOOP("FieldTexts", "点击时长"),
     QT_TRANSLATE_NOOP("FieldTexts", "默认为0，即普通点击"), FieldUnit::Seconds},
    {"interval", QT_TRANSLATE_NOOP("FieldTexts", "点击间隔"),
     QT_TRANSLATE_NOOP("FieldTexts", "点击间隔,每次点击的间隔"), FieldUnit::Seconds},
    {"click_times", QT_TRANSLATE_NOOP("FieldTexts", "点击次数"), "", FieldUnit::None},
    {"multi_interval", QT_TRANSLATE_NOOP("FieldTexts", "坐标间隔"),
     QT_TRANSLATE_NOOP("FieldTexts", "多个坐标之间的点击间隔,用于竖线分隔的多个坐标"),
     FieldUnit::Seconds},
    {"is_variable_change", QT_TRANSLATE_NOOP("FieldTexts", "取变量的值"), "", FieldUnit::None},
    {"change_value", QT_TRANSLATE_NOOP("FieldTexts", "新的值"), "", FieldUnit::None},
    {"change_type", QT_TRANSLATE_NOOP("FieldTexts", "修改方式"), "", FieldUnit::None},
    {"content_variable_id", QT_TRANSLATE_NOOP("FieldTexts", "值来自变量"), "", FieldUnit::None},
    {"save_type", QT_TRANSLATE_NOOP("FieldTexts", "保存的坐标"), "", FieldUnit::None},
    {"text", QT_TRANSLATE_NOOP("FieldTexts", "文字"), "", FieldUnit::None},
    {"variable", QT_TRANSLATE_NOOP("FieldTexts", "输入变量"), "", FieldUnit::None},
    {"var_list", QT_TRANSLATE_NOOP("FieldTexts", "经过的坐标变量"),
     QT_TRANSLATE_NOOP("FieldTexts", "变量名,以逗号分隔"), FieldUnit::None},
    {"slide_time", QT_TRANSLATE_NOOP("FieldTexts", "每段时长"), "", FieldUnit::Milliseconds},
    {"time_list", QT_TRANSLATE_NOOP("FieldTexts", "各段时间"),
     QT_TRANSLATE_NOOP("FieldTexts", "秒数,以逗号分隔"), FieldUnit::None},
    {"exclude", QT_TRANSLATE_NOOP("FieldTexts", "不重置的变量"),
     QT_TRANSLATE_NOOP("FieldTexts", "变量名,以逗号分隔"), FieldUnit::None},
    {"key", QT_TRANSLATE_NOOP("FieldTexts", "按键"),
     QT_TRANSLATE_NOOP("FieldTexts", "点击后按下要用的键"), FieldUnit::None},
    {"group_key", QT_TRANSLATE_NOOP("FieldTexts", "组合键"),
     QT_TRANSLATE_NOOP("FieldTexts", "点击后按下要用的组合键"), FieldUnit::None},
    {"event_type", QT_TRANSLATE_NOOP("FieldTexts", "按键操作"), "", FieldUnit::None},
    {"var_id", QT_TRANSLATE_NOOP("FieldTexts", "选择变量"), "", FieldUnit::None},
    {"wheel", QT_TRANSLATE_NOOP("FieldTexts", "滚动量"), "", FieldUnit::None},
    {"point_variable", QT_TRANSLATE_NOOP("FieldTexts", "滚动位置"), "", FieldUnit::None},
    {"max", QT_TRANSLATE_NOOP("FieldTexts", "最大值"), "", FieldUnit::None},
    {"min", QT_TRANSLATE_NOOP("FieldTexts", "最小值"), "", FieldUnit::None},
    {"app_path", QT_TRANSLATE_NOOP("FieldTexts", "应用路径"), "", FieldUnit::None},
    {"path_variable", QT_TRANSLATE_NOOP("FieldTexts", "路径变量"), "", FieldUnit::None},
    {"action_arg", QT_TRANSLATE_NOOP("FieldTexts", "参数"), "", FieldUnit::None},
    {"action_varvalue", QT_TRANSLATE_NOOP("FieldTexts", "变量值"), "", FieldUnit::None},
    {"action_inputs", QT_TRANSLATE_NOOP("FieldTexts", "输入"), "", FieldUnit::None},
    {"action_option", QT_TRANSLATE_NOOP("FieldTexts", "选项"), "", FieldUnit::None},
    {"action_optioninputs", QT_TRANSLATE_NOOP("FieldTexts", "选项输入"), "", FieldUnit::None},
    {"action_result", QT_TRANSLATE_NOOP("FieldTexts", "结果"), "", FieldUnit::None},
    {"action_outputs", QT_TRANSLATE_NOOP("FieldTexts", "输出"), "", FieldUnit::None},
    {"action_name", QT_TRANSLATE_NOOP("FieldTexts", "插件动作"), "", FieldUnit::None},
    {"config_file", QT_TRANSLATE_NOOP("FieldTexts", "插件描述文件"), "", FieldUnit::None},
    {"var_package_name", QT_TRANSLATE_NOOP("FieldTexts", "包名变量"), "", FieldUnit::None},
    {"var_activity", QT_TRANSLATE_NOOP("FieldTexts", "Activity变量"), "", FieldUnit::None},
    {"package_name", QT_TRANSLATE_NOOP("FieldTexts", "包名"), "", FieldUnit::None},
    {"activity", QT_TRANSLATE_NOOP("FieldTexts", "Activity"), "", FieldUnit::None},
    {"name", QT_TRANSLATE_NOOP("FieldTexts", "名称"), "", FieldUnit::None},
    {"scope", QT_TRANSLATE_NOOP("FieldTexts", "作用域"), "", FieldUnit::None},
    {"is_local", QT_TRANSLATE_NOOP("FieldTexts", "本地"), "", FieldUnit::None},
    {"is_config", QT_TRANSLATE_NOOP("FieldTexts", "配置"),
     QT_TRANSLATE_NOOP("FieldTexts", "配置变量只能在启动时设置,任务运行过程中不能修改"),
     FieldUnit::None},
    {"is_global", QT_TRANSLATE_NOOP("FieldTexts", "全局"),
     QT_TRANSLATE_NOOP("FieldTexts",
                       "全局变量针对多窗口设计,任何一个窗口修改此变量,所有窗口都生效"),
     FieldUnit::None},
    {"line_count", QT_TRANSLATE_NOOP("FieldTexts", "行数"), "", FieldUnit::None},
    {"style", QT_TRANSLATE_NOOP("FieldTexts", "样式"), "", FieldUnit::None},
    {"condition_values", QT_TRANSLATE_NOOP("FieldTexts", "条件可选值"),
     QT_TRANSLATE_NOOP("FieldTexts", "每行一个"), FieldUnit::None},
    {"action_values", QT_TRANSLATE_NOOP("FieldTexts", "动作可选值"),
     QT_TRANSLATE_NOOP("FieldTexts", "每行一个"), FieldUnit::None},
    {"delay", QT_TRANSLATE_NOOP("FieldTexts", "延迟(秒)："),
     QT_TRANSLATE_NOOP("FieldTexts", "第一次触发的延迟时间"), FieldUnit::Seconds},
    {"period", QT_TRANSLATE_NOOP("FieldTexts", "间隔(秒)："),
     QT_TRANSLATE_NOOP("FieldTexts", "循环间隔(默认为0即不循环)"), FieldUnit::Seconds},
    {"default_close", QT_TRANSLATE_NOOP("FieldTexts", "默认关闭"), "", FieldUnit::None},
    {"config_delay", QT_TRANSLATE_NOOP("FieldTexts", "延迟可配置"), "", FieldUnit::None},
    {"config_period", QT_TRANSLATE_NOOP("FieldTexts", "间隔可配置"), "", FieldUnit::None},
    {"time_of_day", QT_TRANSLATE_NOOP("FieldTexts", "时间："), "", FieldUnit::None},
    {"repeat", QT_TRANSLATE_NOOP("FieldTexts", "重复"), "", FieldUnit::None},
    {"ori", QT_TRANSLATE_NOOP("FieldTexts", "原图"), "", FieldUnit::None},
    {"rect", QT_TRANSLATE_NOOP("FieldTexts", "区域"), QT_TRANSLATE_NOOP("FieldTexts", "x,y,宽,高"),
     FieldUnit::None},
    {"target", QT_TRANSLATE_NOOP("FieldTexts", "目标"), "", FieldUnit::None},
    {"screen_info", QT_TRANSLATE_NOOP("FieldTexts", "屏幕"), "", FieldUnit::None},
    {"width", QT_TRANSLATE_NOOP("FieldTexts", "宽"), "", FieldUnit::None},
    {"height", QT_TRANSLATE_NOOP("FieldTexts", "高"), "", FieldUnit::None},
    {"density", QT_TRANSLATE_NOOP("FieldTexts", "密度"), "", FieldUnit::None},
    {"pixelStride", QT_TRANSLATE_NOOP("FieldTexts", "像素步长"), "", FieldUnit::None},
    {"rowPadding", QT_TRANSLATE_NOOP("FieldTexts", "行填充"), "", FieldUnit::None},
};

std::vector<Choice> choices(std::initializer_list<std::pair<int, const char*>> rows) {
    std::vector<Choice> list;
    for (const auto& [value, text] : rows) {
        list.push_back({value, tr(text)});
    }
    return list;
}

}  // namespace

FieldText fieldText(std::string_view key) {
    for (const Row& row : kRows) {
        if (key == row.key) {
            return {tr(row.label), *row.hint ? tr(row.hint) : QString(), row.unit};
        }
    }
    return {QString::fromUtf8(key.data(), qsizetype(key.size())), {}, FieldUnit::None};
}

std::vector<Choice> keyChoices(std::string_view key) {
    if (key == "relation") {
        return choices({{1, QT_TRANSLATE_NOOP("FieldTexts", "并且")},
                        {2, QT_TRANSLATE_NOOP("FieldTexts", "或者")}});
    }
    if (key == "button") {
        return choices({{1, QT_TRANSLATE_NOOP("FieldTexts", "鼠标左键点击")},
                        {2, QT_TRANSLATE_NOOP("FieldTexts", "鼠标右键点击")},
                        {3, QT_TRANSLATE_NOOP("FieldTexts", "鼠标移动到")},
                        {4, QT_TRANSLATE_NOOP("FieldTexts", "鼠标左键按下")},
                        {6, QT_TRANSLATE_NOOP("FieldTexts", "鼠标右键按下")}});
    }
    if (key == "change_type") {
        return choices({{0, QT_TRANSLATE_NOOP("FieldTexts", "设置")},
                        {1, QT_TRANSLATE_NOOP("FieldTexts", "自增")},
                        {2, QT_TRANSLATE_NOOP("FieldTexts", "自减")},
                        {3, QT_TRANSLATE_NOOP("FieldTexts", "重置变量")}});
    }
    if (key == "event_type") {
        return choices({{0, QT_TRANSLATE_NOOP("FieldTexts", "点击按键:")},
                        {1, QT_TRANSLATE_NOOP("FieldTexts", "按下:")},
                        {2, QT_TRANSLATE_NOOP("FieldTexts", "抬起:")},
                        {3, QT_TRANSLATE_NOOP("FieldTexts", "组合键:")}});
    }
    if (key == "image_type") {
        return choices({{1, QT_TRANSLATE_NOOP("FieldTexts", "彩色")},
                        {2, QT_TRANSLATE_NOOP("FieldTexts", "二值化")},
                        {3, QT_TRANSLATE_NOOP("FieldTexts", "HLS")},
                        {4, QT_TRANSLATE_NOOP("FieldTexts", "过滤颜色")}});
    }
    if (key == "save_type") {
        return choices({{0, QT_TRANSLATE_NOOP("FieldTexts", "区域")},
                        {1, QT_TRANSLATE_NOOP("FieldTexts", "中心点")}});
    }
    if (key == "repeat") {
        return choices({{0, QT_TRANSLATE_NOOP("FieldTexts", "只触发一次")},
                        {1, QT_TRANSLATE_NOOP("FieldTexts", "每天")}});
    }
    return {};
}

std::vector<Choice> presenceChoices() {
    return choices({{1, QT_TRANSLATE_NOOP("FieldTexts", "存在")},
                    {0, QT_TRANSLATE_NOOP("FieldTexts", "不存在")}});
}

std::vector<Choice> variableCompareChoices() {
    return choices({{0, QT_TRANSLATE_NOOP("FieldTexts", "等于")},
                    {1, QT_TRANSLATE_NOOP("FieldTexts", "不等于")},
                    {2, QT_TRANSLATE_NOOP("FieldTexts", "大于")},
                    {3, QT_TRANSLATE_NOOP("FieldTexts", "小于")},
                    {4, QT_TRANSLATE_NOOP("FieldTexts", "包含")},
                    {5, QT_TRANSLATE_NOOP("FieldTexts", "不包含")}});
}

std::vector<Choice> textCompareChoices() {
    return choices({{1, QT_TRANSLATE_NOOP("FieldTexts", "等于")},
                    {2, QT_TRANSLATE_NOOP("FieldTexts", "不等于")},
                    {3, QT_TRANSLATE_NOOP("FieldTexts", "大于")},
                    {4, QT_TRANSLATE_NOOP("FieldTexts", "小于")},
                    {5, QT_TRANSLATE_NOOP("FieldTexts", "包含")},
                    {6, QT_TRANSLATE_NOOP("FieldTexts", "开始字符等于:")}});
}

std::vector<Choice> colorTestChoices() {
    return choices({{4, QT_TRANSLATE_NOOP("FieldTexts", "变化")},
                    {8, QT_TRANSLATE_NOOP("FieldTexts", "不变化")},
                    {256, QT_TRANSLATE_NOOP("FieldTexts", "多于")},
                    {512, QT_TRANSLATE_NOOP("FieldTexts", "少于")}});
}

std::vector<Choice> mouseUpChoices() {
    return choices({{5, QT_TRANSLATE_NOOP("FieldTexts", "鼠标左键抬起")},
                    {7, QT_TRANSLATE_NOOP("FieldTexts", "鼠标右键抬起")}});
}

QString comparedTextLabel() {
    static const char* const text = QT_TRANSLATE_NOOP("FieldTexts", "比较的文字");
    return tr(text);
}

QString unitSuffix(FieldUnit unit) {
    // Outside tr(): lupdate does not look into its argument.
    static const char* const seconds = QT_TRANSLATE_NOOP("FieldTexts", " 秒");
    static const char* const milliseconds = QT_TRANSLATE_NOOP("FieldTexts", " 毫秒");
    static const char* const minutes = QT_TRANSLATE_NOOP("FieldTexts", " 分钟");
    switch (unit) {
        case FieldUnit::Seconds:
            return tr(seconds);
        case FieldUnit::Milliseconds:
            return tr(milliseconds);
        case FieldUnit::Minutes:
            return tr(minutes);
        default:
            return {};
    }
}

}  // namespace autoscene::ui

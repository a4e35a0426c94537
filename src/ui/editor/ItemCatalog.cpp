#include "editor/ItemCatalog.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>

#include "editor/FieldForm.h"
#include "editor/PluginActionForm.h"
#include "editor/ScriptTestRun.h"
#include "model/TaskDocument.h"

namespace autoscene::ui {

namespace {

using namespace model;

QString tr(const char* text) {
    return QCoreApplication::translate("autoscene::ui::ItemCatalog", text);
}

// Outside tr(): lupdate does not look into its argument.
const char* const kScriptTitle = QT_TRANSLATE_NOOP("ItemCatalog", "编写JavaScript代码");
const char* const kScriptConditionHint =
    QT_TRANSLATE_NOOP("ItemCatalog", "JavaScript代码返回true时条件成立，其它值条件不成立");
const char* const kAreaOutside = QT_TRANSLATE_NOOP("ItemCatalog", "区域超出屏幕 (%1×%2)");

template <class Interface, class... Items>
struct Kinds {
    static std::unique_ptr<Interface> make(int type) {
        std::unique_ptr<Interface> item;
        ((type == Items::kType ? (void)(item = std::make_unique<Items>()) : void()), ...);
        return item;
    }
    static void addFields(FieldForm& form, Interface& item) {
        ((item.type() == Items::kType ? form.addFields(static_cast<Items&>(item)) : void()), ...);
    }
};

using Conditions = Kinds<IEditorCondition, EditorImageCondition, EditorVariableCondition,
                         EditorTimerCondition, EditorAlarmCondition, EditorScreenTextCondition,
                         EditorColorCondition, EditorLabelCondition, EditorJavaScriptCondition>;
using Actions =
    Kinds<IEditorAction, EditorTapAction, EditorImageAction, EditorVariableAction,
          EditorScreenValueAction, EditorSaveCoordAction, EditorInputAction, EditorSlideAction,
          EditorResetAllAction, EditorStopAction, EditorKeyAction, EditorJavaScriptAction,
          EditorMouseWheelAction, EditorDelayAction, EditorClickTextAction, EditorStartAppAction,
          EditorMouseUpAction, EditorLabelAction, EditorSaveLabelCoordAction, EditorPluginAction,
          EditorClickColorAction>;

std::vector<ItemKind> kinds(std::initializer_list<std::pair<int, const char*>> rows) {
    std::vector<ItemKind> list;
    for (const auto& [type, name] : rows) {
        list.push_back({type, tr(name)});
    }
    return list;
}

QString kindName(const std::vector<ItemKind>& list, int type) {
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const ItemKind& k) { return k.type == type; });
    return found == list.end() ? QString::number(type) : found->name;
}

void configureCondition(FieldForm& form, int type) {
    switch (type) {
        case EditorImageCondition::kType:
        case EditorLabelCondition::kType:
            form.setChoices("state", presenceChoices());
            break;
        case EditorVariableCondition::kType:
            form.setChoices("state", variableCompareChoices());
            form.setRequired("variable_id");
            break;
        case EditorTimerCondition::kType:
            form.setDefinitionKinds("variable_id", {DefinitionType::Timer});
            form.setRequired("variable_id");
            break;
        case EditorAlarmCondition::kType:
            form.setDefinitionKinds("variable_id", {DefinitionType::Alarm});
            form.setRequired("variable_id");
            break;
        case EditorScreenTextCondition::kType:
            form.setChoices("state", textCompareChoices());
            form.setLabel("value", comparedTextLabel());
            break;
        case EditorColorCondition::kType:
            form.setChoices("state", colorTestChoices());
            break;
        default:
            break;
    }
}

void configureAction(FieldForm& form, int type) {
    switch (type) {
        case EditorTapAction::kType:
        case EditorVariableAction::kType:
        case EditorScreenValueAction::kType:
        case EditorSaveCoordAction::kType:
        case EditorSaveLabelCoordAction::kType:
            form.setRequired("variable_id");
            break;
        case EditorDelayAction::kType:
            form.setUnit("min", FieldUnit::Seconds);
            form.setUnit("max", FieldUnit::Seconds);
            break;
        case EditorClickTextAction::kType:
            form.setChoices("state", textCompareChoices());
            form.setLabel("value", comparedTextLabel());
            break;
        case EditorMouseUpAction::kType:
            form.setChoices("button", mouseUpChoices());
            break;
        default:
            break;
    }
}

// Names are unique among the task's definitions; the one being edited keeps its own.
QString nameProblem(const FieldForm& form, const TaskDocument& task, int id) {
    auto* edit = qobject_cast<QLineEdit*>(form.control(QStringLiteral("name")));
    if (!edit) {
        return {};
    }
    const QString name = edit->text().trimmed();
    const bool taken = std::any_of(task.definitions.begin(), task.definitions.end(),
                                   [&](const auto& d) { return d->name == name && d->id != id; });
    edit->setStyleSheet(taken ? QStringLiteral("QLineEdit { border: 1px solid red; }") : QString());
    return taken ? TaskDocument::duplicateDefinitionMessage() : QString();
}

QString cropProblem(const FieldForm& form, const TaskDocument& task, const CropInfo& crop) {
    const auto* rect = qobject_cast<const QLineEdit*>(form.control(QStringLiteral("rect")));
    const int width = task.width > 0 ? task.width : crop.screenInfo.width;
    const int height = task.height > 0 ? task.height : crop.screenInfo.height;
    if (!rect || width <= 0 || height <= 0) {
        return {};
    }
    const QStringList parts = rect->text().split(QLatin1Char(','));
    if (parts.size() != 4) {
        return {};  // the field's own check names the form it needs
    }
    const QRect area(parts[0].trimmed().toInt(), parts[1].trimmed().toInt(),
                     parts[2].trimmed().toInt(), parts[3].trimmed().toInt());
    return QRect(0, 0, width, height).contains(area) ? QString()
                                                     : tr(kAreaOutside).arg(width).arg(height);
}

// The scopes of a variable are one choice, kept as three flags (all false = normal).
void addScopeField(FieldForm& form, EditorVariable& variable) {
    struct Scope {
        const char* name;
        const char* hint;
    };
    static const Scope scopes[] = {
        {QT_TRANSLATE_NOOP("ItemCatalog", "普通"),
         QT_TRANSLATE_NOOP("ItemCatalog", "普通变量可保存、修改内容,每次运行任务恢复为默认值")},
        {QT_TRANSLATE_NOOP("ItemCatalog", "本地"), ""},
        {QT_TRANSLATE_NOOP("ItemCatalog", "配置"),
         QT_TRANSLATE_NOOP("ItemCatalog", "配置变量只能在启动时设置,任务运行过程中不能修改")},
        {QT_TRANSLATE_NOOP("ItemCatalog", "全局"),
         QT_TRANSLATE_NOOP("ItemCatalog",
                           "全局变量针对多窗口设计,任何一个窗口修改此变量,所有窗口都生效")},
    };
    auto* combo = new QComboBox;
    for (const Scope& scope : scopes) {
        combo->addItem(tr(scope.name));
        combo->setItemData(combo->count() - 1, *scope.hint ? tr(scope.hint) : QString(),
                           Qt::ToolTipRole);
    }
    const int shown = variable.isGlobal ? 3 : variable.isConfig ? 2 : variable.isLocal ? 1 : 0;
    combo->setCurrentIndex(shown);
    form.addRow("scope", combo, [combo, &variable, shown] {
        if (combo->currentIndex() != shown) {
            variable.isLocal = combo->currentIndex() == 1;
            variable.isConfig = combo->currentIndex() == 2;
            variable.isGlobal = combo->currentIndex() == 3;
        }
    });
}

}  // namespace

std::vector<ItemKind> conditionKinds() {
    return kinds({{1, QT_TRANSLATE_NOOP("ItemCatalog", "图片")},
                  {2, QT_TRANSLATE_NOOP("ItemCatalog", "变量")},
                  {3, QT_TRANSLATE_NOOP("ItemCatalog", "计时器")},
                  {4, QT_TRANSLATE_NOOP("ItemCatalog", "定时器")},
                  {6, QT_TRANSLATE_NOOP("ItemCatalog", "屏幕文字")},
                  {7, QT_TRANSLATE_NOOP("ItemCatalog", "颜色")},
                  {8, QT_TRANSLATE_NOOP("ItemCatalog", "标签")},
                  {9, QT_TRANSLATE_NOOP("ItemCatalog", "JavaScript")}});
}

std::vector<ItemKind> actionKinds() {
    return kinds({{1, QT_TRANSLATE_NOOP("ItemCatalog", "点击坐标")},
                  {2, QT_TRANSLATE_NOOP("ItemCatalog", "点击图片")},
                  {21, QT_TRANSLATE_NOOP("ItemCatalog", "点击颜色")},
                  {15, QT_TRANSLATE_NOOP("ItemCatalog", "点击文字")},
                  {18, QT_TRANSLATE_NOOP("ItemCatalog", "点击标签")},
                  {17, QT_TRANSLATE_NOOP("ItemCatalog", "鼠标抬起")},
                  {13, QT_TRANSLATE_NOOP("ItemCatalog", "鼠标滚轮")},
                  {7, QT_TRANSLATE_NOOP("ItemCatalog", "滑动")},
                  {11, QT_TRANSLATE_NOOP("ItemCatalog", "按键")},
                  {6, QT_TRANSLATE_NOOP("ItemCatalog", "输入文字")},
                  {3, QT_TRANSLATE_NOOP("ItemCatalog", "修改变量")},
                  {9, QT_TRANSLATE_NOOP("ItemCatalog", "重置所有变量")},
                  {4, QT_TRANSLATE_NOOP("ItemCatalog", "保存屏幕内容")},
                  {5, QT_TRANSLATE_NOOP("ItemCatalog", "保存图片坐标")},
                  {19, QT_TRANSLATE_NOOP("ItemCatalog", "保存标签坐标")},
                  {12, QT_TRANSLATE_NOOP("ItemCatalog", "执行JS代码")},
                  {20, QT_TRANSLATE_NOOP("ItemCatalog", "插件动作")},
                  {16, QT_TRANSLATE_NOOP("ItemCatalog", "启动应用")},
                  {14, QT_TRANSLATE_NOOP("ItemCatalog", "延迟")},
                  {10, QT_TRANSLATE_NOOP("ItemCatalog", "停止任务")}});
}

std::vector<ItemKind> definitionKinds() {
    return kinds({{1, QT_TRANSLATE_NOOP("ItemCatalog", "变量")},
                  {3, QT_TRANSLATE_NOOP("ItemCatalog", "计时器")},
                  {4, QT_TRANSLATE_NOOP("ItemCatalog", "定时器")},
                  {5, QT_TRANSLATE_NOOP("ItemCatalog", "随机")},
                  {2, QT_TRANSLATE_NOOP("ItemCatalog", "范围")}});
}

QString conditionKindName(int type) {
    return kindName(conditionKinds(), type);
}

QString actionKindName(int type) {
    return kindName(actionKinds(), type);
}

std::unique_ptr<IEditorCondition> newCondition(int type) {
    return Conditions::make(type);
}

std::unique_ptr<IEditorAction> newAction(int type) {
    return Actions::make(type);
}

std::unique_ptr<EditorVariable> newDefinition(int type) {
    switch (DefinitionType(type)) {
        case DefinitionType::Variable:
            return std::make_unique<EditorVariable>();
        case DefinitionType::Crop:
            return std::make_unique<CropInfo>();
        case DefinitionType::Timer:
            return std::make_unique<EditorTimer>();
        case DefinitionType::Alarm:
            return std::make_unique<EditorAlarm>();
        case DefinitionType::Random:
            return std::make_unique<EditorRandom>();
        default:
            return nullptr;
    }
}

namespace {

bool isScript(const IEditorItem& item) {
    return dynamic_cast<const IEditorCondition*>(&item)
               ? item.type() == EditorJavaScriptCondition::kType
               : item.type() == EditorJavaScriptAction::kType;
}

}  // namespace

QString itemFormTitle(const IEditorItem& item) {
    if (isScript(item)) {
        return tr(kScriptTitle);
    }
    return dynamic_cast<const IEditorCondition*>(&item) ? conditionKindName(item.type())
                                                        : actionKindName(item.type());
}

void addItemFields(FieldForm& form, IEditorItem& item, const TaskDocument& task) {
    if (auto* condition = dynamic_cast<IEditorCondition*>(&item)) {
        configureCondition(form, item.type());
        Conditions::addFields(form, *condition);
        if (isScript(item)) {
            auto* hint = new QLabel(tr(kScriptConditionHint));
            hint->setWordWrap(true);
            form.addWideRow(hint);
        }
    } else if (item.type() == EditorPluginAction::kType) {
        auto* plugin = new PluginActionForm(task, static_cast<EditorPluginAction&>(item));
        plugin->setObjectName(QStringLiteral("plugin_action"));
        form.addWideRow(
            plugin, [plugin] { plugin->apply(); }, [plugin] { return plugin->problem(); });
    } else if (auto* action = dynamic_cast<IEditorAction*>(&item)) {
        configureAction(form, item.type());
        Actions::addFields(form, *action);
    }
    if (isScript(item)) {
        form.addWideRow(scriptTestButton(form, task));
    }
}

void addDefinitionFields(FieldForm& form, EditorVariable& definition, const TaskDocument& task) {
    switch (DefinitionType(definition.type())) {
        case DefinitionType::Crop: {
            auto& crop = static_cast<CropInfo&>(definition);
            form.addFields(crop);
            form.addCheck([&form, &task, &crop] { return cropProblem(form, task, crop); });
            break;
        }
        case DefinitionType::Timer:
            form.addFields(static_cast<EditorTimer&>(definition));
            break;
        case DefinitionType::Alarm:
            form.setUnit("timeout", FieldUnit::Minutes);
            form.addFields(static_cast<EditorAlarm&>(definition));
            break;
        case DefinitionType::Random:
            form.addFields(static_cast<EditorRandom&>(definition));
            break;
        default:
            form.hideField("is_local");
            form.hideField("is_config");
            form.hideField("is_global");
            form.addFields(definition);
            addScopeField(form, definition);
            break;
    }
    const int id = definition.id;
    form.addCheck([&form, &task, id] { return nameProblem(form, task, id); });
}

}  // namespace autoscene::ui

#include "editor/PluginActionForm.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "model/TaskDocument.h"
#include "plugins/PluginCall.h"

namespace autoscene::ui {

namespace {

QJsonArray arrayOf(const model::RawJson& raw) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(raw.text)).array();
}

model::RawJson rawOf(const QJsonArray& array) {
    return {QJsonDocument(array).toJson(QJsonDocument::Compact).toStdString()};
}

QString notFoundText(const QString& action) {
    return PluginActionForm::tr("插件异常，插件动作:%1未找到").arg(action);
}

}  // namespace

PluginActionForm::PluginActionForm(const model::TaskDocument& task,
                                   model::EditorPluginAction& record, QWidget* parent)
    : QWidget(parent),
      task_(task),
      record_(record),
      plugins_(readTaskPlugins(task)),
      plugin_(new QComboBox),
      action_(new QComboBox),
      status_(new QLabel),
      rows_(new QFormLayout) {
    // A record naming a plug-in the list no longer has still shows what it calls.
    const auto listed = [&](const TaskPlugin& p) { return p.file == record.configFile; };
    if (!record.configFile.isEmpty() && std::none_of(plugins_.begin(), plugins_.end(), listed)) {
        plugins_.push_back(readTaskPlugin(task, record.configFile));
    }
    plugin_->setObjectName(QStringLiteral("comboBox_plugin"));
    plugin_->setAccessibleName(tr("插件"));
    action_->setObjectName(QStringLiteral("comboBox_action"));
    action_->setAccessibleName(tr("插件动作"));
    status_->setObjectName(QStringLiteral("label_plugin_status"));
    status_->setStyleSheet(QStringLiteral("color: #c00000;"));
    status_->setWordWrap(true);
    for (const TaskPlugin& plugin : plugins_) {
        plugin_->addItem(plugin.usable() ? plugin.name() : tr("%1 (加载失败)").arg(plugin.name()));
    }
    rows_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* head = new QFormLayout;
    head->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    head->addRow(tr("插件"), plugin_);
    head->addRow(tr("插件动作"), action_);
    auto* parameters = new QGroupBox(tr("参数"));
    parameters->setLayout(rows_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(status_);
    layout->addWidget(parameters);

    const auto chosen = std::find_if(plugins_.begin(), plugins_.end(), listed);
    showPlugin(chosen == plugins_.end() ? 0 : int(chosen - plugins_.begin()));
    // A new action takes the first plug-in and action as they are shown.
    changed_ = record.configFile.isEmpty() && record.actionName.isEmpty();
    connect(plugin_, &QComboBox::currentIndexChanged, this, [this](int index) {
        markChanged();
        showPlugin(index);
    });
    connect(action_, &QComboBox::currentIndexChanged, this, [this](int index) {
        markChanged();
        showAction(index);
    });
}

void PluginActionForm::showPlugin(int index) {
    const QSignalBlocker blocker(action_);
    plugin_->setCurrentIndex(index);
    action_->clear();
    if (index < 0 || index >= int(plugins_.size())) {
        showAction(-1);
        return;
    }
    const TaskPlugin& plugin = plugins_[size_t(index)];
    if (plugin.description) {
        for (const auto& action : plugin.description->actions) {
            action_->addItem(action.name);
        }
    }
    int shown = action_->findText(record_.actionName);
    if (shown < 0 && plugin.file == record_.configFile && !record_.actionName.isEmpty()) {
        action_->addItem(record_.actionName);
        shown = action_->count() - 1;
    }
    action_->setCurrentIndex(std::max(shown, 0));
    showAction(action_->currentIndex());
}

const model::PluginActionDescription* PluginActionForm::chosenAction() const {
    const int index = plugin_->currentIndex();
    if (index < 0 || index >= int(plugins_.size()) || !plugins_[size_t(index)].description) {
        return nullptr;
    }
    return plugins_[size_t(index)].description->action(action_->currentText());
}

QComboBox* PluginActionForm::variableCombo(bool withLiteral, int selected) {
    auto* combo = new QComboBox;
    combo->addItem(withLiteral ? tr("值") : tr("无"), 0);
    for (const auto& definition : task_.definitions) {
        if (model::DefinitionType(definition->type()) != model::DefinitionType::Crop) {
            combo->addItem(definition->name, definition->id);
        }
    }
    if (selected != 0 && combo->findData(selected) < 0) {
        combo->addItem(QStringLiteral("#%1").arg(selected), selected);
    }
    combo->setCurrentIndex(std::max(combo->findData(selected), 0));
    connect(combo, &QComboBox::currentIndexChanged, this, &PluginActionForm::markChanged);
    return combo;
}

void PluginActionForm::showAction(int /*index*/) {
    while (rows_->rowCount() > 0) {
        rows_->removeRow(0);
    }
    inputs_.clear();
    choices_.clear();
    outputs_.clear();
    const model::PluginActionDescription* description = chosenAction();
    const int plugin = plugin_->currentIndex();
    if (plugin < 0) {
        status_->setText(tr("任务没有加载插件: 请先在插件列表中加载插件"));
    } else if (!plugins_[size_t(plugin)].usable()) {
        status_->setText(model::missingPluginMessage());
    } else {
        status_->setText(description ? QString() : notFoundText(action_->currentText()));
    }
    status_->setVisible(!status_->text().isEmpty());
    // What the record holds fills the rows of the same names; without a description the
    // record's own rows are shown.
    const bool sameAction = action_->currentText() == record_.actionName;
    const plugins::PluginCall call =
        sameAction ? plugins::readPluginCall(record_) : plugins::PluginCall{};
    QStringList inputNames;
    QList<std::pair<QString, QStringList>> choiceNames;
    QStringList outputNames;
    if (description) {
        inputNames = description->params;
        for (const auto& entry : arrayOf(description->options)) {
            QStringList allowed;
            for (const auto& option : entry[QLatin1String("options")].toArray()) {
                allowed << option.toString();
            }
            choiceNames.append({entry[QLatin1String("param_name")].toString(), allowed});
        }
        for (const auto& entry : arrayOf(description->results)) {
            outputNames << entry[QLatin1String("result_name")].toString();
        }
    } else {
        for (const auto& input : call.inputs) {
            inputNames << input.name;
        }
        for (const auto& entry : arrayOf(record_.actionOptioninputs)) {
            QStringList allowed;
            for (const auto& option : entry[QLatin1String("action_option")].toArray()) {
                allowed << option.toString();
            }
            choiceNames.append({entry[QLatin1String("action_arg")].toString(), allowed});
        }
        for (const auto& output : call.outputs) {
            outputNames << output.result;
        }
    }
    for (const QString& name : inputNames) {
        const auto held = std::find_if(call.inputs.begin(), call.inputs.end(),
                                       [&](const auto& i) { return i.name == name; });
        const bool found = held != call.inputs.end();
        auto* source = variableCombo(true, found ? held->variableId : 0);
        auto* literal = new QLineEdit(found ? held->literal : QString());
        literal->setAccessibleName(name);
        literal->setObjectName(QStringLiteral("input_value/%1").arg(name));
        literal->setEnabled(source->currentIndex() == 0);
        connect(literal, &QLineEdit::textChanged, this, &PluginActionForm::markChanged);
        connect(source, &QComboBox::currentIndexChanged, literal,
                [literal](int i) { literal->setEnabled(i == 0); });
        auto* row = new QHBoxLayout;
        row->addWidget(source);
        row->addWidget(literal, 1);
        source->setAccessibleName(tr("%1的来源").arg(name));
        source->setObjectName(QStringLiteral("input/%1").arg(name));
        rows_->addRow(name, row);
        inputs_.push_back({name, source, literal});
    }
    for (const auto& choice : choiceNames) {
        const QString& name = choice.first;
        const QStringList& allowed = choice.second;
        const auto held = std::find_if(call.choices.begin(), call.choices.end(),
                                       [&](const auto& c) { return c.name == name; });
        auto* combo = new QComboBox;
        combo->addItems(allowed);
        if (held != call.choices.end() && combo->findText(held->chosen) < 0) {
            combo->addItem(held->chosen);
        }
        combo->setCurrentIndex(held == call.choices.end() ? 0 : combo->findText(held->chosen));
        combo->setObjectName(QStringLiteral("option/%1").arg(name));
        combo->setAccessibleName(name);
        connect(combo, &QComboBox::currentIndexChanged, this, &PluginActionForm::markChanged);
        rows_->addRow(name, combo);
        choices_.push_back({name, allowed, combo});
    }
    for (const QString& name : outputNames) {
        const auto held = std::find_if(call.outputs.begin(), call.outputs.end(),
                                       [&](const auto& o) { return o.result == name; });
        auto* combo = variableCombo(false, held == call.outputs.end() ? 0 : held->variableId);
        combo->setObjectName(QStringLiteral("output/%1").arg(name));
        combo->setAccessibleName(tr("结果%1保存到").arg(name));
        rows_->addRow(tr("%1 →").arg(name), combo);
        outputs_.push_back({name, combo});
    }
    if (rows_->rowCount() == 0) {
        rows_->addRow(new QLabel(tr("此动作没有参数")));
    }
}

QString PluginActionForm::problem() const {
    // An item opened and left alone is kept as it is, whatever became of its plug-in.
    if (!changed_) {
        return {};
    }
    const int index = plugin_->currentIndex();
    if (index < 0) {
        return tr("没有选择插件");
    }
    if (!plugins_[size_t(index)].usable()) {
        return model::missingPluginMessage();
    }
    return chosenAction() ? QString() : notFoundText(action_->currentText());
}

void PluginActionForm::apply() {
    if (!changed_ || plugin_->currentIndex() < 0) {
        return;
    }
    record_.configFile = plugins_[size_t(plugin_->currentIndex())].file;
    record_.actionName = action_->currentText();
    QJsonArray inputs;
    for (const Input& input : inputs_) {
        const int variable = input.source->currentData().toInt();
        inputs.append(
            QJsonObject{{QStringLiteral("action_arg"), input.name},
                        {QStringLiteral("action_varvalue"),
                         variable ? QJsonValue(variable) : QJsonValue(input.literal->text())}});
    }
    QJsonArray choices;
    for (const Choice& choice : choices_) {
        choices.append(QJsonObject{
            {QStringLiteral("action_arg"), choice.name},
            {QStringLiteral("action_option"), QJsonArray::fromStringList(choice.allowed)},
            {QStringLiteral("action_varvalue"), choice.chosen->currentText()}});
    }
    QJsonArray outputs;
    for (const Output& output : outputs_) {
        outputs.append(QJsonObject{
            {QStringLiteral("action_result"), output.name},
            {QStringLiteral("action_varvalue"), output.variable->currentData().toInt()}});
    }
    record_.actionInputs = rawOf(inputs);
    record_.actionOptioninputs = rawOf(choices);
    record_.actionOutputs = rawOf(outputs);
}

}  // namespace autoscene::ui

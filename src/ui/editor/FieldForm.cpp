#include "editor/FieldForm.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTimeEdit>
#include <algorithm>
#include <climits>
#include <optional>

#include "editor/ColorButton.h"
#include "editor/KeyCaptureEdit.h"
#include "model/RectText.h"
#include "model/TaskDocument.h"

namespace autoscene::ui {

namespace {

const QString kTimeFormat = QStringLiteral("HH:mm:ss");

// Full-width commas count: names are often typed with a Chinese input method.
QStringList splitList(const QString& text) {
    QStringList parts = text.split(QRegularExpression(QStringLiteral("[,，]")), Qt::SkipEmptyParts);
    for (QString& part : parts) {
        part = part.trimmed();
    }
    parts.removeAll(QString());
    return parts;
}

// The compact form of JSON text; nothing when it is not JSON.
std::optional<std::string> compactJson(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    rapidjson::Document json;
    if (json.Parse(utf8.constData(), size_t(utf8.size())).HasParseError()) {
        return std::nullopt;
    }
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    json.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize());
}

std::optional<qint64> integerJson(const model::RawJson& raw) {
    bool ok = false;
    const qint64 value = QByteArray::fromStdString(raw.text).toLongLong(&ok);
    return ok ? std::optional(value) : std::nullopt;
}

QString definitionKindName(int type) {
    switch (model::DefinitionType(type)) {
        case model::DefinitionType::Crop:
            return FieldForm::tr("范围");
        case model::DefinitionType::Timer:
            return FieldForm::tr("计时器");
        case model::DefinitionType::Alarm:
            return FieldForm::tr("定时器");
        case model::DefinitionType::Random:
            return FieldForm::tr("随机");
        default:
            return FieldForm::tr("变量");
    }
}

}  // namespace

FieldForm::FieldForm(const model::TaskDocument& task, QWidget* parent)
    : QWidget(parent), task_(task), layout_(new QFormLayout(this)) {
    layout_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    // Kept as they are: the record's own identity and format version.
    hidden_ << QStringLiteral("id") << QStringLiteral("version");
}

void FieldForm::setChoices(const char* key, const std::vector<Choice>& choices) {
    choices_.insert(QLatin1String(key), choices);
}

void FieldForm::setLabel(const char* key, const QString& label) {
    labels_.insert(QLatin1String(key), label);
}

void FieldForm::setUnit(const char* key, FieldUnit unit) {
    units_.insert(QLatin1String(key), unit);
}

void FieldForm::setDefinitionKinds(const char* key,
                                   const std::vector<model::DefinitionType>& kinds) {
    kinds_.insert(QLatin1String(key), kinds);
}

void FieldForm::setRequired(const char* key) {
    required_ << QLatin1String(key);
}

void FieldForm::hideField(const char* key) {
    hidden_ << QLatin1String(key);
}

QString FieldForm::labelOf(const char* key) const {
    return labels_.value(QLatin1String(key), fieldText(key).label);
}

FieldUnit FieldForm::unitOf(const char* key) const {
    return units_.value(QLatin1String(key), fieldText(key).unit);
}

QFormLayout* FieldForm::beginGroup(const char* key) {
    auto* box = new QGroupBox(labelOf(key));
    box->setObjectName(QLatin1String(key));
    layout_->addRow(box);
    QFormLayout* outer = layout_;
    layout_ = new QFormLayout(box);
    layout_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    prefix_ << QLatin1String(key);
    return outer;
}

void FieldForm::endGroup(QFormLayout* outer) {
    layout_ = outer;
    prefix_.removeLast();
}

void FieldForm::addRow(const char* key, QWidget* control, std::function<void()> store,
                       std::function<QString()> problem) {
    const FieldText text = fieldText(key);
    const QString labelText = labelOf(key);
    const QString path = (prefix_ + QStringList{QLatin1String(key)}).join(QLatin1Char('/'));
    control->setObjectName(path);
    control->setAccessibleName(labelText);
    if (!text.hint.isEmpty()) {
        control->setToolTip(text.hint);
        control->setAccessibleDescription(text.hint);
        if (auto* edit = qobject_cast<QLineEdit*>(control)) {
            edit->setPlaceholderText(text.hint);
        }
    }
    auto* label = new QLabel(labelText);
    label->setBuddy(control);
    layout_->addRow(label, control);
    controls_.insert(path, control);
    order_ << path;
    bindings_.push_back({path, std::move(store), std::move(problem)});
}

void FieldForm::apply() {
    for (const Binding& binding : bindings_) {
        binding.store();
    }
}

QStringList FieldForm::problems() const {
    QStringList found;
    for (const Binding& binding : bindings_) {
        if (binding.problem) {
            if (const QString text = binding.problem(); !text.isEmpty()) {
                found << text;
            }
        }
    }
    for (const auto& check : checks_) {
        if (const QString text = check(); !text.isEmpty()) {
            found << text;
        }
    }
    return found;
}

void FieldForm::addField(const char* key, int& value, model::Ref ref) {
    if (ref != model::Ref::None) {
        referenceControl(key, value, ref);
        return;
    }
    std::vector<Choice> choices = choices_.value(QLatin1String(key), keyChoices(key));
    if (!choices.empty()) {
        choiceControl(key, value, choices);
        return;
    }
    const int shown = value;
    if (std::string_view(key) == "key") {
        auto* edit = new KeyCaptureEdit(KeyCaptureEdit::Mode::VirtualKey);
        edit->setVirtualKey(value);
        addRow(key, edit, [edit, &value, shown] {
            if (edit->virtualKey() != shown) {
                value = edit->virtualKey();
            }
        });
        return;
    }
    auto* spin = new QSpinBox;
    spin->setRange(INT_MIN, INT_MAX);
    spin->setSuffix(unitSuffix(unitOf(key)));
    spin->setValue(value);
    addRow(key, spin, [spin, &value, shown] {
        if (spin->value() != shown) {
            value = spin->value();
        }
    });
}

void FieldForm::addField(const char* key, float& value, model::Ref /*ref*/) {
    auto* spin = new QDoubleSpinBox;
    const FieldUnit unit = unitOf(key);
    if (unit == FieldUnit::Similarity) {
        spin->setRange(0.0, 1.0);
        spin->setDecimals(2);
        spin->setSingleStep(0.05);
    } else {
        spin->setRange(unit == FieldUnit::None ? -1e9 : 0.0, 1e9);
        spin->setDecimals(3);
        spin->setSingleStep(0.1);
    }
    spin->setSuffix(unitSuffix(unit));
    spin->setValue(double(value));
    const double shown = spin->value();
    addRow(key, spin, [spin, &value, shown] {
        if (spin->value() != shown) {
            value = float(spin->value());
        }
    });
}

void FieldForm::addField(const char* key, bool& value, model::Ref /*ref*/) {
    auto* box = new QCheckBox;
    box->setChecked(value);
    const bool shown = value;
    addRow(key, box, [box, &value, shown] {
        if (box->isChecked() != shown) {
            value = box->isChecked();
        }
    });
}

void FieldForm::addField(const char* key, QString& value, model::Ref /*ref*/) {
    const QString shown = value;
    const std::string_view name(key);
    if (name == "time_of_day") {
        auto* edit = new QTimeEdit;
        edit->setDisplayFormat(kTimeFormat);
        edit->setTime(QTime::fromString(value, kTimeFormat));
        const QString shownText = edit->time().toString(kTimeFormat);
        addRow(key, edit, [edit, &value, shownText] {
            if (edit->time().toString(kTimeFormat) != shownText) {
                value = edit->time().toString(kTimeFormat);
            }
        });
        return;
    }
    if (name == "js_code") {
        auto* edit = new QPlainTextEdit(value);
        edit->setFont(QFont(QStringLiteral("monospace")));
        edit->setMinimumHeight(160);
        addRow(key, edit, [edit, &value, shown] {
            if (edit->toPlainText() != shown) {
                value = edit->toPlainText();
            }
        });
        return;
    }
    auto* edit = new QLineEdit(value);
    std::function<QString()> problem;
    if (name == "name") {
        const QString label = labelOf(key);
        problem = [edit, label] {
            return edit->text().trimmed().isEmpty() ? tr("%1不能为空").arg(label) : QString();
        };
    }
    addRow(
        key, edit,
        [edit, &value, shown] {
            if (edit->text() != shown) {
                value = edit->text();
            }
        },
        std::move(problem));
}

void FieldForm::addField(const char* key, QStringList& value, model::Ref /*ref*/) {
    auto* edit = new QPlainTextEdit(value.join(QLatin1Char('\n')));
    edit->setMaximumHeight(70);
    const QString shown = edit->toPlainText();
    addRow(key, edit, [edit, &value, shown] {
        if (edit->toPlainText() != shown) {
            value = edit->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        }
    });
}

void FieldForm::addField(const char* key, QRect& value, model::Ref /*ref*/) {
    auto* edit = new QLineEdit(model::formatRectText(value));
    const QString shown = edit->text();
    const QString label = labelOf(key);
    addRow(
        key, edit,
        [edit, &value, shown] {
            if (edit->text() != shown) {
                value = model::parseRectText(edit->text());
            }
        },
        [edit, label] {
            const QStringList parts = splitList(edit->text());
            bool numbers = parts.size() == 4;
            for (const QString& part : parts) {
                bool ok = false;
                numbers = numbers && part.toInt(&ok) >= 0 && ok;
            }
            return numbers ? QString() : tr("%1应为 x,y,宽,高 四个数").arg(label);
        });
}

void FieldForm::addField(const char* key, std::vector<float>& value, model::Ref /*ref*/) {
    QStringList texts;
    for (float number : value) {
        texts << QString::number(double(number));
    }
    auto* edit = new QLineEdit(texts.join(QStringLiteral(", ")));
    const QString shown = edit->text();
    const QString label = labelOf(key);
    const auto parse = [edit]() -> std::optional<std::vector<float>> {
        std::vector<float> numbers;
        for (const QString& part : splitList(edit->text())) {
            bool ok = false;
            numbers.push_back(part.toFloat(&ok));
            if (!ok) {
                return std::nullopt;
            }
        }
        return numbers;
    };
    addRow(
        key, edit,
        [edit, &value, shown, parse] {
            if (edit->text() != shown) {
                value = parse().value_or(value);
            }
        },
        [parse, label] { return parse() ? QString() : tr("%1应为以逗号分隔的数").arg(label); });
}

void FieldForm::addField(const char* key, model::RawJson& value, model::Ref /*ref*/) {
    const model::RawJson shown = value;
    const std::string_view name(key);
    if (name == "group_key") {
        auto* edit = new KeyCaptureEdit(KeyCaptureEdit::Mode::KeyGroup);
        edit->setKeyGroup(value);
        addRow(key, edit, [edit, &value, shown] {
            if (!(edit->keyGroup() == shown)) {
                value = edit->keyGroup();
            }
        });
        return;
    }
    if (const std::optional<qint64> rgb = integerJson(value); name == "filter_color" && rgb) {
        auto* button = new ColorButton;
        button->setRgb(*rgb);
        const qint64 shownRgb = button->rgb();
        addRow(key, button, [button, &value, shownRgb] {
            if (button->rgb() != shownRgb) {
                value.text = std::to_string(button->rgb());
            }
        });
        return;
    }
    auto* edit = new QLineEdit(QString::fromStdString(value.text));
    const QString shownText = edit->text();
    const QString label = labelOf(key);
    addRow(
        key, edit,
        [edit, &value, shownText] {
            if (edit->text() != shownText) {
                value.text = compactJson(edit->text()).value_or(value.text);
            }
        },
        [edit, label] {
            return compactJson(edit->text()) ? QString() : tr("%1不是有效的JSON").arg(label);
        });
}

QWidget* FieldForm::choiceControl(const char* key, int& value, const std::vector<Choice>& choices) {
    auto* combo = new QComboBox;
    for (const Choice& choice : choices) {
        combo->addItem(choice.text, choice.value);
    }
    // A code the list does not know stays selectable, so that opening loses nothing.
    if (combo->findData(value) < 0) {
        combo->addItem(tr("其它(%1)").arg(value), value);
    }
    combo->setCurrentIndex(combo->findData(value));
    const int shown = value;
    addRow(key, combo, [combo, &value, shown] {
        if (combo->currentData().toInt() != shown) {
            value = combo->currentData().toInt();
        }
    });
    return combo;
}

std::vector<Choice> FieldForm::definitionChoices(const char* key) const {
    const std::string_view name(key);
    const bool region = name == "search_id" || name == "deviation_id";
    const auto kinds = kinds_.value(QLatin1String(key));
    std::vector<Choice> list;
    for (const auto& definition : task_.definitions) {
        const auto type = model::DefinitionType(definition->type());
        const bool wanted = kinds.empty()
                                ? region == (type == model::DefinitionType::Crop)
                                : std::find(kinds.begin(), kinds.end(), type) != kinds.end();
        if (wanted) {
            list.push_back(
                {definition->id, QStringLiteral("%1 (%2)").arg(
                                     definition->name, definitionKindName(definition->type()))});
        }
    }
    return list;
}

QWidget* FieldForm::referenceControl(const char* key, int& value, model::Ref ref) {
    std::vector<Choice> list;
    std::function<bool(int)> exists;
    switch (ref) {
        case model::Ref::Definition:
            list = definitionChoices(key);
            exists = [this](int id) { return task_.definition(id) != nullptr; };
            break;
        case model::Ref::Image:
            for (const auto& image : task_.images) {
                list.push_back({image.id, image.name});
            }
            exists = [this](int id) { return task_.image(id) != nullptr; };
            break;
        case model::Ref::Color:
            for (const auto& color : task_.colors) {
                list.push_back(
                    {color.id, QStringLiteral("%1 %2").arg(color.name, color.displayText())});
            }
            exists = [this](int id) { return task_.color(id) != nullptr; };
            break;
        case model::Ref::Original:
            for (const auto& original : task_.originals) {
                list.push_back({original.id, original.name});
            }
            exists = [this](int id) {
                return std::any_of(task_.originals.begin(), task_.originals.end(),
                                   [id](const auto& o) { return o.id == id; });
            };
            break;
        case model::Ref::Label:
        case model::Ref::None:
            for (int id = 0; const auto name = task_.labelName(id); ++id) {
                list.push_back({id, *name});
            }
            exists = [this](int id) { return task_.labelName(id).has_value(); };
            break;
    }
    // Labels count from 0; everything else uses 0 for "none".
    if (ref != model::Ref::Label) {
        list.insert(list.begin(), {0, tr("无")});
    }
    const bool required = ref == model::Ref::Image || ref == model::Ref::Color ||
                          required_.contains(QLatin1String(key));
    auto* combo = static_cast<QComboBox*>(choiceControl(key, value, list));
    const QString label = labelOf(key);
    bindings_.back().problem = [combo, exists, required, label, ref] {
        const int id = combo->currentData().toInt();
        if (id == 0 && ref != model::Ref::Label) {
            return required ? tr("%1: 没有选择").arg(label) : QString();
        }
        return exists(id) ? QString() : tr("%1: %2 不存在").arg(label).arg(id);
    };
    return combo;
}

void FieldForm::addField(const char* key, std::vector<int>& value, model::Ref /*ref*/) {
    definitionListControl(key, value);
}

QWidget* FieldForm::definitionListControl(const char* key, std::vector<int>& value) {
    QStringList names;
    for (int id : value) {
        const model::EditorVariable* definition = task_.definition(id);
        names << (definition ? definition->name : QStringLiteral("#%1").arg(id));
    }
    auto* edit = new QLineEdit(names.join(QStringLiteral(", ")));
    const QString shown = edit->text();
    const QString label = labelOf(key);
    const auto parse = [this, edit]() -> std::pair<std::vector<int>, QString> {
        std::vector<int> ids;
        for (const QString& name : splitList(edit->text())) {
            const auto found = std::find_if(task_.definitions.begin(), task_.definitions.end(),
                                            [&](const auto& d) { return d->name == name; });
            bool isId = false;
            const int id = name.startsWith(QLatin1Char('#')) ? name.mid(1).toInt(&isId) : 0;
            if (found == task_.definitions.end() && !isId) {
                return {{}, name};
            }
            ids.push_back(isId ? id : (*found)->id);
        }
        return {ids, {}};
    };
    addRow(
        key, edit,
        [edit, &value, shown, parse] {
            if (edit->text() != shown) {
                value = parse().first;
            }
        },
        [parse, label] {
            const QString unknown = parse().second;
            return unknown.isEmpty() ? QString() : tr("%1: 没有名为 %2 的变量").arg(label, unknown);
        });
    return edit;
}

}  // namespace autoscene::ui

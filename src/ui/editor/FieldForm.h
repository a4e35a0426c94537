#pragma once
// A form over a record's field table: one control per field, chosen by the field's type,
// key and what it refers to, so that the forms of thirty-odd records are one piece of code
// and the special cases are a few settings made before the fields are added. Only fields
// whose control shows a different value are written back: a form accepted unchanged leaves
// its record exactly as it was, bits of floats included.

#include <QFormLayout>
#include <QHash>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <string_view>
#include <vector>

#include "editor/FieldTexts.h"
#include "model/Definitions.h"
#include "model/Fields.h"

namespace autoscene::model {
class TaskDocument;
}  // namespace autoscene::model

namespace autoscene::ui {

class FieldForm : public QWidget {
    Q_OBJECT
public:
    explicit FieldForm(const model::TaskDocument& task, QWidget* parent = nullptr);

    // Settings for the fields added after them.
    void setChoices(const char* key, const std::vector<Choice>& choices);
    void setLabel(const char* key, const QString& label);
    void setUnit(const char* key, FieldUnit unit);
    // The kinds of definition a reference may name; by default crops for search regions
    // and offsets, every other kind elsewhere.
    void setDefinitionKinds(const char* key, const std::vector<model::DefinitionType>& kinds);
    // A reference that must name something that exists.
    void setRequired(const char* key);
    void hideField(const char* key);

    template <model::HasFields R>
    void addFields(R& record) {
        std::apply([&](const auto&... f) { (addTableField(f, record), ...); }, R::fields());
    }

    // A check of the whole form, added to problems(): empty text when fine.
    void addCheck(std::function<QString()> check) { checks_.push_back(std::move(check)); }
    // A hand-made control in the form's layout, stored and checked with the fields.
    void addRow(const char* key, QWidget* control, std::function<void()> store,
                std::function<QString()> problem = {});

    // A widget across the whole row that holds no value (a hint, a button).
    void addWideRow(QWidget* widget) { layout_->addRow(widget); }
    // A widget across the whole row that stores its own values, stored and checked with the
    // fields.
    void addWideRow(QWidget* widget, std::function<void()> store,
                    std::function<QString()> problem) {
        layout_->addRow(widget);
        controls_.insert(widget->objectName(), widget);
        order_ << widget->objectName();
        bindings_.push_back({widget->objectName(), std::move(store), std::move(problem)});
    }

    // Writes every control whose value differs from the one it was shown with.
    void apply();
    // What is wrong with the values shown, one line each; empty when they can be kept.
    QStringList problems() const;
    // The control of a field by its path ("text_info/value" inside nested records).
    QWidget* control(const QString& path) const { return controls_.value(path); }
    QStringList paths() const { return order_; }

    void addField(const char* key, int& value, model::Ref ref);
    void addField(const char* key, float& value, model::Ref ref);
    void addField(const char* key, bool& value, model::Ref ref);
    void addField(const char* key, QString& value, model::Ref ref);
    void addField(const char* key, QStringList& value, model::Ref ref);
    void addField(const char* key, QRect& value, model::Ref ref);
    void addField(const char* key, std::vector<int>& value, model::Ref ref);
    void addField(const char* key, std::vector<float>& value, model::Ref ref);
    void addField(const char* key, model::RawJson& value, model::Ref ref);
    template <model::HasFields T>
    void addField(const char* key, T& nested, model::Ref /*ref*/) {
        QFormLayout* outer = beginGroup(key);
        addFields(nested);
        endGroup(outer);
    }

private:
    struct Binding {
        QString path;
        std::function<void()> store;
        std::function<QString()> problem;  // empty text when fine
    };

    template <class Field, class R>
    void addTableField(const Field& f, R& record) {
        // Keys that are only read belong to a member another key writes and shows.
        if (*f.key && !hidden_.contains(QLatin1String(f.key))) {
            addField(f.key, record.*(f.member), f.ref);
        }
    }

    QFormLayout* beginGroup(const char* key);
    void endGroup(QFormLayout* outer);
    QString labelOf(const char* key) const;
    FieldUnit unitOf(const char* key) const;
    QWidget* referenceControl(const char* key, int& value, model::Ref ref);
    QWidget* choiceControl(const char* key, int& value, const std::vector<Choice>& choices);
    QWidget* definitionListControl(const char* key, std::vector<int>& value);
    std::vector<Choice> definitionChoices(const char* key) const;

    const model::TaskDocument& task_;
    QFormLayout* layout_;
    QStringList prefix_;
    QHash<QString, std::vector<Choice>> choices_;
    QHash<QString, FieldUnit> units_;
    QHash<QString, QString> labels_;
    QHash<QString, std::vector<model::DefinitionType>> kinds_;
    QStringList required_;
    QStringList hidden_;
    std::vector<Binding> bindings_;
    std::vector<std::function<QString()>> checks_;
    QHash<QString, QWidget*> controls_;
    QStringList order_;
};

}  // namespace autoscene::ui

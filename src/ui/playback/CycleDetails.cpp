#include "ui/playback/CycleDetails.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTreeWidget>
#include <algorithm>

#include "editor/ItemCatalog.h"
#include "model/TaskDocument.h"

namespace autoscene::ui {

namespace {

constexpr int kSceneRole = Qt::UserRole;
constexpr int kEventRole = Qt::UserRole + 1;
constexpr int kHolds = 1;  // engine::ItemState as the evidence writes it
constexpr int kFails = 2;

QString mark(int state) {
    return state == kHolds   ? QStringLiteral("✔")
           : state == kFails ? QStringLiteral("✘")
                             : QStringLiteral("〇");
}

// "key=value" for every field a reader needs, in the evidence's own words.
QString fields(const QJsonObject& object, const QStringList& skipped) {
    QStringList parts;
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (skipped.contains(it.key())) {
            continue;
        }
        const QJsonValue value = it.value();
        QString text;
        if (value.isString()) {
            text = value.toString();
        } else if (value.isDouble()) {
            text = QString::number(value.toDouble(), 'g', 4);
        } else if (value.isBool()) {
            text = value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
        } else {
            text = QString::fromUtf8(
                value.isArray() ? QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact)
                                : QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
        }
        parts << it.key() + '=' + text;
    }
    return parts.join(QStringLiteral("  "));
}

void addConditions(QTreeWidgetItem& parent, const QJsonObject& group) {
    for (const auto& value : group["item_state"].toArray()) {
        const QJsonObject condition = value.toObject();
        auto* row = new QTreeWidgetItem(&parent);
        if (condition["item_state"].isArray()) {
            row->setText(0, QCoreApplication::translate("CycleDetails", "条件组"));
            addConditions(*row, condition);
            continue;
        }
        row->setText(0, QStringLiteral("%1 %2 %3")
                            .arg(mark(condition["item_state"].toInt()),
                                 condition["type"].toString(), condition["name"].toString()));
        row->setText(1, fields(condition, {"type", "item_state", "name", "confirmed_time", "err"}) +
                            (condition["err"].toString().isEmpty()
                                 ? QString()
                                 : QStringLiteral("  ") + condition["err"].toString()));
    }
}

QString valueText(const QJsonValue& value) {
    return value.isObject() ? fields(value.toObject(), {}) : value.toVariant().toString();
}

}  // namespace

void showDecisions(QTreeWidget& tree, const QJsonObject& cycleLine) {
    tree.clear();
    for (const auto& value : cycleLine["checks"].toArray()) {
        const QJsonObject check = value.toObject();
        const bool identification = check.contains("identification");
        auto* row = new QTreeWidgetItem(&tree);
        row->setText(0, identification
                            ? QCoreApplication::translate("CycleDetails", "%1 识别界面 %2")
                                  .arg(mark(check["holds"].toBool() ? kHolds : kFails),
                                       check["scene"].toString())
                            : QCoreApplication::translate("CycleDetails", "%1 事件 %2 (%3)")
                                  .arg(mark(check["holds"].toBool() ? kHolds : kFails),
                                       check["event"].toString(), check["scene"].toString()));
        row->setData(0, kSceneRole, check["scene"].toString());
        row->setData(0, kEventRole, identification ? QString() : check["event"].toString());
        addConditions(*row, check["conditions"].toObject());
    }
    for (const auto& value : cycleLine["fired"].toArray()) {
        const QJsonObject fired = value.toObject();
        auto* row = new QTreeWidgetItem(&tree);
        row->setText(0, fired["entered"].toBool()
                            ? QCoreApplication::translate("CycleDetails", "→ 进入界面 %1")
                                  .arg(fired["scene"].toString())
                            : QCoreApplication::translate("CycleDetails", "→ 触发 %1 (%2)")
                                  .arg(fired["event"].toString(), fired["scene"].toString()));
        for (const auto& action : fired["actions"].toArray()) {
            auto* result = new QTreeWidgetItem(row);
            result->setText(0, actionKindName(action.toObject()["type"].toInt()));
            result->setText(1, fields(action.toObject(), {"type"}));
        }
    }
    auto* scene = new QTreeWidgetItem(&tree);
    scene->setText(0, cycleLine["scene"].isString()
                          ? QCoreApplication::translate("CycleDetails", "结束于界面 %1")
                                .arg(cycleLine["scene"].toString())
                          : QCoreApplication::translate("CycleDetails", "结束时不在任何界面"));
    tree.expandAll();
    tree.resizeColumnToContents(0);
}

std::optional<DecisionEvent> decisionEventOf(const QTreeWidgetItem* row) {
    while (row && row->parent()) {
        row = row->parent();
    }
    if (!row || !row->data(0, kSceneRole).isValid()) {
        return std::nullopt;
    }
    return DecisionEvent{row->data(0, kSceneRole).toString(), row->data(0, kEventRole).toString()};
}

void showRunState(QTreeWidget& tree, const QJsonObject& cycleLine,
                  const model::TaskDocument& task) {
    tree.clear();
    const QJsonObject values = cycleLine["state"].toObject()["variables"].toObject();
    for (const auto& definition : task.definitions) {
        const QJsonValue value = values[QString::number(definition->id)];
        if (value.isUndefined()) {
            continue;
        }
        auto* row = new QTreeWidgetItem(&tree);
        row->setText(0, definition->name);
        const std::vector<ItemKind> kinds = definitionKinds();
        const auto kind = std::find_if(kinds.begin(), kinds.end(), [&](const ItemKind& k) {
            return k.type == definition->type();
        });
        row->setText(1, kind == kinds.end() ? QString::number(definition->type()) : kind->name);
        row->setText(2, valueText(value));
    }
    tree.resizeColumnToContents(0);
}

}  // namespace autoscene::ui

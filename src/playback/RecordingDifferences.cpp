#include "playback/RecordingDifferences.h"

#include <map>
#include <vector>

namespace autoscene::playback {

namespace {

const QString kIdentification = QStringLiteral("identification");
const QString kEvent = QStringLiteral("event");

QString checkKey(const QJsonObject& check) {
    const QString kind = check.contains(kIdentification) ? kIdentification : kEvent;
    return check["scene"].toString() + QChar(0x1f) + kind + QChar(0x1f) + check[kind].toString();
}

QString firedKey(const QJsonObject& fired) {
    return fired["scene"].toString() + QChar(0x1f) +
           (fired["entered"].toBool() ? QStringLiteral("\x1e") : fired["event"].toString());
}

// The entries of `list` by key, the n-th of a repeated key as its n-th occurrence.
std::map<std::pair<QString, int>, QJsonObject> byKey(const QJsonArray& list,
                                                     QString (*key)(const QJsonObject&)) {
    std::map<std::pair<QString, int>, QJsonObject> entries;
    std::map<QString, int> seen;
    for (const auto& value : list) {
        const QJsonObject entry = value.toObject();
        const QString k = key(entry);
        entries[{k, seen[k]++}] = entry;
    }
    return entries;
}

QJsonValue outcome(const QJsonObject* check) {
    if (!check) {
        return QJsonValue();
    }
    return QJsonObject{{"holds", (*check)["holds"]}, {"conditions", (*check)["conditions"]}};
}

// The keys of both sides in the order the recording has them, then the replay's own.
template <class Map>
std::vector<typename Map::key_type> unionOfKeys(const Map& recorded, const QJsonArray& recordedList,
                                                const QJsonArray& replayedList,
                                                QString (*key)(const QJsonObject&)) {
    std::vector<typename Map::key_type> keys;
    for (const QJsonArray* list : {&recordedList, &replayedList}) {
        std::map<QString, int> seen;
        for (const auto& value : *list) {
            const QString k = key(value.toObject());
            const typename Map::key_type full{k, seen[k]++};
            if (list == &recordedList || !recorded.contains(full)) {
                keys.push_back(full);
            }
        }
    }
    return keys;
}

void addConditionDifferences(const QJsonArray& recordedChecks, const QJsonArray& replayedChecks,
                             QJsonArray& out) {
    const auto recorded = byKey(recordedChecks, checkKey);
    const auto replayed = byKey(replayedChecks, checkKey);
    for (const auto& key : unionOfKeys(recorded, recordedChecks, replayedChecks, checkKey)) {
        const auto old = recorded.find(key);
        const auto now = replayed.find(key);
        const QJsonObject* oldCheck = old == recorded.end() ? nullptr : &old->second;
        const QJsonObject* newCheck = now == replayed.end() ? nullptr : &now->second;
        if (oldCheck && newCheck && (*oldCheck)["holds"] == (*newCheck)["holds"]) {
            continue;
        }
        const QJsonObject& any = oldCheck ? *oldCheck : *newCheck;
        const QString kind = any.contains(kIdentification) ? kIdentification : kEvent;
        out.append(QJsonObject{{"kind", "condition"},
                               {"scene", any["scene"]},
                               {kind, any[kind]},
                               {"old", outcome(oldCheck)},
                               {"new", outcome(newCheck)}});
    }
}

void addEventDifferences(const QJsonArray& recordedFired, const QJsonArray& replayedFired,
                         QJsonArray& out) {
    const auto recorded = byKey(recordedFired, firedKey);
    const auto replayed = byKey(replayedFired, firedKey);
    for (const auto& key : unionOfKeys(recorded, recordedFired, replayedFired, firedKey)) {
        const bool before = recorded.contains(key);
        const bool now = replayed.contains(key);
        if (before == now) {
            continue;
        }
        const QJsonObject& any = before ? recorded.at(key) : replayed.at(key);
        QJsonObject difference{{"kind", "event"},
                               {"scene", any["scene"]},
                               {"fired_before", before},
                               {"fires_now", now}};
        if (any["entered"].toBool()) {
            difference.insert("entered", true);
        } else {
            difference.insert("event", any["event"]);
        }
        out.append(difference);
    }
}

}  // namespace

QJsonArray cycleDifferences(const QJsonObject& recorded, const QJsonObject& replayed) {
    QJsonArray differences;
    if (recorded["scene"] != replayed["scene"]) {
        differences.append(
            QJsonObject{{"kind", "scene"}, {"old", recorded["scene"]}, {"new", replayed["scene"]}});
    }
    addConditionDifferences(recorded["checks"].toArray(), replayed["checks"].toArray(),
                            differences);
    addEventDifferences(recorded["fired"].toArray(), replayed["fired"].toArray(), differences);
    return differences;
}

}  // namespace autoscene::playback

#include "engine/MVRandom.h"

#include <QStringList>

#include "engine/RandomPick.h"

namespace autoscene::engine {

MVRandom::MVRandom(int id, QString name, int min, int max)
    : MVVariable(id, std::move(name), QString(), Scope{}),
      initialMin_(qMin(min, max)),
      initialMax_(qMax(min, max)),
      min_(initialMin_),
      max_(initialMax_) {}

QString MVRandom::valueFor(std::thread::id) const {
    std::lock_guard lock(mutex_);
    return QString::number(std::int64_t(min_) + randomUpTo(std::int64_t(max_) - min_));
}

void MVRandom::setValue(const QString& text) {
    const QStringList parts = text.split(QLatin1Char('~'));
    bool minOk = false;
    bool maxOk = false;
    const int min = parts.value(0).trimmed().toInt(&minOk);
    const int max = parts.value(1).trimmed().toInt(&maxOk);
    if (parts.size() != 2 || !minOk || !maxOk) {
        return;
    }
    std::lock_guard lock(mutex_);
    min_ = qMin(min, max);
    max_ = qMax(min, max);
}

void MVRandom::reset() {
    std::lock_guard lock(mutex_);
    min_ = initialMin_;
    max_ = initialMax_;
}

QJsonValue MVRandom::saveState(std::thread::id) const {
    std::lock_guard lock(mutex_);
    return QStringLiteral("%1~%2").arg(min_).arg(max_);
}

}  // namespace autoscene::engine

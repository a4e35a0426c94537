#pragma once
// A random definition during a run: every read of its value draws a fresh integer
// from min to max, both included. Setting its value to "a~b" changes the range.

#include "engine/MVVariable.h"

namespace autoscene::engine {

class MVRandom : public MVVariable {
public:
    MVRandom(int id, QString name, int min, int max);

    QString valueFor(std::thread::id thread) const override;
    void setValue(const QString& text) override;
    void setDefaultValue(const QString& text) override { setValue(text); }
    void setStartValue(const QString& text) override { setValue(text); }
    void startThread() override {}
    void reset() override;
    // The range ("min~max"): reading the value would draw a number.
    QJsonValue saveState(std::thread::id thread) const override;

private:
    const int initialMin_;
    const int initialMax_;
    int min_;
    int max_;
};

}  // namespace autoscene::engine

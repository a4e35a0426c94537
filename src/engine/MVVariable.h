#pragma once
// A variable during a run: one value shared by all targets when global, otherwise
// one value per worker thread, starting from the default or the target's start value.

#include <QJsonValue>
#include <QString>
#include <mutex>
#include <thread>

#include <unordered_map>

namespace autoscene::engine {

class RunClock;

class MVVariable {
public:
    struct Scope {
        bool local = false;
        bool config = false;
        bool global = false;
    };

    MVVariable(int id, QString name, QString defaultValue, Scope scope);
    virtual ~MVVariable() = default;
    MVVariable(const MVVariable&) = delete;
    MVVariable& operator=(const MVVariable&) = delete;

    int id() const { return id_; }
    const QString& name() const { return name_; }
    bool isGlobal() const { return scope_.global; }
    bool isConfig() const { return scope_.config; }

    // This thread's value becomes its start value, or the default.
    virtual void startThread();
    // Back to the default; every thread's value and start value forgotten.
    virtual void reset();
    virtual QString valueFor(std::thread::id thread) const;
    virtual QString value();
    virtual void setValue(const QString& text);
    // The default, and the shared value with it.
    virtual void setDefaultValue(const QString& text);
    // This thread's value and the value it starts from.
    virtual void setStartValue(const QString& text);
    // What restoreState() needs to put `thread`'s state back: a replay starts each cycle
    // from the state a recording holds.
    virtual QJsonValue saveState(std::thread::id thread) const;
    // The calling thread's state (the shared one when global) from saveState().
    virtual void restoreState(const QJsonValue& state);

protected:
    struct ThreadValue {
        QString value;
        QString start;
        bool hasStart = false;
    };
    // This thread's entry; the caller holds mutex_.
    ThreadValue& own();

    const int id_;
    const QString name_;
    const Scope scope_;
    // One lock for everything: values are short strings, the run view reads other
    // threads' values, and global values are shared.
    mutable std::mutex mutex_;
    QString value_;
    QString default_;
    std::unordered_map<std::thread::id, ThreadValue> threads_;
};

}  // namespace autoscene::engine

#pragma once
// The run as it goes: per target its current scene and how many events fired, a log of
// fired events with each action's result record, and every variable, timer and alarm
// with its status text.

#include <QWidget>
#include <thread>
#include <vector>

#include "ui/RunFeed.h"

class QPlainTextEdit;
class QTableWidget;
class QTreeWidget;

namespace autoscene::engine {
class RuntimeDefinitions;
}

namespace autoscene::ui {

class RunView : public QWidget {
    Q_OBJECT
public:
    explicit RunView(QWidget* parent = nullptr);

    void clear();
    void addNotes(const std::vector<RunFeed::Note>& notes);
    // Reads each reported target's values; safe while the run goes on.
    void showDefinitions(const engine::RuntimeDefinitions& definitions);

    // Targets in the order they first reported.
    int targetCount() const { return int(threads_.size()); }
    int firedCount(int target) const { return fired_.at(size_t(target)); }

private:
    int targetIndex(std::thread::id thread);

    QTableWidget* targets_ = nullptr;
    QPlainTextEdit* events_ = nullptr;
    QTreeWidget* definitions_ = nullptr;
    std::vector<std::thread::id> threads_;
    std::vector<int> fired_;
};

}  // namespace autoscene::ui

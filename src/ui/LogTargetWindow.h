#pragma once
// The run's log, one target at a time: the targets in a column (the one shown highlighted)
// and the timestamped log of the chosen one. It keeps every target's log while hidden, so
// opening it mid-run shows the run so far.

#include <QWidget>
#include <deque>
#include <thread>
#include <vector>

#include "ui/RunFeed.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QVBoxLayout;

namespace autoscene::ui {

class LogTargetWindow : public QWidget {
    Q_OBJECT
public:
    explicit LogTargetWindow(QWidget* parent = nullptr);

    void clear();
    void addNotes(const std::vector<RunFeed::Note>& notes);
    // Shows the log of the target at `index` (in the order the targets first reported).
    void showTarget(int index);

    int targetCount() const { return int(targets_.size()); }
    int shownTarget() const { return shown_; }
    QString shownText() const;

private:
    struct Target {
        std::thread::id thread;
        QString name;
        std::deque<QString> lines;
        QPushButton* row = nullptr;
    };

    Target& targetOf(std::thread::id thread);
    static QString lineOf(const RunFeed::Note& note);

    QLabel* shownName_ = nullptr;
    QVBoxLayout* rows_ = nullptr;
    QPlainTextEdit* log_ = nullptr;
    std::vector<Target> targets_;
    int shown_ = -1;
};

}  // namespace autoscene::ui

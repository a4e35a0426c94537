#pragma once
// The welcome window: new task, open a task folder, run one on the task page, or one of the
// tasks opened lately. Each task opens in a window of its own.

#include <QWidget>

#include "ui/AppConfig.h"
#include "ui/Desktop.h"

class QListWidget;

namespace autoscene::ui {

class MainWindow;
class TaskMainPage;

class AutoRunner : public QWidget {
    Q_OBJECT
public:
    AutoRunner(AppConfig config, Desktop desktop, QWidget* parent = nullptr);

    // Opens the task in a main window and closes this one; on failure says why and stays.
    MainWindow* openTask(const QString& folder);
    // Opens the task in a task page of its own and closes this one; on failure says why.
    TaskMainPage* openTaskPage(const QString& folder);
    // Writes an empty task into `folder` (created when missing) and opens it.
    MainWindow* createTask(const QString& folder);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void fillRecent();

    AppConfig config_;
    Desktop desktop_;
    QListWidget* recent_ = nullptr;
};

}  // namespace autoscene::ui

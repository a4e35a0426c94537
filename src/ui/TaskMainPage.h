#pragma once
// The task page: one task run on several windows or devices at once. Each row is a target
// with its own values of the task's configuration variables; the rows are saved and loaded
// as named configurations.

#include <QWidget>
#include <vector>

#include "editor/TaskEditor.h"
#include "ui/AppConfig.h"
#include "ui/Desktop.h"
#include "ui/RunConfiguration.h"
#include "ui/RunControl.h"

class QTableWidget;

namespace autoscene::ui {

class HotKeyRegistrar;
class LogTargetWindow;

class TaskMainPage : public QWidget {
    Q_OBJECT
public:
    TaskMainPage(AppConfig config, Desktop desktop, QWidget* parent = nullptr);

    // False with `error` set when the folder holds no readable task.
    bool openTask(const QString& folder, QString* error);

    RunControl& runControl() { return *run_; }
    LogTargetWindow& logWindow() { return *logWindow_; }
    // The rows as they stand, with the values typed into the table.
    RunConfiguration configuration() const;
    void setConfiguration(const RunConfiguration& configuration);

    // The buttons' actions.
    void saveConfiguration();
    void loadConfiguration();
    void syncToAll();
    void addTargets();
    void start();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // The task's variables shown per target: those marked for configuration.
    std::vector<int> variableColumns() const;
    void showColumns();
    void addRow(const ConfiguredTarget& target);
    void showRunState(RunControl::State state);

    AppConfig config_;
    Desktop desktop_;
    TaskEditor editor_;
    QString folder_;
    QTableWidget* table_ = nullptr;
    RunControl* run_ = nullptr;
    LogTargetWindow* logWindow_ = nullptr;
    HotKeyRegistrar* hotKeys_ = nullptr;
    bool wasIdle_ = true;
};

}  // namespace autoscene::ui

#pragma once
// A copy of a task (the demo task unless named) in a folder of its own, for tests that change
// or save it.

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <functional>
#include <initializer_list>

#include "TestFiles.h"

namespace autoscene::testing {

class TestTask {
public:
    explicit TestTask(const QString& sourceFolder = QStringLiteral(AUTOSCENE_DEMO_TASK)) {
        const QDir source(sourceFolder);
        QFile::copy(source.filePath("script.json"), folder().filePath("script.json"));
        folder().mkdir("image");
        for (const QString& image : QDir(source.filePath("image")).entryList(QDir::Files)) {
            QFile::copy(source.filePath("image/" + image), folder().filePath("image/" + image));
        }
    }
    QDir folder() const { return QDir(dir_.path()); }
    // Changes script.json's top-level object.
    void edit(const std::function<void(QJsonObject&)>& change) const {
        const QString script = folder().filePath("script.json");
        QJsonObject root = QJsonDocument::fromJson(test::readFile(script)).object();
        change(root);
        test::writeFile(script, QJsonDocument(root).toJson());
    }
    // Without its stop action the task waits on its last screen until stopped.
    void dropLastScenesEvents() const {
        edit([](QJsonObject& root) {
            QJsonArray scenes = root["scene_list"].toArray();
            QJsonObject last = scenes.last().toObject();
            last["event_list"] = QJsonArray();
            scenes.replace(scenes.size() - 1, last);
            root["scene_list"] = scenes;
        });
    }
    // Marks the variables at these places of var_list as set per target.
    void markConfigVariables(std::initializer_list<int> indexes) const {
        edit([&](QJsonObject& root) {
            QJsonArray variables = root["var_list"].toArray();
            for (const int index : indexes) {
                QJsonObject variable = variables[index].toObject();
                variable["is_config"] = true;
                variables.replace(index, variable);
            }
            root["var_list"] = variables;
        });
    }
    QString path() const { return dir_.path(); }
    QString configPath() const { return config_.filePath("config.ini"); }

private:
    QTemporaryDir dir_;
    QTemporaryDir config_;
};

}  // namespace autoscene::testing

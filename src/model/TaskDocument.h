#pragma once
// The whole of one task in memory: settings, definitions, resources, plug-in
// references and scenes, read from and written to script.json.

#include <QByteArray>
#include <QHash>
#include <QRect>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "model/Definitions.h"
#include "model/EditorScene.h"
#include "model/Resources.h"
#include "model/TaskSettings.h"

namespace autoscene::model {

struct OpenResult {
    bool ok = true;
    QString error;                   // why the file could not be read (ok is false)
    std::vector<ReadIssue> skipped;  // elements left out, with where they were

    explicit operator bool() const { return ok; }
};

class TaskDocument : public DescribeContext {
public:
    static QString userDataFolder() { return QStringLiteral("user_data"); }
    static QString defaultSceneName() { return QStringLiteral("默认界面"); }
    static QString commonEventName() { return QStringLiteral("通用事件"); }
    static QString commonEventLowName() { return QStringLiteral("通用事件(低)"); }
    static QString duplicateDefinitionMessage() { return QStringLiteral("变量名重复"); }

    TaskDocument();

    // user_data/<id>/script.json under the working folder. A missing or empty file
    // leaves the defaults and is no error.
    OpenResult openById(quint32 taskId);
    // Any folder that holds script.json (and image/, ori/).
    OpenResult openFolder(const QString& folder);
    // JSON text; the document's folder becomes "script/".
    OpenResult openText(const QByteArray& json);

    QByteArray serialise() const;
    // Replaces script.json atomically: a failed save leaves the previous file intact.
    // A document built from text has no folder and is not saved.
    bool save(QString* error = nullptr) const;
    // Writes script.json into `folder`, creating it when missing.
    bool saveTo(const QString& folder, QString* error = nullptr) const;

    // Scenes.
    EditorScene* sceneByName(const QString& name);
    // Fixed names and names in use are taken; comparison is case-sensitive.
    bool isSceneNameFree(const QString& name) const;

    // Definitions.
    const EditorVariable* definition(int id) const override;
    EditorVariable* definition(int id);
    EditorVariable* definitionByName(const QString& name);
    bool isDefinitionNameFree(const QString& name, int exceptId = 0) const;

    // Resources.
    const ImageRecord* image(int id) const;
    const ColorRecord* color(int id) const;
    std::optional<QString> imageName(int id) const override;
    std::optional<QString> colorName(int id) const override;
    std::optional<QString> labelName(int id) const override;
    // Class names of the task's detection model, line by line.
    void setLabelNames(const QStringList& names) { labelNames_ = names; }

    // Every item (and crop, for originals) of every scene, fixed scenes included,
    // that refers to `id`.
    std::vector<const IResourceUseage*> usersOf(Ref kind, int id) const;
    // Moves every reference from one id to another.
    void replaceReferences(Ref kind, int fromId, int toId);
    // True when some condition or action uses a label.
    bool usesLabels() const;
    // True when an item reads text off the screen (so the recognition service is needed).
    bool usesScreenText() const;

    // Calls fn(scene) for the scene list and then the three fixed scenes.
    template <class Self, class Fn>
    static void forEachScene(Self& self, Fn&& fn) {
        for (auto& scene : self.scenes) {
            fn(scene);
        }
        fn(self.commonEvent);
        fn(self.commonEventLow);
        fn(self.defaultScene);
    }

    // Calls fn(item) for every condition of every event, groups and their members
    // alike, scene identification events included.
    template <class Fn>
    void forEachCondition(Fn&& fn) const {
        forEachScene(*this, [&](const EditorScene& scene) {
            for (const EditorEvent* event : scene.allEvents()) {
                visitGroup(event->conditions, fn);
            }
        });
    }

    template <class Fn>
    void forEachAction(Fn&& fn) const {
        forEachScene(*this, [&](const EditorScene& scene) {
            for (const EditorEvent* event : scene.allEvents()) {
                for (const auto& action : event->actions) {
                    fn(static_cast<const IEditorItem&>(*action));
                }
            }
        });
    }

    quint32 taskId = 0;
    QString name;
    QString scriptPath;  // user_data/<id>/script.json
    QString folderPath;  // user_data/<id>/, or script/ for a document built from text
    bool builtFromText = false;

    std::vector<std::unique_ptr<EditorVariable>> definitions;
    std::vector<ImageRecord> images;
    std::vector<ColorRecord> colors;
    std::vector<OriginalImageRecord> originals;
    std::vector<ConfigLayoutRow> configLayout;
    int taskPageSize = 0;
    int width = 0;
    int height = 0;
    QString modelId;
    QStringList pluginFiles;
    QString funcPluginFile;
    RawJson enabledPluginFunc{"[]"};
    TaskSettings settings;
    QHash<QString, QRect> imageRects;  // rectangle of each added image, by file name

    std::vector<EditorScene> scenes;
    EditorScene commonEvent;
    EditorScene commonEventLow;
    EditorScene defaultScene;

private:
    template <class Fn>
    static void visitGroup(const EditorGroupCondition& group, Fn& fn) {
        for (const auto& item : group.items()) {
            fn(static_cast<const IEditorItem&>(*item));
            if (item->type() == EditorGroupCondition::kType) {
                visitGroup(static_cast<const EditorGroupCondition&>(*item), fn);
            }
        }
    }

    OpenResult openFile(const QString& path);
    OpenResult readText(const char* text, size_t length);
    void readTopLevel(const JsonValue& root, ReadContext& context);
    void readSettingsAndScenes(const JsonValue& root, ReadContext& context);
    void writeResources(JsonWriter& out) const;

    QStringList labelNames_;
};

}  // namespace autoscene::model

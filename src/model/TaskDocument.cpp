#include "model/TaskDocument.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "model/AtomicFile.h"

namespace autoscene::model {

namespace {

// Every key read or written at the top of script.json; full_screen is only read.
const std::vector<std::string_view> kTopLevelKeys = {"id",
                                                     "name",
                                                     "loop_mode",
                                                     "loop_interval",
                                                     "window_info",
                                                     "model_id",
                                                     "width",
                                                     "height",
                                                     "task_page_size",
                                                     "task_mode",
                                                     "full_screen",
                                                     "is_full_script",
                                                     "expand_size",
                                                     "back_act",
                                                     "back_capture",
                                                     "concurrency",
                                                     "var_list",
                                                     "image_list",
                                                     "color_list",
                                                     "config_layout",
                                                     "ori_infos",
                                                     "plugin_files",
                                                     "func_plugin_file",
                                                     "enabled_plugin_func",
                                                     "scene_list",
                                                     "common_event",
                                                     "common_event_low",
                                                     "default_scene"};

template <class T>
void readRecordList(const JsonValue& root, const char* key, std::vector<T>& out,
                    ReadContext& context) {
    const JsonValue* list = findMember(root, key);
    if (!list || !list->IsArray()) {
        return;
    }
    ReadContext::Scope scope(context, QLatin1String(key));
    for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
        ReadContext::Scope element(context, QString::number(i));
        T record;
        if (!readJson((*list)[i], record)) {
            context.skip(QStringLiteral("record is not a JSON object"));
            continue;
        }
        reportUnknownFieldKeys<T>((*list)[i], context);
        out.push_back(std::move(record));
    }
}

template <class T>
void writeRecordList(JsonWriter& out, const char* key, const std::vector<T>& list) {
    out.key(key);
    out.startArray();
    for (const T& record : list) {
        writeJsonValue(out, record);
    }
    out.endArray();
}

void readFixedScene(const JsonValue& root, const char* key, const QString& fixedName,
                    EditorScene& scene, ReadContext& context) {
    scene = EditorScene(fixedName);
    if (const JsonValue* v = findMember(root, key); v && v->IsObject()) {
        ReadContext::Scope scope(context, QLatin1String(key));
        scene.read(*v, context);
    }
}

}  // namespace

TaskDocument::TaskDocument()
    : commonEvent(commonEventName()),
      commonEventLow(commonEventLowName()),
      defaultScene(defaultSceneName()) {}

OpenResult TaskDocument::openById(quint32 id) {
    *this = TaskDocument();
    taskId = id;
    folderPath = QStringLiteral("%1/%2/").arg(userDataFolder()).arg(id);
    scriptPath = QStringLiteral("%1/%2/script.json").arg(userDataFolder()).arg(id);
    return openFile(scriptPath);
}

OpenResult TaskDocument::openFolder(const QString& folder) {
    *this = TaskDocument();
    folderPath = QDir::cleanPath(folder) + QLatin1Char('/');
    scriptPath = folderPath + QStringLiteral("script.json");
    bool isNumber = false;
    const quint32 id = QFileInfo(QDir::cleanPath(folder)).fileName().toUInt(&isNumber);
    taskId = isNumber ? id : 0;
    return openFile(scriptPath);
}

OpenResult TaskDocument::openText(const QByteArray& json) {
    *this = TaskDocument();
    builtFromText = true;
    folderPath = QStringLiteral("script/");
    return readText(json.constData(), size_t(json.size()));
}

OpenResult TaskDocument::openFile(const QString& path) {
    QFile file(path);
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        return {false, QStringLiteral("%1: %2").arg(path, file.errorString()), {}};
    }
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return {false, QStringLiteral("%1: %2").arg(path, file.errorString()), {}};
    }
    if (text.isEmpty()) {
        return {};
    }
    OpenResult result = readText(text.constData(), size_t(text.size()));
    if (!result.ok) {
        result.error = path + QStringLiteral(": ") + result.error;
    }
    return result;
}

OpenResult TaskDocument::readText(const char* text, size_t length) {
    rapidjson::Document json;
    OpenResult result;
    if (!parseJson(text, length, json, result.error)) {
        result.ok = false;
        return result;
    }
    ReadContext context;
    readTopLevel(json, context);
    readSettingsAndScenes(json, context);
    reportUnknownKeys(json, kTopLevelKeys, context);
    result.skipped = context.issues();
    return result;
}

void TaskDocument::readTopLevel(const JsonValue& root, ReadContext& context) {
    if (const JsonValue* list = findMember(root, "var_list"); list && list->IsArray()) {
        ReadContext::Scope scope(context, QStringLiteral("var_list"));
        for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
            ReadContext::Scope element(context, QString::number(i));
            if (auto definition = createDefinition((*list)[i], context)) {
                definitions.push_back(std::move(definition));
            }
        }
    }
    readRecordList(root, "image_list", images, context);
    readRecordList(root, "color_list", colors, context);
    readRecordList(root, "ori_infos", originals, context);
    readMember(root, "name", name);
    readRecordList(root, "config_layout", configLayout, context);
    readMember(root, "task_page_size", taskPageSize);
    readMember(root, "width", width);
    readMember(root, "height", height);
    readMember(root, "model_id", modelId);
    readMember(root, "plugin_files", pluginFiles);
    readMember(root, "func_plugin_file", funcPluginFile);
    readMember(root, "enabled_plugin_func", enabledPluginFunc);
}

void TaskDocument::readSettingsAndScenes(const JsonValue& root, ReadContext& context) {
    readMember(root, "loop_mode", settings.loopMode);
    readMember(root, "loop_interval", settings.loopInterval);
    const JsonValue* window = findMember(root, "window_info");
    const bool hasWindowInfo = window && window->IsObject();
    if (hasWindowInfo) {
        readFields(*window, settings.windowInfo);
        ReadContext::Scope scope(context, QStringLiteral("window_info"));
        reportUnknownFieldKeys<WindowInfo>(*window, context);
    }
    readMember(root, "expand_size", settings.expandSize);
    readMember(root, "back_act", settings.backAct);
    readMember(root, "back_capture", settings.backCapture);
    readMember(root, "concurrency", settings.concurrency);
    // task_mode wins; the older full_screen only turns a task into full-screen mode;
    // a file with neither but a window record drives a window.
    if (const JsonValue* mode = findMember(root, "task_mode")) {
        readJson(*mode, settings.taskMode);
    } else if (const JsonValue* fullScreen = findMember(root, "full_screen")) {
        if (fullScreen->IsTrue()) {
            settings.taskMode = int(TaskMode::FullScreen);
        }
    } else if (hasWindowInfo) {
        settings.taskMode = int(TaskMode::Window);
    }
    readMember(root, "is_full_script", settings.isFullScript);

    if (const JsonValue* list = findMember(root, "scene_list"); list && list->IsArray()) {
        ReadContext::Scope scope(context, QStringLiteral("scene_list"));
        for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
            ReadContext::Scope element(context, QString::number(i));
            if (!(*list)[i].IsObject()) {
                context.skip(QStringLiteral("scene record is not a JSON object"));
                continue;
            }
            scenes.emplace_back().read((*list)[i], context);
        }
    }
    readFixedScene(root, "common_event", commonEventName(), commonEvent, context);
    readFixedScene(root, "common_event_low", commonEventLowName(), commonEventLow, context);
    readFixedScene(root, "default_scene", defaultSceneName(), defaultScene, context);
}

QByteArray TaskDocument::serialise() const {
    JsonWriter out;
    out.startObject();
    out.member("id", taskId);
    out.member("name", name);
    out.member("loop_mode", settings.loopMode);
    out.member("loop_interval", settings.loopInterval);
    out.key("window_info");
    writeJsonValue(out, settings.windowInfo);
    if (usesLabels() && !modelId.isEmpty()) {
        out.member("model_id", modelId);
    }
    out.member("width", width);
    out.member("height", height);
    out.member("task_page_size", taskPageSize);
    out.member("task_mode", settings.taskMode);
    out.member("expand_size", settings.expandSize);
    out.member("back_act", settings.backAct);
    out.member("back_capture", settings.backCapture);
    out.member("concurrency", settings.concurrency);
    writeResources(out);
    out.member("plugin_files", pluginFiles);
    out.member("func_plugin_file", funcPluginFile);
    out.member("enabled_plugin_func", enabledPluginFunc);
    out.key("scene_list");
    out.startArray();
    for (const EditorScene& scene : scenes) {
        scene.write(out);
    }
    out.endArray();
    out.key("common_event");
    commonEvent.write(out);
    out.key("common_event_low");
    commonEventLow.write(out);
    out.key("default_scene");
    defaultScene.write(out);
    out.endObject();
    const std::string text = out.text();
    return QByteArray(text.data(), qsizetype(text.size()));
}

// var_list, image_list, color_list, config_layout and ori_infos, in that order.
void TaskDocument::writeResources(JsonWriter& out) const {
    out.key("var_list");
    out.startArray();
    for (const auto& definition : definitions) {
        definition->write(out);
    }
    out.endArray();
    std::vector<ImageRecord> counted = images;
    for (ImageRecord& image : counted) {
        image.useCount = int(usersOf(Ref::Image, image.id).size());
    }
    writeRecordList(out, "image_list", counted);
    writeRecordList(out, "color_list", colors);
    writeRecordList(out, "config_layout", configLayout);
    writeRecordList(out, "ori_infos", originals);
}

bool TaskDocument::save(QString* error) const {
    if (builtFromText || scriptPath.isEmpty()) {
        if (error) {
            *error = QStringLiteral("a task built from text has no folder to save into");
        }
        return false;
    }
    return saveTo(QFileInfo(scriptPath).path(), error);
}

bool TaskDocument::saveTo(const QString& folder, QString* error) const {
    if (!QDir().mkpath(folder)) {
        if (error) {
            *error = QStringLiteral("cannot create folder %1").arg(folder);
        }
        return false;
    }
    return writeFileAtomically(QDir(folder).filePath(QStringLiteral("script.json")), serialise(),
                               error);
}

EditorScene* TaskDocument::sceneByName(const QString& sceneName) {
    if (sceneName == defaultSceneName()) {
        return &defaultScene;
    }
    if (sceneName == commonEventName()) {
        return &commonEvent;
    }
    if (sceneName == commonEventLowName()) {
        return &commonEventLow;
    }
    for (EditorScene& scene : scenes) {
        if (scene.name == sceneName) {
            return &scene;
        }
    }
    return nullptr;
}

bool TaskDocument::isSceneNameFree(const QString& sceneName) const {
    return !const_cast<TaskDocument*>(this)->sceneByName(sceneName);
}

const EditorVariable* TaskDocument::definition(int id) const {
    for (const auto& definition : definitions) {
        if (definition->id == id) {
            return definition.get();
        }
    }
    return nullptr;
}

EditorVariable* TaskDocument::definition(int id) {
    return const_cast<EditorVariable*>(std::as_const(*this).definition(id));
}

EditorVariable* TaskDocument::definitionByName(const QString& definitionName) {
    for (auto& definition : definitions) {
        if (definition->name == definitionName) {
            return definition.get();
        }
    }
    return nullptr;
}

bool TaskDocument::isDefinitionNameFree(const QString& definitionName, int exceptId) const {
    for (const auto& definition : definitions) {
        if (definition->name == definitionName && definition->id != exceptId) {
            return false;
        }
    }
    return true;
}

const ImageRecord* TaskDocument::image(int id) const {
    for (const ImageRecord& record : images) {
        if (record.id == id) {
            return &record;
        }
    }
    return nullptr;
}

const ColorRecord* TaskDocument::color(int id) const {
    for (const ColorRecord& record : colors) {
        if (record.id == id) {
            return &record;
        }
    }
    return nullptr;
}

std::optional<QString> TaskDocument::imageName(int id) const {
    const ImageRecord* record = image(id);
    return record ? std::optional(record->name) : std::nullopt;
}

std::optional<QString> TaskDocument::colorName(int id) const {
    const ColorRecord* record = color(id);
    return record ? std::optional(record->name) : std::nullopt;
}

std::optional<QString> TaskDocument::labelName(int id) const {
    if (modelId.isEmpty() || id < 0 || id >= labelNames_.size()) {
        return std::nullopt;
    }
    return labelNames_[id];
}

std::vector<const IResourceUseage*> TaskDocument::usersOf(Ref kind, int id) const {
    std::vector<const IResourceUseage*> users;
    for (const auto& definition : definitions) {
        if (definition->uses(kind, id)) {
            users.push_back(definition.get());
        }
    }
    auto collect = [&](const IEditorItem& item) {
        if (item.uses(kind, id)) {
            users.push_back(&item);
        }
    };
    forEachCondition([&](const IEditorItem& item) {
        // A group answers for its members, which are visited themselves.
        if (item.type() != EditorGroupCondition::kType) {
            collect(item);
        }
    });
    forEachAction(collect);
    return users;
}

void TaskDocument::replaceReferences(Ref kind, int fromId, int toId) {
    for (auto& definition : definitions) {
        definition->replace(kind, fromId, toId);
    }
    forEachScene(*this, [&](EditorScene& scene) {
        for (EditorEvent* event : scene.allEvents()) {
            event->conditions.replace(kind, fromId, toId);
            for (auto& action : event->actions) {
                action->replace(kind, fromId, toId);
            }
        }
    });
}

bool TaskDocument::usesLabels() const {
    bool found = false;
    forEachCondition([&](const IEditorItem& item) {
        found = found || item.type() == EditorLabelCondition::kType;
    });
    forEachAction([&](const IEditorItem& item) {
        found = found || item.type() == EditorLabelAction::kType ||
                item.type() == EditorSaveLabelCoordAction::kType;
    });
    return found;
}

bool TaskDocument::usesScreenText() const {
    bool found = false;
    forEachCondition([&](const IEditorItem& item) {
        found = found || item.type() == EditorScreenTextCondition::kType;
    });
    forEachAction([&](const IEditorItem& item) {
        found = found || item.type() == EditorScreenValueAction::kType ||
                item.type() == EditorClickTextAction::kType;
    });
    return found;
}

}  // namespace autoscene::model

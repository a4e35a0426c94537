#pragma once
// Definitions: the named variables, crops, timers, alarms and randoms that items
// refer to by id. EditorVariable is both the base and the plain variable.

#include <QRect>
#include <QString>
#include <QStringList>
#include <memory>

#include "model/EditorItem.h"
#include "model/Resources.h"

namespace autoscene::model {

// Definition kinds (`type` in var_list).
enum class DefinitionType : int {
    Invalid = 0,
    Variable = 1,
    Crop = 2,
    Timer = 3,
    Alarm = 4,
    Random = 5,
    ImageVariable = 6,  // written, never rebuilt from var_list
};

// The program-wide definition id counter: ids never repeat within one run of the
// program, even across tasks.
namespace definition_ids {
int next();  // increments the counter and returns it
int current();
void raiseTo(int id);  // the counter becomes at least id
void reset();          // back to a fresh program's counter
}  // namespace definition_ids

class EditorVariable : public IResourceUseage {
public:
    static constexpr int kType = int(DefinitionType::Variable);

    ~EditorVariable() override = default;

    // A new definition with the next id of the program-wide counter.
    template <class T>
    static std::unique_ptr<T> create() {
        auto definition = std::make_unique<T>();
        definition->id = definition_ids::next();
        return definition;
    }

    virtual int type() const { return kType; }
    virtual void read(const JsonValue& record);
    virtual void write(JsonWriter& out) const;
    // The text shown in definition lists.
    virtual QString describe() const { return name; }
    virtual std::unique_ptr<EditorVariable> clone() const;

    bool uses(Ref, int) const override { return false; }
    void replace(Ref, int, int) override {}

    int id = 0;
    QString name;
    QString value;
    bool isLocal = false;
    bool isConfig = false;
    bool isGlobal = false;
    int lineCount = -1;
    int style = 0;
    QStringList conditionValues;
    QStringList actionValues;

    static constexpr auto fields() {
        using R = EditorVariable;
        return std::tuple{
            field("id", &R::id),
            field("name", &R::name),
            field("value", &R::value),
            field("is_local", &R::isLocal),
            field("is_config", &R::isConfig),
            field("is_global", &R::isGlobal),
            field("line_count", &R::lineCount),
            field("style", &R::style),
            field("condition_values", &R::conditionValues),
            field("action_values", &R::actionValues),
        };
    }
};

// Read, write and clone through the derived class's own field table.
template <class Derived, DefinitionType Code>
class DefinitionOf : public EditorVariable {
public:
    static constexpr int kType = int(Code);

    int type() const override { return kType; }
    void read(const JsonValue& record) override {
        readFields(record, static_cast<Derived&>(*this));
    }
    void write(JsonWriter& out) const override {
        out.startObject();
        out.member("type", kType);
        writeFields(out, static_cast<const Derived&>(*this));
        out.endObject();
    }
    std::unique_ptr<EditorVariable> clone() const override {
        return std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }
};

// A rectangle cut from an original image, used as a search region or click offset.
class CropInfo : public DefinitionOf<CropInfo, DefinitionType::Crop> {
public:
    int ori = 0;
    QRect rect;
    RawJson target{"0"};
    ScreenInfo screenInfo;

    bool uses(Ref kind, int id) const override { return kind == Ref::Original && ori == id; }
    void forEachReference(const std::function<void(Ref, int)>& visit) const override {
        visit(Ref::Original, ori);
    }
    void replace(Ref kind, int fromId, int toId) override;

    static constexpr auto fields() {
        using R = CropInfo;
        return std::tuple_cat(EditorVariable::fields(), std::tuple{
                                                            field("ori", &R::ori, Ref::Original),
                                                            field("rect", &R::rect),
                                                            field("target", &R::target),
                                                            field("screen_info", &R::screenInfo),
                                                        });
    }
};

class EditorTimer : public DefinitionOf<EditorTimer, DefinitionType::Timer> {
public:
    int delay = 0;   // seconds to the first firing
    int period = 0;  // seconds between firings; 0 fires once
    bool defaultClose = false;
    bool configDelay = false;
    bool configPeriod = false;

    static constexpr auto fields() {
        using R = EditorTimer;
        return std::tuple{
            field("id", &R::id),
            field("name", &R::name),
            field("delay", &R::delay),
            field("period", &R::period),
            field("is_local", &R::isLocal),
            field("is_config", &R::isConfig),
            field("default_close", &R::defaultClose),
            field("config_delay", &R::configDelay),
            field("config_period", &R::configPeriod),
        };
    }
};

// How often an alarm fires (`repeat`).
enum class AlarmRepeat : int { Once = 0, Daily = 1 };

class EditorAlarm : public DefinitionOf<EditorAlarm, DefinitionType::Alarm> {
public:
    QString timeOfDay = QStringLiteral("00:00:00");  // HH:mm:ss
    int timeout = 0;                                 // minutes it may be late and still fire
    int repeat = int(AlarmRepeat::Once);

    static constexpr auto fields() {
        using R = EditorAlarm;
        return std::tuple{
            field("id", &R::id),
            field("name", &R::name),
            field("time_of_day", &R::timeOfDay),
            field("timeout", &R::timeout),
            field("repeat", &R::repeat),
            field("is_local", &R::isLocal),
            field("is_config", &R::isConfig),
        };
    }
};

class EditorRandom : public DefinitionOf<EditorRandom, DefinitionType::Random> {
public:
    int min = 0;
    int max = 0;

    QString describe() const override { return QStringLiteral("%1~%2").arg(min).arg(max); }

    static constexpr auto fields() {
        using R = EditorRandom;
        return std::tuple{
            field("id", &R::id),
            field("name", &R::name),
            field("min", &R::min),
            field("max", &R::max),
        };
    }
};

// Rectangles found at run time ("|"-separated rectangle texts); only its name is kept.
class EditorImageVariable
    : public DefinitionOf<EditorImageVariable, DefinitionType::ImageVariable> {
public:
    static constexpr auto fields() {
        using R = EditorImageVariable;
        return std::tuple{field("id", &R::id), field("name", &R::name)};
    }
};

// Builds the definition of a record's `type` and keeps the id counter as the task
// file requires; nullptr (and a note in `context`) for an unknown type.
std::unique_ptr<EditorVariable> createDefinition(const JsonValue& record, ReadContext& context);

}  // namespace autoscene::model

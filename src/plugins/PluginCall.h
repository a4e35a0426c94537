#pragma once
// What a plug-in action passes and receives, read from its task record, and where its
// description and library are.
//
// Record encoding: an input's action_varvalue is a JSON string (a literal) or an integer
// (the id of the variable whose value is passed); a choice lists its allowed values in
// action_option and holds the chosen one in action_varvalue; an output's action_varvalue is
// the id of the variable that receives it (absent or 0: none).

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <utility>
#include <vector>

#include "model/EditorActions.h"

namespace autoscene::plugins {

struct PluginInput {
    QString name;
    QString literal;
    int variableId = 0;  // when set, the variable's value is passed instead of the literal
};

struct PluginChoice {
    QString name;
    QString chosen;
};

struct PluginOutput {
    QString result;
    int variableId = 0;
};

struct PluginCall {
    QString actionName;
    QString configFile;
    std::vector<PluginInput> inputs;
    std::vector<PluginChoice> choices;
    std::vector<PluginOutput> outputs;
};

// Entries that are not objects, or lack their name, are left out.
PluginCall readPluginCall(const model::EditorPluginAction& record);

// Inputs in ascending name order, then choices in ascending name order, as UTF-8.
// `valueOf` gives a variable's current value by id.
template <class ValueOf>
std::vector<std::pair<QByteArray, QByteArray>> parameterNodes(const PluginCall& call,
                                                              ValueOf&& valueOf);

// A file a task names (a description, a library): absolute, or relative to the task folder;
// backslashes read as slashes.
QString taskFilePath(const QString& taskFolder, const QString& configFile);
// The library of a description. `pluginFile` (the description's base name when empty) is
// looked for in mv-plugin/ beside the description first, then beside the description; an
// absolute one is taken as it is. A name without a suffix gets the platform's (.so, .dll).
QString libraryPath(const QString& descriptionFile, const QString& pluginFile);

template <class ValueOf>
std::vector<std::pair<QByteArray, QByteArray>> parameterNodes(const PluginCall& call,
                                                              ValueOf&& valueOf) {
    std::vector<std::pair<QByteArray, QByteArray>> inputs;
    for (const PluginInput& input : call.inputs) {
        const QString value = input.variableId ? valueOf(input.variableId) : input.literal;
        inputs.emplace_back(input.name.toUtf8(), value.toUtf8());
    }
    std::vector<std::pair<QByteArray, QByteArray>> choices;
    for (const PluginChoice& choice : call.choices) {
        choices.emplace_back(choice.name.toUtf8(), choice.chosen.toUtf8());
    }
    const auto byName = [](const auto& a, const auto& b) { return a.first < b.first; };
    std::stable_sort(inputs.begin(), inputs.end(), byName);
    std::stable_sort(choices.begin(), choices.end(), byName);
    inputs.insert(inputs.end(), choices.begin(), choices.end());
    return inputs;
}

}  // namespace autoscene::plugins

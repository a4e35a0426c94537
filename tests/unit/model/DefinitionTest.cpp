// Definitions: the program-wide id counter, names, and finding what uses them.

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "model/RectText.h"
#include "model/TaskDocument.h"

using namespace autoscene::model;
using namespace autoscene::test;

namespace {

// Timers, alarms and randoms take an id from the counter before their own replaces it.
TEST(DefinitionIds, ReadingRaisesTheCounterToTheHighestIdAcrossTasks) {
    // {type, the next id given}
    const std::pair<DefinitionType, int> cases[] = {{DefinitionType::Variable, 18},
                                                    {DefinitionType::Crop, 18},
                                                    {DefinitionType::Timer, 19},
                                                    {DefinitionType::Alarm, 19},
                                                    {DefinitionType::Random, 19}};
    for (const auto& [type, nextId] : cases) {
        SCOPED_TRACE(int(type));
        definition_ids::reset();
        TaskDocument first;
        openOrFail(first, QStringLiteral(R"({"var_list": [{"type": %1, "id": 3},
            {"type": %1, "id": 17}, {"type": %1, "id": 5}]})")
                              .arg(int(type))
                              .toUtf8());
        EXPECT_EQ(first.definitions.at(2)->id, 5);
        TaskDocument second;  // a lower id read later leaves the counter alone
        openOrFail(second, R"({"var_list": [{"type": 1, "id": 2}]})");
        EXPECT_EQ(EditorVariable::create<EditorVariable>()->id, nextId);
    }
}

TEST(Definitions, NamesMustBeUniqueWithinTheTask) {
    TaskDocument task;
    openOrFail(task, R"({"var_list": [{"type": 1, "id": 1, "name": "hp"},
                                      {"type": 3, "id": 2, "name": "tick"}]})");
    EXPECT_FALSE(task.isDefinitionNameFree(QStringLiteral("hp")) ||
                 task.isDefinitionNameFree(QStringLiteral("tick")));
    EXPECT_TRUE(task.isDefinitionNameFree(QStringLiteral("hp"), 1));  // renaming itself
    EXPECT_TRUE(task.isDefinitionNameFree(QStringLiteral("HP")));
    EXPECT_EQ(task.definitionByName(QStringLiteral("tick"))->type(), int(DefinitionType::Timer));
}

TEST(Definitions, UsersAreFoundInEverySceneAndNestedGroup) {
    TaskDocument task;
    openOrFail(task, readFile(fixturePath("tasks/every-record/script.json")));
    // Variable 5 is the alarm, used only two groups deep.
    const auto alarmUsers = task.usersOf(Ref::Definition, 5);
    ASSERT_EQ(alarmUsers.size(), 1u);
    EXPECT_TRUE(dynamic_cast<const EditorAlarmCondition*>(alarmUsers[0]));
    // Variable 8 is compared in the common events too; the original is used by the two crops.
    EXPECT_EQ(std::tuple(task.usersOf(Ref::Definition, 8).size(),
                         task.usersOf(Ref::Original, 1).size(), task.usersOf(Ref::Image, 2).size()),
              std::tuple(4u, 2u, 0u));
    EXPECT_TRUE(task.usesLabels());
}

TEST(Definitions, ReplacingAnIdMovesEveryReference) {
    TaskDocument task;
    openOrFail(task, readFile(fixturePath("tasks/every-record/script.json")));
    const size_t users = task.usersOf(Ref::Definition, 2).size();
    task.replaceReferences(Ref::Definition, 2, 40);
    EXPECT_TRUE(task.usersOf(Ref::Definition, 2).empty());
    EXPECT_EQ(task.usersOf(Ref::Definition, 40).size(), users);
    // The text region's nested search_id moved with the rest.
    const auto& text = static_cast<const EditorScreenTextCondition&>(
        *task.scenes[0].events[0].conditions.items()[3]);
    EXPECT_EQ(text.textInfo.searchId, 40);
}

TEST(RectText, ReadsTheDocumentedForms) {
    EXPECT_EQ(parseRectText(QStringLiteral("10，20，30，40")), QRect(10, 20, 30, 40));
    EXPECT_EQ(parseRectText(QStringLiteral("10,20")), QRect(10, 20, 1, 1));
    EXPECT_EQ(parseRectText(QStringLiteral("10,20,30")), QRect(10, 20, 0, 0));
    EXPECT_TRUE(parseRectText(QStringLiteral("10,20,30,40,50")).isEmpty());
    EXPECT_EQ(parseRectText(QStringLiteral("7")), QRect(0, 0, 0, 0));
    EXPECT_EQ(parseRectText(QStringLiteral(",,1,,2,,")), QRect(1, 2, 1, 1));
    EXPECT_EQ(parseRectText(QStringLiteral("a,2,b,4")), QRect(0, 2, 0, 4));
    EXPECT_EQ(formatRectText(QRect(1, 2, 3, 4)), QStringLiteral("1,2,3,4"));
}

}  // namespace

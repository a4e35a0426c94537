// Every kind has one builder: registering one twice is a wiring fault that must not
// pass silently.

#include <gtest/gtest.h>

#include <stdexcept>

#include "actions/RuntimeItems.h"
#include "engine/RuntimeFactory.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"

using autoscene::engine::RuntimeFactory;

TEST(Registration, EveryKindOnceAndASecondRegistrationThrows) {
    RuntimeFactory factory;
    ASSERT_NO_THROW(autoscene::actions::registerAllRuntimeItems(factory, nullptr));
    EXPECT_THROW(autoscene::actions::registerAllRuntimeItems(factory, nullptr), std::logic_error);

    // The engine's own kinds are taken as well.
    RuntimeFactory fresh;
    EXPECT_THROW(fresh.addCondition(autoscene::model::EditorVariableCondition::kType, {}),
                 std::logic_error);
    EXPECT_THROW(fresh.addAction(autoscene::model::EditorStopAction::kType, {}), std::logic_error);
    EXPECT_NO_THROW(fresh.addAction(autoscene::model::EditorTapAction::kType, {}));
    EXPECT_THROW(fresh.addAction(autoscene::model::EditorTapAction::kType, {}), std::logic_error);
}

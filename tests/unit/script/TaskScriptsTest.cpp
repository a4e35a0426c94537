// What `autoscene-task check` says a task's scripts do.

#include <gtest/gtest.h>

#include "TestFiles.h"
#include "model/TaskDocument.h"
#include "script/TaskScripts.h"

using autoscene::script::scriptReach;

namespace {

TEST(TaskScripts, ReachNamesEveryKindOfCall) {
    const QStringList computed{"reaches objects by computed names (cannot tell what it does)"};
    const std::pair<const char*, QStringList> cases[] = {
        {"count == '3'", {}},
        {"auto.getColor('red') + file.read('a') + http_get('x')", {}},
        {"auto . shell ( 'ls' )", {"runs shell commands"}},
        {"file.remove(p); file.rename(a, b)", {"writes or removes files"}},
        {"image.save(p, 'png', 90); file.touch(p)", {"writes or removes files"}},
        {"http.download(u, f); auto.browse(u)", {"reaches the network", "opens URLs"}},
        {"auto.setClip(auto.getClip() + '!')", {"uses the clipboard"}},
        {"auto['sh' + 'ell']('ls')", computed},
        {"var f = file; f.remove('x')", computed},
        {"eval(code)", computed},
    };
    for (const auto& [code, reach] : cases) {
        EXPECT_EQ(scriptReach(QString::fromUtf8(code)), reach) << code;
    }
}

TEST(TaskScripts, ListsConditionsInNestedGroupsAndActionsOfEveryScene) {
    autoscene::model::TaskDocument task;
    ASSERT_TRUE(
        task.openText(autoscene::test::readFile(AUTOSCENE_FIXTURES "/script/every-place.json")).ok);
    QStringList listed;
    for (const auto& script : autoscene::script::taskScripts(task)) {
        listed << QStringLiteral("%1/%2/%3/%4")
                      .arg(script.scene, script.event, script.condition ? "if" : "do", script.code);
    }
    EXPECT_EQ(listed, (QStringList{"s/id/if/a", "s/e/if/b", "s/e/do/c", "通用事件/c/do/d"}));
}

}  // namespace

// The engine holder: globals, variables, completion values, errors and bad input.

#include <thread>

#include "ScriptFixture.h"
#include "engine/MVVariable.h"
#include "script/ScriptEngineHolder.h"
#include "script/ShellCommand.h"

using autoscene::script::ScriptEngineHolder;

namespace {

using Bridge = autoscene::test::ScriptFixture;

TEST_F(Bridge, VariablesAreStringsAndNamesStartingWithADigitAreSkipped) {
    EXPECT_EQ(text("typeof abc1 + ':' + abc1"), "string:7");
    EXPECT_EQ(text(R"(typeof this["1abc"])"), "undefined");
    EXPECT_EQ(text(R"(typeof this[""])"), "undefined");
    EXPECT_EQ(text("n + 1"), "51");

    // A script changes a variable only through auto.setValue; the global stays as it was.
    EXPECT_EQ(text("auto.setValue('n', 'six'); auto.setValue('nobody', 'x'); n"), "5");
    EXPECT_EQ(definitions->find(4)->value(), "six");
    EXPECT_EQ(text("n"), "six");  // the next evaluation sees it
}

TEST_F(Bridge, CompletionValueAsText) {
    for (const auto& [code, value] : {std::pair{"1 + 1", "2"},
                                      {"var x = 1;", ""},
                                      {"undefined", ""},
                                      {"null", "null"},
                                      {"({a: 1})", "[object Object]"},
                                      {"[1, 'b']", "1,b"}}) {
        EXPECT_EQ(text(code), value) << code;
    }
    EXPECT_EQ(text("'x'.repeat(10 * 1024 * 1024)").size(), 10 * 1024 * 1024);
    // Nothing survives from one evaluation to the next.
    EXPECT_EQ(text("var kept = 1; kept"), "1");
    EXPECT_EQ(text("typeof kept"), "undefined");
}

TEST_F(Bridge, ErrorsGiveTheErrorText) {
    for (const auto& [code, error] : {std::pair{"var = ;", "SyntaxError"},
                                      {"throw new TypeError('bad thing')", "TypeError: bad thing"},
                                      {"throw 'boom'", "boom"}}) {
        const auto result = run(code);
        EXPECT_TRUE(result.text.startsWith(error)) << result.text.toStdString();
        EXPECT_EQ(result.exception, result.text);
    }
    EXPECT_TRUE(run("'fine'").exception.isEmpty());
}

TEST_F(Bridge, WrongArgumentsNeverCrash) {
    // Each call either converts its arguments or throws a script error; both are results.
    for (const char* code :
         {"file.write(['/no/such/folder/x'], {})", "file.readLine('x', 'abc')",
          "file.listFile(null)", "auto.getColor()", "auto.getColor({toString() { throw 1; }})",
          "http.get(undefined)", "http.post('', 5)", "image.find(1, 2)", "image.toBase64()",
          "sleep('x')", "sleep(-1)", "sleep(NaN)", "auto.setCurrentWindow('not a number')",
          "auto.shell()", "file.rename()", "auto.setValue(1)", "image.save({}, [], 'q')"}) {
        SCOPED_TRACE(code);
        const auto result = run(code);
        EXPECT_TRUE(result.exception.isEmpty() || !result.text.isEmpty());
    }
}

TEST_F(Bridge, ShellGivesOutputAndErrorsAndSurvivesQuotes) {
    EXPECT_EQ(text(R"(auto.shell("echo out; echo err 1>&2"))"), "out\nerr\n");
    EXPECT_EQ(text(R"(auto.shell("printf '%s' \"it's\""))"), "it's");
    EXPECT_EQ(text(R"(auto.shell("exit 3"))"), "");
}

TEST_F(Bridge, SleepWaitsAtLeastItsTime) {
    // A lower bound only: a slow machine sleeps longer, never shorter.
    EXPECT_EQ(text("var t = Date.now(); sleep(0.2); String(Date.now() - t >= 200)"), "true");
}

TEST(ShellCommand, UrlsAreQuotedAsOneWordAndRelativeOnesRefused) {
    using autoscene::script::openUrlCommandLine;
    EXPECT_EQ(openUrlCommandLine("https://example.org/a b?q=1"),
              "xdg-open 'https://example.org/a%20b?q=1'");
    EXPECT_EQ(openUrlCommandLine("no/scheme"), "");
    EXPECT_EQ(openUrlCommandLine(""), "");
    EXPECT_EQ(autoscene::script::shellCommandLine("echo 'a'"), R"(/bin/sh -c 'echo '\''a'\''')");
}

TEST_F(Bridge, CurrentWindowOfTheWorker) {
    EXPECT_EQ(text("auto.getCurrentWindow()"), "42");
    text("auto.setCurrentWindow('18446744073709551615'); auto.setCurrentWindow('junk')");
    EXPECT_EQ(worker.window.load(), 18446744073709551615ull);
    text("auto.resetCurrentWindow()");
    EXPECT_EQ(worker.window.load(), 42u);

    worker.kind = autoscene::engine::TargetKind::Desktop;
    text("auto.setCurrentWindow('7')");
    EXPECT_EQ(worker.window.load(), 42u);
}

TEST_F(Bridge, AStopInterruptsALoopAndASleep) {
    for (const char* code : {"while (true) {}", "sleep(3600); 'slept'"}) {
        SCOPED_TRACE(code);
        control.stop = false;
        std::thread stopper([this] {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            control.stop = true;
        });
        const auto result = run(code);
        stopper.join();
        EXPECT_TRUE(result.interrupted);
        EXPECT_FALSE(result.exception.isEmpty());
    }
}

TEST_F(Bridge, EditorPreparationUsesInitialValues) {
    definitions->find(1)->setValue("changed at run time");
    ScriptEngineHolder holder;
    holder.prepareEditor(task);
    EXPECT_EQ(holder.evaluate("abc1 + typeof this['1abc']").text, "7undefined");
    EXPECT_EQ(holder.evaluate("auto.setValue('abc1', 'x'); auto.getCurrentWindow() + abc1").text,
              "7");
    EXPECT_EQ(
        holder.evaluate("['red', 'blue', 'bad', 'green'].map(c => auto.getColor(c)).join()").text,
        "#FF0000,#0000FF,#Invalid,#Invalid");
}

}  // namespace

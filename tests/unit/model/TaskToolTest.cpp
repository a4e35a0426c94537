// The task file tool as a user runs it.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "FullDisk.h"
#include "ProgramRun.h"
#include "TestSupport.h"

using namespace autoscene::test;

namespace {

// Fails for each line that `text` does not hold.
void expectLines(const QString& text, std::initializer_list<const char*> lines) {
    for (const char* line : lines) {
        EXPECT_TRUE(text.contains(QString::fromUtf8(line))) << line << "\n" << text.toStdString();
    }
}

ProgramResult runTool(const QStringList& arguments) {
    return runProgram(QStringLiteral(AUTOSCENE_TASK_TOOL), arguments);
}

TEST(TaskTool, CheckSummarisesTheTaskAndNamesEverySkippedElement) {
    const ProgramResult run = runTool({"check", fixturePath("tasks/every-record")});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    expectLines(run.out, {"task: 全部记录\n", "task mode: 2 (window)\n", "scenes: 2\n",
                          "events: 3\n", "conditions: 13\n", "actions: 22\n", "definitions: 8\n",
                          "images: 2\n", "colours: 1\n"});
    // Scripts are listed, the nested condition among them, with what they reach.
    expectLines(
        run.out,
        {"scripts: 2\n"
         "  condition in scene \"开始界面\", event \"全部条件\": screen and variables only\n"
         "  action in scene \"开始界面\", event \"全部条件\": screen and variables only\n"});
    expectLines(run.err, {"missing file"});
    EXPECT_FALSE(run.err.contains("unknown key")) << run.err.toStdString();
    EXPECT_FALSE(run.err.contains("does not exist")) << run.err.toStdString();

    const ProgramResult legacy = runTool({"check", fixturePath("tasks/legacy")});
    EXPECT_EQ(legacy.exitCode, 0);
    expectLines(legacy.err,
                {"skipped /scene_list/0/event_list/0/action_list/0: unknown action type 8",
                 "action_list/2: unknown action type 22", "action_list/4: unknown action type 99"});
}

TEST(TaskTool, ResaveWritesWhatTheEditorWouldSave) {
    QTemporaryDir out;
    const QString target = out.filePath("new/folder");
    const ProgramResult run = runTool({"resave", fixturePath("tasks/every-record"), target});
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QByteArray saved = readFile(target + "/script.json");
    EXPECT_EQ(compactJson(saved),
              compactJson(readFile(fixturePath("tasks/every-record/script.json"))));
    // Saving the saved copy again changes nothing.
    runTool({"resave", target, out.filePath("again")});
    EXPECT_EQ(readFile(out.filePath("again/script.json")), saved);
}

TEST(TaskTool, ResaveOnAFullDiskSaysSoAndExitsWithOne) {
    QTemporaryDir full;
    QProcess process;
    startOnAFullDisk(process, full.path(), AUTOSCENE_TASK_TOOL,
                     {"resave", fixturePath("tasks/every-record"), full.path()});
    const ProgramResult run = finishProgram(process);
    if (run.exitCode == kNoFullDisk) {
        GTEST_SKIP() << "no user namespace to mount a full disk in";
    }
    EXPECT_EQ(run.exitCode, 1) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains("No space left on device")) << run.err.toStdString();
}

TEST(TaskTool, UnreadableInputExitsWithTwoAndWritesNothing) {
    QTemporaryDir dir;
    writeFile(dir.filePath("script.json"), R"({"name": "x",, })");
    const ProgramResult check = runTool({"check", dir.path()});
    EXPECT_EQ(check.exitCode, 2);
    expectLines(check.err, {"invalid JSON at byte 13"});

    EXPECT_EQ(runTool({"resave", dir.path(), dir.filePath("out")}).exitCode, 2);
    EXPECT_FALSE(QFile::exists(dir.filePath("out")));

    EXPECT_EQ(runTool({"check", dir.filePath("nowhere")}).exitCode, 2);
    EXPECT_EQ(runTool({"frobnicate"}).exitCode, 2);
}

// Misspelt keys wherever they are (a misspelt action list leaves an event without actions
// that fires every cycle), unknown types, and references to what the task does not hold.
TEST(TaskTool, CheckNamesUnknownKeysAndTypesAndDanglingReferences) {
    const ProgramResult keys = runTool({"check", fixturePath("tasks/unknown-keys")});
    EXPECT_EQ(keys.exitCode, 0);
    expectLines(keys.err, {"skipped /: unknown key \"loop_intervall\"",
                           "skipped /window_info: unknown key \"clas_name\"",
                           "skipped /image_list/0: unknown key \"similarity\"",
                           "skipped /var_list/0: unknown key \"delai\"",
                           "skipped /var_list/1: unknown definition type 9",
                           "skipped /scene_list/0: unknown key \"scen_event\"",
                           "skipped /scene_list/0/event_list/0: unknown key \"actions_list\"",
                           "skipped /scene_list/0/event_list/0/item_group: unknown key \"relaton\"",
                           "item_group/item_list/0: unknown key \"compare_valu\"",
                           "item_group/item_list/1/text_info: unknown key \"thresold\"",
                           "item_group/item_list/2: unknown condition type 42"});

    const ProgramResult run = runTool({"check", fixturePath("tasks/dangling-references")});
    EXPECT_EQ(run.exitCode, 0);
    expectLines(run.err, {"definition \"crop\": original image 9 does not exist",
                          "image 1: original image 8 does not exist",
                          R"(scene "s", event "e": image 4 does not exist)",
                          R"(scene "s", event "e": colour 5 does not exist)",
                          R"(scene "s", event "e": definition 6 does not exist)"});
    EXPECT_FALSE(run.err.contains("definition 1 does not exist"));
}

TEST(TaskTool, CheckSaysAnEmptyFileIsEmptyAndNamesImagesThatDoNotDecode) {
    QTemporaryDir empty;
    writeFile(empty.filePath("script.json"), "");
    const ProgramResult nothing = runTool({"check", empty.path()});
    EXPECT_EQ(nothing.exitCode, 0) << "an empty file opens with defaults";
    expectLines(nothing.err, {"script.json is empty"});

    // The first half of a real PNG, as an interrupted copy leaves it.
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("image");
    const QByteArray png = readFile(QStringLiteral(AUTOSCENE_DEMO_IMAGE));
    writeFile(dir.filePath("image/1.png"), png.left(png.size() / 2));
    writeFile(dir.filePath("image/2.png"), png);
    writeFile(dir.filePath("script.json"), R"({"image_list": [
        {"id": 1, "name": "cut", "file": "1.png", "sim": 0.9, "type": 1},
        {"id": 2, "name": "whole", "file": "2.png", "sim": 0.9, "type": 1}]})");
    const ProgramResult cut = runTool({"check", dir.path()});
    EXPECT_EQ(cut.exitCode, 0);
    expectLines(cut.err, {"image 1: file does not decode"});
    EXPECT_FALSE(cut.err.contains("image 2")) << cut.err.toStdString();
    EXPECT_FALSE(cut.err.contains("script.json is empty"));
}

}  // namespace

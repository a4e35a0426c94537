// Replays every kept fuzz input through its target's check, so that inputs which once
// failed keep passing in builds without clang or libFuzzer.

#include <gtest/gtest.h>
#include <QDir>

#include "Checks.h"
#include "TestFiles.h"

// Each folder under regressions/ and seeds/ is named after a target and holds inputs for it.
TEST(FuzzInputs, RegressionsAndSeedsPassTheirChecks) {
    for (const char* kept : {"/regressions", "/seeds"}) {
        const QDir folders(QStringLiteral(AUTOSCENE_FUZZ_INPUTS) + QLatin1String(kept));
        ASSERT_TRUE(folders.exists()) << folders.path().toStdString();
        for (const QString& target : folders.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const autoscene::fuzz::Check check = autoscene::fuzz::findCheck(target);
            ASSERT_NE(check, nullptr) << "no fuzz target named " << target.toStdString();
            const QFileInfoList inputs = QDir(folders.filePath(target)).entryInfoList(QDir::Files);
            EXPECT_FALSE(inputs.isEmpty()) << "no inputs in " << target.toStdString();
            for (const QFileInfo& input : inputs) {
                EXPECT_EQ(check(autoscene::test::readFile(input.filePath())).toStdString(), "")
                    << input.filePath().toStdString();
            }
        }
    }
}

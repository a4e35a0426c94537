// The detection pool and the detection step before a traversal: jobs run side by
// side but record under the calling worker's thread, per-thread variables included.

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <mutex>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <set>

#include "MatchingTestKit.h"
#include "TaskContext.h"
#include "conditions/ImageCondition.h"
#include "engine/MVVariable.h"
#include "engine/Scene.h"
#include "engine/ScreenDetection.h"
#include "model/RectText.h"
#include "recognition/DetectionPool.h"
#include "system/ThreadKey.h"

using namespace autoscene::engine;
using namespace autoscene::recognition;
using namespace autoscene::conditions;
using namespace autoscene::sys;
using autoscene::test::noiseFrame;

namespace {

// Without helpers the caller runs every job itself.
TEST(DetectionPool, EveryJobRunsOnceUnderItsCallersKey) {
    for (const unsigned helpers : {3u, 0u}) {
        DetectionPool pool(helpers);
        constexpr size_t kJobs = 200;
        auto caller = [&pool, helpers] {
            std::vector<std::atomic<int>> runs(kJobs);
            std::mutex mutex;
            std::set<std::thread::id> keys;
            std::set<std::thread::id> threads;
            pool.run(kJobs, [&](size_t i) {
                ++runs[i];
                std::lock_guard lock(mutex);
                keys.insert(threadKey());
                threads.insert(std::this_thread::get_id());
            });
            EXPECT_TRUE(
                std::all_of(runs.begin(), runs.end(), [](const auto& n) { return n == 1; }));
            const std::set<std::thread::id> self{std::this_thread::get_id()};
            EXPECT_EQ(keys, self);
            if (helpers == 0) {
                EXPECT_EQ(threads, self);
            }
        };
        std::thread a(caller);
        std::thread b(caller);
        caller();
        a.join();
        b.join();
        EXPECT_EQ(threadKey(), std::this_thread::get_id());
    }
}

// Eight templates cut from a frame, each searched in the rectangle that a
// per-target variable holds for the worker; they sit in nested groups of two events.
TEST(ScreenDetection, ResultsLandInTheWorkersOwnRecords) {
    QTemporaryDir dir;
    const cv::Mat frame = noiseFrame(400, 200, 17);
    autoscene::test::TaskContext<> kit;
    kit.open(R"({"var_list": [
        {"type": 1, "id": 1, "name": "where", "value": "", "is_global": false}]})");
    MVVariable* where = kit.definitions->find(1);
    ASSERT_TRUE(where && !where->isGlobal());

    std::vector<ImageCondition*> conditions;
    std::vector<std::shared_ptr<RuntimeEvent>> events;
    for (int e = 0; e < 2; ++e) {
        auto event = std::make_shared<RuntimeEvent>();
        event->conditions = std::make_unique<ItemGroup>();
        auto nested = std::make_unique<ItemGroup>();
        for (int i = 0; i < 4; ++i) {
            const int n = e * 4 + i;
            TemplateMatcher::Settings settings;
            settings.filePath = dir.filePath(QStringLiteral("%1.png").arg(n));
            ASSERT_TRUE(cv::imwrite(settings.filePath.toStdString(),
                                    frame(cv::Rect(20 + 40 * n, 90, 16, 16)).clone()));
            auto condition = std::make_unique<ImageCondition>(
                1, ScreenItem::Settings{}, kit.clock, QString(),
                std::make_shared<TemplateMatcher>(settings), SearchArea(*kit.definitions, 1));
            conditions.push_back(condition.get());
            (i % 2 == 0 ? *event->conditions : *nested).append(std::move(condition));
        }
        event->conditions->append(std::move(nested));
        events.push_back(std::move(event));
    }

    DetectionPool pool(2);
    auto worker = [&](const QRect& rect, bool found) {
        where->setValue(autoscene::model::formatRectText(rect));
        TaskInfo task;
        task.frame = frame;
        task.cycleCount = 1;
        // Slow jobs, so the helpers take some before the caller has run them all.
        prepareScreenItems(events, task, [&pool](size_t count, const auto& job) {
            pool.run(count, [&job](size_t i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
                job(i);
            });
        });
        for (ImageCondition* condition : conditions) {
            const MatchResult result = condition->result(std::this_thread::get_id());
            EXPECT_EQ(result.searched, rect);
            EXPECT_EQ(condition->evaluate(task), found);
        }
    };
    // One worker searches the row of templates, the other a band without them.
    std::thread other([&] { worker(QRect(0, 0, 400, 40), false); });
    worker(QRect(0, 80, 400, 40), true);
    other.join();
}

}  // namespace

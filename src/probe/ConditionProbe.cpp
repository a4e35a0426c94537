#include "probe/ConditionProbe.h"

#include <QJsonObject>
#include <algorithm>
#include <atomic>
#include <exception>
#include <functional>
#include <stdexcept>
#include <thread>

#include "actions/RuntimeItems.h"
#include "conditions/ImageCondition.h"
#include "conditions/LabelCondition.h"
#include "conditions/LabelSearch.h"
#include "conditions/ScreenConditions.h"
#include "conditions/ScreenTextCondition.h"
#include "conditions/TextSearch.h"
#include "engine/RunClock.h"
#include "engine/RuntimeDefinitions.h"
#include "engine/RuntimeFactory.h"
#include "engine/ScreenItem.h"
#include "engine/TargetService.h"
#include "model/EditorActions.h"
#include "model/EditorConditions.h"
#include "model/TaskDocument.h"
#include "probe/ProbeReasons.h"
#include "recognition/ColorSearch.h"
#include "recognition/DetectionPool.h"
#include "recognition/LabelDetector.h"
#include "system/ThreadKey.h"

namespace autoscene::probe {

using namespace autoscene::model;

namespace {

// Takes no input: every click is refused, and where it was aimed is noted.
class WatchedTargets : public engine::ITargetService {
public:
    bool capture(const engine::TaskInfo&, const platform::FrameConsumer&) override { return false; }
    bool isWindow(platform::WindowHandle) override { return false; }
    std::vector<platform::WindowHandle> candidateWindows() override { return {}; }
    QString refusesPoint(const engine::TaskInfo&, platform::Point point) override {
        aimedAt = QPoint(point.x, point.y);
        return QStringLiteral("test on the screen");
    }
    void mouse(const engine::TaskInfo&, platform::Point, platform::MouseOp, int) override {}
    void wheel(const engine::TaskInfo&, int, platform::Point) override {}
    void key(const engine::TaskInfo&, int, platform::KeyOp) override {}
    bool keyGroup(const engine::TaskInfo&, const std::vector<int>&) override { return true; }
    void inputText(const engine::TaskInfo&, const QString&) override {}

    std::optional<QPoint> aimedAt;
};

class NoRunControl : public engine::IRunControl {
public:
    void stopByTask() override {}
    void finishCurrentTarget(int) override {}
    bool stopRequested() const override { return false; }
    void enterExclusive() override {}
    void leaveExclusive() override {}
};

int statusOfText(const QString& err) {
    for (int status : {recognition::kMatchBadFormat, recognition::kMatchMissingImage,
                       recognition::kMatchAreaTooSmall}) {
        if (err == recognition::matchStatusText(status)) {
            return status;
        }
    }
    return recognition::kMatchOk;
}

void addSorted(std::vector<ProbeCandidate>& list, ProbeCandidate candidate) {
    const auto at = std::find_if(list.begin(), list.end(), [&](const ProbeCandidate& c) {
        return c.score < candidate.score;
    });
    list.insert(at, std::move(candidate));
}

bool outsideOnly(const std::vector<ProbeCandidate>& candidates, float threshold) {
    bool outside = false;
    for (const ProbeCandidate& c : candidates) {
        if (c.score >= threshold) {
            if (c.inArea) {
                return false;
            }
            outside = true;
        }
    }
    return outside;
}

// Whether the item can be tried on `frame`; when not, `out` says why.
bool canProbe(bool onScreen, const cv::Mat& frame, ProbeResult& out) {
    if (!onScreen) {
        out.reason = reasons::notOnScreen();
        return false;
    }
    out.probed = true;
    if (frame.empty()) {
        out.reason = reasons::noFrame();
        return false;
    }
    return true;
}

// Unique in the process, as the shared reduced copies are kept by thread and cycle.
std::int64_t nextCycle() {
    static std::atomic<std::int64_t> last{0};
    return ++last;
}

// Candidates in `over`, each marked by whether `searched` holds it; with `near`, exact only
// from there up.
std::vector<ProbeCandidate> imageCandidates(recognition::TemplateMatcher& matcher,
                                            const cv::Mat& frame, const QRect& over,
                                            const QRect& searched, float floor, std::int64_t cycle,
                                            std::optional<float> near = std::nullopt) {
    std::vector<ProbeCandidate> list;
    for (const recognition::MatchResult& found : matcher.candidates(
             frame, over, floor, ConditionProbe::kCandidateLimit, cycle, nullptr, near)) {
        // The matcher searches one pixel past the area's edge where the frame has it.
        const bool inArea = searched.adjusted(0, 0, 1, 1).contains(found.match);
        list.push_back({found.match, found.score, QString(), inArea});
    }
    return list;
}

float candidateFloor(const ProbeResult& image) {
    return std::min(ConditionProbe::kCandidateFloor, image.threshold);
}

// Lists what the image item found whatever the list's own search saw, and says why it does
// not hold from the candidates listed so far.
void explainImage(ProbeResult& out, const recognition::MatchResult& found, bool present) {
    const bool listed = std::any_of(out.candidates.begin(), out.candidates.end(),
                                    [&](const ProbeCandidate& c) { return c.rect == found.match; });
    if (!listed && !found.match.isEmpty() && found.status == recognition::kMatchOk &&
        found.score >= candidateFloor(out)) {
        addSorted(out.candidates, {found.match, found.score, QString(), true});
    }
    if (out.holds) {
        out.reason.clear();
    } else if (!present) {
        out.reason = reasons::imageShown(found.score, out.threshold);
    } else if (found.status == recognition::kMatchAreaTooSmall) {
        out.reason = reasons::templateLargerThanArea();
    } else if (found.status != recognition::kMatchOk) {
        out.reason = reasons::imageUnreadable();
    } else if (outsideOnly(out.candidates, out.threshold)) {
        out.reason = reasons::outsideSearchArea();
    } else {
        out.reason = reasons::scoreBelow(found.score, out.threshold);
    }
}

// What an image item not found in its area still needs, to be looked for beyond it.
struct ImageBeyond {
    std::shared_ptr<recognition::TemplateMatcher> matcher;
    cv::Mat frame;
    std::int64_t cycle = 0;
    QRect searched;
    recognition::MatchResult found;  // what the item itself found
};

void searchBeyond(ProbeResult& out, const ImageBeyond& beyond) {
    // Whether it is outside turns on the places at the threshold or above; those below it
    // are listed where the search meets them.
    for (ProbeCandidate& c : imageCandidates(
             *beyond.matcher, beyond.frame, QRect(0, 0, beyond.frame.cols, beyond.frame.rows),
             beyond.searched, candidateFloor(out), beyond.cycle, out.threshold)) {
        if (!c.inArea) {
            addSorted(out.candidates, std::move(c));
        }
    }
    out.candidates.resize(std::min(out.candidates.size(), ConditionProbe::kCandidateLimit));
    out.lookingBeyond = false;
    explainImage(out, beyond.found, true);
}

// Runs `job(0)` … `job(count - 1)` side by side on the detection pool. A pool job must not
// throw; the first failure is raised as running them in order would.
void onPool(size_t count, const std::function<void(size_t)>& job) {
    std::vector<std::exception_ptr> failures(count);
    recognition::DetectionPool::shared().run(count, [&](size_t i) {
        try {
            job(i);
        } catch (...) {
            failures[i] = std::current_exception();
        }
    });
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
}

}  // namespace

struct ConditionProbe::Parts {
    Parts(const TaskDocument& task, std::shared_ptr<const text::OcrClient> ocr)
        : task(task),
          definitions(task, clock),
          services{std::move(ocr), std::make_shared<recognition::LabelDetector>()} {
        // An action's waits between clicks return at once: nothing is clicked.
        clock.stop();
        actions::registerAllRuntimeItems(factory, services);
        for (const auto& hook : factory.runStartHooks()) {
            hook(task);
        }
    }

    // The runner loads the model only for tasks that use labels; a label item tried before
    // any is saved in the task loads it here.
    void ensureLabels(int type) {
        const bool label = type == EditorLabelCondition::kType ||
                           type == EditorLabelAction::kType ||
                           type == EditorSaveLabelCoordAction::kType;
        if (label && !services.labels->loaded() && !task.modelId.isEmpty()) {
            services.labels->load(recognition::labelModelFiles(task.folderPath, task.modelId));
        }
    }

    // The task as the runner's worker holds it for `frame`: one cycle per frame, so the
    // items probed on one frame share its reduced copies and label detections. The frame
    // is kept, so that no other frame can take its pixels' place while it counts as seen.
    // Items probed side by side share it as the runner's detections do, so it is made
    // before they start.
    engine::TaskInfo& start(const cv::Mat& frame) {
        if (!info || frame.data != seen.data || frame.size != seen.size) {
            seen = frame;
            info = std::make_unique<engine::TaskInfo>();
            info->frame = frame;
            info->cycleCount = nextCycle();
        }
        return *info;
    }

    // Needs start(frame) first. Safe beside other conditions' probes of the same frame: it
    // writes only to its own item, and its results are kept under the caller's thread key,
    // under which the detection pool runs its jobs. `beyond` gets what is left to look for
    // beyond an image item's area.
    ProbeResult probeCondition(const IEditorCondition& record, const cv::Mat& frame,
                               std::optional<ImageBeyond>& beyond);

    // `found` is what the item itself found, with the matcher it searched with when it
    // can be had (its scores are then taken again rather than searched for). Returns what
    // is left to look for beyond the item's area, when anything is.
    std::optional<ImageBeyond> describeImage(ProbeResult& out, int imageId, int searchId,
                                             bool present, const recognition::MatchResult& found,
                                             std::shared_ptr<recognition::TemplateMatcher> matcher,
                                             const cv::Mat& frame);
    void describeColour(ProbeResult& out, int colorId, int searchId, const cv::Mat& frame);
    void describeLabel(ProbeResult& out, int labelId, int searchId, float sim, bool present,
                       engine::TaskInfo& info);
    void describeText(ProbeResult& out, const std::vector<text::TextBox>& boxes,
                      const QString& wanted);

    const TaskDocument& task;
    engine::RunClock clock;
    engine::RuntimeDefinitions definitions;
    WatchedTargets targets;
    NoRunControl control;
    engine::RunContext context{task, definitions, clock, targets, control};
    conditions::ScreenServices services;
    engine::RuntimeFactory factory;
    cv::Mat seen;
    std::unique_ptr<engine::TaskInfo> info;
    // Of the last verdicts(), by result.
    std::vector<std::optional<ImageBeyond>> beyond;
};

std::optional<ImageBeyond> ConditionProbe::Parts::describeImage(
    ProbeResult& out, int imageId, int searchId, bool present,
    const recognition::MatchResult& found, std::shared_ptr<recognition::TemplateMatcher> matcher,
    const cv::Mat& frame) {
    const ImageRecord* image = task.image(imageId);
    out.threshold = image ? image->sim : 0.0f;
    const std::optional<QRect> crop = definitions.cropRect(searchId);
    // The matcher the runner builds, so the area carries the task's expansion.
    if (!matcher) {
        matcher = conditions::makeTemplateMatcher(task, imageId, crop);
    }
    const QRect searched = matcher->defaultRect(frame);
    if (crop) {
        out.searchArea = searched;
    }
    out.candidates =
        imageCandidates(*matcher, frame, searched, searched, candidateFloor(out), info->cycleCount);
    explainImage(out, found, present);
    // Beyond the area only where that may tell why the image is not found in it.
    if (crop && !out.holds && present &&
        (found.status == recognition::kMatchOk ||
         found.status == recognition::kMatchAreaTooSmall)) {
        out.lookingBeyond = true;
        return ImageBeyond{std::move(matcher), frame, info->cycleCount, searched, found};
    }
    return std::nullopt;
}

void ConditionProbe::Parts::describeColour(ProbeResult& out, int colorId, int searchId,
                                           const cv::Mat& frame) {
    out.searchArea = definitions.cropRect(searchId);
    const std::optional<recognition::SearchColour> colour =
        recognition::searchColour(task, colorId);
    if (!colour) {
        out.reason = reasons::colourDeleted();
        return;
    }
    cv::Mat mask;
    out.count =
        recognition::countColor(frame, colour->rgb, colour->similarity,
                                out.searchArea.value_or(QRect(0, 0, frame.cols, frame.rows)), mask);
}

void ConditionProbe::Parts::describeLabel(ProbeResult& out, int labelId, int searchId, float sim,
                                          bool present, engine::TaskInfo& info) {
    out.threshold = sim;
    const engine::SearchArea area(definitions, searchId);
    out.searchArea = area.crop();
    const QString name = services.labels->className(labelId);
    const std::vector<recognition::LabelBox> boxes =
        conditions::labelsOf(info, services.labels.get());
    const std::vector<recognition::LabelBox> inArea =
        conditions::findAllLabels(boxes, name, 0.0f, area.rects());
    for (const recognition::LabelBox& box : boxes) {
        if (box.name == name && !name.isEmpty()) {
            const QRect rect = conditions::boxRect(box);
            const bool held = std::any_of(inArea.begin(), inArea.end(), [&](const auto& b) {
                return conditions::boxRect(b) == rect;
            });
            addSorted(out.candidates, {rect, box.probability, name, held});
        }
    }
    if (out.holds) {
        return;
    }
    if (!services.labels->loaded()) {
        out.reason = reasons::noLabelModel();
    } else if (!present) {
        out.reason =
            reasons::labelShown(name, out.candidates.empty() ? 0.0f : out.candidates.front().score);
    } else if (out.candidates.empty()) {
        out.reason = reasons::noLabelBox(name);
    } else if (outsideOnly(out.candidates, sim)) {
        out.reason = reasons::outsideSearchArea();
    } else {
        const auto best = std::find_if(out.candidates.begin(), out.candidates.end(),
                                       [](const ProbeCandidate& c) { return c.inArea; });
        out.reason = reasons::scoreBelow(best == out.candidates.end() ? 0.0f : best->score, sim);
    }
}

void ConditionProbe::Parts::describeText(ProbeResult& out, const std::vector<text::TextBox>& boxes,
                                         const QString& wanted) {
    for (const text::TextBox& box : boxes) {
        out.candidates.push_back({box.rect, 0.0f, box.text, true});
    }
    if (!out.holds) {
        out.reason = reasons::textNotRead(wanted);
    }
}

ConditionProbe::ConditionProbe(const TaskDocument& task, std::shared_ptr<const text::OcrClient> ocr)
    : parts_(std::make_unique<Parts>(task, std::move(ocr))) {}

ConditionProbe::~ConditionProbe() = default;

ProbeResult ConditionProbe::Parts::probeCondition(const IEditorCondition& record,
                                                  const cv::Mat& frame,
                                                  std::optional<ImageBeyond>& beyond) {
    ProbeResult out;
    const std::unique_ptr<engine::ICondition> built = factory.condition(record, context);
    auto* screen = dynamic_cast<engine::ScreenItem*>(built.get());
    if (!canProbe(screen != nullptr, frame, out)) {
        return out;
    }
    out.holds = screen->observesExpected(*info);
    const std::thread::id thread = sys::threadKey();
    switch (record.type()) {
        case EditorImageCondition::kType: {
            const auto& r = static_cast<const EditorImageCondition&>(record);
            auto* image = static_cast<conditions::ImageCondition*>(screen);
            beyond = describeImage(out, r.imageId, r.searchId, r.state == 1, image->result(thread),
                                   image->matcher(), frame);
            break;
        }
        case EditorColorCondition::kType: {
            const auto& r = static_cast<const EditorColorCondition&>(record);
            describeColour(out, r.colorId, r.searchId, frame);
            out.threshold = float(r.count);
            if (!out.holds && out.reason.isEmpty()) {
                const bool countTest = (r.state & (engine::kMoreThan | engine::kNotMoreThan)) != 0;
                out.reason = countTest ? reasons::colourCount(out.count, r.count,
                                                              (r.state & engine::kMoreThan) != 0)
                                       : reasons::changeNeedsTwoFrames();
            }
            break;
        }
        case EditorLabelCondition::kType: {
            const auto& r = static_cast<const EditorLabelCondition&>(record);
            describeLabel(out, r.labelId, r.searchId, r.sim, r.state == 1, *info);
            break;
        }
        case EditorScreenTextCondition::kType: {
            const auto* text = static_cast<conditions::ScreenTextCondition*>(screen);
            describeText(out, text->result(thread),
                         text->describe(thread).value(QStringLiteral("text")).toString());
            break;
        }
        default:
            break;
    }
    return out;
}

ProbeResult ConditionProbe::run(const IEditorCondition& record, const cv::Mat& frame) {
    std::vector<ProbeResult> results = verdicts({&record}, frame);
    lookBeyond(results);
    return results.front();
}

std::vector<ProbeResult> ConditionProbe::run(const std::vector<const IEditorCondition*>& records,
                                             const cv::Mat& frame) {
    std::vector<ProbeResult> results = verdicts(records, frame);
    lookBeyond(results);
    return results;
}

std::vector<ProbeResult> ConditionProbe::verdicts(
    const std::vector<const IEditorCondition*>& records, const cv::Mat& frame) {
    for (const IEditorCondition* record : records) {
        parts_->ensureLabels(record->type());
    }
    parts_->start(frame);
    std::vector<ProbeResult> results(records.size());
    parts_->beyond.assign(records.size(), std::nullopt);
    onPool(records.size(), [&](size_t i) {
        results[i] = parts_->probeCondition(*records[i], frame, parts_->beyond[i]);
    });
    return results;
}

void ConditionProbe::lookBeyond(std::vector<ProbeResult>& results) {
    if (results.size() != parts_->beyond.size()) {
        throw std::invalid_argument("lookBeyond: not the results of the last verdicts()");
    }
    std::vector<size_t> pending;
    for (size_t i = 0; i < results.size(); ++i) {
        if (parts_->beyond[i]) {
            pending.push_back(i);
        }
    }
    onPool(pending.size(),
           [&](size_t j) { searchBeyond(results[pending[j]], *parts_->beyond[pending[j]]); });
    parts_->beyond.clear();
}

ProbeResult ConditionProbe::run(const IEditorAction& record, const cv::Mat& frame) {
    ProbeResult out;
    const int type = record.type();
    const bool finds = type == EditorImageAction::kType || type == EditorSaveCoordAction::kType ||
                       type == EditorClickColorAction::kType || type == EditorLabelAction::kType ||
                       type == EditorSaveLabelCoordAction::kType ||
                       type == EditorClickTextAction::kType;
    if (!canProbe(finds, frame, out)) {
        return out;
    }
    parts_->ensureLabels(type);
    const std::unique_ptr<engine::IAction> built = parts_->factory.action(record, parts_->context);
    engine::TaskInfo& info = parts_->start(frame);
    parts_->targets.aimedAt.reset();
    built->run(info);
    const QJsonObject result = built->state(sys::threadKey());
    out.click = parts_->targets.aimedAt;
    out.holds = out.click.has_value();
    recognition::MatchResult found;
    found.score = float(result.value(QStringLiteral("sim")).toDouble());
    found.status = statusOfText(result.value(QStringLiteral("err")).toString());
    std::optional<ImageBeyond> beyond;
    if (type == EditorImageAction::kType) {
        const auto& r = static_cast<const EditorImageAction&>(record);
        beyond = parts_->describeImage(out, r.imageId, r.searchId, true, found, nullptr, frame);
    } else if (type == EditorSaveCoordAction::kType) {
        const auto& r = static_cast<const EditorSaveCoordAction&>(record);
        beyond = parts_->describeImage(out, r.imageId, r.searchId, true, found, nullptr, frame);
    } else if (type == EditorClickColorAction::kType) {
        const auto& r = static_cast<const EditorClickColorAction&>(record);
        parts_->describeColour(out, r.colorId, r.searchId, frame);
        if (!out.holds && out.reason.isEmpty()) {
            out.reason = reasons::colourCount(std::max(out.count, 0), 0, true);
        }
    } else if (type == EditorLabelAction::kType) {
        const auto& r = static_cast<const EditorLabelAction&>(record);
        parts_->describeLabel(out, r.labelId, r.searchId, r.sim, true, info);
    } else if (type == EditorSaveLabelCoordAction::kType) {
        const auto& r = static_cast<const EditorSaveLabelCoordAction&>(record);
        parts_->describeLabel(out, r.labelId, r.searchId, r.sim, true, info);
    } else {
        const auto& r = static_cast<const EditorClickTextAction&>(record);
        const conditions::TextSearch search =
            conditions::makeTextSearch(r.textInfo, parts_->context, parts_->services.ocr);
        parts_->describeText(out, search.find(info), search.matcher().wanted());
    }
    if (beyond) {
        searchBeyond(out, *beyond);
    }
    return out;
}

OtherMatches::OtherMatches(const TaskDocument& task, int imageId, cv::Mat original, QRect own)
    : original_(std::move(original)), own_(own) {
    if (const ImageRecord* image = task.image(imageId)) {
        matcher_ = conditions::makeTemplateMatcher(task, imageId, std::nullopt);
        threshold_ = image->sim;
    }
}

std::vector<ProbeCandidate> OtherMatches::operator()() const {
    if (!matcher_ || original_.empty()) {
        return {};
    }
    std::vector<ProbeCandidate> others;
    const QRect whole(0, 0, original_.cols, original_.rows);
    for (const ProbeCandidate& found :
         imageCandidates(*matcher_, original_, whole, whole, threshold_, nextCycle(), threshold_)) {
        // The template's own place, give or take the rounding of a cut.
        if (!found.rect.intersects(own_) || (found.rect & own_).width() * 2 < own_.width() ||
            (found.rect & own_).height() * 2 < own_.height()) {
            others.push_back(found);
        }
    }
    return others;
}

}  // namespace autoscene::probe

#include "platform/history/History.h"

#include "platform/history/JoinedSteps.h"

#include <algorithm>

namespace qvnd::history {

namespace {

// How many of the oldest steps are before the last so many commands. Bookkeeping is none.
qsizetype freeOf(const QList<Step>& steps, int least) {
    qsizetype free = steps.size();
    for (int kept = 0; free > 0 && (kept < least || steps[free - 1].isMinor);) {
        --free;
        kept += steps[free].isMinor ? 0 : 1;
    }
    return free;
}

} // namespace

// The oldest step that may be joined with its parent: both old, of one day, with no other child of
// the parent, which neither the work space nor 恢复 ends at, and not among the newest.
std::optional<std::int64_t> History::joinableAt(const QList<Step>& steps, const Limits& limits,
                                                const QDateTime& now) {
    const qsizetype free = freeOf(steps, limits.least);
    const std::int64_t tip = recorder_.file().position().tip;
    const QDateTime young = now.addDays(-static_cast<qint64>(limits.whole.count()));
    for (qsizetype at = 0; at < free; ++at) {
        const Step& step = steps[at];
        const auto parent = std::find_if(
            steps.begin(), steps.end(), [&](const Step& other) { return other.id == step.parent; });
        const auto siblings = std::count_if(steps.begin(), steps.end(), [&](const Step& other) {
            return other.parent == step.parent;
        });
        if (parent != steps.end() && step.time < young && siblings == 1 && parent->id != head() &&
            parent->id != tip && parent->time.date() == step.time.date()) {
            return step.id;
        }
    }
    return std::nullopt;
}

// The joined step keeps the later one's number and place, and the words of both.
void History::joinWithParent(const Step& step) {
    HistoryFile& file = recorder_.file();
    const Step parent = file.step(step.parent).value_or(Step{});
    Step both = step;
    both.parent = parent.parent;
    both.title = parent.title.contains(u'、') ? parent.title : parent.title + u'、' + step.title;
    both.isMinor = parent.isMinor && step.isMinor;
    both.selectedBefore = parent.selectedBefore;
    joinSteps(file, parent.id, step.id, both);
}

// The oldest step that nothing else builds on: the end of a branch that the work space does not
// stand at, or the first of all steps, on the way to where it stands.
std::optional<Step> History::expendable(const QList<Step>& steps, int least) {
    const auto childrenOf = [&](std::int64_t parent) {
        return std::count_if(steps.begin(), steps.end(),
                             [&](const Step& step) { return step.parent == parent; });
    };
    const std::int64_t now = head();
    const qsizetype free = freeOf(steps, least);
    for (qsizetype at = 0; at < free; ++at) {
        const Step& step = steps[at];
        const bool isEnd = step.id != now && childrenOf(step.id) == 0;
        const bool isFirst = step.parent == beginning && childrenOf(beginning) == 1 &&
                             restoration_.isAbove(step.id, now);
        if (isEnd || isFirst) {
            return step;
        }
    }
    return std::nullopt;
}

// The state behind a first step becomes the beginning.
void History::drop(const Step& step) {
    HistoryFile& file = recorder_.file();
    HistoryFile::Transaction all(file);
    file.remove(step.id);
    file.replaceParent(step.id, step.parent);
    Position position = file.position();
    for (std::int64_t* place : {&position.head, &position.tip}) {
        *place = *place == step.id ? step.parent : *place;
    }
    file.setPosition(position);
    all.commit();
}

// What a command or a restoration under way has kept belongs to no step yet.
int History::thin(const Limits& limits, const QDateTime& now) {
    if (!exists() || recorder_.isAnyUnderWay() || isHalfRestored()) {
        return 0;
    }
    HistoryFile& file = recorder_.file();
    const qsizetype before = file.steps().size();
    {
        HistoryFile::Transaction all(file);
        while (const auto id = joinableAt(file.steps(), limits, now)) {
            joinWithParent(*file.step(*id));
        }
        all.commit();
    }
    if (file.steps().size() < before) {
        dropUnused();
    }
    while (kept_.size() + file.size() > limits.bytes) {
        const std::optional<Step> step = expendable(file.steps(), limits.least);
        if (!step) {
            break;
        }
        drop(*step);
        dropUnused();
        file.shrink();
    }
    return static_cast<int>(before - file.steps().size());
}

void History::dropUnused() {
    for (const std::int64_t step : kept_.steps()) {
        if (!recorder_.file().isContentUsed(step)) {
            kept_.removeStep(step);
        }
    }
}

} // namespace qvnd::history

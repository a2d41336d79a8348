#include "platform/history/History.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/history/JoinedSteps.h"

#include <QHash>
#include <QMap>

#include <algorithm>
#include <iterator>

namespace qvnd::history {

namespace {

constexpr qsizetype longestTitle = 100;

// The steps, oldest first, while some of them are joined or go.
class StepList {
public:
    explicit StepList(const QList<Step>& steps) : steps_(steps) {
        for (const Step& step : steps_) {
            ++children_[step.parent];
        }
    }

    qsizetype size() const { return steps_.size(); }
    const Step& operator[](qsizetype at) const { return steps_[at]; }
    int childrenOf(std::int64_t step) const { return children_.value(step); }
    // How many of the oldest are before the last so many commands. Bookkeeping is none.
    qsizetype freeOf(int least) const {
        qsizetype free = steps_.size();
        for (int kept = 0; free > 0 && (kept < least || steps_[free - 1].isMinor);) {
            --free;
            kept += steps_[free].isMinor ? 0 : 1;
        }
        return free;
    }
    // Negative when it is not there. They are in the order of their numbers.
    qsizetype placeOf(std::int64_t id) const {
        const auto found = std::lower_bound(
            steps_.begin(), steps_.end(), id,
            [](const Step& step, std::int64_t wanted) { return step.id < wanted; });
        return found != steps_.end() && found->id == id ? found - steps_.begin() : -1;
    }
    // Whether `one` is `other` or a step on the way to it.
    bool isAbove(std::int64_t one, std::int64_t other) const {
        for (qsizetype at = placeOf(other); at >= 0 && other != one; at = placeOf(other)) {
            other = steps_[at].parent;
        }
        return other == one;
    }
    void replace(qsizetype at, const Step& by) { steps_[at] = by; }
    // Its children become those of its parent.
    void remove(qsizetype at) {
        const Step gone = steps_.takeAt(at);
        const int children = children_.take(gone.id);
        children_[gone.parent] += children - 1;
        for (Step& step : steps_) {
            step.parent = step.parent == gone.id ? gone.parent : step.parent;
        }
    }

private:
    QList<Step> steps_;
    QHash<std::int64_t, int> children_;
};

QString joinedText(const QString& one, const QString& other, const QString& between) {
    return one.isEmpty() || other.isEmpty() ? one + other : one + between + other;
}

// Bookkeeping has no title of its own among commands; a very long one is cut.
QString joinedTitle(const Step& earlier, const Step& later) {
    if (earlier.isMinor != later.isMinor) {
        return earlier.isMinor ? later.title : earlier.title;
    }
    const QString etc = QStringLiteral("等");
    if (earlier.title.size() + later.title.size() < longestTitle) {
        return earlier.title + u'、' + later.title;
    }
    return earlier.title.endsWith(etc) ? earlier.title : earlier.title + etc;
}

QString joinedPlans(const Step& earlier, const Step& later) {
    if (earlier.isMinor != later.isMinor) {
        const Step& told = earlier.isMinor ? later : earlier;
        return told.plan.isEmpty() ? (earlier.isMinor ? earlier : later).plan : told.plan;
    }
    QStringList plans = earlier.plans() + later.plans();
    plans.removeDuplicates();
    return plans.join(u'\n');
}

// The later one's number and place, and the words of both.
Step joined(const Step& earlier, const Step& later) {
    Step both = later;
    both.parent = earlier.parent;
    both.kind = later.isAutomatic() ? earlier.kind : later.kind;
    both.title = joinedTitle(earlier, later);
    both.plan = joinedPlans(earlier, later);
    both.note = joinedText(earlier.note, later.note, QStringLiteral("\n"));
    both.isMinor = earlier.isMinor && later.isMinor;
    both.selectedBefore = earlier.selectedBefore;
    return both;
}

// A step that keeps what came from outside answers for the state behind it, others for the one
// before them; a killed command is not said of others.
bool areAlike(const Step& one, const Step& other) {
    const auto isOrdinary = [](const Step& step) {
        return step.kind == StepKind::command || step.kind == StepKind::automatic;
    };
    return isOrdinary(one) && isOrdinary(other) && one.time.date() == other.time.date();
}

// The oldest step that nothing else builds on: the end of a branch that the work space, at `now`,
// does not stand at, or the first of all steps, on the way there. Negative when there is none.
qsizetype expendableIn(const StepList& steps, int least, std::int64_t now) {
    const qsizetype free = steps.freeOf(least);
    for (qsizetype at = 0; at < free; ++at) {
        const Step& step = steps[at];
        const bool isEnd = step.id != now && steps.childrenOf(step.id) == 0;
        const bool isFirst = step.parent == beginning && steps.childrenOf(beginning) == 1;
        if (isEnd || (isFirst && steps.isAbove(step.id, now))) {
            return at;
        }
    }
    return -1;
}

} // namespace

// Old steps of one day become one, but for those that the work space or 恢复 ends at, and where a
// branch leaves. What could not be joined with its parent cannot be behind another joining either,
// so one pass does.
int History::joinOld(const Limits& limits, const QDateTime& now) {
    HistoryFile& file = recorder_.file();
    StepList steps(file.steps());
    const Position position = file.position();
    const QDateTime young = now.addDays(-static_cast<qint64>(limits.whole.count()));
    int count = 0;
    QMap<std::int64_t, QList<std::int64_t>> joinedTo; // by the last of them
    qsizetype free = steps.freeOf(limits.least);
    for (qsizetype at = 0; at < free;) {
        const Step& step = steps[at];
        const qsizetype parent = steps.placeOf(step.parent);
        if (parent < 0 || step.time >= young || steps.childrenOf(step.parent) != 1 ||
            step.parent == position.head || step.parent == position.tip ||
            !areAlike(steps[parent], step)) {
            ++at;
            continue;
        }
        QList<std::int64_t> all = joinedTo.take(step.parent);
        joinedTo[step.id] = (all.isEmpty() ? QList{step.parent} : all) << step.id;
        steps.replace(at, joined(steps[parent], step));
        steps.remove(parent);
        --free;
        ++count;
    }
    for (auto all = joinedTo.begin(); all != joinedTo.end(); ++all) {
        joinSteps(file, *all, steps[steps.placeOf(all.key())]);
    }
    return count;
}

// Takes the step out of those that need kept contents; the bytes that then nobody needs.
std::int64_t History::withoutNeedsOf(std::int64_t step, Needs& needs) {
    std::int64_t bytes = 0;
    for (auto content = needs.begin(); content != needs.end();) {
        const bool isLast = content->remove(step) && content->isEmpty();
        bytes += isLast ? kept_.sizeOf(content.key()) : 0;
        content = isLast ? needs.erase(content) : std::next(content);
    }
    return bytes;
}

// What stands at its path as it was put there need not be kept besides.
void History::giveUpDoubles() {
    HistoryFile& file = recorder_.file();
    HistoryFile::Transaction all(file);
    const QMap<QString, Present> kept = file.presentOfKept();
    for (auto present = kept.begin(); present != kept.end(); ++present) {
        if (present->stamp == stampOf(present.key())) {
            file.contentIsOnDiskAlone(present.key(), present->content);
        }
    }
    all.commit();
    dropUnused();
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

// Several go at a time, until what they alone have kept makes up for what is too much: looking for
// what nobody needs any more reads all that remains.
int History::dropOldest(const Limits& limits) {
    HistoryFile& file = recorder_.file();
    const auto excess = [&] { return kept_.size() + file.size() - limits.bytes; };
    if (excess() <= 0) {
        return 0;
    }
    giveUpDoubles();
    Needs needs = file.stepsByContents();
    StepList steps(file.steps());
    const qsizetype before = steps.size();
    for (bool isAnyLeft = true; isAnyLeft && excess() > 0;) {
        for (std::int64_t left = excess(); left > 0 && isAnyLeft;) {
            const qsizetype at = expendableIn(steps, limits.least, head());
            isAnyLeft = at >= 0;
            if (isAnyLeft) {
                left -= withoutNeedsOf(steps[at].id, needs) + file.size();
                drop(steps[at]);
                left += file.size();
                steps.remove(at);
            }
        }
        dropUnused();
    }
    return static_cast<int>(before - steps.size());
}

// What a command or a restoration under way has kept belongs to no step yet.
int History::thin(const Limits& limits, const QDateTime& now) {
    if (!exists() || recorder_.isAnyUnderWay() || isHalfRestored()) {
        return 0;
    }
    HistoryFile& file = recorder_.file();
    HistoryFile::Transaction all(file);
    const int joined = joinOld(limits, now);
    all.commit();
    if (joined > 0) {
        dropUnused();
    }
    const int dropped = dropOldest(limits);
    if (dropped > 0) {
        ignoringErrors([&] { file.shrinkIfWorthwhile(); });
    }
    return joined + dropped;
}

void History::dropUnused() {
    const Needs used = recorder_.file().stepsByContents();
    for (const std::int64_t step : kept_.steps()) {
        if (!used.contains(step)) {
            kept_.removeStep(step);
        }
    }
}

} // namespace qvnd::history

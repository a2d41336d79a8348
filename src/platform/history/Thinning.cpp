#include "platform/history/History.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/history/JoinedSteps.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <utility>

namespace qvnd::history {

namespace {

// The steps, oldest first, while some of them go.
class StepList {
public:
    explicit StepList(const QList<Step>& steps) : steps_(steps) {
        for (const Step& step : steps_) {
            ++children_[step.parent];
        }
    }

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

// A step that keeps what came from outside answers for the state behind it, others for the one
// before them; a killed command is not said of others.
bool areAlike(const Step& one, const Step& other) {
    const auto isOrdinary = [](const Step& step) {
        return step.kind == StepKind::command || step.kind == StepKind::automatic;
    };
    return isOrdinary(one) && isOrdinary(other) && one.time.date() == other.time.date();
}

// Old steps of one day that follow each other, but for those that the work space or 恢复 ends at,
// and where a branch leaves. A parent has the lesser number, or keeps what came from outside.
QList<QList<Step>> daysToJoin(const StepList& steps, int least, const Position& position,
                              const QDateTime& young) {
    QList<QList<Step>> days;
    QHash<std::int64_t, qsizetype> dayThatEndsAt;
    const qsizetype free = steps.freeOf(least);
    for (qsizetype at = 0; at < free; ++at) {
        const Step& step = steps[at];
        const qsizetype parent = steps.placeOf(step.parent);
        if (parent < 0 || parent >= free || step.time >= young ||
            steps.childrenOf(step.parent) != 1 || step.parent == position.head ||
            step.parent == position.tip || !areAlike(steps[parent], step)) {
            continue;
        }
        if (!dayThatEndsAt.contains(step.parent)) {
            dayThatEndsAt[step.parent] = days.size();
            days << QList<Step>{steps[parent]};
        }
        const qsizetype day = dayThatEndsAt.take(step.parent);
        days[day] << step;
        dayThatEndsAt[step.id] = day;
    }
    return days;
}

// Tells which steps go, and what that gains.
class Departures {
public:
    Departures(HistoryFile& file, const KeptFiles& kept, int least)
        : kept_(kept), steps_(file.steps()), contents_(file.contentsOfSteps()),
          sizes_(file.sizesOfSteps()), least_(least), now_(file.position().head) {
        for (const QStringList& contents : std::as_const(contents_)) {
            for (const QString& content : contents) {
                ++needs_[content];
            }
        }
        for (qsizetype at = steps_.placeOf(now_); at >= 0; at = steps_.placeOf(steps_[at].parent)) {
            onTheWay_ << steps_[at].id;
        }
    }

    // The first ones that gain so many bytes, in the order in which they go. Where not even all
    // that may go gain as many, none goes behind the last one that takes a kept file along: what is
    // too much then lies in those that stay.
    QList<Step> gaining(std::int64_t bytes) {
        QList<Step> going;
        qsizetype worthwhile = 0;
        while (bytes > 0) {
            const qsizetype at = expendable();
            if (at < 0) {
                return going.mid(0, worthwhile);
            }
            going << steps_[at];
            const std::int64_t files = filesWithout(steps_[at].id);
            worthwhile = files > 0 ? going.size() : worthwhile;
            bytes -= files + sizes_.value(steps_[at].id);
            steps_.remove(at);
        }
        return going;
    }

private:
    // The oldest step that nothing else builds on: the end of a branch that the work space does not
    // stand at, or the first of all steps, on the way there. Negative when there is none.
    qsizetype expendable() const {
        const qsizetype free = steps_.freeOf(least_);
        for (qsizetype at = 0; at < free; ++at) {
            const Step& step = steps_[at];
            const bool isEnd = step.id != now_ && steps_.childrenOf(step.id) == 0;
            const bool isFirst = step.parent == beginning && steps_.childrenOf(beginning) == 1;
            if (isEnd || (isFirst && onTheWay_.contains(step.id))) {
                return at;
            }
        }
        return -1;
    }
    // Bytes of the kept files that nobody needs once the step is gone.
    std::int64_t filesWithout(std::int64_t step) {
        std::int64_t bytes = 0;
        for (const QString& content : contents_.value(step)) {
            if (--needs_[content] == 0) {
                bytes += kept_.sizeOf(content);
            }
        }
        return bytes;
    }

    const KeptFiles& kept_;
    StepList steps_;
    QHash<std::int64_t, QStringList> contents_;
    QHash<std::int64_t, std::int64_t> sizes_;
    QHash<QString, int> needs_; // of kept contents, how often each is needed
    QSet<std::int64_t> onTheWay_;
    int least_;
    std::int64_t now_;
};

} // namespace

// By the earliest of the last exits.
std::optional<QDateTime> History::endOfOld(const Limits& limits, const QDateTime& now) {
    HistoryFile& file = recorder_.file();
    if (!file.exits(limits.exits).contains(now.date())) {
        file.addExit(now.date());
    }
    const QList<QDate> days = file.exits(limits.exits);
    if (days.size() < limits.exits) {
        return std::nullopt;
    }
    const QDateTime known = std::min(now, std::min_element(days.begin(), days.end())->endOfDay());
    return known.addDays(-static_cast<qint64>(limits.whole.count()));
}

// A day is a transaction of its own: one that was joined stays so when the process is killed.
int History::joinOld(const Limits& limits, const QDateTime& now) {
    HistoryFile& file = recorder_.file();
    const std::optional<QDateTime> old = endOfOld(limits, now);
    int count = 0;
    if (!old || !file.hasDayToJoin(*old)) {
        return count;
    }
    for (const QList<Step>& day :
         daysToJoin(StepList(file.steps()), limits.least, file.position(), *old)) {
        QList<std::int64_t> steps;
        for (const Step& step : day) {
            steps << step.id;
        }
        HistoryFile::Transaction all(file);
        joinSteps(file, steps, joinedStep(day));
        all.commit();
        count += static_cast<int>(day.size()) - 1;
    }
    return count;
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
}

// The state behind a first step becomes the beginning.
void History::drop(const QList<Step>& steps) {
    HistoryFile& file = recorder_.file();
    HistoryFile::Transaction all(file);
    Position position = file.position();
    for (const Step& step : steps) {
        file.remove(step.id);
        file.replaceParent(step.id, step.parent);
        for (std::int64_t* place : {&position.head, &position.tip}) {
            *place = *place == step.id ? step.parent : *place;
        }
    }
    file.setPosition(position);
    all.commit();
}

// How much room a step takes in the file shows only when it is gone, so more may have to go.
int History::dropOldest(const Limits& limits) {
    HistoryFile& file = recorder_.file();
    const auto excess = [&] { return kept_.size() + file.size() - limits.bytes; };
    if (excess() <= 0) {
        return 0;
    }
    giveUpDoubles();
    dropUnneeded();
    int count = 0;
    for (std::int64_t tooMuch = excess(); tooMuch > 0; tooMuch = excess()) {
        const QList<Step> going = Departures(file, kept_, limits.least).gaining(tooMuch);
        if (going.isEmpty()) {
            break;
        }
        drop(going);
        dropUnneeded();
        count += static_cast<int>(going.size());
    }
    return count;
}

// What a command or a restoration under way has kept belongs to no step yet.
int History::thin(const Limits& limits, const QDateTime& now) {
    if (!exists() || recorder_.isAnyUnderWay() || isHalfRestored()) {
        return 0;
    }
    const int joined = joinOld(limits, now);
    if (joined > 0) {
        dropUnneeded();
    }
    const int dropped = dropOldest(limits);
    // Where the disk is full, or another program reads the file, the next exit tries again.
    ignoringErrors([&] { recorder_.file().shrinkIfWorthwhile(); });
    return joined + dropped;
}

// That a file was made from a kept content, and has not changed since, is no reason to keep it: the
// file itself has it.
void History::dropUnneeded() {
    HistoryFile& file = recorder_.file();
    QSet<QString> needed;
    for (const QStringList& contents : file.contentsOfSteps()) {
        needed.unite(QSet<QString>(contents.begin(), contents.end()));
    }
    file.forgetUnneeded();
    kept_.removeAllBut(needed);
}

} // namespace qvnd::history

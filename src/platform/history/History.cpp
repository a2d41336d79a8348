#include "platform/history/History.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/files/SafeReplace.h"
#include "platform/history/StepWords.h"

#include <algorithm>

namespace qvnd::history {

namespace {

// Follows one row from state to state, also when it gets another key.
class RowOnItsWay {
public:
    explicit RowOnItsWay(const Change& row) : row_(row), key_(row.key) {}

    // Over the changes of a step, or the last of them.
    void pass(const QList<Change>& changes, bool isTakenBack) {
        QList<Event> events;
        for (const Change& change : changes) {
            addEvents(events, change);
        }
        if (isTakenBack) {
            std::reverse(events.begin(), events.end());
            for (Event& event : events) {
                event.isComing = !event.isComing;
            }
        }
        for (const Event& event : events) {
            meet(event, events);
        }
    }
    std::optional<QString> key() const { return isThere_ ? std::optional(key_) : std::nullopt; }

private:
    // A row comes under a key, or goes.
    struct Event {
        bool isComing;
        QString key;
        QString name;
    };

    void addEvents(QList<Event>& events, const Change& change) const {
        using Kind = Change::Kind;
        if (change.database != row_.database || change.table != row_.table) {
            return;
        }
        if (change.kind == Kind::rowRemoved || change.kind == Kind::rowReplaced) {
            events << Event{false, change.key, nameBefore(change)};
        }
        if (change.kind == Kind::rowAdded || change.kind == Kind::rowReplaced) {
            events << Event{true, change.key, change.name};
        }
    }
    void meet(const Event& event, const QList<Event>& ofStep) {
        if (event.key != key_) {
            return;
        }
        if (!event.isComing && isThere_) {
            left_ = event.name;
            isThere_ = false;
            follow(ofStep);
        } else if (event.isComing && event.name == left_) {
            isThere_ = true;
        }
    }
    // A move takes the row away and brings it under another key.
    void follow(const QList<Event>& ofStep) {
        QStringList keys;
        for (const Event& event : ofStep) {
            if (event.isComing && event.name == left_) {
                keys << event.key;
            }
        }
        if (keys.size() == 1 && keys.first() != key_) {
            key_ = keys.first();
            isThere_ = true;
        }
    }

    const Change& row_;
    QString key_;
    bool isThere_ = true;
    QString left_; // its name as it went
};

// The file of the steps may turn out damaged where only a restoration reads it.
void goBy(Restoration& restoration, Recorder& recorder, std::int64_t target,
          const Question& mayLeaveOut) {
    try {
        restoration.goTo(target, mayLeaveOut);
    } catch (const RunTimeError& failure) {
        recorder.noteDamage(failure);
        throw;
    }
}

} // namespace

History::History(const QString& folder, const Places& places, jet::Workspace& workspace,
                 files::FileSystemObject& files, QString program)
    : folder_(files::withSeparator(folder)), workspace_(workspace), files_(files),
      program_(std::move(program)), kept_(folder_ + QStringLiteral("kept")),
      recorder_(folder_, places, kept_), restoration_(recorder_, kept_, files) {
    workspace_.Observe(&recorder_);
    files_.observe(&recorder_);
    word::observeWrites(&recorder_);
}

History::~History() {
    workspace_.Observe(nullptr);
    files_.observe(nullptr);
    word::observeWrites(nullptr);
}

void History::Found::add(const Found& later) {
    unfinished = later.unfinished ? later.unfinished : unfinished;
    unfinishedBefore = later.unfinished ? later.unfinishedBefore : unfinishedBefore;
    restored = restored || later.restored;
    exitKilled = exitKilled || later.exitKilled;
    note += (note.isEmpty() || later.note.isEmpty() ? QString() : QString(u'\n')) + later.note;
}

History::Found History::mend(const Question& mayLeaveOut) {
    try {
        return mendAll(mayLeaveOut);
    } catch (const RunTimeError& failure) {
        recorder_.noteDamage(failure);
        throw;
    }
}

History::Found History::mendAll(const Question& mayLeaveOut) {
    Found found;
    if (!exists()) {
        return found;
    }
    found.restored = restoration_.carryOn(mayLeaveOut);
    found.note = found.restored ? restoration_.note() : QString();
    try {
        mendKilled(found, mayLeaveOut);
        addUntold(found);
    } catch (const RunTimeError&) { // the next call tries again
        recorder_.leave();
        throw;
    }
    return found;
}

// Nobody has asked for what a start or an exit does, and the next one does it again. What cannot be
// taken back from here stays, as a step.
void History::mendKilled(Found& found, const Question& mayLeaveOut) {
    if (!recorder_.findKilled(mayLeaveOut)) {
        return;
    }
    const QString caption = recorder_.running().frame().caption;
    if (caption::isAutomatic(caption) && recorder_.outOfReach().isEmpty()) {
        restoration_.takeBackKilled();
        found.add({{}, {}, false, caption == caption::exit, restoration_.note()});
    } else {
        recorder_.finishKilled();
    }
}

// Also those that a start has found which was killed before it could tell.
void History::addUntold(Found& found) {
    for (const std::int64_t id : recorder_.file().untold()) {
        if (found.unfinished) {
            found.unfinishedBefore << found.unfinished->title;
        }
        found.unfinished = recorder_.file().step(id);
    }
}

void History::told() {
    ignoringErrors([this] { // else they are told once more
        if (exists()) {
            recorder_.file().setTold();
        }
    });
}

// Behind a restoration that could not be ended, nothing may be changed: it will be carried on.
bool History::isHalfRestored() {
    bool isHalf = false;
    ignoringErrors([&] { isHalf = exists() && recorder_.file().pending(); });
    return isHalf;
}

History::Found History::begin(const CommandFrame& frame) {
    workspace_.Settle();
    CommandFrame begun = frame;
    leaveOut_ = frame.leaveOut;
    atBegin_ = {};
    unmended_.reset();
    QString reason;
    try {
        atBegin_ = mend();
    } catch (const RunTimeError& failure) {
        unmended_ = failure;
        reason = QString::fromStdU16String(failure.description());
        if (isHalfRestored()) {
            begun.goOnWithout = nullptr;
        }
    }
    recorder_.begin(begun, program_, reason);
    return atBegin_;
}

// A command that cannot be recorded whole is taken back whole.
History::Outcome History::finish(const QString& selectedAfter) {
    Outcome outcome;
    leaveOut_ = {};
    try {
        workspace_.Settle();
        outcome.refusal = recorder_.refusal();
        if (outcome.refusal.isEmpty()) {
            outcome.step = recorder_.finish(selectedAfter);
            const bool isTold = outcome.step && !outcome.step->isMinor;
            outcome.note = isTold ? QString() : recorder_.metNote();
            return outcome;
        }
    } catch (const RunTimeError& failure) {
        recorder_.noteDamage(failure);
        outcome.refusal = QString::fromStdU16String(failure.description());
    }
    try {
        recorder_.running().hasBegun() ? restoration_.takeBack() : recorder_.drop();
    } catch (const RunTimeError& failure) {
        outcome.refusal += u'\n' + QString::fromStdU16String(failure.description());
        outcome.stands = true;
        recorder_.leave();
    }
    outcome.mayGoOnWithout = !outcome.stands && !recorder_.hasAsked() && !isHalfRestored();
    return outcome;
}

std::optional<Step> History::undoable() {
    if (!exists()) {
        return std::nullopt;
    }
    std::optional<Step> step = recorder_.file().step(head());
    while (step && step->isMinor) {
        step = recorder_.file().step(step->parent);
    }
    return step;
}

std::optional<History::Fork> History::fork() {
    HistoryFile& file = recorder_.file();
    const Position position = file.position();
    Fork fork{position.head, {}};
    while (!restoration_.isAbove(fork.at, position.tip)) {
        const std::optional<Step> step = file.step(fork.at);
        if (!step || (!step->isMinor && !step->isAutomatic())) {
            return std::nullopt;
        }
        if (!step->isMinor) {
            fork.titles.prepend(step->title);
        }
        fork.at = step->parent;
    }
    return fork;
}

std::optional<Step> History::redoable() {
    if (!exists()) {
        return std::nullopt;
    }
    const std::optional<Fork> branch = fork();
    std::optional<Step> next;
    for (std::int64_t at = recorder_.file().position().tip; branch && at != branch->at;) {
        const std::optional<Step> step = recorder_.file().step(at);
        if (!step) {
            return std::nullopt;
        }
        if (!step->isMinor) {
            next = step;
        }
        at = step->parent;
    }
    return next;
}

bool History::isJustRestored() {
    workspace_.Settle();
    if (!recorder_.isUnderWay()) {
        return mend().restored;
    }
    if (unmended_) {
        throw *unmended_;
    }
    return atBegin_.restored;
}

std::optional<Step> History::undo() {
    if (isJustRestored()) {
        return std::nullopt;
    }
    std::optional<Step> step = undoable();
    if (step) {
        goBy(restoration_, recorder_, step->parent, leaveOut_);
    }
    return step;
}

std::optional<Step> History::redo() {
    if (isJustRestored()) {
        return std::nullopt;
    }
    std::optional<Step> step = redoable();
    if (step) {
        const QStringList along = fork().value_or(Fork{}).titles;
        goBy(restoration_, recorder_, step->id, leaveOut_);
        if (!along.isEmpty()) {
            restoration_.addNote(goneAlongNote(along));
        }
    }
    return step;
}

void History::goTo(std::int64_t step) {
    if (step != beginning && (!exists() || !recorder_.file().step(step))) {
        throw RunTimeError(error::invalidCall,
                           QStringLiteral("操作历史中没有第 %1 步。").arg(step).toStdU16String());
    }
    if (exists()) {
        isJustRestored();
        goBy(restoration_, recorder_, step, leaveOut_);
    }
}

QList<Step> History::steps() { return exists() ? recorder_.file().steps() : QList<Step>(); }

QList<Step> History::stepsWith(const QString& text) {
    return exists() ? recorder_.file().stepsWith(text) : QList<Step>();
}

std::optional<Step> History::step(std::int64_t id) {
    return exists() ? recorder_.file().step(id) : std::nullopt;
}

QList<Change> History::changesOf(std::int64_t step) {
    return exists() ? recorder_.file().changesOf(step) : QList<Change>();
}

std::int64_t History::head() { return exists() ? recorder_.file().position().head : beginning; }

QString History::contentBefore(std::int64_t id, const QString& file) {
    const std::optional<Step> wanted = step(id);
    if (!wanted) {
        return {};
    }
    // What came from outside stood there alone on the branch of this step.
    if (QString replaced = restoration_.replacedBy(id, spelt(file)); !replaced.isEmpty()) {
        return replaced;
    }
    const bool isOutside = wanted->kind == StepKind::outside;
    return restoration_.fileAt(isOutside ? id : wanted->parent, spelt(file));
}

std::optional<QString> History::keyNow(std::int64_t id, const Change& change) {
    const Restoration::Way way = restoration_.wayTo(id);
    RowOnItsWay row(change);
    const QList<Change> ofStep = changesOf(id);
    row.pass(ofStep.mid(ofStep.indexOf(change) + 1), false);
    std::for_each(way.down.rbegin(), way.down.rend(),
                  [&](std::int64_t step) { row.pass(changesOf(step), true); });
    std::for_each(way.up.rbegin(), way.up.rend(),
                  [&](std::int64_t step) { row.pass(changesOf(step), false); });
    return row.key();
}

QList<jet::ImageTables::Row> History::rowsBefore(std::int64_t id, const QString& database,
                                                 const QString& table) {
    const std::optional<Step> wanted = step(id);
    return wanted ? jet::ImageTables(restoration_.imageAt(wanted->parent, spelt(database)))
                        .rowsOf(table)
                        .values()
                  : QList<jet::ImageTables::Row>();
}

void History::takeOut(std::int64_t id, const QString& file, const QString& target) {
    const QString content = contentBefore(id, file);
    if (content.isEmpty()) {
        throw RunTimeError(
            error::fileNotFound,
            QStringLiteral("操作历史没有保留『%1』的内容。").arg(file).toStdU16String());
    }
    recorder_.covers(target) ? files_.CopyFile(content, target, true)
                             : files::copyWhole(content, target);
}

} // namespace qvnd::history

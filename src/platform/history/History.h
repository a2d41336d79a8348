#pragma once

#include "platform/files/FileSystemObject.h"
#include "platform/history/Recorder.h"
#include "platform/history/Restoration.h"
#include "platform/history/Step.h"
#include "platform/jet/Workspace.h"
#include "platform/jet/file/Image.h"

#include <chrono>
#include <optional>

namespace qvnd::history {

// How much is kept. Steps that are older than `whole` are joined to one a day, once exits of the
// program on so many days have found them so old: a clock may be wrong for a while. When the kept
// contents take more than `bytes`, the oldest go. The newest `least` steps stay in any case.
struct Limits {
    std::chrono::days whole{30};
    std::int64_t bytes = std::int64_t{2} << 30;
    int least = 50;
    int exits = 3;
};

// The history of the work space: every command that changes something, and the way back. It is the
// one object of its kind in a process, and used while the work space's turn is held.
//
// Errors are RunTimeError; after one nothing is lost, and the work space has the state before the
// call or, at the next start at the latest, the one behind it.
class History {
public:
    // `folder` need not exist; nothing is written before the first change. `program` is named in
    // the steps. Both services outlive the object.
    History(const QString& folder, const Places& places, jet::Workspace& workspace,
            files::FileSystemObject& files, QString program);
    ~History();
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    // What an earlier run, or another program that was killed meanwhile, has left behind; mended by
    // this call.
    struct Found {
        // The last command that was killed, now a step, and the titles of earlier ones. They are
        // found again by every call, until told() says that the user has read of them.
        std::optional<Step> unfinished;
        QStringList unfinishedBefore;
        bool restored = false; // a restoration was brought to its end
        // The program was killed while it ended. What it was about to do by itself has been taken
        // back, as that of a killed start is; the user's commands were all over.
        bool exitKilled = false;
        QString note; // what the mending did beyond that

        // Adds what was found later.
        void add(const Found& later);
    };
    // Where that is about files out of reach the user is asked whether to leave them out; error 76
    // when not.
    Found mend(const Question& mayLeaveOut = {});
    // The user has been told of all killed commands.
    void told();
    // Whether the file of the steps could not be read at some place, in this run or an earlier one.
    bool isDamaged() const { return recorder_.isDamaged(); }
    // Moves all that there is into a folder beside it, which is answered, and begins anew; nothing
    // is deleted. Meant for a damaged one, while the turn is held. Error 75.
    QString layAside(const QDateTime& now) { return recorder_.layAside(now); }

    // A command begins; what it changes is recorded until `finish`. What has been left behind is
    // mended before, and told; if it cannot be, changes are refused. Where the first change cannot
    // be recorded the frame's goOnWithout is asked.
    Found begin(const CommandFrame& frame);
    struct Outcome {
        std::optional<Step> step; // null when nothing was changed, or nothing lasts
        // That the command met changes from outside, which are steps of their own now, where the
        // user reads of no step of it that would tell so.
        QString note;
        // Why a change was refused or the command taken back; empty when neither was.
        QString refusal;
        // Taking it back has failed too: what it did stands, some of it perhaps, until the next
        // command or start makes a step of it.
        bool stands = false;
        // The user may be asked whether to go on without the history, and was not yet.
        bool mayGoOnWithout = false;
    };
    Outcome finish(const QString& selectedAfter);
    bool isUnderWay() const { return recorder_.isUnderWay(); }
    // Commands go on without being recorded until the program ends.
    void goOnWithout() { recorder_.stop(); }

    // The command that 撤消, or 恢复, would take; null when there is none. What the program has
    // done by itself since an undo does not end what 恢复 offers.
    std::optional<Step> undoable();
    std::optional<Step> redoable();
    // Take it; null when there is none, and when a restoration that had been left half done was
    // brought to its end just before, by the begin of this command or by the call: the user has not
    // seen yet which state that led to. Errors as Restoration::goTo, and as mend where something
    // left behind cannot be mended: then nothing is done.
    std::optional<Step> undo();
    std::optional<Step> redo();
    // To the state behind a step, or to the beginning. Errors as those, and 5 for a step that is
    // not there. All three ask the frame's leaveOut about files that are out of reach.
    void goTo(std::int64_t step);
    // What the last of these did beyond what was asked, in sentences for the user: changes from
    // outside that it has kept as steps of their own, steps that went back with it, files whose
    // content the history has not. Empty for nothing.
    const QString& note() const { return restoration_.note(); }

    // Oldest first.
    QList<Step> steps();
    // Of which a name or the title bears the text.
    QList<Step> stepsWith(const QString& text);
    std::optional<Step> step(std::int64_t id);
    // Without those of the bookkeeping: which plan is open, and the scratch table.
    QList<Change> changesOf(std::int64_t step);
    std::int64_t head();

    // A file that has the content which `file` had before the step, and of a step that keeps what
    // came from outside, that: one of the history's own, or `file` itself where no step has changed
    // it since. Empty when there was none.
    QString contentBefore(std::int64_t step, const QString& file);
    // The key that the row which a change of the step is about has in the present state: its own,
    // or the one to which it was moved. Null when it has gone since, or another one has taken its
    // place. One that came back under its name counts as the same. A change that is none of the
    // step's stands for its row before the step.
    std::optional<QString> keyNow(std::int64_t step, const Change& change);
    // The rows of a table as they were before the step, in the order of their numbers.
    QList<jet::ImageTables::Row> rowsBefore(std::int64_t step, const QString& database,
                                            const QString& table);
    // Puts the content that a file had before the step at `target`, which is replaced: a change as
    // any other of the command under way, but outside of the covered folders, where it is none of
    // the history's. Error 53 when there was none.
    void takeOut(std::int64_t step, const QString& file, const QString& target);

    // Thins by the limits, as far as no state that remains is built on what goes; returns how many
    // steps went. It is an exit of the program at that time. Does nothing while a command or a
    // restoration is under way, in whatever program.
    int thin(const Limits& limits, const QDateTime& now);

private:
    // Where the branch of 恢复 leaves the way back from the head, and what was done on that way.
    struct Fork {
        std::int64_t at = beginning;
        QStringList titles;
    };

    bool exists() const { return recorder_.isThere(); }
    // What is left behind is mended, if the command's begin has not done so. True when a
    // restoration was brought to its end. Errors as mend.
    bool isJustRestored();
    void addUntold(Found& found);
    // Null when a command of the user has ended the branch.
    std::optional<Fork> fork();
    void mendKilled(Found& found, const Question& mayLeaveOut);
    Found mendAll(const Question& mayLeaveOut);
    bool isHalfRestored();
    // Steps from before that time are old; null while there were too few exits to tell.
    std::optional<QDateTime> endOfOld(const Limits& limits, const QDateTime& now);
    // Both answer how many steps went.
    int joinOld(const Limits& limits, const QDateTime& now);
    int dropOldest(const Limits& limits);
    void giveUpDoubles();
    // In an order in which nothing that stays is built on them.
    void drop(const QList<Step>& steps);
    // Takes away kept contents that no step needs any more.
    void dropUnneeded();

    QString folder_;
    jet::Workspace& workspace_;
    files::FileSystemObject& files_;
    QString program_;
    KeptFiles kept_;
    Recorder recorder_;
    Restoration restoration_;
    Question leaveOut_;                    // of the command under way
    Found atBegin_;                        // what its begin has found
    std::optional<RunTimeError> unmended_; // why it could not mend
};

} // namespace qvnd::history

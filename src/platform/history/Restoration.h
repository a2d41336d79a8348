#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/files/FileSystemObject.h"
#include "platform/history/Recorder.h"

#include <QSet>

#include <functional>

namespace qvnd::history {

// Brings the work space to the state behind a step, over the tree of steps. However it ends, the
// work space has either state whole, or the next start gives it the new one. What came from outside
// is kept as a step before it is replaced.
class Restoration {
public:
    // All outlive the object.
    Restoration(Recorder& recorder, KeptFiles& kept, files::FileSystemObject& files)
        : recorder_(recorder), kept_(kept), files_(files) {}

    // Goes to the state. 恢复 follows the branch as before where the state lies on it, and ends
    // there else. Files whose content the history no longer has stay as they are; the note names
    // them. So do files that belong to another machine, or to a program folder that is gone, where
    // the user wants to leave them out; where one comes within reach again it counts as changed
    // from outside. Errors: 70 when a document that would be replaced is open in another program,
    // 76 when something is not left out that is out of reach; those of files and store pass
    // through. The work space then has the state before.
    void goTo(std::int64_t target, const Question& mayLeaveOut = {});
    // Ends a restoration that could be neither ended nor given up, such as one whose process was
    // killed. False when there is none. Errors as goTo, but the work space stays half restored; it
    // then can be called again.
    bool carryOn(const Question& mayLeaveOut = {});
    // Takes back what the command under way has changed so far, which then is no step. Error 70
    // when something of it cannot be taken away, and those of files and store.
    void takeBack();
    // The same for a start or an exit that was killed. A database or file that is neither as it was
    // before nor as the command made it has come from outside meanwhile: it stays, as a step.
    void takeBackKilled();
    // What the last of these and of goTo did beyond what was asked, in sentences for the user.
    const QString& note() const { return note_; }
    void addNote(const QString& sentence);
    // The file that has what stood at the path before a step, where the step has replaced it: the
    // path itself where that stands there again.
    QString replacedBy(std::int64_t step, const QString& path);
    // The file that has what stood at the path behind a step: a kept one, or the path itself where
    // nothing has changed it since. Empty when no file stood there.
    QString fileAt(std::int64_t step, const QString& path);
    // The image of a database behind a step; empty when there was none.
    QByteArray imageAt(std::int64_t step, const QString& database);
    // Whether `one` is `other` or a state on the way to it.
    bool isAbove(std::int64_t one, std::int64_t other);
    // From the present state to the one behind a step.
    struct Way {
        QList<std::int64_t> up;   // steps to be taken back, newest first
        QList<std::int64_t> down; // steps to be done again, oldest first
    };
    Way wayTo(std::int64_t target);

private:
    Way wayBetween(std::int64_t from, std::int64_t to);
    struct Goal {
        QMap<QString, QString> files; // contents by path
        QMap<QString, QString> stood; // the same, in the state from which the way leads
        QStringList databases;
        QStringList outOfReach; // files and databases that are neither
    };

    struct Plan {
        QList<PendingFile> files; // in the order in which they go and come
        QStringList lost;         // names of those whose content the history has no more
    };

    Goal goalOf(const Way& way);
    QMap<QString, QByteArray> imagesAt(const Way& way);
    void leaveOut(const Goal& goal, const Question& mayLeaveOut);
    void refuseOpen(const QList<PendingFile>& files);
    QStringList changedOutside(const Goal& goal);
    bool isOfNoStep(const QString& path, const QString& content, const Goal& goal) const;
    void keepOutside(const QStringList& databases, const QStringList& files);
    bool hasComeMeanwhile(const PendingFile& file);
    void keepWhatCameMeanwhile(const Pending& pending);
    bool hasComeBehind(const QString& path, const Touched& touched);
    Plan planned(const Goal& goal, std::int64_t number);
    void refuse(const Goal& goal, const Question& mayLeaveOut);
    Pending begin(std::int64_t target);
    // The same error, with its description in the sentence.
    [[noreturn]] static void failWith(const RunTimeError& failure, const QString& sentence);
    void end(const Pending& pending);
    static void carryOut(const QMap<QString, QByteArray>& images,
                         const std::function<void()>& files);
    bool isLost(const PendingFile& file) const;
    void perform(const PendingFile& file);
    void leaveAsItIs(const PendingFile& file);
    void takeAway(const QString& path);
    void noteDatabase(const QString& path, const QByteArray& image);
    static void removeUnfinished(const Pending& pending);
    void giveUp();
    bool isHalfDone();
    void revert(const PendingFile& file);
    void takeBackAllBut(const QSet<QString>& staying);
    void takeBack(const PendingFile& file);

    Recorder& recorder_;
    KeptFiles& kept_;
    files::FileSystemObject& files_;
    QString note_;
};

} // namespace qvnd::history

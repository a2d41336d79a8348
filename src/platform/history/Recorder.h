#pragma once

#include "platform/error/RunTimeError.h"
#include "platform/files/ChangeObserver.h"
#include "platform/history/HistoryFile.h"
#include "platform/history/RunningCommand.h"
#include "platform/jet/ChangeObserver.h"
#include "platform/word/docfile/container/WriteObserver.h"

#include <QMap>
#include <QSet>

#include <memory>

namespace qvnd::history {

// Sees every change that a command makes and keeps what goes; at the command's end makes a step of
// it. Outside a command it lets changes pass unseen, and databases and saved documents that lie in
// none of the covered folders; a file that a command itself replaces or deletes counts everywhere.
class Recorder : public jet::ChangeObserver,
                 public files::ChangeObserver,
                 public word::WriteObserver {
public:
    // `folder` is the history's own, `file` the one in it; both outlive the recorder.
    Recorder(const QString& folder, const Places& places, KeptFiles& kept);

    // Whether the file lies in one of the covered folders.
    bool covers(const QString& file) const { return places_.hasIn(spelt(file)); }
    // Whether there is a history: without one, nothing has been recorded yet.
    bool isThere() const;
    // The history file, opened or made at the first call. Errors as HistoryFile.
    HistoryFile& file();

    // See History.
    bool isDamaged() const;
    QString layAside(const QDateTime& now);
    // Takes down that the file is damaged, if that is why something failed: the next start need not
    // come upon the place.
    void noteDamage(const RunTimeError& failure);

    // Changes are recorded from now on as those of one command. With a reason all are refused, with
    // these words, unless the frame's goOnWithout says otherwise.
    void begin(const CommandFrame& frame, const QString& program, const QString& reason = {});
    // Ends it; null when nothing was changed. Errors leave the command as begun.
    std::optional<Step> finish(const QString& selectedAfter);
    // What the command has met of changes from outside, in a sentence for the user; empty for none.
    QString metNote() const;
    bool isUnderWay() const { return frame_.has_value(); }
    // Whether a command has begun to change things, here or in another program, or was killed then.
    bool isAnyUnderWay() const;
    // The command under way, as far as it has changed anything; its files tell what was before.
    RunningCommand& running() { return running_; }
    // Forgets the command under way without a step.
    void drop();
    // Lets the command under way stand as it is; the next start finds it as a killed one.
    void leave();
    // Why a change of the command under way was refused; empty when none was.
    const QString& refusal() const { return refusal_; }
    // Whether the frame's goOnWithout was asked.
    bool hasAsked() const { return hasAsked_; }
    // The number of the next step, or of the contents that a restoration takes away. Called in a
    // transaction of the file, which takes the number with it.
    std::int64_t nextNumber();
    // From now on nothing is recorded or refused, until the program ends.
    void stop() { isStopped_ = true; }

    // The step that keeps files which another program has changed; it changes nothing itself.
    Step recordOutside(const QStringList& files);
    // Makes a command that was killed the one under way; false when none was. Error 76 when it was
    // at files that are out of reach here, and they may not be left out.
    bool findKilled(const Question& mayLeaveOut);
    // The paths that the command under way has touched and that are out of reach; see Places.h.
    QStringList outOfReach() const;
    // Its step; null when it has changed nothing.
    std::optional<Step> finishKilled();
    enum class Look {
        stamps, // a file of the same size, time and counter of changes is not read
        whole,
    };
    // A database that another program has changed since our last change becomes a step, which is
    // answered; null when none has.
    std::optional<Step> seeOutside(const QString& database, Look look);

    void BeforeChange(const QString& path) override;
    void BeforeCreation(const QString& path) override;
    void BeforeCommit(const std::function<QByteArray()>& image) override;
    void AfterChange(const QString& path, const QString& table) override;
    void beforeReplacing(const QString& file) override;
    void beforeEditing(const QString& file) override;
    void beforeMakingFolder(const QString& folder) override;
    bool takeFolder(const QString& folder) override;
    void beforeMovingFolder(const QString& from, const QString& to) override;
    void beforeReplacing(const std::filesystem::path& file) override;
    void beforeEditing(const std::filesystem::path& file) override;

private:
    enum class Keeping { link, copy };

    bool isRecording() const { return frame_ && !isStopped_; }
    template <typename Action>
    void refusing(Action&& action);
    bool goesOnWithout();
    std::int64_t takeNumber();
    std::int64_t numberOfCommand();
    void ensureBegun();
    void touchDatabase(const QString& path);
    void touchFile(const QString& path, Keeping keeping);
    void keepFile(const QString& path, Keeping keeping);
    void touchMoved(const QString& path, const QString& target);
    void touchTree(const QString& folder, const QString& content);
    void addDatabases(Step& step, QList<Change>& changes, QList<DatabaseChange>& found);
    void addFiles(QList<Change>& changes, QList<FileChange>& found);
    std::optional<Step> finishAs(StepKind kind, const QString& selectedAfter);
    QString noteOn(const QList<Change>& changes) const;
    std::optional<Step> makeStep(StepKind kind, const QString& selectedAfter);
    void removeJournals() const;
    bool isStart() const;
    std::optional<Step> killedBefore(const Position& position);
    std::optional<Step> killedBehind(const Step& outside, const Position& position,
                                     const QList<FileChange>& files,
                                     const QList<DatabaseChange>& databases);
    Step record(const Step& step, const QList<Change>& changes, const QList<FileChange>& files,
                const QList<DatabaseChange>& databases);

    QString folder_;
    Places places_;
    KeptFiles& kept_;
    std::unique_ptr<HistoryFile> file_;
    // The greatest number among the contents at its opening, and of the commands since.
    std::int64_t lastKept_ = beginning;
    std::optional<CommandFrame> frame_;
    QString program_;
    RunningCommand running_;
    QMap<QString, QString> spellings_;    // of databases, by the paths they were opened under
    QMap<QString, QSet<QString>> tables_; // that were changed, by database
    QStringList met_;                     // titles of the steps that keep what came from outside
    QString reason_;                      // to refuse every change of the command
    QString refusal_;
    bool hasAsked_ = false;
    bool isStopped_ = false;
};

} // namespace qvnd::history

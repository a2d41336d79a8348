#pragma once

#include "platform/history/Recorder.h"

namespace qvnd::history {

// Brings the work space to the state behind a step, over the tree of steps. However it ends, the
// work space has either state whole, or the next start gives it the new one.
class Restoration {
public:
    Restoration(Recorder& recorder, KeptFiles& kept) : recorder_(recorder), kept_(kept) {}

    // Goes to the state. 恢复 follows the branch as before where the state lies on it, and ends
    // there else. Errors of files and store pass through; the next start then goes on.
    void goTo(std::int64_t target);
    // Ends a restoration that the process did not live to end. False when there is none.
    bool carryOnKilled();
    // Takes back what the command under way has changed so far, which then is no step.
    void takeBack();

private:
    struct Way {
        QList<std::int64_t> up;   // steps to be taken back, newest first
        QList<std::int64_t> down; // steps to be done again, oldest first
    };
    struct Goal {
        QMap<QString, QString> files; // contents by path
        QStringList databases;
    };

    Way wayTo(std::int64_t target);
    Goal goalOf(const Way& way);
    QByteArray imageAt(const QString& database, const Way& way);
    QStringList changedOutside(const Goal& goal);
    QList<PendingFile> planned(const Goal& goal, std::int64_t number);
    // Whether `one` is `other` or a state on the way to it.
    bool isAbove(std::int64_t one, std::int64_t other);
    void carryOut(const QList<PendingFile>& files, const QMap<QString, QByteArray>& images);
    void perform(const PendingFile& file);
    bool carryOn();

    Recorder& recorder_;
    KeptFiles& kept_;
};

} // namespace qvnd::history

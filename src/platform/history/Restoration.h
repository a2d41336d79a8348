#pragma once

#include "platform/files/FileSystemObject.h"
#include "platform/history/Recorder.h"

#include <QDateTime>

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
    // them. Errors: 70 when a document that would be replaced is open in another program, 76 when a
    // file belongs to another machine or to a program folder that is gone; those of files and store
    // pass through. The work space then has the state before.
    void goTo(std::int64_t target);
    // Ends a restoration that could be neither ended nor given up, such as one whose process was
    // killed. False when there is none. Errors as goTo; it then can be called again.
    bool carryOn();
    // What the last of the two did beyond what was asked, in sentences for the user.
    const QString& note() const { return note_; }
    void addNote(const QString& sentence);
    // Takes back what the command under way has changed so far, which then is no step.
    void takeBack();
    // The file that has what stood at the path behind a step: a kept one, or the path itself where
    // nothing has changed it since. Empty when no file stood there.
    QString fileAt(std::int64_t step, const QString& path);
    // The image of a database behind a step; empty when there was none.
    QByteArray imageAt(std::int64_t step, const QString& database);
    // Whether `one` is `other` or a state on the way to it.
    bool isAbove(std::int64_t one, std::int64_t other);

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
    QByteArray imageOn(const Way& way, const QString& database);
    QMap<QString, QByteArray> imagesAt(const Way& way);
    static void refuseElsewhere(const Goal& goal);
    void refuseOpen(const QList<PendingFile>& files);
    QStringList changedOutside(const Goal& goal);
    void keepOutside(const QStringList& databases, const QStringList& files);
    bool hasComeMeanwhile(const PendingFile& file);
    void keepWhatCameMeanwhile(std::int64_t target);
    QList<PendingFile> planned(const Goal& goal, std::int64_t number);
    void end(std::int64_t target);
    static void carryOut(const QMap<QString, QByteArray>& images,
                         const std::function<void()>& files);
    void perform(const PendingFile& file);
    void giveUp();
    void revert(const PendingFile& file);
    void takeBack(const PendingFile& file);

    Recorder& recorder_;
    KeptFiles& kept_;
    files::FileSystemObject& files_;
    QString note_;
    QDateTime began_; // when the restoration under way did
};

} // namespace qvnd::history

#pragma once

#include "platform/history/KeptFiles.h"
#include "platform/history/Places.h"
#include "platform/history/Step.h"
#include "platform/jet/file/Connection.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

namespace qvnd::history {

// Where the work space stands in the tree of steps.
struct Position {
    std::int64_t head = beginning; // the state that the work space has
    std::int64_t tip = beginning;  // the end of the branch that 恢复 follows
    std::int64_t last = beginning; // the greatest number that a step has had
};

// What a step changed of one path: the contents before and after it, see KeptFiles.h.
struct FileChange {
    QString path;
    QString before;
    QString after;
};

// What a step changed of one database.
struct DatabaseChange {
    QString path;
    QByteArray delta; // see PageDelta.h
};

// A file as we left it.
struct Present {
    Stamp stamp;
    QString content; // that it was made from; content::onDisk for none
};

// One file of a restoration under way.
struct PendingFile {
    QString path;
    QString keep; // where what stands at the path goes first; empty when it need not be kept
    QString put;  // what then comes there
};

// A restoration under way: what brings the work space to the state behind a step.
struct Pending {
    std::int64_t target = beginning;
    QDateTime began; // null where a version of the program that did not note it has begun it
    QList<PendingFile> files;
};

// history.db. Each call is a transaction of its own unless a Transaction spans it. Errors are those
// of the store (platform/jet).
class HistoryFile {
public:
    // Opens the file or makes it.
    HistoryFile(const QString& path, Places places);

    // All calls while it lives take effect at commit, or not at all.
    class Transaction {
    public:
        explicit Transaction(HistoryFile& file);
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        HistoryFile& file_;
        bool done_ = false;
    };

    Position position();
    void setPosition(const Position& position);

    void add(const Step& step, const QList<Change>& changes);
    void addChange(std::int64_t step, const FileChange& change);
    void addChange(std::int64_t step, const DatabaseChange& change);
    std::optional<Step> step(std::int64_t id);
    // By number.
    QList<Step> steps();
    // Whether before that time a step of a command, or of the program itself, follows another one
    // of its day. Most exits need not read the steps for that.
    bool hasDayToJoin(const QDateTime& before);
    // Those of which a change bears the text in its name, or whose title does, oldest first. A step
    // that a command has met on its way has the greater number, and lies before it.
    QList<Step> stepsWith(const QString& text);
    QList<Change> changesOf(std::int64_t step);
    QList<FileChange> filesOf(std::int64_t step);
    QList<DatabaseChange> databasesOf(std::int64_t step);
    // Of those that the step has changed, without reading what.
    QStringList databaseNamesOf(std::int64_t step);
    // By step.
    QMap<std::int64_t, FileChange> changesOfFile(const QString& path);
    // The contents that steps say are on disk alone are kept from now on.
    void contentOnDiskIsKept(const QString& path, const QString& content);
    void remove(std::int64_t step);
    // The beginning for a step that is not there.
    std::int64_t parentOf(std::int64_t step);
    bool hasChildren(std::int64_t step);
    // The step's children become children of its parent.
    void replaceParent(std::int64_t parent, std::int64_t by);
    void setParent(std::int64_t step, std::int64_t parent);
    // The kept contents that each step needs; one may be there more than once.
    QHash<std::int64_t, QStringList> contentsOfSteps();
    // The bytes that each step takes here, about.
    QHash<std::int64_t, std::int64_t> sizesOfSteps();
    // No file counts as made from a content any more that no step needs.
    void forgetUnneeded();
    // The files that were put at their paths from kept contents, by path.
    QMap<QString, Present> presentOfKept();
    // The content need not be kept for the steps any more: it stands at the path. Those that keep
    // what came from outside keep it themselves.
    void contentIsOnDiskAlone(const QString& path, const QString& content);

    // The image of a database as the last step left it; empty when none is known.
    QByteArray mirror(const QString& path);
    bool hasMirror(const QString& path);
    void setMirror(const QString& path, const QByteArray& before, const QByteArray& after);

    std::optional<Present> present(const QString& path);
    void setPresent(const QString& path, const Present& present);

    // The restoration under way.
    std::optional<Pending> pending();
    void setPending(const Pending& pending);
    void clearPending();

    // Of the commands that were killed: those that the user has not been told of, oldest first, and
    // whether no start has come to its end behind one.
    void addKilled(std::int64_t step);
    QList<std::int64_t> untold();
    bool awaitsStart(std::int64_t step);
    // Of all of them.
    void setTold();
    void setStarted();
    // The step has another number now.
    void renumberKilled(std::int64_t step, std::int64_t now);

    // The days on which the program has ended: notes one, and the last so many that were noted.
    void addExit(const QDate& day);
    QList<QDate> exits(int most);

    // Reads all of it.
    bool isSound();
    // Bytes of the file that are in use; removed steps give theirs free at once.
    std::int64_t size();
    // Gives the room of removed steps back to the disk where that is a quarter of the file, and no
    // trifle; what is less is used again. Needs as much meanwhile as is in use.
    void shrinkIfWorthwhile();

private:
    void arrange();
    // Ready to run; whoever reads rows resets it behind the last.
    jet::Statement& prepared(const QByteArray& sql);
    void run(const QByteArray& sql, const QStringList& values);

    Places places_;
    jet::Connection sql_;
    QMap<QString, QByteArray> images_; // of mirrors, by the path
    std::int64_t imagesOf_ = -1;       // the data version that they were read at
};

} // namespace qvnd::history

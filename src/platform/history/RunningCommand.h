#pragma once

#include "platform/history/KeptFiles.h"
#include "platform/history/Places.h"
#include "platform/history/Step.h"

#include <QFile>
#include <QMap>
#include <QSet>

#include <cstdint>
#include <optional>

namespace qvnd::history {

// What of a path a command has touched.
struct Touched {
    enum class Kind { file, folder, database };
    Kind kind = Kind::file;
    // What stood there before the command, see KeptFiles.h; a database's state is in the mirror.
    QString before;
};

// The command under way: what it has touched so far. Each entry is written to a file before the
// change that it is about, so that a command whose process was killed is known at the next start,
// also when the folders were moved meanwhile.
class RunningCommand {
public:
    // Its file in the history's folder.
    static QString fileIn(const QString& folder) { return folder + QStringLiteral("running"); }

    // `file` is where the entries stand; it exists as long as the command runs.
    RunningCommand(const QString& file, Places places);

    // Reads what a killed process has left; an entry that was not written whole is left out.
    static std::optional<RunningCommand> left(const QString& file, const Places& places);

    // The first entry: what command it is. Error 75 when it cannot be written.
    void begin(std::int64_t step, const CommandFrame& frame, const QString& program);
    bool hasBegun() const { return step_ != beginning; }
    // Notes the path before its first change; later calls for it do nothing. Error 75.
    void touch(const QString& path, Touched::Kind kind, const QString& before);
    bool hasTouched(const QString& path) const { return touched_.contains(path); }
    // Notes what a database holds behind a transaction, before this is committed. Error 75.
    void willCommit(const QByteArray& digest);
    // Whether a database with that digest is one that the command has made.
    bool hasCommitted(const QByteArray& digest) const { return committed_.contains(digest); }
    // The name of the next content to be kept.
    QString nextContent();

    const QMap<QString, Touched>& touched() const { return touched_; }
    std::int64_t step() const { return step_; }
    const CommandFrame& frame() const { return frame_; }
    const QDateTime& time() const { return time_; }
    const QString& program() const { return program_; }

    // Takes the file away: the command is over.
    void end();

private:
    void write(const QStringList& fields);
    void read(const QStringList& fields);

    QString path_;
    Places places_;
    std::unique_ptr<QFile> file_;
    std::int64_t step_ = beginning;
    CommandFrame frame_;
    QDateTime time_;
    QString program_;
    QMap<QString, Touched> touched_;
    QSet<QByteArray> committed_;
    int contents_ = 0;
};

} // namespace qvnd::history

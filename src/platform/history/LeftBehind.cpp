#include "platform/history/HistoryFile.h"

// What history.db has of a restoration under way, of commands that were killed, and of exits.
namespace qvnd::history {

using jet::Statement;

std::optional<Pending> HistoryFile::pending() {
    Statement& row = prepared("SELECT target,began FROM pending");
    if (!row.Step()) {
        row.Reset();
        return std::nullopt;
    }
    Pending pending{row.Number(0), QDateTime::fromString(row.Text(1), Qt::ISODateWithMs), {}};
    row.Reset();
    Statement rows(sql_, "SELECT path,keep,put FROM pending_files ORDER BY rowid");
    while (rows.Step()) {
        pending.files << PendingFile{places_.longOf(rows.Text(0)), rows.Text(1), rows.Text(2)};
    }
    return pending;
}

void HistoryFile::setPending(const Pending& pending) {
    run("INSERT INTO pending VALUES(?1,?2)",
        {QString::number(pending.target), pending.began.toString(Qt::ISODateWithMs)});
    for (const PendingFile& file : pending.files) {
        run("INSERT INTO pending_files VALUES(?1,?2,?3)",
            {places_.shortOf(file.path), file.keep, file.put});
    }
}

void HistoryFile::clearPending() { sql_.Run("DELETE FROM pending; DELETE FROM pending_files"); }

void HistoryFile::addKilled(std::int64_t step) {
    Statement statement(sql_, "INSERT INTO killed VALUES(?1,0,0)");
    statement.Bind(1, step);
    statement.Run();
}

QList<std::int64_t> HistoryFile::untold() {
    Statement& rows = prepared("SELECT step FROM killed WHERE told=0 AND step IN "
                               "(SELECT id FROM steps) ORDER BY step");
    QList<std::int64_t> steps;
    while (rows.Step()) {
        steps << rows.Number(0);
    }
    rows.Reset();
    return steps;
}

bool HistoryFile::awaitsStart(std::int64_t step) {
    Statement row(sql_, "SELECT 1 FROM killed WHERE step=?1 AND started=0");
    row.Bind(1, step);
    return row.Step();
}

void HistoryFile::setTold() { sql_.Run("UPDATE killed SET told=1 WHERE told=0"); }

void HistoryFile::setStarted() { sql_.Run("UPDATE killed SET started=1 WHERE started=0"); }

void HistoryFile::renumberKilled(std::int64_t step, std::int64_t now) {
    Statement statement(sql_, "UPDATE killed SET step=?2 WHERE step=?1");
    statement.Bind(1, step);
    statement.Bind(2, now);
    statement.Run();
}

void HistoryFile::addExit(const QDate& day) {
    run("INSERT INTO exits(day) VALUES(?1)", {day.toString(Qt::ISODate)});
}

QList<QDate> HistoryFile::exits(int most) {
    Statement rows(sql_, "SELECT day FROM exits ORDER BY position DESC LIMIT ?1");
    rows.Bind(1, std::int64_t{most});
    QList<QDate> days;
    while (rows.Step()) {
        days.prepend(QDate::fromString(rows.Text(0), Qt::ISODate));
    }
    return days;
}

} // namespace qvnd::history

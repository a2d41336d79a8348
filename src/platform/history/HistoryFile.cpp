#include "platform/history/HistoryFile.h"

#include "platform/error/IgnoringErrors.h"

#include <QFile>
#include <QStringList>

namespace qvnd::history {

namespace {

using jet::Statement;
using jet::Value;

constexpr std::int64_t arrangement = 4;
// Of a mirror; SQLite stores it without overflow chains that long images would make.
constexpr qsizetype mirrorPiece = 65536;

constexpr char tables[] =
    "CREATE TABLE state(id INTEGER PRIMARY KEY, head INTEGER, tip INTEGER, last INTEGER);"
    "INSERT INTO state VALUES(1,0,0,0);"
    "CREATE TABLE steps(id INTEGER PRIMARY KEY, parent INTEGER, kind INTEGER, time TEXT,"
    " title TEXT, plan TEXT, program TEXT, note TEXT, minor INTEGER, selected_before TEXT,"
    " selected_after TEXT);"
    "CREATE TABLE changes(step INTEGER, position INTEGER, kind INTEGER, database TEXT,"
    " table_name TEXT, key TEXT, name TEXT, name_before TEXT, PRIMARY KEY(step, position));"
    "CREATE TABLE file_steps(step INTEGER, path TEXT, before TEXT, after TEXT,"
    " PRIMARY KEY(step, path));"
    "CREATE INDEX file_steps_on_disk ON file_steps(path) WHERE after='?' OR before='?';"
    "CREATE TABLE database_steps(step INTEGER, path TEXT, delta BLOB, PRIMARY KEY(step, path));"
    "CREATE TABLE mirror(path TEXT, piece INTEGER, bytes BLOB, PRIMARY KEY(path, piece));"
    "CREATE TABLE present(path TEXT PRIMARY KEY, size INTEGER, time INTEGER, content TEXT);"
    "CREATE TABLE pending(target INTEGER);"
    "CREATE TABLE pending_files(path TEXT, keep TEXT, put TEXT);";

// What the second arrangement adds to the first.
constexpr char secondTables[] =
    "CREATE TABLE killed(step INTEGER PRIMARY KEY, told INTEGER, started INTEGER);"
    "ALTER TABLE pending ADD COLUMN began TEXT;";

// What the third adds: the titles of the steps that one was joined of, a line each.
constexpr char thirdTables[] =
    "CREATE TABLE IF NOT EXISTS joined_steps(step INTEGER PRIMARY KEY, titles TEXT);";

// What the fourth adds: the days on which the program has ended.
constexpr char fourthTables[] =
    "CREATE TABLE IF NOT EXISTS exits(position INTEGER PRIMARY KEY, day TEXT);";

// Null texts are empty ones here.
Value text(const QString& text) { return Value(text.isNull() ? QStringLiteral("") : text); }

jet::Connection::Mode modeFor(const QString& path) {
    return QFile::exists(path) ? jet::Connection::Mode::existing : jet::Connection::Mode::create;
}

constexpr char stepColumns[] = "SELECT id,parent,kind,time,title,plan,program,note,minor,"
                               "selected_before,selected_after,titles FROM steps "
                               "LEFT JOIN joined_steps ON step=id ";

Step stepIn(const Statement& row) {
    Step step;
    step.id = row.Number(0);
    step.parent = row.Number(1);
    step.kind = static_cast<StepKind>(row.Number(2));
    step.time = QDateTime::fromString(row.Text(3), Qt::ISODateWithMs);
    step.title = row.Text(4);
    step.plan = row.Text(5);
    step.program = row.Text(6);
    step.note = row.Text(7);
    step.isMinor = row.Number(8) != 0;
    step.selectedBefore = row.Text(9);
    step.selectedAfter = row.Text(10);
    step.joinedTitles = row.Text(11).split(u'\n', Qt::SkipEmptyParts);
    return step;
}

QList<Step> stepsIn(Statement& rows) {
    QList<Step> steps;
    while (rows.Step()) {
        steps << stepIn(rows);
    }
    rows.Reset();
    return steps;
}

} // namespace

HistoryFile::HistoryFile(const QString& path, Places places)
    : places_(std::move(places)), sql_(path, modeFor(path), jet::Connection::Journal::emptied) {
    if (sql_.NumberOf("PRAGMA user_version") < arrangement) {
        arrange();
    }
}

// Another program may have done so meanwhile.
void HistoryFile::arrange() {
    Transaction all(*this);
    const std::int64_t found = sql_.NumberOf("PRAGMA user_version");
    if (found < 1) {
        sql_.Run(tables);
    }
    if (found < 2) {
        sql_.Run(secondTables);
    }
    if (found < arrangement) {
        sql_.Run(thirdTables);
        sql_.Run(fourthTables);
        sql_.Run("PRAGMA user_version=" + QByteArray::number(qlonglong{arrangement}));
    }
    all.commit();
}

HistoryFile::Transaction::Transaction(HistoryFile& file) : file_(file) {
    file_.sql_.Run("BEGIN IMMEDIATE");
}

HistoryFile::Transaction::~Transaction() {
    if (!done_) {
        file_.images_.clear();
        ignoringErrors([this] { file_.sql_.Run("ROLLBACK"); });
    }
}

void HistoryFile::Transaction::commit() {
    file_.sql_.Run("COMMIT");
    done_ = true;
}

void HistoryFile::run(const QByteArray& sql, const QStringList& values) {
    Statement& statement = sql_.Prepared(sql);
    int position = 0;
    for (const QString& value : values) {
        statement.Bind(++position, text(value));
    }
    statement.Run();
}

Statement& HistoryFile::prepared(const QByteArray& sql) {
    Statement& statement = sql_.Prepared(sql);
    statement.Reset();
    return statement;
}

Position HistoryFile::position() {
    Statement& row = prepared("SELECT head,tip,last FROM state");
    row.Step();
    const Position position{row.Number(0), row.Number(1), row.Number(2)};
    row.Reset();
    return position;
}

void HistoryFile::setPosition(const Position& position) {
    Statement statement(sql_, "UPDATE state SET head=?1,tip=?2,last=?3");
    statement.Bind(1, position.head);
    statement.Bind(2, position.tip);
    statement.Bind(3, position.last);
    statement.Run();
}

void HistoryFile::add(const Step& step, const QList<Change>& changes) {
    Statement statement(sql_, "INSERT INTO steps VALUES(?1,?2,?3,?4,?5,?6,?7,?8,?9,?10,?11)");
    statement.Bind(1, step.id);
    statement.Bind(2, step.parent);
    statement.Bind(3, std::int64_t{static_cast<int>(step.kind)});
    statement.Bind(4, text(step.time.toString(Qt::ISODateWithMs)));
    statement.Bind(5, text(step.title));
    statement.Bind(6, text(step.plan));
    statement.Bind(7, text(step.program));
    statement.Bind(8, text(step.note));
    statement.Bind(9, std::int64_t{step.isMinor});
    statement.Bind(10, text(step.selectedBefore));
    statement.Bind(11, text(step.selectedAfter));
    statement.Run();
    if (!step.joinedTitles.isEmpty()) {
        run("INSERT INTO joined_steps VALUES(?1,?2)",
            {QString::number(step.id), step.joinedTitles.join(u'\n')});
    }
    Statement line(sql_, "INSERT INTO changes VALUES(?1,?2,?3,?4,?5,?6,?7,?8)");
    std::int64_t position = 0;
    for (const Change& change : changes) {
        line.Bind(1, step.id);
        line.Bind(2, position++);
        line.Bind(3, std::int64_t{static_cast<int>(change.kind)});
        line.Bind(4, text(change.database));
        line.Bind(5, text(change.table));
        const bool movesAlong = change.table.isEmpty() && places_.movesAlong(change.key);
        line.Bind(6, text(movesAlong ? places_.shortOf(change.key) : change.key));
        line.Bind(7, text(change.name));
        line.Bind(8, text(change.nameBefore));
        line.Run();
    }
}

void HistoryFile::addChange(std::int64_t step, const FileChange& change) {
    Statement& statement = sql_.Prepared("INSERT INTO file_steps VALUES(?1,?2,?3,?4)");
    statement.Bind(1, step);
    statement.Bind(2, text(places_.shortOf(change.path)));
    statement.Bind(3, text(change.before));
    statement.Bind(4, text(change.after));
    statement.Run();
}

void HistoryFile::addChange(std::int64_t step, const DatabaseChange& change) {
    Statement statement(sql_, "INSERT INTO database_steps VALUES(?1,?2,?3)");
    statement.Bind(1, step);
    statement.Bind(2, text(places_.shortOf(change.path)));
    statement.Bind(3, change.delta);
    statement.Run();
}

std::optional<Step> HistoryFile::step(std::int64_t id) {
    Statement& rows = prepared(QByteArray(stepColumns) + "WHERE id=?1");
    rows.Bind(1, id);
    const QList<Step> found = stepsIn(rows);
    return found.isEmpty() ? std::nullopt : std::optional(found.first());
}

QList<Step> HistoryFile::steps() {
    Statement rows(sql_, QByteArray(stepColumns) + "ORDER BY id");
    return stepsIn(rows);
}

bool HistoryFile::hasDayToJoin(const QDateTime& before) {
    Statement rows(sql_, "SELECT 1 FROM steps AS one JOIN steps AS next ON next.parent=one.id "
                         "WHERE next.time<?1 AND substr(next.time,1,10)=substr(one.time,1,10) "
                         "AND one.kind IN (0,3) AND next.kind IN (0,3) LIMIT 1");
    rows.Bind(1, text(before.toString(Qt::ISODateWithMs)));
    return rows.Step();
}

QList<Step> HistoryFile::stepsWith(const QString& wanted) {
    Statement rows(
        sql_, QByteArray(stepColumns) +
                  "WHERE instr(title,?1) OR instr(titles,?1) OR id IN (SELECT step FROM changes "
                  "WHERE instr(name,?1) OR instr(name_before,?1)) "
                  "ORDER BY max(id,parent),id DESC");
    rows.Bind(1, text(wanted));
    return stepsIn(rows);
}

QList<Change> HistoryFile::changesOf(std::int64_t step) {
    Statement rows(sql_, "SELECT kind,database,table_name,key,name,name_before FROM changes "
                         "WHERE step=?1 ORDER BY position");
    rows.Bind(1, step);
    QList<Change> changes;
    while (rows.Step()) {
        changes << Change{static_cast<Change::Kind>(rows.Number(0)),
                          rows.Text(1),
                          rows.Text(2),
                          rows.Text(2).isEmpty() ? places_.longOf(rows.Text(3)) : rows.Text(3),
                          rows.Text(4),
                          rows.Text(5)};
    }
    return changes;
}

QList<FileChange> HistoryFile::filesOf(std::int64_t step) {
    Statement& rows =
        prepared("SELECT path,before,after FROM file_steps WHERE step=?1 ORDER BY path");
    rows.Bind(1, step);
    QList<FileChange> changes;
    while (rows.Step()) {
        changes << FileChange{places_.longOf(rows.Text(0)), rows.Text(1), rows.Text(2)};
    }
    rows.Reset();
    return changes;
}

QList<DatabaseChange> HistoryFile::databasesOf(std::int64_t step) {
    Statement& rows = prepared("SELECT path,delta FROM database_steps WHERE step=?1 ORDER BY path");
    rows.Bind(1, step);
    QList<DatabaseChange> changes;
    while (rows.Step()) {
        changes << DatabaseChange{places_.longOf(rows.Text(0)), rows.Bytes(1)};
    }
    rows.Reset();
    return changes;
}

QStringList HistoryFile::databaseNamesOf(std::int64_t step) {
    Statement& rows = prepared("SELECT path FROM database_steps WHERE step=?1 ORDER BY path");
    rows.Bind(1, step);
    QStringList names;
    while (rows.Step()) {
        names << places_.longOf(rows.Text(0));
    }
    rows.Reset();
    return names;
}

QMap<std::int64_t, FileChange> HistoryFile::changesOfFile(const QString& path) {
    Statement rows(sql_, "SELECT step,before,after FROM file_steps WHERE path=?1");
    rows.Bind(1, text(places_.shortOf(path)));
    QMap<std::int64_t, FileChange> changes;
    while (rows.Step()) {
        changes[rows.Number(0)] = {path, rows.Text(1), rows.Text(2)};
    }
    return changes;
}

void HistoryFile::contentOnDiskIsKept(const QString& path, const QString& content) {
    run("UPDATE file_steps SET after=?2 WHERE path=?1 AND after='?'",
        {places_.shortOf(path), content});
    run("UPDATE file_steps SET before=?2 WHERE path=?1 AND before='?'",
        {places_.shortOf(path), content});
}

void HistoryFile::remove(std::int64_t step) {
    const QByteArray id = QByteArray::number(qlonglong{step});
    for (const char* table : {"changes", "file_steps", "database_steps", "joined_steps"}) {
        sql_.Run(QByteArray("DELETE FROM ") + table + " WHERE step=" + id);
    }
    sql_.Run("DELETE FROM steps WHERE id=" + id);
}

std::int64_t HistoryFile::parentOf(std::int64_t step) {
    Statement& row = prepared("SELECT parent FROM steps WHERE id=?1");
    row.Bind(1, step);
    const std::int64_t parent = row.Step() ? row.Number(0) : beginning;
    row.Reset();
    return parent;
}

bool HistoryFile::hasChildren(std::int64_t step) {
    Statement row(sql_, "SELECT 1 FROM steps WHERE parent=?1 LIMIT 1");
    row.Bind(1, step);
    return row.Step();
}

void HistoryFile::replaceParent(std::int64_t parent, std::int64_t by) {
    sql_.Run("UPDATE steps SET parent=" + QByteArray::number(qlonglong{by}) +
             " WHERE parent=" + QByteArray::number(qlonglong{parent}));
}

void HistoryFile::setParent(std::int64_t step, std::int64_t parent) {
    Statement statement(sql_, "UPDATE steps SET parent=?2 WHERE id=?1");
    statement.Bind(1, step);
    statement.Bind(2, parent);
    statement.Run();
}

QHash<std::int64_t, QStringList> HistoryFile::contentsOfSteps() {
    Statement rows(sql_, "SELECT step,before,after FROM file_steps");
    QHash<std::int64_t, QStringList> contents;
    while (rows.Step()) {
        for (const int column : {1, 2}) {
            const QString content = rows.Text(column);
            if (KeptFiles::isKept(content) ||
                (content::isOfFolder(content) && content != content::folder)) {
                contents[rows.Number(0)] << content;
            }
        }
    }
    return contents;
}

// Rows of other tables count as so many bytes; all together are what the file holds besides
// mirrors.
QHash<std::int64_t, std::int64_t> HistoryFile::sizesOfSteps() {
    Statement rows(sql_, "SELECT step,sum(bytes) FROM ("
                         "SELECT step,length(delta) AS bytes FROM database_steps UNION ALL "
                         "SELECT step,100*count(*) FROM changes GROUP BY step UNION ALL "
                         "SELECT step,200*count(*) FROM file_steps GROUP BY step) GROUP BY step");
    QHash<std::int64_t, std::int64_t> sizes;
    double counted = 0;
    while (rows.Step()) {
        sizes[rows.Number(0)] = rows.Number(1);
        counted += static_cast<double>(rows.Number(1));
    }
    const std::int64_t mirrors = sql_.NumberOf("SELECT coalesce(sum(length(bytes)),0) FROM mirror");
    const double scale = static_cast<double>(size() - mirrors) / counted;
    for (std::int64_t& bytes : sizes) {
        bytes = static_cast<std::int64_t>(static_cast<double>(bytes) * scale);
    }
    return sizes;
}

void HistoryFile::forgetUnneeded() {
    sql_.Run("UPDATE present SET content=CASE WHEN content LIKE '%/' THEN '/' ELSE '?' END "
             "WHERE content NOT IN ('-','/','?') AND content NOT IN "
             "(SELECT before FROM file_steps UNION SELECT after FROM file_steps)");
}

QMap<QString, Present> HistoryFile::presentOfKept() {
    Statement rows(sql_, "SELECT path,size,time,content FROM present");
    QMap<QString, Present> kept;
    while (rows.Step()) {
        if (KeptFiles::isKept(rows.Text(3))) {
            kept[places_.longOf(rows.Text(0))] = {{rows.Number(1), rows.Number(2)}, rows.Text(3)};
        }
    }
    return kept;
}

void HistoryFile::contentIsOnDiskAlone(const QString& path, const QString& content) {
    const QStringList values{places_.shortOf(path), content};
    for (const QByteArray column : {"before", "after"}) {
        run("UPDATE file_steps SET " + column + "='?' WHERE path=?1 AND " + column +
                "=?2 AND step NOT IN (SELECT id FROM steps WHERE kind=2)",
            values);
    }
    run("UPDATE present SET content='?' WHERE path=?1 AND content=?2", values);
}

QByteArray HistoryFile::mirror(const QString& path) {
    const std::int64_t version = sql_.NumberOf("PRAGMA data_version");
    if (version != imagesOf_) {
        images_.clear();
        imagesOf_ = version;
    }
    const auto known = images_.constFind(path);
    if (known != images_.constEnd()) {
        return *known;
    }
    Statement rows(sql_, "SELECT bytes FROM mirror WHERE path=?1 ORDER BY piece");
    rows.Bind(1, text(places_.shortOf(path)));
    QByteArray image;
    while (rows.Step()) {
        image += rows.Bytes(0);
    }
    images_[path] = image;
    return image;
}

bool HistoryFile::hasMirror(const QString& path) {
    Statement& row = prepared("SELECT 1 FROM mirror WHERE path=?1 LIMIT 1");
    row.Bind(1, text(places_.shortOf(path)));
    const bool has = row.Step();
    row.Reset();
    return has;
}

void HistoryFile::setMirror(const QString& path, const QByteArray& before,
                            const QByteArray& after) {
    Statement put(sql_, "INSERT OR REPLACE INTO mirror VALUES(?1,?2,?3)");
    put.Bind(1, text(places_.shortOf(path)));
    qsizetype at = 0;
    for (; at < after.size() || at == 0; at += mirrorPiece) {
        const QByteArray piece = after.mid(at, mirrorPiece);
        if (at == 0 || piece != before.mid(at, mirrorPiece)) {
            put.Bind(2, std::int64_t{at / mirrorPiece});
            put.Bind(3, piece);
            put.Run();
        }
    }
    Statement rest(sql_, "DELETE FROM mirror WHERE path=?1 AND piece>=?2");
    rest.Bind(1, text(places_.shortOf(path)));
    rest.Bind(2, std::int64_t{at / mirrorPiece});
    rest.Run();
    images_[path] = after;
}

std::optional<Present> HistoryFile::present(const QString& path) {
    Statement& row = prepared("SELECT size,time,content FROM present WHERE path=?1");
    row.Bind(1, text(places_.shortOf(path)));
    std::optional<Present> found;
    if (row.Step()) {
        found = Present{{row.Number(0), row.Number(1)}, row.Text(2)};
    }
    row.Reset();
    return found;
}

void HistoryFile::setPresent(const QString& path, const Present& present) {
    Statement& statement = sql_.Prepared("INSERT OR REPLACE INTO present VALUES(?1,?2,?3,?4)");
    statement.Bind(1, text(places_.shortOf(path)));
    statement.Bind(2, present.stamp.size);
    statement.Bind(3, present.stamp.time);
    statement.Bind(4, text(present.content));
    statement.Run();
}

bool HistoryFile::isSound() {
    Statement found(sql_, "PRAGMA quick_check(1)");
    return found.Step() && found.Text(0) == QStringLiteral("ok");
}

std::int64_t HistoryFile::size() {
    return (sql_.NumberOf("PRAGMA page_count") - sql_.NumberOf("PRAGMA freelist_count")) *
           sql_.NumberOf("PRAGMA page_size");
}

void HistoryFile::shrinkIfWorthwhile() {
    constexpr std::int64_t leastPart = 4;
    constexpr std::int64_t leastPages = 64;
    const std::int64_t free = sql_.NumberOf("PRAGMA freelist_count");
    if (free >= leastPages && leastPart * free >= sql_.NumberOf("PRAGMA page_count")) {
        sql_.Run("VACUUM");
    }
}

} // namespace qvnd::history

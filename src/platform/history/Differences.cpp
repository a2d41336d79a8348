#include "platform/history/Differences.h"

#include "platform/jet/file/Image.h"

#include <algorithm>

namespace qvnd::history {

namespace {

using jet::ImageTables;

const QString nameField = QStringLiteral("名称");
const QString keyField = QStringLiteral("Key");
const QString numberField = QStringLiteral("ID");

struct Row {
    std::int64_t number = 0;
    QString key;
    QString name;
    QMap<QString, QString> rest;
    // Whether they say the same, wherever they stand.
    friend bool operator==(const Row& one, const Row& other) {
        return one.key == other.key && one.name == other.name && one.rest == other.rest;
    }
};

QString fieldOf(const ImageTables::Row& row, const QString& name) {
    for (auto field = row.fields.begin(); field != row.fields.end(); ++field) {
        if (field.key().compare(name, Qt::CaseInsensitive) == 0) {
            return *field;
        }
    }
    return {};
}

Row rowOf(std::int64_t number, const ImageTables::Row& stored) {
    Row row{number, fieldOf(stored, keyField), fieldOf(stored, nameField), stored.fields};
    row.rest.remove(numberField);
    row.rest.remove(QStringLiteral("rowid"));
    return row;
}

QList<Row> rowsOf(ImageTables& image, const QString& table) {
    const auto stored = image.rowsOf(table);
    QList<Row> rows;
    for (auto row = stored.begin(); row != stored.end(); ++row) {
        rows << rowOf(row.key(), *row);
    }
    return rows;
}

bool haveKeys(const QList<Row>& rows) {
    return std::any_of(rows.begin(), rows.end(), [](const Row& row) { return !row.key.isEmpty(); });
}

class TableComparison {
public:
    TableComparison(const QString& database, const QString& table)
        : base_{{}, database, table, {}, {}, {}} {}

    QList<Change> of(const QList<Row>& before, const QList<Row>& after) {
        match(before, after);
        return changes_;
    }

private:
    // Rows without a key are told apart by all that is in them, settings by their numbers.
    static QString identityOf(const Row& row) {
        if (!row.key.isEmpty()) {
            return row.key;
        }
        return row.name.isEmpty() ? QString::number(row.number)
                                  : QStringList(row.rest.values()).join(QChar(0));
    }
    // A row that is renamed keeps its number; one that another took the place of does not. A node
    // that is only taken out and put back gets another number, too, but says the same.
    static bool isAnotherNode(const Row& before, const Row& now) {
        return !before.key.isEmpty() && before.number != now.number;
    }
    void match(const QList<Row>& before, const QList<Row>& after) {
        QMultiHash<QString, const Row*> left;
        for (const Row& row : after) {
            left.insert(identityOf(row), &row);
        }
        for (const Row& row : before) {
            const auto found = left.find(identityOf(row));
            if (found == left.end()) {
                add(Change::Kind::rowRemoved, row);
                continue;
            }
            if (**found != row) {
                add(isAnotherNode(row, **found) ? Change::Kind::rowReplaced
                                                : Change::Kind::rowChanged,
                    **found, row.name);
            }
            left.erase(found);
        }
        const QSet<const Row*> added(left.begin(), left.end());
        for (const Row& row : after) {
            if (added.contains(&row)) {
                add(Change::Kind::rowAdded, row);
            }
        }
    }
    void add(Change::Kind kind, const Row& row, const QString& nameBefore = {}) {
        Change change = base_;
        change.kind = kind;
        change.key = row.key;
        change.name = row.name;
        const bool isSame = nameBefore == row.name && kind != Change::Kind::rowReplaced;
        change.nameBefore = isSame ? QString() : nameBefore;
        changes_ << change;
    }

    Change base_;
    QList<Change> changes_;
};

} // namespace

QList<Change> differences(const QString& databaseName, const QByteArray& before,
                          const QByteArray& after, const std::optional<QSet<QString>>& tables) {
    ImageTables old(before);
    ImageTables fresh(after);
    QMap<QString, std::int64_t> all = old.tables();
    all.insert(fresh.tables());
    QList<Change> changes;
    for (const QString& table : all.keys()) {
        const bool was = old.tables().contains(table);
        const bool is = fresh.tables().contains(table);
        const bool isSame = was && is && old.tables()[table] == fresh.tables()[table];
        if (isSame && tables && !tables->contains(table)) {
            continue;
        }
        const QList<Row> rowsBefore = rowsOf(old, table);
        const QList<Row> rows = rowsOf(fresh, table);
        if (was != is) {
            const bool isOutline = haveKeys(was ? rowsBefore : rows);
            changes << Change{is ? Change::Kind::tableMade : Change::Kind::tableDropped,
                              databaseName,
                              table,
                              isOutline ? table : QString(),
                              table,
                              {}};
        }
        changes << TableComparison(databaseName, table).of(rowsBefore, rows);
    }
    return changes;
}

} // namespace qvnd::history

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <optional>
#include <vector>

namespace qvnd::model {

// The rules told plainly: what databases, folders and trees hold, as values in memory. Nothing here
// knows the program.

// What ends a step of a rule; the numbers are those that rules compare against.
struct Failure {
    int number = 0;
};
constexpr int tableExists = 3010;
constexpr int tableNotFound = 3078;
constexpr int itemNotFound = 3265;
constexpr int noFile = 53;
constexpr int other = 9999; // told by its description, which no rule states

struct Row {
    int id = 0;
    QString key;
    QString name;
    bool isDocument = false;
};

// An outline's rows in the order of their ID.
struct Table {
    std::vector<Row> rows;
    int lastId = 0;
    bool keysAreUnique = true;

    Row* find(const QString& key) {
        const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) {
            return row.key.compare(key, Qt::CaseInsensitive) == 0;
        });
        return found == rows.end() ? nullptr : &*found;
    }
    void add(const QString& key, const QString& name, bool isDocument) {
        if (keysAreUnique && find(key)) {
            throw Failure{other};
        }
        rows.push_back({++lastId, key, name, isDocument});
    }
    // Gives the rows from there on new numbers.
    void number(std::vector<Row>::iterator from) {
        for (; from != rows.end(); ++from) {
            from->id = ++lastId;
        }
    }
    template <class Condition>
    std::vector<Row> take(Condition condition) {
        std::vector<Row> taken;
        std::copy_if(rows.begin(), rows.end(), std::back_inserter(taken), condition);
        rows.erase(std::remove_if(rows.begin(), rows.end(), condition), rows.end());
        return taken;
    }
    int countLike(const QString& beginning) const {
        return static_cast<int>(std::count_if(rows.begin(), rows.end(), [&](const Row& row) {
            return row.key.startsWith(beginning, Qt::CaseInsensitive);
        }));
    }
    const Row& last() const {
        if (rows.empty()) {
            throw Failure{other};
        }
        return rows.back();
    }
    // A table that a whole copy makes: no index, numbering goes on behind its largest number.
    Table copied() const {
        Table table = *this;
        table.keysAreUnique = false;
        table.lastId = rows.empty() ? 0 : rows.back().id;
        return table;
    }
};

// One database file: outlines with their rows, and the names of all other tables.
struct Database {
    QMap<QString, Table> outlines;
    QStringList others;
    QStringList list; // 遍历表

    bool has(const QString& name) const { return outlines.contains(name) || others.contains(name); }
    Table& outline(const QString& name) {
        if (!outlines.contains(name)) {
            throw Failure{tableNotFound};
        }
        return outlines[name];
    }
    void drop(const QString& name) {
        if (!has(name)) {
            throw Failure{itemNotFound};
        }
        outlines.remove(name);
        others.removeAll(name);
    }
};

// A plan's or a template's folder: its files, and the database of its name.
struct Folder {
    QMap<QString, QByteArray> files;
    std::optional<Database> database;
};

inline QString tableOf(const QString& key) { return key.section('.', 0, 0); }
inline QString parentOf(const QString& key) {
    return key.contains('.') ? key.section('.', 0, -2) : key;
}
inline int depthOf(const QString& key) { return static_cast<int>(key.count('.')); }

// May the name stand in a statement without brackets?
inline bool isBare(const QString& name) {
    return std::all_of(name.begin(), name.end(), [](QChar c) {
        return c.unicode() >= 0x80 || c.isLetterOrNumber() || c == '_';
    });
}

inline const QString& bare(const QString& name) {
    if (!isBare(name)) {
        throw Failure{other};
    }
    return name;
}

} // namespace qvnd::model

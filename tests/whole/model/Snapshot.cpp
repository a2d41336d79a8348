#include "whole/model/Snapshot.h"

#include "whole/WorkSpaceState.h"

#include <QDir>
#include <QFile>

namespace qvnd::model {

namespace {

QString rowLine(const QString& table, int id, const QString& key, const QString& name,
                bool isDocument) {
    return table + ": " + QString::number(id) + '|' + key + '|' + name +
           (isDocument ? "|是" : "|否");
}

void addTable(QStringList& lines, const QString& name, const std::vector<Row>& rows) {
    lines << "table " + name;
    for (const Row& row : rows) {
        lines << rowLine(name, row.id, row.key, row.name, row.isDocument);
    }
}

QStringList linesOf(const Database& database) {
    QStringList lines;
    for (auto at = database.outlines.begin(); at != database.outlines.end(); ++at) {
        addTable(lines, at.key(), at->rows);
    }
    for (const QString& name : database.others) {
        lines << "table " + name;
    }
    for (const QString& name : database.list) {
        lines << "listed " + name;
    }
    return lines;
}

// Tables in the order of their names, and each with its rows behind it.
QStringList sorted(const QStringList& lines) {
    QMap<QString, QStringList> tables;
    for (const QString& line : lines) {
        const bool isHead = line.startsWith("table ");
        tables[isHead ? line.mid(6) : line.left(line.indexOf(": "))] << line;
    }
    QStringList all;
    for (const QStringList& table : tables) {
        all << table;
    }
    return all;
}

void addFolders(Snapshot& snapshot, const QString& label, const QMap<QString, Folder>& folders) {
    for (auto at = folders.begin(); at != folders.end(); ++at) {
        QStringList& files = snapshot[label + " folder " + at.key()];
        for (auto file = at->files.begin(); file != at->files.end(); ++file) {
            files << file.key() + " = " + QString::fromUtf8(file.value());
        }
        if (at->database) {
            snapshot[label + " database of " + at.key()] = sorted(linesOf(*at->database));
        }
    }
}

QString nodeLine(int depth, const QString& key, const QString& text, int image) {
    return QString(depth, ' ') + key + '|' + text + '|' + QString::number(image);
}

void addNode(QStringList& lines, const Node& node, int depth) {
    lines << nodeLine(depth, node.key, node.text, node.kind);
    for (const Node* child : node.children) {
        addNode(lines, *child, depth + 1);
    }
}

QStringList linesOf(const Tree& tree) {
    QStringList lines;
    QStringList order;
    for (const Node& node : tree.nodes) {
        order << node.key;
        if (!node.parent) {
            addNode(lines, node, 0);
        }
    }
    return lines << "order " + order.join(' ')
                 << "selected " + (tree.selected ? tree.selected->key : QString());
}

void addNode(QStringList& lines, const outline::OutlineNode& node, int depth) {
    lines << nodeLine(depth, node.Key(), node.Text(), node.Image());
    for (const outline::OutlineNode* child : node.childList()) {
        addNode(lines, *child, depth + 1);
    }
}

QStringList linesOf(const outline::OutlineTree& tree) {
    QStringList lines;
    QStringList order;
    for (const outline::OutlineNode* node : tree.topLevel()) {
        addNode(lines, *node, 0);
    }
    for (int i = 1; i <= tree.Count(); ++i) {
        order << tree.Item(i).Key();
    }
    return lines << "order " + order.join(' ')
                 << "selected " + (tree.SelectedItem() ? tree.SelectedItem()->Key() : QString());
}

void readTable(QStringList& lines, jet::Database& db, const QString& name,
               const jet::TableDef& table) {
    const bool isOutline = table.FindField(u"Key") != nullptr;
    if (name == "当前表" || name == "遍历表") {
        const auto rs = db.OpenRecordset("Select * from " + name);
        for (; !rs->Eof(); rs->MoveNext()) {
            lines << (name == "当前表" ? "current " : "listed ") + rs->Get(u"名称").TextOrEmpty();
        }
        return;
    }
    if (name == "标书表") {
        return;
    }
    lines << "table " + name;
    if (isOutline) {
        const auto rs = db.OpenRecordset("Select * from [" + name + "]");
        for (; !rs->Eof(); rs->MoveNext()) {
            lines << rowLine(name, rs->Get(u"ID").ToInteger(), rs->Get(u"Key").TextOrEmpty(),
                             rs->Get(u"名称").TextOrEmpty(),
                             rs->Get(u"是否文档").TextOrEmpty() == u"是");
        }
    }
}

} // namespace

Snapshot snapshotOf(PlainProgram& program) {
    Snapshot snapshot;
    QStringList user = linesOf(program.user);
    if (program.currentPlan) {
        user << "current " + *program.currentPlan;
    }
    if (program.temp) {
        addTable(user, "temp", *program.temp);
    }
    snapshot["plans"] = sorted(user);
    snapshot["templates"] = sorted(linesOf(program.library));
    addFolders(snapshot, "plan", program.planFolders);
    addFolders(snapshot, "template", program.templateFolders);
    snapshot["TrvCurrent"] = linesOf(program.current);
    snapshot["TrvTemplate"] = linesOf(program.templates);
    snapshot["TrvTemplate_Us"] = linesOf(program.plans);
    return snapshot;
}

Snapshot RealSnapshots::take() {
    Snapshot snapshot;
    modMain& state = planner_.state();
    state.gWs->Settle();
    addDatabase(snapshot, "plans", state.gUserTplPath + "Db_UsTemplate.mdb", state.gDbUser.get());
    addDatabase(snapshot, "templates", state.gSysPath + "Database/Db_Template.mdb",
                state.gDbTemplate.get());
    addFolders(snapshot, "plan", state.gUserTplPath);
    addFolders(snapshot, "template", state.gSysPath + "标书模板/");
    snapshot["TrvCurrent"] = linesOf(planner_.current());
    snapshot["TrvTemplate"] = linesOf(planner_.templates());
    snapshot["TrvTemplate_Us"] = linesOf(planner_.plans());
    return snapshot;
}

void RealSnapshots::addDatabase(Snapshot& snapshot, const QString& name, const QString& file,
                                jet::Database* open) {
    Seen& seen = seen_[file];
    const QByteArray stamp = test::changeStampOf(file);
    if (stamp != seen.stamp) {
        const auto own = open ? nullptr : planner_.state().gWs->OpenDatabase(file);
        jet::Database& db = open ? *open : *own;
        seen = {stamp, {}};
        const jet::TableDefs tables = db.TableDefs();
        for (const QString& table : tables.Names()) {
            readTable(seen.lines, db, table, tables[table]);
        }
        seen.lines = sorted(seen.lines);
    }
    snapshot[name] = seen.lines;
}

void RealSnapshots::addFolders(Snapshot& snapshot, const QString& label, const QString& folder) {
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(folder).entryList(everything | QDir::Dirs, QDir::Name)) {
        if (name == "Db_UsTemplate.mdb" || name == ".~history") {
            continue;
        }
        QStringList& files = snapshot[label + " folder " + name];
        const QDir inside(folder + name);
        for (const QString& fileName : inside.entryList(everything, QDir::Name)) {
            QFile file(inside.filePath(fileName));
            if (fileName == name + ".mdb") {
                addDatabase(snapshot, label + " database of " + name, file.fileName(), nullptr);
            } else if (file.open(QIODevice::ReadOnly)) {
                files << fileName + " = " + QString::fromUtf8(file.readAll());
            }
        }
        files.sort();
    }
}

} // namespace qvnd::model

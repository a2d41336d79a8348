#include "outline/PutBack.h"

#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/history/History.h"
#include "platform/history/Places.h"
#include "platform/jet/TransactionScope.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

using history::Change;
using Kind = history::Change::Kind;
using Rows = QList<OutlineRow>;

[[noreturn]] void refuse(const QString& reason) {
    throw RunTimeError(error::invalidCall, reason.toStdU16String());
}

bool isNode(const Change& change) {
    return !change.key.isEmpty() && !change.table.isEmpty() && !change.isOfTable() &&
           change.table != store::table::scratch;
}

// A damaged database is told as a file, but comes back with its step alone.
bool isFile(const Change& change) {
    return change.table.isEmpty() && !change.key.isEmpty() && !history::isDatabase(change.key);
}

bool isBelow(const QString& node, const QString& key) {
    return key.compare(node, Qt::CaseInsensitive) == 0 ||
           key.startsWith(node + u'.', Qt::CaseInsensitive);
}

OutlineRow rowIn(const jet::ImageTables::Row& stored) {
    const auto field = [&](QStringView name) { return stored.fields.value(name.toString()); };
    return {field(store::field::key), field(store::field::name),
            field(store::field::isDocument) == store::yes};
}

std::int64_t idIn(const jet::ImageTables::Row& stored) {
    return stored.fields.value(store::field::id.toString()).toLongLong();
}

// One of the two libraries: the database that lists its outlines, and where their files lie.
class Library {
public:
    Library(modMain& state, const Change& change)
        : state_(state),
          isTemplates_(QFileInfo(state.gDbTemplate->Name()).fileName() == change.database) {}

    jet::Database& database() const { return isTemplates_ ? *state_.gDbTemplate : *state_.gDbUser; }
    QString document(const QString& outline, const QString& key) const {
        return isTemplates_ ? templateDocumentPath(state_, outline, key)
                            : documentPath(state_, outline, key);
    }
    QString ownDatabase(const QString& outline) const {
        return isTemplates_ ? store::templateDatabasePath(state_, outline)
                            : store::planDatabasePath(state_, outline);
    }
    bool has(const QString& outline) const {
        const store::FolderState folder = isTemplates_
                                              ? store::stateOfTemplateFolder(state_, outline)
                                              : store::stateOfPlanFolder(state_, outline);
        return folder == store::FolderState::there && database().TableDefs().Contains(outline);
    }

private:
    modMain& state_;
    bool isTemplates_;
};

class NodeReturn {
public:
    NodeReturn(modMain& state, std::int64_t step, const Change& change)
        : state_(state), step_(step), change_(change), library_(state, change) {}

    PutBack run() {
        if (!library_.has(change_.table)) {
            refuse(u"“%1”已不在，不能单独放回它的节点。可以取出文件，或者回到这一步之前。"_s.arg(
                change_.table));
        }
        readBefore();
        readNow();
        const std::optional<QString> key = keyNow(change_);
        if (change_.kind == Kind::rowChanged && key) {
            return giveNameBack(*key);
        }
        chooseKey();
        addRows();
        copyFiles();
        return done_;
    }

private:
    void readBefore() {
        const auto stored =
            state_.History->rowsBefore(step_, library_.database().Name(), change_.table);
        for (const jet::ImageTables::Row& row : stored) {
            if (OutlineRow found = rowIn(row); isBelow(change_.key, found.key)) {
                before_ << found;
                placeBefore_ = before_.size() == 1 ? idIn(row) : placeBefore_;
            }
        }
        if (before_.isEmpty()) {
            refuse(u"操作历史没有保留“%1”。"_s.arg(change_.name));
        }
    }
    void readNow() {
        const auto rows =
            library_.database().OpenRecordset("Select * from " + bracketedName(change_.table));
        for (; !rows->Eof(); rows->MoveNext()) {
            keys_ << rows->Get(store::field::key).TextOrEmpty();
        }
    }
    // Of the row that a change is about; null where it is not there any more.
    std::optional<QString> keyNow(const Change& change) const {
        const std::optional<QString> key = state_.History->keyNow(step_, change);
        return key && keys_.contains(*key, Qt::CaseInsensitive) ? key : std::nullopt;
    }
    // Of the row that had the key before the step.
    std::optional<QString> keyNow(const QString& key) const {
        return keyNow(Change{Kind::rowChanged, change_.database, change_.table, key, {}, {}});
    }
    PutBack giveNameBack(const QString& key) {
        const auto row = rowOfKey(library_.database(), key);
        row->Edit();
        row->Set(store::field::name, before_.first().name);
        row->Update();
        return {key, {before_.first().name}, {}};
    }
    // None of the keys of the node and of what is below it may be another node's.
    void chooseKey() {
        const std::optional<QString> parent = keyNow(parentKeyOf(change_.key));
        if (!parent) {
            refuse(u"“%1”的上级节点已不在，请先放回上级节点。"_s.arg(before_.first().name));
        }
        leaveOutWhatStayed();
        const bool isTaken =
            std::any_of(before_.begin(), before_.end(), [&](const OutlineRow& row) {
                return keys_.contains(row.key, Qt::CaseInsensitive);
            });
        const bool hasMoved = *parent != parentKeyOf(change_.key);
        done_.key = isTaken || hasMoved ? freeKeyBelow(*parent) : change_.key;
    }
    // What was below a node that is gone may be there still, under its keys.
    void leaveOutWhatStayed() {
        if (keys_.contains(change_.key, Qt::CaseInsensitive)) {
            return;
        }
        hasStayed_ = before_.removeIf([&](const OutlineRow& row) {
            return keys_.contains(row.key, Qt::CaseInsensitive) &&
                   keyNow(row.key) == std::optional(row.key);
        }) > 0;
    }
    QString freeKeyBelow(const QString& parent) const {
        std::int16_t largest = 0;
        for (const QString& key : keys_ + QStringList{change_.key}) {
            if (isBelow(parent, key)) {
                const QString number = key.mid(parent.size() + 1).section(u'.', 0, 0);
                largest = std::max(largest, toInteger(number.toLongLong()));
            }
        }
        return newKey(parent, largest, 1);
    }
    QString newKeyOf(const OutlineRow& row) const {
        return done_.key + row.key.mid(change_.key.size());
    }
    void addRows() {
        jet::TransactionScope changes(*state_.gWs);
        addTo(library_.database());
        ignoringErrors([&] {
            const auto own = state_.gWs->OpenDatabase(library_.ownDatabase(change_.table));
            addTo(*own);
        });
        changes.commit();
        for (const OutlineRow& row : before_) {
            done_.names << row.name;
        }
    }
    void addTo(jet::Database& db) {
        const Rows behind = hasStayed_ ? takeRowsBehind(db) : Rows();
        const auto rows = db.OpenRecordset("Select * from " + bracketedName(change_.table));
        for (const OutlineRow& row : before_) {
            addRow(*rows, {newKeyOf(row), row.name, row.isDocument});
        }
        for (const OutlineRow& row : behind) {
            addRow(*rows, row);
        }
    }
    // From where the node was, or from what has stayed below it: an outline ends before the first
    // node without a parent.
    Rows takeRowsBehind(jet::Database& db) {
        const auto stored =
            db.OpenRecordset("Select * from " + bracketedName(change_.table) + " order by ID asc");
        std::int64_t place = placeBefore_;
        QList<std::pair<std::int64_t, OutlineRow>> rows;
        for (; !stored->Eof(); stored->MoveNext()) {
            const OutlineRow row{stored->Get(store::field::key).TextOrEmpty(),
                                 stored->Get(store::field::name).TextOrEmpty(),
                                 stored->Get(store::field::isDocument).TextOrEmpty() == store::yes};
            const std::int64_t id = stored->Get(store::field::id).ToLong();
            place = row.key == parentKeyOf(change_.key) ? std::max(place, id) : place;
            place = isBelow(change_.key, row.key) ? std::min(place, id - 1) : place;
            rows << std::pair(id, row);
        }
        db.Execute("Delete * from " + bracketedName(change_.table) + " where ID > " +
                   QString::number(place));
        Rows behind;
        for (const auto& [id, row] : rows) {
            if (id > place) {
                behind << row;
            }
        }
        return behind;
    }
    void copyFiles() {
        for (const OutlineRow& row : before_) {
            if (!row.isDocument) {
                continue;
            }
            const QString earlier = library_.document(change_.table, row.key);
            const QString target = library_.document(change_.table, newKeyOf(row));
            const QString content = state_.History->contentBefore(step_, earlier);
            if (content.isEmpty()) {
                done_.missing << row.name;
            } else if (files::resolved(content) != files::resolved(target)) {
                state_.gFso->CopyFile(content, target, true);
            }
        }
    }

    modMain& state_;
    std::int64_t step_;
    const Change& change_;
    Library library_;
    Rows before_;                  // the node and what was below it, then what of it comes back
    std::int64_t placeBefore_ = 0; // the node's ID
    bool hasStayed_ = false;
    QStringList keys_;
    PutBack done_;
};

// Whether a file is the document of a node now that has come under its key since the step.
bool isOfAnotherNode(modMain& state, std::int64_t step, const QString& file) {
    const QString outline = QFileInfo(file).dir().dirName();
    const QString key = QFileInfo(file).completeBaseName();
    if (!isKeyOf(outline, key)) {
        return false;
    }
    for (jet::Database* db : {state.gDbUser.get(), state.gDbTemplate.get()}) {
        const Change node{Kind::rowChanged, QFileInfo(db->Name()).fileName(), outline, key, {}, {}};
        bool isItsDocument = false;
        ignoringErrors([&] {
            isItsDocument = files::resolved(Library(state, node).document(outline, key)) ==
                                files::resolved(file) &&
                            documentMark(*db, key).has_value();
        });
        if (isItsDocument && state.History->keyNow(step, node) != std::optional(key)) {
            return true;
        }
    }
    return false;
}

PutBack putFileBack(modMain& state, std::int64_t step, const Change& change) {
    const QString content = state.History->contentBefore(step, change.key);
    if (content.isEmpty()) {
        throw RunTimeError(error::fileNotFound,
                           u"操作历史没有保留“%1”的内容。"_s.arg(change.name).toStdU16String());
    }
    if (isOfAnotherNode(state, step, change.key)) {
        refuse(u"“%1”现在是另一个节点的文档，不能放回。可以取出文件。"_s.arg(change.name));
    }
    if (files::resolved(content) == files::resolved(change.key)) {
        refuse(u"“%1”在这一步之前的内容就是现在的，不用放回。"_s.arg(change.name));
    }
    state.gFso->CopyFile(content, change.key, true);
    return {{}, {change.name}, {}};
}

} // namespace

bool canPutBack(const Change& change) {
    return (isNode(change) && (change.kind == Kind::rowRemoved || change.kind == Kind::rowChanged ||
                               change.kind == Kind::rowReplaced)) ||
           (isFile(change) &&
            (change.kind == Kind::fileRemoved || change.kind == Kind::fileReplaced));
}

PutBack putBack(modMain& state, std::int64_t step, const Change& change) {
    return isNode(change) ? NodeReturn(state, step, change).run()
                          : putFileBack(state, step, change);
}

QString fileBefore(modMain& state, std::int64_t step, const Change& change) {
    QString file;
    if (isFile(change)) {
        file = change.key;
    } else if (isNode(change) && isKeyOf(change.table, change.key)) {
        ignoringErrors([&] { file = Library(state, change).document(change.table, change.key); });
    }
    const bool came = change.kind == Kind::rowAdded || change.kind == Kind::fileAdded;
    return came || file.isEmpty() || state.History->contentBefore(step, file).isEmpty() ? QString()
                                                                                        : file;
}

QString takenOutPath(const modMain& state, const history::Step& step, const QString& file,
                     const QString& name) {
    const QFileInfo original(file);
    const QString suffix = u'.' + original.suffix();
    QString base = name.endsWith(suffix, Qt::CaseInsensitive) ? name.chopped(suffix.size()) : name;
    static const QRegularExpression notInNames(u"[\\\\/:*?\"<>|\\x00-\\x1f]"_s);
    base.replace(notInNames, u"_"_s);
    base = state.gWorkPath + base + u'-' + step.time.toString(u"yyyyMMdd-HHmmss"_s);
    QString path = base + suffix;
    for (int i = 2; QFileInfo::exists(path); ++i) {
        path = base + u'-' + QString::number(i) + suffix;
    }
    return path;
}

} // namespace qvnd::outline

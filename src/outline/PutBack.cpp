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
#include "store/Names.h"
#include "store/OutlineFolders.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

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
    return !change.key.isEmpty() && !change.table.isEmpty() &&
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
        if (change_.kind == Kind::rowChanged && keys_.contains(change_.key) &&
            state_.History->isStillThere(step_, change_)) {
            return giveNameBack();
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
    PutBack giveNameBack() {
        const auto row = rowOfKey(library_.database(), change_.key);
        row->Edit();
        row->Set(store::field::name, before_.first().name);
        row->Update();
        return {change_.key, {before_.first().name}, {}};
    }
    // None of the keys of the node and of what is below it may be taken.
    void chooseKey() {
        const QString parent = parentKeyOf(change_.key);
        if (!keys_.contains(parent, Qt::CaseInsensitive)) {
            refuse(u"“%1”的上级节点已不在，请先放回上级节点。"_s.arg(before_.first().name));
        }
        const bool isTaken =
            std::any_of(before_.begin(), before_.end(), [&](const OutlineRow& row) {
                return keys_.contains(row.key, Qt::CaseInsensitive);
            });
        done_.key = isTaken ? freeKeyBelow(parent) : change_.key;
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
    QString keyNow(const OutlineRow& row) const {
        return done_.key + row.key.mid(change_.key.size());
    }
    void addRows() {
        addTo(library_.database());
        ignoringErrors([&] {
            const auto own = state_.gWs->OpenDatabase(library_.ownDatabase(change_.table));
            addTo(*own);
        });
        for (const OutlineRow& row : before_) {
            done_.names << row.name;
        }
    }
    void addTo(jet::Database& db) {
        const auto rows = db.OpenRecordset("Select * from " + bracketedName(change_.table));
        for (const OutlineRow& row : before_) {
            addRow(*rows, {keyNow(row), row.name, row.isDocument});
        }
    }
    void copyFiles() {
        for (const OutlineRow& row : before_) {
            if (!row.isDocument) {
                continue;
            }
            const QString earlier = library_.document(change_.table, row.key);
            const QString target = library_.document(change_.table, keyNow(row));
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
    Rows before_; // the node and what was below it
    QStringList keys_;
    PutBack done_;
};

PutBack putFileBack(modMain& state, std::int64_t step, const Change& change) {
    const QString content = state.History->contentBefore(step, change.key);
    if (content.isEmpty()) {
        throw RunTimeError(error::fileNotFound,
                           u"操作历史没有保留“%1”的内容。"_s.arg(change.name).toStdU16String());
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

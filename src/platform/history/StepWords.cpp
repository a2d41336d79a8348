#include "platform/history/StepWords.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::history {

namespace {

// Which plan is open, and the table for rows on their way.
bool isUnseen(const Change& change) {
    return change.table == u"当前表"_s || change.table == u"temp"_s;
}

bool isBookkeeping(const Change& change) {
    return isUnseen(change) || change.table == u"遍历表"_s; // the list of plans
}

QString subjectOf(const CommandFrame& frame, const QList<Change>& changes) {
    const auto named = [&](auto matches) {
        const auto found = std::find_if(changes.begin(), changes.end(), [&](const Change& change) {
            return !isBookkeeping(change) && !change.name.isEmpty() && matches(change);
        });
        return found == changes.end() ? QString() : found->name;
    };
    const auto isSelected = [&](const Change& change) {
        return !frame.selectedKey.isEmpty() && change.key == frame.selectedKey &&
               change.kind != Change::Kind::rowAdded;
    };
    const auto came = [](const Change& change) { return change.kind == Change::Kind::rowAdded; };
    const auto any = [](const Change&) { return true; };
    for (const QString& name : {named(isSelected), named(came), named(any)}) {
        if (!name.isEmpty()) {
            return name;
        }
    }
    const auto inTable = std::find_if(changes.begin(), changes.end(), [](const Change& change) {
        return !change.table.isEmpty() && !isBookkeeping(change);
    });
    return inTable == changes.end() ? frame.plan : inTable->table;
}

QString nodeText(const Change& change) {
    return change.key.isEmpty() ? change.name : u"%1（%2）"_s.arg(change.name, change.key);
}

// Rows without a name are told by their table.
QString rowText(const QString& verb, const Change& change) {
    return change.name.isEmpty() ? u"%1“%2”中的记录"_s.arg(verb, change.table)
                                 : u"%1 %2"_s.arg(verb, nodeText(change));
}

} // namespace

QString titleOf(const CommandFrame& frame, const QList<Change>& changes) {
    const QString subject = subjectOf(frame, changes);
    return subject.isEmpty() ? frame.caption : u"%1[%2]"_s.arg(frame.caption, subject);
}

bool isMinor(const QList<Change>& changes, const QList<FileChange>& files) {
    return std::all_of(changes.begin(), changes.end(), isUnseen) &&
           std::all_of(files.begin(), files.end(), [](const FileChange& change) {
               return change.path.endsWith(u".mdb"_s, Qt::CaseInsensitive);
           });
}

QList<Change> shown(QList<Change> changes) {
    changes.removeIf(isUnseen);
    return changes;
}

QString lineOf(const Change& change) {
    switch (change.kind) {
    case Change::Kind::rowAdded:
        return rowText(u"加入"_s, change);
    case Change::Kind::rowRemoved:
        return rowText(u"移除"_s, change);
    case Change::Kind::rowChanged:
        return change.nameBefore.isEmpty()
                   ? rowText(u"改动"_s, change)
                   : u"改名 %1，原名 %2"_s.arg(nodeText(change), change.nameBefore);
    case Change::Kind::tableMade:
        return u"新建大纲或表 %1"_s.arg(change.name);
    case Change::Kind::tableDropped:
        return u"删去大纲或表 %1"_s.arg(change.name);
    case Change::Kind::fileAdded:
        return u"新文件 %1"_s.arg(change.key);
    case Change::Kind::fileRemoved:
        return u"删去文件 %1"_s.arg(change.key);
    case Change::Kind::fileReplaced:
        return u"改写文件 %1"_s.arg(change.key);
    }
    return {};
}

QString outsideNote(const QStringList& titles) {
    return u"发现在程序外所做的改动，已先保留为操作历史中的一步，可以再回到它：%1"_s.arg(
        titles.join(u'、'));
}

QString goneAlongNote(const QStringList& titles) {
    return u"这之间自动做的也一并收回了，可以在操作历史中再回到它：%1"_s.arg(titles.join(u'、'));
}

QString lostNote(const QStringList& files) {
    return u"操作历史没有下列文件那时的内容，它们没有恢复：%1"_s.arg(files.join(u'、'));
}

} // namespace qvnd::history

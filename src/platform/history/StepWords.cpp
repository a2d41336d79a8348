#include "platform/history/StepWords.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

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

// What a user calls the tables of Db_BidSet.mdb: the pages and libraries of the dialog.
QString settingsWord(const QString& table) {
    static const QHash<QString, QString> words{{u"封面表"_s, u"封面设置"_s},
                                               {u"章节设置表"_s, u"章节设置"_s},
                                               {u"页眉页脚表"_s, u"页眉、页脚及目录"_s},
                                               {u"页面设置表"_s, u"页面、正文设置"_s},
                                               {u"是否设置表"_s, u"选用的库"_s},
                                               {u"封面库"_s, u"封面格式库"_s},
                                               {u"设置库"_s, u"标书设置库"_s},
                                               {u"自定义表"_s, u"自定义库"_s},
                                               {u"当前自定义"_s, u"自定义页"_s},
                                               {u"序号表"_s, u"序号"_s}};
    return words.value(table);
}

// The plan whose information a table keeps; empty for any other table.
// An outline may bear any name.
QString planInformedBy(const Change& change) {
    const bool isOutline = !change.key.isEmpty();
    return !isOutline && change.table.endsWith(u"Org"_s) ? change.table.chopped(3) : QString();
}

bool isSettings(const Change& change) {
    return change.database.compare(u"Db_BidSet.mdb"_s, Qt::CaseInsensitive) == 0;
}

// What a command on rows without names was about.
QString subjectIn(const QList<Change>& changes) {
    QStringList words;
    for (const Change& change : changes) {
        if (!change.table.isEmpty() && !isBookkeeping(change)) {
            const QString plan = planInformedBy(change);
            const QString word = isSettings(change) ? settingsWord(change.table) : plan;
            words << (word.isEmpty() ? change.table : word);
        }
    }
    words.removeDuplicates();
    return words.size() > 1 ? words.first() + u"等"_s : words.join(QString());
}

// The nodes that came into the outline that `first` came into, but for those below one of them. An
// outline that came as a whole is one thing.
QStringList nodesWith(const Change& first, const QList<Change>& changes) {
    QSet<QString> came;
    for (const Change& change : changes) {
        if (change.database != first.database || change.table != first.table) {
            continue;
        }
        if (change.kind == Change::Kind::tableMade) {
            return {first.key};
        }
        if (change.kind == Change::Kind::rowAdded) {
            came.insert(change.key);
        }
    }
    QStringList uppermost;
    for (const QString& key : came) {
        if (!came.contains(key.section(u'.', 0, -2))) {
            uppermost << key;
        }
    }
    return uppermost;
}

bool haveFiles(const QStringList& nodes, const QList<Change>& changes) {
    QSet<QString> files;
    for (const Change& change : changes) {
        if (change.kind == Change::Kind::fileAdded) {
            files.insert(change.name);
        }
    }
    return std::all_of(nodes.begin(), nodes.end(),
                       [&](const QString& key) { return files.contains(key + u".doc"_s); });
}

// " 等 9 个文档" behind the name of the first; empty where it is alone.
QString othersWith(const Change& first, const QList<Change>& changes) {
    if (first.kind != Change::Kind::rowAdded || first.key.isEmpty()) {
        return {};
    }
    const QStringList nodes = nodesWith(first, changes);
    const QString kind = haveFiles(nodes, changes) ? u"文档"_s : u"节点"_s;
    return nodes.size() < 2 ? QString() : u" 等 %1 个%2"_s.arg(nodes.size()).arg(kind);
}

QString subjectOf(const CommandFrame& frame, const QList<Change>& changes) {
    const auto named = [&](auto matches) {
        const auto found = std::find_if(changes.begin(), changes.end(), [&](const Change& change) {
            return !isBookkeeping(change) && !change.name.isEmpty() && matches(change);
        });
        return found == changes.end() ? QString() : found->name + othersWith(*found, changes);
    };
    const auto isSelected = [&](const Change& change) {
        return !frame.selectedKey.isEmpty() && change.key == frame.selectedKey &&
               change.kind != Change::Kind::rowAdded && !change.isOfTable();
    };
    const auto came = [](const Change& change) {
        return change.kind == Change::Kind::rowAdded || change.kind == Change::Kind::rowReplaced;
    };
    const auto any = [](const Change&) { return true; };
    for (const QString& name : {named(isSelected), named(came), named(any)}) {
        if (!name.isEmpty()) {
            return name;
        }
    }
    const QString subject = subjectIn(changes);
    return subject.isEmpty() ? frame.plan : subject;
}

// Where a row with a name stands: under its key, or in one of the lists.
QString placeText(const Change& change) {
    if (change.table == u"遍历表"_s) {
        const bool isOfTemplates =
            change.database.compare(u"Db_Template.mdb"_s, Qt::CaseInsensitive) == 0;
        return isOfTemplates ? u"模板列表"_s : u"方案列表"_s;
    }
    return isSettings(change) ? settingsWord(change.table) : change.key;
}

QString namedText(const Change& change, const QString& name) {
    const QString place = placeText(change);
    if (place.isEmpty() || name.isEmpty()) {
        return name + place;
    }
    return u"%1（%2）"_s.arg(name, place);
}

// A table in the user's words.
QString tableText(const Change& change) {
    if (isSettings(change)) {
        const QString word = settingsWord(change.table);
        return word.isEmpty() ? u"设置 %1"_s.arg(change.table) : word;
    }
    const QString plan = planInformedBy(change);
    return plan.isEmpty() ? u"大纲 %1"_s.arg(change.table) : u"%1 的工程信息"_s.arg(plan);
}

QString fewOf(const QStringList& names) {
    constexpr qsizetype mostNames = 5;
    const QString rest = names.size() > mostNames ? u" 等 %1 个"_s.arg(names.size()) : QString();
    return names.mid(0, mostNames).join(u'、') + rest;
}

// Of files that are out of reach.
QString foldersOf(const QStringList& files) {
    QStringList folders;
    for (const QString& file : files) {
        folders << QDir::toNativeSeparators(QFileInfo(Places::pathElsewhere(file)).path());
    }
    folders.removeDuplicates();
    return fewOf(folders);
}

// Rows with neither name nor key are told by their table.
QString rowText(const QString& verb, const Change& change) {
    const bool isNamed = !change.name.isEmpty() || !change.key.isEmpty();
    return u"%1 %2"_s.arg(verb, isNamed ? namedText(change, change.name) : tableText(change));
}

// Whether a folder of outlines, such as that of the file's, is one of templates.
bool isOfTemplates(const QString& path) {
    return QFileInfo(QFileInfo(path).path()).dir().dirName() == u"标书模板"_s;
}

// Whether a file is the document of a plan's node: it bears the node's key.
bool isOfPlan(const QString& path) {
    const QFileInfo file(path);
    return file.fileName().startsWith(file.dir().dirName() + u'.') &&
           file.suffix().compare(u"doc"_s, Qt::CaseInsensitive) == 0 && !isOfTemplates(path);
}

} // namespace

QString titleOf(const CommandFrame& frame, const QList<Change>& changes) {
    const QString subject = subjectOf(frame, changes);
    return subject.isEmpty() ? frame.caption : u"%1[%2]"_s.arg(frame.caption, subject);
}

QString planOf(const QList<Change>& changes, const QString& open) {
    QStringList plans;
    QStringList plansOfFiles;
    for (const Change& change : changes) {
        const bool isOfPlans =
            change.database.compare(u"Db_UsTemplate.mdb"_s, Qt::CaseInsensitive) == 0;
        if (isOfPlans && !change.key.isEmpty() && !isBookkeeping(change)) {
            plans << change.table;
        } else if (change.table.isEmpty() && isOfPlan(change.key)) {
            plansOfFiles << QFileInfo(change.key).dir().dirName();
        }
    }
    plans.removeDuplicates();
    plansOfFiles.removeDuplicates();
    const QStringList& all = plans.isEmpty() ? plansOfFiles : plans;
    return all.size() == 1 ? all.first() : open;
}

bool isOwnCopy(const QString& path) {
    const QFileInfo file(path);
    return file.completeBaseName().compare(file.dir().dirName(), Qt::CaseInsensitive) == 0;
}

QString databaseWord(const QString& path) {
    static const QHash<QString, QString> words{{u"db_ustemplate.mdb"_s, u"用户方案"_s},
                                               {u"db_template.mdb"_s, u"施工方案模板"_s},
                                               {u"db_bidset.mdb"_s, u"施工方案设置"_s}};
    const QFileInfo file(path);
    if (isOwnCopy(path)) {
        const QString kind = isOfTemplates(path) ? u"模板 "_s : QString();
        return kind + u"%1 文件夹中的大纲"_s.arg(file.completeBaseName());
    }
    return words.value(file.fileName().toLower(), file.fileName());
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

QString nameBefore(const Change& change) {
    return change.nameBefore.isEmpty() ? change.name : change.nameBefore;
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
                   : u"改名 %1，原名 %2"_s.arg(namedText(change, change.name), change.nameBefore);
    case Change::Kind::rowReplaced:
        return u"替换 %1，现为 %2"_s.arg(namedText(change, change.nameBefore), change.name);
    case Change::Kind::tableMade:
        return u"新建 %1"_s.arg(tableText(change));
    case Change::Kind::tableDropped:
        return u"删去 %1"_s.arg(tableText(change));
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
    return u"发现在程序外所做的改动，已先保留为操作历史中的一步，可以再回到它："_s + fewOf(titles);
}

QString goneAlongNote(const QStringList& titles) {
    return u"这之间自动做的也一并收回了，可以在操作历史中再回到它："_s + fewOf(titles);
}

QString lostNote(const QStringList& files) {
    return u"操作历史没有下列文件那时的内容，它们没有恢复："_s + fewOf(files);
}

QString leaveOutQuestion(const QStringList& files) {
    return u"这也要改动另一台计算机上的，或者已经不在的程序文件夹中的文件：\n%1\n\n"
           u"要跳过它们，只做其余的吗？选“是”时那里的文件不变；选“否”就什么也不改动。"_s.arg(
               foldersOf(files));
}

QString killedOutOfReach(const QStringList& files) {
    return u"有一个操作没有做完，它也改动了另一台计算机上的，或者已经不在的程序文件夹中的文件：\n"
           u"%1\n\n要跳过它们，只把其余的记入操作历史吗？选“否”时请先在那里启动程序。"_s.arg(
               foldersOf(files));
}

QString outOfReachRefusal() {
    return u"要撤消或恢复的操作改动了另一台计算机上的，或者已经不在的程序文件夹中的文件，"
           u"在这里做不到。"_s;
}

QString leftOutNote(const QStringList& files) {
    return u"下列文件夹够不到，其中的文件没有改动："_s + foldersOf(files);
}

} // namespace qvnd::history

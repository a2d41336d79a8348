#include "outline/BeyondAsked.h"

#include "outline/OutlineKeys.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

using history::Change;
using Kind = history::Change::Kind;

// More names are only counted.
constexpr qsizetype mostNames = 5;

// Where a row or table lies. The same keys and names may stand in both libraries; elsewhere are the
// copies that go into the folders.
enum class Place { plans, templates, settings, elsewhere };

Place placeOf(const Change& row) {
    const auto isIn = [&](const QString& database) {
        return row.database.compare(database, Qt::CaseInsensitive) == 0;
    };
    return isIn(u"Db_UsTemplate.mdb"_s) ? Place::plans
           : isIn(u"Db_Template.mdb"_s) ? Place::templates
           : isIn(u"Db_BidSet.mdb"_s)   ? Place::settings
                                        : Place::elsewhere;
}

// The library whose folders a file lies in: .../标书模板/模/模.1.doc.
Place placeOfFile(const Change& file) {
    const QString outlines = QFileInfo(QFileInfo(file.key).path()).path();
    return QFileInfo(outlines).fileName() == u"标书模板"_s ? Place::templates : Place::plans;
}

bool isOutlineRow(const Change& change) {
    return !change.key.isEmpty() && !change.table.isEmpty() && change.table != u"temp"_s;
}

QString inQuotes(QStringList names) {
    for (QString& name : names) {
        name = u'“' + name + u'”';
    }
    return listed(names);
}

// The ends of the names of a setting library's three tables, in the order in which they are
// deleted. A cover library has one table, of its bare name.
constexpr std::array<QStringView, 3> settingEnds{u"章节", u"眉脚", u"页面"};

QString settingLibraryOf(const QString& table) {
    const bool isOne = std::any_of(settingEnds.begin(), settingEnds.end(),
                                   [&](QStringView end) { return table.endsWith(end); });
    return isOne ? table.chopped(2) : QString();
}

bool isBelow(const QString& node, const QString& key) {
    return !node.isEmpty() && (key == node || key.startsWith(node + u'.'));
}

class Words {
public:
    Words(const history::CommandFrame& frame, const QList<Change>& changes, const OutlineNow& rows)
        : frame_(frame), changes_(changes), rows_(rows),
          isDeletion_(frame.caption.contains(u"删除"_s)) {
        for (const Change& change : changes) {
            const Place place = placeOf(change);
            if (change.kind == Kind::tableDropped) {
                dropped_[place] << change.table;
            } else if (change.kind == Kind::tableMade) {
                made_[place] << change.table;
            } else if (isOutlineRow(change) &&
                       (change.kind == Kind::rowAdded || change.kind == Kind::rowReplaced)) {
                came_[place] << change.name;
                keysThatCame_[place] << change.key;
            } else if (change.kind == Kind::rowAdded && isInList(change)) {
                listed_[place] << change.name;
            } else if (change.kind == Kind::rowRemoved && change.table == u"设置库"_s) {
                settingsThatWent_ << change.name;
            } else if (change.kind == Kind::rowRemoved) {
                keysThatWent_[place] << change.key;
            }
        }
    }

    QString all() {
        tellRows();
        tellUnreachable();
        tellOutlines();
        tellHalfStored();
        tellSettingLibraries();
        tellFiles();
        return sentences_.join(u'\n');
    }

private:
    // The lists of outlines and of libraries of settings.
    static bool isInList(const Change& change) {
        return change.table == u"遍历表"_s || change.table == u"设置库"_s ||
               change.table == u"封面库"_s;
    }
    bool isDropped(const Change& change) const {
        return dropped_[placeOf(change)].contains(change.table);
    }
    // The library that a deletion is about: the plans where the plan's selected node went, the
    // templates where a deletion has left that alone.
    Place placeOfDeletion() const {
        const auto isSelected = [&](const QString& key) {
            return isBelow(frame_.selectedKey, key);
        };
        const QSet<QString> went = keysThatWent_[Place::plans];
        const bool isOfPlans = std::any_of(went.begin(), went.end(), isSelected) ||
                               dropped_[Place::plans].contains(frame_.plan);
        return isOfPlans ? Place::plans : Place::templates;
    }
    // The command's word says that the selected node goes, with what is below it. Which node of a
    // template that is, the rows tell: they went by the characters that their keys begin with, and
    // so its own key is the shortest. The frame knows only the plan's selected node, whose key a
    // template of the same name may have too.
    bool isAskedFor(const Change& change) const {
        const Place place = placeOf(change);
        return isDeletion_ && place == placeOfDeletion() &&
               isBelow(place == Place::templates ? shortestKeyThatWent(change.table)
                                                 : frame_.selectedKey,
                       change.key);
    }
    QString shortestKeyThatWent(const QString& table) const {
        QString shortest;
        for (const Change& change : changes_) {
            if (change.kind == Kind::rowRemoved && placeOf(change) == Place::templates &&
                change.table == table &&
                (shortest.isEmpty() || change.key.size() < shortest.size())) {
                shortest = change.key;
            }
        }
        return shortest;
    }
    // Of the node that is no longer there under its key; nothing where that was asked for.
    std::optional<QString> nameThatWent(const Change& change) const {
        if (!isOutlineRow(change)) {
            return std::nullopt;
        }
        if (change.kind == Kind::rowReplaced) {
            return change.nameBefore;
        }
        const bool isTold =
            change.kind == Kind::rowRemoved && !isDropped(change) && !isAskedFor(change);
        return isTold ? std::optional(change.name) : std::nullopt;
    }
    // A row that was moved is gone under its old key and there under a new one, which may have been
    // another node's: then that one is gone.
    void tellRows() {
        QStringList gone;
        QMap<Place, QStringList> arrived = came_;
        for (const Change& change : changes_) {
            const std::optional<QString> name = nameThatWent(change);
            if (name && !arrived[placeOf(change)].removeOne(*name)) {
                gone << *name;
            }
        }
        if (!gone.isEmpty()) {
            sentences_ << u"同时移除了 %1 个节点：%2"_s.arg(gone.size()).arg(listed(gone));
        }
    }
    bool hasLostAncestor(Place place, QString key) const {
        while (depthOfKey(key) > 0) {
            key = parentKeyOf(key);
            if (keysThatWent_[place].contains(key) && !keysThatCame_[place].contains(key)) {
                return true;
            }
        }
        return false;
    }
    // The trees are filled in order, and end before the first row whose parent they have not.
    static qsizetype shownOf(const OutlineRows& rows) {
        QSet<QString> keys;
        qsizetype shown = 0;
        while (shown < rows.size() &&
               (shown == 0 || keys.contains(parentKeyOf(rows[shown].first)))) {
            keys << rows[shown++].first;
        }
        return shown;
    }
    // Those behind the first of them, where that is one of `lost`.
    static QStringList hiddenBehind(const OutlineRows& rows, const QSet<QString>& lost) {
        const qsizetype shown = shownOf(rows);
        QStringList hidden;
        if (shown < rows.size() && lost.contains(rows[shown].first)) {
            for (const auto& [key, name] : rows.mid(shown)) {
                if (!lost.contains(key)) {
                    hidden << name;
                }
            }
        }
        return hidden;
    }
    void tellUnreachable() {
        QSet<std::pair<QString, QString>> outlines; // that have lost rows, with their databases
        for (const Change& change : changes_) {
            if (change.kind == Kind::rowRemoved && isOutlineRow(change) && !isDropped(change)) {
                outlines << std::pair(change.database, change.table);
            }
        }
        QStringList lost;
        QStringList hidden;
        for (const auto& [database, outline] : outlines) {
            Change lostIn;
            lostIn.database = database;
            const OutlineRows rows = rows_(database, outline);
            QSet<QString> keys;
            for (const auto& [key, name] : rows) {
                if (hasLostAncestor(placeOf(lostIn), key)) {
                    lost << name;
                    keys << key;
                }
            }
            hidden << hiddenBehind(rows, keys);
        }
        if (!lost.isEmpty()) {
            sentences_ << u"%1 个节点的上级已不在，大纲中不再显示：%2"_s.arg(lost.size())
                              .arg(listed(lost));
        }
        if (!hidden.isEmpty()) {
            sentences_ << u"排在后面的 %1 个节点也不再显示，也不会生成：%2"_s.arg(hidden.size())
                              .arg(listed(hidden));
        }
    }
    // Of the tables, those that are outlines of their own.
    static QStringList outlinesIn(const QStringList& tables) {
        QStringList outlines;
        for (const QString& table : tables) {
            const bool isInformation =
                table.endsWith(u"Org"_s) && tables.contains(table.chopped(3));
            if (!isInformation && table != u"temp"_s) {
                outlines << table;
            }
        }
        return outlines;
    }
    // The plan or template that a deletion is about. Deleting a template as a whole refreshes
    // nothing, so it is the only outline to go.
    bool isAskedFor(Place place, const QString& outline, qsizetype all) const {
        const bool isPlan =
            place == Place::plans && outline == frame_.plan && depthOfKey(frame_.selectedKey) == 0;
        return isDeletion_ && place == placeOfDeletion() && (isPlan || all == 1) &&
               !haveNodesGoneAlone();
    }
    // Whether nodes went from an outline that stays.
    bool haveNodesGoneAlone() const {
        return std::any_of(changes_.begin(), changes_.end(), [&](const Change& change) {
            return change.kind == Kind::rowRemoved && isOutlineRow(change) && !isDropped(change);
        });
    }
    // Names that left the list of outlines because there was no table of theirs any more.
    QStringList namesWithoutTable(Place place) const {
        QStringList names;
        for (const Change& change : changes_) {
            if (change.kind == Kind::rowRemoved && change.table == u"遍历表"_s &&
                placeOf(change) == place && !dropped_[place].contains(change.name)) {
                names << change.name;
            }
        }
        return names;
    }
    QStringList forgottenIn(Place place) const {
        return outlinesIn(dropped_[place]) + namesWithoutTable(place);
    }
    void tellOutlines() {
        const QStringList plans = forgottenIn(Place::plans);
        const QStringList templates = forgottenIn(Place::templates);
        const qsizetype all = plans.size() + templates.size();
        QStringList forgotten;
        for (const auto& [place, outlines] :
             {std::pair(Place::plans, plans), std::pair(Place::templates, templates)}) {
            std::copy_if(outlines.begin(), outlines.end(), std::back_inserter(forgotten),
                         [&, where = place](const QString& outline) {
                             return !isAskedFor(where, outline, all);
                         });
        }
        if (!forgotten.isEmpty()) {
            sentences_ << u"文件夹或数据已不在，因此不再列出：%1"_s.arg(listed(forgotten));
        }
        const QStringList adopted =
            outlinesIn(made_[Place::plans]) + outlinesIn(made_[Place::templates]);
        if (isStart_ && !adopted.isEmpty()) {
            sentences_ << u"列入了文件夹中的方案或模板：%1"_s.arg(listed(adopted));
        }
    }
    // The command that made it has failed before it was listed.
    QStringList unlistedIn(Place place) const {
        QStringList unlisted = outlinesIn(made_[place]);
        unlisted.removeIf([&](const QString& outline) { return listed_[place].contains(outline); });
        return isStart_ ? QStringList() : unlisted;
    }
    void tellHalfStored() {
        if (const QStringList plans = unlistedIn(Place::plans); !plans.isEmpty()) {
            sentences_ << u"%1只做了一半，没有列入用户方案：请先撤消，再做一次。"_s.arg(
                inQuotes(plans));
        }
        if (const QStringList templates = unlistedIn(Place::templates); !templates.isEmpty()) {
            sentences_ << u"%1只存了一半，没有列入方案模板：请先撤消，再存一次。"_s.arg(
                inQuotes(templates));
        }
    }
    // Of the tables that were made: the libraries of settings, where no list names them.
    QStringList unlistedLibraries() const {
        QStringList unlisted;
        for (const QString& table : made_[Place::settings]) {
            const QString settings = settingLibraryOf(table);
            const QString library = settings.isEmpty() ? table : settings;
            const QStringList& names = listed_[Place::settings];
            if (!names.contains(table) && !names.contains(library) && !unlisted.contains(library)) {
                unlisted << library;
            }
        }
        return unlisted;
    }
    void tellSettingLibraries() {
        if (const QStringList names = unlistedLibraries(); !names.isEmpty()) {
            sentences_ << u"%1只存了一半，没有列入库中：请先撤消，再用别的名称存一次。"_s.arg(
                inQuotes(names));
        }
        for (const QString& library : settingsThatWent_) {
            const auto missing =
                std::find_if(settingEnds.begin(), settingEnds.end(), [&](QStringView end) {
                    return !dropped_[Place::settings].contains(library + end.toString());
                });
            if (missing != settingEnds.end()) {
                sentences_ << u"%1没有删全：它缺少%2，删除到这里就停止了。"_s.arg(
                    inQuotes({library}), inQuotes({library + missing->toString()}));
            }
        }
    }
    void tellFiles() {
        QStringList replaced;
        QStringList gone;
        QStringList stray;
        for (const Change& change : changes_) {
            if (change.kind == Kind::fileReplaced) {
                replaced << change.name;
            } else if (change.kind == Kind::fileRemoved && !goesWithNodes(change)) {
                gone << change.name;
            } else if (change.kind == Kind::fileAdded && isDocument(change) &&
                       isInOutline(change) &&
                       !keysThatCame_[placeOfFile(change)].contains(keyOf(change))) {
                stray << change.name;
            }
        }
        if (!replaced.isEmpty()) {
            sentences_ << u"覆盖了 %1 个文件：%2"_s.arg(replaced.size()).arg(listed(replaced));
        }
        if (!gone.isEmpty()) {
            const QString words =
                isDeletion_ ? u"同时删去了 %1 个没有节点的文件：%2"_s : u"删去了 %1 个文件：%2"_s;
            sentences_ << words.arg(gone.size()).arg(listed(gone));
        }
        if (!stray.isEmpty()) {
            sentences_ << u"留下了没有节点的文件：%1"_s.arg(listed(stray));
        }
    }
    static bool isDocument(const Change& file) {
        return file.name.endsWith(u".doc"_s, Qt::CaseInsensitive);
    }
    // The document of a node that went. Where an outline's folder goes whole, as a plan's always
    // does, what its nodes that were deleted earlier have left there goes along as part of it.
    bool goesWithNodes(const Change& file) const {
        const Place place = placeOfFile(file);
        const QString key = keyOf(file);
        const QString outline = QFileInfo(file.key).dir().dirName();
        const bool isWhole =
            isDeletion_ && (place == Place::plans || dropped_[place].contains(outline));
        return isDocument(file) &&
               (keysThatWent_[place].contains(key) || (isWhole && isKeyOf(outline, key)));
    }
    static QString keyOf(const Change& file) { return QFileInfo(file.key).completeBaseName(); }
    // The file of a node bears its key, which begins with the name of its folder; the stray copy of
    // an overwrite lies in the open plan's folder under any name.
    bool isInOutline(const Change& file) const {
        const QString folder = QFileInfo(file.key).dir().dirName();
        return folder == tableOfKey(keyOf(file)) || folder == frame_.plan;
    }

    const history::CommandFrame& frame_;
    const QList<Change>& changes_;
    const OutlineNow& rows_;
    bool isDeletion_;
    bool isStart_ = frame_.caption == history::caption::start;
    QMap<Place, QStringList> dropped_;
    QMap<Place, QStringList> made_;
    QMap<Place, QStringList> came_;   // names of rows
    QMap<Place, QStringList> listed_; // outlines and libraries that came into a list
    QStringList settingsThatWent_;    // setting libraries that left theirs
    QMap<Place, QSet<QString>> keysThatCame_;
    QMap<Place, QSet<QString>> keysThatWent_;
    QStringList sentences_;
};

} // namespace

QString listed(const QStringList& names) {
    const QString rest = names.size() > mostNames ? u"等"_s : QString();
    return names.mid(0, mostNames).join(u"、"_s) + rest;
}

QString beyondAsked(const history::CommandFrame& frame, const QList<history::Change>& changes,
                    const OutlineNow& rows) {
    return Words(frame, changes, rows).all();
}

} // namespace qvnd::outline

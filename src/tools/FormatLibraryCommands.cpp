#include "tools/FormatLibraryCommands.h"

#include "format/FormatLibraries.h"
#include "generate/CommandCaptions.h"
#include "platform/files/Paths.h"
#include "platform/files/Trim.h"
#include "store/ProgramFiles.h"
#include "tools/Arguments.h"
#include "tools/FormatCommands.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

enum class Kind { setting, cover };

jet::Database& settingsOf(Session& session) { return *session.program().state().gDbBidSet; }

Kind kindOf(const QString& word) {
    if (word == u"set") {
        return Kind::setting;
    }
    if (word == u"cover") {
        return Kind::cover;
    }
    throw UsageError(u"库的种类是 set（标书设置库）或 cover（封面库）：%1"_s.arg(word));
}

QStringList entriesOf(jet::Database& settings, Kind kind) {
    return kind == Kind::setting ? format::settingLibraries(settings)
                                 : format::coverLibraries(settings);
}

// The name at that place, as the dialog takes it.
QString nameAt(const Arguments& arguments, qsizetype position) {
    QString name = files::Trim(arguments.position(position));
    if (name.isEmpty()) {
        throw UsageError(u"名称不能为空"_s);
    }
    return name;
}

ExitStatus tellNames(Session& session, const QStringList& names) {
    session.output().result(QJsonArray::fromStringList(names), names.join(u'\n'));
    return ExitStatus::done;
}

ExitStatus tellName(Session& session, const QString& name) {
    session.output().result(QJsonObject{{u"名称"_s, name}}, name);
    return ExitStatus::done;
}

ExitStatus listLibraries(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const Kind kind = kindOf(arguments.position(0));
    return tellNames(session, entriesOf(settingsOf(session), kind));
}

// "set NAME" or "cover NAME".
struct Library {
    Kind kind;
    QString name;
};

Library libraryOf(const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(2, 2);
    return {kindOf(arguments.position(0)), nameAt(arguments, 1)};
}

ExitStatus saveLibrary(Session& session, const QStringList& words) {
    const auto [kind, name] = libraryOf(words);
    jet::Database& settings = settingsOf(session);
    if (kind == Kind::setting) {
        format::copySettingTables(settings, name);
        format::registerSettingLibrary(settings, name);
    } else {
        format::copyCoverTable(settings, name);
        format::registerCoverLibrary(settings, name);
    }
    return tellName(session, name);
}

QJsonArray rowsOf(jet::Database& settings, const QString& table, QStringList& lines) {
    QJsonArray json;
    const auto rows = settings.OpenRecordset(u"Select * from [%1]"_s.arg(table));
    for (; !rows->Eof(); rows->MoveNext()) {
        QJsonObject row;
        lines << u"[%1]"_s.arg(table);
        for (const jet::Field& field : rows->Fields()) {
            const jet::Value value = rows->Get(field.Name);
            row[field.Name] = value.IsNull() ? QJsonValue() : QJsonValue(value.ToText());
            lines << field.Name + u"："_s + value.TextOrEmpty();
        }
        json.append(row);
    }
    return json;
}

ExitStatus notThere(Session& session, const QString& name) {
    return refuseInBox(session, u"没有名为“%1”的库。"_s.arg(name));
}

ExitStatus showLibrary(Session& session, const QStringList& words) {
    const auto [kind, name] = libraryOf(words);
    jet::Database& settings = settingsOf(session);
    if (!entriesOf(settings, kind).contains(name)) {
        return notThere(session, name);
    }
    const format::SettingTables tables(name);
    const QStringList shown = kind == Kind::cover
                                  ? QStringList(name)
                                  : QStringList{tables.chapters, tables.page, tables.headerFooter};
    QJsonObject json;
    QStringList lines;
    for (const QString& table : shown) {
        json[table] = rowsOf(settings, table, lines);
    }
    session.output().result(json, lines.join(u'\n'));
    return ExitStatus::done;
}

ExitStatus deleteLibrary(Session& session, const QStringList& words) {
    const auto [kind, name] = libraryOf(words);
    jet::Database& settings = settingsOf(session);
    if (!entriesOf(settings, kind).contains(name)) {
        return notThere(session, name);
    }
    if (kind == Kind::setting) {
        format::deleteSettingLibrary(settings, name);
    } else {
        format::deleteCoverLibrary(settings, name);
    }
    return tellName(session, name);
}

// With a name that entry applies from now on, without one the working tables do. What the other
// kinds say stays, but for what excludes the choice.
ExitStatus useLibrary(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 2);
    const Kind kind = kindOf(arguments.position(0));
    std::optional<QString> name;
    jet::Database& settings = settingsOf(session);
    if (arguments.positions().size() == 2) {
        name = nameAt(arguments, 1);
        if (!entriesOf(settings, kind).contains(*name)) {
            return notThere(session, *name);
        }
    }
    format::Selection selection = format::readSelection(settings);
    if (kind == Kind::setting) {
        selection.setting = name;
    } else {
        selection.cover = name;
        selection.customPage = selection.customPage && !name;
    }
    format::writeSelection(settings, selection);
    return tellName(session, name.value_or(QString()));
}

ExitStatus listPages(Session& session, const QStringList& words) {
    Arguments(words, {}).expectPositions(0, 0);
    return tellNames(session, format::customPages(settingsOf(session)));
}

ExitStatus createPage(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const QString name = nameAt(arguments, 0);
    ProgramRun& run = session.program();
    jet::Database& settings = settingsOf(session);
    if (format::isCustomPage(settings, name)) {
        session.messages().tell(u"对不起，[%1]自定义已经存在！"_s.arg(name),
                                desktop::Icon::exclamation);
        return ExitStatus::refused;
    }
    format::createCustomPage(run.state(), run.services().word, name);
    format::registerCustomPage(settings, name);
    const QString file = files::resolved(store::customPageFile(run.state().gAppPath, name));
    session.output().result(QJsonObject{{u"文件"_s, file}}, file);
    return ExitStatus::done;
}

ExitStatus pageNotThere(Session& session, const QString& name) {
    return refuseInBox(session, u"没有名为“%1”的自定义。"_s.arg(name));
}

// Its document stays in the folder, as the dialog leaves it.
ExitStatus deletePage(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const QString name = nameAt(arguments, 0);
    jet::Database& settings = settingsOf(session);
    if (!format::isCustomPage(settings, name)) {
        return pageNotThere(session, name);
    }
    format::unregisterCustomPage(settings, name);
    return tellName(session, name);
}

ExitStatus usePage(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(0, 1);
    jet::Database& settings = settingsOf(session);
    format::Selection selection = format::readSelection(settings);
    selection.customPage = !arguments.positions().isEmpty();
    QString name;
    if (selection.customPage) {
        name = nameAt(arguments, 0);
        if (!format::isCustomPage(settings, name)) {
            return pageNotThere(session, name);
        }
        format::storeCurrentPage(settings, name);
        selection.cover.reset();
    }
    format::writeSelection(settings, selection);
    return tellName(session, name);
}

} // namespace

std::vector<Command> formatLibraryCommands() {
    return {
        {u"format library list"_s, u"set|cover"_s, u"列出标书设置库或封面库"_s, listLibraries},
        {u"format library save"_s, u"set|cover 名称"_s, u"把现在的设置存入库内"_s, saveLibrary,
         generate::captions::settings},
        {u"format library show"_s, u"set|cover 名称"_s, u"显示库内的设置"_s, showLibrary},
        {u"format library delete"_s, u"set|cover 名称"_s, u"从库内删除"_s, deleteLibrary,
         generate::captions::settings},
        {u"format library use"_s, u"set|cover [名称]"_s, u"生成时选用库，没有名称则不选用"_s,
         useLibrary, generate::captions::settings},
        {u"format custom list"_s, {}, u"列出自定义页"_s, listPages},
        {u"format custom create"_s, u"名称"_s, u"创建自定义页，显示它的文件"_s, createPage,
         generate::captions::settings},
        {u"format custom delete"_s, u"名称"_s, u"删除自定义页，文件留下"_s, deletePage,
         generate::captions::settings},
        {u"format custom use"_s, u"[名称]"_s, u"以自定义页代替封面，没有名称则不代替"_s, usePage,
         generate::captions::settings},
    };
}

} // namespace qvnd::tools

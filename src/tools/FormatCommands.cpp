#include "tools/FormatCommands.h"

#include "format/FieldRules.h"
#include "generate/CommandCaptions.h"
#include "store/FormatTables.h"
#include "store/Names.h"
#include "tools/Arguments.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

QStringList tableNames() {
    QStringList names;
    for (const jet::TableDef& table : store::formatTables()) {
        names << table.Name;
    }
    return names;
}

// Those that hold one row or none.
bool holdsOneRow(const QString& table) {
    namespace name = store::table;
    return table == name::selection || table == name::currentCustomPages || table == name::cover ||
           table == name::headerFooter || table == name::pageSetup;
}

std::unique_ptr<jet::Recordset> rowsOf(Session& session, const QString& table) {
    if (!tableNames().contains(table)) {
        throw UsageError(u"没有这个格式表：%1（有：%2）"_s.arg(table, tableNames().join(u"、"_s)));
    }
    return session.program().state().gDbBidSet->OpenRecordset(u"Select * from [%1]"_s.arg(table));
}

QJsonObject rowAsJson(const jet::Recordset& row) {
    QJsonObject json;
    for (const jet::Field& field : row.Fields()) {
        const jet::Value value = row.Get(field.Name);
        json[field.Name] = value.IsNull() ? QJsonValue() : QJsonValue(value.ToText());
    }
    return json;
}

QString rowAsText(const jet::Recordset& row) {
    QStringList lines;
    for (const jet::Field& field : row.Fields()) {
        lines << field.Name + u"："_s + row.Get(field.Name).TextOrEmpty();
    }
    return lines.join(u'\n');
}

void tell(Session& session, jet::Recordset& rows) {
    QJsonArray json;
    QStringList texts;
    for (; !rows.Eof(); rows.MoveNext()) {
        json.append(rowAsJson(rows));
        texts << rowAsText(rows);
    }
    session.output().result(json, texts.join(u"\n\n"_s));
}

ExitStatus show(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    tell(session, *rowsOf(session, arguments.position(0)));
    return ExitStatus::done;
}

// "级别=1" names the row whose field has that text; without a condition it is the first row.
bool isWanted(const jet::Recordset& row, const QString& condition) {
    const qsizetype sign = condition.indexOf(u'=');
    return condition.isEmpty() ||
           row.Get(condition.left(sign)).TextOrEmpty() == condition.mid(sign + 1);
}

// Opens the row that is meant for writing; a table of one row that has none gets it. False when
// there is no such row.
bool openRow(jet::Recordset& rows, const QString& table, const QString& condition) {
    if (rows.Eof() && condition.isEmpty() && holdsOneRow(table)) {
        rows.AddNew();
        return true;
    }
    while (!rows.Eof() && !isWanted(rows, condition)) {
        rows.MoveNext();
    }
    if (!rows.Eof()) {
        rows.Edit();
        return true;
    }
    return false;
}

ExitStatus set(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{}, {u"--where"_s}});
    arguments.expectPositions(3, 3);
    const QString condition = arguments.option(u"--where"_s);
    if (!condition.isEmpty() && !condition.contains(u'=')) {
        throw UsageError(u"--where 应写作 字段=值：%1"_s.arg(condition));
    }
    const QString table = arguments.position(0);
    const QString field = arguments.position(1);
    const QString value = arguments.position(2);
    const auto rows = rowsOf(session, table);
    if (const QString problem = format::problemOf(table, field, value); !problem.isEmpty()) {
        return refuseInBox(session, problem);
    }
    if (!openRow(*rows, table, condition)) {
        return refuseInBox(session, u"没有符合条件的行。"_s);
    }
    format::setField(*rows, table, field, value);
    rows->Update();
    if (rows->Eof()) {
        rows->Requery();
    }
    session.output().result(rowAsJson(*rows), {});
    return ExitStatus::done;
}

// The plan becomes the open one, and the dialog is loaded as at its first show.
ExitStatus load(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    ProgramRun& run = session.program();
    openPlan(run, arguments.position(0));
    run.frmBidSet().form();
    run.state().Remarks.clear(); // the result below says it
    const auto cover = rowsOf(session, store::table::cover.toString());
    const QString project = cover->Get(store::field::projectName).TextOrEmpty();
    const QString office = cover->Get(store::field::officeName).TextOrEmpty();
    session.output().result(
        QJsonObject{{store::field::projectName.toString(), project},
                    {store::field::officeName.toString(), office},
                    {store::field::rightAligned.toString(), store::yes.toString()}},
        u"封面：%1；目录页码右对齐"_s.arg(office.isEmpty() ? project : project + u'，' + office));
    return ExitStatus::done;
}

} // namespace

ExitStatus refuseInBox(Session& session, const QString& why) {
    session.messages().tell(why, desktop::Icon::exclamation, desktop::hintTitle);
    return ExitStatus::refused;
}

std::vector<Command> formatCommands() {
    return {{u"format load"_s, u"方案"_s, u"打开格式设置：封面取方案的名称和单位，目录页码右对齐"_s,
             load, generate::captions::settings},
            {u"format show"_s, u"格式表"_s, u"显示一个格式表的各行"_s, show},
            {u"format set"_s, u"格式表 [--where 字段=值] 字段 值"_s,
             u"改写格式设置的一个字段（第一行的，或符合条件的行的）"_s, set,
             generate::captions::settings}};
}

} // namespace qvnd::tools

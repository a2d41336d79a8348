#include "tools/FormatCommands.h"

#include "store/Names.h"
#include "tools/Arguments.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

// The tables that generation reads, each in the order of its rows.
const QStringList& workingTables() {
    namespace table = store::table;
    static const QStringList names = {table::cover.toString(), table::chapters.toString(),
                                      table::headerFooter.toString(), table::pageSetup.toString()};
    return names;
}

std::unique_ptr<jet::Recordset> rowsOf(Session& session, const QString& table) {
    if (!workingTables().contains(table)) {
        throw UsageError(
            u"没有这个格式表：%1（有：%2）"_s.arg(table, workingTables().join(u"、"_s)));
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

ExitStatus show(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const auto rows = rowsOf(session, arguments.position(0));
    QJsonArray json;
    QStringList texts;
    for (; !rows->Eof(); rows->MoveNext()) {
        json.append(rowAsJson(*rows));
        texts << rowAsText(*rows);
    }
    session.output().result(json, texts.join(u"\n\n"_s));
    return ExitStatus::done;
}

// "级别=1" names the row whose field has that text; without a condition it is the first row.
bool isWanted(const jet::Recordset& row, const QString& condition) {
    const qsizetype sign = condition.indexOf(u'=');
    return condition.isEmpty() ||
           row.Get(condition.left(sign)).TextOrEmpty() == condition.mid(sign + 1);
}

ExitStatus set(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{}, {u"--where"_s}});
    arguments.expectPositions(3, 3);
    const QString condition = arguments.option(u"--where"_s);
    if (!condition.isEmpty() && !condition.contains(u'=')) {
        throw UsageError(u"--where 应写作 字段=值：%1"_s.arg(condition));
    }
    const auto rows = rowsOf(session, arguments.position(0));
    while (!rows->Eof() && !isWanted(*rows, condition)) {
        rows->MoveNext();
    }
    if (rows->Eof()) {
        session.messages().tell(u"没有符合条件的行。"_s, desktop::Icon::exclamation, u"提示"_s);
        return ExitStatus::refused;
    }
    rows->Edit();
    rows->Set(arguments.position(1), arguments.position(2));
    rows->Update();
    session.output().result(rowAsJson(*rows), {});
    return ExitStatus::done;
}

} // namespace

std::vector<Command> formatCommands() {
    return {{u"format show"_s, u"格式表"_s, u"显示一个格式表的各行"_s, show},
            {u"format set"_s, u"格式表 [--where 字段=值] 字段 值"_s,
             u"改写第一行（或符合条件的行）的一个字段"_s, set}};
}

} // namespace qvnd::tools

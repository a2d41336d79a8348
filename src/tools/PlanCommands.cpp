#include "tools/PlanCommands.h"

#include "outline/CommandCaptions.h"
#include "plans/DlgNew.h"
#include "plans/PlanInformation.h"
#include "tools/Arguments.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QJsonArray>
#include <QJsonObject>

namespace qvnd::tools {

namespace {

ExitStatus init(Session& session, const QStringList& words) {
    Arguments(words, {}).expectPositions(0, 0);
    const modMain& state = session.program().state();
    const QStringList names = {"gAppPath", "gSysPath", "gWorkPath", "gUserTplPath", "gWordRoot"};
    const QStringList paths = {state.gAppPath, state.gSysPath, state.gWorkPath, state.gUserTplPath,
                               state.gWordRoot};
    QJsonObject json;
    QStringList lines;
    for (qsizetype i = 0; i < names.size(); ++i) {
        json[names[i]] = paths[i];
        lines << names[i] + '=' + paths[i];
    }
    session.output().result(json, lines.join('\n'));
    return ExitStatus::done;
}

QDate dateOf(const QString& text) {
    const QDate date = QDate::fromString(text, Qt::ISODate);
    if (!date.isValid()) {
        throw UsageError(QStringLiteral("日期应写作 YYYY-MM-DD：%1").arg(text));
    }
    return date;
}

ExitStatus create(Session& session, const QStringList& words) {
    const Arguments arguments(
        words, {{}, {"--client", "--contractor", "--author", "--approver", "--date", "--note"}});
    arguments.expectPositions(1, 1);
    plans::PlanForm form;
    form.TxtName = arguments.position(0);
    form.TxtBldOffice = arguments.option("--client");
    form.TxtConOffice = arguments.option("--contractor");
    form.TxtEdit = arguments.option("--author");
    form.TxtDecide = arguments.option("--approver");
    form.RtfExplain = arguments.option("--note");
    if (arguments.hasOption("--date")) {
        form.DTP = dateOf(arguments.option("--date"));
    }
    ProgramRun& run = session.program();
    plans::DlgNew dialog(run.state(), run.workbench(), session.messages(), run.splash(),
                         plans::ShowMode::newPlan);
    dialog.form = form;
    if (!dialog.BtnOk()) {
        return ExitStatus::refused;
    }
    const QString name = run.workbench().TrvCurrent.Item(1).Key();
    session.output().result(QJsonObject{{"名称", name}}, name);
    return ExitStatus::done;
}

ExitStatus list(Session& session, const QStringList& words) {
    Arguments(words, {}).expectPositions(0, 0);
    const QStringList names = planNames(session.program());
    session.output().result(QJsonArray::fromStringList(names), names.join('\n'));
    return ExitStatus::done;
}

ExitStatus open(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const QString name = arguments.position(0);
    openPlan(session.program(), name);
    session.output().result(QJsonObject{{"名称", name}}, name);
    return ExitStatus::done;
}

ExitStatus info(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(1, 1);
    const QString name = arguments.position(0);
    ProgramRun& run = session.program();
    requirePlan(run, name);
    plans::PlanInformation shown;
    const QStringList unread = plans::readInformation(*run.state().gDbUser, name, shown);
    const std::pair<QString, QString> fields[] = {{"名称", name},
                                                  {"建设单位", shown.client},
                                                  {"施工单位", shown.contractor},
                                                  {"编制人", shown.author},
                                                  {"审批人", shown.approver},
                                                  {"编制日期", shown.date.toString(Qt::ISODate)},
                                                  {"注释", shown.explanation}};
    QJsonObject json;
    QStringList lines;
    for (const auto& [field, text] : fields) {
        json[field] = unread.contains(field) ? QJsonValue() : QJsonValue(text);
        lines << field + "：" + text;
    }
    session.output().result(json, lines.join('\n'));
    return ExitStatus::done;
}

} // namespace

std::vector<Command> planCommands() {
    return {
        {"init", "", "准备程序文件夹，显示各文件夹", init},
        {"plan create",
         "名称 [--client 建设单位] [--contractor 施工单位] [--author 编制人]\n"
         "              [--approver 审批人] [--date YYYY-MM-DD] [--note 注释]",
         "新建方案，并成为当前方案；--date 是工程信息的编制日期，封面的日期用 format set 封面表 "
         "日期 设定",
         create},
        {"plan list", "", "列出所有方案", list},
        {"plan open", "名称", "成为当前方案", open, outline::captions::planOpening},
        {"plan info", "名称", "显示方案的工程信息", info},
    };
}

} // namespace qvnd::tools

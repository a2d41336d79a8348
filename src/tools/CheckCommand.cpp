#include "tools/CheckCommand.h"

#include "outline/TreeLoading.h"
#include "platform/desktop/LockFiles.h"
#include "platform/desktop/Processes.h"
#include "platform/files/Trim.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "tools/Arguments.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

using generate::PlanFinding;

const QString loadsCover = u"qvndctl format load 方案 也使封面取那个方案的名称和单位。"_s;

QString adviceHere(const PlanFinding& finding) {
    return finding.kind == PlanFinding::Kind::foreignCover ? finding.advice + loadsCover
                                                           : finding.advice;
}

void tell(Output& output, const std::vector<PlanFinding>& found) {
    QStringList lines;
    for (const PlanFinding& finding : found)
        lines << u"%1 %2：%3%4"_s.arg(finding.key, finding.name, finding.what, adviceHere(finding));
    const QString text = lines.isEmpty() ? u"没有发现问题，可以生成。"_s : lines.join(u'\n');
    output.result(findingsAsJson(found), text);
}

bool isInTheWay(const PlanFinding& finding) {
    return finding.keepsDocumentOut() || finding.keepsFromGenerating();
}

ExitStatus check(Session& session, const QStringList& words) {
    const Arguments arguments(words, {{u"--first-run"_s}, {}});
    arguments.expectPositions(1, 1);
    ProgramRun& run = session.program();
    const QString plan = files::Trim(arguments.position(0));
    requirePlan(run, plan);
    const auto rows =
        run.state().gDbUser->OpenRecordset(u"Select * from ["_s + plan + u"] order by ID asc"_s);
    outline::OutlineTree TrvEdit(u"TrvEdit"_s);
    outline::FillOutlineTree(*rows, TrvEdit);
    const auto found = findingsOf(run.state(), TrvEdit, arguments.has(u"--first-run"_s));
    tell(session.output(), found);
    return std::any_of(found.begin(), found.end(), isInTheWay) ? ExitStatus::refused
                                                               : ExitStatus::done;
}

} // namespace

std::vector<PlanFinding> findingsOf(modMain& state, const outline::OutlineTree& TrvEdit,
                                    bool runsOn) {
    desktop::SystemProcesses processes;
    desktop::LockFiles locks(processes);
    office::SuiteDocumentConverter documents;
    return generate::checkPlan({state, TrvEdit, locks, runsOn, {}, &documents});
}

QString adviceHere(const generate::ForeignText& text) {
    return text.goesWithLoad ? adviceFor(text) + loadsCover : adviceFor(text);
}

QJsonArray findingsAsJson(const std::vector<PlanFinding>& found) {
    QJsonArray json;
    for (const PlanFinding& finding : found)
        json.append(QJsonObject{{u"key"_s, finding.key},
                                {u"name"_s, finding.name},
                                {u"kind"_s, nameOf(finding.kind)},
                                {u"what"_s, finding.what},
                                {u"advice"_s, adviceHere(finding)}});
    return json;
}

std::vector<Command> checkCommands() {
    return {{u"check"_s, u"方案 [--first-run]"_s,
             u"生成前检查：找出缺少、打不开、不能带入的内容；有放不进去的文档时退出码为 1"_s,
             check}};
}

} // namespace qvnd::tools

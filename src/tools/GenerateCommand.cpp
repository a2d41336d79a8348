#include "tools/GenerateCommand.h"

#include "generate/GenerationReport.h"
#include "generate/driver/BuildBid.h"
#include "generate/driver/RebuildContents.h"
#include "outline/TreeLoading.h"
#include "store/ProgramFiles.h"
#include "tools/Arguments.h"
#include "tools/CheckCommand.h"
#include "tools/GenerateOptions.h"
#include "tools/GenerateServices.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>

#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

using generate::BuildOutcome;
using generate::GenerationReport;
using generate::ReportedNode;
using outline::OutlineTree;

// What is told about a finished document.
struct Generated {
    QString output;
    GenerationReport report;
    QJsonArray check; // ahead of the run; only for JSON
    QString pageNumbers;
    QStringList messages;
    double seconds = 0;
};

void loadOutline(ProgramRun& run, const QString& plan, OutlineTree& TrvEdit) {
    requirePlan(run, plan);
    const auto rows =
        run.state().gDbUser->OpenRecordset(u"Select * from ["_s + plan + u"] order by ID asc"_s);
    outline::FillOutlineTree(*rows, TrvEdit);
}

QJsonArray asJson(const std::vector<ReportedNode>& nodes) {
    QJsonArray json;
    for (const ReportedNode& node : nodes)
        json.append(QJsonObject{{u"key"_s, node.key},
                                {u"name"_s, node.name},
                                {u"document"_s, node.isDocument},
                                {u"reason"_s, node.what}});
    return json;
}

QJsonArray asJson(const std::vector<generate::ForeignText>& texts) {
    QJsonArray json;
    for (const generate::ForeignText& text : texts)
        json.append(text.what);
    return json;
}

QJsonValue textOrNull(const QString& text) { return text.isEmpty() ? QJsonValue() : text; }

QJsonObject asJson(const Generated& done) {
    return {
        {u"output"_s, done.output},
        {u"nodes"_s, done.report.nodes},
        {u"documents"_s, done.report.documents},
        {u"headings"_s, done.report.headings},
        {u"inserted"_s, done.report.documents - done.report.missingDocuments()},
        {u"missing"_s, asJson(done.report.missing)},
        {u"leftOut"_s, asJson(done.report.leftOut)},
        {u"converted"_s, asJson(done.report.converted)},
        {u"changed"_s, asJson(done.report.changed)},
        {u"foreign"_s, asJson(done.report.foreign)},
        {u"check"_s, done.check},
        {u"pages"_s, done.report.pages > 0 ? QJsonValue(done.report.pages) : QJsonValue()},
        {u"pageNumbers"_s, textOrNull(done.pageNumbers)},
        {u"messages"_s, QJsonArray::fromStringList(done.messages)},
        {u"seconds"_s, done.seconds},
    };
}

QString pagesAsText(const Generated& done) {
    if (done.report.pages == 0)
        return {};
    const bool isOffice = done.pageNumbers == u"office";
    return u"，%1 页（页码%2）"_s.arg(done.report.pages)
        .arg(isOffice ? u"由办公套件排出"_s : u"由本程序排出"_s);
}

QString asText(const Generated& done) {
    const int lost = done.report.missingDocuments();
    const QString documents =
        lost == 0 ? u"%1 个文档全部放入"_s.arg(done.report.documents)
                  : u"%1 个文档放入 %2 个，%3 个没有放入"_s.arg(done.report.documents)
                        .arg(done.report.documents - lost)
                        .arg(lost);
    QStringList lines{done.output,
                      u"%1 个节点，%2，%3 个标题%4，用时 %5 秒"_s.arg(done.report.nodes)
                          .arg(documents)
                          .arg(done.report.headings)
                          .arg(pagesAsText(done))
                          .arg(done.seconds, 0, 'f', 2)};
    for (const ReportedNode& node : done.report.missing)
        lines << u"没有放入：%1 %2：%3"_s.arg(node.key, node.name, node.what);
    for (const ReportedNode& node : done.report.changed)
        lines << u"编号或名称有变：%1 %2：%3"_s.arg(node.key, node.name, node.what);
    QStringList advice;
    for (const generate::ForeignText& text : done.report.foreign) {
        lines << text.what;
        advice << adviceHere(text);
    }
    advice.removeDuplicates();
    lines << advice;
    return lines.join(u'\n');
}

// Why there is no document where no box has said it.
void explain(Output& output, BuildOutcome outcome) {
    if (outcome == BuildOutcome::stopped)
        output.note(u"生成中途停止，“施工方案.doc”没有完成。"_s);
    if (outcome == BuildOutcome::notSaved)
        output.note(u"“施工方案.doc”没有保存。"_s);
}

QString targetOf(Session& session) {
    return store::finishedDocument(session.program().state().gWorkPath);
}

BuildOutcome build(TerminalGeneration& tools, const GenerateOptions& options,
                   const OutlineTree& TrvEdit, generate::BidEditState& window) {
    window.AfterNodeFlag = !options.isFirstRun;
    const BuildOutcome outcome =
        generate::BuildBid(tools.program(), tools.services(), window, TrvEdit);
    tools.dlgTB().unload();
    return outcome;
}

ExitStatus generatePlan(Session& session, const QStringList& words) {
    const GenerateOptions options(words);
    TerminalGeneration tools(session, options);
    if (!tools.pages().isOffered()) {
        session.output().note(u"没有安装办公软件，不能用它的页码。"_s);
        return ExitStatus::refused;
    }
    QElapsedTimer timer;
    timer.start();
    OutlineTree TrvEdit(u"TrvEdit"_s);
    loadOutline(session.program(), options.plan, TrvEdit);
    session.isAbout(options.plan);
    const QJsonArray check =
        session.output().isJson()
            ? findingsAsJson(findingsOf(session.program().state(), TrvEdit, options.isFirstRun))
            : QJsonArray();
    generate::BidEditState window;
    const BuildOutcome outcome = build(tools, options, TrvEdit, window);
    explain(session.output(), outcome);
    if (outcome != BuildOutcome::finished)
        return ExitStatus::refused;
    GenerationReport report = reportOf(TrvEdit, window, tools.losses().losses());
    report.foreign = generate::textsOfOtherPlans(session.program().state(), options.plan);
    report.pages = tools.pages().source().pages();
    const Generated done{
        targetOf(session),      std::move(report), check,
        tools.pages().origin(), tools.messages(),  static_cast<double>(timer.elapsed()) / 1000};
    session.output().result(asJson(done), asText(done));
    return done.report.missing.empty() ? ExitStatus::done : ExitStatus::refused;
}

// The command has no answer of its own for a document without contents.
ExitStatus rebuildContents(Session& session, const QStringList& words) {
    Arguments(words, {}).expectPositions(0, 0);
    GenerateOptions options;
    // The numbers are thrown away with the contents.
    options.pages = PageSource::layout;
    TerminalGeneration tools(session, options);
    if (!generate::RebuildContents(tools.program(), tools.services()))
        return ExitStatus::refused;
    session.output().result(
        QJsonObject{{u"output"_s, targetOf(session)}, {u"saved"_s, false}},
        u"目录已经重新生成；这个命令不保存，文件保持原样：%1"_s.arg(targetOf(session)));
    return ExitStatus::done;
}

} // namespace

std::vector<Command> generateCommands() {
    return {{u"generate"_s, GenerateOptions::parameters(),
             u"生成工作文件夹中的“施工方案.doc”；有没放入的文档时退出码为 1"_s, generatePlan},
            {u"contents rebuild"_s,
             {},
             u"在“施工方案.doc”里重新生成目录（不保存文件）"_s,
             rebuildContents}};
}

} // namespace qvnd::tools

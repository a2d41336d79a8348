#include "tools/GenerateCommand.h"

#include "generate/CommandCaptions.h"
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

#include <vector>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

using generate::BuildOutcome;
using generate::GenerationReport;
using generate::ReportedNode;
using outline::OutlineTree;

// What is told about a run.
struct Generated {
    QString output;     // empty when the document was not finished
    QString unfinished; // why it was not
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
        {u"output"_s, textOrNull(done.output)},
        {u"unfinished"_s, textOrNull(done.unfinished)},
        {u"nodes"_s, done.report.nodes},
        {u"documents"_s, done.report.documents},
        {u"headings"_s, done.report.headings},
        {u"inserted"_s, done.report.documents - done.report.missingDocuments()},
        {u"missing"_s, asJson(done.report.missing)},
        {u"failed"_s, asJson(done.report.failed)},
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

// Why there is no finished document; where boxes have said it before, in general.
QString whyUnfinished(BuildOutcome outcome) {
    switch (outcome) {
    case BuildOutcome::finished:
        return {};
    case BuildOutcome::refused:
        return u"没有开始生成，原因见提示。"_s;
    case BuildOutcome::stopped:
        return u"生成中途停止，“施工方案.doc”没有完成。"_s;
    case BuildOutcome::notSaved:
        return u"“施工方案.doc”没有保存。"_s;
    }
    return {};
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

// A run that was refused has looked at no node: it has no report.
void tellRefused(Output& output, const Generated& refused) {
    if (output.isJson())
        output.result(QJsonObject{{u"output"_s, QJsonValue()},
                                  {u"unfinished"_s, refused.unfinished},
                                  {u"check"_s, refused.check},
                                  {u"messages"_s, QJsonArray::fromStringList(refused.messages)}},
                      {});
}

void tellUnfinished(Output& output, const Generated& stopped) {
    output.note(stopped.unfinished);
    output.result(asJson(stopped), {});
}

ExitStatus tell(Session& session, BuildOutcome outcome, const Generated& done) {
    if (outcome == BuildOutcome::refused)
        tellRefused(session.output(), done);
    else if (outcome != BuildOutcome::finished)
        tellUnfinished(session.output(), done);
    else
        session.output().result(asJson(done), asText(done));
    return outcome == BuildOutcome::finished && done.report.missing.empty() ? ExitStatus::done
                                                                            : ExitStatus::refused;
}

// As the window sees it: the heading of the first folder runs on, unless blank lines end it.
QJsonArray checkAhead(Session& session, const GenerateOptions& options,
                      const OutlineTree& TrvEdit) {
    if (!session.output().isJson())
        return {};
    const bool runsOn = options.isFirstRun && !options.switches.gBlankLineAroundTitle;
    return findingsAsJson(findingsOf(session.program().state(), TrvEdit, runsOn));
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
    Generated done;
    done.check = checkAhead(session, options, TrvEdit);
    generate::BidEditState window;
    const BuildOutcome outcome = build(tools, options, TrvEdit, window);
    done.unfinished = whyUnfinished(outcome);
    done.messages = tools.messages();
    if (outcome != BuildOutcome::refused)
        done.report = reportOf(TrvEdit, window, tools.losses().losses());
    if (outcome == BuildOutcome::finished) {
        done.output = targetOf(session);
        done.report.foreign = generate::textsOfOtherPlans(session.program().state(), options.plan);
        done.report.pages = tools.pages().pages();
        done.pageNumbers = tools.pages().origin();
    }
    done.seconds = static_cast<double>(timer.elapsed()) / 1000;
    return tell(session, outcome, done);
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
             u"生成工作文件夹中的“施工方案.doc”；有没放入的文档时退出码为 1"_s, generatePlan,
             generate::captions::generation},
            {u"contents rebuild"_s,
             {},
             u"在“施工方案.doc”里重新生成目录（不保存文件）"_s,
             rebuildContents,
             generate::captions::contents}};
}

} // namespace qvnd::tools

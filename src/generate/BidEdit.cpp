#include "generate/BidEdit.h"

#include "generate/driver/RebuildContents.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/QueryText.h"
#include "outline/TreeLoading.h"
#include "platform/desktop/BesideEvents.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/UnexpectedErrors.h"
#include "platform/files/Paths.h"
#include "store/PlanLists.h"
#include "store/ProgramFiles.h"

#include <QScopeGuard>
#include <QTemporaryDir>

#include <algorithm>
#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

using desktop::Icon;
using outline::OutlineNode;

std::optional<QString> whyUnfinished(BuildOutcome outcome) {
    if (outcome == BuildOutcome::stopped)
        return u"最近一次生成中途停止，“施工方案.doc”没有完成。"_s;
    if (outcome == BuildOutcome::notSaved)
        return u"最近一次生成的“施工方案.doc”没有保存成功。"_s;
    return std::nullopt;
}

} // namespace

BidEdit::BidEdit(const ProgramState& program, const BidEditServices& services)
    : program_(program), services_(services) {}

bool BidEdit::Load() {
    bool isAnother = false;
    desktop::MessageBoxes& messages = services_.generation.messages;
    try {
        jet::Database& gDbUser = *program_.modMain.gDbUser;
        const auto current = store::openCurrentPlan(gDbUser);
        QString plan;
        if (current->Eof())
            messages.tell(QString());
        else
            plan = current->Get(u"名称").TextOrEmpty();
        const auto rows = gDbUser.OpenRecordset(u"Select * from "_s + outline::bracketedName(plan) +
                                                u" order by ID asc"_s);
        isAnother = std::exchange(loaded_, plan) != plan;
        TrvEdit.Clear();
        outline::FillOutlineTree(*rows, TrvEdit);
        TrvEdit.Select(&TrvEdit.Item(TrvEdit.Count()));
    } catch (const std::exception& failure) {
        messages.tell(desktop::descriptionOf(runTimeErrorOf(failure)));
    }
    if (isAnother)
        report_.reset();
    NodeClick();
    return isAnother;
}

bool BidEdit::showAnew() {
    const outline::ShownOutlines fresh = plan_.read();
    if (fresh.areNews()) {
        plan_.show(fresh);
        NodeClick();
    }
    return fresh.areNews();
}

bool BidEdit::lookAtOthers() {
    const int changes = program_.modMain.gDbUser->ForeignChanges();
    if (changes == seen_)
        return false;
    const bool areNews = showAnew();
    seen_ = changes;
    return areNews;
}

void BidEdit::NodeClick() {
    const OutlineNode* selected = TrvEdit.SelectedItem();
    openDocument = selected && selected->isDocument();
}

const OutlineNode& BidEdit::selectedNode() const { return TrvEdit.Selected(); }

QString BidEdit::documentOf(const OutlineNode& node, const QString& plan) const {
    return outline::documentPath(program_.modMain, plan, node.Key());
}

void BidEdit::report(BuildOutcome outcome) {
    if (outcome == BuildOutcome::refused)
        return;
    report_ = reportOf(TrvEdit, state_, services_.record.losses());
    report_->whyUnfinished = whyUnfinished(outcome);
    if (report_->whyUnfinished)
        return;
    report_->foreign = textsOfOtherPlans(program_.modMain, TrvEdit.Item(1).Key());
    report_->pages = services_.record.pages();
    report_->whyEstimated = services_.record.whyEstimated();
}

BuildOutcome BidEdit::mnuBuildbid() {
    if (!program_.word.isAtWork())
        services_.record.clear();
    const BuildOutcome outcome = BuildBid(program_, services_.generation, state_, TrvEdit);
    // A refused run has no dialog; the one on the screen may be another run's.
    if (outcome != BuildOutcome::refused)
        services_.generation.dlgTB.unload();
    report(outcome);
    if (outcome == BuildOutcome::finished)
        ignoringErrors([&] { services_.pane.turnPreviewOn(); });
    return outcome;
}

bool BidEdit::mnuBul() {
    bool isRebuilt = false;
    withHourglass([&] {
        const desktop::LongRunScope scope(services_.longRun, u"生成目录"_s, 0);
        services_.longRun.next(u"正在打开“施工方案.doc”……"_s);
        try {
            isRebuilt = RebuildContents(program_, services_.generation,
                                        [this] { return services_.longRun.isCancelled(); });
        } catch (const std::exception&) {
            if (!services_.longRun.isCancelled())
                throw;
        }
    });
    return isRebuilt;
}

void BidEdit::tellUnexpected(const RunTimeError& failure, const QString& key, Icon icon) {
    services_.generation.messages.tell(
        outline::failureText(u"打开文档时出现意外的错误！"_s, failure, TrvEdit.find(key)), icon);
}

void BidEdit::tellUnstable(const RunTimeError& failure, const QString& key) {
    if (failure.number() == error::documentNotShown)
        services_.generation.messages.tell(
            outline::failureText(
                u"出现意外的错误。可能是你的系统不稳定，请退出程序重新进入或是重启计算机。"_s,
                failure, TrvEdit.find(key)),
            Icon::information, u"提示"_s);
}

QString BidEdit::selectedKey() const {
    const OutlineNode* node = TrvEdit.SelectedItem();
    return node ? node->Key() : QString();
}

bool BidEdit::loadSelected(const std::function<void(const RunTimeError&)>& tell) {
    const OutlineNode& node = selectedNode();
    if (!node.isDocument()) {
        services_.pane.turnPreviewOff();
        return false;
    }
    services_.pane.turnPreviewOn();
    services_.pane.loadPreview(documentOf(node, outline::tableOfKey(node.Key())));
    services_.pane.onLatePreviewFailure(
        desktop::toldBetweenCommands(program_.modMain.Command, tell));
    return true;
}

void BidEdit::mnuBrowseDoc() {
    BidEditPane& pane = services_.pane;
    const auto tell = [this, key = selectedKey()](const RunTimeError& failure) {
        tellUnexpected(failure, key, Icon::exclamation);
    };
    try {
        if (!loadSelected(tell))
            return;
        pane.updatePreview();
        pane.shrinkPreview();
        pane.setScrollSteps();
    } catch (const std::exception& failure) {
        tell(runTimeErrorOf(failure));
    }
}

void BidEdit::DblClick() {
    BidEditPane& pane = services_.pane;
    const auto tell = [this, key = selectedKey()](const RunTimeError& failure) {
        tellUnstable(failure, key);
    };
    try {
        if (!loadSelected(tell))
            return;
        pane.setScrollSteps();
        pane.updatePreview();
    } catch (const RunTimeError& failure) {
        tell(failure);
    }
}

// What the preview refuses, as a document with a password, is for the word processor to mend.
void BidEdit::loadToOpen(const QString& path) {
    ignoringErrors([&] { services_.pane.loadPreview(path); });
    services_.pane.activatePreview();
}

void BidEdit::mnuDocOpen() {
    try {
        const OutlineNode* node = TrvEdit.SelectedItem();
        if (!node || (!node->isDocument() && node->Image() != outline::image::documentSelected))
            return;
        loadToOpen(documentOf(*node, TrvEdit.Item(1).Text()));
        services_.pane.shrinkPreview();
    } catch (const std::exception& failure) {
        tellUnexpected(runTimeErrorOf(failure), selectedKey(), Icon::none);
    }
}

void BidEdit::mnuOpenDoc() {
    const OutlineNode& node = selectedNode();
    if (!node.isDocument())
        return;
    BidEditPane& pane = services_.pane;
    pane.turnPreviewOn();
    loadToOpen(documentOf(node, TrvEdit.Item(1).Text()));
    pane.updatePreview();
    pane.turnPreviewOff();
}

QString BidEdit::finishedDocument() const {
    return store::finishedDocument(program_.modMain.gWorkPath);
}

bool BidEdit::isFinishedThere() const {
    if (program_.modMain.gFso->FileExists(finishedDocument()))
        return true;
    services_.generation.messages.tell(u"对不起，系统尚未生成标书！"_s, Icon::exclamation);
    return false;
}

void BidEdit::browseAsTemplate() {
    if (isFinishedThere())
        services_.shell.openAsTemplate(files::resolved(finishedDocument()));
}

void BidEdit::mnuBrowsebid() {
    if (!isFinishedThere())
        return;
    services_.pane.turnPreviewOn();
    loadToOpen(finishedDocument());
    services_.pane.updatePreview();
}

QString BidEdit::companion() const {
    return store::programFile(program_.modMain.gAppPath, store::folder::cabinet, u"文档柜.exe"_s);
}

void BidEdit::mnuBidData() { services_.shell.run(files::resolved(companion())); }

void BidEdit::showBidData() {
    const QString program = files::resolved(companion());
    if (services_.windows.activate(u"文档柜"_s, program))
        return;
    if (program_.modMain.gFso->FileExists(program))
        services_.shell.run(program);
    else
        services_.generation.messages.tell(u"没找到"_s + companion(), Icon::information);
}

void BidEdit::withHourglass(const std::function<void()>& work) {
    services_.pane.showHourglass();
    const auto pointer = qScopeGuard([this] { services_.pane.showNormalPointer(); });
    work();
}

std::optional<std::vector<PlanFinding>> BidEdit::check() {
    const bool runsOn = !program_.switches.gBlankLineAroundTitle && !state_.AfterNodeFlag;
    desktop::LongRun& progress = services_.longRun;
    const auto goOn = [&](const OutlineNode& node) {
        services_.generation.events.doEvents();
        progress.next(node.Text());
        return !progress.isCancelled();
    };
    const auto beside = [&](const std::function<void()>& work) {
        desktop::runBesideEvents(work, [&] {
            services_.generation.events.doEvents();
            progress.isCancelled();
        });
    };
    std::vector<PlanFinding> found;
    bool isCancelled = false;
    withHourglass([&] {
        const desktop::LongRunScope scope(progress, u"生成前检查"_s,
                                          std::max(0, TrvEdit.Count() - 1));
        found = checkPlan({program_.modMain, TrvEdit, services_.inUse, runsOn, goOn,
                           &services_.documents, beside});
        isCancelled = progress.isCancelled();
    });
    return isCancelled ? std::nullopt : std::optional(std::move(found));
}

QString BidEdit::printPdf() {
    if (!isFinishedThere())
        return {};
    if (!services_.pdf.isAvailable()) {
        services_.generation.messages.tell(u"输出 PDF 需要办公软件 LibreOffice，但没有找到。"_s,
                                           Icon::exclamation, u"提示"_s);
        return {};
    }
    const QString pdf = program_.modMain.gWorkPath + u"施工方案.pdf"_s;
    return drawPdf(pdf) ? pdf : QString();
}

bool BidEdit::drawPdf(const QString& pdf) {
    bool isDrawn = true;
    withHourglass([&] {
        const desktop::LongRunScope scope(services_.longRun, u"输出 PDF"_s, 0);
        services_.longRun.next(u"正在排版并写出“施工方案.pdf”……"_s);
        const QTemporaryDir scratch;
        const QString drawn = scratch.filePath(u"drawn.pdf"_s);
        try {
            services_.pdf.print(files::resolved(finishedDocument()), drawn);
            program_.modMain.gFso->CopyFile(drawn, pdf, true); // which the history sees
        } catch (const std::exception&) {
            isDrawn = false;
            if (!services_.longRun.isCancelled())
                throw;
        }
    });
    return isDrawn;
}

void BidEdit::runOfToolbar(const std::function<void()>& command) {
    try {
        command();
    } catch (const std::exception& cause) {
        const RunTimeError failure = runTimeErrorOf(cause);
        services_.generation.dlgTB.unload();
        services_.pane.showNormalPointer();
        program_.word.dropApplication();
        services_.generation.dlgTB.unload();
        if (failure.number() != 0)
            services_.generation.messages.tell(desktop::descriptionOf(failure));
    }
}

} // namespace qvnd::generate

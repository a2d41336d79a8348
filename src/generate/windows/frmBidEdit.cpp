#include "generate/windows/frmBidEdit.h"

#include "generate/BidEdit.h"
#include "generate/windows/BidEditToolbar.h"
#include "generate/windows/FindingsWindow.h"
#include "generate/windows/PicEdit.h"
#include "generate/windows/dlgLike.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/windows/NoteBar.h"
#include "outline/windows/OutlineView.h"
#include "outline/windows/SplitterBar.h"
#include "platform/error/IgnoringErrors.h"
#include "store/ProgramFiles.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QHash>
#include <QPushButton>
#include <QShortcut>

#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

constexpr QSize firstSize{1000, 680};
constexpr QRgb silver = 0xFFC0C0C0;

} // namespace

frmBidEdit::frmBidEdit(const Parts& parts, QWidget* parent)
    : QWidget(parent), parts_(parts),
      PicEdit_(new PicEdit(parts.view, parts.document, parts.shell, this)),
      dlgTB_(parts.program.modMain, parts.events, this),
      edit_(std::make_unique<BidEdit>(
          parts.program, BidEditServices{{parts_.generation, parts_.messages, dlgTB_, parts_.events,
                                          parts_.wordProcessorWindows, *PicEdit_, parts_.frmBidSet},
                                         *PicEdit_,
                                         parts_.shell,
                                         parts_.windows,
                                         parts_.inUse,
                                         parts_.pdf,
                                         parts_.longRun,
                                         parts_.record,
                                         parts_.documents})),
      inTurn_(parts.program.modMain, parts.messages, [this] { return edit_->lookAtOthers(); }),
      menus_(*this), TbarBidSet_(new BidEditToolbar(this)), note_(new outline::NoteBar(this)) {
    setObjectName(u"frmBidEdit"_s);
    setWindowTitle(u"施工组织方案编辑"_s);
    setAccessibleName(windowTitle());
    inTurn_.areAbout(edit_->TrvEdit);
    buildTree();
    buildSplitter();
    connectMenus();
    connectToolbar();
    connectTree();
    connectNote();
    connect(PicEdit_, &PicEdit::openRequested, this, [this] { read([this] { openSeen(); }); });
    QWidget* before = TrvEdit_;
    for (QPushButton* button : note_->findChildren<QPushButton*>()) {
        setTabOrder(before, button);
        before = button;
    }
    setTabOrder(before, Image1_);
    applyCommands();
}

// The view and its model read the tree of edit_, which goes with the members and so before the
// children.
frmBidEdit::~frmBidEdit() {
    const QAbstractItemModel* model = TrvEdit_->model();
    delete TrvEdit_;
    delete model;
}

QSize frmBidEdit::sizeHint() const { return firstSize; }

void frmBidEdit::buildTree() {
    const auto file = [this](const outline::OutlineNode& node) {
        return outline::documentPath(parts_.program.modMain, outline::tableOfKey(node.Key()),
                                     node.Key());
    };
    TrvEdit_ =
        new outline::OutlineView(*new outline::OutlineModel(edit_->TrvEdit, file, this), this);
    TrvEdit_->setObjectName(u"TrvEdit"_s);
    TrvEdit_->setDragDropMode(QAbstractItemView::NoDragDrop);
    TrvEdit_->setAccessibleName(u"方案大纲"_s);
    TrvEdit_->setBusy([this] { return parts_.program.modMain.Command.isRunning(); });
}

void frmBidEdit::buildSplitter() {
    Image1_ = new outline::SplitterBar(Qt::Vertical, this);
    Image1_->setObjectName(u"Image1"_s);
    Image1_->setAccessibleName(u"左右分隔条"_s);
    QPalette colours = Image1_->palette();
    colours.setColor(QPalette::Window, QColor::fromRgb(silver));
    Image1_->setPalette(colours);
    Image1_->setAutoFillBackground(true);
    connect(Image1_, &outline::SplitterBar::dragged, this, [this](int x) {
        layout_.drag(x);
        Image1_->setGeometry(layout_.places().Image1);
    });
    connect(Image1_, &outline::SplitterBar::dropped, this, [this] {
        layout_.drop();
        placePanes();
        PicEdit_->shrinkPreview();
    });
}

void frmBidEdit::Load() {
    if (edit_->Load())
        hideLists();
    applyCommands();
    TrvEdit_->setFocus();
}

void frmBidEdit::bind(QAction* action, const Event& event) {
    connect(action, &QAction::triggered, this,
            [this, action, event] { run(event, action->text()); });
}

void frmBidEdit::bindAtOnce(QAction* action, const Event& event) {
    connect(action, &QAction::triggered, this, [this, event] { read(event); });
}

void frmBidEdit::connectMenus() {
    bind(menus_.mnuBidSet, [this] { setUp(); });
    bind(menus_.mnuBul, [this] { rebuildContents(); });
    connect(menus_.mnuBuildbid, &QAction::triggered, this, &frmBidEdit::generate);
    bindAtOnce(menus_.mnuBrowsebid, [this] { edit_->mnuBrowsebid(); });
    bindAtOnce(menus_.mnuBack, [this] {
        parts_.frame.unloadPlanEditor();
        parts_.frame.showFrmBid();
    });
    bindAtOnce(menus_.mnuBidData, [this] { edit_->mnuBidData(); });
    bind(menus_.mnuBidLike, [this] { like(); });
    bind(menus_.mnuOpenDoc, [this] { edit_->mnuOpenDoc(); });
    bindAtOnce(menus_.mnuCheck, [this] {
        edit_->lookAtWorkbench();
        check();
    });
    bindAtOnce(menus_.mnuReport, [this] { report(); });
    bind(menus_.mnuPdf, [this] { print(); });
    bind(menus_.mnuDocOpen, [this] { edit_->mnuDocOpen(); });
    bind(menus_.mnuBrowseDoc, [this] { edit_->mnuBrowseDoc(); });
}

void frmBidEdit::connectToolbar() {
    // With the twin in the menus, whose text names the command in the history.
    const QHash<QString, std::pair<const QAction*, Event>> commands{
        {u"打开类似文档"_s, {menus_.mnuBidLike, [this] { like(); }}},
        {u"标书设置"_s, {menus_.mnuBidSet, [this] { setUp(); }}},
        {u"打开文档"_s, {menus_.mnuOpenDoc, [this] { edit_->mnuDocOpen(); }}},
    };
    const QHash<QString, Event> atOnce{
        {u"浏览"_s, [this] { edit_->browseAsTemplate(); }},
        {u"返回"_s,
         [this] {
             parts_.frame.unloadPlanEditor();
             parts_.frame.maximizeFrmBid();
         }},
        {u"资料库"_s, [this] { edit_->showBidData(); }},
    };
    connect(TbarBidSet_, &BidEditToolbar::buttonClick, this,
            [this, commands, atOnce](const QString& key) {
                if (key == u"生成标书") {
                    generate();
                } else if (atOnce.contains(key)) {
                    read([&] { edit_->runOfToolbar(atOnce.value(key)); });
                } else {
                    const auto [twin, command] = commands.value(key);
                    runOfToolbar(command, twin->text());
                }
            });
}

void frmBidEdit::connectTree() {
    using outline::OutlineView;
    connect(TrvEdit_, &OutlineView::nodeClick, this, [this] {
        read([this] { edit_->NodeClick(); });
        seeOtherPrograms();
    });
    connect(TrvEdit_, &OutlineView::dblClick, this, [this] { run([this] { edit_->DblClick(); }); });
    connect(TrvEdit_, &OutlineView::keyDown, this, [this](int code) {
        if (code == OutlineView::keyEnter)
            run([this] { edit_->DblClick(); });
    });
    connect(TrvEdit_, &OutlineView::mouseDown, this,
            [this](Qt::MouseButton button, outline::OutlineNode* node, const QPoint& place) {
                if (button == Qt::RightButton)
                    popUp(node, place);
            });
    for (const char* key : {"Ctrl+Return", "Ctrl+Enter"}) {
        auto* open = new QShortcut(QKeySequence(QLatin1String(key)), TrvEdit_);
        open->setContext(Qt::WidgetShortcut);
        connect(open, &QShortcut::activated, this,
                [this] { run([this] { edit_->mnuDocOpen(); }); });
    }
}

void frmBidEdit::read(const Event& event) {
    if (inTurn_.read(event))
        applyCommands();
}

void frmBidEdit::run(const Event& event, const QString& caption) {
    const bool hasRun = inTurn_.run(
        [&] {
            whenDone_ = nullptr;
            hasGenerated_ = false;
            edit_->keepPlanOpen();
            edit_->lookAtWorkbench();
            event();
        },
        caption);
    if (!hasRun)
        return;
    applyCommands();
    if (const auto tell = std::exchange(whenDone_, nullptr))
        tell();
}

// What could not be recorded has been taken back, and the user has been told.
void frmBidEdit::withdraw() {
    whenDone_ = nullptr;
    if (hasGenerated_)
        edit_->forgetReport();
}

void frmBidEdit::connectNote() {
    inTurn_.onStep([this](const history::Step& step) { tellStep(step); });
    inTurn_.onRemarks([this](const QString& remarks) { note_->tellAlone(remarks); });
    inTurn_.onRefusal([this](const QString& /*selected*/) { withdraw(); });
    connect(note_, &outline::NoteBar::changed, this, &frmBidEdit::placePanes);
    connect(note_, &outline::NoteBar::undo, this, &frmBidEdit::takeBack);
    connect(note_, &outline::NoteBar::details, this, [this] { parts_.showDetails(); });
}

void frmBidEdit::tellStep(const history::Step& step) {
    if (step.isMinor)
        return;
    step.note.isEmpty() ? note_->clear() : note_->tell(step.note);
    noted_ = step.id;
}

bool frmBidEdit::isNotedLatest() const {
    bool isLatest = true;
    ignoringErrors([&] {
        if (const auto& history = parts_.program.modMain.History) {
            const auto latest = history->undoable();
            isLatest = latest && latest->id == noted_;
        }
    });
    return isLatest;
}

// While a command runs nothing is taken back, and the bar stays for later, as it does where the
// turn at the work space has not come.
void frmBidEdit::takeBack() {
    if (parts_.program.modMain.Command.isRunning())
        return;
    parts_.takeBack(noted_);
    if (!isNotedLatest())
        note_->clear();
    read([this] { edit_->lookAtWorkbench(); });
}

// The bar of a step that the workbench has taken back or followed by another one is out of date.
void frmBidEdit::seeOtherPrograms() {
    if (!note_->isHidden() && !isNotedLatest())
        note_->clear();
    if (inTurn_.look())
        applyCommands();
}

bool frmBidEdit::event(QEvent* event) {
    if (event->type() == QEvent::WindowActivate)
        seeOtherPrograms();
    return QWidget::event(event);
}

void frmBidEdit::runOfToolbar(const Event& event, const QString& caption) {
    run([&] { edit_->runOfToolbar(event); }, caption);
}

// A second one while the first runs is the logic's to refuse.
void frmBidEdit::generate() {
    if (parts_.program.word.isAtWork())
        edit_->mnuBuildbid();
    else
        runOfToolbar([this] { build(); }, menus_.mnuBuildbid->text());
}

void frmBidEdit::hideLists() {
    for (FindingsWindow* list : {findings_, report_})
        if (list)
            list->hide();
}

// What did not come in whole, or is another plan's, raises no boxes of its own, and a document that
// was not saved is not to be seen elsewhere, so the report is shown. Lists of the state before are
// out of date.
void frmBidEdit::build() {
    const BuildOutcome outcome = edit_->mnuBuildbid();
    hasGenerated_ = outcome != BuildOutcome::refused;
    if (hasGenerated_)
        hideLists();
    if (outcome == BuildOutcome::finished)
        whenDone_ = [this] { tellFinished(); };
    else if (hasGenerated_)
        whenDone_ = [this, outcome] {
            // What the status bar says of a former run is no longer so.
            parts_.frame.showStatus(edit_->report()->whyUnfinished.value_or(QString()));
            if (outcome == BuildOutcome::notSaved)
                report();
        };
}

void frmBidEdit::tellFinished() {
    const GenerationReport& told = *edit_->report();
    const QString target = store::finishedDocument(parts_.program.modMain.gWorkPath);
    const QString count = told.pages > 0 ? u"，共 %1 页"_s.arg(told.pages) : QString();
    parts_.frame.showStatus(u"已生成 "_s + target + count + u'。');
    if (told.wantsAttention())
        report();
}

// Nothing is saved, so nothing else shows that it is done.
void frmBidEdit::rebuildContents() {
    if (edit_->mnuBul())
        whenDone_ = [this] {
            parts_.frame.showStatus(
                u"目录能够重新生成；这个命令不保存，“施工方案.doc”保持原样。"_s);
        };
}

void frmBidEdit::print() {
    if (const QString pdf = edit_->printPdf(); !pdf.isEmpty())
        whenDone_ = [this, pdf] {
            parts_.messages.tell(u"已输出 PDF 文件：\n"_s + pdf, desktop::Icon::information,
                                 desktop::hintTitle);
        };
}

void frmBidEdit::setUp() {
    parts_.showSettings();
    TbarBidSet_->at(BidEditToolbar::generate)->setEnabled(true);
}

void frmBidEdit::like() {
    dlgLike dialog(parts_.program.modMain, edit_->TrvEdit,
                   {parts_.messages, parts_.fileDialogs, parts_.wordProcessorWindows,
                    parts_.insertion, likeWord_, *PicEdit_, parts_.longRun},
                   this);
    dialog.Load();
    dialog.exec();
}

void frmBidEdit::check() {
    const auto found = edit_->check();
    if (!found)
        return;
    if (!findings_) {
        findings_ = new FindingsWindow(u"生成前检查"_s, this);
        findings_->setObjectName(u"dlgCheck"_s);
        connect(findings_, &FindingsWindow::nodeChosen, this, &frmBidEdit::chooseNode);
    }
    FindingsWindow::Contents contents;
    contents.headers = QStringList{u"节点"_s, u"情况"_s, u"办法"_s};
    for (const PlanFinding& finding : *found)
        contents.rows << FindingsWindow::Row{finding.key,
                                             {finding.name, finding.what, finding.advice}};
    contents.summary =
        found->empty()
            ? u"没有发现问题，可以生成。"_s
            : u"发现 %1 处需要注意的情况。单击一行，大纲中就选中有关的节点。"_s.arg(found->size());
    findings_->present(contents);
}

void frmBidEdit::report() {
    if (edit_->TrvEdit.Count() == 0) {
        parts_.messages.tell(u"方案已被删除，它的生成报告不能再显示。"_s,
                             desktop::Icon::information, desktop::hintTitle);
        return;
    }
    const GenerationReport& told = *edit_->report();
    if (!report_) {
        report_ = new FindingsWindow(u"生成报告"_s, this);
        report_->setObjectName(u"dlgReport"_s);
        connect(report_, &FindingsWindow::nodeChosen, this, &frmBidEdit::chooseNode);
    }
    FindingsWindow::Contents contents;
    contents.summary = summaryOf(told);
    contents.headers = QStringList{u"节点"_s, u"情况"_s, u"说明"_s};
    const auto add = [&contents](const QString& caption, const std::vector<ReportedNode>& nodes) {
        for (const ReportedNode& node : nodes)
            contents.rows << FindingsWindow::Row{node.key, {node.name, caption, node.what}};
    };
    add(u"没有放入"_s, told.missing);
    add(u"这一步没有成功"_s, told.failed);
    add(u"没有原样带入"_s, told.leftOut);
    add(u"已转换"_s, told.converted);
    add(u"编号或名称有变"_s, told.changed);
    const outline::OutlineNode& root = edit_->TrvEdit.Item(1);
    for (const ForeignText& text : told.foreign)
        contents.rows << FindingsWindow::Row{
            root.Key(), {root.Text(), u"属于别的方案"_s, text.what + adviceFor(text)}};
    report_->present(contents);
}

void frmBidEdit::chooseNode(const QString& key) {
    outline::OutlineNode* node = edit_->TrvEdit.find(key);
    if (node && node != edit_->TrvEdit.SelectedItem() &&
        !parts_.program.modMain.Command.isRunning()) {
        edit_->TrvEdit.Select(node);
        read([this] { edit_->NodeClick(); });
    }
}

void frmBidEdit::openSeen() {
    if (const QString document = PicEdit_->document(); !document.isEmpty())
        parts_.shell.open(document);
}

// The commands of the pop-up mean the node under the pointer.
void frmBidEdit::popUp(outline::OutlineNode* node, const QPoint& place) {
    if (node) {
        edit_->TrvEdit.Select(node);
        read([this] { edit_->NodeClick(); });
    }
    menus_.mnuOpen->popup(place);
}

void frmBidEdit::applyCommands() {
    menus_.mnuReport->setEnabled(edit_->report().has_value());
    menus_.mnuOpenDoc->setEnabled(edit_->openDocument);
    TbarBidSet_->at(BidEditToolbar::openDocument)->setEnabled(edit_->openDocument);
    menus_.mnuBidSet->setEnabled(bool(parts_.showSettings));
    TbarBidSet_->at(1)->setEnabled(bool(parts_.showSettings));
}

void frmBidEdit::placePanes() {
    const BidEditLayout::Places places = layout_.places();
    const QRect upper = places.TrvEdit.united(places.PicEdit);
    const int note = note_->wantedHeight(upper.width());
    TbarBidSet_->setGeometry(places.TbarBidSet);
    TrvEdit_->setGeometry(places.TrvEdit.adjusted(0, 0, 0, -note));
    Image1_->setGeometry(places.Image1.adjusted(0, 0, 0, -note));
    PicEdit_->setGeometry(places.PicEdit.adjusted(0, 0, 0, -note));
    note_->setGeometry(upper.adjusted(0, upper.height() - note, 0, 0));
}

void frmBidEdit::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    constexpr int toolbarHeight = 30; // 450 twips
    if (!layout_.resize(size(), toolbarHeight))
        return;
    placePanes();
    PicEdit_->shrinkPreview();
}

} // namespace qvnd::generate

#include "outline/windows/frmBid.h"

#include "outline/CurrentPlan.h"
#include "outline/NodeCommands.h"
#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/windows/EmptyPlanHint.h"
#include "outline/windows/HistoryWindow.h"
#include "outline/windows/NoteBar.h"
#include "outline/windows/PreviewFrame.h"
#include "outline/windows/SplitterBar.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/WorkbenchToolbar.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>

#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::outline {

namespace {

constexpr QSize usualSize{1000, 680};
constexpr QSize leastPreview{180, 120};
constexpr int leastRows = 3; // of a tree

QTabWidget* tabs(const QString& name, const QString& accessibleName, QWidget* parent) {
    auto* made = new QTabWidget(parent);
    made->setObjectName(name);
    made->setAccessibleName(accessibleName);
    made->setDocumentMode(true);
    // It would pass the keyboard on to its bar, and so lead back to where Tab has been.
    made->setFocusPolicy(Qt::NoFocus);
    made->tabBar()->setFocusPolicy(Qt::TabFocus);
    return made;
}

OutlineView* view(OutlineModel* model, const QString& accessibleName,
                  const std::function<bool()>& isBusy) {
    auto* made = new OutlineView(*model);
    made->setObjectName(model->tree().Name());
    made->setAccessibleName(accessibleName);
    made->setBusy(isBusy);
    return made;
}

} // namespace

frmBid::frmBid(const Parts& parts, QWidget* parent)
    : QWidget(parent), state_(parts.state), workbench_(parts.workbench), services_(parts.services),
      preview_(parts.fraSee.document()), frame_(parts.frame),
      commands_(
          {parts.state, parts.workbench, parts.services, parts.frame, preview_, parts.inputBoxes},
          *this),
      others_(parts.state, parts.workbench),
      inTurn_(parts.state, parts.services.messages, [this] { return lookAtOthers(); }),
      menus_(*this), TbarBid_(new WorkbenchToolbar(this)), fraSee_(&parts.fraSee) {
    setObjectName(u"frmBid"_s);
    setWindowTitle(u"施工组织方案设计"_s);
    setAccessibleName(windowTitle());
    fraSee_->setParent(this);
    buildTrees();
    buildButtons();
    buildBars();
    note_ = new NoteBar(this);
    setOrder();
    connectMenus();
    connectTabs();
    connectToolbar();
    connectHistory();
    connectTrvCurrent();
    connectRenaming();
    connectDragging();
    connectOpening();
    connectTrvTemplate();
    connectTrvTemplate_Us();
    noted_ = latestStep().id;
    applyCommands();
}

QSize frmBid::sizeHint() const { return usualSize; }

QSize frmBid::minimumSizeHint() const {
    const auto least = [](const QTabWidget& tabs, const QTreeView& tree) {
        const QSize bar = tabs.tabBar()->sizeHint();
        const int row = tree.fontMetrics().height() + tree.iconSize().height() / 2;
        return QSize(bar.width(), bar.height() + leastRows * row);
    };
    return WorkbenchLayout::leastSize(TbarBid_->sizeHint().width(),
                                      least(*TabCurrent_, *TrvCurrent_), leastPreview,
                                      least(*TabTemplate_, *TrvTemplate_));
}

frmBid::Shape frmBid::shape() const {
    const OutlineNode* selected = workbench_.TrvCurrent.SelectedItem();
    return {layout_.bars(), TabTemplate_->currentIndex(), selected ? selected->Key() : QString()};
}

void frmBid::restore(const Shape& shape) {
    layout_.restore(shape.bars);
    place();
    if (shape.library >= 0 && shape.library < TabTemplate_->count()) {
        TabTemplate_->setCurrentIndex(shape.library);
    }
    if (OutlineNode* node = workbench_.TrvCurrent.find(shape.selected)) {
        workbench_.TrvCurrent.Select(node);
        followSelection(state_, workbench_, services_.messages);
        applyCommands();
        TrvCurrent_->scrollTo(TrvCurrent_->currentIndex());
    }
}

void frmBid::buildTrees() {
    const auto planFile = [this](const OutlineNode& node) {
        return documentPath(state_, tableOfKey(node.Key()), node.Key());
    };
    const auto templateFile = [this](const OutlineNode& node) {
        return templateDocumentPath(state_, tableOfKey(node.Key()), node.Key());
    };
    const auto isBusy = [this] { return state_.Command.isRunning(); };
    currentModel_ = new OutlineModel(workbench_.TrvCurrent, planFile, this);
    currentModel_->setEditable(true);
    TrvCurrent_ = view(currentModel_, u"当前施工组织方案"_s, isBusy);
    TrvCurrent_->setDragDropMode(QAbstractItemView::DragDrop);
    hint_ = new EmptyPlanHint(TrvCurrent_->viewport());
    connect(hint_, &EmptyPlanHint::newPlan, this, [this] { menus_.mnuNew->trigger(); });
    connect(hint_, &EmptyPlanHint::openGuide, this, [this] { menus_.mnuContent->trigger(); });
    TrvTemplate_ = view(new OutlineModel(workbench_.TrvTemplate, templateFile, this),
                        u"施工方案模板"_s, isBusy);
    TrvTemplate_Us_ =
        view(new OutlineModel(workbench_.TrvTemplate_Us, planFile, this), u"用户方案"_s, isBusy);

    TabCurrent_ = tabs(u"TabCurrent"_s, u"当前方案"_s, this);
    TabCurrent_->addTab(TrvCurrent_, u"当前施工组织方案"_s);
    TabTemplate_ = tabs(u"TabTemplate"_s, u"模板与方案"_s, this);
    TabTemplate_->addTab(TrvTemplate_, u"施工方案模板"_s);
    TabTemplate_->addTab(TrvTemplate_Us_, u"用户方案"_s);
    TrvTemplate_->setEmptyText(u"还没有模板。打开一个方案，选“存入方案模板”，它就成为模板。"_s);
    TrvTemplate_Us_->setEmptyText(u"还没有方案。"_s);
}

QPushButton* frmBid::button(const QString& name, const QString& caption) {
    auto* made = new QPushButton(caption, this);
    made->setObjectName(name);
    made->setAccessibleName(caption);
    made->setAutoDefault(true);
    return made;
}

void frmBid::buildButtons() {
    cmdEdit_ = button(u"cmdEdit"_s, u"施工方案编辑"_s);
    cmdExit_ = button(u"cmdExit"_s, u"退出"_s);
    connect(cmdEdit_, &QPushButton::clicked, this,
            [this] { run([this] { commands_.cmdEdit(); }, cmdEdit_->text()); });
    connect(cmdExit_, &QPushButton::clicked, this,
            [this] { read([this] { commands_.cmdExit(); }); });
}

void frmBid::buildBars() {
    lblResize_ = new SplitterBar(Qt::Vertical, this);
    lblResize_->setObjectName(u"lblResize"_s);
    lblResize_->setAccessibleName(u"左右分隔条"_s);
    imgSpliter_ = new SplitterBar(Qt::Horizontal, this);
    imgSpliter_->setObjectName(u"imgSpliter"_s);
    imgSpliter_->setAccessibleName(u"上下分隔条"_s);
    // A bar goes with the pointer; the panes follow at the end.
    connect(lblResize_, &SplitterBar::dragged, this, [this](int x) {
        layout_.dragVertical(x);
        lblResize_->setGeometry(layout_.places().lblResize);
    });
    connect(imgSpliter_, &SplitterBar::dragged, this, [this](int y) {
        layout_.dragHorizontal(y);
        imgSpliter_->setGeometry(layout_.places().imgSpliter);
    });
    for (SplitterBar* bar : {lblResize_, imgSpliter_}) {
        bar->raise();
        connect(bar, &SplitterBar::dropped, this, [this] {
            layout_.drop();
            place();
        });
    }
}

void frmBid::setOrder() {
    QList<QWidget*> order{TrvCurrent_};
    for (const QWidget* owner : QList<const QWidget*>{hint_, note_}) {
        for (QPushButton* button : owner->findChildren<QPushButton*>()) {
            order << button;
        }
    }
    order << QList<QWidget*>{TabTemplate_->tabBar(),
                             TrvTemplate_,
                             TrvTemplate_Us_,
                             cmdEdit_,
                             cmdExit_,
                             lblResize_,
                             imgSpliter_};
    for (qsizetype i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}

// As a focus proxy the tree would cut the way of the Tab key short.
void frmBid::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    TrvCurrent_->setFocus();
}

void frmBid::Load() {
    TabTemplate_->setCurrentIndex(0);
    load([this] { loadWorkbench(state_, workbench_, services_.messages, services_.splash); },
         history::caption::start);
    tellWhatWasMended();
    TabTemplate_->setCurrentIndex(0);
    TrvCurrent_->setFocus();
}

void frmBid::OpenPlanInfo() {
    run([this] { commands_.OpenPlanInfo(); }, u"工程信息"_s);
}

// A command may have selected another node.
CommandsInTurn::Event frmBid::thenFollow(const std::function<void()>& event) {
    return [this, &event] {
        event();
        if (state_.gDbUser) {
            followSelection(state_, workbench_, services_.messages);
        }
    };
}

void frmBid::read(const std::function<void()>& event) {
    if (state_.Command.isRunning()) {
        return;
    }
    const CommandsInTurn::Gesture gesture(inTurn_);
    TrvCurrent_->FinishLabelEdit();
    if (inTurn_.read(thenFollow(event))) {
        applyCommands();
    }
}

void frmBid::run(const std::function<void()>& event, const QString& caption) {
    if (state_.Command.isRunning()) {
        return;
    }
    const CommandsInTurn::Gesture gesture(inTurn_);
    TrvCurrent_->FinishLabelEdit();
    const bool hasRun = inTurn_.run(thenFollow([&] {
                                        others_.keepPlanOpen();
                                        event();
                                    }),
                                    caption);
    if (hasRun) {
        tellWhatWasMended();
        applyCommands();
    }
}

void frmBid::load(const std::function<void()>& event, const QString& caption) {
    if (inTurn_.runWithoutLook(thenFollow(event), caption)) {
        applyCommands();
    }
}

bool frmBid::lookAtOthers() {
    const bool hasChanged = others_.look();
    if (hasChanged) {
        workbench_.clickedKey.clear(); // the row of the same key may be another one
        followSelection(state_, workbench_, services_.messages);
    }
    return hasChanged;
}

void frmBid::seeOtherPrograms() {
    tellLatestStep();
    forgetOutdatedNote();
    if (inTurn_.look()) {
        applyCommands();
        frame_.showStatus(u"另一个程序改动了方案或模板，现在显示的是改动后的内容。"_s);
    }
}

// Its document would stay beside another plan's outline.
void frmBid::leaveFormerPlan() {
    const OutlineTree& tree = workbench_.TrvCurrent;
    const QString plan = tree.Count() > 0 ? tree.Item(1).Key() : QString();
    const QString former = std::exchange(plan_, plan);
    if (!former.isEmpty() && former != plan) {
        preview_.hide();
    }
}

void frmBid::applyCommands() {
    leaveFormerPlan();
    menus_.apply(workbench_);
    TbarBid_->apply(workbench_);
    cmdEdit_->setEnabled(workbench_.cmdEdit);
    hint_->apply(workbench_);
    applyHistory();
}

void frmBid::place() {
    const WorkbenchLayout::Places places = layout_.places();
    const QRect upper = places.TabCurrent.united(places.fraSee);
    const int note = note_->wantedHeight(upper.width());
    TbarBid_->setGeometry(places.TbarBid);
    TabCurrent_->setGeometry(places.TabCurrent.adjusted(0, 0, 0, -note));
    lblResize_->setGeometry(places.lblResize.adjusted(0, 0, 0, -note));
    fraSee_->setGeometry(places.fraSee.adjusted(0, 0, 0, -note));
    note_->setGeometry(upper.adjusted(0, upper.height() - note, 0, 0));
    imgSpliter_->setGeometry(places.imgSpliter);
    TabTemplate_->setGeometry(places.TabTemplate);
    cmdEdit_->setGeometry(places.cmdEdit);
    cmdExit_->setGeometry(places.cmdExit);
}

void frmBid::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (layout_.resize(size())) {
        place();
    }
}

void frmBid::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    tellLatestStep();
}

bool frmBid::event(QEvent* event) {
    if (event->type() == QEvent::ParentChange) {
        removeCloseItem();
    } else if (event->type() == QEvent::WindowActivate) {
        seeOtherPrograms();
    }
    return QWidget::event(event);
}

void frmBid::removeCloseItem() {
    auto* window = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (!window) {
        return;
    }
    window->setWindowFlag(Qt::CustomizeWindowHint);
    window->setWindowFlag(Qt::WindowCloseButtonHint, false);
    if (QMenu* menu = window->systemMenu()) {
        for (QAction* item : menu->actions()) {
            if (item->shortcut() == QKeySequence(QKeySequence::Close)) {
                menu->removeAction(item);
            }
        }
    }
}

} // namespace qvnd::outline

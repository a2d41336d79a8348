#include "platform/desktop/windows/HelpViewer.h"

#include "platform/desktop/windows/HelpCollection.h"
#include "platform/desktop/windows/HelpTextBrowser.h"

#include <QAction>
#include <QApplication>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QSplitter>
#include <QStyle>
#include <QTabWidget>
#include <QTextDocument>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

constexpr QSize usualSize{1120, 740};
constexpr double mostOfTheScreen = 0.9;
constexpr int navigationWidth = 270;

template <typename Control>
Control* named(Control* control, const QString& name, const QString& accessibleName) {
    control->setObjectName(name);
    control->setAccessibleName(accessibleName);
    return control;
}

// A pane of the navigation: a labelled box over a list.
QWidget* pane(const QString& label, QLineEdit* box, QWidget* list) {
    auto* made = new QWidget;
    auto* layout = new QVBoxLayout(made);
    auto* text = new QLabel(label);
    text->setBuddy(box);
    layout->addWidget(text);
    layout->addWidget(box);
    layout->addWidget(list, 1);
    return made;
}

// The entry that leads to a page, below `parent`.
QModelIndex entryOf(const QHelpContentModel& contents, const QUrl& page,
                    const QModelIndex& parent = {}) {
    for (int row = 0; row < contents.rowCount(parent); ++row) {
        const QModelIndex entry = contents.index(row, 0, parent);
        if (contents.contentItemAt(entry)->url() == page) {
            return entry;
        }
        if (const QModelIndex below = entryOf(contents, page, entry); below.isValid()) {
            return below;
        }
    }
    return {};
}

HelpText textOf(const QUrl& page, const QString& html) {
    QTextDocument document;
    document.setHtml(html);
    return {page, document.metaInformation(QTextDocument::DocumentTitle), document.toPlainText()};
}

} // namespace

HelpViewer::HelpViewer(const HelpCollection& collection)
    : collection_(collection),
      browser_(named(new HelpTextBrowser(collection), u"HelpPage"_s, u"帮助正文"_s)),
      tabs_(named(new QTabWidget, u"HelpTabs"_s, u"目录、索引和搜索"_s)) {
    setObjectName(u"HelpWindow"_s);
    setAttribute(Qt::WA_QuitOnClose, false);
    resize(usualSize.boundedTo(screen()->availableSize() * mostOfTheScreen));
    buildToolbar();
    buildPanes();
    connect(browser_, &QTextBrowser::sourceChanged, this, [this](const QUrl& page) {
        browser_->mark({});
        showTitle();
        selectInContents(page);
    });
    setSource(collection_.home());
}

QAction* HelpViewer::addCommand(const QString& name, const QString& text, const QKeySequence& key) {
    auto* command = new QAction(text, this);
    command->setObjectName(name);
    command->setShortcut(key);
    command->setToolTip(text + u"（%1）"_s.arg(key.toString(QKeySequence::NativeText)));
    addAction(command);
    return command;
}

void HelpViewer::buildToolbar() {
    auto* bar = named(new QToolBar, u"HelpToolBar"_s, u"帮助工具栏"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    addToolBar(bar);
    setContextMenuPolicy(Qt::NoContextMenu);
    const auto add = [&](const QString& name, const QString& text, const QString& key) {
        QAction* command = addCommand(name, text, QKeySequence(key));
        bar->addAction(command);
        QWidget* button = bar->widgetForAction(command);
        button->setAccessibleName(text);
        button->setFocusPolicy(Qt::TabFocus);
        return command;
    };
    QAction* back = add(u"HelpBack"_s, u"后退"_s, u"Alt+Left"_s);
    QAction* forward = add(u"HelpForward"_s, u"前进"_s, u"Alt+Right"_s);
    QAction* home = add(u"HelpHome"_s, u"首页"_s, u"Alt+Home"_s);
    bar->addSeparator();
    QAction* larger = add(u"HelpLarger"_s, u"放大"_s, u"Ctrl++"_s);
    QAction* smaller = add(u"HelpSmaller"_s, u"缩小"_s, u"Ctrl+-"_s);
    QAction* usual = add(u"HelpUsualSize"_s, u"原大小"_s, u"Ctrl+0"_s);
    larger->setShortcuts({QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s)});
    back->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    forward->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
    home->setIcon(style()->standardIcon(QStyle::SP_DirHomeIcon));
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
    connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
    connect(home, &QAction::triggered, this, [this] { setSource(collection_.home()); });
    connect(larger, &QAction::triggered, browser_, [this] { browser_->zoomIn(); });
    connect(smaller, &QAction::triggered, browser_, [this] { browser_->zoomOut(); });
    connect(usual, &QAction::triggered, browser_, &HelpTextBrowser::resetZoom);
    connect(addCommand(u"HelpFind"_s, u"搜索"_s, QKeySequence(u"Ctrl+F"_s)), &QAction::triggered,
            this, &HelpViewer::showSearch);
}

void HelpViewer::buildPanes() {
    tabs_->addTab(buildContents(), u"目录(&C)"_s);
    tabs_->addTab(buildIndex(), u"索引(&I)"_s);
    tabs_->addTab(buildSearch(), u"搜索(&S)"_s);
    auto* panes = named(new QSplitter, u"HelpSplitter"_s, u"帮助分隔条"_s);
    panes->addWidget(tabs_);
    panes->addWidget(browser_);
    panes->setStretchFactor(1, 1);
    panes->setChildrenCollapsible(false);
    panes->setSizes({navigationWidth, usualSize.width() - navigationWidth});
    setCentralWidget(panes);
    setTabOrder(tabs_, browser_);
}

QWidget* HelpViewer::buildContents() {
    QHelpContentWidget* tree =
        named(collection_.engine().contentWidget(), u"HelpContents"_s, u"帮助目录"_s);
    connect(tree, &QHelpContentWidget::linkActivated, this, &HelpViewer::setSource);
    connect(tree, &QAbstractItemView::clicked, this, [this, tree](const QModelIndex& at) {
        if (const QHelpContentItem* item = collection_.engine().contentModel()->contentItemAt(at)) {
            setSource(item->url());
            tree->expand(at);
        }
    });
    connect(collection_.engine().contentModel(), &QHelpContentModel::contentsCreated, this,
            [this, tree] {
                tree->expandAll();
                selectInContents(browser_->source());
            });
    return tree;
}

QWidget* HelpViewer::buildIndex() {
    QHelpIndexWidget* list = named(collection_.engine().indexWidget(), u"HelpIndex"_s, u"关键字"_s);
    indexFilter_ = named(new QLineEdit, u"HelpIndexFilter"_s, u"查找关键字"_s);
    indexFilter_->setClearButtonEnabled(true);
    indexFilter_->installEventFilter(this);
    connect(indexFilter_, &QLineEdit::textChanged, list,
            [list](const QString& text) { list->filterIndices(text); });
    connect(indexFilter_, &QLineEdit::returnPressed, list, &QHelpIndexWidget::activateCurrentItem);
    connect(list, &QAbstractItemView::clicked, list, &QHelpIndexWidget::activateCurrentItem);
    connect(list, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink& link) { setSource(link.url); });
    connect(list, &QHelpIndexWidget::documentsActivated, this,
            [this](const QList<QHelpLink>& links) { setSource(links.constFirst().url); });
    return pane(u"查找关键字(&F)："_s, indexFilter_, list);
}

QWidget* HelpViewer::buildSearch() {
    words_ = named(new QLineEdit, u"HelpWords"_s, u"要搜索的词"_s);
    words_->setClearButtonEnabled(true);
    words_->installEventFilter(this);
    hits_ = named(new QListWidget, u"HelpHits"_s, u"搜索结果"_s);
    hits_->setWordWrap(true);
    hits_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    count_ = named(new QLabel, u"HelpHitCount"_s, u"搜索结果数"_s);
    connect(words_, &QLineEdit::returnPressed, this, &HelpViewer::runSearch);
    const auto open = [this](const QListWidgetItem* item) {
        setSource(item->data(Qt::UserRole).toUrl());
        browser_->mark(HelpSearch::words(words_->text()));
    };
    connect(hits_, &QListWidget::itemActivated, this, open);
    connect(hits_, &QListWidget::itemClicked, this, open);
    QWidget* made = pane(u"输入要搜索的词，按回车键(&W)："_s, words_, hits_);
    made->layout()->addWidget(count_);
    return made;
}

void HelpViewer::runSearch() {
    hits_->clear();
    for (const HelpHit& hit : pages().find(words_->text())) {
        auto* item = new QListWidgetItem(hit.title + u'\n' + hit.excerpt, hits_);
        item->setData(Qt::UserRole, hit.page);
    }
    count_->setText(hits_->count() == 0 ? u"没有找到。请换一个词，或者少用几个词。"_s
                                        : u"找到 %1 页。"_s.arg(hits_->count()));
    count_->setWordWrap(true);
    if (hits_->count() > 0) {
        hits_->setCurrentRow(0);
        hits_->setFocus();
    }
}

const HelpSearch& HelpViewer::pages() {
    if (!pages_) {
        std::vector<HelpText> texts;
        for (const QUrl& page : collection_.pages()) {
            texts.push_back(textOf(page, collection_.html(page)));
        }
        pages_ = std::make_unique<HelpSearch>(std::move(texts));
    }
    return *pages_;
}

void HelpViewer::setSource(const QUrl& page) { browser_->setSource(page); }

void HelpViewer::showTitle() {
    const QString title = browser_->documentTitle();
    setWindowTitle(title.isEmpty() ? u"帮助"_s : title + u" - 帮助"_s);
    setAccessibleName(windowTitle());
}

void HelpViewer::selectInContents(const QUrl& page) {
    const QModelIndex entry =
        entryOf(*collection_.engine().contentModel(), page.adjusted(QUrl::RemoveFragment));
    if (entry.isValid()) {
        collection_.engine().contentWidget()->setCurrentIndex(entry);
    }
}

void HelpViewer::showContents() {
    showTab(contents);
    bringToFront();
}

void HelpViewer::showIndex() {
    showTab(index);
    indexFilter_->selectAll();
    bringToFront();
}

void HelpViewer::showSearch() {
    showTab(search);
    words_->selectAll();
    bringToFront();
}

void HelpViewer::showPage(const QUrl& page) {
    setSource(page);
    browser_->setFocus();
    bringToFront();
}

void HelpViewer::showTab(Tab tab) {
    tabs_->setCurrentIndex(tab);
    QWidget* const boxes[] = {collection_.engine().contentWidget(), indexFilter_, words_};
    boxes[tab]->setFocus();
}

void HelpViewer::bringToFront() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        standAbove(modal);
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

// A modal dialog keeps the user out of every window but its own; while it is open, this one is.
void HelpViewer::standAbove(QWidget* modal) {
    winId();
    windowHandle()->setTransientParent(modal->window()->windowHandle());
    modal->removeEventFilter(this);
    modal->installEventFilter(this);
}

bool HelpViewer::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && watched->isWidgetType() && windowHandle() &&
        static_cast<QWidget*>(watched)->isWindow()) {
        windowHandle()->setTransientParent(nullptr);
        watched->removeEventFilter(this);
        return false;
    }
    const bool down =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down;
    if (down && (watched == indexFilter_ || watched == words_)) {
        QWidget* list = hits_;
        if (watched == indexFilter_) {
            list = collection_.engine().indexWidget();
        }
        list->setFocus();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void HelpViewer::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

} // namespace qvnd::desktop

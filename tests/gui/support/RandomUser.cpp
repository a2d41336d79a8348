#include "gui/support/RandomUser.h"

#include "generate/windows/BidEditToolbar.h"
#include "generate/windows/dlgTB.h"
#include "outline/windows/SplitterBar.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QDragMoveEvent>
#include <QEventLoop>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTabBar>
#include <QTextEdit>
#include <QTimer>
#include <QUrl>

#include <numeric>

namespace qvnd::test {

namespace {

constexpr int longestAnswer = 20; // acts on one dialog before it is closed

QPoint inside(Dice& dice, const QWidget& widget) {
    return {dice.upTo(std::max(1, widget.width())), dice.upTo(std::max(1, widget.height()))};
}

} // namespace

desktop::ChosenFile RandomFileDialogs::open(const desktop::OpenFileQuestion& question) {
    if (dice_.in(2)) {
        return desktop::WidgetFileDialogs::open(question);
    }
    if (dice_.in(4)) {
        throw RunTimeError(error::dialogCancelled, u"选定“取消”。");
    }
    const QString file = dice_.oneOf(files_);
    return {file, QFileInfo(file).fileName()};
}

RandomUser::RandomUser(DesktopWorld& world, Dice& dice, const QStringList& files)
    : world_(world), dice_(dice), files_(files) {
    world_.events.whileServed = [this] { meetProgress(); };
}

const std::vector<RandomUser::Deed>& RandomUser::deeds() {
    static const std::vector<Deed> all{
        {"click in a tree", 26, &RandomUser::clickTree},
        {"click anywhere", 10, &RandomUser::clickAnywhere},
        {"press a key", 12, &RandomUser::pressKey},
        {"type", 2, &RandomUser::typeText},
        {"drag", 12, &RandomUser::drag},
        {"drop files", 3, &RandomUser::dropFiles},
        {"choose a command", 16, &RandomUser::chooseCommand},
        {"choose of the frame", 4, &RandomUser::chooseOfFrame},
        {"press the toolbar", 10, &RandomUser::pressToolbar},
        {"move a bar", 2, &RandomUser::moveBar},
        {"resize", 2, &RandomUser::resize},
        {"switch the tab", 6, &RandomUser::switchTab},
        {"rename", 3, &RandomUser::renameNode},
        {"start again", 1, &RandomUser::startAgain},
        {"close the frame", 1, &RandomUser::closeFrame},
        {"open a window", 6, &RandomUser::openWindow},
        {"read the help", 2, &RandomUser::readHelp},
        {"read findings", 4, &RandomUser::readFindings},
        {"go through the history", 4, &RandomUser::readHistory},
    };
    return all;
}

QString RandomUser::act() {
    const auto& all = deeds();
    const int sum = std::accumulate(all.begin(), all.end(), 0,
                                    [](int so, const Deed& deed) { return so + deed.share; });
    int thrown = dice_.upTo(sum);
    const auto deed = std::find_if(all.begin(), all.end(), [&](const Deed& one) {
        thrown -= one.share;
        return thrown < 0;
    });
    const Acting acting(*this);
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        // What an earlier act has left open is answered first.
        if (!inFront()) {
            guarded([&] { (this->*deed->run)(); });
        }
        // What has been posted by then comes first.
        QTimer::singleShot(0, &loop, [&] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
    });
    guarded([&] { loop.exec(); });
    if (world_.hasEnded()) {
        startAgain();
    }
    return deed->name;
}

RandomUser::Acting::Acting(RandomUser& user) : was(user.isActing_, true) { user.attend(); }

void RandomUser::guarded(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& escaped) {
        escaped_ << QString::fromUtf8(escaped.what());
    }
}

// As long as an act lasts, in whatever event loop it waits. A box may come up in an answer to
// another one, so the next look is arranged for first.
void RandomUser::attend() {
    if (std::exchange(isAttending_, true)) {
        return;
    }
    QTimer::singleShot(0, this, [this] {
        isAttending_ = false;
        if (!isActing_) {
            return;
        }
        attend();
        guarded([&] { answer(); });
    });
}

QWidget* RandomUser::inFront() {
    QWidget* popup = QApplication::activePopupWidget();
    return popup ? popup : QApplication::activeModalWidget();
}

void RandomUser::answer() {
    if (QWidget* popup = QApplication::activePopupWidget()) {
        reach(*popup);
        answerMenu(*popup);
    } else if (QWidget* modal = QApplication::activeModalWidget()) {
        if (dice_.in(8)) {
            reachPast();
        } else {
            reach(*modal);
            answerDialog(*modal);
        }
    } else {
        clickSplash();
    }
}

void RandomUser::reach(const QWidget& window) {
    if (const QWidget* front = inFront(); front && front != &window) {
        return;
    }
    const bool isOurs = !window.objectName().isEmpty() && !window.inherits("QFileDialog");
    reached_ << (isOurs ? window.objectName() : QString(window.metaObject()->className()));
}

void RandomUser::meetProgress() {
    if (world_.hasEnded() || !world_.run().mainForm()) {
        return;
    }
    auto* dialog = world_.mainForm().findChild<generate::dlgTB*>();
    if (!dialog || !dialog->isVisible() || isServed_) {
        return;
    }
    const QScopedValueRollback served(isServed_, true);
    reach(*dialog);
    // A run asks some twenty times: about half of them are stopped.
    if (dice_.in(24)) {
        dialog->findChild<QPushButton*>()->click();
    } else if (dice_.in(4)) {
        reachPast();
    }
}

void RandomUser::clickSplash() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "frmSplash" && window->isVisible()) {
            reach(*window);
            if (dice_.in(3)) {
                QTest::mouseClick(window, Qt::LeftButton);
            }
            return;
        }
    }
}

// The commands that are not behind the box on the screen alone.
void RandomUser::reachPast() {
    if (world_.hasEnded() || !world_.run().mainForm()) {
        return;
    }
    static const std::vector<void (RandomUser::*)()> ways{
        &RandomUser::chooseCommand, &RandomUser::chooseOfFrame, &RandomUser::pressToolbar,
        &RandomUser::clickTree,     &RandomUser::dropFiles,     &RandomUser::drag,
        &RandomUser::closeFrame};
    (this->*dice_.oneOf(ways))();
}

void RandomUser::answerMenu(QWidget& popup) {
    auto* menu = qobject_cast<QMenu*>(&popup);
    if (!menu || dice_.in(4)) {
        popup.close();
        return;
    }
    for (int down = dice_.upTo(9); down > 0; --down) {
        QTest::keyClick(menu, Qt::Key_Down);
    }
    QTest::keyClick(menu, dice_.in(6) ? Qt::Key_Right : Qt::Key_Return);
}

void RandomUser::answerDialog(QWidget& dialog) {
    patience_ = attended_ == &dialog ? patience_ + 1 : 0;
    attended_ = &dialog;
    if (patience_ > longestAnswer) {
        dialog.close();
    } else if (auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        answerMessage(*box);
    } else if (auto* files = qobject_cast<QFileDialog*>(&dialog)) {
        answerFileDialog(*files);
    } else {
        useControl(dialog);
    }
}

void RandomUser::answerMessage(QMessageBox& box) {
    if (dice_.in(6)) {
        QTest::keyClick(&box, dice_.oneOf(std::vector{Qt::Key_Escape, Qt::Key_Return, Qt::Key_Y}));
    } else {
        QTest::mouseClick(dice_.oneOf(box.buttons()), Qt::LeftButton);
    }
}

// By the name alone: its list would lead to files that are no affair of a test.
void RandomUser::answerFileDialog(QFileDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    if (!name || dice_.in(3)) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    name->setText(dice_.oneOf(files_));
    QTest::keyClick(name, Qt::Key_Return);
}

void RandomUser::useControl(QWidget& dialog) {
    QList<QWidget*> controls;
    for (QWidget* control : dialog.findChildren<QWidget*>()) {
        if (control->isVisible() && control->isEnabled() && control->focusPolicy() != Qt::NoFocus) {
            controls << control;
        }
    }
    if (controls.isEmpty() || dice_.in(15)) {
        QTest::keyClick(&dialog, dice_.in(2) ? Qt::Key_Escape : Qt::Key_Return);
        return;
    }
    QWidget* control = dice_.oneOf(controls);
    if (auto* box = qobject_cast<QLineEdit*>(control)) {
        if (dice_.in(2)) {
            box->setText(randomText()); // as a paste does
        } else {
            type(*box, randomText().left(12));
        }
    } else if (qobject_cast<QTextEdit*>(control)) {
        type(*control, randomText().left(40));
    } else {
        clickIn(*control);
    }
}

void RandomUser::clickIn(QWidget& widget) {
    const QPoint at = inside(dice_, widget);
    const QPointer<QWidget> still(&widget);
    switch (dice_.upTo(5)) {
    case 0:
        QTest::mouseClick(&widget, Qt::RightButton, {}, at);
        break;
    case 1:
        QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
        if (still && !world_.hasEnded()) {
            QTest::mouseDClick(&widget, Qt::LeftButton, {}, at);
        }
        break;
    default:
        QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
    }
}

// As an input method hands it over, or key by key.
void RandomUser::type(QWidget& target, const QString& text) {
    const QPointer<QWidget> still(&target);
    for (const QChar character : text) {
        if (!still || world_.hasEnded()) {
            return;
        }
        if (character.unicode() >= 0x20 && character.unicode() < 0x80) {
            QTest::keyClick(&target, character.toLatin1());
        } else {
            QInputMethodEvent event;
            event.setCommitString(character);
            QCoreApplication::sendEvent(&target, &event);
        }
    }
}

outline::OutlineView* RandomUser::randomTree() {
    QList<outline::OutlineView*> shown;
    for (outline::OutlineView* view : world_.mainForm().findChildren<outline::OutlineView*>()) {
        if (view->isVisible()) {
            shown << view;
            if (view->objectName() == "TrvCurrent") {
                shown << view; // where most commands are
            }
        }
    }
    return shown.isEmpty() ? nullptr : dice_.oneOf(shown);
}

std::optional<QPoint> RandomUser::randomRow(outline::OutlineView& view) {
    QList<QPoint> rows;
    for (QModelIndex at = view.model()->index(0, 0); at.isValid(); at = view.indexBelow(at)) {
        const QRect row = view.visualRect(at);
        if (view.viewport()->rect().contains(row.center())) {
            rows << QPoint(row.left() + std::min(8, row.width() / 2), row.center().y());
        }
    }
    return rows.isEmpty() ? std::nullopt : std::optional(dice_.oneOf(rows));
}

void RandomUser::clickTree() {
    outline::OutlineView* view = randomTree();
    if (!view) {
        return;
    }
    const QPoint at =
        dice_.in(12) ? inside(dice_, *view->viewport()) : randomRow(*view).value_or(QPoint(20, 5));
    reach(*view);
    const QPointer<QWidget> viewport(view->viewport());
    if (dice_.in(3)) {
        QTest::mouseClick(viewport, Qt::RightButton, {}, at);
        return;
    }
    QTest::mouseClick(viewport, Qt::LeftButton, {}, at);
    if (viewport && !world_.hasEnded() && dice_.in(4)) {
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, at);
    }
}

void RandomUser::clickAnywhere() {
    startup::MainForm& frame = world_.mainForm();
    const QPoint at = inside(dice_, frame);
    if (QWidget* child = frame.childAt(at)) {
        for (const QWidget* part = child; part; part = part->parentWidget()) {
            reach(*part);
        }
        clickIn(*child);
    }
}

void RandomUser::pressKey() {
    struct Key {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    };
    static const std::vector<Key> keys{{Qt::Key_Delete, {}},
                                       {Qt::Key_F2, {}},
                                       {Qt::Key_Return, {}},
                                       {Qt::Key_Up, {}},
                                       {Qt::Key_Down, {}},
                                       {Qt::Key_Down, {}},
                                       {Qt::Key_Left, {}},
                                       {Qt::Key_Right, {}},
                                       {Qt::Key_Home, {}},
                                       {Qt::Key_End, {}},
                                       {Qt::Key_PageDown, {}},
                                       {Qt::Key_Tab, {}},
                                       {Qt::Key_Backtab, {}},
                                       {Qt::Key_Space, {}},
                                       {Qt::Key_Escape, {}},
                                       {Qt::Key_F1, {}},
                                       {Qt::Key_Asterisk, {}},
                                       {Qt::Key_C, Qt::ControlModifier},
                                       {Qt::Key_A, {}},
                                       {Qt::Key_V, Qt::ControlModifier},
                                       {Qt::Key_S, Qt::AltModifier},
                                       {Qt::Key_E, Qt::AltModifier},
                                       {Qt::Key_W, Qt::AltModifier},
                                       {Qt::Key_H, Qt::AltModifier},
                                       {Qt::Key_Return, Qt::AltModifier},
                                       {Qt::Key_N, Qt::ControlModifier},
                                       {Qt::Key_Z, Qt::ControlModifier},
                                       {Qt::Key_Y, Qt::ControlModifier},
                                       {Qt::Key_F4, Qt::ControlModifier},
                                       {Qt::Key_W, Qt::ControlModifier},
                                       {Qt::Key_Tab, Qt::ControlModifier}};
    QWidget* target = QApplication::focusWidget();
    if (!target) {
        target = &world_.mainForm();
    }
    if (dice_.in(12)) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, target->mapToGlobal(QPoint()));
        QCoreApplication::sendEvent(target, &event);
        return;
    }
    const Key key = dice_.oneOf(keys);
    QTest::keyClick(target, key.key, key.modifiers);
}

void RandomUser::typeText() {
    if (QWidget* target = QApplication::focusWidget()) {
        type(*target, randomText().left(8));
    }
}

void RandomUser::hover(QWidget& target, QMimeData& data) {
    QDragEnterEvent enter(inside(dice_, target), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &enter);
    for (int moves = 1 + dice_.upTo(3); moves > 0; --moves) {
        QDragMoveEvent move(inside(dice_, target), Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&target, &move);
    }
}

// On a row, mostly; false when the drag was given up.
bool RandomUser::letGo(QWidget& target, QMimeData& data) {
    auto* view = qobject_cast<outline::OutlineView*>(target.parentWidget());
    if (!view || dice_.in(10)) {
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&target, &leave);
        return false;
    }
    const QPoint at = randomRow(*view).value_or(inside(dice_, target));
    QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &move);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&target, &drop);
    return true;
}

void RandomUser::drag() {
    outline::OutlineView* view = randomTree();
    auto* current = world_.mainForm().findChild<outline::OutlineView*>("TrvCurrent");
    const auto row = view ? randomRow(*view) : std::nullopt;
    if (!row || !current) {
        return;
    }
    view->setDragRunner(
        [this, target = QPointer<QWidget>(current->viewport())](QMimeData* picked, const QPixmap&) {
            const std::unique_ptr<QMimeData> data(picked);
            if (target) {
                hover(*target, *data);
                drags_ += letGo(*target, *data) ? 1 : 0;
            }
        });
    const QPointer<QWidget> viewport(view->viewport());
    QTest::mousePress(viewport, Qt::LeftButton, {}, *row);
    for (const QPoint step : {QPoint(4, 4), QPoint(30, 12), QPoint(60, 30)}) {
        if (viewport) {
            const QPointF at = *row + step;
            QMouseEvent move(QEvent::MouseMove, at, viewport->mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(viewport, &move);
        }
    }
    if (viewport) {
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, *row + QPoint(60, 30));
    }
}

void RandomUser::dropFiles() {
    auto* current = world_.mainForm().findChild<outline::OutlineView*>("TrvCurrent");
    if (!current) {
        return;
    }
    QMimeData data;
    QList<QUrl> urls;
    for (int count = 1 + dice_.upTo(3); count > 0; --count) {
        urls << QUrl::fromLocalFile(dice_.oneOf(files_));
    }
    data.setUrls(urls);
    hover(*current->viewport(), data);
    letGo(*current->viewport(), data);
}

void RandomUser::chooseCommand() {
    QList<QAction*> commands;
    QList<QAction*> items = world_.mainForm().menuBar()->actions();
    while (!items.isEmpty()) {
        QAction* item = items.takeLast();
        if (item->menu()) {
            items << item->menu()->actions();
        } else if (item->isEnabled() && item->isVisible()) {
            commands << item;
        }
    }
    if (commands.isEmpty()) {
        return;
    }
    QAction* command = dice_.oneOf(commands);
    const bool isEnd = command->objectName().endsWith("Exit");
    const bool isLoss = command->objectName() == "mnuDelete";
    if ((isEnd || isLoss) && !dice_.in(4)) {
        return;
    }
    command->trigger();
}

// Its own items stand in no menu bar while the workbench is the current child.
void RandomUser::chooseOfFrame() {
    static const QStringList items{"mnuBuild", "MenuExit", "help1",   "help2",
                                   "listWin",  "winA",     "sysAbout"};
    const QString name = dice_.oneOf(items);
    if (name == "MenuExit" && !dice_.in(2)) {
        return;
    }
    const auto* area = world_.mainForm().findChild<QMdiArea*>();
    const QMdiSubWindow* before = area->currentSubWindow();
    const bool isFree = !inFront();
    world_.mainForm().findChild<QAction*>(name)->trigger();
    if (isFree && (name != "mnuBuild" || area->currentSubWindow() != before)) {
        reached_ << name;
    }
}

void RandomUser::pressToolbar() {
    auto* bar = world_.mainForm().findChild<outline::WorkbenchToolbar*>();
    if (auto* editors = world_.mainForm().findChild<generate::BidEditToolbar*>();
        editors && (!bar || dice_.in(2))) {
        reach(*editors);
        QAction* action = editors->at(1 + dice_.upTo(static_cast<int>(editors->actions().size())));
        if (QWidget* face = editors->widgetForAction(action)) {
            QTest::mouseClick(face, Qt::LeftButton);
        }
        return;
    }
    if (!bar) {
        return;
    }
    reach(*bar);
    QAction* action = bar->at(1 + dice_.upTo(static_cast<int>(bar->actions().size())));
    if (QWidget* face = bar->widgetForAction(action);
        face && (action != bar->at(15) || dice_.in(4))) {
        QTest::mouseClick(face, Qt::LeftButton);
    }
}

void RandomUser::moveBar() {
    const auto bars = world_.mainForm().findChildren<outline::SplitterBar*>();
    if (bars.isEmpty()) {
        return;
    }
    outline::SplitterBar* bar = dice_.oneOf(bars);
    const QPoint from = inside(dice_, *bar);
    QTest::mousePress(bar, Qt::LeftButton, {}, from);
    for (int moves = dice_.upTo(5); moves > 0; --moves) {
        QTest::mouseMove(bar, from + QPoint(dice_.upTo(400) - 200, dice_.upTo(400) - 200));
    }
    QTest::mouseRelease(bar, Qt::LeftButton, {}, from);
}

void RandomUser::resize() {
    startup::MainForm& frame = world_.mainForm();
    switch (dice_.upTo(4)) {
    case 0:
        frame.showMaximized();
        break;
    case 1:
        frame.showMinimized();
        frame.showNormal();
        break;
    default:
        frame.showNormal();
        frame.resize(100 + dice_.upTo(1500), 60 + dice_.upTo(1000));
    }
}

void RandomUser::switchTab() {
    const auto bars = world_.mainForm().findChildren<QTabBar*>();
    if (!bars.isEmpty()) {
        QTabBar* bar = dice_.oneOf(bars);
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(dice_.upTo(bar->count())).center());
    }
}

void RandomUser::renameNode() {
    auto* current = world_.mainForm().findChild<outline::OutlineView*>("TrvCurrent");
    if (!current) {
        return;
    }
    current->setFocus();
    QTest::keyClick(current, Qt::Key_F2);
    if (auto* editor = current->findChild<QLineEdit*>()) {
        editor->setText(randomText());
        QTest::keyClick(editor, dice_.in(4) ? Qt::Key_Escape : Qt::Key_Return);
    }
}

// As a killed process and the next start.
void RandomUser::startAgain() {
    world_.drop();
    start();
}

bool RandomUser::start() {
    const Acting acting(*this);
    return world_.start();
}

void RandomUser::closeFrame() {
    if (dice_.in(3)) {
        world_.mainForm().close();
    }
}

void RandomUser::close() {
    const Acting acting(*this);
    world_.mainForm().close();
}

// Those that chance comes to seldom.
void RandomUser::openWindow() {
    static const QStringList openers{
        "mnuNew",       "mnuAbout", "OpenPlanInfo", "mnuLTFolder", "mnuEQFolder", "mnuLTDoc",
        "mnuContent",   "mnuEdit",  "mnuBuildbid",  "mnuBidLike",  "mnuCheck",    "mnuReport",
        "mnuBrowsebid", "mnuPdf",   "mnuHistory",   "mnuUndo",     "mnuRedo"};
    auto* opener = world_.mainForm().findChild<QAction*>(dice_.oneOf(openers));
    auto* generation = world_.mainForm().findChild<QAction*>("mnuBuildbid");
    if (generation && generation->isEnabled() && dice_.in(3)) {
        opener = generation;
    }
    // There is a report only behind a generation, and until its window goes.
    auto* report = world_.mainForm().findChild<QAction*>("mnuReport");
    if (report && report->isEnabled() && dice_.in(2)) {
        opener = report;
    }
    if (opener && opener->isEnabled()) {
        opener->trigger();
    }
}

void RandomUser::readHelp() { read({"HelpWindow"}); }

void RandomUser::readFindings() { read({"dlgCheck", "dlgReport"}); }

void RandomUser::readHistory() { read({"HistoryWindow"}); }

// One of these windows that is open beside the others.
void RandomUser::read(const QStringList& windows) {
    QList<QWidget*> open;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (windows.contains(window->objectName()) && window->isVisible()) {
            open << window;
        }
    }
    if (open.isEmpty()) {
        return;
    }
    QWidget* window = open.at(dice_.upTo(static_cast<int>(open.size())));
    reach(*window);
    if (dice_.in(5)) {
        window->close();
    } else {
        useControl(*window);
    }
}

QString RandomUser::randomText() {
    static const QStringList texts{
        "",      " ",    "乙",     "土方工程", "abc", "12",     "a'b",  "甲[乙]", "一.二",
        "temp",  "丙丁", "%1%s",   "..",       "a/b", "遍历表", "甲",   "模板",   " 空 格 ",
        "甲Org", "a\"b", "select", "*",        "😀",   "a\\b",   "a\nb", "当前表", "甲.1"};
    if (dice_.in(20)) {
        return QString(300, QChar(u'长'));
    }
    return dice_.in(2) ? QStringLiteral("名") + QString::number(dice_.upTo(1000))
                       : dice_.oneOf(texts);
}

} // namespace qvnd::test

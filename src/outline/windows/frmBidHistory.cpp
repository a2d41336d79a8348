#include "outline/NodeCommands.h"
#include "outline/PutBack.h"
#include "outline/TakeBack.h"
#include "outline/windows/HistoryWindow.h"
#include "outline/windows/NoteBar.h"
#include "outline/windows/WorkbenchFrame.h"
#include "outline/windows/WorkbenchToolbar.h"
#include "outline/windows/frmBid.h"
#include "platform/error/IgnoringErrors.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

// What frmBid does with the history of commands.
namespace qvnd::outline {

// The bar tells what a step did beyond what its name says. An event that changed nothing leaves the
// bar of the command before it.
void frmBid::tellStep(const history::Step& step) {
    if (step.isMinor) {
        return;
    }
    step.note.isEmpty() ? note_->clear() : note_->tell(step.note);
    noted_ = step.id;
    offered_ = step.id;
    refreshHistoryWindow();
}

// A step of another window or program, which 撤消 names from now on.
void frmBid::tellLatestStep() {
    if (const history::Step latest = latestStep(); latest.id > noted_) {
        tellStep(latest);
    }
    applyHistory();
    if (historyWindow_ && historyWindow_->listedHead() != namedUndo_) { // taken back elsewhere
        refreshHistoryWindow();
    }
}

history::Step frmBid::latestStep() const {
    history::Step latest;
    ignoringErrors([&] {
        if (state_.History) {
            latest = state_.History->undoable().value_or(latest);
        }
    });
    return latest;
}

// What the start itself did stays to be read below, and its button with it.
void frmBid::tellWhatWasMended() {
    if (state_.HistoryFound.exitKilled) {
        frame_.showStatus(u"上次运行在退出时中断了；所做的操作都已保存。"_s);
    }
    NoteOffer offer = NoteOffer::details;
    if (state_.HistoryFound.unfinished) {
        noted_ = state_.HistoryFound.unfinished->id;
        if (latestStep().id == noted_) {
            offer = NoteOffer::undo;
            offered_ = noted_;
        }
    }
    const QString mended = takeMended(state_, u"撤消"_s);
    if (!mended.isEmpty()) {
        const bool isAlone = note_->offer() == NoteOffer::nothing;
        note_->tell(note_->isHidden() ? mended : mended + u'\n' + note_->text(),
                    isAlone ? offer : note_->offer());
    }
}

void frmBid::applyHistory() {
    const history::Step undo = latestStep();
    history::Step redo;
    ignoringErrors([&] {
        if (state_.History) {
            redo = state_.History->redoable().value_or(redo);
        }
    });
    menus_.applyHistory(undo.title, redo.title);
    menus_.mnuHistory->setEnabled(state_.History != nullptr);
    TbarBid_->applyHistory(undo.title, redo.title);
    namedUndo_ = undo.id;
    namedRedo_ = redo.id;
}

void frmBid::showAnew(const QString& selected) {
    ignoringErrors([&] {
        showTables(state_, workbench_, services_, selected);
        followSelection(state_, workbench_, services_.messages);
    });
}

// What it did beyond what was asked stays to be read in the bar.
void frmBid::tellRestored(const QString& done, NoteOffer offer, std::int64_t taken) {
    frame_.showStatus(done);
    if (const QString note = state_.History->note(); !note.isEmpty()) {
        note_->tell(note, offer);
        noted_ = state_.History->steps().last().id;
        offered_ = taken;
    } else { // a step that was done again is no news
        noted_ = std::max(noted_, latestStep().id);
    }
}

bool frmBid::isOfferOpen() const {
    bool isOpen = true;
    ignoringErrors([&] {
        if (state_.History) {
            const auto step = note_->offer() == NoteOffer::redo ? state_.History->redoable()
                                                                : state_.History->undoable();
            isOpen = step && step->id == offered_;
        }
    });
    return isOpen;
}

void frmBid::takeOffer() {
    note_->offer() == NoteOffer::redo ? doAgain(offered_) : takeBack(offered_);
}

// The bar of a step that has been taken back or followed by another one is out of date.
void frmBid::forgetOutdatedNote() {
    const NoteOffer offer = note_->offer();
    if ((offer == NoteOffer::undo || offer == NoteOffer::redo) && !isOfferOpen()) {
        note_->clear();
    }
}

void frmBid::takeBack(std::int64_t named) {
    run(
        [this, named] {
            note_->clear();
            if (const auto step = undoNamed(state_, workbench_, services_, named)) {
                tellRestored(u"已撤消：%1"_s.arg(step->title), NoteOffer::redo, step->id);
            } else {
                tellLatestStep();
            }
        },
        u"撤消"_s);
    refreshHistoryWindow();
}

void frmBid::doAgain(std::int64_t named) {
    run(
        [this, named] {
            note_->clear();
            if (const auto step = redoNamed(state_, workbench_, services_, named)) {
                tellRestored(u"已恢复：%1"_s.arg(step->title), NoteOffer::undo, step->id);
            } else {
                tellLatestStep();
            }
        },
        u"恢复"_s);
    refreshHistoryWindow();
}

void frmBid::refreshHistoryWindow() {
    if (historyWindow_ && historyWindow_->isVisible()) {
        ignoringErrors([this] { historyWindow_->refresh(); });
    }
}

void frmBid::showHistory() {
    if (!state_.History) {
        return;
    }
    if (!historyWindow_) {
        HistoryWindow::Source source;
        source.steps = [this](const QString& text) {
            return state_.History ? state_.History->stepsWith(text) : QList<history::Step>();
        };
        source.changes = [this](std::int64_t step) {
            return state_.History ? state_.History->changesOf(step) : QList<history::Change>();
        };
        source.head = [this] { return latestStep().id; };
        source.file = [this](std::int64_t step, const history::Change& change) {
            return fileBefore(state_, step, change);
        };
        historyWindow_ = new HistoryWindow(source, this);
        connect(historyWindow_, &HistoryWindow::goBefore, this, &frmBid::goBefore);
        connect(historyWindow_, &HistoryWindow::goBehind, this, &frmBid::goBehind);
        connect(historyWindow_, &HistoryWindow::putBack, this, &frmBid::putBackOne);
        connect(historyWindow_, &HistoryWindow::takeOut, this, &frmBid::takeOut);
    }
    historyWindow_->show();
    historyWindow_->raise();
    historyWindow_->activateWindow();
    refreshHistoryWindow();
}

void frmBid::showDetails() {
    tellLatestStep();
    showHistory();
    if (historyWindow_) {
        historyWindow_->choose(noted_);
    }
}

// Another program thins the list at its end.
std::optional<history::Step> frmBid::listedStep(std::int64_t step) {
    auto found = state_.History->step(step);
    if (!found) {
        frame_.showStatus(u"这一步已不在操作历史中。"_s);
        refreshHistoryWindow();
    }
    return found;
}

void frmBid::goBefore(std::int64_t step) {
    if (const auto wanted = listedStep(step)) {
        goTo(wanted->parent, u"已回到“%1”之前。"_s.arg(wanted->title));
    }
}

void frmBid::goBehind(std::int64_t step) {
    if (const auto wanted = listedStep(step)) {
        goTo(step, u"已回到“%1”之后。"_s.arg(wanted->title));
    }
}

void frmBid::goTo(std::int64_t step, const QString& done) {
    run(
        [&] {
            note_->clear();
            if (goToListed(state_, workbench_, services_, step, historyWindow_->listedHead())) {
                tellRestored(done, NoteOffer::details, step);
            } else {
                tellLatestStep();
            }
        },
        u"回到以前"_s);
    refreshHistoryWindow();
}

// A command like any other: it is recorded, and can be taken back.
void frmBid::putBackOne(std::int64_t step, const history::Change& change) {
    run(
        [&] {
            const PutBack done = putBackAndShow(state_, workbench_, services_, step, change);
            frame_.showStatus(u"已放回：%1"_s.arg(done.names.join(u'、')));
            if (!done.missing.isEmpty()) {
                services_.messages.tell(u"下列文档的文件已不在，操作历史也没有保留：\n"_s +
                                            done.missing.join(u'\n'),
                                        desktop::Icon::information, u"提示"_s);
            }
        },
        u"放回"_s);
}

// Beside the plans' folders, so that nothing of a plan is overwritten.
void frmBid::takeOut(std::int64_t step, const QString& file, const QString& name) {
    run(
        [&] {
            const history::Step taken = state_.History->step(step).value_or(history::Step{});
            const QString target = takenOutPath(state_, taken, file, name);
            state_.History->takeOut(step, file, target);
            frame_.showStatus(u"已取出：%1"_s.arg(target));
        },
        u"取出"_s);
}

} // namespace qvnd::outline

#include "platform/desktop/windows/WidgetLongRun.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

constexpr int narrowest = 360;

// Goes with the work alone: closing it by the window's own means cancels.
class WaitingDialog : public QProgressDialog {
public:
    using QProgressDialog::QProgressDialog;
    void reject() override { emit canceled(); }
};

} // namespace

void WidgetLongRun::begin(const QString& title, int pieces) {
    if (running_++ > 0) {
        return;
    }
    title_ = title;
    pieces_ = pieces;
    done_ = -1;
    cancelled_ = false;
    canCancel_ = true;
    clock_.start();
}

void WidgetLongRun::offerNoCancel() {
    if (running_ != 1) {
        return;
    }
    canCancel_ = false;
    if (dialog_) {
        dialog_->setCancelButton(nullptr);
    }
}

void WidgetLongRun::next(const QString& text) {
    text_ = text;
    if (running_ == 1) {
        ++done_;
    }
    if (dialog_) {
        showPiece();
    }
}

bool WidgetLongRun::isCancelled() {
    if (running_ > 0 && !dialog_ && clock_.hasExpired(patience_)) {
        show();
    }
    if (dialog_) {
        QCoreApplication::processEvents();
    } else if (running_ > 0) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    return running_ > 0 && cancelled_;
}

// The dialog would hide itself when it is cancelled.
void WidgetLongRun::show() {
    dialog_ = std::make_unique<WaitingDialog>(text_, u"取消(&C)"_s, 0, pieces_,
                                              QApplication::activeWindow());
    dialog_->setWindowTitle(title_);
    dialog_->setAccessibleName(title_);
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumWidth(narrowest);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
    dialog_->setMinimumDuration(0);
    QObject::disconnect(dialog_.get(), &QProgressDialog::canceled, dialog_.get(), nullptr);
    QObject::connect(dialog_.get(), &QProgressDialog::canceled, dialog_.get(),
                     [this] { cancel(); });
    keepKeysHarmless();
    if (!canCancel_) {
        dialog_->setCancelButton(nullptr);
    }
    showPiece();
    dialog_->show();
}

// A key that was meant for the window behind cancels nothing; Tab leads to the button.
void WidgetLongRun::keepKeysHarmless() {
    dialog_->findChild<QPushButton*>()->setAutoDefault(false);
    auto* text = dialog_->findChild<QLabel*>();
    text->setFocusPolicy(Qt::TabFocus);
    text->setFocus();
}

void WidgetLongRun::showPiece() {
    if (!cancelled_) {
        dialog_->setLabelText(text_);
    }
    dialog_->setValue(std::clamp(done_, 0, pieces_));
}

void WidgetLongRun::cancel() {
    if (!canCancel_) {
        return;
    }
    cancelled_ = true;
    dialog_->setLabelText(u"正在停止……"_s);
    dialog_->findChild<QPushButton*>()->setEnabled(false);
}

void WidgetLongRun::end() {
    if (--running_ == 0) {
        dialog_.reset();
    }
}

} // namespace qvnd::desktop

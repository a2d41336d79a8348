#include "platform/desktop/windows/WidgetLongRun.h"

#include <QApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::desktop {

namespace {

constexpr int narrowest = 360;

} // namespace

void WidgetLongRun::begin(const QString& title, int pieces) {
    title_ = title;
    pieces_ = pieces;
    done_ = -1;
    running_ = true;
    cancelled_ = false;
    clock_.start();
}

void WidgetLongRun::next(const QString& text) {
    text_ = text;
    ++done_;
    if (dialog_) {
        dialog_->setLabelText(text_);
        dialog_->setValue(std::min(done_, pieces_));
    }
}

bool WidgetLongRun::isCancelled() {
    if (running_ && !dialog_ && clock_.hasExpired(patience_)) {
        show();
    }
    if (dialog_) {
        QCoreApplication::processEvents();
        cancelled_ = cancelled_ || dialog_->wasCanceled();
    } else if (running_) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    return running_ && cancelled_;
}

void WidgetLongRun::show() {
    dialog_ = std::make_unique<QProgressDialog>(text_, u"取消(&C)"_s, 0, pieces_,
                                                QApplication::activeWindow());
    dialog_->setWindowTitle(title_);
    dialog_->setAccessibleName(title_);
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumWidth(narrowest);
    dialog_->setAutoClose(false);
    dialog_->setAutoReset(false);
    dialog_->setMinimumDuration(0);
    dialog_->setValue(std::clamp(done_, 0, pieces_));
    dialog_->show();
}

void WidgetLongRun::end() {
    dialog_.reset();
    running_ = false;
}

} // namespace qvnd::desktop

#include "startup/windows/ProgramApplication.h"

#include "platform/error/UnexpectedErrors.h"

#include <QEvent>
#include <QThread>

#include <algorithm>
#include <exception>
#include <iterator>

namespace qvnd::startup {

namespace {

bool isRaisedAgain(QEvent::Type type) {
    constexpr QEvent::Type raisedAgain[] = {
        QEvent::Paint,         QEvent::UpdateRequest, QEvent::UpdateLater, QEvent::Expose,
        QEvent::LayoutRequest, QEvent::Resize,        QEvent::Timer};
    return std::find(std::begin(raisedAgain), std::end(raisedAgain), type) != std::end(raisedAgain);
}

} // namespace

bool ProgramApplication::notify(QObject* receiver, QEvent* event) {
    const QEvent::Type type = event->type();
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        if (messages_ == nullptr || QThread::currentThread() != thread()) {
            throw;
        }
        tellBehind(desktop::descriptionOf(runTimeErrorOf(failure)), isRaisedAgain(type));
        return true;
    }
}

// A box has a loop of its own, in which nothing of the failed event may be under way any more.
void ProgramApplication::tellBehind(const QString& text, bool comesAgain) {
    if (waiting_.contains(text) || (comesAgain && told_.contains(text))) {
        return;
    }
    if (comesAgain) {
        told_.insert(text);
    }
    waiting_.insert(text);
    QMetaObject::invokeMethod(
        this,
        [this, text] {
            if (messages_ != nullptr) {
                messages_->tell(text, desktop::Icon::exclamation, desktop::hintTitle);
            }
            waiting_.remove(text);
        },
        Qt::QueuedConnection);
}

} // namespace qvnd::startup

#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace qvnd::test {

// Lets events happen until the condition holds; false when it does not within the time, which is
// far longer than anything that is waited for.
template <typename Condition>
bool waitFor(Condition condition, int milliseconds = 60'000) {
    const QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(2);
    }
    return true;
}

} // namespace qvnd::test

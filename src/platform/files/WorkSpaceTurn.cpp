#include "platform/files/WorkSpaceTurn.h"

#include "platform/error/RunTimeError.h"

#include <QElapsedTimer>
#include <QScopeGuard>
#include <QThread>

#include <algorithm>
#include <utility>

namespace qvnd::files {

namespace {

constexpr unsigned long pause = 20; // milliseconds between two attempts

} // namespace

WorkSpaceTurn::WorkSpaceTurn(const QString& programFolder, FileLock::LockCall lock)
    : lockCall_(std::move(lock)) {
    locks_.push_back(std::make_unique<FileLock>(programFolder, lockCall_));
}

void WorkSpaceTurn::take(std::chrono::milliseconds longest) {
    if (!tryTake()) {
        waitFor([this] { return tryTake(); }, longest);
    }
}

bool WorkSpaceTurn::tryTake() {
    if (!isTaken_) {
        isTaken_ = lockAll();
    }
    return isTaken_;
}

// All of them or none, so that nobody keeps one folder from those who could use it.
bool WorkSpaceTurn::lockAll() {
    auto givesBack = qScopeGuard([this] { giveBack(); });
    if (!std::all_of(locks_.begin(), locks_.end(),
                     [this](const auto& one) { return lock(*one); })) {
        return false;
    }
    givesBack.dismiss();
    return true;
}

bool WorkSpaceTurn::lock(FileLock& lock) {
    const bool isTaken = lock.tryTake();
    if (!isTaken) {
        missing_ = &lock;
    }
    return isTaken;
}

void WorkSpaceTurn::waitFor(const std::function<bool()>& attempt,
                            std::chrono::milliseconds longest) {
    QElapsedTimer waiting;
    waiting.start();
    if (wait_) {
        wait_->begin(reason());
    }
    const auto ends = qScopeGuard([this] {
        if (wait_) {
            wait_->end();
        }
    });
    while (!attempt()) {
        if (wait_ && !wait_->goesOn()) {
            throw RunTimeError(error::dialogCancelled, u"等待已取消");
        }
        if (waiting.hasExpired(longest.count())) {
            throw RunTimeError(
                error::storeBusy,
                QStringLiteral("『%1』正由%2使用，等了 %3 秒还没有轮到。请等它做完再试。")
                    .arg(missing_->folder(), missing_->holder())
                    .arg(longest.count() / 1000)
                    .toStdU16String());
        }
        QThread::msleep(pause);
    }
}

QString WorkSpaceTurn::reason() const {
    return QStringLiteral("『%1』正由%2使用。").arg(missing_->folder(), missing_->holder());
}

void WorkSpaceTurn::giveBack() {
    for (const auto& lock : locks_) {
        lock->giveBack();
    }
    isTaken_ = false;
}

void WorkSpaceTurn::cover(const QString& folder, std::chrono::milliseconds longest) {
    auto added = std::make_unique<FileLock>(folder, lockCall_);
    if (std::any_of(locks_.begin(), locks_.end(),
                    [&](const auto& known) { return known->folder() == added->folder(); })) {
        return;
    }
    if (isTaken_ && !lock(*added)) {
        waitFor([&] { return lock(*added); }, longest);
    }
    locks_.push_back(std::move(added));
}

} // namespace qvnd::files

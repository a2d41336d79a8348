#pragma once

#include "platform/desktop/LongRun.h"

#include <QStringList>

#include <functional>

namespace qvnd::test {

// Records what is shown of a long run; `cancel` says whether the user has cancelled.
class FakeLongRun : public desktop::LongRun {
public:
    void begin(const QString& title, int pieces) override {
        shown << title + " " + QString::number(pieces);
        canCancel = canCancel || begun_ == 0;
        ++begun_;
        running = true;
    }
    void offerNoCancel() override { canCancel = canCancel && begun_ > 1; }
    void next(const QString& text) override {
        shown << text;
        if (atNext) {
            atNext();
        }
    }
    bool isCancelled() override {
        const bool isAsked = running && cancel && cancel();
        return isAsked && canCancel;
    }
    void end() override { running = --begun_ > 0; }

    std::function<bool()> cancel;
    std::function<void()> atNext; // behind the note of what is shown
    QStringList shown;
    bool running = false;
    bool canCancel = true; // in the run that began last

private:
    int begun_ = 0; // one within the other
};

} // namespace qvnd::test

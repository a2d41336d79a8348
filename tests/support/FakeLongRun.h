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
        ++begun_;
        running = true;
    }
    void next(const QString& text) override { shown << text; }
    bool isCancelled() override { return running && cancel && cancel(); }
    void end() override { running = --begun_ > 0; }

    std::function<bool()> cancel;
    QStringList shown;
    bool running = false;

private:
    int begun_ = 0; // one within the other
};

} // namespace qvnd::test

#pragma once

#include "platform/desktop/LongRun.h"

#include <QElapsedTimer>
#include <QProgressDialog>

#include <memory>

namespace qvnd::desktop {

// Shows the progress in a dialog that keeps mouse and keyboard away from the other windows. Behind
// 取消 it stays and says so: what works cannot always stop at once.
class WidgetLongRun : public LongRun {
public:
    // `patience`: milliseconds before the dialog comes.
    explicit WidgetLongRun(int patience = 1000) : patience_(patience) {}

    void begin(const QString& title, int pieces) override;
    void offerNoCancel() override;
    void next(const QString& text) override;
    bool isCancelled() override;
    void end() override;

private:
    void show();
    void keepKeysHarmless();
    void showPiece();
    void cancel();

    int patience_;
    QElapsedTimer clock_;
    int running_ = 0; // runs that have begun and not ended, one within the other
    bool cancelled_ = false;
    bool canCancel_ = true;
    QString title_;
    QString text_;
    int pieces_ = 0;
    int done_ = 0;
    std::unique_ptr<QProgressDialog> dialog_;
};

} // namespace qvnd::desktop

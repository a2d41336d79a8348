#pragma once

#include "outline/windows/CommandToolbar.h"

namespace qvnd::outline {

struct Workbench;

// The toolbar (TbarBid): its positions, and behind them 撤消 and 恢复, which have none.
class WorkbenchToolbar : public CommandToolbar {
    Q_OBJECT

public:
    static constexpr int positions = 15;

    explicit WorkbenchToolbar(QWidget* parent = nullptr);

    void apply(const Workbench& workbench);
    // The tip of the button with the key; empty when there is none.
    QString tipOf(const QString& key) const;

    QAction* undo() const { return undo_; }
    QAction* redo() const { return redo_; }
    // What they would take; empty when there is nothing.
    void applyHistory(const QString& undo, const QString& redo);

private:
    QAction* addBehind(const QString& key, const QString& icon);

    QAction* undo_;
    QAction* redo_;
};

} // namespace qvnd::outline

#pragma once

#include <QWidget>

class QLabel;

namespace qvnd::outline {

struct Workbench;

// What stands in TrvCurrent while no plan is open: what to do first, and the two commands for it.
// Everywhere but on its buttons the mouse reaches the tree.
class EmptyPlanHint : public QWidget {
    Q_OBJECT

public:
    // Covers `viewport`, whose child it becomes.
    explicit EmptyPlanHint(QWidget* viewport);

    // Stands as long as the workbench shows no plan. Its words depend on whether there are plans.
    // When it goes, the tree takes the keyboard over from its buttons.
    void apply(const Workbench& workbench);

signals:
    void newPlan();
    void openGuide();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* title_;
    QLabel* text_;
};

} // namespace qvnd::outline

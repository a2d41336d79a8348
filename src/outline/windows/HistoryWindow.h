#pragma once

#include "platform/history/Step.h"

#include <QDialog>

#include <cstdint>
#include <functional>

class QLabel;
class QLineEdit;
class QComboBox;
class QPushButton;
class QTreeWidget;

namespace qvnd::outline {

// The list of what was done, by time, plan or command, with what each step changed. It stays open
// while the user works on, and only asks: everything is done by the workbench.
class HistoryWindow : public QDialog {
    Q_OBJECT

public:
    // Where the list comes from. All are asked while the window is shown.
    struct Source {
        // Those whose title or changes bear the text; all for an empty one. Oldest first.
        std::function<QList<history::Step>(const QString& text)> steps;
        std::function<QList<history::Change>(std::int64_t step)> changes;
        std::function<std::int64_t()> head;
        // The document or other file that a change is about, as far as what it held before the step
        // can be had; empty when there is none.
        std::function<QString(std::int64_t step, const history::Change& change)> file;
    };

    HistoryWindow(Source source, QWidget* parent);

    // Reads the list anew; the chosen step stays chosen, else the newest is.
    void refresh();
    // The step that the list marks as the present state.
    std::int64_t listedHead() const { return head_; }
    // Chooses a step that the list shows.
    void choose(std::int64_t step);

signals:
    // The state before, or behind, the step is wanted.
    void goBefore(std::int64_t step);
    void goBehind(std::int64_t step);
    // The node or file of one change is wanted back as it was before the step.
    void putBack(std::int64_t step, const history::Change& change);
    // The content that a file had before the step is wanted as a file of its own, under a name that
    // tells the node.
    void takeOut(std::int64_t step, const QString& file, const QString& name);

private:
    void build();
    void connectAll();
    void fillPlans(const QList<history::Step>& steps);
    bool isWanted(const history::Step& step) const;
    void showChanges();
    void offer();
    std::int64_t chosen() const;
    const history::Change* chosenChange() const;

    Source source_;
    QList<history::Change> shown_; // changes of the chosen step
    std::int64_t head_ = history::beginning;
    QLineEdit* search_;
    QComboBox* plan_;
    QComboBox* period_;
    QTreeWidget* steps_;
    QTreeWidget* changes_;
    QLabel* note_;
    QPushButton* before_;
    QPushButton* behind_;
    QPushButton* putBack_;
    QPushButton* takeOut_;
    QPushButton* close_;
};

} // namespace qvnd::outline

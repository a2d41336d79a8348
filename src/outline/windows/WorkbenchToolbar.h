#pragma once

#include <QToolBar>

#include <array>

namespace qvnd::outline {

struct Workbench;

// The toolbar (TbarBid). Its 15 positions count the separators; a click is told by the button's
// key, enabling goes by position.
class WorkbenchToolbar : public QToolBar {
    Q_OBJECT

public:
    static constexpr int positions = 15;

    explicit WorkbenchToolbar(QWidget* parent = nullptr);

    // Counted from 1.
    QAction* at(int position) const { return buttons_.at(static_cast<std::size_t>(position)); }
    void apply(const Workbench& workbench);

signals:
    void buttonClick(const QString& key);

private:
    std::array<QAction*, positions + 1> buttons_{};
};

} // namespace qvnd::outline

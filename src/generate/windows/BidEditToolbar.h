#pragma once

#include <QToolBar>

#include <array>

namespace qvnd::generate {

// The toolbar of the plan edit window (TbarBidSet). Its positions count the separators; a click is
// told by the button's key, enabling goes by position.
class BidEditToolbar : public QToolBar {
    Q_OBJECT

public:
    static constexpr int positions = 9;
    static constexpr int generate = 2;
    static constexpr int openDocument = 4;

    explicit BidEditToolbar(QWidget* parent = nullptr);

    // Counted from 1.
    QAction* at(int position) const { return buttons_.at(static_cast<std::size_t>(position)); }

signals:
    void buttonClick(const QString& key);

private:
    std::array<QAction*, positions + 1> buttons_{};
};

} // namespace qvnd::generate

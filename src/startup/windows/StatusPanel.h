#pragma once

#include <QDate>
#include <QLabel>
#include <QString>

#include <array>

namespace qvnd::startup {

// The texts of the status bar's three panels: user, work folder, and the date of the start.
std::array<QString, 3> statusPanels(const QString& userName, const QString& gWorkPath,
                                    const QDate& today);

// A panel of the status bar. It takes the width that it is given; a text that is wider, as that
// with a path often is, loses its middle and stands whole in the tool tip.
class StatusPanel : public QLabel {
    Q_OBJECT

public:
    explicit StatusPanel(const QString& text, QWidget* parent = nullptr);

    void tell(const QString& text);
    // The text as it stands in the panel.
    QString shownText() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace qvnd::startup

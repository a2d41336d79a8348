#include "startup/windows/StatusPanel.h"

#include <QPainter>
#include <QStyle>

namespace qvnd::startup {

namespace {

constexpr int sideMargin = 6;

} // namespace

std::array<QString, 3> statusPanels(const QString& userName, const QString& gWorkPath,
                                    const QDate& today) {
    return {"当前用户： " + userName, "当前工作路径： " + gWorkPath,
            "今天是： " + today.toString(QStringLiteral("yyyy年MM月dd日"))};
}

StatusPanel::StatusPanel(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setContentsMargins(sideMargin, 0, sideMargin, 0);
}

void StatusPanel::tell(const QString& text) {
    setText(text);
    setToolTip(text);
}

QString StatusPanel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

void StatusPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                          isEnabled(), shownText(), foregroundRole());
}

} // namespace qvnd::startup

#include "outline/windows/SplitterBar.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace qvnd::outline {

namespace {

constexpr int keyStep = 16;
constexpr int gripLength = 28;

} // namespace

SplitterBar::SplitterBar(Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent), orientation_(orientation) {
    setCursor(orientation == Qt::Vertical ? Qt::SplitHCursor : Qt::SplitVCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

int SplitterBar::along(const QPoint& position) const {
    return orientation_ == Qt::Vertical ? position.x() : position.y();
}

int SplitterBar::step(int key) const {
    const bool upright = orientation_ == Qt::Vertical;
    if (key == (upright ? Qt::Key_Left : Qt::Key_Up)) {
        return -keyStep;
    }
    return key == (upright ? Qt::Key_Right : Qt::Key_Down) ? keyStep : 0;
}

void SplitterBar::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        pressed_ = true;
        pressedAt_ = along(event->position().toPoint());
        update();
    }
}

void SplitterBar::mouseMoveEvent(QMouseEvent* event) {
    if (pressed_) {
        emit dragged(along(event->position().toPoint()) - pressedAt_);
    }
}

void SplitterBar::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && pressed_) {
        pressed_ = false;
        update();
        emit dropped();
    }
}

void SplitterBar::keyPressEvent(QKeyEvent* event) {
    if (const int offset = step(event->key())) {
        emit dragged(offset);
        emit dropped();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void SplitterBar::enterEvent(QEnterEvent* event) {
    QWidget::enterEvent(event);
    update();
}

void SplitterBar::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    update();
}

void SplitterBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool strong = pressed_ || hasFocus();
    if (strong || underMouse()) {
        QColor glow = palette().color(QPalette::Highlight);
        glow.setAlphaF(strong ? 0.55F : 0.25F);
        painter.fillRect(rect(), glow);
    }
    QRectF grip(0, 0, 2, gripLength);
    if (orientation_ == Qt::Horizontal) {
        grip = grip.transposed();
    }
    grip.moveCenter(QRectF(rect()).center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Mid));
    painter.drawRoundedRect(grip, 1, 1);
}

} // namespace qvnd::outline

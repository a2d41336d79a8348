#pragma once

#include <QWidget>

namespace qvnd::outline {

// A bar between two panes that is dragged with the mouse or, while it has the focus, moved with
// the arrow keys. It moves nothing itself.
class SplitterBar : public QWidget {
    Q_OBJECT

public:
    // Qt::Vertical: an upright bar that moves left and right.
    explicit SplitterBar(Qt::Orientation orientation, QWidget* parent = nullptr);

signals:
    // The pointer's place in the bar's own coordinates, from where it was pressed.
    void dragged(int offset);
    void dropped();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    int along(const QPoint& position) const;
    int step(int key) const;

    Qt::Orientation orientation_;
    bool pressed_ = false;
    int pressedAt_ = 0;
};

} // namespace qvnd::outline

#pragma once

#include <QProxyStyle>

namespace qvnd::startup {

// Draws the title bar of a child window without its close button, which the toolkit's styles draw
// beside the system menu even where the window cannot be closed.
class ChildTitleStyle : public QProxyStyle {
    Q_OBJECT

public:
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
};

} // namespace qvnd::startup

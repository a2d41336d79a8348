#include "startup/windows/ChildTitleStyle.h"

#include <QStyleOptionTitleBar>

namespace qvnd::startup {

namespace {

const QStyleOptionTitleBar* titleBar(QStyle::ComplexControl control,
                                     const QStyleOptionComplex* option) {
    return control == QStyle::CC_TitleBar ? qstyleoption_cast<const QStyleOptionTitleBar*>(option)
                                          : nullptr;
}

} // namespace

void ChildTitleStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                         QPainter* painter, const QWidget* widget) const {
    if (const auto* bar = titleBar(control, option)) {
        QStyleOptionTitleBar without = *bar;
        without.subControls.setFlag(SC_TitleBarCloseButton, false);
        QProxyStyle::drawComplexControl(control, &without, painter, widget);
        return;
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

// The styles leave room for the close button where there is a system menu.
QRect ChildTitleStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                      SubControl part, const QWidget* widget) const {
    const auto* bar = titleBar(control, option);
    if (bar && part == SC_TitleBarCloseButton) {
        return {};
    }
    if (bar && part != SC_TitleBarSysMenu && part != SC_TitleBarLabel) {
        QStyleOptionTitleBar without = *bar;
        without.titleBarFlags.setFlag(Qt::WindowSystemMenuHint, false);
        return QProxyStyle::subControlRect(control, &without, part, widget);
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

} // namespace qvnd::startup

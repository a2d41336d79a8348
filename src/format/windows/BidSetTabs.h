#pragma once

class QWidget;

namespace qvnd::format {

// The tabs of the format dialog, their controls still empty.

QWidget* newCoverTab();        // "封面设置"
QWidget* newPlanTab();         // "方案设置": the four tabs below, and the library of settings
QWidget* newHeadingTab();      // "章节设置"
QWidget* newHeaderFooterTab(); // "页眉、页脚及目录"
QWidget* newPageSetupTab();    // "页面、正文设置"
QWidget* newOtherTab();        // "其  它"

} // namespace qvnd::format

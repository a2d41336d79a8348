#pragma once

#include "outline/windows/OutlineView.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace qvnd::test {

// F2 on the selected node of a tree whose window is in front. The editor, or null when none came.
inline QLineEdit* beginRenaming(outline::OutlineView& view) {
    view.window()->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view.window()));
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_F2);
    return view.findChild<QLineEdit*>();
}

} // namespace qvnd::test

#include "gui/support/WorkbenchWindow.h"

#include <QApplication>

namespace qvnd::test {
namespace {

// From the workbench into the desktop's word processor.
class WorkbenchOpening : public WorkbenchWindow {
protected:
    void pressCtrlEnter(outline::OutlineView& view) {
        QApplication::setActiveWindow(form.get());
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_Return, Qt::ControlModifier);
    }
    QString file(const QString& name) const { return world.folder.path("用户模板/" + name); }
};

TEST_F(WorkbenchOpening, ADoubleClickOnThePreviewOpensTheDocumentThatIsSeen) {
    open();
    doubleClick(trvCurrent(), "T.1.1");
    QTest::mouseDClick(pane, Qt::LeftButton);
    EXPECT_EQ(frame.opened, QStringList{file("T/T.1.1.doc")});
}

TEST_F(WorkbenchOpening, CtrlEnterOpensTheSelectedDocument) {
    open("T.2");
    pressCtrlEnter(trvCurrent());
    EXPECT_EQ(frame.opened, QStringList{file("T/T.2.doc")});
    EXPECT_TRUE(preview.shown.isEmpty());
}

TEST_F(WorkbenchOpening, CtrlEnterOnAFolderOpensNothing) {
    open("T.1");
    pressCtrlEnter(trvCurrent());
    EXPECT_TRUE(frame.opened.isEmpty());
}

TEST_F(WorkbenchOpening, CtrlEnterOpensADocumentOfAnotherPlanToo) {
    open();
    world.workbench.TrvTemplate_Us.Select(&world.workbench.TrvTemplate_Us.Item(QString("U.1")));
    pressCtrlEnter(trvUser());
    EXPECT_EQ(frame.opened, QStringList{file("U/U.1.doc")});
}

} // namespace
} // namespace qvnd::test

#include "outline/windows/EmptyPlanHint.h"

#include "gui/support/WorkbenchWindow.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>

namespace qvnd::test {
namespace {

class EmptyPlan : public WorkbenchWindow {
protected:
    outline::EmptyPlanHint& hint() { return *form->findChild<outline::EmptyPlanHint*>(); }
    QString title() { return form->findChild<QLabel*>("hintTitle")->text(); }
    void emptyTheInstallation() {
        for (const char* plan : {"T", "U"}) {
            QDir(world.folder.path("用户模板/" + QString(plan))).removeRecursively();
        }
    }
};

TEST_F(EmptyPlan, TheFirstStartSaysHowToBegin) {
    emptyTheInstallation();
    openAsItIs();
    EXPECT_TRUE(hint().isVisible());
    EXPECT_EQ(title(), "还没有施工方案");
}

TEST_F(EmptyPlan, WithPlansInTheLibraryItSaysHowToOpenOne) {
    openAsItIs();
    EXPECT_TRUE(hint().isVisible());
    EXPECT_EQ(title(), "没有打开的方案");
    EXPECT_TRUE(form->findChild<QLabel*>("hintText")->text().contains("用户方案"));
}

TEST_F(EmptyPlan, ItGoesWhenAPlanIsOpenedAndComesBackWhenThePlanIsDeleted) {
    openAsItIs();
    click(trvUser(), "T");
    EXPECT_FALSE(hint().isVisible());
    world.messages.otherwise = desktop::Answer::yes;
    click(trvCurrent(), "T");
    item("mnuDelete").trigger();
    EXPECT_TRUE(hint().isVisible());
}

TEST_F(EmptyPlan, ItsButtonsAreTheCommandsNewPlanAndGuide) {
    openAsItIs();
    int asked = 0;
    item("mnuNew").disconnect();
    QObject::connect(&item("mnuNew"), &QAction::triggered, [&] { ++asked; });
    QTest::mouseClick(form->findChild<QPushButton*>("hintNew"), Qt::LeftButton);
    EXPECT_EQ(asked, 1);
    QTest::mouseClick(form->findChild<QPushButton*>("hintGuide"), Qt::LeftButton);
    EXPECT_EQ(frame.asked, QStringList{"showHelpContents"});
}

TEST_F(EmptyPlan, TheTreeOfTheNewPlanHasTheKeyboardBehindItsButton) {
    openAsItIs();
    form->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.get()));
    item("mnuNew").disconnect();
    QObject::connect(&item("mnuNew"), &QAction::triggered, [&] {
        world.workbench.TrvCurrent.Add("N", "N", outline::image::root,
                                       outline::image::rootSelected);
        form->applyCommands();
    });
    QTest::mouseClick(form->findChild<QPushButton*>("hintNew"), Qt::LeftButton);
    EXPECT_FALSE(hint().isVisible());
    EXPECT_TRUE(trvCurrent().hasFocus());
}

TEST_F(EmptyPlan, ARightClickBesideTheButtonsStillOffersOnlyMnuNew) {
    openAsItIs();
    auto* menu = form->findChild<QMenu*>("mnuSys");
    for (QWidget* place : {static_cast<QWidget*>(&hint()),
                           static_cast<QWidget*>(form->findChild<QLabel*>("hintText"))}) {
        QTest::mouseClick(place, Qt::RightButton, {}, QPoint(4, 4));
        ASSERT_TRUE(menu->isVisible());
        int offered = 0;
        for (const QAction* entry : menu->actions()) {
            offered += entry->isVisible() ? 1 : 0;
        }
        EXPECT_EQ(offered, 1);
        menu->hide();
        QCoreApplication::processEvents();
    }
}

TEST_F(EmptyPlan, ItsTextsStandInFullInTheSmallestWindowAndInALargeOne) {
    openAsItIs();
    for (const QSize& size : {form->minimumSizeHint(), QSize(1300, 700)}) {
        form->resize(size);
        QCoreApplication::processEvents();
        for (const char* name : {"hintNew", "hintGuide", "hintTitle", "hintText"}) {
            const auto* part = form->findChild<QWidget*>(name);
            const int needed = part->hasHeightForWidth() ? part->heightForWidth(part->width())
                                                         : part->sizeHint().height();
            EXPECT_TRUE(hint().rect().contains(part->geometry())) << name;
            EXPECT_GE(part->height(), needed) << name;
        }
    }
}

} // namespace
} // namespace qvnd::test

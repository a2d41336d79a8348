#include "format/windows/CoverPreview.h"
#include "gui/support/DesktopWorld.h"
#include "gui/support/FormatWindow.h"
#include "gui/support/ModalWindow.h"
#include "support/Metafiles.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

namespace qvnd::test {
namespace {

using format::FormatDialog;
using format::frmBidSetWindow;

using BidSetWindow = FormatWindow;

// --- the window ----------------------------------------------------------------------------------

TEST_F(BidSetWindow, GivesEveryControlOfItsLogicAWidget) {
    open();
    ASSERT_GT(world.form().controls.all().size(), 70U);
    for (const format::Control* control : world.form().controls.all()) {
        EXPECT_TRUE(window->findChild<QWidget*>(control->name())) << qPrintable(control->name());
    }
}

TEST_F(BidSetWindow, TheTabKeyWalksAPageInReadingOrder) {
    open();
    const std::pair<const char*, QStringList> pages[] = {
        {"TxtPrjName",
         {"cmbPrjFont", "cmbPrjSize", "TxtOffName", "cmbOffFont", "cmbOffSize", "cmbDate",
          "cmbDateFont", "cmbDateSize", "cmbPic", "cmdBrowse", "TxtWidth", "TxtHeight", "lstcover",
          "cmdSaveCover", "lstSelf", "cmdSelfBld", "cmdDecide", "cmdCancel"}},
        {"cmbClass",
         {"cmbChapterFont", "cmbChapterSize", "Txtformer", "cmbMiddle", "Txtback", "opt", "chkHead",
          "chkMultLevel", "chkIsNot", "chkBlackLine", "lstSet", "cmdSaveSet", "cmdDecide"}},
        {"chkHeader",
         {"TxtHeaderCon", "cmbHeaderFont", "cmbHeaderSize", "opt", "chkfooter", "TxtFooterCon",
          "cmbFooterFont", "cmbFooterSize", "opt", "cmbPageClass", "cmbPageSign", "chkPageIsNot",
          "chkPageRight", "lstSet", "cmdSaveSet", "cmdDecide"}},
        {"txtPageupdis",
         {"TxtPageDownDis", "TxtPageLeftDis", "TxtPageRightdis", "Txtheader", "TxtFooter",
          "cmbTextFont", "cmbTextSize", "TxtBind", "opt", "lstSet"}},
        {"Option1(1)", {"cboBianHao", "txtInde", "lstSet", "cmdSaveSet", "cmdDecide", "cmdCancel"}},
    };
    click("Option1(1)"); // opens what it is for
    for (const auto& [first, rest] : pages) {
        reach(first).setFocus();
        for (const QString& next : rest) {
            do { // a date is walked part by part
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            } while (QApplication::focusWidget()->objectName() == "cmbDate" && next != "cmbDate");
            const QString reached = QApplication::focusWidget()->objectName();
            // Of the options of a frame, the one that the toolkit chooses.
            ASSERT_EQ(next == "opt" ? reached.first(3) : reached, next);
        }
    }
}

TEST_F(BidSetWindow, FitsOnASmallScreen) {
    open();
    EXPECT_LE(window->minimumSizeHint().width(), 1024 - 16);
    EXPECT_LE(window->minimumSizeHint().height(), 700 - 48) << "with a title bar above it";
}

TEST_F(BidSetWindow, AHugeTextInAPreviewDoesNotOutgrowTheScreen) {
    open();
    pick("cmbChapterSize", "72");
    type("Txtformer", QString(50, u'章'));
    pick("cmbPrjSize", "72");
    type("TxtPrjName", QString(50, u'楼'));
    EXPECT_LE(window->minimumSizeHint().height(), 700 - 48);
    EXPECT_LE(window->height(), 700 - 48);
}

// --- load, 确定, 取消 and the close box ----------------------------------------------------------

TEST_F(BidSetWindow, ShowsWhatTheTablesHold) {
    world.change("页面设置表", u"页边距上", 3.25);
    world.change("页眉页脚表", u"制表样式", QString("无"));
    world.change("封面表", u"图片宽度", 7);
    open();
    EXPECT_EQ(text("txtPageupdis"), "3.25");
    EXPECT_EQ(text("cmbPageSign"), "(无)");
    EXPECT_EQ(text("TxtWidth"), "7");
    EXPECT_EQ(text("cmbClass"), "1");
    EXPECT_EQ(text("cmbPrjFont"), "仿宋_GB2312");
    EXPECT_TRUE(isChecked("optSide"));
    EXPECT_FALSE(isChecked("optTop"));
}

TEST_F(BidSetWindow, WithoutAPrinterTellsSoOnceAndOffersTheFontsOfTheScreen) {
    world.fonts.withPrinter = false;
    open();
    EXPECT_EQ(told(),
              QStringList{"你没有安装打印机，以后在打印的时候可能对你所选的字体会不支持！"});
    EXPECT_EQ(world.messages.shown.back().icon, desktop::Icon::information);
    EXPECT_EQ(world.messages.shown.back().title, "提示");
    for (const char* name : {"cmbPrjFont", "cmbDateFont", "cmbChapterFont", "cmbOffFont",
                             "cmbHeaderFont", "cmbFooterFont", "cmbTextFont"}) {
        const auto& box = part<QComboBox>(name);
        ASSERT_EQ(box.count(), world.fonts.ofScreen.size()) << name;
        for (int i = 0; i < box.count(); ++i) {
            EXPECT_EQ(box.itemText(i), world.fonts.ofScreen[i]) << name;
        }
    }
}

TEST_F(BidSetWindow, AnUncheckedRightAlignmentComesBackWithTheNextLoad) {
    open();
    click("chkPageRight");
    EXPECT_EQ(saved("页眉页脚表.是否右对齐"), "否");
    click("cmdDecide");
    EXPECT_FALSE(window->isVisible());
    openAgain();
    EXPECT_TRUE(isChecked("chkPageRight"));
    EXPECT_EQ(saved("页眉页脚表.是否右对齐"), "是");
}

TEST_F(BidSetWindow, DecidingAtOnceClearsTheLibrariesChosenBefore) {
    FormatWorld::add(world.settings(), "是否设置表",
                     {{"是否封面", "是"},
                      {"封面名称", "旧"},
                      {"是否设置", "是"},
                      {"设置名称", "旧"},
                      {"是否定义", "是"}});
    open();
    click("cmdDecide");
    EXPECT_EQ(world.rowCount("是否设置表"), 1);
    for (const char* field : {"是否封面", "是否设置", "是否定义"}) {
        EXPECT_EQ(saved(QStringLiteral("是否设置表.") + field), "否") << field;
    }
}

TEST_F(BidSetWindow, CancellingTakesNothingBack) {
    open();
    pick("cmbChapterFont", "黑体");
    const auto before = tables();
    click("cmdCancel");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(saved("章节设置表 1.字体"), "黑体");
    EXPECT_EQ(changesSince(before), QStringList());
}

TEST_F(BidSetWindow, BlankLinesCountFromTheDecisionOn) {
    open();
    click("chkBlackLine");
    click("cmdCancel");
    EXPECT_FALSE(world.state.FormatSwitches.gBlankLineAroundTitle);
    window->show();
    EXPECT_TRUE(isChecked("chkBlackLine"));
    click("cmdDecide");
    EXPECT_TRUE(world.state.FormatSwitches.gBlankLineAroundTitle);
    openAgain();
    EXPECT_TRUE(isChecked("chkBlackLine"));
}

TEST_F(BidSetWindow, AnOpenPlanGivesItsNamesAtALoadAlone) {
    world.openPlan("滨江", "一建");
    open();
    EXPECT_EQ(text("TxtPrjName"), "滨江");
    EXPECT_EQ(saved("封面表.单位名称"), "一建");
    type("TxtPrjName", "别名");
    leave("TxtPrjName");
    click("cmdCancel");
    window->show();
    EXPECT_EQ(text("TxtPrjName"), "别名");
    openAgain();
    EXPECT_EQ(text("TxtPrjName"), "滨江");
}

struct BidSetDialog : BidSetWindow {
    FormatDialog dialog{world.state, world.dialog, world.messages};

    void show(const std::function<void(frmBidSetWindow&)>& act) {
        bool hasActed = false;
        onceModal<frmBidSetWindow>([&](frmBidSetWindow& shown) {
            hasActed = true;
            shown.activateWindow();
            ASSERT_TRUE(QTest::qWaitForWindowActive(&shown));
            act(shown);
        });
        dialog.show(nullptr);
        EXPECT_TRUE(hasActed);
    }
    static void press(frmBidSetWindow& shown, const char* button) {
        shown.findChild<QPushButton*>(QLatin1String(button))->click();
    }
};

TEST_F(BidSetDialog, ShowsWhatAnotherProgramHasChangedAndKeepsWhatStandsInNoTable) {
    show([](frmBidSetWindow& shown) { press(shown, "cmdCancel"); });
    world.form().childDocuments.Option1_1.click();
    world.form().childDocuments.txtInde.setText("7");
    world.state.FormatSwitches.gMultLevelOn = true;
    {
        jet::DBEngine theirs;
        const auto settings = theirs.Workspaces(0).OpenDatabase(world.settings().Name());
        const auto rows = settings->OpenRecordset("Select * from 页面设置表");
        rows->Edit();
        rows->Set(u"页边距上", 4.5);
        rows->Update();
    }
    show([](frmBidSetWindow& shown) { press(shown, "cmdCancel"); });
    EXPECT_EQ(world.form().page.txtPageupdis.text(), "4.5");
    EXPECT_TRUE(world.form().childDocuments.Option1_1.value());
    EXPECT_EQ(world.form().childDocuments.txtInde.text(), "7");
    EXPECT_TRUE(world.form().headings.chkMultLevel.checked());
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(world.messages.shown[0].text,
              "格式设置已被另一个程序或“撤消”改动，现在显示的是改动后的内容。"
              "要采用封面库、设置库或自定义页，请重新选取。");
    show([](frmBidSetWindow& shown) { press(shown, "cmdCancel"); });
    EXPECT_EQ(world.messages.shown.size(), 1U);
}

TEST_F(BidSetDialog, IsHiddenByItsButtonsAndKeepsWhatItHolds) {
    for (const char* button : {"cmdDecide", "cmdCancel"}) {
        show([&](frmBidSetWindow& shown) {
            shown.setProperty("marked", true);
            press(shown, button);
        });
        EXPECT_TRUE(world.dialog.isLoaded()) << button;
        EXPECT_TRUE(world.state.FormatSwitches.gBidSetLoaded) << button;
    }
    show([&](frmBidSetWindow& shown) {
        EXPECT_TRUE(shown.property("marked").toBool()) << "the same window as before";
        shown.close();
    });
}

TEST_F(BidSetDialog, IsUnloadedByItsCloseBox) {
    show([](frmBidSetWindow& shown) { shown.close(); });
    EXPECT_FALSE(world.dialog.isLoaded());
    EXPECT_FALSE(world.state.FormatSwitches.gBidSetLoaded);
}

TEST_F(BidSetDialog, EscapeHidesItAsCancelDoes) {
    show([](frmBidSetWindow& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
    EXPECT_TRUE(world.dialog.isLoaded());
}

TEST_F(BidSetDialog, ATextThatIsBeingTypedIsStoredWhateverEndsTheDialog) {
    const std::pair<const char*, std::function<void(frmBidSetWindow&)>> ends[] = {
        {"甲", [](auto& shown) { press(shown, "cmdDecide"); }},
        {"乙", [](auto& shown) { press(shown, "cmdCancel"); }},
        {"丙", [](auto& shown) { QTest::keyClick(shown.focusWidget(), Qt::Key_Return); }},
        {"丁", [](auto& shown) { QTest::keyClick(shown.focusWidget(), Qt::Key_Escape); }},
        {"戊", [](auto& shown) { shown.close(); }},
    };
    for (const auto& end : ends) {
        show([&](frmBidSetWindow& shown) {
            auto* box = shown.findChild<QLineEdit*>("TxtOffName");
            box->setFocus();
            box->clear();
            QInputMethodEvent typed;
            typed.setCommitString(end.first);
            QCoreApplication::sendEvent(box, &typed);
            end.second(shown);
        });
        EXPECT_EQ(saved("封面表.单位名称"), end.first);
    }
}

TEST_F(BidSetDialog, ADateThatIsBeingTypedIsStoredWhateverEndsTheDialog) {
    const std::pair<const char*, std::function<void(frmBidSetWindow&)>> ends[] = {
        {"2031", [](auto& shown) { press(shown, "cmdDecide"); }},
        {"2032", [](auto& shown) { QTest::keyClick(shown.focusWidget(), Qt::Key_Return); }},
        {"2033", [](auto& shown) { QTest::keyClick(shown.focusWidget(), Qt::Key_Escape); }},
        {"2034", [](auto& shown) { shown.close(); }},
    };
    for (const auto& end : ends) {
        show([&](frmBidSetWindow& shown) {
            auto* date = shown.findChild<QDateEdit*>("cmbDate");
            date->setFocus();
            date->setSelectedSection(QDateTimeEdit::YearSection);
            QTest::keyClicks(date, end.first);
            end.second(shown);
        });
        EXPECT_TRUE(saved("封面表.日期").startsWith(end.first)) << end.first;
    }
}

TEST_F(BidSetDialog, ARefusedLengthKeepsTheDialogOpenOnceItIsTold) {
    show([&](frmBidSetWindow& shown) {
        shown.findChild<QTabWidget*>("SSTab1")->setCurrentIndex(1);
        shown.findChild<QTabWidget*>("SSTab2")->setCurrentIndex(2);
        auto* box = shown.findChild<QLineEdit*>("txtPageupdis");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, "99");
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_TRUE(shown.isVisible());
        EXPECT_EQ(told(), QStringList{"对不起，该范围必须在-55.87-55.87之间！"});
        EXPECT_EQ(box->text(), "0");
        press(shown, "cmdDecide");
    });
    EXPECT_EQ(saved("页面设置表.页边距上"), "1.5");
}

TEST(BidSetProgram, ThePlanEditWindowOpensTheSettingsOfItsPlan) {
    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld program(messages, dialogs, word);
    ASSERT_TRUE(program.start());
    program.mainForm().showPlanEditor();
    QString project;
    onceModal<frmBidSetWindow>([&](frmBidSetWindow& shown) {
        project = shown.findChild<QLineEdit*>("TxtPrjName")->text();
        shown.close();
    });
    program.mainForm().findChild<QAction*>("mnuBidSet")->trigger();
    EXPECT_EQ(project, "甲");
}

// --- keys ----------------------------------------------------------------------------------------

TEST_F(BidSetWindow, NoComboTakesTyping) {
    world.change("封面表", u"日期", QDate::currentDate());
    open();
    for (const char* name :
         {"cmbChapterFont", "cmbChapterSize", "cmbClass", "cmbDateFont", "cmbDateSize",
          "cmbFooterFont", "cmbFooterSize", "cmbHeaderFont", "cmbHeaderSize", "cmbMiddle",
          "cmbOffFont", "cmbOffSize", "cmbPageClass", "cmbPageSign", "cmbPrjFont", "cmbPrjSize",
          "cmbTextFont", "cmbTextSize", "cmbPic"}) {
        const QString before = text(name);
        const auto stored = tables();
        for (const Qt::Key pressed : {Qt::Key_X, Qt::Key_1, Qt::Key_Up, Qt::Key_Down,
                                      Qt::Key_PageDown, Qt::Key_Space, Qt::Key_End}) {
            key(name, pressed);
        }
        key(name, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(text(name), before) << name;
        EXPECT_EQ(changesSince(stored), QStringList()) << name;
    }
}

TEST_F(BidSetWindow, ErasingLeavesTheOtherCombosAlone) {
    open();
    key("cmbChapterFont", Qt::Key_Backspace);
    key("cmbChapterFont", Qt::Key_Delete);
    EXPECT_EQ(text("cmbChapterFont"), "仿宋_GB2312");
}

TEST_F(BidSetWindow, TheWheelChangesNoValue) {
    open();
    click("Option1(1)");
    pick("cboBianHao", "1.");
    const auto stored = tables();
    const auto visible = shown();
    for (const char* name : {"cmbChapterSize", "cboBianHao", "cmbDate", "cmbPageSign"}) {
        QWidget& box = reach(name);
        box.setFocus();
        const QPointF place = box.rect().center();
        QWheelEvent turned(place, box.mapToGlobal(place), {}, {0, -120}, Qt::NoButton,
                           Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&box, &turned);
        EXPECT_EQ(changes(visible, shown()), QStringList()) << name;
        EXPECT_EQ(changesSince(stored), QStringList()) << name;
    }
}

TEST_F(BidSetWindow, TheOpenListIsWalkedByTheArrowKeys) {
    open();
    auto& box = static_cast<QComboBox&>(reach("cmbPageClass"));
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(box.view()->isVisible());
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    EXPECT_EQ(saved("页眉页脚表.显示级别"), "4");
}

TEST_F(BidSetWindow, ALetterCannotBeTypedIntoTheIndent) {
    open();
    click("Option1(1)");
    reach("txtInde").setFocus();
    QTest::keyClicks(&part("txtInde"), "a3-");
    EXPECT_EQ(text("txtInde"), "23");
}

TEST_F(BidSetWindow, APointAloneInTheIndentIsTold) {
    open();
    click("Option1(1)");
    type("txtInde", ".");
    EXPECT_EQ(told().size(), 1);
    EXPECT_TRUE(window->isVisible());
}

TEST(CoverPreview, ThePictureFillsItsPlaceWhateverItsSizeAndShowsTheFileAsItIs) {
    const TemporaryFolder folder;
    format::PictureView view;
    view.resize(40, 40);
    const auto show = [&](std::uint32_t colour) {
        const word::Bytes file = WmfBuilder()
                                     .pen(5, 0, 0)
                                     .select(0)
                                     .brush(colour)
                                     .select(1)
                                     .rectangle(0, 0, 10, 10)
                                     .placeable(0, 0, 10, 10, 96);
        folder.write("a.wmf", QByteArray(reinterpret_cast<const char*>(file.data()),
                                         static_cast<qsizetype>(file.size())));
        view.setPicture(folder.path("a.wmf"));
    };
    const auto corner = [&] {
        return view.grab().toImage().pixelColor(view.width() - 2, view.height() - 2);
    };
    show(rgb(255, 0, 0));
    EXPECT_EQ(corner(), QColor(Qt::red));
    view.resize(90, 60);
    EXPECT_EQ(corner(), QColor(Qt::red)) << "in another size";
    show(rgb(0, 0, 255));
    EXPECT_EQ(corner(), QColor(Qt::blue)) << "another file of the same name";
    view.setPicture({});
    EXPECT_EQ(corner(), QColor(Qt::white));
    EXPECT_FALSE(view.hasPicture());
}

class UndrawablePicture : public format::PictureView {
public:
    int tried = 0;

protected:
    QImage painted(QSize) override {
        ++tried;
        return {};
    }
};

TEST(CoverPreview, APictureThatCannotBeDrawnIsTriedOnceAFile) {
    const TemporaryFolder folder;
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(folder.path("a.bmp")));
    UndrawablePicture view;
    view.resize(40, 40);
    view.setPicture(folder.path("a.bmp"));
    ASSERT_TRUE(view.hasPicture());
    for (int paint = 0; paint < 3; ++paint) {
        EXPECT_EQ(view.grab().toImage().pixelColor(20, 20), QColor(Qt::white));
    }
    EXPECT_EQ(view.tried, 1);
    view.setPicture(folder.path("a.bmp"));
    view.grab();
    EXPECT_EQ(view.tried, 2) << "another file may have come under that name";
    view.setPicture({});
    view.grab();
    EXPECT_EQ(view.tried, 2);
}

} // namespace
} // namespace qvnd::test

#include "format/windows/frmMultLevelWindow.h"
#include "gui/support/FormatWindow.h"
#include "gui/support/ModalWindow.h"

#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

// The libraries of the format dialog, and the dialog of multi-level numbers.
namespace qvnd::test {
namespace {

using BidSetLibrary = FormatWindow;

TEST_F(BidSetLibrary, WithoutEntriesALibraryIsClosed) {
    open();
    for (const char* name :
         {"chkSet", "cmdDeleteSet", "chkCover", "cmdDeleteCover", "chkSelf", "cmdSelfDel"}) {
        EXPECT_FALSE(part(name).isEnabled()) << name;
    }
}

TEST_F(BidSetLibrary, ASavedSettingLibraryIsListedWithTheFirstSelected) {
    open();
    keepLibrary("cmdSaveSet", "甲");
    pick("cmbPageClass", "7");
    keepLibrary("cmdSaveSet", "乙");
    EXPECT_EQ(world.inputs.asked.back().prompt, "请输入标书设置库名称");
    EXPECT_EQ(world.inputs.asked.back().title, "添加库");
    EXPECT_EQ(part<QListWidget>("lstSet").count(), 2);
    EXPECT_EQ(text("lstSet"), "甲");
    EXPECT_TRUE(part("chkSet").isEnabled() && part("cmdDeleteSet").isEnabled());
    clickEntry("lstSet", 1);
    EXPECT_EQ(text("cmbPageClass"), "7");
    clickEntry("lstSet", 0);
    EXPECT_EQ(text("cmbPageClass"), "3");
    clickEntry("lstSet", 0);
    EXPECT_EQ(text("lstSet"), "甲");
}

TEST_F(BidSetLibrary, AClickOnTheSelectedLibraryShowsItAnew) {
    open();
    keepLibrary("cmdSaveSet", "甲");
    type("TxtHeaderCon", "别的");
    leave("TxtHeaderCon");
    clickEntry("lstSet", 0);
    EXPECT_EQ(text("TxtHeaderCon"), "页眉");
}

TEST_F(BidSetLibrary, ALibrarySelectedAtTheLoadIsNotShown) {
    open();
    keepLibrary("cmdSaveSet", "甲");
    pick("cmbPageClass", "7");
    openAgain();
    EXPECT_EQ(text("lstSet"), "甲");
    EXPECT_EQ(text("cmbPageClass"), "7");
}

TEST_F(BidSetLibrary, ANameInUseIsTheStoresOwnError) {
    open();
    keepLibrary("cmdSaveSet", "甲");
    keepLibrary("cmdSaveSet", "甲");
    EXPECT_EQ(told().size(), 1);
    EXPECT_EQ(part<QListWidget>("lstSet").count(), 1);
}

TEST_F(BidSetLibrary, TheLastSettingLibraryTakesItsBoxAlongCheckedAndClosed) {
    open();
    keepLibrary("cmdSaveSet", "甲");
    click("chkSet");
    click("cmdDeleteSet");
    EXPECT_TRUE(isChecked("chkSet"));
    EXPECT_FALSE(part("chkSet").isEnabled() || part("cmdDeleteSet").isEnabled());
    click("cmdDecide");
    EXPECT_EQ(saved("是否设置表.是否设置"), "是");
    EXPECT_EQ(saved("是否设置表.设置名称"), "");
}

TEST_F(BidSetLibrary, ASavedCoverLibraryIsSelectedAndShowsWhatWasSaved) {
    open();
    type("TxtPrjName", "甲工程");
    leave("TxtPrjName");
    keepLibrary("cmdSaveCover", "甲");
    type("TxtPrjName", "乙工程");
    leave("TxtPrjName");
    keepLibrary("cmdSaveCover", "乙");
    EXPECT_EQ(text("lstcover"), "乙");
    EXPECT_EQ(text("TxtPrjName"), "乙工程");
    clickEntry("lstcover", 0);
    EXPECT_EQ(text("TxtPrjName"), "甲工程");
    click("chkCover");
    click("cmdDecide");
    EXPECT_EQ(saved("是否设置表.封面名称"), "甲");
}

TEST_F(BidSetLibrary, ACoverLibraryAndACustomPageExcludeEachOther) {
    open();
    keepLibrary("cmdSaveCover", "甲");
    keepLibrary("cmdSelfBld", "扉页");
    click("chkCover");
    click("chkSelf");
    EXPECT_FALSE(isChecked("chkCover"));
    EXPECT_EQ(saved("当前自定义.路径"), "扉页");
    click("chkCover");
    EXPECT_FALSE(isChecked("chkSelf"));
}

TEST_F(BidSetLibrary, ACustomPageIsMadeAndOpenedWithANewName) {
    FormatWorld::add(world.settings(), "自定义表", {{"路径", "旧页"}});
    open();
    world.inputs.answers << "旧页";
    keepLibrary("cmdSelfBld", "新页");
    EXPECT_EQ(told(), QStringList{"对不起，[旧页]自定义已经存在！"});
    EXPECT_EQ(text("lstSelf"), "新页");
    ASSERT_EQ(world.shell.opened.size(), 1);
    EXPECT_TRUE(world.shell.opened.back().endsWith("新页.doc"));
}

TEST_F(BidSetLibrary, ADoubleClickOpensACustomPage) {
    FormatWorld::add(world.settings(), "自定义表", {{"路径", "旧页"}});
    open();
    auto& list = static_cast<QListWidget&>(reach("lstSelf"));
    const QPoint place = list.visualItemRect(list.item(0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
    ASSERT_EQ(world.shell.opened.size(), 1);
    EXPECT_TRUE(world.shell.opened.back().endsWith("旧页.doc"));
    key("lstSelf", Qt::Key_Return);
    EXPECT_EQ(world.shell.opened.size(), 2);
    EXPECT_TRUE(window->isVisible()) << "Enter is the list's own";
}

// --- multi-level numbers -------------------------------------------------------------------------

class FrmMultLevel : public FormatWindow {
protected:
    FormatSwitches& switches() { return world.state.FormatSwitches; }
    // Opens it from its button, as a user does.
    void openFromButton(const std::function<void(format::frmMultLevelWindow&)>& act) {
        if (!window) {
            open();
            click("chkMultLevel");
        }
        onceModal<format::frmMultLevelWindow>(act);
        part<QPushButton>("Command1").click();
    }
    static QAbstractButton& button(QWidget& window, const char* name) {
        return *window.findChild<QAbstractButton*>(QLatin1String(name));
    }
    static QLineEdit& box(QWidget& window, const char* name) {
        return *window.findChild<QLineEdit*>(QLatin1String(name));
    }
    static void typeInto(QLineEdit& box, const QString& text) {
        box.setFocus();
        box.selectAll();
        QInputMethodEvent typed;
        typed.setCommitString(text);
        QCoreApplication::sendEvent(&box, &typed);
    }
};

TEST_F(FrmMultLevel, TheNumberStandsInTheMiddleBetweenItsTexts) {
    openFromButton([&](auto& shown) {
        const auto* number = shown.template findChild<QLabel*>("Label1");
        const int left = box(shown, "Text1(0)").geometry().right();
        const int right = box(shown, "Text1(1)").geometry().left();
        EXPECT_TRUE(number->alignment() & Qt::AlignHCenter);
        EXPECT_NEAR(number->geometry().center().x(), (left + right) / 2.0, 2);
        shown.reject();
    });
}

TEST_F(FrmMultLevel, AlwaysOpensWithItsFirstTextsAndNoOption) {
    switches().gMultLevelMode = 2;
    switches().gMultLevelText = "卷篇";
    openFromButton([&](auto& shown) {
        EXPECT_EQ(shown.windowTitle(), "多级标题设置");
        for (const char* name : {"Option1(0)", "Option1(1)", "Option1(2)"}) {
            EXPECT_FALSE(button(shown, name).isChecked()) << name;
        }
        EXPECT_EQ(box(shown, "Text1(0)").text(), "第");
        EXPECT_EQ(box(shown, "Text1(1)").text(), "章");
        EXPECT_FALSE(box(shown, "Text1(0)").isEnabled() || box(shown, "Text1(1)").isEnabled());
        button(shown, "Command1(0)").click();
    });
    EXPECT_EQ(switches().gMultLevelMode, 2) << "no option, no change";
    EXPECT_EQ(switches().gMultLevelText, "卷篇");
}

TEST_F(FrmMultLevel, BearsTheCaptionsOfItsControls) {
    openFromButton([&](auto& shown) {
        const std::pair<const char*, const char*> captions[] = {
            {"Option1(0)", "沿用以前的标题前、后缀"},
            {"Option1(1)", "不沿用以前的标题前、后缀"},
            {"Option1(2)", "只第一级设为:"},
            {"Command1(0)", "确定"},
            {"Command1(1)", "取消"},
        };
        for (const auto& [name, caption] : captions) {
            EXPECT_EQ(button(shown, name).text(), caption) << name;
        }
        EXPECT_EQ(shown.template findChild<QLabel*>("Label1")->text(), "N");
        button(shown, "Command1(1)").click();
    });
}

TEST_F(FrmMultLevel, TheThirdOptionOpensTheTextsAndTheOthersCloseThem) {
    openFromButton([&](auto& shown) {
        button(shown, "Option1(2)").click();
        EXPECT_TRUE(box(shown, "Text1(0)").isEnabled() && box(shown, "Text1(1)").isEnabled());
        button(shown, "Option1(0)").click();
        EXPECT_FALSE(box(shown, "Text1(0)").isEnabled() || box(shown, "Text1(1)").isEnabled());
        button(shown, "Command1(0)").click();
    });
    EXPECT_EQ(switches().gMultLevelMode, 0);
    openFromButton([&](auto& shown) {
        button(shown, "Option1(1)").click();
        button(shown, "Command1(0)").click();
    });
    EXPECT_EQ(switches().gMultLevelMode, 1);
}

TEST_F(FrmMultLevel, CancellingKeepsTheModeAndHasTakenTheTextAlready) {
    openFromButton([&](auto& shown) { button(shown, "Command1(1)").click(); });
    EXPECT_EQ(switches().gMultLevelText, "");
    openFromButton([&](auto& shown) {
        button(shown, "Option1(2)").click();
        button(shown, "Command1(1)").click();
    });
    EXPECT_EQ(switches().gMultLevelMode, 0);
    EXPECT_EQ(switches().gMultLevelText, "第章");
}

TEST_F(FrmMultLevel, TwoLettersBeforeTheNumberLandAroundIt) {
    openFromButton([&](auto& shown) {
        button(shown, "Option1(2)").click();
        typeInto(box(shown, "Text1(0)"), "总第");
        button(shown, "Command1(0)").click();
    });
    EXPECT_EQ(switches().gMultLevelMode, 2);
    EXPECT_EQ(switches().gMultLevelText, "总第章");
}

} // namespace
} // namespace qvnd::test

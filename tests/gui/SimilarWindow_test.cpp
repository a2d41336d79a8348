#include "gui/support/ModalWindow.h"
#include "gui/support/PlanEditWindow.h"

#include "generate/windows/dlgLike.h"

#include <QLabel>
#include <QTreeWidget>

#include <stdexcept>

namespace qvnd::test {
namespace {

// dlgLike over the plan edit window; the word processor writes down what it is asked.
class SimilarWindow : public PlanEditWindow {
protected:
    SimilarWindow() {
        world.folder.makeFolder("Sys/标书模板/甲");
        OutlineWorld::makeTable(
            *world.state.gDbTemplate, "甲",
            {{"甲", "甲"}, {"甲.1", "施工部署", "是"}, {"甲.2", "施工部署", "是"}});
        world.registerName(*world.state.gDbTemplate, "甲");
        OutlineWorld::makeTable(*world.state.gDbTemplate, "乙",
                                {{"乙", "乙"}, {"乙.4", "施工部署", "是"}});
        world.registerName(*world.state.gDbTemplate, "乙");
    }

    using Act = std::function<void(generate::dlgLike&)>;
    void byMenu(const Act& act) {
        onceModal<generate::dlgLike>([&](generate::dlgLike& dialog) {
            act(dialog);
            dialog.findChild<QPushButton*>("cmdExit")->click();
        });
        choose("mnuBidLike");
    }
    static QTreeWidget& list(QWidget& dialog) {
        return *dialog.findChild<QTreeWidget*>("ListView1");
    }
    static QPushButton& button(QWidget& dialog, const QString& name) {
        return *dialog.findChild<QPushButton*>(name);
    }
    QStringList calls() const {
        QStringList lines;
        for (const std::string& line : world.log.lines) {
            lines << QString::fromStdString(line);
        }
        return lines;
    }
};

TEST_F(SimilarWindow, ListsTheLaterTemplateFirstWithTheFirstRowSelected) {
    open();
    byMenu([&](generate::dlgLike& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "打开类似文档");
        ASSERT_EQ(list(dialog).topLevelItemCount(), 3);
        EXPECT_EQ(list(dialog).topLevelItem(0)->text(0), "施工部署");
        EXPECT_EQ(list(dialog).topLevelItem(0)->text(1),
                  world.folder.path("Sys/标书模板/乙/乙.4.doc"));
        EXPECT_EQ(list(dialog).currentItem(), list(dialog).topLevelItem(0));
        EXPECT_TRUE(button(dialog, "cmdInsert").isEnabled());
        EXPECT_TRUE(button(dialog, "cmdOpen").isEnabled());
    });
}

TEST_F(SimilarWindow, MenuAndKeyOpenTheSameDialog) {
    open();
    int opened = 0;
    const auto count = [&](generate::dlgLike& dialog) {
        ++opened;
        dialog.reject();
    };
    onceModal<generate::dlgLike>(count);
    choose("mnuBidLike");
    onceModal<generate::dlgLike>(count);
    press("打开类似文档");
    EXPECT_EQ(opened, 2);
}

TEST_F(SimilarWindow, OnAFolderTheListIsEmptyAndTheButtonsStayAsDesigned) {
    open();
    click("T.1");
    byMenu([&](generate::dlgLike& dialog) {
        EXPECT_EQ(list(dialog).topLevelItemCount(), 0);
        EXPECT_TRUE(button(dialog, "cmdInsert").isEnabled());
        EXPECT_TRUE(button(dialog, "cmdOpen").isEnabled());
        button(dialog, "cmdOpen").click();
        EXPECT_EQ(messages(), QStringList{"没有文档，所以不能打开！"});
        EXPECT_EQ(world.messages.shown[0].title, "警告！");
        EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    });
}

TEST_F(SimilarWindow, WithoutRowsOfADocumentTheButtonsAreClosed) {
    open();
    click("T.1.1");
    byMenu([&](generate::dlgLike& dialog) {
        EXPECT_FALSE(button(dialog, "cmdInsert").isEnabled());
        EXPECT_FALSE(button(dialog, "cmdOpen").isEnabled());
    });
}

TEST_F(SimilarWindow, InsertingShowsTheDocumentInThePreview) {
    open();
    byMenu([&](generate::dlgLike& dialog) {
        list(dialog).setCurrentItem(list(dialog).topLevelItem(1));
        button(dialog, "cmdInsert").click();
    });
    EXPECT_TRUE(calls().contains("Selection.InsertFile Sys/标书模板/甲/甲.1.doc"))
        << calls().join("\n").toStdString();
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.2")});
    expectUsable();
}

TEST_F(SimilarWindow, ADoubleClickInTheListInserts) {
    open();
    byMenu([&](generate::dlgLike& dialog) {
        emit list(dialog).itemDoubleClicked(list(dialog).topLevelItem(0), 0);
    });
    EXPECT_TRUE(calls().contains("Selection.InsertFile Sys/标书模板/乙/乙.4.doc"));
}

TEST_F(SimilarWindow, InsertingIsRefusedWhileADocumentIsOpen) {
    open();
    openDocuments.open = true;
    byMenu([&](generate::dlgLike& dialog) { button(dialog, "cmdInsert").click(); });
    EXPECT_EQ(messages(), QStringList{"对不起，请先关闭Word文档！"});
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::information);
    EXPECT_EQ(world.messages.shown[0].title, QString());
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(SimilarWindow, AFailedInsertionIsTold) {
    open();
    world.log.failAt("Selection.InsertFile", error::fileNotFound, u"找不到文件");
    byMenu([&](generate::dlgLike& dialog) { button(dialog, "cmdInsert").click(); });
    EXPECT_EQ(messages(), QStringList{"找不到文件"});
    EXPECT_EQ(world.messages.shown[0].title, "提示");
    EXPECT_EQ(world.messages.shown[0].icon, desktop::Icon::exclamation);
    expectUsable();
}

TEST_F(SimilarWindow, WhatIsNoRunTimeErrorOfAnInsertionIsToldEachTimeAndTheDialogGoesOn) {
    open();
    for (int i = 0; i < 2; ++i) {
        world.log.at("ActiveDocument.Close", [] { throw std::logic_error("odd"); });
    }
    byMenu([&](generate::dlgLike& dialog) {
        for (int i = 0; i < 3; ++i) {
            button(dialog, "cmdInsert").click();
        }
    });
    EXPECT_EQ(messages(), QStringList(2, "程序内部出错，这一步没有完成。（odd）"));
    EXPECT_EQ(preview.shown, QStringList{fileOf("T.2")}) << "by the third";
    expectUsable();
}

TEST_F(SimilarWindow, AnInsertionIsSeenThoughThePaneWasOff) {
    open();
    doubleClick("T.1");
    click("T.2");
    byMenu([&](generate::dlgLike& dialog) { button(dialog, "cmdInsert").click(); });
    EXPECT_TRUE(control("OleEdit").isVisible());
}

TEST_F(SimilarWindow, TheButtonsBearTheirCaptions) {
    open();
    byMenu([&](generate::dlgLike& dialog) {
        EXPECT_EQ(button(dialog, "cmdInsert").text(), "插入文档");
        EXPECT_EQ(button(dialog, "cmdOpen").text(), "独立打开");
        EXPECT_EQ(button(dialog, "cmdExit").text(), "关  闭");
    });
}

TEST_F(SimilarWindow, OpeningAloneShowsTheRowAndStartsItsApplication) {
    open();
    byMenu([&](generate::dlgLike& dialog) { button(dialog, "cmdOpen").click(); });
    const QString file = world.folder.path("Sys/标书模板/乙/乙.4.doc");
    EXPECT_EQ(preview.shown, QStringList{file});
    EXPECT_EQ(shell.opened, QStringList{file});
}

TEST_F(SimilarWindow, WhatThePreviewRefusesIsOpenedAloneAllTheSame) {
    open();
    preview.failure = RunTimeError(error::documentNotShown, u"设有打开密码，请去掉密码后再试。");
    byMenu([&](generate::dlgLike& dialog) { button(dialog, "cmdOpen").click(); });
    EXPECT_EQ(shell.opened, QStringList{world.folder.path("Sys/标书模板/乙/乙.4.doc")});
    EXPECT_EQ(control("PicEdit").findChild<QLabel*>()->text(), "设有打开密码，请去掉密码后再试。");
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(SimilarWindow, BrowsingAppendsAFileAndSelectsIt) {
    open();
    world.dialogs.chosen = world.folder.path("别处/参考.v2.doc");
    byMenu([&](generate::dlgLike& dialog) {
        button(dialog, "cmdBrowse").click();
        ASSERT_EQ(list(dialog).topLevelItemCount(), 4);
        EXPECT_EQ(list(dialog).topLevelItem(3)->text(0), "参考");
        EXPECT_EQ(list(dialog).currentItem(), list(dialog).topLevelItem(3));
    });
    EXPECT_EQ(world.dialogs.asked[0].title, "打开文档");
    EXPECT_EQ(world.dialogs.asked[0].filter, "Word文档(*.doc)|*.doc");
}

TEST_F(SimilarWindow, ACancelledBrowseIsSilent) {
    open();
    byMenu([&](generate::dlgLike& dialog) {
        button(dialog, "cmdBrowse").click();
        EXPECT_EQ(list(dialog).topLevelItemCount(), 3);
    });
    EXPECT_TRUE(messages().isEmpty());
}

TEST_F(SimilarWindow, AnErrorOfTheLoadIsShownAndTheRowsBeforeItStand) {
    open();
    world.registerName(*world.state.gDbTemplate, "没有");
    byMenu([&](generate::dlgLike& dialog) {
        EXPECT_EQ(list(dialog).topLevelItemCount(), 3);
        EXPECT_EQ(messages().size(), 1);
    });
}

} // namespace
} // namespace qvnd::test

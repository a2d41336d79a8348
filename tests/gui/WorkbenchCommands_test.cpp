#include "gui/support/ModalWindow.h"
#include "gui/support/WorkbenchWindow.h"

#include "outline/OutlineTree.h"
#include "support/FakeLegacyReader.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

namespace qvnd::test {
namespace {

using Workbench = WorkbenchWindow;

TEST_F(Workbench, MenusBearTheStatedCaptions) {
    open();
    const std::vector<std::pair<const char*, const char*>> captions{
        {"mnuSys", "方案管理(&S)"},
        {"mnuNew", "新建方案"},
        {"mnuDelete", "删除当前方案"},
        {"mnuEdit", "方案编辑  (&E)"},
        {"mnuSysEdit", "方案编辑(&E)"},
        {"mnuEQFolder", "添加同级文件夹"},
        {"mnuLTFolder", "添加下级文件夹"},
        {"mnuAddDoc", "添加文档"},
        {"mnuEQDoc", "同级"},
        {"mnuLTDoc", "下级"},
        {"mnuPaste", "粘贴"},
        {"mnuBrowseDoc", "浏览文档"},
        {"mnuRename", "重命名"},
        {"mnuEditDelete", "删除"},
        {"mnuSaveTemplate", "存入方案模板"},
        {"mnuWin", "窗口(&W)"},
        {"mnuChongDie", "重叠"},
        {"mnuPingPu", "平铺"},
        {"mnuHelp", "帮助(&H)"},
        {"mnuContent", "内容   (&C)..."},
        {"mnuIndex", "索引   (&I)..."},
        {"mnuCopy", "复制"},
        {"mnuDelTemplate", "删除"},
        {"mnuBroTemplate", "浏览"}};
    for (const auto& [name, caption] : captions) {
        EXPECT_EQ(item(name).text(), QString(caption)) << name;
    }
    EXPECT_EQ(form->windowTitle(), "施工组织方案设计");
    EXPECT_EQ(form->findChild<QPushButton*>("cmdEdit")->text(), "施工方案编辑");
}

TEST_F(Workbench, TheFrameGetsTheMenusInTheirOrder) {
    open();
    QStringList names;
    for (const QMenu* menu : form->menus()) {
        names << menu->objectName();
    }
    EXPECT_EQ(names, (QStringList{"mnuSys", "mnuSysEdit", "mnuWin", "mnuHelp"}));
    QStringList items;
    for (const QAction* action : form->menus()[1]->actions()) {
        items << (action->menu() ? action->menu()->objectName() : action->objectName());
    }
    EXPECT_EQ(items, (QStringList{"mnuEQFolder", "mnuLTFolder", "mnuAddDoc", "mnuPaste",
                                  "mnuBrowseDoc", "mnuRename", "mnuEditDelete", "mnuSaveTemplate",
                                  "", "mnuUndo", "mnuRedo", "mnuHistory"}));
}

TEST_F(Workbench, TheTabsBearTheStatedTexts) {
    open();
    EXPECT_EQ(form->findChild<QTabWidget*>("TabCurrent")->tabText(0), "当前施工组织方案");
    auto* lower = form->findChild<QTabWidget*>("TabTemplate");
    EXPECT_EQ(lower->tabText(0), "施工方案模板");
    EXPECT_EQ(lower->tabText(1), "用户方案");
    EXPECT_TRUE(tree("TrvTemplate").isVisible());
    lower->setCurrentIndex(1);
    EXPECT_FALSE(tree("TrvTemplate").isVisible());
    EXPECT_TRUE(tree("TrvTemplate_Us").isVisible());
}

TEST_F(Workbench, TheToolbarCountsItsSeparators) {
    open();
    const QStringList tips{"添加同级文件夹",
                           "添加下级文件夹",
                           "",
                           "添加同级文档",
                           "添加下级文档",
                           "",
                           "删除",
                           "重命名",
                           "浏览文档",
                           "",
                           "复制",
                           "粘贴",
                           "",
                           "标书编辑",
                           "退出"};
    for (int position = 1; position <= 15; ++position) {
        const QString& tip = tips[position - 1];
        EXPECT_EQ(toolbar().at(position)->isSeparator(), tip.isEmpty()) << position;
        if (!tip.isEmpty()) {
            EXPECT_EQ(toolbar().at(position)->toolTip(), tip) << position;
            EXPECT_FALSE(toolbar().at(position)->icon().isNull()) << position;
        }
    }
    EXPECT_EQ(toolbar().actions().size(), 18) << "behind them a separator, 撤消 and 恢复";
}

TEST_F(Workbench, NewShowsTheDialogOfAPlan) {
    open();
    onceModal<QDialog>([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "新建方案");
        dialog.findChild<QLineEdit*>("TxtName")->setText("滨江");
        dialog.findChild<QPushButton*>("BtnOk")->click();
    });
    item("mnuNew").trigger();
    EXPECT_EQ(OutlineWorld::shown(world.workbench.TrvCurrent), QStringList{"滨江"});
    EXPECT_EQ(selected(), "滨江");
    EXPECT_TRUE(item("mnuLTFolder").isEnabled());
    EXPECT_TRUE(world.workbench.TrvTemplate_Us.find("滨江"));
}

TEST_F(Workbench, ANewPlanThatIsGivenUpLeavesTheSelectionWhereItIs) {
    open("T.1");
    onceModal<QDialog>([](QDialog& dialog) { dialog.reject(); });
    item("mnuNew").trigger();
    EXPECT_EQ(selected(), "T.1");
}

TEST_F(Workbench, FolderCommandsAskForANameAndSelectTheNewNode) {
    open("T.1");
    onceModal<QDialog>([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "添加同级文件夹");
        auto* text = dialog.findChild<QLineEdit*>("TxtAdd");
        EXPECT_EQ(dialog.focusWidget(), text);
        QTest::keyClicks(text, "ABC");
        QTest::keyClick(text, Qt::Key_Return);
    });
    item("mnuEQFolder").trigger();
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Text(), "ABC");
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Parent()->Key(), "T");

    click(trvCurrent(), "T.1");
    onceModal<QDialog>([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "添加下级文件夹");
        dialog.findChild<QLineEdit*>("TxtAdd")->setText("D");
        dialog.findChild<QPushButton*>("OKButton")->click();
    });
    toolbar().at(2)->trigger();
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Parent()->Key(), "T.1");
}

TEST_F(Workbench, ARefusedFolderNameLeavesTheDialogOpenWithItsText) {
    open("T.1");
    onceModal<QDialog>([this](QDialog& dialog) {
        auto* text = dialog.findChild<QLineEdit*>("TxtAdd");
        text->setText(" 名T.3 ");
        dialog.findChild<QPushButton*>("OKButton")->click();
        EXPECT_EQ(lastMessage(), "对不起，命名重复！");
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(text->text(), " 名T.3 ");
        dialog.findChild<QPushButton*>("CancelButton")->click();
    });
    toolbar().at(1)->trigger();
    EXPECT_EQ(world.keys("T").size(), 6);
}

TEST_F(Workbench, DocumentCommandsAskForAFile) {
    open("T.1.1");
    writeDocument(world.folder.path("新.doc"));
    world.dialogs.chosen = world.folder.path("新.doc");
    item("mnuEQDoc").trigger();
    EXPECT_EQ(world.dialogs.asked.back().filter, "Word 文档 (*.doc)|*.doc|RTF  格式 (*.rft)|*.rtf");
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Text(), "新");
    click(trvCurrent(), "T.3");
    item("mnuLTDoc").trigger();
    EXPECT_EQ(world.dialogs.asked.back().filter, "Word文档 (*.doc)|*.doc|RTF格式 (*.rtf)|*.rtf");
    EXPECT_EQ(world.workbench.TrvCurrent.SelectedItem()->Parent()->Key(), "T.3");
}

TEST_F(Workbench, TheToolbarsDocumentButtonsCallTheSameCommands) {
    open("T.1");
    toolbar().at(4)->trigger();
    EXPECT_TRUE(world.dialogs.asked.back().filter.startsWith("Word 文档"));
    toolbar().at(5)->trigger();
    EXPECT_TRUE(world.dialogs.asked.back().filter.startsWith("Word文档"));
    EXPECT_TRUE(world.messages.shown.empty());
}

TEST_F(Workbench, DeleteAsksFromMenuToolbarAndKeyboard) {
    open("T.2");
    item("mnuEditDelete").trigger();
    toolbar().at(7)->trigger();
    QTest::keyClick(&trvCurrent(), Qt::Key_Delete);
    ASSERT_EQ(world.messages.shown.size(), 3U);
    for (const auto& message : world.messages.shown) {
        EXPECT_EQ(message.text, "真的要删除[名T.2]吗？");
        EXPECT_EQ(message.buttons, desktop::Buttons::yesNo);
    }
    EXPECT_EQ(world.keys("T").size(), 6);
    world.messages.otherwise = desktop::Answer::yes;
    QTest::keyClick(&trvCurrent(), Qt::Key_Delete);
    EXPECT_EQ(world.keys("T"), (QStringList{"T", "T.1", "T.1.1", "T.3"}));
}

TEST_F(Workbench, DeletingTheOpenPlanAsksByItsName) {
    open("T");
    world.messages.otherwise = desktop::Answer::yes;
    item("mnuDelete").trigger();
    EXPECT_EQ(world.messages.shown.front().text, "确实要删除工程 [ T ]");
    EXPECT_EQ(world.workbench.TrvCurrent.Count(), 0);
}

TEST_F(Workbench, RenamingInPlaceChangesTheRowAndTheNode) {
    for (const char* way : {"menu", "toolbar", "F2"}) {
        SCOPED_TRACE(way);
        if (!form) {
            open("T.3");
        }
        if (QString(way) == "menu") {
            item("mnuRename").trigger();
        } else if (QString(way) == "toolbar") {
            toolbar().at(8)->trigger();
        } else {
            QTest::keyClick(&trvCurrent(), Qt::Key_F2);
        }
        auto* editor = trvCurrent().findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->setText(way);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3")).Text(), way);
        EXPECT_EQ(OutlineWorld::column(*world.state.gDbUser, "T", u"名称").back(), way);
    }
}

TEST_F(Workbench, AnEmptyNameIsRefusedAndTheOldOneStands) {
    open("T.3");
    item("mnuRename").trigger();
    auto* editor = trvCurrent().findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->clear();
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(lastMessage(), "对不起，名称不能为空");
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3")).Text(), "名T.3");
}

TEST_F(Workbench, F2OnTheRootDoesNothingAsItsItemIsOff) {
    open("T");
    QTest::keyClick(&trvCurrent(), Qt::Key_F2);
    EXPECT_EQ(trvCurrent().findChild<QLineEdit*>(), nullptr);
}

TEST_F(Workbench, TheToolbarRenamesTheRootNoMoreThanTheMenusDo) {
    open("T");
    toolbar().at(8)->trigger();
    EXPECT_EQ(trvCurrent().findChild<QLineEdit*>(), nullptr);
    EXPECT_EQ(frame.status, QStringList("现在不能用“重命名”：它在菜单中也是关闭的。"));
}

// The numbers of the buttons open some whose item is closed.
TEST_F(Workbench, AButtonRunsNoCommandWhoseItemIsClosed) {
    open("T");
    toolbar().at(4)->trigger();
    toolbar().at(9)->trigger();
    toolbar().at(12)->trigger();
    trvCurrent().expandAll();
    click(trvCurrent(), "T.2.1");
    toolbar().at(1)->trigger();
    EXPECT_TRUE(world.dialogs.asked.empty());
    EXPECT_TRUE(preview.shown.isEmpty());
    EXPECT_TRUE(world.messages.shown.empty());
    EXPECT_EQ(frame.status.size(), 4);
}

TEST_F(Workbench, TheDocumentOfTheFormerPlanGoesWhenAnotherPlanIsOpened) {
    open("T.2");
    item("mnuBrowseDoc").trigger();
    ASSERT_TRUE(preview.isUp);
    click(trvUser(), "U");
    EXPECT_EQ(world.workbench.TrvCurrent.Item(1).Key(), "U");
    EXPECT_FALSE(preview.isUp);
}

TEST_F(Workbench, BrowsingShowsTheDocument) {
    open("T.2");
    item("mnuBrowseDoc").trigger();
    toolbar().at(9)->trigger();
    EXPECT_EQ(preview.shown, QStringList(2, world.folder.path("用户模板/T/T.2.doc")));
    EXPECT_TRUE(pane->isVisible());
}

TEST_F(Workbench, ADoubleClickOrEnterShowsTheDocument) {
    open();
    doubleClick(trvCurrent(), "T.2");
    QTest::keyClick(&trvCurrent(), Qt::Key_Return);
    doubleClick(trvUser(), "U");
    EXPECT_EQ(preview.shown.size(), 2);
    trvUser().expandAll();
    doubleClick(trvUser(), "U.1");
    EXPECT_EQ(preview.shown.last(), world.folder.path("用户模板/U/U.1.doc"));
}

TEST_F(Workbench, EnterShowsTheDocumentInBothLibraryTreesToo) {
    open();
    trvTemplate().expandAll();
    click(trvTemplate(), "M.2");
    QTest::keyClick(&trvTemplate(), Qt::Key_Return);
    EXPECT_EQ(preview.shown, QStringList(world.folder.path("Sys/标书模板/M/M.2.doc")));
    trvUser().expandAll();
    click(trvUser(), "U.1");
    QTest::keyClick(&trvUser(), Qt::Key_Enter);
    EXPECT_EQ(preview.shown.size(), 2);
    EXPECT_EQ(preview.shown.last(), world.folder.path("用户模板/U/U.1.doc"));
}

TEST_F(Workbench, EveryButtonOfTheToolbarSaysWhatItDoes) {
    open();
    QStringList tips;
    for (const QAction* action : toolbar().actions()) {
        if (!action->isSeparator()) {
            tips << action->toolTip();
        }
    }
    EXPECT_EQ(tips, (QStringList{"添加同级文件夹", "添加下级文件夹", "添加同级文档", "添加下级文档",
                                 "删除", "重命名", "浏览文档", "复制", "粘贴", "标书编辑", "退出",
                                 "撤消", "恢复"}));
}

TEST_F(Workbench, ADocumentWhoseFileIsGoneLeavesTheTree) {
    open("T.2");
    QFile::remove(world.folder.path("用户模板/T/T.2.1.doc"));
    trvCurrent().expandAll();
    doubleClick(trvCurrent(), "T.2.1");
    EXPECT_TRUE(lastMessage().startsWith("找不到 [ ")) << lastMessage().toStdString();
    EXPECT_EQ(world.workbench.TrvCurrent.find("T.2.1"), nullptr);
}

TEST_F(Workbench, StoringTheOpenPlanListsItAmongTheTemplates) {
    open("T.3");
    item("mnuSaveTemplate").trigger();
    EXPECT_TRUE(world.workbench.TrvTemplate.find("T.2.1"));
}

TEST_F(Workbench, StoringSaysInTheStatusBarThatItIsDoneAndARefusalIsNotSaidSo) {
    open("T");
    item("mnuSaveTemplate").trigger();
    EXPECT_EQ(frame.status, QStringList("方案“T”已存入方案模板。"));
    item("mnuSaveTemplate").trigger();
    EXPECT_EQ(frame.status.size(), 1);
    EXPECT_TRUE(lastMessage().startsWith("标书模板中已存在"));
}

TEST_F(Workbench, CopyingAndOverwritingSaySoInTheStatusBarAsNothingOfThemIsSeen) {
    open("T.3");
    trvTemplate().expandAll();
    click(trvTemplate(), "M.2");
    item("mnuCopy").trigger();
    EXPECT_EQ(frame.status, QStringList("已复制“模板文”，可以粘贴到当前方案中。"));
    click(trvCurrent(), "T.3");
    item("mnuPaste").trigger();
    EXPECT_EQ(frame.status.size(), 1);
    world.messages.otherwise = desktop::Answer::yes;
    click(trvCurrent(), "T.3");
    item("mnuPaste").trigger();
    EXPECT_EQ(frame.status.back(), "已用模板的内容覆盖同名文档。");
}

TEST_F(Workbench, EditingLetsGoOfThePreviewFirst) {
    open("T.2");
    item("mnuBrowseDoc").trigger();
    item("mnuEdit").trigger();
    EXPECT_EQ(preview.hidden, 1);
    EXPECT_FALSE(pane->isVisible());
    form->findChild<QPushButton*>("cmdEdit")->click();
    toolbar().at(14)->trigger();
    EXPECT_EQ(frame.asked, QStringList(3, "showPlanEditor"));
}

TEST_F(Workbench, TheFrameIsAskedForWhatIsItsAffair) {
    open();
    for (const char* name :
         {"mnuChongDie", "mnuPingPu", "mnuContent", "mnuIndex", "mnuAbout", "mnuExit"}) {
        item(name).trigger();
    }
    form->findChild<QPushButton*>("cmdExit")->click();
    toolbar().at(15)->trigger();
    EXPECT_EQ(frame.asked,
              (QStringList{"arrangeCascade", "arrangeTile", "showHelpContents", "showHelpIndex",
                           "showAbout", "endAtOnce", "exit", "exit"}));
}

TEST_F(Workbench, WithoutAHelpFileAMessageSaysSo) {
    world.state.HelpFile.clear();
    open();
    for (const char* name : {"mnuContent", "mnuIndex"}) {
        item(name).trigger();
        EXPECT_EQ(lastMessage(), "无法显示帮助目录，该工程没有相关联的帮助。");
        EXPECT_EQ(world.messages.shown.back().title, "施工组织方案设计");
    }
    EXPECT_EQ(frame.asked, QStringList());
}

TEST_F(Workbench, ACopiedTemplateNodeIsPastedIntoTheSelectedOne) {
    open();
    trvTemplate().expandAll();
    click(trvTemplate(), "M.2");
    toolbar().at(11)->trigger();
    click(trvCurrent(), "T.3");
    ASSERT_TRUE(item("mnuPaste").isEnabled());
    item("mnuPaste").trigger();
    EXPECT_TRUE(world.workbench.TrvCurrent.find("T.3.1"));
    EXPECT_FALSE(toolbar().at(10)->isEnabled());
    click(trvCurrent(), "T.1");
    toolbar().at(12)->trigger();
    EXPECT_TRUE(world.workbench.TrvCurrent.find("T.1.2"));
    EXPECT_TRUE(QFile::exists(world.folder.path("用户模板/T/T.1.2.doc")));
}

TEST_F(Workbench, CopyAndPasteHaveTheirKeys) {
    open();
    trvTemplate().expandAll();
    click(trvTemplate(), "M.2");
    QApplication::setActiveWindow(form.get());
    trvTemplate().setFocus();
    QTest::keyClick(&trvTemplate(), Qt::Key_C, Qt::ControlModifier);
    click(trvCurrent(), "T.3");
    trvCurrent().setFocus();
    QTest::keyClick(&trvCurrent(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_TRUE(world.workbench.TrvCurrent.find("T.3.1"));
}

TEST_F(Workbench, ARightClickOnANodeSelectsItAndOffersTheEditMenu) {
    open("T");
    click(trvCurrent(), "T.3", Qt::RightButton);
    EXPECT_EQ(selected(), "T.3");
    auto* menu = form->findChild<QMenu*>("mnuSysEdit");
    EXPECT_TRUE(menu->isVisible());
    EXPECT_TRUE(item("mnuEQFolder").isEnabled());
    menu->close();
}

TEST_F(Workbench, ARightClickBesideAllNodesOffersNewAlone) {
    open("T");
    QTest::mouseClick(trvCurrent().viewport(), Qt::RightButton, {}, beside(trvCurrent()));
    auto* menu = form->findChild<QMenu*>("mnuSys");
    ASSERT_TRUE(menu->isVisible());
    QStringList offered;
    for (const QAction* action : menu->actions()) {
        if (action->isVisible()) {
            offered << action->objectName();
        }
    }
    EXPECT_EQ(offered, QStringList{"mnuNew"});
    menu->close();
    for (const QAction* action : menu->actions()) {
        EXPECT_TRUE(action->isVisible()) << action->objectName().toStdString();
    }
}

TEST_F(Workbench, ThePopUpOfATemplateOffersBrowsingForADocumentAlone) {
    open();
    trvTemplate().expandAll();
    auto* menu = form->findChild<QMenu*>("mnuDelBrowse");
    QTest::mousePress(trvTemplate().viewport(), Qt::RightButton, {}, rowOf(trvTemplate(), "M.2"));
    EXPECT_TRUE(menu->isVisible());
    EXPECT_TRUE(item("mnuBroTemplate").isVisible());
    menu->close();
    QTest::mousePress(trvTemplate().viewport(), Qt::RightButton, {}, rowOf(trvTemplate(), "M.1"));
    EXPECT_TRUE(menu->isVisible());
    EXPECT_FALSE(item("mnuBroTemplate").isVisible());
    menu->close();
}

TEST_F(Workbench, ATemplatesDocumentIsBrowsedByMenuAndDoubleClick) {
    open();
    trvTemplate().expandAll();
    click(trvTemplate(), "M.2");
    item("mnuBroTemplate").trigger();
    doubleClick(trvTemplate(), "M.2");
    EXPECT_EQ(preview.shown.size(), 2);
    EXPECT_TRUE(preview.shown.last().endsWith("M.2.doc"));
}

TEST_F(Workbench, DeletingATemplateAsksWithOkAndCancel) {
    open();
    trvTemplate().expandAll();
    click(trvTemplate(), "M.1");
    world.messages.otherwise = desktop::Answer::cancel;
    item("mnuDelTemplate").trigger();
    EXPECT_EQ(lastMessage(), "您真的要删除‘模板章’吗？");
    EXPECT_EQ(world.messages.shown.back().buttons, desktop::Buttons::okCancel);
    EXPECT_TRUE(world.workbench.TrvTemplate.find("M.1"));
}

TEST_F(Workbench, ATemplatesRootOpensTheDeletionAndAnyOtherNodeClosesIt) {
    open("T.2");
    trvTemplate().expandAll();
    click(trvTemplate(), "M");
    EXPECT_TRUE(item("mnuDelete").isEnabled());
    EXPECT_EQ(world.workbench.selectedTemplate, "M");
    click(trvTemplate(), "M.1");
    EXPECT_FALSE(item("mnuDelete").isEnabled());
    EXPECT_EQ(world.workbench.selectedTemplate, QString());
}

TEST_F(Workbench, AClickOnAPlansRootOpensThatPlan) {
    open("T.2");
    click(trvUser(), "U");
    EXPECT_EQ(OutlineWorld::shown(world.workbench.TrvCurrent), (QStringList{"U", "U.1"}));
    EXPECT_EQ(world.registered(*world.state.gDbUser, "当前表"), QStringList{"U"});
    EXPECT_TRUE(item("mnuLTFolder").isEnabled());
}

TEST_F(Workbench, AClickOnAnotherNodeOfAPlanLeavesTheOpenTree) {
    open("T.2");
    trvUser().expandAll();
    click(trvUser(), "U.1");
    EXPECT_EQ(world.workbench.TrvCurrent.Item(1).Key(), "T");
    EXPECT_EQ(world.registered(*world.state.gDbUser, "当前表"), QStringList{"U"});
}

TEST_F(Workbench, ThePlansInformationIsReachedFromTheTabOfTheOpenPlan) {
    open();
    auto* bar = form->findChild<QTabWidget*>("TabCurrent")->tabBar();
    ASSERT_EQ(bar->actions().size(), 1);
    world.state.gDbUser->Execute("SELECT * INTO TOrg FROM T");
    onceModal<QDialog>([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "工程信息");
        dialog.reject();
    });
    bar->actions().front()->trigger();
}

// What has come into the folders since the start

TEST_F(Workbench, FoldersThatCameSinceTheStartAreAdoptedFromTheTabsOfTheLibraries) {
    open();
    EXPECT_EQ(form->findChild<QTabWidget*>("TabTemplate")->tabBar()->actions().size(), 3);
    world.folder.makeFolder("用户模板/新");
    OutlineWorld::makeTable(*world.create(store::planDatabasePath(world.state, "新")), "新",
                            {{"新", "新"}, {"新.1", "章"}});
    world.folder.makeFolder("Sys/标书模板/样");
    OutlineWorld::makeTable(*world.create(world.folder.path("Sys/标书模板/样/样.mdb")), "样",
                            {{"样", "样"}});
    item("updatePlans").trigger();
    EXPECT_TRUE(OutlineWorld::shown(world.workbench.TrvTemplate_Us).contains("新.1"));
    EXPECT_FALSE(OutlineWorld::shown(world.workbench.TrvTemplate).contains("样"));
    item("updateTemplates").trigger();
    EXPECT_TRUE(OutlineWorld::shown(world.workbench.TrvTemplate).contains("样"));
    EXPECT_NE(form->cursor().shape(), Qt::WaitCursor);
}

TEST_F(Workbench, F5UpdatesTheLibraryThatHasTheKeyboard) {
    open();
    world.folder.makeFolder("用户模板/新");
    OutlineWorld::makeTable(*world.create(store::planDatabasePath(world.state, "新")), "新",
                            {{"新", "新"}});
    trvUser().setFocus();
    QTest::keyClick(&trvUser(), Qt::Key_F5);
    EXPECT_TRUE(OutlineWorld::shown(world.workbench.TrvTemplate_Us).contains("新"));
}

// A plan of an older version whose folder came since the start.
class OldPlan : public Workbench {
protected:
    OldPlan() {
        files["旧"] = {
            FakeLegacyReader::table("旧", {"名称", "Key"}, {{jet::Value("旧"), jet::Value("旧")}})};
        world.state.gLegacyReader = std::make_unique<FakeLegacyReader>(files);
    }

    std::map<QString, FakeLegacyReader::Tables> files;
};

TEST_F(OldPlan, IsConvertedAndListedWhenTheUserChoosesPlans) {
    open();
    world.folder.write("用户模板/旧/旧.mdb", "JET:旧");
    inputs.answers = {"1"};
    item("convertOldData").trigger();
    ASSERT_EQ(inputs.asked.size(), 1U);
    EXPECT_EQ(inputs.asked[0].title, "转换标书");
    EXPECT_TRUE(OutlineWorld::shown(world.workbench.TrvTemplate_Us).contains("旧"));
    EXPECT_EQ(world.folder.read("用户模板/旧/旧.mdb.jet"), "JET:旧");
    EXPECT_EQ(frame.status, QStringList("已转换 1 个，共 1 个。"));
}

TEST_F(OldPlan, StaysAsItIsWhenTheUserCancelsTheConversion) {
    open();
    world.folder.write("用户模板/旧/旧.mdb", "JET:旧");
    item("convertOldData").trigger();
    EXPECT_EQ(world.folder.read("用户模板/旧/旧.mdb"), "JET:旧");
    EXPECT_TRUE(frame.status.isEmpty());
}

TEST_F(OldPlan, TheConversionTellsThatThereIsNothingToConvert) {
    open();
    inputs.answers = {"2"};
    item("convertOldData").trigger();
    EXPECT_EQ(frame.status, QStringList("没有旧版本的方案或模板需要转换。"));
}

TEST_F(OldPlan, TheItemOfTheConversionWarnsOfIt) {
    open();
    EXPECT_EQ(item("convertOldData").toolTip(),
              "如果你还不知道此项的具体功能请先看帮助。\n因为意外的操作可能造成 2.2.1 "
              "版本以前生成的标书或模板不能在主界面窗口中显示出来！");
}

} // namespace
} // namespace qvnd::test

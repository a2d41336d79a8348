#include "gui/support/WorkbenchWindow.h"

#include <gtest/gtest.h>

#include <thread>

namespace qvnd::test {
namespace {

// The workbench while another program works on the same databases.
class OtherProgramsWindow : public WorkbenchWindow {
protected:
    void theyAdd(const OutlineRowText& row) {
        jet::DBEngine theirs;
        const auto db = theirs.Workspaces(0).OpenDatabase(world.state.gDbUser->Name());
        OutlineWorld::add(*db->OpenRecordset("Select * from T"), row);
    }
    QStringList shownKeys() const { return OutlineWorld::shown(world.workbench.TrvCurrent); }
};

TEST_F(OtherProgramsWindow, WhatTheyChangedIsShownBeforeTheNextCommandActs) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    theyAdd({"T.4", "名T.4"});
    item("mnuEditDelete").trigger();
    EXPECT_EQ(lastMessage(),
              "另一个程序改动了方案或模板，现在显示的是改动后的内容。请再操作一次。");
    EXPECT_EQ(shownKeys(), (QStringList{"T", "T.1", "T.1.1", "T.2", "T.2.1", "T.3", "T.4"}));
    item("mnuEditDelete").trigger();
    EXPECT_EQ(lastMessage(), "真的要删除[名T.1]吗？");
    EXPECT_EQ(shownKeys(), (QStringList{"T", "T.2", "T.2.1", "T.3", "T.4"}));
}

TEST_F(OtherProgramsWindow, WhatTheyChangedIsShownWhenTheUserComesBackFromThem) {
    open("T.1");
    theyAdd({"T.4", "名T.4"});
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(form.get(), &activation);
    EXPECT_TRUE(shownKeys().contains("T.4"));
    EXPECT_TRUE(world.messages.shown.empty());
}

TEST_F(OtherProgramsWindow, ACommandWaitsForItsTurn) {
    open("T.1");
    world.messages.otherwise = desktop::Answer::yes;
    world.state.Turn = std::make_unique<files::WorkSpaceTurn>(world.folder.path());
    files::WorkSpaceTurn theirs(world.folder.path());
    theirs.take();
    bool isGivenBack = false;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        isGivenBack = true;
        theirs.giveBack();
    });
    item("mnuEditDelete").trigger();
    other.join();
    EXPECT_TRUE(isGivenBack);
    EXPECT_FALSE(shownKeys().contains("T.1"));
    EXPECT_FALSE(world.state.Turn->isTaken());
}

} // namespace
} // namespace qvnd::test

#include "platform/error/RunTimeError.h"
#include "platform/files/DiskFileSystem.h"
#include "store/OutlineFolders.h"
#include "store/ProgramFiles.h"
#include "store/modMain.h"
#include "support/Errors.h"
#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

namespace qvnd::store {

namespace {

using test::errorNumberOf;

const QStringList leadingOut{"..",   "../外", "甲/乙", "甲\\..\\外", "/etc/外",
                             "C:外", "NUL",   "com1",  "甲\n"};

} // namespace

TEST(ProgramFiles, LieInTheirFolderBelowSys) {
    EXPECT_EQ(pictureFile("app/", "楼.jpg"), "app/sys/图片库/楼.jpg");
    EXPECT_EQ(customPageFile("app/", "声明"), "app/sys/自定义/声明.doc");
    EXPECT_EQ(programFile("app/", folder::cabinet, "文档柜.exe"), "app/sys/文档柜/文档柜.exe");
}

TEST(ProgramFiles, NoNameLeadsOutOfItsFolder) {
    for (const QString& name : leadingOut) {
        EXPECT_EQ(errorNumberOf([&] { pictureFile("app/", name); }), error::pathNotFound)
            << name.toStdString();
        if (name != "..") { // "...doc" is a file of the folder
            EXPECT_EQ(errorNumberOf([&] { customPageFile("app/", name); }), error::pathNotFound)
                << name.toStdString();
        }
    }
}

TEST(PlanFolders, APlansFolderLiesStraightInThePlansFolder) {
    modMain state;
    state.gUserTplPath = "用户模板/";
    for (const char* plan : {"甲", "甲 乙", "甲.乙", "😀", "*", "..甲"}) {
        EXPECT_EQ(planFolder(state, plan), QString("用户模板/") + plan);
    }
    for (const char* plan : {"", ".", "..", " ", " . ", "甲/乙", "../甲", "甲\\..", "/"}) {
        EXPECT_EQ(errorNumberOf([&] { planFolder(state, plan); }), error::pathNotFound) << plan;
    }
}

TEST(PlanFolders, AFolderIsThereMissingOrCannotBeNamed) {
    const test::TemporaryFolder folder;
    folder.makeFolder("用户模板/甲");
    folder.makeFolder("Sys/标书模板/乙");
    modMain state;
    state.gFso = std::make_unique<files::DiskFileSystem>();
    state.gUserTplPath = files::withSeparator(folder.path("用户模板"));
    state.gSysPath = files::withSeparator(folder.path("Sys"));
    EXPECT_EQ(stateOfPlanFolder(state, "甲"), FolderState::there);
    EXPECT_EQ(stateOfPlanFolder(state, "乙"), FolderState::missing);
    EXPECT_EQ(stateOfTemplateFolder(state, "乙"), FolderState::there);
    EXPECT_EQ(stateOfTemplateFolder(state, "甲"), FolderState::missing);
    for (const QString& name : leadingOut) {
        EXPECT_EQ(stateOfPlanFolder(state, name), FolderState::unnameable);
        EXPECT_EQ(stateOfTemplateFolder(state, name), FolderState::unnameable);
    }
}

} // namespace qvnd::store

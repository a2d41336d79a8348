#include "outline/PlanFolder.h"

#include "outline/QueryText.h"
#include "platform/error/RunTimeError.h"
#include "store/modMain.h"
#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::errorNumberOf;

namespace {

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

TEST(QueryTexts, AnApostropheInAValueIsAnErrorOfSyntax) {
    EXPECT_EQ(quoted("甲"), "'甲'");
    EXPECT_EQ(rowQuery("T", "T.1"), "Select * from T Where Key='T.1'");
    for (const char* text : {"甲'乙", "甲''乙", "a' or 'a'='a", "'"}) {
        EXPECT_EQ(errorNumberOf([&] { quoted(text); }), error::syntaxError);
    }
}

} // namespace

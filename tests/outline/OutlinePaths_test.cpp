#include "outline/OutlinePaths.h"

#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "platform/error/RunTimeError.h"
#include "store/OutlineFolders.h"
#include "store/modMain.h"
#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::errorNumberOf;

namespace {

TEST(OutlineKeyTexts, AreTheTablesNameAndNumbersBehindPoints) {
    for (const char* key : {"甲", "甲.1", "甲.4.12", "甲.007"}) {
        EXPECT_TRUE(isKeyOf("甲", key)) << key;
    }
    EXPECT_TRUE(isKeyOf("Sys", "sys.1"));
    for (const char* key : {"", "乙.1", "甲乙.1", "甲1", "甲.", "甲..1", "甲.1.", "甲.a", "甲.-1",
                            "甲. 1", "甲.１", "甲./1", "甲.*", "甲.1\\2"}) {
        EXPECT_FALSE(isKeyOf("甲", key)) << key;
    }
}

struct Leading : testing::Test {
    modMain state;
    Leading() {
        state.gUserTplPath = "用户模板/";
        state.gSysPath = "Sys/";
    }
};

TEST_F(Leading, ADocumentsFileIsInItsFolderUnderItsKey) {
    EXPECT_EQ(documentPath(state, "甲", "甲.4.12"), "用户模板/甲/甲.4.12.doc");
    EXPECT_EQ(templateDocumentPath(state, "甲", "甲.1"), "Sys/标书模板/甲/甲.1.doc");
    EXPECT_EQ(documentPath(state, "改名", "甲.1"), "用户模板/改名/甲.1.doc");
}

TEST_F(Leading, NoKeyLeadsOutOfTheFolder) {
    for (const char* key : {"", ".", "..", "../甲", "甲./../../外", "甲.1/../外", "甲.\\..\\外",
                            "/etc/外", "甲./etc", "C:外", "C:\\外", "甲.C:", "NUL", "甲.NUL", "con",
                            "Aux.1", "COM1.2", "甲.1:流", "甲.1\n"}) {
        EXPECT_EQ(errorNumberOf([&] { documentPath(state, "甲", key); }), error::pathNotFound)
            << key;
        EXPECT_EQ(errorNumberOf([&] { templateDocumentPath(state, "甲", key); }),
                  error::pathNotFound)
            << key;
    }
}

TEST_F(Leading, NoNameLeadsOutOfTheFolder) {
    for (const char* name : {"", "..", ". .", "../外", "甲/乙", "甲\\..\\外", "/etc",
                             "C:", "C:\\外", "nul", "CON", "COM1", "lpt9.文", "aux ", "甲\n"}) {
        EXPECT_EQ(errorNumberOf([&] { store::planFolder(state, name); }), error::pathNotFound)
            << name;
        EXPECT_EQ(errorNumberOf([&] { store::planDatabasePath(state, name); }),
                  error::pathNotFound);
        EXPECT_EQ(errorNumberOf([&] { documentPath(state, name, "甲.1"); }), error::pathNotFound);
        EXPECT_EQ(errorNumberOf([&] { store::templateFolder(state, name); }), error::pathNotFound);
        EXPECT_EQ(errorNumberOf([&] { store::templateDatabasePath(state, name); }),
                  error::pathNotFound);
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

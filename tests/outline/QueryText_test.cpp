#include "outline/QueryText.h"

#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using test::errorNumberOf;

namespace {

TEST(QueryText, ABareNameIsOneWordThatMeansNothingElse) {
    for (const char* name : {"甲", "_甲1", "1标段", "桥😀"}) {
        EXPECT_EQ(bareName(QString::fromUtf8(name)), QString::fromUtf8(name));
    }
    for (const char* name : {"", "甲 乙", "甲.乙", "[甲]", "甲'", "Select", "order", "FROM"}) {
        EXPECT_EQ(errorNumberOf([&] { (void)bareName(QString::fromUtf8(name)); }),
                  error::syntaxError)
            << name;
    }
}

TEST(QueryText, ANameInBracketsHasNoneOfItsOwn) {
    EXPECT_EQ(bracketedName("甲 order"), "[甲 order]");
    for (const char* name : {"甲[", "甲]"}) {
        EXPECT_EQ(errorNumberOf([&] { (void)bracketedName(QString::fromUtf8(name)); }),
                  error::nameInvalid)
            << name;
    }
}

TEST(QueryText, AQuotedTextHasNoApostrophe) {
    EXPECT_EQ(quoted("甲\"乙"), "'甲\"乙'");
    EXPECT_EQ(errorNumberOf([&] { (void)quoted("甲'"); }), error::syntaxError);
}

TEST(QueryText, TheRowsBelowAKeyBeginWithItAndWhatIsNoKeyStandsForItsOwnRow) {
    EXPECT_EQ(subtreeCondition("T", "T.1"), " where Key like 'T.1*'");
    EXPECT_EQ(subtreeCondition("T", "T[1"), " where Key='T[1'");
    EXPECT_EQ(rowQuery("T", "T.1"), "Select * from T Where Key='T.1'");
    EXPECT_EQ(deletionFrom(u"遍历表", "甲 乙"), "Delete * from 遍历表 where 名称='甲 乙'");
}

} // namespace

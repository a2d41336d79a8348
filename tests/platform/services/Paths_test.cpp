#include "platform/files/Paths.h"

#include "support/Files.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::files;

namespace {

// A file and links to it.
struct Links : testing::Test {
    test::TemporaryFolder folder;

    Links() { folder.write("甲/a.doc", "x"); }

    // The target as it stands in the link: from the folder of the link, if it is no whole path.
    void link(const QString& name, const QString& target) const {
        ASSERT_TRUE(QFile::link(target, folder.path(name)));
    }
    QString behind(const QString& name) const { return behindLinks(folder.path(name)); }
};

TEST_F(Links, WhatIsNoneIsItself) {
    EXPECT_EQ(behind("甲/a.doc"), folder.path("甲/a.doc"));
    EXPECT_EQ(behind("甲/none.doc"), folder.path("甲/none.doc"));
    EXPECT_EQ(behind("甲"), folder.path("甲"));
}

TEST_F(Links, LeadToTheirFileFromTheirOwnFolder) {
    link("甲/one", "a.doc");
    link("two", "甲/one");
    link("whole", folder.path("甲/a.doc"));
    for (const char* name : {"甲/one", "two", "whole"}) {
        EXPECT_EQ(behind(name), folder.path("甲/a.doc")) << name;
    }
}

TEST_F(Links, LeadToAFileThatIsNotThereYet) {
    link("new", "甲/new.doc");
    EXPECT_EQ(behind("new"), folder.path("甲/new.doc"));
}

TEST_F(Links, LoseTheDotsInTheirText) {
    folder.makeFolder("乙");
    link("乙/up", "../甲/./a.doc");
    EXPECT_EQ(behind("乙/up"), folder.path("甲/a.doc"));
}

TEST_F(Links, KeepTheDotsThatAFolderOfAnotherPlaceGivesAnotherMeaning) {
    folder.write("别处/a.doc", "y");
    folder.makeFolder("别处/深");
    link("甲/深", "../别处/深");
    link("up", "甲/深/../a.doc"); // of 别处, not of 甲
    EXPECT_EQ(QFileInfo(behind("up")).canonicalFilePath(), folder.path("别处/a.doc"));
}

TEST_F(Links, MayBeFortyInARowAndNoMore) {
    link("1", "甲/a.doc");
    for (int i = 2; i <= 41; ++i) {
        link(QString::number(i), QString::number(i - 1));
    }
    EXPECT_EQ(behind("40"), folder.path("甲/a.doc"));
    EXPECT_EQ(behind("41"), folder.path("1"));
}

TEST_F(Links, ThatLeadToEachOtherAreNotFollowedForEver) {
    link("one", "other");
    link("other", "one");
    EXPECT_EQ(behind("one"), folder.path("one"));
}

} // namespace

#include "platform/files/FolderNames.h"

#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "support/Files.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::files;

namespace {

struct HeldNames : testing::Test {
    test::TemporaryFolder folder;
    FolderNames names;
    DiskFileSystem gFso;

    QString resolved(const QString& name) { return names.resolved(folder.path(name)); }
};

TEST_F(HeldNames, ResolveAsWithoutHolding) {
    folder.write("sys/a.Doc", "x");
    folder.write("sys/B.doc", "x");
    folder.write("sys/b.doc", "x");
    folder.write("sys/AB.doc", "x");
    folder.write("sys/ab.doc", "x");
    folder.write("sys/aB.doc", "x");
    for (const char* name :
         {"sys/A.doc", "sys/a.Doc", "sys/B.doc", "sys/b.doc", "sys/neu.doc", "sys/Ab.doc",
          "sys/AB.DOC", "SYS/A.DOC", "SYS/neu.doc", "missing/a.doc", "sys/", "sys"}) {
        EXPECT_EQ(resolved(name), files::resolved(folder.path(name))) << name;
    }
    EXPECT_EQ(names.resolved("a"), files::resolved("a"));
    EXPECT_EQ(names.resolved(QString()), QString());
}

TEST_F(HeldNames, CompareLetterByLetterAsAPlainLookUpDoes) {
    for (const char* name : {"straße", "İ", "ΑΣ", "𐐀", "ﬁ", "工程é"}) {
        folder.write("x/" + QString(name), "x");
    }
    for (const char* name : {"STRASSE", "STRAßE", "straẞe", "i̇", "ας", "ασ", "𐐨", "fi", "工程É"}) {
        const QString path = "x/" + QString(name);
        EXPECT_EQ(resolved(path), files::resolved(folder.path(path))) << name;
    }
}

TEST_F(HeldNames, AFolderIsReadOnceOnly) {
    folder.write("x/first.doc", "x");
    EXPECT_EQ(resolved("x/FIRST.doc"), folder.path("x/first.doc"));
    folder.write("x/second.doc", "x");
    EXPECT_EQ(resolved("x/SECOND.doc"), folder.path("x/SECOND.doc"));
    names.forgetAll();
    EXPECT_EQ(resolved("x/SECOND.doc"), folder.path("x/second.doc"));
}

TEST_F(HeldNames, WhatWeAddAndRemoveIsKnown) {
    folder.write("x/first.doc", "x");
    EXPECT_EQ(resolved("x/FIRST.doc"), folder.path("x/first.doc"));
    names.add(folder.path("x/second.doc"));
    EXPECT_EQ(resolved("x/SECOND.doc"), folder.path("x/second.doc"));
    names.remove(folder.path("x/second.doc"));
    EXPECT_EQ(resolved("x/SECOND.doc"), folder.path("x/SECOND.doc"));
}

TEST_F(HeldNames, AFolderThatWasNotReadIsReadWholeThoughAFileWasAddedToIt) {
    folder.write("x/first.doc", "x");
    names.add(folder.path("x/second.doc"));
    names.remove(folder.path("y/second.doc"));
    EXPECT_EQ(resolved("x/FIRST.doc"), folder.path("x/first.doc"));
}

TEST_F(HeldNames, ANameInAnotherCaseIsFoundWhenTheOneBesideItHasGone) {
    folder.write("x/AB.doc", "one");
    folder.write("x/ab.doc", "other");
    const NameScope held(gFso);
    EXPECT_TRUE(gFso.FileExists(folder.path("x/Ab.doc")));
    gFso.DeleteFile(folder.path("x/AB.doc"));
    EXPECT_TRUE(gFso.FileExists(folder.path("x/Ab.doc")));
    gFso.DeleteFile(folder.path("x/ab.doc"));
    EXPECT_FALSE(gFso.FileExists(folder.path("x/Ab.doc")));
}

TEST_F(HeldNames, ACopyInARunOfCopiesMeetsTheFileOfAnotherCase) {
    folder.write("from.doc", "new");
    folder.write("x/A.doc", "old");
    const NameScope held(gFso);
    gFso.CopyFile(folder.path("from.doc"), folder.path("x/a.doc"), true);
    gFso.CopyFile(folder.path("from.doc"), folder.path("x/b.doc"), true);
    gFso.CopyFile(folder.path("from.doc"), folder.path("x/B.DOC"), true);
    QStringList there = namesOf(folder.path("x"));
    there.sort();
    EXPECT_EQ(there, QStringList({"A.doc", "b.doc"}));
    EXPECT_EQ(folder.read("x/A.doc"), "new");
}

TEST_F(HeldNames, ADeletedFileIsGoneInTheSameRun) {
    folder.write("x/A.doc", "old");
    const NameScope held(gFso);
    EXPECT_TRUE(gFso.FileExists(folder.path("x/a.DOC")));
    gFso.DeleteFile(folder.path("x/A.doc"));
    EXPECT_FALSE(gFso.FileExists(folder.path("x/a.DOC")));
    folder.write("from.doc", "new");
    gFso.CopyFile(folder.path("from.doc"), folder.path("x/a.DOC"), false);
    EXPECT_EQ(namesOf(folder.path("x")), QStringList("a.DOC"));
}

TEST_F(HeldNames, AFolderThatComesOrGoesEndsWhatIsHeld) {
    folder.write("x/A.doc", "old");
    const NameScope held(gFso);
    EXPECT_TRUE(gFso.FileExists(folder.path("x/a.doc")));
    gFso.MoveFolder(folder.path("x"), folder.path("y"));
    gFso.CreateFolder(folder.path("x"));
    EXPECT_FALSE(gFso.FileExists(folder.path("x/a.doc")));
    folder.write("x/B.doc", "new");
    gFso.DeleteFolder(folder.path("y"), false);
    EXPECT_TRUE(gFso.FileExists(folder.path("x/b.doc")));
}

TEST_F(HeldNames, EachFolderThatIsMadeMovedOrDeletedEndsWhatIsHeld) {
    folder.write("x/A.doc", "old");
    folder.makeFolder("y");
    const NameScope held(gFso);
    const auto isSeenBehind = [this](const QString& name, const auto& act) {
        EXPECT_TRUE(gFso.FileExists(folder.path("x/a.doc")));
        folder.write("x/" + name + ".doc", "new");
        act();
        return gFso.FileExists(folder.path("x/" + name.toLower() + ".doc"));
    };
    EXPECT_TRUE(isSeenBehind("B", [this] { gFso.CreateFolder(folder.path("neu")); }));
    EXPECT_TRUE(isSeenBehind("C", [this] { gFso.MoveFolder(folder.path("y"), folder.path("z")); }));
    EXPECT_TRUE(isSeenBehind("D", [this] { gFso.DeleteFolder(folder.path("z"), false); }));
}

TEST_F(HeldNames, WithoutHoldingEachLookUpReadsTheDisk) {
    folder.write("x/A.doc", "old");
    { const NameScope held(gFso); }
    EXPECT_TRUE(gFso.FileExists(folder.path("x/a.doc")));
    folder.write("x/B.doc", "new");
    EXPECT_TRUE(gFso.FileExists(folder.path("x/b.doc")));
}

TEST_F(HeldNames, AreHeldForAsLongAsTheLastOfSeveralScopes) {
    folder.write("x/A.doc", "old");
    const NameScope outer(gFso);
    {
        const NameScope inner(gFso);
        EXPECT_TRUE(gFso.FileExists(folder.path("x/a.doc")));
    }
    folder.write("x/B.doc", "new");
    EXPECT_FALSE(gFso.FileExists(folder.path("x/b.doc")));
}

} // namespace

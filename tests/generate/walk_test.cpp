#include "generate/GenerationWorld.h"

#include "generate/walk/WalkOutline.h"
#include "support/Text.h"

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::generate::WalkOutline;
using qvnd::outline::OutlineNode;

namespace {

class OutlineWalk : public GenerationWorld {
protected:
    void fourBelowEachOther() {
        folder(u"工程.1"_s, u"甲"_s);
        folder(u"工程.1.1"_s, u"乙"_s);
        folder(u"工程.1.1.1"_s, u"丙"_s);
        folder(u"工程.1.1.1.1"_s, u"丁"_s);
    }
    QStringList visited() {
        QStringList keys;
        WalkOutline(TrvEdit, TrvEdit.Item(1).Child(),
                    [&](const OutlineNode& node) { keys << node.Key(); });
        return keys;
    }
    // The numbers that the headings of the nodes show, in the order of the walk.
    std::string headings() {
        build();
        return linesOf("Selection.TypeText 第");
    }
};

} // namespace

TEST_F(OutlineWalk, NothingBelowTheRootVisitsNothing) { EXPECT_EQ(visited(), QStringList()); }

TEST_F(OutlineWalk, GoesDepthFirstInDisplayOrderWhateverTheNumbersOfTheKeys) {
    folder(u"工程.5"_s, u"甲"_s);
    folder(u"工程.2"_s, u"乙"_s);
    folder(u"工程.5.9"_s, u"丙"_s);
    folder(u"工程.5.1"_s, u"丁"_s);
    folder(u"工程.5.9.3"_s, u"戊"_s);
    EXPECT_EQ(visited(), QStringList({u"工程.5"_s, u"工程.5.9"_s, u"工程.5.9.3"_s, u"工程.5.1"_s,
                                      u"工程.2"_s}));
}

TEST_F(OutlineWalk, ClimbsOverAllAncestorsWithoutANextSibling) {
    fourBelowEachOther();
    folder(u"工程.2"_s, u"戊"_s);
    EXPECT_EQ(visited().last(), u"工程.2"_s);
    EXPECT_EQ(visited().size(), 5);
}

TEST_F(OutlineWalk, EndsAtTheRootWhenTheLastBranchIsDeep) {
    fourBelowEachOther();
    EXPECT_EQ(visited().size(), 4);
}

TEST_F(OutlineWalk, EndsAtTheNodeWhoseKeyIsTheRootsText) {
    fourBelowEachOther();
    folder(u"工程.2"_s, u"戊"_s);
    TrvEdit.setText(TrvEdit.Item(1), u"工程.1"_s);
    EXPECT_EQ(visited(),
              QStringList({u"工程.1"_s, u"工程.1.1"_s, u"工程.1.1.1"_s, u"工程.1.1.1.1"_s}));
}

TEST_F(OutlineWalk, TenThousandNodesBelowEachOtherCostNoStack) {
    QString parent = u"工程"_s;
    for (int i = 1; i <= 10000; ++i) {
        const QString key = u"工程.%1"_s.arg(i);
        TrvEdit.AddChild(parent, key, u"节"_s, 4, 3);
        parent = key;
    }
    EXPECT_EQ(visited().size(), 10000);
    EXPECT_EQ(visited().last(), u"工程.10000"_s);
}

TEST_F(OutlineWalk, NodesBesideEachOtherAreCountedOn) {
    folder(u"工程.1"_s, u"甲"_s);
    folder(u"工程.2"_s, u"乙"_s);
    EXPECT_EQ(headings(), "Selection.TypeText 第一章 甲\nSelection.TypeText 第二章 乙\n");
}

TEST_F(OutlineWalk, GoingBackUpClearsTheDeeperLevelsOnly) {
    folder(u"工程.1"_s, u"甲"_s);
    folder(u"工程.1.1"_s, u"乙"_s);
    folder(u"工程.1.1.1"_s, u"丙"_s);
    folder(u"工程.1.2"_s, u"丁"_s);
    folder(u"工程.1.2.1"_s, u"戊"_s);
    folder(u"工程.2"_s, u"己"_s);
    folder(u"工程.2.1"_s, u"庚"_s);
    EXPECT_EQ(headings(), "Selection.TypeText 第一章 甲\nSelection.TypeText 第一节 乙\n"
                          "Selection.TypeText 第一小节 丙\nSelection.TypeText 第二节 丁\n"
                          "Selection.TypeText 第一小节 戊\nSelection.TypeText 第二章 己\n"
                          "Selection.TypeText 第一节 庚\n");
}

TEST_F(OutlineWalk, APointInThePlansNameAddsALevelToEveryNode) {
    TrvEdit.Clear();
    TrvEdit.Add(u"工.程"_s, u"工.程"_s, 1, 2);
    TrvEdit.AddChild(u"工.程"_s, u"工.程.1"_s, u"甲"_s, 4, 3);
    EXPECT_EQ(headings(), "Selection.TypeText 第一节 甲\n");
}

TEST_F(OutlineWalk, MultiLevelNumbersJoinTheCounters) {
    switches.gMultLevelOn = true;
    switches.gMultLevelMode = 1;
    folder(u"工程.1"_s, u"甲"_s);
    folder(u"工程.2"_s, u"乙"_s);
    folder(u"工程.2.1"_s, u"丙"_s);
    build();
    EXPECT_TRUE(logged("Selection.TypeText 1 甲"));
    EXPECT_TRUE(logged("Selection.TypeText 2 乙"));
    EXPECT_TRUE(logged("Selection.TypeText 2.1 丙"));
}

#include "outline/TreeLoading.h"

#include "platform/error/RunTimeError.h"
#include "support/DragWorld.h"
#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;

namespace {

// Everything that a tree shows, a line for each node in the order of adding.
QStringList stateOf(const OutlineTree& tree) {
    QStringList lines;
    for (int i = 1; i <= tree.Count(); ++i) {
        const OutlineNode& node = tree.Item(i);
        lines << QStringLiteral("%1|%2|%3|%4|%5|%6|%7")
                     .arg(node.Key(), node.Text())
                     .arg(node.Image())
                     .arg(node.SelectedImage())
                     .arg(node.Expanded())
                     .arg(&node == tree.SelectedItem())
                     .arg(node.Parent() ? node.Parent()->Key() : QString());
    }
    return lines;
}

struct Refill : testing::Test, test::DragWorld {
    void addAndCompare(TreeRefill& refill, const OutlineRow& row, const QString& selectKey) {
        addRow(*state.gDbUser->OpenRecordset("Select * from T"), row);
        refill.refill("T", &row, selectKey);
        OutlineTree read("read");
        updateTree(*state.gDbUser->OpenRecordset("Select * from T order by id"), read, selectKey,
                   splash);
        EXPECT_EQ(stateOf(workbench.TrvCurrent), stateOf(read)) << row.key.toStdString();
    }
};

TEST_F(Refill, EveryRefillLeavesTheTreeAsAReadingOfTheTableWould) {
    plan({"T", "T.1", "T.1.1d", "T.2"});
    workbench.TrvCurrent.Expand(workbench.TrvCurrent.Item("T.1"));
    TreeRefill refill(*state.gDbUser, workbench.TrvCurrent, splash);
    addAndCompare(refill, {"T.3", "三", false}, {});
    addAndCompare(refill, {"T.3.1", "三一", true}, "T.3");
    addAndCompare(refill, {"T.3.2", "三二", true}, "T.3.2");
    workbench.TrvCurrent.Expand(workbench.TrvCurrent.Item("T"));
    addAndCompare(refill, {"T.4", "", true}, "T");
    addAndCompare(refill, {"T.9.1", "挂不上", true}, "T.3");
    addAndCompare(refill, {"T.5", "隐", false}, "T.3");
}

TEST_F(Refill, WithoutANewRowOnlyTheSelectionMoves) {
    plan({"T", "T.1", "T.2"});
    TreeRefill refill(*state.gDbUser, workbench.TrvCurrent, splash);
    refill.refill("T", nullptr, "T.1");
    refill.refill("T", nullptr, "T.2");
    EXPECT_EQ(selectedKey(), "T.2");
    EXPECT_FALSE(workbench.TrvCurrent.Item("T.1").Expanded());
}

TEST_F(Refill, ALaterRefillTakesTheSplashDownToo) {
    plan({"T", "T.1"});
    TreeRefill refill(*state.gDbUser, workbench.TrvCurrent, splash);
    refill.refill("T", nullptr, {});
    splash.up = true;
    refill.refill("T", nullptr, {});
    EXPECT_FALSE(splash.up);
}

TEST_F(Refill, ATableThatCannotBeReadLeavesTheTreeAsItWas) {
    plan({"T", "T.1"});
    TreeRefill refill(*state.gDbUser, workbench.TrvCurrent, splash);
    EXPECT_THROW(refill.refill("U", nullptr, {}), RunTimeError);
    EXPECT_EQ(workbench.TrvCurrent.Count(), 2);
}

TEST_F(Refill, WithoutATableFailsAsReadingOneDoesAndLeavesTheTree) {
    plan({"T", "T.1", "T.2"});
    TreeRefill refill(*state.gDbUser, workbench.TrvCurrent, splash);
    EXPECT_EQ(test::errorNumberOf([&] { refill.refill({}, nullptr, "T.1"); }), error::syntaxError);
    EXPECT_EQ(workbench.TrvCurrent.Count(), 3);
}

} // namespace

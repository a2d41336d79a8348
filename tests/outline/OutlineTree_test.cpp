#include "outline/OutlineTree.h"

#include "outline/OutlineTreeObserver.h"
#include "support/Errors.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QStringList>

using namespace qvnd;
using namespace qvnd::outline;
using test::errorNumberOf;

namespace {

struct OutlineTreeNodes : testing::Test {
    OutlineTree tree{"TrvCurrent"};

    void fill() {
        tree.Add("T", "根", image::root, image::rootSelected);
        tree.AddChild("T", "T.5", "甲", image::folder, image::folderSelected);
        tree.AddChild("T", "T.2", "乙", image::folder, image::folderSelected);
        tree.AddChild("T.5", "T.5.7", "丙", image::document, image::documentSelected);
    }
};

TEST_F(OutlineTreeNodes, ChildrenKeepTheOrderOfAdding) {
    fill();
    OutlineNode& root = tree.Item("T");
    ASSERT_EQ(root.Children(), 2);
    EXPECT_EQ(root.Child()->Key(), "T.5");
    EXPECT_EQ(tree.Next(*root.Child())->Key(), "T.2");
    EXPECT_EQ(tree.Next(*tree.Next(*root.Child())), nullptr);
    EXPECT_EQ(root.Parent(), nullptr);
    EXPECT_EQ(tree.Item("T.5.7").Parent()->Key(), "T.5");
    EXPECT_EQ(tree.Item("T.5.7").Image(), image::document);
    EXPECT_EQ(tree.Item("T.5.7").SelectedImage(), image::documentSelected);
}

TEST_F(OutlineTreeNodes, PlacesAreCountedFromOneInTheOrderOfAdding) {
    fill();
    EXPECT_EQ(tree.Item(1).Key(), "T");
    EXPECT_EQ(tree.Item(4).Key(), "T.5.7");
    EXPECT_EQ(tree.Item("T.2").Index(), 3);
    EXPECT_EQ(errorNumberOf([&] { tree.Item(0); }), error::elementNotFound);
    EXPECT_EQ(errorNumberOf([&] { tree.Item(5); }), error::elementNotFound);
}

TEST_F(OutlineTreeNodes, SeveralOutlinesStandOneAfterAnother) {
    fill();
    tree.Add("U", "另一", image::root, image::rootSelected);
    ASSERT_EQ(tree.topLevel().size(), 2U);
    EXPECT_EQ(tree.Next(tree.Item("T"))->Key(), "U");
}

TEST_F(OutlineTreeNodes, AKeyIsUniqueInTheTree) {
    fill();
    EXPECT_EQ(errorNumberOf([&] { tree.AddChild("T.2", "T.5.7", "", 4, 3); }), error::keyNotUnique);
    EXPECT_EQ(errorNumberOf([&] { tree.Add("T", "", 1, 2); }), error::keyNotUnique);
    EXPECT_EQ(tree.Count(), 4);
}

TEST_F(OutlineTreeNodes, AKeyOfDigitsAloneIsRefused) {
    EXPECT_EQ(errorNumberOf([&] { tree.Add("2024", "2024", 1, 2); }), error::keyInvalid);
    EXPECT_EQ(errorNumberOf([&] { tree.Add("0", "0", 1, 2); }), error::keyInvalid);
    EXPECT_EQ(errorNumberOf([&] { tree.Add("9", "9", 1, 2); }), error::keyInvalid);
    for (const char* key : {"2024年", "20-24", "2:4", "２０"}) {
        EXPECT_EQ(errorNumberOf([&] { tree.Add(key, key, 1, 2); }), std::nullopt) << key;
    }
    EXPECT_EQ(tree.Count(), 4);
}

TEST_F(OutlineTreeNodes, AMissingParentIsAnElementNotFound) {
    fill();
    EXPECT_EQ(errorNumberOf([&] { tree.AddChild("T.9", "T.9.1", "", 4, 3); }),
              error::elementNotFound);
    EXPECT_EQ(tree.find("T.9"), nullptr);
}

TEST_F(OutlineTreeNodes, AnEmptyKeyIsNoKey) {
    tree.Add("", "一", 1, 2);
    tree.Add("", "二", 1, 2);
    EXPECT_EQ(tree.Count(), 2);
    EXPECT_EQ(errorNumberOf([&] { tree.Item(QString()); }), error::elementNotFound);
}

TEST_F(OutlineTreeNodes, RemovingTakesTheChildrenAlongAndClosesTheGap) {
    fill();
    tree.Remove("T.5");
    EXPECT_EQ(tree.Count(), 2);
    EXPECT_EQ(tree.find("T.5.7"), nullptr);
    EXPECT_EQ(tree.Item("T.2").Index(), 2);
    EXPECT_EQ(tree.Item("T.2").row(), 0);
    EXPECT_EQ(errorNumberOf([&] { tree.Remove("T.5"); }), error::elementNotFound);
}

TEST_F(OutlineTreeNodes, RemovingTheFirstOutlineCountsTheNextFromOne) {
    fill();
    tree.Add("U", "另一", image::root, image::rootSelected);
    tree.AddChild("U", "U.1", "丁", image::document, image::documentSelected);
    tree.Remove("T");
    EXPECT_EQ(tree.Item("U").Index(), 1);
    EXPECT_EQ(tree.Item("U.1").Index(), 2);
}

TEST_F(OutlineTreeNodes, RemovingDropsASelectionWithin) {
    fill();
    tree.Select(&tree.Item("T.5.7"));
    tree.Remove("T.2");
    EXPECT_EQ(tree.SelectedItem()->Key(), "T.5.7");
    tree.Remove("T.5");
    EXPECT_EQ(tree.SelectedItem(), nullptr);
}

TEST_F(OutlineTreeNodes, ClearLeavesNothing) {
    fill();
    tree.Select(&tree.Item("T"));
    tree.Clear();
    EXPECT_EQ(tree.Count(), 0);
    EXPECT_EQ(tree.SelectedItem(), nullptr);
    EXPECT_TRUE(tree.topLevel().empty());
}

class Listener : public OutlineTreeObserver {
public:
    void aboutToAdd(const OutlineNode* parent, int row) override {
        heard << QString("add %1 %2").arg(parent ? parent->Key() : "-").arg(row);
    }
    void added(const OutlineNode& node) override { heard << "added " + node.Key(); }
    void aboutToRemove(const OutlineNode& node) override { heard << "remove " + node.Key(); }
    void removed() override { heard << "removed"; }
    void aboutToClear() override { heard << "clear"; }
    void cleared() override { heard << "cleared"; }
    void textChanged(const OutlineNode& node) override { heard << "text " + node.Text(); }
    void expandedChanged(const OutlineNode& node) override { heard << "expand " + node.Key(); }
    void selectionChanged(const OutlineNode* node) override {
        heard << "select " + (node ? node->Key() : "-");
    }
    QStringList heard;
};

TEST_F(OutlineTreeNodes, AnObserverHearsOfEachChangeBeforeAndAfter) {
    fill();
    Listener listener;
    tree.addObserver(&listener);
    tree.AddChild("T.5", "T.5.8", "丁", image::document, image::documentSelected);
    tree.Select(&tree.Item("T.5"));
    tree.Expand(tree.Item("T.5"));
    tree.Expand(tree.Item("T.5"));
    tree.setText(tree.Item("T.2"), "新");
    tree.Remove("T.5");
    tree.Clear();
    EXPECT_EQ(listener.heard,
              QStringList({"add T.5 1", "added T.5.8", "select T.5", "expand T.5", "text 新",
                           "select -", "remove T.5", "removed", "clear", "cleared"}));
    tree.removeObserver(&listener);
    tree.Add("U", "", 1, 2);
    EXPECT_EQ(listener.heard.size(), 10);
}

TEST_F(OutlineTreeNodes, AnObserverThatIsAddedTwiceHearsOnce) {
    fill();
    Listener listener;
    tree.addObserver(&listener);
    tree.addObserver(&listener);
    tree.setText(tree.Item("T.2"), "新");
    EXPECT_EQ(listener.heard, QStringList("text 新"));
    tree.removeObserver(&listener);
}

TEST_F(OutlineTreeNodes, CollapseAllPassesOverWhatWasRemoved) {
    fill();
    tree.Expand(tree.Item("T.5"));
    tree.Remove("T.5");
    Listener listener;
    tree.addObserver(&listener);
    tree.CollapseAll();
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(OutlineTreeNodes, CollapseAllCollapsesWhatIsExpandedAndTellsNothingOfTheRest) {
    fill();
    tree.Expand(tree.Item("T.5"));
    tree.Expand(tree.Item("T"));
    tree.Expand(tree.Item("T.2"));
    tree.Expand(tree.Item("T.2"), false);
    Listener listener;
    tree.addObserver(&listener);
    tree.CollapseAll();
    EXPECT_EQ(listener.heard, QStringList({"expand T", "expand T.5"}));
    EXPECT_FALSE(tree.Item("T").Expanded());
    EXPECT_FALSE(tree.Item("T.5").Expanded());
    tree.CollapseAll();
    EXPECT_EQ(listener.heard.size(), 2);
    tree.removeObserver(&listener);
}

TEST_F(OutlineTreeNodes, CollapseAllForgetsNodesThatAreGone) {
    fill();
    tree.Expand(tree.Item("T.5"));
    tree.Remove("T.5");
    tree.CollapseAll();
    tree.Expand(tree.Item("T"));
    tree.Clear();
    tree.CollapseAll();
    EXPECT_EQ(tree.Count(), 0);
}

TEST(OutlineTreeNeighbours, AreTheNextSiblingThePreviousOneOrTheParent) {
    OutlineTree tree("TrvCurrent");
    tree.Add("T", "T", image::root, image::rootSelected);
    for (const char* key : {"T.1", "T.2"}) {
        tree.AddChild("T", key, key, image::folder, image::folderSelected);
    }
    const auto neighbour = [&](const QString& key) { return neighbourOf(tree, tree.Item(key)); };
    EXPECT_EQ(neighbour("T.1"), tree.find("T.2"));
    EXPECT_EQ(neighbour("T.2"), tree.find("T.1"));
    tree.Remove("T.1");
    EXPECT_EQ(neighbour("T.2"), tree.find("T"));
    EXPECT_EQ(neighbour("T"), nullptr);
}

TEST(OutlineTreeErrors, TellTheUserWhatIsMissing) {
    OutlineTree tree("TrvCurrent");
    OutlineNode& root = tree.Add("T", "名", image::root, image::rootSelected);
    const auto descriptionOf = [](const auto& action) {
        try {
            action();
        } catch (const qvnd::RunTimeError& failure) {
            return QString::fromStdU16String(failure.description());
        }
        return QString();
    };
    EXPECT_EQ(descriptionOf([&] { tree.Item(QString("T.7")); }), "编号为“T.7”的节点已不存在");
    EXPECT_EQ(descriptionOf([&] { tree.Item("T.7", "桩基"); }), "节点“桩基”（T.7）已不存在");
    EXPECT_EQ(descriptionOf([&] { tree.Item("T.7", ""); }), "编号为“T.7”的节点已不存在");
    EXPECT_EQ(&tree.Item("T", "桩基"), &root);
    EXPECT_EQ(descriptionOf([&] { tree.Selected(); }), "没有选中节点，请先选中一个节点。");
    EXPECT_EQ(descriptionOf([&] { parentOf(root); }), "“名”是根节点，没有同级，请添加到下级。");
}

} // namespace

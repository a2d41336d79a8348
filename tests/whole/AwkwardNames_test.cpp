#include "support/Planner.h"
#include "support/Text.h"
#include "whole/Bystanders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>

using namespace qvnd;
using namespace qvnd::test;
using outline::AddMode;

namespace {

// What a name may do: the parts of the rules that tell names apart.
enum class Use {
    all,     // letters, digits and what lies beyond ASCII: every command
    bracket, // a table can bear it, but commands that name it bare refuse it
    old,     // the same, but no new plan may bear it: older installations let it through
    none,    // no plan of that name comes about
};

struct AwkwardName {
    const char* label;
    QString name;
    Use use;
};

std::vector<AwkwardName> awkwardNames() {
    return {
        {"Chinese", "滨江工程", Use::all},
        {"LettersAndDigits", "1号Plan", Use::all},
        {"Emoji", "😀方案👷", Use::all},
        {"RightToLeft", "خطةالبناء", Use::all},
        {"RightToLeftMark", QString(QChar(0x202E)) + "תכנית", Use::all},
        {"SixtyFourCharacters", QString(61, u'长'), Use::all},
        {"EndsLikeAnInformationTable", "方案Org", Use::all},
        {"BeginsLikeAnother", "甲乙丙", Use::all},
        {"WideBlank", "甲　乙", Use::all},
        {"OuterBlanks", "  滨江  ", Use::all},
        {"Blank", "甲 乙", Use::bracket},
        {"BlankBehindAnotherPlan", "甲 x", Use::bracket},
        {"QueryBehindAnotherPlan", "甲 where 1", Use::bracket},
        {"OrderBehindAnotherPlan", "甲 order by ID", Use::bracket},
        {"Apostrophe", "甲'乙", Use::old},
        {"ApostropheAndCondition", "x' or '1'='1", Use::old},
        {"ApostropheAndAnotherPlan", "甲' or 名称='甲乙", Use::old},
        {"Quote", "甲\"乙", Use::old},
        {"Star", "甲*", Use::old},
        {"StarAlone", "*", Use::old},
        {"QuestionMark", "甲?", Use::old},
        {"NumberSign", "甲#", Use::old},
        {"Percent", "甲%", Use::old},
        {"Semicolon", "甲;drop table 甲", Use::old},
        {"Comment", "甲--", Use::old},
        {"Comma", "甲,甲乙", Use::old},
        {"Parentheses", "(甲)", Use::old},
        {"Underscore", "甲_乙", Use::old},
        {"SqlWord", "select", Use::bracket},
        {"SqlWordInCapitals", "TABLE", Use::bracket},
        {"SqlWords", "from 甲", Use::bracket},
        {"TooLongForATable", QString(250, u'n'), Use::none},
        {"TooLongForAFolder", QString(250, u'长'), Use::none},
        {"Point", "甲.1", Use::none},
        {"PointAlone", ".", Use::none},
        {"TwoPoints", "..", Use::none},
        {"Brackets", "[甲]", Use::none},
        {"ClosingBracket", "甲] where 1=1", Use::none},
        {"OpeningBracket", "[甲-乙", Use::none},
        {"Exclamation", "甲!乙", Use::none},
        {"LineBreak", "甲\n乙", Use::none},
        {"Digits", "10", Use::none},
        {"Nothing", "   ", Use::none},
        {"ListOfPlans", "遍历表", Use::none},
        {"OpenPlan", "当前表", Use::none},
        {"ScratchTable", "temp", Use::none},
        {"ScratchTableInCapitals", "TEMP", Use::none},
        {"InformationTableOfAnother", "甲Org", Use::none},
        {"FolderAbove", "../用户模板", Use::none},
        {"FolderOfAnother", "甲/../甲乙", Use::none},
        {"FolderInAnother", "甲/x", Use::none},
        {"Backslash", "甲\\x", Use::none},
    };
}

std::vector<AwkwardName> namesOfPlans() {
    auto names = awkwardNames();
    names.erase(std::remove_if(names.begin(), names.end(),
                               [](const AwkwardName& name) { return name.use == Use::none; }),
                names.end());
    return names;
}

// Other plans and templates stand beside, some with names that the awkward ones could be taken for.
const QStringList namesOfBystanders{"甲", "甲乙", "x", "旁观"};

// The work space of the bystanders, made once.
class SpaceOfBystanders {
public:
    SpaceOfBystanders() {
        const Bystanders made(planner_, namesOfBystanders);
        planner_.exit();
    }
    static void copyTo(const TemporaryFolder& folder) {
        static const SpaceOfBystanders once;
        copyWithTimes(once.planner_.folder.path("Sys"), folder.path("Sys"));
    }

private:
    Planner planner_;
};

// A planner of a plan that bears one of the names.
class Named {
public:
    explicit Named(AwkwardName by) : name(by.name.trimmed()), tested_(std::move(by)) {
        SpaceOfBystanders::copyTo(planner.folder);
        bystanders =
            std::make_unique<Bystanders>(planner, namesOfBystanders, Bystanders::AreThere{});
    }

    const QString name;
    Planner planner;
    std::unique_ptr<Bystanders> bystanders;

    // A new plan where there may be one, else the plan of an older installation.
    bool create() {
        if (tested_.use != Use::old) {
            return planner.newPlan(tested_.name, true);
        }
        bystanders->addOldPlan(name);
        planner.restart();
        return true;
    }
    // Nothing but the plan itself has changed since the start.
    void expectBystandersAsBefore(const char* command) {
        EXPECT_EQ(bystanders->now(), bystanders->before()) << "after " << command;
    }
    // What did not come about has been told, if the command tells at all.
    void expectDoneOrTold(bool done, const char* command) {
        if (tested_.use == Use::all) {
            EXPECT_TRUE(done) << command;
        } else if (!done) {
            ASSERT_FALSE(planner.messages.shown.empty()) << command;
            EXPECT_FALSE(planner.messages.shown.back().text.isEmpty()) << command;
        }
        planner.messages.shown.clear();
        expectBystandersAsBefore(command);
    }
    QStringList rows() { return OutlineWorld::column(*planner.state().gDbUser, name, u"Key"); }
    bool isOpen() {
        return planner.current().Count() > 0 && planner.current().Item(1).Key() == name;
    }

private:
    AwkwardName tested_;
};

TEST(AwkwardNames, APlanComesAboutOrTheReasonIsTold) {
    for (const AwkwardName& tested : awkwardNames()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        const bool mayBe = tested.use == Use::all || tested.use == Use::bracket;
        EXPECT_EQ(world.planner.newPlan(tested.name, true), mayBe);
        if (!mayBe) {
            ASSERT_FALSE(world.planner.messages.shown.empty());
            EXPECT_FALSE(world.planner.messages.shown.back().text.isEmpty());
            EXPECT_FALSE(world.isOpen());
        } else {
            EXPECT_EQ(world.rows(), QStringList(world.name));
            EXPECT_TRUE(world.isOpen());
        }
        world.expectBystandersAsBefore("a new plan");
    }
}

TEST(NamesOfPlans, FoldersAndDocumentsAreAddedOrTheReasonIsTold) {
    for (const AwkwardName& tested : namesOfPlans()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        ASSERT_TRUE(world.create());
        world.planner.messages.shown.clear();
        const QString file = world.planner.folder.path("说明.doc");
        world.planner.folder.write("说明.doc", "text");
        world.planner.click(world.name);
        world.expectDoneOrTold(
            world.planner.addFolder(AddMode::below, "章") == outline::Added::added, "下级");
        world.planner.click(world.name);
        world.expectDoneOrTold(
            world.planner.addDocument(AddMode::below, file) == outline::Added::added, "下级");
        world.planner.click(world.name + ".1");
        world.expectDoneOrTold(
            world.planner.addFolder(AddMode::beside, "节") == outline::Added::added, "同级");
        world.planner.folder.write("附图.doc", "text");
        world.planner.click(world.name + ".1");
        world.expectDoneOrTold(
            world.planner.addDocument(AddMode::beside, world.planner.folder.path("附图.doc")) ==
                outline::Added::added,
            "同级");
        if (tested.use == Use::all) {
            EXPECT_EQ(world.rows().size(), 5);
        }
    }
}

TEST(NamesOfPlans, EditsMovesAndDeletionsReachThePlanAlone) {
    for (const AwkwardName& tested : namesOfPlans()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        ASSERT_TRUE(world.create());
        world.planner.messages.shown.clear();
        world.planner.folder.write("说明.doc", "text");
        world.bystanders->add(world.name, {{world.name + ".1", "章"},
                                           {world.name + ".2", "节"},
                                           {world.name + ".2.1", "文", "是"}});
        world.planner.restart();
        world.planner.clickPlan(world.name);
        world.planner.messages.shown.clear();
        const bool isShown = world.planner.click(world.name + ".1");
        EXPECT_TRUE(isShown || tested.use != Use::all);
        world.expectDoneOrTold(isShown && world.planner.rename("改'名*[]"), "rename");
        world.planner.drag(world.name + ".2", world.name + ".1");
        world.expectBystandersAsBefore("a move");
        world.planner.pressTemplate("旁观.1");
        world.planner.drop(world.name);
        world.expectBystandersAsBefore("a copy from a template");
        world.planner.storeTemplate();
        world.expectBystandersAsBefore("storing as a template");
        world.planner.click(world.name + ".2");
        world.planner.deleteNode();
        world.expectBystandersAsBefore("deleting a node");
        world.planner.click(world.name);
        world.planner.deleteNode();
        world.expectBystandersAsBefore("deleting the root");
    }
}

TEST(NamesOfPlans, DeletingThePlanTakesNoOtherAlong) {
    for (const AwkwardName& tested : namesOfPlans()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        ASSERT_TRUE(world.create());
        world.planner.click(world.name);
        world.planner.deletePlan();
        EXPECT_FALSE(world.planner.folder.exists("Sys/用户模板/" + world.name));
        world.expectBystandersAsBefore("deleting the plan");
        world.planner.restart();
        world.expectBystandersAsBefore("the next start");
    }
}

TEST(NamesOfPlans, ATemplateIsDeletedAlone) {
    for (const AwkwardName& tested : namesOfPlans()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        ASSERT_TRUE(world.bystanders->addTemplate(world.name));
        world.planner.restart();
        for (const QString& key : {world.name + ".1", world.name}) {
            world.planner.clickTemplate(key);
            world.planner.doubleClick();
            world.planner.browseTemplate();
            world.planner.deleteTemplate();
            world.expectBystandersAsBefore("deleting a template");
            world.planner.restart();
            world.expectBystandersAsBefore("the next start");
        }
    }
}

TEST(AwkwardNames, ANodeBearsAnyText) {
    for (const AwkwardName& tested : awkwardNames()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        world.planner.clickPlan("甲");
        ASSERT_TRUE(world.planner.click("甲.1"));
        EXPECT_TRUE(world.planner.rename(tested.name));
        ASSERT_TRUE(world.planner.click("甲"));
        const auto added = world.planner.addFolder(AddMode::below, tested.name + "二");
        EXPECT_EQ(added, outline::Added::added);
        const QStringList names =
            OutlineWorld::column(*world.planner.state().gDbUser, "甲", u"名称");
        EXPECT_EQ(names[1], tested.name);
        EXPECT_EQ(names.back(), (tested.name + "二").trimmed());
        EXPECT_EQ(world.planner.current().Item("甲.1").Text(), tested.name);
        EXPECT_TRUE(world.planner.messages.shown.empty());
    }
}

TEST(NamesOfPlans, ADocumentOfThatNameComesWithItsFile) {
    for (const AwkwardName& tested : namesOfPlans()) {
        SCOPED_TRACE(tested.label);
        Named world(tested);
        const QString file = world.planner.folder.path() + "/" + tested.name + ".doc";
        world.planner.folder.write(tested.name + ".doc", "content");
        world.planner.clickPlan("甲");
        for (const AddMode mode : {AddMode::below, AddMode::beside}) {
            ASSERT_TRUE(world.planner.click(mode == AddMode::below ? "甲" : "甲.1"));
            ASSERT_EQ(world.planner.addDocument(mode, file), outline::Added::added);
            const QString key = world.planner.workbench().TrvCurrent.SelectedItem()->Key();
            EXPECT_EQ(world.planner.folder.read("Sys/用户模板/甲/" + key + ".doc"), "content");
            if (mode == AddMode::below) {
                ASSERT_TRUE(world.planner.click(key));
                world.planner.deleteNode();
            }
        }
    }
}

} // namespace

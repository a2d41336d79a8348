#include "support/Planner.h"
#include "support/Text.h"
#include "whole/Bystanders.h"

#include <gtest/gtest.h>

#include <algorithm>

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

void PrintTo(const AwkwardName& name, std::ostream* out) { *out << name.label; }

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
class AwkwardNames : public testing::TestWithParam<AwkwardName> {
protected:
    AwkwardNames() : bystanders(planner, {"甲", "甲乙", "x", "旁观"}) {}

    const QString name = GetParam().name.trimmed();
    Planner planner;
    Bystanders bystanders;

    // A new plan where there may be one, else the plan of an older installation.
    bool create() {
        if (GetParam().use != Use::old) {
            return planner.newPlan(GetParam().name, true);
        }
        bystanders.addOldPlan(name);
        planner.restart();
        return true;
    }
    // Nothing but the plan itself has changed since the start.
    void expectBystandersAsBefore(const char* command) {
        EXPECT_EQ(bystanders.now(), bystanders.before()) << "after " << command;
    }
    // What did not come about has been told, if the command tells at all.
    void expectDoneOrTold(bool done, const char* command) {
        if (GetParam().use == Use::all) {
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
};

// The names that a plan can bear.
class NamesOfPlans : public AwkwardNames {};

TEST_P(AwkwardNames, APlanComesAboutOrTheReasonIsTold) {
    const bool mayBe = GetParam().use == Use::all || GetParam().use == Use::bracket;
    EXPECT_EQ(planner.newPlan(GetParam().name, true), mayBe);
    if (!mayBe) {
        ASSERT_FALSE(planner.messages.shown.empty());
        EXPECT_FALSE(planner.messages.shown.back().text.isEmpty());
        EXPECT_FALSE(isOpen());
    } else {
        EXPECT_EQ(rows(), QStringList(name));
        EXPECT_TRUE(isOpen());
    }
    expectBystandersAsBefore("a new plan");
}

TEST_P(NamesOfPlans, FoldersAndDocumentsAreAddedOrTheReasonIsTold) {
    ASSERT_TRUE(create());
    planner.messages.shown.clear();
    const QString file = planner.folder.path("说明.doc");
    planner.folder.write("说明.doc", "text");
    planner.click(name);
    expectDoneOrTold(planner.addFolder(AddMode::below, "章") == outline::Added::added, "下级");
    planner.click(name);
    expectDoneOrTold(planner.addDocument(AddMode::below, file) == outline::Added::added, "下级");
    planner.click(name + ".1");
    expectDoneOrTold(planner.addFolder(AddMode::beside, "节") == outline::Added::added, "同级");
    planner.folder.write("附图.doc", "text");
    planner.click(name + ".1");
    expectDoneOrTold(planner.addDocument(AddMode::beside, planner.folder.path("附图.doc")) ==
                         outline::Added::added,
                     "同级");
    if (GetParam().use == Use::all) {
        EXPECT_EQ(rows().size(), 5);
    }
}

TEST_P(NamesOfPlans, EditsMovesAndDeletionsReachThePlanAlone) {
    ASSERT_TRUE(create());
    planner.messages.shown.clear();
    planner.folder.write("说明.doc", "text");
    bystanders.add(name, {{name + ".1", "章"}, {name + ".2", "节"}, {name + ".2.1", "文", "是"}});
    planner.restart();
    planner.clickPlan(name);
    planner.messages.shown.clear();
    const bool isShown = planner.click(name + ".1");
    EXPECT_TRUE(isShown || GetParam().use != Use::all);
    expectDoneOrTold(isShown && planner.rename("改'名*[]"), "rename");
    planner.drag(name + ".2", name + ".1");
    expectBystandersAsBefore("a move");
    planner.pressTemplate("旁观.1");
    planner.drop(name);
    expectBystandersAsBefore("a copy from a template");
    planner.storeTemplate();
    expectBystandersAsBefore("storing as a template");
    planner.click(name + ".2");
    planner.deleteNode();
    expectBystandersAsBefore("deleting a node");
    planner.click(name);
    planner.deleteNode();
    expectBystandersAsBefore("deleting the root");
}

TEST_P(NamesOfPlans, DeletingThePlanTakesNoOtherAlong) {
    ASSERT_TRUE(create());
    planner.click(name);
    planner.deletePlan();
    EXPECT_FALSE(planner.folder.exists("Sys/用户模板/" + name));
    expectBystandersAsBefore("deleting the plan");
    planner.restart();
    expectBystandersAsBefore("the next start");
}

TEST_P(NamesOfPlans, ATemplateIsDeletedAlone) {
    ASSERT_TRUE(bystanders.addTemplate(name));
    planner.restart();
    for (const QString& key : {name + ".1", name}) {
        planner.clickTemplate(key);
        planner.doubleClick();
        planner.browseTemplate();
        planner.deleteTemplate();
        expectBystandersAsBefore("deleting a template");
        planner.restart();
        expectBystandersAsBefore("the next start");
    }
}

TEST_P(AwkwardNames, ANodeBearsAnyText) {
    planner.clickPlan("甲");
    ASSERT_TRUE(planner.click("甲.1"));
    EXPECT_TRUE(planner.rename(GetParam().name));
    ASSERT_TRUE(planner.click("甲"));
    const auto added = planner.addFolder(AddMode::below, GetParam().name + "二");
    EXPECT_EQ(added, outline::Added::added);
    const QStringList names = OutlineWorld::column(*planner.state().gDbUser, "甲", u"名称");
    EXPECT_EQ(names[1], GetParam().name);
    EXPECT_EQ(names.back(), (GetParam().name + "二").trimmed());
    EXPECT_EQ(planner.current().Item("甲.1").Text(), GetParam().name);
    EXPECT_TRUE(planner.messages.shown.empty());
}

TEST_P(NamesOfPlans, ADocumentOfThatNameComesWithItsFile) {
    const QString file = planner.folder.path() + "/" + GetParam().name + ".doc";
    planner.folder.write(GetParam().name + ".doc", "content");
    planner.clickPlan("甲");
    for (const AddMode mode : {AddMode::below, AddMode::beside}) {
        ASSERT_TRUE(planner.click(mode == AddMode::below ? "甲" : "甲.1"));
        ASSERT_EQ(planner.addDocument(mode, file), outline::Added::added);
        const QString key = planner.workbench().TrvCurrent.SelectedItem()->Key();
        EXPECT_EQ(planner.folder.read("Sys/用户模板/甲/" + key + ".doc"), "content");
        if (mode == AddMode::below) {
            ASSERT_TRUE(planner.click(key));
            planner.deleteNode();
        }
    }
}

std::string labelOf(const testing::TestParamInfo<AwkwardName>& tested) {
    return tested.param.label;
}

INSTANTIATE_TEST_SUITE_P(All, AwkwardNames, testing::ValuesIn(awkwardNames()), labelOf);
INSTANTIATE_TEST_SUITE_P(Borne, NamesOfPlans, testing::ValuesIn(namesOfPlans()), labelOf);

} // namespace

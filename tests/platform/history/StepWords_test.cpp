#include "platform/history/HistoryWorld.h"
#include "platform/history/StepWords.h"

#include <gtest/gtest.h>

using namespace qvnd;
using test::HistoryWorld;

namespace {

TEST(StepWords, NameAPlanThatEndsLikeAnInformationTableAsTheOutlineThatItIs) {
    HistoryWorld world;
    const auto step = world.run("新建", [&] {
        world.db->TableDefs().Append(HistoryWorld::table("甲Org"));
        HistoryWorld::addRow(*world.db, "甲Org", "甲Org");
        jet::TableDef information("甲OrgOrg");
        information.Fields = {jet::TableDef::CreateField("编制人", jet::FieldType::Text)};
        world.db->TableDefs().Append(information);
    });
    QStringList lines;
    for (const history::Change& change : world.history->changesOf(step.step->id)) {
        lines << history::lineOf(change);
    }
    EXPECT_EQ(lines,
              (QStringList{"新建 大纲 甲Org", "加入 名甲Org（甲Org）", "新建 甲Org 的工程信息"}));
}

TEST(StepWords, NameTheFirstOfManyAndTheirNumber) {
    const QStringList few{"一", "二", "三", "四", "五"};
    const QStringList many = few + QStringList{"六", "七"};
    for (const auto note : {history::outsideNote, history::goneAlongNote, history::lostNote}) {
        EXPECT_TRUE(note(few).endsWith("：一、二、三、四、五")) << note(few).toStdString();
        EXPECT_TRUE(note(many).endsWith("：一、二、三、四、五 等 7 个"))
            << note(many).toStdString();
    }
}

} // namespace

#include "outline/TakeBack.h"
#include "support/GenuineJet.h"
#include "support/KillPoints.h"
#include "support/Planner.h"
#include "support/Text.h"
#include "support/TracedProcess.h"

#include <gtest/gtest.h>

using namespace qvnd;
using jet::FieldType;
using jet::TableDef;
using jet::Value;
using jet::legacy::LegacyTable;

namespace {

Value number(int value) { return Value(std::int32_t{value}); }

LegacyTable names(const QString& table, const QStringList& rows) {
    LegacyTable names{table, {TableDef::CreateField(QString("名称"), FieldType::Memo)}, {}};
    for (const QString& row : rows) {
        names.Rows.push_back({Value(row)});
    }
    return names;
}

// A folder and a document in it, the rows not in the order of their numbers.
LegacyTable outline(const QString& name) {
    return {name,
            {TableDef::CreateField(QString("名称"), FieldType::Memo),
             TableDef::CreateField(QString("Key"), FieldType::Text),
             TableDef::CreateField(QString("ID"), FieldType::Long),
             TableDef::CreateField(QString("是否文档"), FieldType::Text)},
            {{Value(u"说明"), Value(name + ".1.2"), number(7), Value(u"是")},
             {Value(name), Value(name), number(1), Value(u"否")},
             {Value(u"概况"), Value(name + ".1"), number(4), Value(u"否")}}};
}

LegacyTable information(const QString& plan) {
    LegacyTable table;
    table.Name = plan + "Org";
    for (const char* field : {"建设单位", "施工单位", "编制人", "审批人"}) {
        table.Fields.push_back(TableDef::CreateField(QString(field), FieldType::Text));
    }
    table.Fields.push_back(TableDef::CreateField(QString("编制日期"), FieldType::Date));
    table.Fields.push_back(TableDef::CreateField(QString("注释"), FieldType::Memo));
    table.Rows = {{Value(u"滨江集团"), Value(u"一建"), Value(u"张三"), Value(u"李四"),
                   Value(QDate(1999, 7, 8)), Value(u"旧注释")}};
    return table;
}

LegacyTable cover() {
    return {"封面表",
            {TableDef::CreateField(QString("工程名称"), FieldType::Memo),
             TableDef::CreateField(QString("单位名称"), FieldType::Memo),
             TableDef::CreateField(QString("图片宽度"), FieldType::Long)},
            {{Value(u"跨江大桥"), Value(u"一建"), number(12)}}};
}

// A planner before a program folder of an older installation: three central databases, two plans
// and a template, each with its folder, its database and its documents.
class OlderInstallation : public test::Planner {
public:
    OlderInstallation() {
        put("Sys/用户模板/Db_UsTemplate.mdb",
            {names("遍历表", {"桥", "路"}), names("当前表", {"路"}), names("标书表", {}),
             outline("temp"), outline("桥"), information("桥"), outline("路"), information("路")});
        put("Sys/Database/Db_Template.mdb", {names("遍历表", {"模"}), outline("模")});
        put("Sys/Database/Db_BidSet.mdb", {cover(), names("封面库", {"旧封面"})});
        for (const char* name : {"桥", "路"}) {
            const QString plan(name);
            put("Sys/用户模板/" + plan + "/" + plan + ".mdb", {outline(plan), information(plan)});
            folder.write("Sys/用户模板/" + plan + "/" + plan + ".1.2.doc",
                         "document of " + plan.toUtf8());
        }
        put("Sys/标书模板/模/模.mdb", {outline("模")});
        folder.write("Sys/标书模板/模/模.1.2.doc", "document of the template");
    }

    const QMap<QString, QByteArray>& databases() const { return databases_; }

private:
    void put(const QString& path, const std::vector<LegacyTable>& tables) {
        databases_[path] = test::GenuineJet(tables).bytes();
        folder.write(path, databases_[path]);
    }

    QMap<QString, QByteArray> databases_;
};

// Everything that a planner had is there, and the old files are kept beside the new ones.
void expectAll(OlderInstallation& planner) {
    EXPECT_TRUE(planner.messages.shown.empty())
        << planner.messages.shown.front().text.toStdString();
    EXPECT_EQ(test::OutlineWorld::shown(planner.plans()),
              QStringList({"桥", "桥.1", "桥.1.2", "路", "路.1", "路.1.2"}));
    EXPECT_EQ(test::OutlineWorld::shown(planner.templates()),
              QStringList({"模", "模.1", "模.1.2"}));
    EXPECT_EQ(test::OutlineWorld::shown(planner.current()), QStringList({"路", "路.1", "路.1.2"}));
    EXPECT_TRUE(planner.clickPlan("桥"));
    EXPECT_EQ(test::OutlineWorld::shown(planner.current()), QStringList({"桥", "桥.1", "桥.1.2"}));
    plans::DlgNew dialog(planner.state(), planner.workbench(), planner.messages, planner.splash,
                         plans::ShowMode::information);
    dialog.Load();
    EXPECT_EQ(dialog.form.TxtBldOffice, "滨江集团");
    EXPECT_EQ(dialog.form.DTP, QDate(1999, 7, 8));
    EXPECT_EQ(dialog.form.RtfExplain, "旧注释");
    const auto cover = planner.state().gDbBidSet->OpenRecordset("select * from 封面表");
    EXPECT_EQ(cover->Get(u"工程名称").ToText(), "跨江大桥");
    EXPECT_EQ(cover->Get(u"图片宽度").ToText(), "12");
    for (auto file = planner.databases().begin(); file != planner.databases().end(); ++file) {
        EXPECT_EQ(planner.folder.read(file.key() + ".jet"), file.value())
            << file.key().toStdString();
    }
    EXPECT_EQ(planner.folder.read("Sys/用户模板/桥/桥.1.2.doc"), "document of 桥");
}

TEST(LegacyInstallation, IsTakenOverWholeByTheFirstStart) {
    OlderInstallation planner;
    ASSERT_TRUE(planner.start());
    expectAll(planner);
}

TEST(LegacyInstallation, ThatWasTakenOverIsUsedLikeAnyOtherByTheNextStart) {
    OlderInstallation planner;
    ASSERT_TRUE(planner.start());
    planner.restart();
    expectAll(planner);
    ASSERT_TRUE(planner.clickPlan("桥"));
    ASSERT_TRUE(planner.click("桥.1"));
    EXPECT_TRUE(planner.rename("新概况"));
    planner.restart();
    EXPECT_EQ(planner.plans().find("桥.1")->Text(), "新概况");
}

// A planner whose work space is in use, and who puts a plan's folder of an older installation
// there.
class OlderFolder : public test::Planner {
public:
    OlderFolder() {
        start();
        exit();
        folder.write(file, old);
        folder.write("Sys/用户模板/桥/桥.1.2.doc", "document");
    }
    bool isListed() { return plans().find("桥.1.2") != nullptr; }
    void undo() { outline::undo(state(), workbench(), services()); }
    void redo() { outline::redo(state(), workbench(), services()); }

    const QString file = "Sys/用户模板/桥/桥.mdb";
    const QByteArray old = test::GenuineJet({outline("桥"), information("桥")}).bytes();
};

TEST(OlderFolder, ThatAStartTookOverIsAsBeforeBehindTheUndoAndTakenOverAgainByTheRedo) {
    OlderFolder planner;
    planner.start();
    ASSERT_TRUE(planner.isListed());
    EXPECT_EQ(planner.state().History->undoable()->title, "启动[桥]");
    const QByteArray taken = planner.folder.read(planner.file);
    ASSERT_NE(taken, planner.old);
    planner.undo();
    EXPECT_EQ(planner.folder.read(planner.file), planner.old);
    EXPECT_FALSE(planner.isListed());
    planner.redo();
    EXPECT_EQ(planner.folder.read(planner.file), taken);
    EXPECT_TRUE(planner.isListed());
}

TEST(OlderFolder, ThatAStartTookOverIsTakenOverAnewByTheStartBehindTheUndo) {
    OlderFolder planner;
    planner.start();
    planner.undo();
    planner.restart();
    EXPECT_TRUE(planner.isListed());
    EXPECT_EQ(planner.folder.read(planner.file + ".jet"), planner.old);
    EXPECT_FALSE(planner.folder.exists(planner.file + ".jet.2"));
    EXPECT_TRUE(planner.messages.shown.empty());
}

#ifdef __linux__
// Nobody has asked for what a start does, and nothing of it comes from outside.
TEST(OlderFolder, WhoseTakeoverIsKilledIsTakenOverAnewAndNothingIsKeptAsAForeignChange) {
    OlderFolder undisturbed;
    const int changes = test::TracedProcess::run([&] { undisturbed.start(); }, 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    for (const int point : test::killPoints(changes, 8)) {
        SCOPED_TRACE(point);
        OlderFolder planner;
        test::TracedProcess::run([&] { planner.start(); }, point);
        ASSERT_TRUE(planner.start());
        EXPECT_TRUE(planner.isListed());
        for (const history::Step& step : planner.state().History->steps()) {
            EXPECT_NE(step.kind, history::StepKind::outside) << step.title.toStdString();
        }
    }
}

TEST(LegacyInstallation, WhoseTakeoverIsKilledAtWhateverPointIsTakenOverWholeByTheNextStart) {
    const auto start = [](OlderInstallation& planner) { return [&] { planner.start(); }; };
    OlderInstallation undisturbed;
    const int changes = test::TracedProcess::run(start(undisturbed), 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    constexpr int points = 20;
    ASSERT_GT(changes, points);
    for (const int point : test::killPoints(changes, points)) {
        SCOPED_TRACE(point);
        OlderInstallation planner;
        test::TracedProcess::run(start(planner), point);
        ASSERT_TRUE(planner.start());
        expectAll(planner);
    }
}
#endif

TEST(LegacyInstallation, WithADamagedListOfPlansAdoptsThemFromTheirFoldersAndTellsIt) {
    OlderInstallation planner;
    const QString file = "Sys/用户模板/Db_UsTemplate.mdb";
    const QByteArray cut = planner.databases()[file].left(4096);
    planner.folder.write(file, cut);
    ASSERT_TRUE(planner.start());
    ASSERT_EQ(planner.messages.shown.size(), 1U);
    EXPECT_TRUE(planner.messages.shown[0].text.contains("重新建立一个新的"));
    EXPECT_EQ(test::OutlineWorld::shown(planner.plans()),
              QStringList({"桥", "桥.1", "桥.1.2", "路", "路.1", "路.1.2"}));
    EXPECT_EQ(planner.folder.read(file + ".jet"), cut);
}

} // namespace

#include "store/LegacyPlans.h"

#include "store/CentralDatabases.h"
#include "store/PlanTables.h"
#include "store/TableTransfer.h"
#include "support/FakeLegacyReader.h"
#include "support/FakeMessageBoxes.h"

namespace qvnd::store {

namespace {

using jet::Value;
using test::FakeLegacyReader;

class QuietSplash : public desktop::SplashScreen {
public:
    void show() override {}
    void tell(const QString&) override {}
    void unload() override {}
};

std::vector<Value> row(const QString& name, const QString& key, int id, const QString& document) {
    return {Value(name), Value(key), Value(std::int32_t{id}), Value(document)};
}

// Beside the databases lie plan and template folders of an older installation, their Jet files made
// up by a fake.
class LegacyPlans : public test::CentralDatabases {
protected:
    LegacyPlans() { state_.gLegacyReader = std::make_unique<FakeLegacyReader>(files_); }

    static void write(const QString& path, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString planFile(const QString& name) const {
        return state_.gUserTplPath + name + u'/' + name + u".mdb"_qs;
    }
    QString templateFile(const QString& name) const {
        return state_.gSysPath + u"标书模板/"_qs + name + u'/' + name + u".mdb"_qs;
    }
    static QByteArray jetBytes(const QString& name) { return "JET:" + name.toUtf8(); }

    static jet::legacy::LegacyTable outline(const QString& name,
                                            const std::vector<std::vector<Value>>& rows) {
        return FakeLegacyReader::table(name, {u"名称"_qs, u"Key"_qs, u"ID"_qs, u"是否文档"_qs},
                                       rows);
    }
    // Rows out of order, with a gap in their IDs.
    static jet::legacy::LegacyTable usualOutline(const QString& name) {
        return outline(name,
                       {row(u"施工"_qs, name + u".2"_qs, 9, u"否"_qs), row(name, name, 2, u"否"_qs),
                        row(u"说明"_qs, name + u".1"_qs, 5, u"是"_qs)});
    }
    static jet::legacy::LegacyTable usualInformation(const QString& name) {
        return FakeLegacyReader::table(
            name + u"Org"_qs, {u"编制人"_qs, u"编制日期"_qs, u"注释"_qs, u"旧字段"_qs},
            {{Value(u"张三"), Value(QDate(2003, 5, 6)), Value(u"{\\rtf1}"), Value(u"x")}});
    }
    void layPlan(const QString& name, const FakeLegacyReader::Tables& tables) {
        files_[name] = tables;
        write(planFile(name), jetBytes(name));
    }
    LegacyTakeover takeOver(const QString& name) {
        return takeOverLegacyFile(state_, planFile(name), name, true);
    }
    QStringList rowsIn(const QString& file, const QString& query) {
        return rowsOf(*state_.gWs->OpenDatabase(file), query);
    }
    static QStringList namesBeside(const QString& file) {
        return QFileInfo(file).dir().entryList(QDir::Files, QDir::Name);
    }
    void importPlans() {
        ImportPlanFolders(state_, {[] {}, splash_, messages_});
    }
    void importTemplates() {
        ImportTemplateFolders(state_, {[] {}, splash_, messages_});
    }

    std::map<QString, FakeLegacyReader::Tables> files_;
    QuietSplash splash_;
    test::FakeMessageBoxes messages_;
    const QString plan_ = u"滨江工程"_qs;
};

TEST_F(LegacyPlans, OutlineAndInformationComeOverInIdOrderWithTheirIds) {
    layPlan(plan_, {usualOutline(plan_), usualInformation(plan_)});
    const LegacyTakeover taken = takeOver(plan_);
    EXPECT_EQ(taken.Rows, 3);
    EXPECT_TRUE(taken.Information);
    EXPECT_EQ(taken.KeptAs, planFile(plan_) + u".jet"_qs);
    EXPECT_EQ(rowsIn(planFile(plan_), u"select * from [滨江工程] order by ID"_qs),
              (QStringList{u"滨江工程|滨江工程|2|否"_qs, u"说明|滨江工程.1|5|是"_qs,
                           u"施工|滨江工程.2|9|否"_qs}));
    EXPECT_EQ(rowsIn(planFile(plan_), u"select * from [滨江工程Org]"_qs),
              QStringList{u"||张三||2003-5-6|{\\rtf1}"_qs});
}

TEST_F(LegacyPlans, TheNewTableIsAnOutlineLikeAnyOther) {
    layPlan(plan_, {usualOutline(plan_)});
    takeOver(plan_);
    const auto database = state_.gWs->OpenDatabase(planFile(plan_));
    EXPECT_EQ(database->TableDefs()[plan_], outlineTable(plan_));
    addRows(*database, plan_, {plan_ + u".3"_qs});
    EXPECT_EQ(rowsOf(*database, u"select ID from [滨江工程] where Key='滨江工程.3'"_qs),
              QStringList{u"10"_qs});
}

TEST_F(LegacyPlans, TheOldFileIsKeptBesideAndNothingElseIs) {
    layPlan(plan_, {usualOutline(plan_)});
    takeOver(plan_);
    EXPECT_EQ(read(planFile(plan_) + u".jet"_qs), jetBytes(plan_));
    EXPECT_EQ(namesBeside(planFile(plan_)),
              (QStringList{u"滨江工程.mdb"_qs, u"滨江工程.mdb.jet"_qs}));
}

TEST_F(LegacyPlans, AnotherFileOfTheKeptNameIsNotOverwritten) {
    layPlan(plan_, {usualOutline(plan_)});
    write(planFile(plan_) + u".jet"_qs, "older still");
    EXPECT_EQ(takeOver(plan_).KeptAs, planFile(plan_) + u".jet.2"_qs);
    EXPECT_EQ(read(planFile(plan_) + u".jet"_qs), "older still");
    EXPECT_EQ(read(planFile(plan_) + u".jet.2"_qs), jetBytes(plan_));
}

TEST_F(LegacyPlans, WhatAKilledRunLeftIsClearedAwayAndTheWorkDoneAgain) {
    layPlan(plan_, {usualOutline(plan_)});
    write(planFile(plan_) + u".import"_qs, "half made");
    write(planFile(plan_) + u".import-journal"_qs, "half made");
    write(planFile(plan_) + u".jet"_qs, jetBytes(plan_));
    EXPECT_EQ(takeOver(plan_).KeptAs, planFile(plan_) + u".jet"_qs);
    EXPECT_EQ(namesBeside(planFile(plan_)),
              (QStringList{u"滨江工程.mdb"_qs, u"滨江工程.mdb.jet"_qs}));
    EXPECT_EQ(rowsIn(planFile(plan_), u"select Key from [滨江工程]"_qs).size(), 3);
}

TEST_F(LegacyPlans, IdsGivenTwiceOrMissingAreMadeAnew) {
    layPlan(u"甲"_qs, {outline(u"甲"_qs, {row(u"甲"_qs, u"甲"_qs, 1, u"否"_qs),
                                          row(u"b"_qs, u"甲.1"_qs, 7, u"否"_qs),
                                          row(u"c"_qs, u"甲.2"_qs, 7, u"否"_qs)})});
    layPlan(u"乙"_qs,
            {FakeLegacyReader::table(u"乙"_qs, {u"KEY"_qs, u"名称"_qs},
                                     {{Value(u"乙"), Value(u"乙")}, {Value(u"乙.1"), Value()}})});
    takeOver(u"甲"_qs);
    takeOver(u"乙"_qs);
    EXPECT_EQ(rowsIn(planFile(u"甲"_qs), u"select Key,ID from 甲 order by ID"_qs),
              (QStringList{u"甲|1"_qs, u"甲.1|2"_qs, u"甲.2|3"_qs}));
    EXPECT_EQ(rowsIn(planFile(u"乙"_qs), u"select * from 乙 order by ID"_qs),
              (QStringList{u"乙|乙|1|"_qs, u"|乙.1|2|"_qs}));
}

TEST_F(LegacyPlans, AKeyGivenTwiceIsTakenOverWithoutTheIndexThatForbidsIt) {
    layPlan(u"甲"_qs, {outline(u"甲"_qs, {row(u"a"_qs, u"k"_qs, 1, u"否"_qs),
                                          row(u"b"_qs, u"K"_qs, 2, u"否"_qs)})});
    EXPECT_EQ(takeOver(u"甲"_qs).Rows, 2);
    EXPECT_EQ(rowsIn(planFile(u"甲"_qs), u"select 名称 from 甲 order by ID"_qs),
              (QStringList{u"a"_qs, u"b"_qs}));
}

TEST_F(LegacyPlans, TextsLongerThanOurFieldsAreNotCut) {
    const QString longText(180, u'长');
    const QString longer(400, u'长');
    layPlan(plan_, {usualOutline(plan_),
                    FakeLegacyReader::table(u"滨江工程Org"_qs, {u"建设单位"_qs, u"审批人"_qs},
                                            {{Value(longText), Value(longer)}})});
    takeOver(plan_);
    EXPECT_EQ(rowsIn(planFile(plan_), u"select 建设单位,审批人 from [滨江工程Org]"_qs),
              QStringList{longText + u'|' + longer});
}

TEST_F(LegacyPlans, ADateThatIsNoneIsLeftOut) {
    layPlan(plan_, {usualOutline(plan_),
                    FakeLegacyReader::table(u"滨江工程Org"_qs, {u"编制日期"_qs, u"编制人"_qs},
                                            {{Value(u"去年"), Value(u"李四")}})});
    EXPECT_TRUE(takeOver(plan_).Information);
    EXPECT_EQ(rowsIn(planFile(plan_), u"select 编制日期,编制人 from [滨江工程Org]"_qs),
              QStringList{u"Null|李四"_qs});
}

TEST_F(LegacyPlans, APlanNamedLikeTheScratchTableComesOverToo) {
    layPlan(u"temp"_qs, {usualOutline(u"temp"_qs)});
    EXPECT_EQ(takeOver(u"temp"_qs).Rows, 3);
    EXPECT_EQ(rowsIn(planFile(u"temp"_qs), u"select Key from [temp]"_qs).size(), 3);
}

TEST_F(LegacyPlans, ADamagedFileOrOneWithoutAnOutlineStaysAsItWas) {
    write(planFile(u"坏"_qs), "JET damaged");
    layPlan(u"空"_qs, {usualOutline(u"别的"_qs)});
    layPlan(u"缺"_qs, {FakeLegacyReader::table(u"缺"_qs, {u"名称"_qs}, {})});
    EXPECT_EQ(test::errorOf([&] { takeOver(u"坏"_qs); }), 3343);
    EXPECT_EQ(test::errorOf([&] { takeOver(u"空"_qs); }), 3078);
    EXPECT_EQ(test::errorOf([&] { takeOver(u"缺"_qs); }), 3078);
    EXPECT_EQ(read(planFile(u"坏"_qs)), "JET damaged");
    for (const QString& name : {u"坏"_qs, u"空"_qs, u"缺"_qs}) {
        EXPECT_EQ(namesBeside(planFile(name)), QStringList{name + u".mdb"_qs});
    }
}

TEST_F(LegacyPlans, AdoptionOfPlansBringsOldOnesIntoTheCentralDatabase) {
    layPlan(plan_, {usualOutline(plan_), usualInformation(plan_)});
    importPlans();
    EXPECT_TRUE(messages_.shown.empty());
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select * from 遍历表"_qs), QStringList{plan_});
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select Key,ID from 滨江工程 order by ID"_qs),
              (QStringList{u"滨江工程|2"_qs, u"滨江工程.1|5"_qs, u"滨江工程.2|9"_qs}));
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select 编制人 from 滨江工程Org"_qs),
              QStringList{u"张三"_qs});
    ASSERT_EQ(state_.LegacyTakeovers.size(), 1U);
    EXPECT_EQ(state_.LegacyTakeovers[0].Kind, LegacyKind::plan);
}

TEST_F(LegacyPlans, AdoptionOfTemplatesBringsOldOnesIntoTheCentralDatabase) {
    files_[plan_] = {usualOutline(plan_)};
    write(templateFile(plan_), jetBytes(plan_));
    importTemplates();
    EXPECT_TRUE(messages_.shown.empty());
    EXPECT_EQ(rowsOf(*state_.gDbTemplate, u"select * from 遍历表"_qs), QStringList{plan_});
    EXPECT_EQ(rowsOf(*state_.gDbTemplate, u"select Key from 滨江工程 order by ID"_qs).size(), 3);
    ASSERT_EQ(state_.LegacyTakeovers.size(), 1U);
    EXPECT_EQ(state_.LegacyTakeovers[0].Kind, LegacyKind::templateFolder);
    EXPECT_FALSE(state_.LegacyTakeovers[0].Information);
}

TEST_F(LegacyPlans, APlanThatIsListedKeepsItsCentralTablesAndItsFolderIsConverted) {
    layPlan(plan_, {usualOutline(plan_)});
    const auto list = state_.gDbUser->OpenRecordset(u"遍历表"_qs);
    list->AddNew();
    list->Set(u"名称", plan_);
    list->Update();
    state_.gDbUser->TableDefs().Append(outlineTable(plan_));
    addRows(*state_.gDbUser, plan_, {plan_});
    importPlans();
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select Key from 滨江工程"_qs), QStringList{plan_});
    EXPECT_EQ(rowsIn(planFile(plan_), u"select Key from [滨江工程]"_qs).size(), 3);
}

TEST_F(LegacyPlans, ADamagedFileIsNamedItsFolderIsNotListedAndTheOthersStillComeIn) {
    write(planFile(u"坏"_qs), "JET damaged");
    layPlan(u"好"_qs, {usualOutline(u"好"_qs), usualInformation(u"好"_qs)});
    importPlans();
    ASSERT_EQ(messages_.shown.size(), 1U);
    EXPECT_TRUE(messages_.shown[0].text.contains(u"坏.mdb"_qs));
    EXPECT_EQ(messages_.shown[0].icon, desktop::Icon::exclamation);
    EXPECT_EQ(rowsOf(*state_.gDbUser, u"select * from 遍历表"_qs), QStringList{u"好"_qs});
    EXPECT_EQ(read(planFile(u"坏"_qs)), "JET damaged");
    EXPECT_EQ(state_.LegacyTakeovers.size(), 2U);
}

TEST_F(LegacyPlans, ADamagedTemplateIsNamedAndDoesNotEndTheAdoptionOfTheOthers) {
    write(templateFile(u"a坏"_qs), "JET damaged");
    files_[u"b好"_qs] = {usualOutline(u"b好"_qs)};
    write(templateFile(u"b好"_qs), jetBytes(u"b好"_qs));
    importTemplates();
    importTemplates();
    EXPECT_EQ(messages_.shown.size(), 2U);
    EXPECT_EQ(rowsOf(*state_.gDbTemplate, u"select * from 遍历表"_qs), QStringList{u"b好"_qs});
    EXPECT_EQ(read(templateFile(u"a坏"_qs)), "JET damaged");
    EXPECT_EQ(state_.LegacyTakeovers.size(), 2U);
}

TEST_F(LegacyPlans, WithoutAReaderNothingIsTakenForOld) {
    state_.gLegacyReader.reset();
    layPlan(plan_, {usualOutline(plan_)});
    EXPECT_TRUE(adoptLegacyFile(state_, planFile(plan_), plan_, true));
    EXPECT_EQ(read(planFile(plan_)), jetBytes(plan_));
}

} // namespace

} // namespace qvnd::store

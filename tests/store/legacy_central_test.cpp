#include "store/LegacyCentral.h"

#include "store/DatabaseCreation.h"
#include "store/FormatTables.h"
#include "store/PlanTables.h"
#include "support/FakeLegacyReader.h"
#include "support/JetStore.h"
#include "support/KillPoints.h"
#include "support/TracedProcess.h"

namespace qvnd::store {

namespace {

using jet::Value;
using jet::legacy::LegacyTable;
using test::FakeLegacyReader;

// A central database file that may be one of an older installation, its tables made up by a fake.
class LegacyCentral : public test::JetStore {
protected:
    LegacyCentral() {
        state_.gWs = &state_.DBEngine.Workspaces(0);
        state_.gLegacyReader = std::make_unique<FakeLegacyReader>(files_);
    }

    void lay(const FakeLegacyReader::Tables& tables) {
        files_[u"old"_qs] = tables;
        write("JET:old");
    }
    void write(const QByteArray& bytes) const {
        QFile file(file_);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void takeOverPlans() {
        takeOverCentralFile(state_, file_, [&](const QString& path) {
            CreateUserDb(state_, path);
            state_.gDbUser->Close();
        });
    }
    void takeOverSettings() {
        takeOverCentralFile(state_, file_, [&](const QString& path) {
            CreateBidSetDb(state_, path, QDate(2026, 5, 1));
            state_.gDbBidSet->Close();
        });
    }
    QStringList rows(const QString& query) {
        return rowsOf(*state_.gWs->OpenDatabase(file_), query);
    }
    jet::TableDef definition(const QString& table) {
        return state_.gWs->OpenDatabase(file_)->TableDefs()[table];
    }
    QStringList namesBeside() const {
        return QFileInfo(file_).dir().entryList(QDir::Files, QDir::Name);
    }

    static LegacyTable names(const QString& table, const QStringList& names) {
        std::vector<std::vector<Value>> rows;
        for (const QString& name : names) {
            rows.push_back({Value(name)});
        }
        return FakeLegacyReader::table(table, {u"名称"_qs}, rows);
    }
    static LegacyTable outline(const QString& name) {
        return FakeLegacyReader::table(
            name, {u"名称"_qs, u"Key"_qs, u"ID"_qs, u"是否文档"_qs},
            {{Value(u"说明"), Value(name + u".1"_qs), Value(std::int32_t{5}), Value(u"是")},
             {Value(name), Value(name), Value(std::int32_t{2}), Value(u"否")}});
    }

    std::map<QString, FakeLegacyReader::Tables> files_;
    modMain state_;
    const QString file_ = pathOf(u"Db.mdb"_qs);
};

} // namespace

TEST_F(LegacyCentral, ThePlansComeOverWithTheirOutlinesAndTheirInformation) {
    lay({names(u"遍历表"_qs, {u"桥"_qs, u"路"_qs}), names(u"当前表"_qs, {u"桥"_qs}),
         outline(u"桥"_qs), outline(u"路"_qs), outline(u"temp"_qs),
         FakeLegacyReader::table(u"桥Org"_qs, {u"建设单位"_qs, u"施工单位"_qs},
                                 {{Value(u"甲方"), Value(u"乙方")}})});
    takeOverPlans();
    EXPECT_EQ(rows(u"select * from 遍历表"_qs), (QStringList{u"桥"_qs, u"路"_qs}));
    EXPECT_EQ(rows(u"select * from 当前表"_qs), QStringList{u"桥"_qs});
    EXPECT_EQ(rows(u"select * from 桥 order by ID"_qs),
              (QStringList{u"桥|桥|2|否"_qs, u"说明|桥.1|5|是"_qs}));
    EXPECT_EQ(rows(u"select Key from 路"_qs).size(), 2);
    EXPECT_EQ(rows(u"select Key from temp"_qs).size(), 2);
    EXPECT_EQ(rows(u"select 建设单位,施工单位 from 桥Org"_qs), QStringList{u"甲方|乙方"_qs});
    EXPECT_EQ(definition(u"桥"_qs), outlineTable(u"桥"_qs));
    EXPECT_EQ(definition(u"桥Org"_qs), informationTable(u"桥"_qs));
    EXPECT_EQ(definition(u"temp"_qs), outlineTable(u"temp"_qs));
}

TEST_F(LegacyCentral, WhatTheOldFileLacksIsThereAsInANewOne) {
    lay({FakeLegacyReader::table(u"封面表"_qs, {u"工程名称"_qs, u"单位名称"_qs, u"图片宽度"_qs},
                                 {{Value(u"大桥"), Value(u"乙方"), Value(12.0)}})});
    takeOverSettings();
    EXPECT_EQ(rows(u"select 工程名称,单位名称,图片宽度 from 封面表"_qs),
              QStringList{u"大桥|乙方|12"_qs});
    EXPECT_EQ(rows(u"select 级别 from 章节设置表"_qs).size(), 9);
    const auto database = state_.gWs->OpenDatabase(file_);
    for (const jet::TableDef& table : formatTables()) {
        EXPECT_EQ(database->TableDefs()[table.Name], table) << table.Name.toStdString();
    }
}

TEST_F(LegacyCentral, SavedSettingsKeepTheShapeOfTheTablesTheyAreCopiesOf) {
    lay({names(u"设置库"_qs, {u"甲"_qs}),
         FakeLegacyReader::table(u"甲页面"_qs, {u"页边距上"_qs, u"正文字体"_qs, u"ID"_qs},
                                 {{Value(2.5), Value(u"宋体"), Value(std::int32_t{1})}}),
         FakeLegacyReader::table(u"甲章节"_qs, {u"级别"_qs, u"序号标志"_qs},
                                 {{Value(u"1"), Value(u"一型")}, {Value(u"2"), Value(u"I型")}})});
    takeOverSettings();
    EXPECT_EQ(rows(u"select 页边距上,正文字体 from 甲页面"_qs), QStringList{u"2.5|宋体"_qs});
    EXPECT_EQ(rows(u"select 级别,ID from 甲章节"_qs), (QStringList{u"1|1"_qs, u"2|2"_qs}));
    jet::TableDef pages = definition(u"甲页面"_qs);
    pages.Name = u"页面设置表"_qs;
    EXPECT_EQ(pages, formatTables().back());
}

TEST_F(LegacyCentral, ATableOfNoKnownShapeComesWithItsOwnFields) {
    LegacyTable other = FakeLegacyReader::table(u"电话"_qs, {u"人"_qs, u"号"_qs},
                                                {{Value(u"张"), Value(std::int32_t{119})}});
    other.Fields[1].Type = jet::FieldType::Long;
    lay({other, LegacyTable{u"空壳"_qs, {}, {}}});
    takeOverPlans();
    EXPECT_EQ(rows(u"select * from 电话"_qs), QStringList{u"张|119"_qs});
    EXPECT_EQ(definition(u"电话"_qs).Fields[1].Type, jet::FieldType::Long);
}

TEST_F(LegacyCentral, TheOldFileIsKeptBesideAndTheTakeoverIsTold) {
    lay({names(u"遍历表"_qs, {})});
    takeOverPlans();
    EXPECT_EQ(namesBeside(), (QStringList{u"Db.mdb"_qs, u"Db.mdb.jet"_qs}));
    EXPECT_EQ(read(file_ + u".jet"_qs), "JET:old");
    ASSERT_EQ(state_.LegacyTakeovers.size(), 1U);
    const LegacyTakeover& taken = state_.LegacyTakeovers[0];
    EXPECT_EQ(taken.Kind, LegacyKind::central);
    EXPECT_EQ(taken.Name, u"Db.mdb"_qs);
    EXPECT_EQ(taken.Tables, 1);
    EXPECT_EQ(taken.KeptAs, file_ + u".jet"_qs);
    EXPECT_EQ(centralFailureText(taken), QString());
}

TEST_F(LegacyCentral, AFileThatCannotBeReadIsMadeAnewToldAndKept) {
    write("JET damaged");
    takeOverSettings();
    EXPECT_EQ(rows(u"select 级别 from 章节设置表"_qs).size(), 9);
    EXPECT_EQ(read(file_ + u".jet"_qs), "JET damaged");
    EXPECT_EQ(namesBeside(), (QStringList{u"Db.mdb"_qs, u"Db.mdb.jet"_qs}));
    ASSERT_EQ(state_.LegacyTakeovers.size(), 1U);
    EXPECT_EQ(centralFailureText(state_.LegacyTakeovers[0]),
              u"旧版数据库“Db.mdb”不能接收，已经重新建立一个新的。\n%1已损坏\n"
              "原来的文件保存为“%2”。"_qs.arg(file_, QDir::toNativeSeparators(file_ + u".jet"_qs)));
}

TEST_F(LegacyCentral, AFullDiskLeavesTheOldFileAsItWas) {
    lay({names(u"遍历表"_qs, {u"桥"_qs})});
    EXPECT_EQ(test::errorOf([&] {
                  takeOverCentralFile(state_, file_, [](const QString&) {
                      throw RunTimeError(error::diskFull, u"磁盘已满");
                  });
              }),
              error::diskFull);
    EXPECT_EQ(read(file_), "JET:old");
    EXPECT_EQ(namesBeside(), QStringList{u"Db.mdb"_qs});
    EXPECT_TRUE(state_.LegacyTakeovers.empty());
}

TEST_F(LegacyCentral, AFileThatCouldNotBeReadThisTimeStaysAsItWasForTheNextStart) {
    write("JET busy");
    EXPECT_EQ(test::errorOf([&] { takeOverPlans(); }), error::cannotAccessFile);
    EXPECT_EQ(read(file_), "JET busy");
    EXPECT_EQ(namesBeside(), QStringList{u"Db.mdb"_qs});
    EXPECT_TRUE(state_.LegacyTakeovers.empty());
}

TEST_F(LegacyCentral, AFaultOfTheStoreLeavesTheOldFileAsItWas) {
    lay({names(u"遍历表"_qs, {u"桥"_qs})});
    for (const long fault : {error::storeFailed, error::storeBusy, error::unrecognizedFormat}) {
        EXPECT_EQ(test::errorOf([&] {
                      takeOverCentralFile(state_, file_, [&](const QString&) {
                          throw RunTimeError(fault, u"读写出错");
                      });
                  }),
                  fault);
        EXPECT_EQ(read(file_), "JET:old");
        EXPECT_EQ(namesBeside(), QStringList{u"Db.mdb"_qs});
    }
}

#ifdef __linux__
TEST_F(LegacyCentral, ATakeoverKilledAtWhateverPointLeavesTheOldFileOrTheWholeNewOne) {
    const FakeLegacyReader::Tables tables{names(u"遍历表"_qs, {u"桥"_qs, u"路"_qs}),
                                          outline(u"桥"_qs), outline(u"路"_qs)};
    lay(tables);
    const auto work = [this] { takeOverPlans(); };
    const int changes = test::TracedProcess::run(work, 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_GT(changes, 20);
    for (const int deadly : test::killPoints(changes, 80)) {
        SCOPED_TRACE(deadly);
        for (const QString& left : namesBeside()) {
            QFile::remove(pathOf(left));
        }
        lay(tables);
        test::TracedProcess::run(work, deadly);
        ASSERT_TRUE(read(file_) == "JET:old" || read(file_).startsWith("SQLite format 3"));
        takeOverPlans();
        ASSERT_EQ(rows(u"select * from 遍历表"_qs), (QStringList{u"桥"_qs, u"路"_qs}));
        ASSERT_EQ(rows(u"select Key from 桥"_qs).size(), 2);
        ASSERT_EQ(rows(u"select Key from 路"_qs).size(), 2);
        ASSERT_EQ(read(file_ + u".jet"_qs), "JET:old");
        ASSERT_EQ(namesBeside(), (QStringList{u"Db.mdb"_qs, u"Db.mdb.jet"_qs}));
    }
}
#endif

TEST_F(LegacyCentral, AnyOtherFileIsLeftAlone) {
    write("junk");
    takeOverPlans();
    EXPECT_EQ(read(file_), "junk");
    EXPECT_TRUE(state_.LegacyTakeovers.empty());
}

} // namespace qvnd::store

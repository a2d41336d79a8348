#include "support/GenuineJet.h"
#include "support/Qvndctl.h"

using namespace qvnd;
using namespace qvnd::tools;

namespace {

class LegacyTool : public Qvndctl {
protected:
    // A genuine Jet file with a table that is none of ours.
    static QByteArray genuine() {
        jet::legacy::LegacyTable table;
        table.Name = "价目";
        table.Fields = {jet::TableDef::CreateField(QString("材料"), jet::FieldType::Text)};
        table.Rows = {{jet::Value(u"水泥")}};
        return test::GenuineJet({table}).bytes();
    }
};

TEST_F(LegacyTool, WithoutOldPlansTheListIsEmpty) {
    EXPECT_EQ(qvndctl({"plan", "import-legacy"}), ExitStatus::done);
    EXPECT_EQ(out, "没有旧版的方案或模板。\n");
    EXPECT_EQ(qvndctl({"--json", "plan", "import-legacy"}), ExitStatus::done);
    EXPECT_EQ(out, "[]\n");
}

TEST_F(LegacyTool, ADamagedJetFileIsNamedAndLeftAsItWas) {
    qvndctl({"init"});
    const QByteArray damaged = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + "cut";
    folder.write("home/Sys/用户模板/旧工程/旧工程.mdb", damaged);
    folder.write("home/Sys/标书模板/旧模板/旧模板.mdb", damaged);
    EXPECT_EQ(qvndctl({"plan", "import-legacy"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("旧工程.mdb")) << err.toStdString();
    EXPECT_TRUE(err.contains("旧模板.mdb")) << err.toStdString();
    EXPECT_TRUE(out.contains("方案 旧工程：未接收。")) << out.toStdString();
    EXPECT_TRUE(out.contains("模板 旧模板：未接收。")) << out.toStdString();
    EXPECT_EQ(folder.read("home/Sys/用户模板/旧工程/旧工程.mdb"), damaged);
    EXPECT_EQ(folder.read("home/Sys/标书模板/旧模板/旧模板.mdb"), damaged);
    EXPECT_EQ(qvndctl({"plan", "list"}), ExitStatus::done);
    EXPECT_EQ(out, "");
}

TEST_F(LegacyTool, AGenuineJetFileWithoutAnOutlineIsNamedAndLeftAsItWas) {
    const QByteArray bytes = genuine();
    qvndctl({"init"});
    folder.write("home/Sys/用户模板/旧工程/旧工程.mdb", bytes);
    EXPECT_EQ(qvndctl({"plan", "import-legacy"}), ExitStatus::refused);
    EXPECT_TRUE(out.contains("没有提纲表『旧工程』")) << out.toStdString();
    EXPECT_EQ(folder.read("home/Sys/用户模板/旧工程/旧工程.mdb"), bytes);
    EXPECT_EQ(folder.names("home/Sys/用户模板/旧工程"), QStringList{"旧工程.mdb"});
}

TEST_F(LegacyTool, DamagedCentralDatabasesOfAnOlderInstallationAreToldMadeAnewAndKept) {
    const QByteArray damaged = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + "cut";
    const QStringList centrals{"home/Sys/用户模板/Db_UsTemplate.mdb",
                               "home/Sys/Database/Db_Template.mdb",
                               "home/Sys/Database/Db_BidSet.mdb"};
    for (const QString& central : centrals) {
        folder.write(central, damaged);
    }
    EXPECT_EQ(qvndctl({"plan", "import-legacy"}), ExitStatus::refused);
    for (const QString& central : centrals) {
        const QString name = central.section('/', -1);
        EXPECT_TRUE(out.contains("数据库 " + name + "：未接收。")) << out.toStdString();
        EXPECT_TRUE(err.contains("旧版数据库“" + name + "”不能接收，已经重新建立一个新的。"))
            << err.toStdString();
        EXPECT_EQ(folder.read(central + ".jet"), damaged);
    }
    EXPECT_EQ(qvndctl({"plan", "create", "桥"}), ExitStatus::done);
    EXPECT_EQ(err, "");
}

TEST_F(LegacyTool, GenuineCentralDatabasesAreTakenOverTableByTable) {
    const QByteArray bytes = genuine();
    folder.write("home/Sys/Database/Db_BidSet.mdb", bytes);
    EXPECT_EQ(qvndctl({"plan", "import-legacy"}), ExitStatus::done) << err.toStdString();
    EXPECT_TRUE(out.startsWith("数据库 Db_BidSet.mdb：")) << out.toStdString();
    EXPECT_EQ(folder.read("home/Sys/Database/Db_BidSet.mdb.jet"), bytes);
    EXPECT_EQ(qvndctl({"format", "show", "章节设置表"}), ExitStatus::done);
    EXPECT_TRUE(out.contains("级别：9")) << out.toStdString();
}

} // namespace

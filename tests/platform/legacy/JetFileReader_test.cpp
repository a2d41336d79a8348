#include "platform/jet/legacy/JetFileReader.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/TextDecoding.h"
#include "platform/jet/legacy/JetHeader.h"
#include "support/Corpus.h"
#include "support/Errors.h"
#include "support/Files.h"
#include "support/GenuineJet.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

#include <algorithm>
#include <chrono>

using namespace qvnd;
using namespace qvnd::jet::legacy;

namespace {

const QStringList jet4Files = {"testAccess2_2000.mdb", "testAccess2_2002-2003.mdb",
                               "testAccess2.accdb"};
const QString jet3File = "testAccess_V1997.mdb";

// Puts a file's bytes into a folder of its own.
struct JetFile : testing::Test {
    test::TemporaryFolder folder;
    JetFileReader reader{std::chrono::minutes(1)}; // a sanitizer takes seconds for a few pages

    QString put(const QByteArray& bytes) const {
        folder.write("old.mdb", bytes);
        return folder.path("old.mdb");
    }
    void expectDamaged(const QByteArray& bytes) const {
        const QString path = put(bytes);
        try {
            readAll(*reader.Open(path));
            ADD_FAILURE() << "read as if whole";
        } catch (const RunTimeError& failure) {
            EXPECT_EQ(failure.number(), 3343);
            EXPECT_TRUE(QString::fromStdU16String(failure.description()).contains(path));
        }
    }
    static void readAll(const LegacyDatabase& database) {
        for (const QString& name : database.TableNames()) {
            database.Table(name);
        }
    }
    // A limit for files like the one given: what it takes itself now, on this machine, several
    // times over.
    std::chrono::milliseconds enoughFor(const QByteArray& whole) const {
        const auto start = std::chrono::steady_clock::now();
        readAll(*reader.Open(put(whole)));
        const auto took = std::chrono::steady_clock::now() - start;
        return std::max(std::chrono::milliseconds(250),
                        std::chrono::duration_cast<std::chrono::milliseconds>(5 * took));
    }
    // Each mutated file ends with an error of its own or is read; whatever libmdb does, this
    // process goes on. In some it goes round for ever: these are stopped at the limit.
    void expectThatMutatedEndWell(const QByteArray& whole, int pageSize, unsigned seed,
                                  int rounds) const;
};

void JetFile::expectThatMutatedEndWell(const QByteArray& whole, int pageSize, unsigned seed,
                                       int rounds) const {
    QRandomGenerator random(seed);
    const JetFileReader hasty(enoughFor(whole));
    const int pages = static_cast<int>(whole.size()) / pageSize;
    int refused = 0;
    for (int round = 0; round < rounds; ++round) {
        QByteArray bytes = whole;
        const int mutations = 1 + random.bounded(2 * pages);
        for (int i = 0; i < mutations; ++i) {
            // Page heads hold what leads astray: counts, offsets, links.
            const int page = random.bounded(pages);
            const int offset =
                random.bounded(2) == 0 ? random.bounded(64) : random.bounded(pageSize);
            bytes[page * pageSize + offset] = static_cast<char>(random.bounded(256));
        }
        const auto failure = test::errorNumberOf([&] { readAll(*hasty.Open(put(bytes))); });
        EXPECT_TRUE(!failure || *failure == 3343 || *failure == 3078 || *failure == 3051)
            << *failure;
        refused += failure ? 1 : 0;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, rounds);
}

// The genuine files, each test on copies of its own.
struct JetFiles : JetFile {
    void SetUp() override {
        const auto corpus = test::corpusFolder();
        if (!corpus || !std::filesystem::is_directory(*corpus / "jet")) {
            GTEST_SKIP()
                << "no genuine Jet files here (they lie in the folder that QVND_CORPUS names)";
        }
    }
    static QByteArray genuine(const QString& name) {
        QFile file(files::fromPath(*test::corpusFolder() / "jet") + "/" + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QString copy(const QString& name) const { return put(genuine(name)); }

    static QString text(const LegacyTable& table, int row, const char* field) {
        const int position = table.PositionOf(QString(field));
        return position < 0
                   ? "no field"
                   : table.Rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(position)]
                         .TextOrEmpty();
    }
    static int rowOf(const LegacyTable& table, const char* field, const QString& value) {
        for (int row = 0; row < static_cast<int>(table.Rows.size()); ++row) {
            if (text(table, row, field) == value) {
                return row;
            }
        }
        return -1;
    }
};

// A file of few tables, its bytes made by the test.
struct MadeJetFile : JetFile {
    using JetFile::put;
    static QByteArray made(const std::vector<LegacyTable>& tables) {
        return test::GenuineJet(tables).bytes();
    }
    QString put(const std::vector<LegacyTable>& tables) const { return put(made(tables)); }
    static LegacyTable prices() {
        using jet::FieldType;
        using jet::TableDef;
        LegacyTable table;
        table.Name = "价目";
        table.Fields = {TableDef::CreateField(QString("材料"), FieldType::Text),
                        TableDef::CreateField(QString("数量"), FieldType::Long),
                        TableDef::CreateField(QString("单价"), FieldType::Single),
                        TableDef::CreateField(QString("日期"), FieldType::Date),
                        TableDef::CreateField(QString("说明"), FieldType::Memo)};
        table.Rows = {{jet::Value(u"水泥"), jet::Value(std::int32_t{-3}), jet::Value(2.5),
                       jet::Value(QDate(1999, 7, 8)), jet::Value(u"袋装")},
                      {jet::Value(), jet::Value(), jet::Value(), jet::Value(), jet::Value()}};
        return table;
    }
    // With rows for several pages.
    static LegacyTable manyPrices() {
        LegacyTable table = prices();
        const std::vector<jet::Value> row = table.Rows[0];
        table.Rows.assign(300, row);
        return table;
    }
};

TEST_F(JetFile, BeginsWithTheFourBytesOrTheNameOfTheEngine) {
    EXPECT_TRUE(beginsAsJet(put(QByteArray("\0\1\0\0damaged", 11))));
    EXPECT_TRUE(beginsAsJet(put("xxxxStandard Jet DB")));
    EXPECT_FALSE(beginsAsJet(put("Standard Jet DB")));
    EXPECT_FALSE(beginsAsJet(put(QByteArray("\0\1\0\1damaged", 11))));
}

TEST_F(JetFile, HasASoundHeaderWithAKnownNameAndVersionAndThreeWholePages) {
    const auto isSound = [this](int version, qsizetype size, const char* name) {
        QByteArray bytes(size, '\0');
        bytes.replace(0, 19, QByteArray("\0\1\0\0", 4) + name);
        bytes[0x14] = static_cast<char>(version);
        return hasSoundHeader(put(bytes));
    };
    constexpr const char* earlier = "Standard Jet DB";
    EXPECT_TRUE(isSound(0, qsizetype{3} * 2048, earlier));
    EXPECT_FALSE(isSound(0, qsizetype{2} * 2048, earlier));
    EXPECT_FALSE(isSound(0, qsizetype{3} * 2048 + 1, earlier));
    EXPECT_TRUE(isSound(1, qsizetype{3} * 4096, earlier));
    EXPECT_FALSE(isSound(1, qsizetype{2} * 4096, earlier));
    EXPECT_FALSE(isSound(1, qsizetype{3} * 4096 + 2048, earlier));
    EXPECT_TRUE(isSound(6, qsizetype{3} * 4096, "Standard ACE DB"));
    EXPECT_FALSE(isSound(7, qsizetype{3} * 4096, "Standard ACE DB"));
    EXPECT_FALSE(isSound(1, qsizetype{3} * 4096, "Standard xyz DB"));
    QByteArray other(qsizetype{3} * 2048, '\0');
    other.replace(0, 19, QByteArray("\0\1\0\1", 4) + earlier);
    EXPECT_FALSE(hasSoundHeader(put(other)));
    EXPECT_FALSE(hasSoundHeader(put(QByteArray(qsizetype{3} * 4096, '\0'))));
    EXPECT_FALSE(hasSoundHeader(put(QByteArray())));
}

TEST_F(MadeJetFile, IsReadWithItsFieldsAndRows) {
    const auto database = reader.Open(put({prices()}));
    EXPECT_EQ(database->TableNames(), QStringList{"价目"});
    const LegacyTable table = database->Table("价目");
    ASSERT_EQ(table.Fields.size(), 5U);
    ASSERT_EQ(table.Rows.size(), 2U);
    EXPECT_EQ(table.Rows[0][0].ToText(), "水泥");
    EXPECT_EQ(table.Rows[0][1].ToText(), "-3");
    EXPECT_EQ(table.Rows[0][2].ToText(), "2.5");
    EXPECT_EQ(table.Rows[0][3].ToText(), "1999-7-8");
    EXPECT_EQ(table.Rows[0][4].ToText(), "袋装");
    EXPECT_TRUE(table.Rows[1][0].IsNull());
    EXPECT_TRUE(table.Rows[1][3].IsNull());
    EXPECT_TRUE(table.Rows[1][4].IsNull());
}

TEST_F(MadeJetFile, WithMoreRowsThanAPageHoldsIsReadWhole) {
    EXPECT_EQ(reader.Open(put({manyPrices()}))->Table("价目").Rows.size(), 300U);
}

TEST_F(MadeJetFile, HasDatesFromTheYear100To9999AndNoneBeyond) {
    LegacyTable table = prices();
    const std::vector<jet::Value> row = table.Rows[0];
    const std::vector<QDate> dates{
        {99, 12, 31}, {100, 1, 1}, {9999, 12, 31}, {10000, 1, 1}, {10000, 1, 2}};
    table.Rows.clear();
    for (const QDate date : dates) {
        table.Rows.push_back(row);
        table.Rows.back()[3] = jet::Value(date);
    }
    const LegacyTable read = reader.Open(put({table}))->Table("价目");
    ASSERT_EQ(read.Rows.size(), 5U);
    EXPECT_TRUE(read.Rows[0][3].IsNull());
    EXPECT_EQ(read.Rows[1][3].ToDate().date(), dates[1]);
    EXPECT_EQ(read.Rows[2][3].ToDate().date(), dates[2]);
    EXPECT_TRUE(read.Rows[3][3].IsNull());
    EXPECT_TRUE(read.Rows[4][3].IsNull());
}

TEST_F(MadeJetFile, ThatThereWasNoTimeToReadIsNotCalledDamaged) {
    const JetFileReader hasty(std::chrono::milliseconds(0));
    EXPECT_EQ(test::errorNumberOf([&] { hasty.Open(put({prices()})); }), 3051);
}

TEST_F(MadeJetFile, WithARowLessThanItsTableCountsIsDamaged) {
    constexpr qsizetype countOfRows = 3 * 2048 + 12; // in the page of the first table's definition
    QByteArray bytes = made({prices()});
    ASSERT_EQ(bytes[countOfRows], 2);
    bytes[countOfRows] = 3;
    expectDamaged(bytes);
}

TEST_F(MadeJetFile, HasEmptyMemosThatAreNotNull) {
    LegacyTable table = prices();
    table.Rows[0][4] = jet::Value(QString(""));
    const LegacyTable read = reader.Open(put({table}))->Table("价目");
    EXPECT_EQ(read.Rows[0][4], jet::Value(QString("")));
    EXPECT_TRUE(read.Rows[1][4].IsNull());
}

TEST_F(MadeJetFile, NamesTheTablesOfTheUserAlone) {
    constexpr std::int32_t ofTable = 1;
    constexpr std::int32_t ofQuery = 5;
    constexpr std::int32_t ofTheSystem = -2147483647 - 1;
    constexpr std::int32_t hidden = 2;
    const QByteArray bytes = test::GenuineJet({prices()}, {{"MSysACEs", ofTable, ofTheSystem},
                                                           {"价目查询", ofQuery, 0},
                                                           {"MSysIMEX", ofTable, hidden}})
                                 .bytes();
    EXPECT_EQ(reader.Open(put(bytes))->TableNames(), QStringList{"价目"});
}

TEST_F(MadeJetFile, WithAMemoThatClaims64MegabytesIsDamaged) {
    QByteArray bytes = made({prices()});
    const qsizetype length = bytes.indexOf(files::encodeGbk("袋装")) - 12;
    ASSERT_GT(length, 0);
    bytes.replace(length, 4, QByteArray("\xFF\xFF\xFF\x83", 4));
    EXPECT_EQ(reader.Open(put(bytes))->Table("价目").Rows[0][4].ToText(), "袋装");
    bytes.replace(length, 4, QByteArray("\x00\x00\x00\x84", 4));
    expectDamaged(bytes);
}

TEST_F(MadeJetFile, WithAMemoInARowThatItsPageLacksIsDamaged) {
    QByteArray bytes = made({prices()});
    const qsizetype length = bytes.indexOf(files::encodeGbk("袋装")) - 12;
    ASSERT_GT(length, 0);
    bytes.replace(length, 8, QByteArray("\x04\x00\x00\x40\xC8\x03\x00\x00", 8));
    expectDamaged(bytes);
}

TEST_F(MadeJetFile, ThatIsNotThereCannotBeRead) {
    const QString path = folder.path("none.mdb");
    const auto description = test::descriptionOf([&] { reader.Open(path); });
    EXPECT_EQ(QString::fromStdU16String(description), "无法读取旧版数据库『" + path + "』。");
}

TEST_F(MadeJetFile, ATableThatItLacksIsError3078) {
    const auto database = reader.Open(put({prices()}));
    EXPECT_EQ(test::errorNumberOf([&] { database->Table("none"); }), 3078);
}

TEST_F(MadeJetFile, ATableIsFoundWithoutRegardToCase) {
    LegacyTable table = prices();
    table.Name = "Tab价目";
    const auto database = reader.Open(put({table}));
    EXPECT_EQ(database->Table("tAB价目").Rows.size(), 2U);
}

TEST_F(MadeJetFile, IsLeftAsItWasAndNothingBesideIt) {
    const QByteArray bytes = made({prices()});
    reader.Open(put(bytes))->Table("价目");
    EXPECT_EQ(folder.read("old.mdb"), bytes);
    EXPECT_EQ(folder.names(), QStringList{"old.mdb"});
}

TEST_F(MadeJetFile, IsRecognizedAndFilesOfOtherKindsAreNot) {
    EXPECT_TRUE(reader.Recognizes(put({prices()})));
    EXPECT_FALSE(reader.Recognizes(put(QByteArray("SQLite format 3"))));
    EXPECT_FALSE(reader.Recognizes(put(QByteArray())));
    EXPECT_FALSE(reader.Recognizes(folder.path("none.mdb")));
}

TEST_F(MadeJetFile, ThatIsCutIsDamaged) {
    const QByteArray whole = made({manyPrices()});
    for (const qsizetype length :
         {qsizetype{4}, qsizetype{100}, qsizetype{2048}, whole.size() - 2048, whole.size() - 1}) {
        SCOPED_TRACE(length);
        expectDamaged(whole.left(length));
    }
}

TEST_F(MadeJetFile, WithoutItsCatalogueIsDamaged) {
    QByteArray bytes = made({prices()});
    bytes.replace(2048 * 2, 2048, QByteArray(2048, '\0'));
    expectDamaged(bytes);
}

TEST_F(MadeJetFile, OfAnUnknownVersionIsDamaged) {
    QByteArray bytes = made({prices()});
    bytes[0x14] = 42;
    expectDamaged(bytes);
}

TEST_F(MadeJetFile, ThatIsMutatedNeverCrashesOrHangsTheProgram) {
    // Few rows: under a sanitizer each takes long.
    expectThatMutatedEndWell(made({prices(), prices()}), 2048, 20260105, 60);
}

TEST_F(JetFiles, EveryGenuineFileIsRecognizedAndItsUserTablesAreNamed) {
    EXPECT_TRUE(reader.Recognizes(copy(jet3File)));
    EXPECT_EQ(reader.Open(copy(jet3File))->TableNames(),
              QStringList({"Table1", "Table2", "Table3", "Table4"}));
    for (const QString& name : jet4Files) {
        EXPECT_TRUE(reader.Recognizes(copy(name)));
        EXPECT_EQ(reader.Open(copy(name))->TableNames(), QStringList({"Table1", "Table2"}));
    }
    EXPECT_EQ(reader.Open(copy("testACCESS.mdb"))->TableNames(),
              QStringList({"Titles", "Tracks", "Menus", "Batch"}));
}

TEST_F(JetFiles, FieldsHaveTheirNamesAndTypesInOrder) {
    const LegacyTable table = reader.Open(copy("testACCESS.mdb"))->Table("Tracks");
    ASSERT_EQ(table.Fields.size(), 3U);
    EXPECT_EQ(table.Fields[0].Name, "TitleID");
    EXPECT_EQ(table.Fields[0].Type, jet::FieldType::Long);
    EXPECT_EQ(table.Fields[2].Name, "TrackName");
    EXPECT_EQ(table.Fields[2].Type, jet::FieldType::Memo);
    EXPECT_TRUE(table.Rows.empty());
    EXPECT_EQ(table.PositionOf(u"trackid"), 1);
    EXPECT_EQ(table.PositionOf(u"none"), -1);
}

TEST_F(JetFiles, RowsOfVersionFourWithMemosDatesAndChineseText) {
    for (const QString& name : jet4Files) {
        SCOPED_TRACE(name.toStdString());
        const LegacyTable table = reader.Open(copy(name))->Table("table1");
        ASSERT_EQ(table.Rows.size(), 2U);
        const int first = rowOf(table, "ID", "1");
        const int second = rowOf(table, "ID", "2");
        ASSERT_TRUE(first >= 0 && second >= 0);
        EXPECT_EQ(text(table, first, "ShortTextField"), "the quick");
        EXPECT_EQ(text(table, second, "ShortTextField"), "普林斯顿大学");
        EXPECT_EQ(text(table, first, "NumberField"), "3");
        EXPECT_EQ(text(table, first, "CurrencyField"), "6.23");
        EXPECT_EQ(text(table, first, "DateField"), "2015-6-24");
        EXPECT_EQ(text(table, second, "DateField"), "");
        EXPECT_EQ(text(table, first, "PlainTextMemo"), "red and brown");
        EXPECT_EQ(text(table, first, "RichTextMemo"), "<div><strong>fox</strong> jumped</div>");
        EXPECT_TRUE(text(table, first, "RichTextField").contains("over the <strong>bold"));
        EXPECT_EQ(text(table, second, "RichTextField"), "");
    }
}

TEST_F(JetFiles, RowsOfVersionThreeInTheOrderOfTheFile) {
    const LegacyTable table = reader.Open(copy(jet3File))->Table("Table1");
    ASSERT_EQ(table.Rows.size(), 2U);
    EXPECT_EQ(text(table, 0, "A"), "a");
    EXPECT_EQ(text(table, 1, "A"), "abcdefg");
    EXPECT_EQ(text(table, 1, "B"), "hijklmnop");
    EXPECT_EQ(text(table, 1, "C"), "2");
    EXPECT_EQ(text(table, 1, "D"), "222");
    EXPECT_EQ(text(table, 1, "E"), "333333333");
    EXPECT_NEAR(table.Rows[1][5].ToDouble(), 444.555, 0.001);
    EXPECT_EQ(text(table, 1, "G"), "1974-9-21");
    EXPECT_EQ(text(table, 1, "H"), "3.5");
    EXPECT_EQ(text(table, 0, "I"), "0");
    EXPECT_EQ(text(table, 1, "I"), "-1");
}

TEST_F(JetFiles, GbkBytesUnderTheWesternCodePageAreChineseTextAndNames) {
    QByteArray bytes = genuine(jet3File);
    bytes.replace("abcdefg", files::encodeGbk("工程甲") + "7");
    bytes.replace("hijklmnop", files::encodeGbk("施工部署") + "!");
    bytes.replace("Table1", files::encodeGbk("标书表"));
    const auto database = reader.Open(put(bytes));
    EXPECT_TRUE(database->TableNames().contains("标书表"));
    const LegacyTable table = database->Table("标书表");
    EXPECT_EQ(table.Name, "标书表");
    EXPECT_EQ(text(table, 1, "A"), "工程甲7");
    EXPECT_EQ(text(table, 1, "B"), "施工部署!");
}

TEST_F(JetFiles, ReadingLeavesTheFileAsItWasAndNothingBesideIt) {
    const QString path = copy("testAccess2_2000.mdb");
    reader.Open(path)->Table("Table1");
    EXPECT_EQ(folder.read("old.mdb"), genuine("testAccess2_2000.mdb"));
    EXPECT_EQ(folder.names(), QStringList{"old.mdb"});
}

TEST_F(JetFiles, ACutOneIsDamaged) {
    const QByteArray whole = genuine(jet3File);
    for (const qsizetype length : {4, 100, 2048, 6144, 2048 * 20 + 1}) {
        SCOPED_TRACE(length);
        expectDamaged(whole.left(length));
    }
    expectDamaged(whole.left(2048 * 12));
}

TEST_F(JetFiles, OneWithoutItsCatalogueIsDamaged) {
    QByteArray bytes = genuine("testAccess2_2000.mdb");
    bytes.replace(4096 * 2, 4096, QByteArray(4096, '\0'));
    expectDamaged(bytes);
}

TEST_F(JetFiles, MutatedOnesNeverCrashOrHangTheProgram) {
    expectThatMutatedEndWell(genuine(jet3File), 2048, 20260103, 30);
    expectThatMutatedEndWell(genuine(jet4Files[0]), 4096, 20260104, 30);
}

} // namespace

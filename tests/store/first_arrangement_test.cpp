#include "support/FirstArrangementFile.h"
#include "support/JetStore.h"
#include "support/PlainSqlite.h"
#include "support/TracedProcess.h"

#include <QFile>

#include <thread>

namespace qvnd::store {

using test::PlainSqlite;

namespace {

// What a file holds, read without our store: the catalogue, and the rows of every table by its
// number, in their order.
struct Contents {
    QStringList catalogue;
    QMap<QString, QStringList> rows;

    friend bool operator==(const Contents&, const Contents&) = default;
};

QStringList catalogueOf(PlainSqlite& file) {
    QStringList lines;
    for (const char* table :
         {"jet_info", "jet_tables", "jet_fields", "jet_indexes", "jet_index_fields"}) {
        lines << table
              << file.rows(u"select * from %1 order by rowid"_qs.arg(QLatin1String(table)));
    }
    return lines;
}

QString quoted(QString name) { return u'"' + name.replace(u'"', u"\"\""_qs) + u'"'; }

QStringList fieldsOf(PlainSqlite& file, const QString& table) {
    return file.rows(
        u"select name from jet_fields where table_id=%1 order by position"_qs.arg(table));
}

Contents firstContents(PlainSqlite& file) {
    Contents contents{catalogueOf(file), {}};
    for (const QString& id : file.rows(u"select id from jet_tables"_qs)) {
        QStringList columns;
        for (qsizetype i = 0; i < fieldsOf(file, id).size(); ++i) {
            columns << u"f%1"_qs.arg(i);
        }
        contents.rows[id] =
            file.rows(u"select %1 from t%2 order by rid"_qs.arg(columns.join(u','), id));
    }
    return contents;
}

Contents presentContents(PlainSqlite& file) {
    Contents contents{catalogueOf(file), {}};
    for (const QString& id : file.rows(u"select id from jet_tables"_qs)) {
        QString name = file.rows(u"select name from jet_tables where id="_qs + id).front();
        if (name.startsWith(u"sqlite_"_qs) || name.startsWith(u"jet_"_qs)) {
            name.prepend(u'.');
        }
        QStringList columns;
        for (const QString& field : fieldsOf(file, id)) {
            columns << quoted(field);
        }
        contents.rows[id] =
            file.rows(u"select %1 from %2 order by rowid"_qs.arg(columns.join(u','), quoted(name)));
    }
    return contents;
}

} // namespace

class FirstArrangement : public test::JetStore, public ::testing::WithParamInterface<const char*> {
protected:
    FirstArrangement() : path_(pathOf(u"old.mdb"_qs)) { lay(path_); }

    static void lay(const QString& path) {
        ASSERT_TRUE(test::layFirstArrangement(QString::fromUtf8(GetParam()), path));
    }
    Contents first() const {
        PlainSqlite file(path_);
        return firstContents(file);
    }
    Contents present() const {
        PlainSqlite file(path_);
        EXPECT_TRUE(file.isSound());
        EXPECT_EQ(file.rows(u"pragma user_version"_qs), QStringList{u"2"_qs});
        EXPECT_EQ(file.rows(u"select count(*) from sqlite_schema where sql like '%collate jet%' or "
                            "name glob 'jet_first*'"_qs),
                  QStringList{u"0"_qs});
        return presentContents(file);
    }

    QString path_;
};

TEST_P(FirstArrangement, IsBroughtOverAtOpeningWithEveryRowDefinitionAndNumber) {
    const Contents before = first();
    ASSERT_GT(before.rows.size(), 0);
    open(u"old.mdb"_qs)->Close();
    EXPECT_TRUE(present() == before);
}

TEST_P(FirstArrangement, IsReadAndWrittenLikeAnyOtherBehindIt) {
    const auto db = open(u"old.mdb"_qs);
    for (const QString& name : db->TableDefs().Names()) {
        const auto rows = db->OpenRecordset(name, jet::OpenAs::Table);
        const int before = rows->RecordCount();
        rows->AddNew();
        if (db->TableDefs()[name].FindField(u"Key") != nullptr) {
            rows->Set(u"Key", u"另一个"_qs);
        }
        rows->Update();
        rows->Requery();
        EXPECT_EQ(rows->RecordCount(), before + 1) << name.toStdString();
    }
    db->Close();
    EXPECT_TRUE(PlainSqlite(path_).isSound());
}

TEST_P(FirstArrangement, OfWhichABringingOverIsKilledIsWholeAtTheNextOpening) {
    const Contents before = first();
    const auto opening = [this] {
        jet::DBEngine engine;
        engine.Workspaces(0).OpenDatabase(path_)->Close();
    };
    const int changes = test::TracedProcess::run(opening, 0);
    if (changes < 0) {
        GTEST_SKIP() << "processes cannot be traced here";
    }
    ASSERT_GT(changes, 10);
    for (int deadly = 1; deadly <= changes; ++deadly) {
        lay(path_);
        test::TracedProcess::run(opening, deadly);
        open(u"old.mdb"_qs)->Close();
        ASSERT_TRUE(present() == before) << "killed at change " << deadly;
        ASSERT_FALSE(QFile::exists(path_ + u"-journal"_qs)) << "killed at change " << deadly;
    }
}

TEST_P(FirstArrangement, OpenedByTwoAtATimeIsBroughtOverOnce) {
    const Contents before = first();
    const auto opening = [this] {
        jet::DBEngine engine;
        EXPECT_EQ(test::errorOf([&] { engine.Workspaces(0).OpenDatabase(path_)->Close(); }), 0);
    };
    std::thread other(opening);
    opening();
    other.join();
    EXPECT_TRUE(present() == before);
}

INSTANTIATE_TEST_SUITE_P(Files, FirstArrangement,
                         testing::Values("Db_UsTemplate", "Db_Template", "Db_BidSet", "plan",
                                         "template", "odd_names", "odd_plan"));

class OneFirstArrangement : public test::JetStore {
protected:
    std::unique_ptr<jet::Database> opened(const QString& name) {
        EXPECT_TRUE(test::layFirstArrangement(name, pathOf(u"old.mdb"_qs)));
        return open(u"old.mdb"_qs);
    }
};

TEST_F(OneFirstArrangement, WithFullWidthLettersInAUniqueIndexStillRefusesTheirOtherCase) {
    const auto db = opened(u"odd_names"_qs);
    EXPECT_EQ(test::errorOf([&] { addRows(*db, u"ＢＩＭ工程"_qs, {u"ｂｉｍ工程.1"_qs}); }), 3022);
    EXPECT_EQ(rowsOf(*db, u"select 名称 from ＢＩＭ工程 where Key='ｂｉｍ工程.1'"_qs),
              QStringList{u"Ａ区"_qs});
}

TEST_F(OneFirstArrangement, InWhichAPlanIsNamedLikeAnIndexKeepsBoth) {
    const auto db = opened(u"odd_names"_qs);
    EXPECT_EQ(rowsOf(*db, u"select Key from [t6_0] order by ID"_qs),
              (QStringList{u"t6_0"_qs, u"t6_0.1"_qs}));
    EXPECT_EQ(test::errorOf([&] { addRows(*db, u"t6_0"_qs, {u"t6_0.1"_qs}); }), 3022);
    EXPECT_EQ(db->TableDefs()[u"ＢＩＭ工程"_qs].Indexes.size(), 2U);
}

// The table of this name is made while that index still stands.
TEST_F(OneFirstArrangement, InWhichAPlanIsNamedLikeAnIndexOfALaterTableKeepsBoth) {
    const QString path = pathOf(u"old.mdb"_qs);
    ASSERT_TRUE(test::layFirstArrangement(u"odd_names"_qs, path));
    jet::Connection(path, jet::Connection::Mode::existing)
        .Run("UPDATE jet_tables SET name='t8_0' WHERE id=6");
    const auto db = open(u"old.mdb"_qs);
    EXPECT_EQ(rowsOf(*db, u"select 名称 from [t8_0] where Key='ｂｉｍ工程.1'"_qs),
              QStringList{u"Ａ区"_qs});
    EXPECT_EQ(rowsOf(*db, u"select Key from [t6_0] order by ID"_qs),
              (QStringList{u"t6_0"_qs, u"t6_0.1"_qs}));
    EXPECT_EQ(test::errorOf([&] { addRows(*db, u"t8_0"_qs, {u"ｂｉｍ工程.1"_qs}); }), 3022);
}

TEST_F(OneFirstArrangement, InWhichNumbersAreMissingKeepsEveryRowInItsOrder) {
    const auto db = opened(u"null_number"_qs);
    EXPECT_EQ(rowsOf(*db, u"select Key,ID from 甲 order by ID"_qs),
              (QStringList{u"甲|1"_qs, u"甲.1.1|2"_qs, u"甲.1|3"_qs, u"甲.2|4"_qs}));
}

TEST_F(OneFirstArrangement, InWhichNumbersAreMissingGivesNoNumberAgain) {
    const auto db = opened(u"null_number"_qs);
    addRows(*db, u"甲"_qs, {u"甲.3"_qs});
    EXPECT_EQ(rowsOf(*db, u"select ID from 甲 where Key='甲.3'"_qs), QStringList{u"5"_qs});
}

TEST_F(OneFirstArrangement, GivesTheNumberOfARowThatHasGoneToNoOther) {
    const QString path = pathOf(u"old.mdb"_qs);
    ASSERT_TRUE(test::layFirstArrangement(u"odd_names"_qs, path));
    jet::Connection(path, jet::Connection::Mode::existing)
        .Run("UPDATE jet_tables SET last_number=40 WHERE name='ＢＩＭ工程'");
    const auto db = open(u"old.mdb"_qs);
    addRows(*db, u"ＢＩＭ工程"_qs, {u"ＢＩＭ工程.9"_qs});
    EXPECT_EQ(rowsOf(*db, u"select ID from ＢＩＭ工程 where Key='ＢＩＭ工程.9'"_qs),
              QStringList{u"41"_qs});
}

TEST(FirstArrangementFile, OfAnotherVersionIsRefusedAndStaysAsItIs) {
    const QTemporaryDir folder;
    const QString path = QDir(folder.path()).filePath(u"a.mdb"_qs);
    ASSERT_TRUE(test::layFirstArrangement(u"plan"_qs, path));
    jet::Connection(path, jet::Connection::Mode::existing).Run("PRAGMA user_version=3");
    jet::DBEngine engine;
    EXPECT_EQ(test::errorOf([&] { engine.Workspaces(0).OpenDatabase(path); }), 3343);
    EXPECT_EQ(PlainSqlite(path).rows(u"select count(*) from t18"_qs), QStringList{u"4"_qs});
}

} // namespace qvnd::store

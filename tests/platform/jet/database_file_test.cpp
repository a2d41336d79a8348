#include "platform/jet/file/Connection.h"
#include "platform/jet/file/Image.h"
#include "support/JetStore.h"
#include "support/RestrictedProcess.h"

#include <QDir>
#include <QFile>

#include <sqlite3.h>

namespace qvnd::jet {

using test::errorOf;

class DatabaseFiles : public test::JetStore {
protected:
    QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files, QDir::Name); }

    void write(const QString& name, const QByteArray& bytes) {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
};

TEST_F(DatabaseFiles, TellTheNameTheyWereOpenedUnder) {
    create(u"a.mdb"_qs)->Close();
    EXPECT_EQ(open(u"a.mdb"_qs)->Name(), pathOf(u"a.mdb"_qs));
}

TEST_F(DatabaseFiles, AMissingFileIs3024) {
    EXPECT_EQ(errorOf([&] { open(u"a.mdb"_qs); }), 3024);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(DatabaseFiles, AMissingFolderIs3044) {
    EXPECT_EQ(errorOf([&] { open(u"no/a.mdb"_qs); }), 3044);
    EXPECT_EQ(errorOf([&] { create(u"no/a.mdb"_qs); }), 3044);
}

TEST_F(DatabaseFiles, AFolderIsNoFile) {
    QDir(folder_.path()).mkdir(u"a.mdb"_qs);
    EXPECT_EQ(errorOf([&] { open(u"a.mdb"_qs); }), 3051);
}

TEST_F(DatabaseFiles, OneThatCanOnlyBeReadIsSaidToBeSo) {
    create(u"a.mdb"_qs)->Close();
    QFile::setPermissions(pathOf(u"a.mdb"_qs), QFile::Permissions(0x4444));
    const auto answer = test::RestrictedProcess::withoutPrivileges(
        {folder_.path().toStdString()}, [&]() -> std::optional<long> {
            try {
                open(u"a.mdb"_qs);
            } catch (const RunTimeError& failure) {
                const QString words = QString::fromStdU16String(failure.description());
                return words.contains(u"它只能读，不能写"_qs) ? failure.number() : 0;
            }
            return 0;
        });
    if (!answer) {
        GTEST_SKIP() << "rights cannot be given up here";
    }
    EXPECT_EQ(*answer, 3051);
}

TEST_F(DatabaseFiles, AFileOfAnotherFormatIs3343AndStaysAsItIs) {
    write(u"a.mdb"_qs, QByteArray("\x00\x01\x00\x00Standard Jet DB\x00", 20));
    write(u"b.mdb"_qs, QByteArray());
    write(u"c.mdb"_qs, QByteArray("SQLite format 3\0 and nothing of the kind behind", 47));
    for (const QString& name : {u"a.mdb"_qs, u"b.mdb"_qs, u"c.mdb"_qs}) {
        EXPECT_EQ(errorOf([&] { open(name); }), 3343) << name.toStdString();
    }
    EXPECT_EQ(QFileInfo(pathOf(u"b.mdb"_qs)).size(), 0);
}

TEST_F(DatabaseFiles, OneOfSqliteThatIsNotOursIs3343) {
    const auto db = create(u"a.mdb"_qs);
    db->Close();
    QFile file(pathOf(u"a.mdb"_qs));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(68); // the application's mark
    file.write("abcd");
    file.close();
    EXPECT_EQ(errorOf([&] { open(u"a.mdb"_qs); }), 3343);
}

TEST_F(DatabaseFiles, DamageBehindTheHeaderIs3343) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*db, u"T"_qs, {u"T"_qs});
    db->Close();
    QFile file(pathOf(u"a.mdb"_qs));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    constexpr qint64 page = 4096;
    ASSERT_GT(file.size(), page);
    ASSERT_TRUE(file.seek(page));
    const QByteArray damage(file.size() - page, '\xff');
    ASSERT_EQ(file.write(damage), damage.size());
    file.close();
    EXPECT_EQ(errorOf([&] { rowsOf(*open(u"a.mdb"_qs), u"select Key from T"_qs); }), 3343);
}

TEST_F(DatabaseFiles, CreatingOverAnExistingFileIs3204AndLeavesItAsItIs) {
    write(u"a.mdb"_qs, "mine");
    EXPECT_EQ(errorOf([&] { create(u"a.mdb"_qs); }), 3204);
    EXPECT_EQ(QFileInfo(pathOf(u"a.mdb"_qs)).size(), 4);
}

TEST_F(DatabaseFiles, WhatAKilledCreationLeftDoesNotStandInTheWay) {
    write(u"a.mdb.new"_qs, "half");
    create(u"a.mdb"_qs)->Close();
    EXPECT_EQ(files(), QStringList{u"a.mdb"_qs});
}

TEST_F(DatabaseFiles, AreAloneInTheirFolderBetweenCommandsAndWhenClosed) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*db, u"T"_qs, {u"T"_qs, u"T.1"_qs, u"T.2"_qs});
    EXPECT_EQ(files(), QStringList{u"a.mdb"_qs});
    db->Close();
    EXPECT_EQ(files(), QStringList{u"a.mdb"_qs});
}

TEST_F(DatabaseFiles, AreNotWrittenByOpeningReadingAndClosing) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*db, u"T"_qs, {u"T"_qs});
    db->Close();
    QFile file(pathOf(u"a.mdb"_qs));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    const auto again = open(u"a.mdb"_qs);
    EXPECT_EQ(rowsOf(*again, u"select Key from T"_qs), QStringList{u"T"_qs});
    again->Close();
    file.seek(0);
    EXPECT_EQ(file.readAll(), before);
}

// SQLite makes the journal before it writes to it, and plays back none without a header.
TEST_F(DatabaseFiles, AJournalThatHoldsNothingGoesWhenTheyAreOpenedAndTheyStayAsTheyAre) {
    create(u"a.mdb"_qs)->Close();
    QFile file(pathOf(u"a.mdb"_qs));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    for (const QByteArray& journal : {QByteArray(), QByteArray(512, '\0')}) {
        write(u"a.mdb-journal"_qs, journal);
        open(u"a.mdb"_qs)->Close();
        EXPECT_EQ(files(), QStringList{u"a.mdb"_qs});
        file.seek(0);
        EXPECT_EQ(file.readAll(), before);
    }
}

// It would be played back into what takes its place.
TEST_F(DatabaseFiles, TheJournalOfAMissingOneGoesBeforeAnImageIsPutThere) {
    create(u"a.mdb"_qs)->Close();
    const QByteArray image = imageOf(pathOf(u"a.mdb"_qs));
    ASSERT_TRUE(QFile::remove(pathOf(u"a.mdb"_qs)));
    write(u"a.mdb-journal"_qs, "pages of the one before");
    putImage(pathOf(u"a.mdb"_qs), image);
    EXPECT_EQ(files(), QStringList{u"a.mdb"_qs});
    EXPECT_EQ(imageOf(pathOf(u"a.mdb"_qs)), image);
}

TEST_F(DatabaseFiles, ACopyMadeWhileTheDatabaseIsOpenIsComplete) {
    const auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*db, u"T"_qs, {u"T"_qs, u"T.1"_qs});
    ASSERT_TRUE(QFile::copy(pathOf(u"a.mdb"_qs), pathOf(u"b.mdb"_qs)));
    EXPECT_EQ(rowsOf(*open(u"b.mdb"_qs), u"select Key from T"_qs).size(), 2);
}

TEST_F(DatabaseFiles, HandlesOnOneFileSeeEachOthersRowsAtOnce) {
    const auto first = create(u"a.mdb"_qs);
    const auto second = open(u"./a.mdb"_qs);
    first->TableDefs().Append(outlineTable(u"T"_qs));
    addRows(*first, u"T"_qs, {u"T"_qs});
    EXPECT_EQ(rowsOf(*second, u"select Key from T"_qs), QStringList{u"T"_qs});
    first->Close();
    addRows(*second, u"T"_qs, {u"T.1"_qs});
    EXPECT_EQ(rowsOf(*second, u"select Key from T"_qs).size(), 2);
}

TEST_F(DatabaseFiles, AFileDeletedUnderAnOpenHandleMayBeMadeAnew) {
    const auto old = create(u"a.mdb"_qs);
    old->TableDefs().Append(outlineTable(u"T"_qs));
    ASSERT_TRUE(QFile::remove(pathOf(u"a.mdb"_qs)));
    const auto fresh = create(u"a.mdb"_qs);
    EXPECT_EQ(fresh->TableDefs().Count(), 0);
    EXPECT_EQ(open(u"a.mdb"_qs)->TableDefs().Count(), 0);
}

TEST_F(DatabaseFiles, AFileReplacedUnderAnOpenHandleIsOpenedAnew) {
    const auto old = create(u"a.mdb"_qs);
    old->TableDefs().Append(outlineTable(u"T"_qs));
    create(u"b.mdb"_qs)->Close();
    ASSERT_TRUE(QFile::remove(pathOf(u"a.mdb"_qs)));
    ASSERT_TRUE(QFile::rename(pathOf(u"b.mdb"_qs), pathOf(u"a.mdb"_qs)));
    EXPECT_EQ(open(u"a.mdb"_qs)->TableDefs().Count(), 0);
}

TEST_F(DatabaseFiles, AClosedHandleAnswers3420AndMayBeClosedAgain) {
    const auto db = create(u"a.mdb"_qs);
    db->Close();
    db->Close();
    EXPECT_FALSE(db->IsOpen());
    EXPECT_EQ(errorOf([&] { (void)db->Name(); }), 3420);
    EXPECT_EQ(errorOf([&] { db->Execute(u"drop table x"_qs); }), 3420);
    EXPECT_EQ(errorOf([&] { db->Execute(u"no statement"_qs); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)db->OpenRecordset(u"x"_qs); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)db->OpenRecordset(u"select"_qs); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)db->ForeignChanges(); }), 3420);
    EXPECT_EQ(errorOf([&] { (void)db->TableDefs().Count(); }), 3420);
}

TEST_F(DatabaseFiles, AHandleThatGoesClosesWhatWasOpenedThroughIt) {
    auto db = create(u"a.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    const TableDefs tables = db->TableDefs();
    const auto rows = db->OpenRecordset(u"T"_qs);
    db.reset();
    EXPECT_EQ(errorOf([&] { (void)tables.Count(); }), 3420);
    EXPECT_EQ(errorOf([&] { rows->AddNew(); }), 3420);
}

TEST_F(DatabaseFiles, PathsMayHaveAnyCharacter) {
    QDir(folder_.path()).mkdir(u"方案 'x' %41?#"_qs);
    const auto db = create(u"方案 'x' %41?#/库.mdb"_qs);
    db->TableDefs().Append(outlineTable(u"T"_qs));
    db->Close();
    EXPECT_TRUE(open(u"方案 'x' %41?#/库.mdb"_qs)->TableDefs().Contains(u"T"_qs));
}

TEST_F(DatabaseFiles, TheEngineHasOneWorkspace) {
    EXPECT_EQ(&engine_.Workspaces(0), workspace_);
    EXPECT_EQ(errorOf([&] { engine_.Workspaces(1); }), 3265);
}

TEST_F(DatabaseFiles, AreWrittenThroughToTheDiskUnlessTheirJournalIsOnlyEmptied) {
    create(u"a.mdb"_qs)->Close();
    const auto modes = [this](Connection::Journal journal) {
        Connection connection(pathOf(u"a.mdb"_qs), Connection::Mode::existing, journal);
        connection.Run("PRAGMA user_version=1");
        return connection.NumberOf("PRAGMA synchronous") * 10 + files().size();
    };
    EXPECT_EQ(modes(Connection::Journal::emptied), 12);
    EXPECT_EQ(modes(Connection::Journal::removed), 21);
}

// Each takes memory for as long as its file is open, and the texts of queries never end.
TEST_F(DatabaseFiles, KeepNoMoreThanSixtyFourStatementsReady) {
    create(u"a.mdb"_qs)->Close();
    Connection connection(pathOf(u"a.mdb"_qs), Connection::Mode::existing);
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(connection.NumberOf("SELECT " + QByteArray::number(i)), i);
    }
    int ready = 0;
    sqlite3_stmt* statement = nullptr;
    while ((statement = sqlite3_next_stmt(connection.Handle(), statement)) != nullptr) {
        ++ready;
    }
    EXPECT_GT(ready, 0);
    EXPECT_LE(ready, 64);
}

TEST(DatabaseImages, TheCounterOfChangesIsTheSeventhNumberOfTheHeader) {
    QByteArray image(24, 'x');
    image += QByteArray("\1\2\3\4", 4);
    EXPECT_EQ(changeCounterIn(image), 0x01020304U);
    image.chop(1);
    EXPECT_EQ(changeCounterIn(image), 0U);
}

TEST(DatabaseImages, HoldTheSameWhateverTheirCountersAre) {
    const auto isSame = [](qsizetype size, qsizetype changed) {
        const QByteArray one(size, 'x');
        QByteArray other = one;
        other[changed] = 'y';
        return holdTheSame(one, other);
    };
    for (const qsizetype counter : {24, 27, 40, 43, 92, 95, 96, 99}) {
        EXPECT_TRUE(isSame(100, counter)) << counter;
    }
    for (const qsizetype content : {23, 28, 39, 44, 91, 100}) {
        EXPECT_FALSE(isSame(101, content)) << content;
    }
    EXPECT_FALSE(isSame(99, 24)) << "without a whole header";
}

// Pages of 512 bytes, the second of which lists free ones: the next list, how many, and these.
TEST(DatabaseImages, WhatStandsInFreePagesDoesNotCount) {
    const auto image = [](const QByteArray& list) {
        QByteArray bytes(qsizetype{5} * 512, 'x');
        bytes.replace(16, 2, QByteArray("\2\0", 2));
        bytes.replace(32, 4, QByteArray("\0\0\0\2", 4));
        return bytes.replace(512, list.size(), list);
    };
    const auto counts = [&](const QByteArray& list, int page, qsizetype at) {
        const QByteArray one = image(list);
        QByteArray other = one;
        other[(page - 1) * 512 + at] = 'y';
        return digestOf(one) != digestOf(other);
    };
    const QByteArray three("\0\0\0\0\0\0\0\1\0\0\0\3", 12);
    EXPECT_TRUE(counts(three, 2, 511));
    EXPECT_FALSE(counts(three, 3, 0));
    EXPECT_FALSE(counts(three, 3, 511));
    EXPECT_TRUE(counts(three, 4, 0));
    const QByteArray threeAndFive("\0\0\0\0\0\0\0\2\0\0\0\3\0\0\0\5", 16);
    EXPECT_FALSE(counts(threeAndFive, 3, 0));
    EXPECT_TRUE(counts(threeAndFive, 4, 0));
    EXPECT_FALSE(counts(threeAndFive, 5, 511));
    const QByteArray oneOfTwo("\0\0\0\0\0\0\0\1\0\0\0\3\0\0\0\5", 16);
    EXPECT_FALSE(counts(oneOfTwo, 3, 0));
    EXPECT_TRUE(counts(oneOfTwo, 5, 0)) << "only so many are named";
    const QByteArray itself("\0\0\0\0\0\0\0\1\0\0\0\2", 12);
    EXPECT_FALSE(counts(itself, 2, 511)) << "a list may be free";
    const QByteArray circle("\0\0\0\2\0\0\0\1\0\0\0\3", 12);
    EXPECT_FALSE(counts(circle, 3, 0));
    // Neither the first page nor one behind the last is ever free.
    const QByteArray wrong("\0\0\0\0\0\0\0\2\0\0\0\1\0\0\0\6", 16);
    EXPECT_TRUE(counts(wrong, 1, 200));
    EXPECT_TRUE(counts(wrong, 5, 511));
}

// A page is given as its bytes and filled up; the list of free pages begins at the page `list`.
TEST(DatabaseImages, TheListOfFreePagesIsFollowedPageByPageAndNoFurtherThanThePageReaches) {
    const auto counts = [](int pageSize, int list, const QByteArrayList& pages, int page) {
        QByteArray image;
        for (const QByteArray& bytes : pages) {
            image += bytes.leftJustified(pageSize, 'x');
        }
        image.replace(16, 2, pageSize == 65536 ? QByteArray("\0\1", 2) : QByteArray("\2\0", 2));
        image.replace(32, 4, QByteArray("\0\0\0", 3) + static_cast<char>(list));
        QByteArray other = image;
        other[(page - 1) * pageSize + pageSize / 2] = 'y';
        return digestOf(image) != digestOf(other);
    };
    const auto number = [](int value) {
        return QByteArray("\0\0\0", 3) + static_cast<char>(value);
    };
    const auto none = [&](int count) { return number(0).repeated(count); };
    const QByteArray one = number(0) + number(1);
    const QByteArrayList chain{{}, number(3) + number(1) + number(4), one + number(5), {}, {}, {}};
    EXPECT_FALSE(counts(512, 2, chain, 4));
    EXPECT_FALSE(counts(512, 2, chain, 5));
    EXPECT_TRUE(counts(512, 2, chain, 6));
    EXPECT_TRUE(counts(512, 7, chain, 4)) << "a list behind the last page";
    // 126 numbers have room behind the two in front.
    const QByteArray full = number(0) + number(127) + none(125) + number(4);
    EXPECT_FALSE(counts(512, 3, {{}, {}, full, {}}, 4));
    EXPECT_FALSE(counts(512, 4, {{}, {}, {}, full.left(508) + number(3)}, 3));
    EXPECT_TRUE(counts(512, 2, {{}, full, number(4), {}}, 3));
    const QByteArray short126 = number(0) + number(127) + none(126);
    EXPECT_TRUE(counts(512, 2, {{}, short126, number(4), {}}, 4)) << "named behind the list's page";
    EXPECT_FALSE(counts(65536, 2, {{}, one + number(3), {}}, 3));
    EXPECT_TRUE(counts(65536, 2, {{}, one + number(3), {}}, 2));
}

} // namespace qvnd::jet

#include "support/JetStore.h"

#include <QFile>

namespace qvnd::jet {

using test::errorOf;

// So many rows that going through them reads some ahead of the current one.
class RowsInARow : public test::JetStore {
protected:
    RowsInARow() : db_(create(u"a.mdb"_qs)) {
        db_->TableDefs().Append(outlineTable(u"T"_qs));
        QStringList keys;
        for (int i = 0; i < 200; ++i) {
            keys << QStringLiteral("T.%1").arg(i);
        }
        addRows(*db_, u"T"_qs, keys);
        rows_ = db_->OpenRecordset(u"Select * from T"_qs);
        for (int i = 0; i < 100; ++i) {
            rows_->MoveNext();
            EXPECT_EQ(rows_->Get(u"Key").ToText(), keys[i + 1]);
        }
    }

    QString next(QStringView field) const {
        rows_->MoveNext();
        return rows_->Get(field).ToText();
    }

    void rename(const QString& key) {
        const auto row = db_->OpenRecordset(u"Select * from T Where Key='"_qs + key + u'\'');
        row->Edit();
        row->Set(u"名称", u"改"_qs);
        row->Update();
    }

    std::unique_ptr<Database> db_;
    std::unique_ptr<Recordset> rows_;
};

TEST_F(RowsInARow, AreAllReadEachOnceInTheirOrder) {
    for (int i = 101; i < 200; ++i) {
        EXPECT_EQ(next(u"Key"), QStringLiteral("T.%1").arg(i));
    }
    rows_->MoveNext();
    EXPECT_TRUE(rows_->Eof());
    rows_->MoveFirst();
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.0"_qs);
    EXPECT_EQ(next(u"Key"), u"T.1"_qs);
}

TEST_F(RowsInARow, AreReadWhereverTheNextPlaceIs) {
    rows_->MoveNext();
    rows_->MoveNext();
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.102"_qs);
    for (int i = 104; i < 120; i += 2) {
        rows_->MoveNext();
        EXPECT_EQ(next(u"Key"), QStringLiteral("T.%1").arg(i));
    }
    rows_->MoveFirst();
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.0"_qs);
    rows_->FindFirst(u"Key='T.105'"_qs);
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.105"_qs);
    EXPECT_EQ(next(u"Key"), u"T.106"_qs);
    rows_->MoveLast();
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.199"_qs);
}

TEST_F(RowsInARow, ShowAChangeToARowThatComesLater) {
    rename(u"T.102"_qs);
    EXPECT_EQ(next(u"Key"), u"T.101"_qs);
    EXPECT_EQ(next(u"名称"), u"改"_qs);
}

TEST_F(RowsInARow, AnswerThatALaterRowIsGoneWhenItsTurnComes) {
    db_->Execute(u"Delete * from T Where Key='T.102'"_qs);
    EXPECT_EQ(next(u"Key"), u"T.101"_qs);
    rows_->MoveNext();
    EXPECT_EQ(errorOf([&] { (void)rows_->Get(u"Key"); }), 3167);
    EXPECT_EQ(next(u"Key"), u"T.103"_qs);
}

TEST_F(RowsInARow, AnswerThatARowGoneBeforeTheReadingWasAheadIsGoneToo) {
    db_->Execute(u"Delete * from T Where Key='T.103'"_qs);
    EXPECT_EQ(next(u"Key"), u"T.101"_qs);
    EXPECT_EQ(next(u"Key"), u"T.102"_qs);
    rows_->MoveNext();
    EXPECT_EQ(errorOf([&] { (void)rows_->Get(u"Key"); }), 3167);
    for (int i = 104; i < 200; ++i) {
        EXPECT_EQ(next(u"Key"), QStringLiteral("T.%1").arg(i));
    }
}

TEST_F(RowsInARow, ShowWhatATransactionChanges) {
    workspace_->BeginTrans();
    rename(u"T.102"_qs);
    EXPECT_EQ(next(u"Key"), u"T.101"_qs);
    EXPECT_EQ(next(u"名称"), u"改"_qs);
    workspace_->CommitTrans();
    EXPECT_EQ(next(u"Key"), u"T.103"_qs);
}

TEST_F(RowsInARow, CanBeEditedOneByOne) {
    for (int i = 101; i < 120; ++i) {
        EXPECT_EQ(next(u"Key"), QStringLiteral("T.%1").arg(i));
        rows_->Edit();
        rows_->Set(u"名称", QStringLiteral("改 %1").arg(i));
        rows_->Update();
        EXPECT_EQ(rows_->Get(u"名称").ToText(), QStringLiteral("改 %1").arg(i));
    }
    EXPECT_EQ(rowsOf(*db_, u"Select 名称 from T Where Key='T.119'"_qs), QStringList{u"改 119"_qs});
}

TEST_F(RowsInARow, LockTheFileNoLongerThanTheyAreRead) {
    EXPECT_EQ(next(u"Key"), u"T.101"_qs);
    DBEngine other;
    const auto theirs = other.Workspaces(0).OpenDatabase(db_->Name());
    EXPECT_EQ(errorOf([&] { theirs->Execute(u"Delete * from T Where Key='T.150'"_qs); }), 0);
}

TEST_F(RowsInARow, AreReadAnewAfterARequery) {
    db_->Execute(u"Delete * from T Where Key='T.0'"_qs);
    rows_->Requery();
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.1"_qs);
    EXPECT_EQ(next(u"Key"), u"T.2"_qs);
    EXPECT_EQ(rows_->Fields().size(), 4U);
}

TEST_F(RowsInARow, AreReadAnewAfterARequeryAtTheNextPlaceToo) {
    DBEngine other;
    other.Workspaces(0).OpenDatabase(db_->Name())->Execute(u"Delete * from T Where Key='T.0'"_qs);
    rows_->Requery();
    rows_->FindFirst(u"Key='T.102'"_qs); // at the place that T.101 had
    EXPECT_EQ(rows_->Get(u"Key").ToText(), u"T.102"_qs);
}

// The place in the file of the page that holds the text.
qint64 pageWith(const QByteArray& file, const QString& text) {
    const auto sizeAt = [&](int at) { return static_cast<unsigned char>(file[at]); };
    const qint64 pageSize = sizeAt(16) * 256 + sizeAt(17);
    return file.indexOf(text.toUtf8()) / pageSize * pageSize;
}

TEST_F(RowsInARow, ARowThatCannotBeReadFailsInItsTurnAndNotBefore) {
    // Long texts go on in pages of their own, of which the one with this in it is not the last.
    const auto markOf = [](int i) { return QStringLiteral("第 %1 号").arg(i); };
    const auto nameOf = [&](int i) {
        return QString(2000, u'长') + markOf(i) + QString(4000, u'长');
    };
    rows_->MoveFirst();
    for (int i = 0; i < 200; ++i) {
        rows_->Edit();
        rows_->Set(u"名称", nameOf(i));
        rows_->Update();
        rows_->MoveNext();
    }
    rows_.reset();
    const QString path = db_->Name();
    db_->Close();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const qint64 bad = pageWith(file.readAll(), markOf(150));
    ASSERT_GT(bad, 0);
    file.seek(bad);
    file.write(QByteArray(8, '\xff'));
    file.close();

    const auto damaged = workspace_->OpenDatabase(path);
    const auto rows = damaged->OpenRecordset(u"Select * from T Order By ID"_qs);
    int read = 0;
    long failure = 0;
    for (; !rows->Eof() && failure == 0; rows->MoveNext()) {
        failure = errorOf([&] { EXPECT_EQ(rows->Get(u"名称").ToText(), nameOf(read)); });
        read += failure == 0 ? 1 : 0;
    }
    EXPECT_NE(failure, 0);
    EXPECT_EQ(read, 150);
}

} // namespace qvnd::jet

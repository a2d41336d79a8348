#include "platform/jet/ChangeObserver.h"

#include "platform/jet/file/Image.h"
#include "support/JetStore.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace qvnd::jet {

using test::errorOf;

// Writes down what it is told, and refuses what it shall.
class WritingObserver : public ChangeObserver {
public:
    void BeforeChange(const QString& path) override {
        told << u"change "_qs + QFileInfo(path).fileName();
        if (refuses) {
            throw RunTimeError(error::storeFailed, u"refused");
        }
    }
    void BeforeCreation(const QString& path) override {
        told << u"creation "_qs + QFileInfo(path).fileName();
        EXPECT_FALSE(QFile::exists(path));
    }
    void BeforeCommit(const std::function<QByteArray()>& image) override {
        told << u"commit"_qs;
        last = image();
    }
    void AfterChange(const QString& path, const QString& table) override {
        told << QFileInfo(path).fileName() + u' ' + table;
    }
    QStringList take() { return std::exchange(told, {}); }

    QStringList told;
    QByteArray last;
    bool refuses = false;
};

class ChangeObservers : public test::JetStore {
protected:
    ChangeObservers() : db_(create(u"a.mdb"_qs)) {
        db_->TableDefs().Append(outlineTable(u"T"_qs));
        workspace_->Observe(&observer_);
    }
    void TearDown() override {
        workspace_->Observe(nullptr);
        JetStore::TearDown();
    }

    WritingObserver observer_;
    std::unique_ptr<Database> db_;
};

TEST_F(ChangeObservers, AreToldOfAChangeBeforeItAndOfItsTablesAndBeforeItLasts) {
    db_->Execute(u"Delete * from T"_qs);
    EXPECT_EQ(observer_.take(), (QStringList{u"change a.mdb"_qs, u"commit"_qs}));
    addRows(*db_, u"T"_qs, {u"x"_qs});
    EXPECT_EQ(observer_.take(), (QStringList{u"change a.mdb"_qs, u"a.mdb T"_qs,
                                             u"a.mdb jet_tables"_qs, u"commit"_qs}));
    EXPECT_TRUE(holdTheSame(observer_.last, imageOf(db_->Name())));
    db_->Execute(u"Delete * from T"_qs);
    EXPECT_EQ(observer_.take(), (QStringList{u"change a.mdb"_qs, u"a.mdb T"_qs, u"commit"_qs}));
}

TEST_F(ChangeObservers, AreToldOnceOfATransaction) {
    workspace_->BeginTrans();
    addRows(*db_, u"T"_qs, {u"x"_qs});
    db_->Execute(u"Delete * from T"_qs);
    EXPECT_EQ(observer_.told.count(u"change a.mdb"_qs), 1);
    EXPECT_EQ(observer_.told.count(u"commit"_qs), 0);
    workspace_->CommitTrans();
    EXPECT_EQ(observer_.told.count(u"change a.mdb"_qs), 1);
    EXPECT_EQ(observer_.told.count(u"commit"_qs), 1);
}

TEST_F(ChangeObservers, AreToldOfADatabaseBeforeItIsMadeAndOfItsChangesBehindThat) {
    const auto made = create(u"b.mdb"_qs);
    EXPECT_EQ(observer_.take(), QStringList{u"creation b.mdb"_qs});
    made->TableDefs().Append(outlineTable(u"U"_qs));
    EXPECT_EQ(observer_.told.front(), u"change b.mdb"_qs);
}

TEST_F(ChangeObservers, AreToldOfADatabaseThatIsOpenedLater) {
    workspace_->Observe(nullptr);
    create(u"b.mdb"_qs)->Close();
    EXPECT_EQ(observer_.take(), QStringList());
    workspace_->Observe(&observer_);
    open(u"b.mdb"_qs)->TableDefs().Append(outlineTable(u"U"_qs));
    EXPECT_EQ(observer_.told.front(), u"change b.mdb"_qs);
}

TEST_F(ChangeObservers, AreToldNothingMoreOnceTheyAreLetGo) {
    workspace_->Observe(nullptr);
    addRows(*db_, u"T"_qs, {u"x"_qs});
    workspace_->AboutToReplace(db_->Name(), db_->Name());
    EXPECT_EQ(observer_.take(), QStringList());
}

TEST_F(ChangeObservers, AreToldOfADatabaseThatIsAboutToTakeTheOthersPlace) {
    create(u"b.mdb"_qs)->Close();
    observer_.take();
    workspace_->AboutToReplace(db_->Name(), pathOf(u"b.mdb"_qs));
    EXPECT_EQ(observer_.take(), (QStringList{u"change a.mdb"_qs, u"commit"_qs}));
    EXPECT_TRUE(holdTheSame(observer_.last, imageOf(pathOf(u"b.mdb"_qs))));
}

TEST_F(ChangeObservers, AreToldNothingOfAFileThatIsInNoFolderAnyMore) {
    const auto old = open(u"a.mdb"_qs);
    ASSERT_TRUE(QFile::remove(pathOf(u"a.mdb"_qs)));
    const auto fresh = create(u"a.mdb"_qs);
    fresh->TableDefs().Append(outlineTable(u"T"_qs));
    const auto again = open(u"a.mdb"_qs);
    observer_.take();
    (void)errorOf([&] { addRows(*old, u"T"_qs, {u"x"_qs}); });
    EXPECT_EQ(observer_.take(), QStringList());
    addRows(*again, u"T"_qs, {u"x"_qs});
    EXPECT_EQ(observer_.told.front(), u"change a.mdb"_qs);
}

TEST_F(ChangeObservers, AreToldNothingOfAFileWhosePlaceAnotherHasTaken) {
    const auto old = open(u"a.mdb"_qs);
    create(u"b.mdb"_qs)->Close();
    ASSERT_TRUE(QFile::remove(pathOf(u"a.mdb"_qs)));
    ASSERT_TRUE(QFile::rename(pathOf(u"b.mdb"_qs), pathOf(u"a.mdb"_qs)));
    const auto other = open(u"a.mdb"_qs);
    observer_.take();
    (void)errorOf([&] { addRows(*old, u"T"_qs, {u"x"_qs}); });
    EXPECT_EQ(observer_.take(), QStringList());
    other->TableDefs().Append(outlineTable(u"U"_qs));
    EXPECT_EQ(observer_.told.front(), u"change a.mdb"_qs);
}

TEST_F(ChangeObservers, RefuseAChangeByAnErrorAndNothingHappens) {
    observer_.refuses = true;
    EXPECT_EQ(errorOf([&] { addRows(*db_, u"T"_qs, {u"x"_qs}); }), error::storeFailed);
    EXPECT_EQ(errorOf([&] { db_->TableDefs().Delete(u"T"_qs); }), error::storeFailed);
    EXPECT_EQ(observer_.take(), (QStringList{u"change a.mdb"_qs, u"change a.mdb"_qs}));
    observer_.refuses = false;
    EXPECT_TRUE(rowsOf(*db_, u"select * from T"_qs).isEmpty());
}

} // namespace qvnd::jet

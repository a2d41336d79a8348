#include "outline/RecordedPlan.h"
#include "outline/TreeDrag.h"
#include "support/Errors.h"

#include <QDateTime>
#include <QFile>

using namespace qvnd;
using history::Change;

namespace {

// Which node a key is, and where one goes that is put back.
class PutBackPlace : public test::RecordedPlan {
protected:
    // The document goes from the table by itself, as one does whose file is missing.
    std::int64_t loseRow(const QString& key) {
        return run("浏览", [&] {
            for (const QString& file : {QString("Db_UsTemplate.mdb"), QString("T/T.mdb")}) {
                const auto db = world.state.gWs->OpenDatabase(world.state.gUserTplPath + file);
                db->Execute("Delete * from T where Key='" + key + "'");
            }
        });
    }
    void drag(const QString& key, const QString& target) {
        run("拖放", [&] {
            outline::OutlineTree& tree = world.workbench.TrvCurrent;
            tree.Select(&tree.Item(key));
            outline::OLEStartDrag(world.workbench);
            outline::OLEDragDrop(world.state, world.workbench, world.services(),
                                 &tree.Item(target));
        });
    }
    QString nameOf(const QString& key) { return world.workbench.TrvCurrent.Item(key).Text(); }
};

TEST_F(PutBackPlace, ANodeWhoseChildrenStayedComesBackAloneBeforeThem) {
    const std::int64_t step = loseRow("T.1.1");
    ASSERT_EQ(world.keys("T"), QStringList({"T", "T.1", "T.1.1.1", "T.2"}));
    const outline::PutBack done = putBack(step, "T.1.1");
    EXPECT_EQ(done.key, "T.1.1");
    EXPECT_EQ(done.names, QStringList("文"));
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.1", "T.1.1", "T.1.1.1", "T.2"}));
    EXPECT_EQ(world.copiedKeys("T"), world.keys("T"));
    EXPECT_EQ(world.selectedKey(), "T.1.1");
    EXPECT_NE(world.workbench.TrvCurrent.find("T.2"), nullptr) << "nothing is hidden any more";
}

TEST_F(PutBackPlace, ANodeDoesNotComeBackBelowAnotherOneThatHasItsParentsKey) {
    const std::int64_t step = deleteNode("T.1");
    run("添加", [this] { addRow({"T.1", "别的"}); });
    const Change document = changeOf(step, "T.1.1");
    EXPECT_EQ(test::errorNumberOf([&] { outline::putBack(world.state, step, document); }),
              error::invalidCall);
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.2", "T.1"}));
}

TEST_F(PutBackPlace, ANodeFollowsItsParentToWhereThatWasMoved) {
    const std::int64_t step = deleteNode("T.1.1");
    drag("T.1", "T.2");
    ASSERT_EQ(world.keys("T").size(), 3);
    const QString parent = world.keys("T").last();
    ASSERT_NE(parent, "T.1");
    const outline::PutBack done = putBack(step, "T.1.1");
    EXPECT_EQ(done.key, parent + ".1");
    EXPECT_EQ(nameOf(done.key), "文");
    EXPECT_EQ(world.folder.read(file(done.key)), "T.1.1");
}

TEST_F(PutBackPlace, ARenamedNodeThatWasMovedGetsItsNameWhereItIs) {
    const std::int64_t step = rename("T.1", "改");
    drag("T.1", "T.2");
    const qsizetype nodes = world.keys("T").size();
    const outline::PutBack done = putBack(step, "T.1");
    EXPECT_NE(done.key, "T.1");
    EXPECT_EQ(nameOf(done.key), "章");
    EXPECT_EQ(world.keys("T").size(), nodes) << "no second node comes";
}

TEST_F(PutBackPlace, ARenamedNodeIsFollowedThroughTheStepsThatWereJoinedWithItsOwn) {
    rename("T.2", "改");
    deleteNode("T.2");
    const std::int64_t last = run("添加", [this] { addRow({"T.2", "别的"}); });
    world.state.History->thin({std::chrono::days{0}, history::Limits{}.bytes, 0, 1},
                              QDateTime::currentDateTime().addDays(1));
    ASSERT_EQ(world.state.History->steps().size(), 1);
    const outline::PutBack done = putBack(last, "T.2");
    EXPECT_EQ(done.key, "T.3");
    EXPECT_EQ(nameOf("T.2"), "别的");
    EXPECT_EQ(nameOf("T.3"), "节");
}

TEST_F(PutBackPlace, AFileDoesNotReplaceTheDocumentOfAnotherNodeThatHasItsKeyNow) {
    const QString path = world.folder.path(file("T.1.1"));
    world.folder.write("new.doc", "new");
    const auto copy = [&] { world.state.gFso->CopyFile(world.folder.path("new.doc"), path, true); };
    const std::int64_t step = run("覆盖", copy);
    const Change change = changeOf(step, path);
    deleteNode("T.1.1");
    run("添加", [&] {
        world.folder.write("new.doc", "of another");
        addRow({"T.1.1", "别的", "是"});
        copy();
    });
    const auto refusal = test::descriptionOf([&] { outline::putBack(world.state, step, change); });
    EXPECT_EQ(QString::fromStdU16String(refusal),
              "“T.1.1.doc”现在是另一个节点的文档，不能放回。可以取出文件。");
    EXPECT_EQ(world.folder.read(file("T.1.1")), "of another");
}

TEST_F(PutBackPlace, ANodeComesBackBehindItsParentThatCameBackBeforeIt) {
    const std::int64_t step = loseRow("T.1.1");
    const std::int64_t later = loseRow("T.1");
    EXPECT_EQ(putBack(later, "T.1").names, QStringList("章"));
    ASSERT_EQ(world.keys("T"), QStringList({"T", "T.1", "T.1.1.1", "T.2"}));
    EXPECT_EQ(putBack(step, "T.1.1").names, QStringList("文"));
    EXPECT_EQ(world.keys("T"), QStringList({"T", "T.1", "T.1.1", "T.1.1.1", "T.2"}));
    EXPECT_EQ(world.copiedKeys("T"), world.keys("T"));
}

TEST_F(PutBackPlace, TheFileOfANodeThatIsGoneComesBackByItself) {
    const QString path = world.folder.path(file("T.1.1"));
    const std::int64_t step = run("删去", [&] { world.state.gFso->DeleteFile(path); });
    deleteNode("T.1.1");
    EXPECT_EQ(outline::putBack(world.state, step, changeOf(step, path)).names,
              QStringList("T.1.1.doc"));
    EXPECT_EQ(world.folder.read(file("T.1.1")), "T.1.1");
}

TEST_F(PutBackPlace, AFileThatBearsTheNameOfAnotherPlanComesBackToo) {
    world.makePlan(QStringList{"U", "U.1"});
    const QString path = world.folder.path("用户模板/T/U.doc");
    const auto copy = [&](const QByteArray& bytes) {
        world.folder.write("new.doc", bytes);
        return run("覆盖",
                   [&] { world.state.gFso->CopyFile(world.folder.path("new.doc"), path, true); });
    };
    copy("first");
    putBack(copy("second"), path);
    EXPECT_EQ(world.folder.read("用户模板/T/U.doc"), "first");
}

TEST_F(PutBackPlace, ATemplatesNodeOfTheSameKeyDoesNotKeepAFileFromComingBack) {
    const QString path = world.folder.path(file("T.1.1"));
    world.folder.write("new.doc", "new");
    const std::int64_t step =
        run("覆盖", [&] { world.state.gFso->CopyFile(world.folder.path("new.doc"), path, true); });
    run("存入方案模板", [this] {
        test::OutlineWorld::makeTable(*world.state.gDbTemplate, "T",
                                      {{"T", "T"}, {"T.1.1", "模", "是"}});
    });
    putBack(step, path);
    EXPECT_EQ(world.folder.read(file("T.1.1")), "T.1.1");
}

TEST_F(PutBackPlace, AFileIsTakenOutUnderTheNameOfItsNodeAndTheTimeOfItsStep) {
    history::Step step;
    step.time = QDateTime(QDate(2026, 1, 5), QTime(8, 9, 7));
    const auto taken = [&](const QString& name) {
        const QString path = outline::takenOutPath(world.state, step, "/p/T/T.1.doc", name);
        EXPECT_TRUE(path.startsWith(world.state.gWorkPath));
        return path.mid(world.state.gWorkPath.size());
    };
    EXPECT_EQ(taken("说明"), "说明-20260105-080907.doc");
    EXPECT_EQ(taken("说明.DOC"), "说明-20260105-080907.doc");
    EXPECT_EQ(taken("a\\b/c:d*e?f\"g<h>i|j\nk"), "a_b_c_d_e_f_g_h_i_j_k-20260105-080907.doc");
    world.folder.write("说明-20260105-080907.doc", "x");
    EXPECT_EQ(taken("说明"), "说明-20260105-080907-2.doc");
    world.folder.write("说明-20260105-080907-2.doc", "x");
    EXPECT_EQ(taken("说明"), "说明-20260105-080907-3.doc");
}

TEST_F(PutBackPlace, AFileIsPutBackUnderThePlanWhoseDocumentItIs) {
    const QString path = world.folder.path(file("T.1.1"));
    world.folder.write("new.doc", "new");
    const std::int64_t step =
        run("覆盖", [&] { world.state.gFso->CopyFile(world.folder.path("new.doc"), path, true); });
    world.makePlan(QStringList{"U", "U.1"});
    world.openPlan("U");
    putBack(step, path);
    EXPECT_EQ(world.state.History->undoable()->plan, "T");
}

} // namespace

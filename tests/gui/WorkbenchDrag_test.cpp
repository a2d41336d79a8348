#include "gui/support/Renaming.h"
#include "gui/support/WorkbenchWindow.h"

#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

namespace qvnd::test {
namespace {

class WorkbenchDrag : public WorkbenchWindow {
protected:
    // From the press on the node to where the drag itself would run.
    void pickUp(outline::OutlineView& view, const QString& key) {
        view.setDragRunner([this](QMimeData* picked, const QPixmap& shown) {
            data.reset(picked);
            picture = shown;
        });
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, rowOf(view, key));
        view.startDrag(Qt::CopyAction);
    }
    bool hover(const QPoint& at) {
        QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(trvCurrent().viewport(), &enter);
        QDragMoveEvent move(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(trvCurrent().viewport(), &move);
        return enter.isAccepted() && move.isAccepted();
    }
    void drop(const QPoint& at) {
        QDropEvent event(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(trvCurrent().viewport(), &event);
        QCoreApplication::processEvents();
    }
    void dragOnto(const QString& key) {
        EXPECT_TRUE(hover(rowOf(trvCurrent(), key)));
        drop(rowOf(trvCurrent(), key));
    }

    // A document as a file manager offers it.
    void putFile(const QString& name) {
        writeDocument(world.folder.path(name));
        data = std::make_unique<QMimeData>();
        data->setUrls({QUrl::fromLocalFile(world.folder.path(name))});
    }

    std::unique_ptr<QMimeData> data;
    QPixmap picture;
};

TEST_F(WorkbenchDrag, TheStartKeepsTheNodeAndHoveringSelects) {
    open("T.1");
    pickUp(trvCurrent(), "T.3");
    EXPECT_EQ(world.workbench.dragKey, "T.3");
    EXPECT_TRUE(hover(rowOf(trvCurrent(), "T.2")));
    EXPECT_EQ(selected(), "T.2");
    EXPECT_EQ(world.keys("T").size(), 6);
}

TEST_F(WorkbenchDrag, ThePictureOfADragIsOfTheNameAndNotOfTheWholeRow) {
    open("T.1");
    const outline::OutlineModel& model = trvCurrent().outline();
    const int row =
        trvCurrent().visualRect(model.indexOf(&model.tree().Item(QString("T.3")))).width();
    pickUp(trvCurrent(), "T.3");
    const int name = trvCurrent().fontMetrics().horizontalAdvance("名T.3");
    EXPECT_GT(picture.width(), name);
    EXPECT_LT(picture.width(), name + 60);
    EXPECT_LT(picture.width(), row);
}

TEST_F(WorkbenchDrag, ADropInsideTheOpenPlanMovesTheNode) {
    open();
    trvCurrent().expandAll();
    pickUp(trvCurrent(), "T.1.1");
    dragOnto("T.3");
    EXPECT_EQ(world.workbench.dragKey, QString());
    EXPECT_EQ(world.workbench.TrvCurrent.find("T.1.1"), nullptr);
    const auto* moved = world.workbench.TrvCurrent.SelectedItem();
    ASSERT_NE(moved, nullptr);
    EXPECT_EQ(moved->Parent()->Key(), "T.3");
    EXPECT_EQ(moved->Text(), "名T.1.1");
    EXPECT_TRUE(QFile::exists(world.folder.path("用户模板/T/" + moved->Key() + ".doc")));
}

TEST_F(WorkbenchDrag, ADropFromTheTemplatesCopiesIntoTheNode) {
    open("T.1");
    trvTemplate().expandAll();
    pickUp(trvTemplate(), "M.2");
    EXPECT_EQ(world.workbench.copySourceKey, "M.2");
    EXPECT_EQ(world.workbench.dragKey, QString());
    dragOnto("T.3");
    ASSERT_TRUE(world.workbench.TrvCurrent.find("T.3.1"));
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3.1")).Text(), "模板文");
    EXPECT_TRUE(QFile::exists(world.folder.path("用户模板/T/T.3.1.doc")));
    EXPECT_EQ(world.workbench.TrvTemplate.Count(), 3);
}

TEST_F(WorkbenchDrag, ATemplatesFolderIsRefusedByADocument) {
    open();
    trvTemplate().expandAll();
    pickUp(trvTemplate(), "M.1");
    dragOnto("T.2");
    EXPECT_EQ(lastMessage(), "文档下面不能包含文件夹，此时文档不能作为拖放对象.");
    EXPECT_EQ(world.keys("T").size(), 6);
}

TEST_F(WorkbenchDrag, ANodeOfAUsersPlanCannotBeCopied) {
    open();
    trvUser().expandAll();
    pickUp(trvUser(), "U.1");
    dragOnto("T.3");
    EXPECT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(world.keys("T").size(), 6);
}

TEST_F(WorkbenchDrag, ADropBesideAllNodesLeavesTheDragKeySet) {
    open();
    pickUp(trvCurrent(), "T.2");
    EXPECT_TRUE(hover(beside(trvCurrent())));
    drop(beside(trvCurrent()));
    EXPECT_EQ(world.workbench.dragKey, "T.2");
    EXPECT_EQ(world.keys("T").size(), 6);
}

TEST_F(WorkbenchDrag, FilesFromOutsideAreAddedBelowTheNodeOneAfterAnother) {
    open("T.2");
    for (const char* name : {"甲.doc", "乙.doc"}) {
        writeDocument(world.folder.path(name));
    }
    data = std::make_unique<QMimeData>();
    data->setUrls({QUrl::fromLocalFile(world.folder.path("乙.doc")),
                   QUrl::fromLocalFile(world.folder.path("Sys")),
                   QUrl::fromLocalFile(world.folder.path("甲.doc"))});
    dragOnto("T.3");
    QStringList names;
    for (const auto* child : world.workbench.TrvCurrent.Item(QString("T.3")).childList()) {
        names << child->Text();
        EXPECT_TRUE(QFile::exists(world.folder.path("用户模板/T/" + child->Key() + ".doc")));
    }
    EXPECT_EQ(names, (QStringList{"乙", "甲"}));
    EXPECT_TRUE(world.dialogs.asked.empty());
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), "已添加 2 个文档。\n下列 1 个没有添加：\n"
                             "Sys：这是文件夹，请打开它，拖放其中的文件。");
}

TEST_F(WorkbenchDrag, AFileOfATakenNameIsRefusedAndTheNextOneAdded) {
    open("T.2");
    for (const char* name : {"甲.doc", "乙.doc"}) {
        writeDocument(world.folder.path(name));
    }
    data = std::make_unique<QMimeData>();
    const QUrl first = QUrl::fromLocalFile(world.folder.path("甲.doc"));
    data->setUrls({first, first, QUrl::fromLocalFile(world.folder.path("乙.doc"))});
    dragOnto("T.3");
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), "已添加 2 个文档。\n下列 1 个没有添加：\n甲.doc：对不起，命名重复！");
    EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3")).Children(), 2);
}

TEST_F(WorkbenchDrag, FilesBesideAllNodesAreLeftAloneAndTheStatusBarSaysWhereTo) {
    open("T.2");
    putFile("甲.doc");
    hover(beside(trvCurrent()));
    drop(beside(trvCurrent()));
    EXPECT_EQ(world.keys("T").size(), 6);
    EXPECT_EQ(frame.status, QStringList("请把文件拖放到一个节点上。"));
}

TEST_F(WorkbenchDrag, TheLibrariesTakeNoDrops) {
    open();
    EXPECT_FALSE(trvTemplate().viewport()->acceptDrops());
    EXPECT_FALSE(trvUser().viewport()->acceptDrops());
}

// A drop is told when the drag has ended; by then its node may have gone.
class DropOnANodeThatGoes : public WorkbenchDrag {
protected:
    void dropAndRemove(const QString& key) {
        const QPoint at = rowOf(trvCurrent(), key);
        EXPECT_TRUE(hover(at));
        QDropEvent event(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(trvCurrent().viewport(), &event);
        EXPECT_TRUE(event.isAccepted());
        world.workbench.TrvCurrent.Remove(key);
        QCoreApplication::processEvents();
    }
};

TEST_F(DropOnANodeThatGoes, AddsNoFilesAndSaysSo) {
    open("T.1");
    putFile("外来.doc");
    dropAndRemove("T.3");
    ASSERT_EQ(world.messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), "拖放到的节点已不存在，请重新拖放。");
    EXPECT_EQ(world.keys("T").size(), 6);
}

TEST_F(DropOnANodeThatGoes, EndsTheDragOfANodeAndMovesNothing) {
    open();
    trvCurrent().expandAll();
    pickUp(trvCurrent(), "T.1.1");
    dropAndRemove("T.3");
    EXPECT_EQ(lastMessage(), "拖放到的节点已不存在，请重新拖放。");
    EXPECT_EQ(world.workbench.dragKey, QString());
    EXPECT_TRUE(world.keys("T").contains("T.1.1"));
    EXPECT_EQ(world.keys("T").size(), 6);
}

class DragIntoANameThatIsBeingTyped : public WorkbenchDrag {
protected:
    void beginTyping() {
        open("T.1");
        QLineEdit* editor = beginRenaming(trvCurrent());
        ASSERT_NE(editor, nullptr);
        editor->setText("基础");
        putFile("外来.doc");
    }
    void expectNamed() {
        EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.1")).Text(), "基础");
        EXPECT_EQ(world.workbench.TrvCurrent.Item(QString("T.3")).Text(), "名T.3");
        const QStringList names = world.column(*world.state.gDbUser, "T", u"名称");
        EXPECT_EQ(names[1], "基础");
        EXPECT_TRUE(names.contains("名T.3"));
        EXPECT_TRUE(names.contains("外来"));
    }
};

TEST_F(DragIntoANameThatIsBeingTyped, TakesItOverForItsOwnNode) {
    beginTyping();
    dragOnto("T.3");
    expectNamed();
}

TEST_F(DragIntoANameThatIsBeingTyped, TakesItOverWhenTheDropIsOnTheSameNode) {
    beginTyping();
    const QPoint at = rowOf(trvCurrent(), "T.1");
    QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(trvCurrent().viewport(), &enter);
    drop(at);
    expectNamed();
}

} // namespace
} // namespace qvnd::test

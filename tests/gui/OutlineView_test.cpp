#include "outline/windows/OutlineView.h"

#include "outline/OutlineTree.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace qvnd::outline {
namespace {

class OutlineViewTest : public testing::Test {
protected:
    OutlineViewTest() {
        fill();
        view.resize(300, 400);
        view.show();
        view.expandAll();
        QCoreApplication::processEvents();
        log.clear();
        QObject::connect(&view, &OutlineView::mouseDown,
                         [this](Qt::MouseButton button, const OutlineNode* node) {
                             note(button == Qt::RightButton ? "right" : "down", node);
                         });
        QObject::connect(&view, &OutlineView::mouseUp, [this] { log << u"up"_s; });
        QObject::connect(&view, &OutlineView::nodeClick,
                         [this](const OutlineNode* node) { note("nodeClick", node); });
        QObject::connect(&view, &OutlineView::click, [this] { log << u"click"_s; });
        QObject::connect(&view, &OutlineView::dblClick, [this] { log << u"dblClick"_s; });
        QObject::connect(&view, &OutlineView::keyDown,
                         [this](int code) { log << u"key %1"_s.arg(code); });
        QObject::connect(&view, &OutlineView::oleStartDrag, [this] { log << u"start"_s; });
        QObject::connect(&view, &OutlineView::oleDragOver,
                         [this](const OutlineNode* node) { note("over", node); });
        QObject::connect(&view, &OutlineView::oleDragDrop,
                         [this](const OutlineNode* node) { note("drop", node); });
        QObject::connect(&view, &OutlineView::filesDropped,
                         [this](const OutlineNode* node, const QStringList& files) {
                             note("files", node);
                             log << files;
                         });
    }

    void fill() {
        tree.Add(u"T"_s, u"工程"_s, image::root, image::rootSelected);
        tree.AddChild(u"T"_s, u"T.1"_s, u"施工部署"_s, image::folder, image::folderSelected);
        tree.AddChild(u"T.1"_s, u"T.1.1"_s, u"管理目标"_s, image::document,
                      image::documentSelected);
        tree.AddChild(u"T"_s, u"T.2"_s, u"编制说明"_s, image::document, image::documentSelected);
    }

    void note(const char* event, const OutlineNode* node) {
        log << QString::fromLatin1(event) + u' ' + (node ? node->Key() : u"-"_s);
    }
    QPoint rowOf(const QString& key) {
        return view.visualRect(model.indexOf(&tree.Item(key))).center();
    }
    void press(const QString& key) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, rowOf(key));
    }
    QString selected() const {
        return tree.SelectedItem() ? tree.SelectedItem()->Key() : QString();
    }

    template <typename Event>
    bool drag(const QMimeData& data, const QPoint& at) {
        Event event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &event);
        return event.isAccepted();
    }
    void drop(const QMimeData& data, const QPoint& at) {
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &event);
        QCoreApplication::processEvents();
    }

    OutlineTree tree{u"TrvCurrent"_s};
    OutlineModel model{tree};
    OutlineView view{model};
    QStringList log;
};

TEST_F(OutlineViewTest, AClickOnANodeIsMouseDownThenClickThenNodeClick) {
    press(u"T.1"_s);
    EXPECT_EQ(log, (QStringList{u"down T.1"_s, u"up"_s, u"click"_s, u"nodeClick T.1"_s}));
    EXPECT_EQ(selected(), u"T.1"_s);
}

TEST_F(OutlineViewTest, AClickBesideAllNodesIsNoNodeClick) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(50, 390));
    EXPECT_EQ(log, (QStringList{u"down -"_s, u"up"_s, u"click"_s}));
}

TEST_F(OutlineViewTest, TheArrowOpensAndClosesAndSelectsNothing) {
    const QRect row = view.visualRect(model.indexOf(&tree.Item(u"T.1"_s)));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - view.indentation() / 2, row.center().y()));
    EXPECT_FALSE(log.contains(u"nodeClick T.1"_s));
    EXPECT_FALSE(log.contains(u"down T.1"_s));
    EXPECT_FALSE(tree.Item(u"T.1"_s).Expanded());
    EXPECT_EQ(selected(), QString());
}

TEST_F(OutlineViewTest, APressWhereALeafHasNoArrowIsAClickOnItsNode) {
    const QRect row = view.visualRect(model.indexOf(&tree.Item(u"T.2"_s)));
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                      QPoint(row.left() - view.indentation() / 2, row.center().y()));
    EXPECT_EQ(log, (QStringList{u"down T.2"_s, u"up"_s, u"click"_s, u"nodeClick T.2"_s}));
    EXPECT_EQ(selected(), u"T.2"_s);
}

TEST_F(OutlineViewTest, ASelectionByTheKeyboardIsANodeClick) {
    tree.Select(&tree.Item(u"T"_s));
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(log, (QStringList{u"nodeClick T.1"_s}));
    EXPECT_EQ(selected(), u"T.1"_s);
}

TEST_F(OutlineViewTest, ASelectionByCodeShowsWithoutAnEvent) {
    tree.Select(&tree.Item(u"T.1.1"_s));
    EXPECT_EQ(view.currentIndex(), model.indexOf(&tree.Item(u"T.1.1"_s)));
    tree.Select(nullptr);
    EXPECT_FALSE(view.currentIndex().isValid());
    EXPECT_EQ(log, QStringList());
}

TEST_F(OutlineViewTest, ASelectedNodeIsBroughtIntoSight) {
    view.collapseAll();
    tree.Select(&tree.Item(u"T.1.1"_s));
    EXPECT_TRUE(view.isExpanded(model.indexOf(&tree.Item(u"T.1"_s))));
    QCoreApplication::processEvents();
    EXPECT_TRUE(tree.Item(u"T.1"_s).Expanded());
}

TEST_F(OutlineViewTest, DeleteF2AndEnterAreToldByTheirCodes) {
    tree.Select(&tree.Item(u"T.1"_s));
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_F2, Qt::Key_Return}) {
        QTest::keyClick(&view, key);
    }
    EXPECT_EQ(log, (QStringList{u"key 46"_s, u"key 113"_s, u"key 13"_s}));
}

TEST_F(OutlineViewTest, ARightPressSelectsNothingByItself) {
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, rowOf(u"T.2"_s));
    EXPECT_EQ(log, (QStringList{u"right T.2"_s, u"up"_s}));
    EXPECT_EQ(selected(), QString());
}

TEST_F(OutlineViewTest, TheContextKeyIsARightPressOnTheSelectedNode) {
    tree.Select(&tree.Item(u"T.2"_s));
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(view.viewport(), &event);
    EXPECT_EQ(log, (QStringList{u"right T.2"_s}));
}

TEST_F(OutlineViewTest, ADoubleClickComesAfterTheClick) {
    press(u"T.2"_s);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, rowOf(u"T.2"_s));
    EXPECT_EQ(log.last(), u"dblClick"_s);
    EXPECT_EQ(log.count(u"nodeClick T.2"_s), 1);
}

TEST_F(OutlineViewTest, ADragBeginsWithTheSelectedNodeAndIsNoClick) {
    QByteArray dragged;
    view.setDragRunner([&](QMimeData* data, const QPixmap& picture) {
        dragged = data->data(OutlineModel::nodeMimeType);
        EXPECT_FALSE(picture.isNull());
        delete data;
    });
    const QPoint from = rowOf(u"T.1"_s);
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
    const int far = QApplication::startDragDistance() + 5;
    QTest::mouseMove(view.viewport(), from + QPoint(far, 0));
    QTest::mouseMove(view.viewport(), from + QPoint(2 * far, 0));
    EXPECT_EQ(QString::fromUtf8(dragged), u"TrvCurrent\nT.1"_s);
    EXPECT_EQ(log, (QStringList{u"down T.1"_s, u"start"_s}));
}

TEST_F(OutlineViewTest, HoveringAndDroppingTellTheNodeUnderThePointer) {
    view.setAcceptDrops(true);
    view.setDragDropMode(QAbstractItemView::DragDrop);
    QMimeData data;
    data.setData(OutlineModel::nodeMimeType, "TrvTemplate\nM.1");
    EXPECT_TRUE(drag<QDragEnterEvent>(data, rowOf(u"T"_s)));
    EXPECT_TRUE(drag<QDragMoveEvent>(data, rowOf(u"T.2"_s)));
    EXPECT_TRUE(drag<QDragMoveEvent>(data, QPoint(50, 390)));
    drop(data, rowOf(u"T.1"_s));
    EXPECT_EQ(log, (QStringList{u"over T.2"_s, u"over -"_s, u"drop T.1"_s}));
}

TEST_F(OutlineViewTest, ADropBesideAllNodesIsToldToo) {
    view.setDragDropMode(QAbstractItemView::DragDrop);
    QMimeData data;
    data.setData(OutlineModel::nodeMimeType, "TrvCurrent\nT.1");
    EXPECT_TRUE(drag<QDragEnterEvent>(data, QPoint(50, 390)));
    drop(data, QPoint(50, 390));
    EXPECT_EQ(log, (QStringList{u"drop -"_s}));
}

TEST_F(OutlineViewTest, FilesFromOutsideComeInTheirOrder) {
    view.setDragDropMode(QAbstractItemView::DragDrop);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/a/乙.doc"_s), QUrl(u"https://example.org/x.doc"_s),
                  QUrl::fromLocalFile(u"/a/甲.doc"_s)});
    EXPECT_TRUE(drag<QDragEnterEvent>(data, rowOf(u"T"_s)));
    drop(data, rowOf(u"T.1"_s));
    EXPECT_EQ(log, (QStringList{u"files T.1"_s, u"/a/乙.doc"_s, u"/a/甲.doc"_s}));
}

TEST_F(OutlineViewTest, ForeignDataIsNotTaken) {
    view.setDragDropMode(QAbstractItemView::DragDrop);
    QMimeData data;
    data.setText(u"一段文字"_s);
    EXPECT_FALSE(drag<QDragEnterEvent>(data, rowOf(u"T"_s)));
    drop(data, rowOf(u"T"_s));
    EXPECT_EQ(log, QStringList());
}

TEST_F(OutlineViewTest, WhatWasExpandedIsExpandedAgainAfterARefill) {
    ASSERT_TRUE(tree.Item(u"T.1"_s).Expanded());
    tree.Clear();
    fill();
    EXPECT_FALSE(tree.Item(u"T.1"_s).Expanded());
    QCoreApplication::processEvents();
    EXPECT_TRUE(tree.Item(u"T.1"_s).Expanded());
    EXPECT_TRUE(view.isExpanded(model.indexOf(&tree.Item(u"T"_s))));
}

TEST_F(OutlineViewTest, TheUsersExpandingIsKnownToTheTree) {
    view.collapse(model.indexOf(&tree.Item(u"T.1"_s)));
    EXPECT_FALSE(tree.Item(u"T.1"_s).Expanded());
    tree.Expand(tree.Item(u"T.1"_s));
    EXPECT_TRUE(view.isExpanded(model.indexOf(&tree.Item(u"T.1"_s))));
}

TEST_F(OutlineViewTest, InPlaceEditingTellsItsBeginAndItsText) {
    model.setEditable(true);
    QSignalSpy began(&view, &OutlineView::beforeLabelEdit);
    QSignalSpy edited(&model, &OutlineModel::textEdited);
    tree.Select(&tree.Item(u"T.2"_s));
    view.StartLabelEdit();
    auto* editor = view.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(began.count(), 1);
    EXPECT_EQ(editor->text(), u"编制说明"_s);
    editor->setText(u"说明"_s);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(edited.count(), 1);
    EXPECT_EQ(edited[0][0].toString(), u"说明"_s);
    EXPECT_EQ(log, QStringList());
}

TEST_F(OutlineViewTest, WithoutASelectedNodeNothingIsEdited) {
    model.setEditable(true);
    QSignalSpy began(&view, &OutlineView::beforeLabelEdit);
    view.StartLabelEdit();
    EXPECT_EQ(began.count(), 0);
}

} // namespace
} // namespace qvnd::outline

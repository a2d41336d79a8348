#include "outline/windows/OutlineModel.h"

#include "outline/OutlineTree.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QMimeData>
#include <QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;

namespace qvnd::outline {
namespace {

class OutlineModelTest : public testing::Test {
protected:
    OutlineModelTest() {
        tree.Add(u"T"_s, u"工程"_s, image::root, image::rootSelected);
        tree.AddChild(u"T"_s, u"T.1"_s, u"施工部署"_s, image::folder, image::folderSelected);
        tree.AddChild(u"T.1"_s, u"T.1.1"_s, u"管理目标"_s, image::document,
                      image::documentSelected);
        tree.AddChild(u"T"_s, u"T.2"_s, u"编制说明"_s, image::document, image::documentSelected);
    }

    QModelIndex at(const QString& key) { return model.indexOf(&tree.Item(key)); }
    QPixmap icon(const QString& key) {
        return model.data(at(key), Qt::DecorationRole).value<QIcon>().pixmap(16, 16);
    }

    OutlineTree tree{u"TrvCurrent"_s};
    OutlineModel model{tree, [](const OutlineNode& node) { return node.Key() + u".doc"_s; }};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(OutlineModelTest, ShowsTheTreesShape) {
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.rowCount(at(u"T"_s)), 2);
    EXPECT_EQ(model.parent(at(u"T.1.1"_s)), at(u"T.1"_s));
    EXPECT_FALSE(model.parent(at(u"T"_s)).isValid());
    EXPECT_EQ(model.data(at(u"T.1.1"_s)).toString(), u"管理目标"_s);
}

TEST_F(OutlineModelTest, FollowsAdditionsRemovalsRenamingAndClearing) {
    tree.AddChild(u"T.1"_s, u"T.1.2"_s, u"组织机构"_s, image::document, image::documentSelected);
    EXPECT_EQ(model.rowCount(at(u"T.1"_s)), 2);
    tree.Remove(u"T.1.1"_s);
    EXPECT_EQ(model.data(model.index(0, 0, at(u"T.1"_s))).toString(), u"组织机构"_s);
    tree.setText(tree.Item(u"T.2"_s), u"说明"_s);
    EXPECT_EQ(model.data(at(u"T.2"_s)).toString(), u"说明"_s);
    tree.Select(&tree.Item(u"T.2"_s));
    tree.Clear();
    EXPECT_EQ(model.rowCount(), 0);
    tree.Add(u"U"_s, u"U"_s, image::root, image::rootSelected);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(OutlineModelTest, TheSelectedNodeShowsItsSelectedImage) {
    const QImage plain = icon(u"T.1"_s).toImage();
    ASSERT_FALSE(plain.isNull());
    tree.Select(&tree.Item(u"T.1"_s));
    EXPECT_NE(icon(u"T.1"_s).toImage(), plain);
    tree.Select(&tree.Item(u"T.2"_s));
    EXPECT_EQ(icon(u"T.1"_s).toImage(), plain);
}

TEST_F(OutlineModelTest, EachKindHasAnIconOfItsOwn) {
    const QImage root = icon(u"T"_s).toImage();
    const QImage folder = icon(u"T.1"_s).toImage();
    const QImage document = icon(u"T.2"_s).toImage();
    EXPECT_NE(root, folder);
    EXPECT_NE(folder, document);
    EXPECT_NE(document, root);
}

TEST_F(OutlineModelTest, TheToolTipNamesTheKeyAndADocumentsFile) {
    EXPECT_EQ(model.data(at(u"T.1"_s), Qt::ToolTipRole).toString(), u"编号：T.1"_s);
    EXPECT_EQ(model.data(at(u"T.2"_s), Qt::ToolTipRole).toString(), u"编号：T.2\n文件：T.2.doc"_s);
}

TEST_F(OutlineModelTest, AnEditedTextIsToldAndNotYetTaken) {
    QSignalSpy edited(&model, &OutlineModel::textEdited);
    model.setData(at(u"T.2"_s), u"新名"_s);
    ASSERT_EQ(edited.count(), 1);
    EXPECT_EQ(edited[0][0].toString(), u"新名"_s);
    EXPECT_EQ(tree.Item(u"T.2"_s).Text(), u"编制说明"_s);
}

TEST_F(OutlineModelTest, TextsAreEditedOnlyWhereTheWindowAllowsIt) {
    EXPECT_FALSE(model.flags(at(u"T.2"_s)).testFlag(Qt::ItemIsEditable));
    model.setEditable(true);
    EXPECT_TRUE(model.flags(at(u"T.2"_s)).testFlag(Qt::ItemIsEditable));
}

TEST_F(OutlineModelTest, ADraggedNodeIsNamedByTreeAndKey) {
    const std::unique_ptr<QMimeData> data(model.mimeData({at(u"T.1"_s)}));
    EXPECT_EQ(QString::fromUtf8(data->data(OutlineModel::nodeMimeType)), u"TrvCurrent\nT.1"_s);
}

} // namespace
} // namespace qvnd::outline

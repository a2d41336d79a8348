#include "platform/desktop/windows/QtHelpWindow.h"

#include "platform/desktop/windows/HelpTextBrowser.h"
#include "platform/desktop/windows/HelpViewer.h"
#include "platform/error/RunTimeError.h"
#include "support/HelpFile.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QHelpContentWidget>
#include <QHelpIndexWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QToolBar>
#include <QWindow>

using namespace qvnd;
using desktop::HelpViewer;

namespace {

struct HelpWindow : testing::Test {
    test::TemporaryFolder folder;
    const QString file = folder.path("Qvnd.hlp");
    desktop::QtHelpWindow help{folder.path("cache")};

    HelpWindow() { QFile::copy(test::builtHelpFile(), file); }

    HelpViewer& viewer() { return *help.viewer(); }
    template <typename Control>
    Control& control(const QString& name) {
        return *viewer().findChild<Control*>(name);
    }
    QString page() { return viewer().browser().source().fileName(); }
    QString tab() {
        auto& tabs = control<QTabWidget>("HelpTabs");
        return tabs.tabText(tabs.currentIndex());
    }
    QStringList catalogues() { return QDir(folder.path("cache")).entryList({"*.qhc"}); }
    void writeFile(const QByteArray& content) {
        QFile broken(file);
        ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
        broken.write(content);
    }
    long failure() {
        try {
            help.showContents(file);
        } catch (const RunTimeError& error) {
            reason = QString::fromStdU16String(error.description());
            return error.number();
        }
        return 0;
    }
    QString reason;
};

TEST_F(HelpWindow, ShowsTheContentsWithTheFirstPage) {
    help.showContents(file);
    EXPECT_TRUE(viewer().isVisible());
    EXPECT_EQ(tab(), "目录(&C)");
    EXPECT_EQ(page(), "index.html");
    EXPECT_EQ(viewer().windowTitle(), "卷宗编制系统 - 帮助");
}

TEST_F(HelpWindow, ShowsTheIndexWithTheKeyboardInItsFilter) {
    help.showIndex(file);
    EXPECT_EQ(tab(), "索引(&I)");
    EXPECT_EQ(viewer().focusWidget(), &control<QLineEdit>("HelpIndexFilter"));
}

TEST_F(HelpWindow, ShowsThePageOfAWindowByItsObjectName) {
    help.showPage(file, "DlgNew");
    EXPECT_EQ(page(), "DlgNew.html");
    EXPECT_EQ(viewer().focusWidget(), &viewer().browser());
}

TEST_F(HelpWindow, ShowsTheContentsForAWindowWithoutAPage) {
    for (const char* unknown : {"frmNowhere", ""}) {
        help.showPage(file, unknown);
        EXPECT_EQ(page(), "index.html");
        EXPECT_EQ(tab(), "目录(&C)");
    }
}

TEST_F(HelpWindow, IsOneWindowForAllCalls) {
    help.showContents(file);
    const HelpViewer* first = help.viewer();
    viewer().close();
    help.showIndex(file);
    EXPECT_EQ(help.viewer(), first);
    EXPECT_TRUE(viewer().isVisible());
}

TEST_F(HelpWindow, ContentsLeadToTheirPagesAndFollowThePage) {
    help.showContents(file);
    auto& tree = control<QHelpContentWidget>("HelpContents");
    ASSERT_TRUE(QTest::qWaitFor([&] { return tree.model()->rowCount() > 0; }));
    help.showPage(file, "DlgNew");
    const QModelIndex current = tree.currentIndex();
    EXPECT_TRUE(current.data().toString().contains("新建方案"));
    const QModelIndex other = current.siblingAtRow(current.row() == 0 ? 1 : 0);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(other).center());
    EXPECT_EQ(tree.currentIndex(), other);
    EXPECT_NE(page(), "DlgNew.html");
}

TEST_F(HelpWindow, IndexIsFilteredAndEnterOpensThePage) {
    help.showIndex(file);
    auto& list = control<QHelpIndexWidget>("HelpIndex");
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() > 1; }));
    const int all = list.model()->rowCount();
    QTest::keyClicks(&control<QLineEdit>("HelpIndexFilter"), "F1");
    EXPECT_LT(list.model()->rowCount(), all);
    control<QLineEdit>("HelpIndexFilter").setText("工程信息");
    QTest::keyClick(&control<QLineEdit>("HelpIndexFilter"), Qt::Key_Return);
    EXPECT_EQ(page(), "DlgNew.html");
}

TEST_F(HelpWindow, SearchFindsChineseWordsAndMarksThemInThePage) {
    help.showContents(file);
    viewer().showSearch();
    auto& words = control<QLineEdit>("HelpWords");
    auto& hits = control<QListWidget>("HelpHits");
    EXPECT_EQ(viewer().focusWidget(), &words);
    words.setText("工程信息");
    QTest::keyClick(&words, Qt::Key_Return);
    ASSERT_GT(hits.count(), 0);
    EXPECT_EQ(hits.item(0)->text().section('\n', 0, 0), "新建方案、工程信息");
    QTest::keyClick(&hits, Qt::Key_Return);
    EXPECT_EQ(page(), "DlgNew.html");
    EXPECT_FALSE(viewer().browser().extraSelections().isEmpty());
    EXPECT_EQ(viewer().browser().extraSelections()[0].cursor.selectedText(), "工程信息");
    viewer().browser().setSource(QUrl("index.html"));
    EXPECT_TRUE(viewer().browser().extraSelections().isEmpty()) << "the marks are of one page";
}

TEST_F(HelpWindow, SearchSaysThatNothingWasFound) {
    help.showContents(file);
    viewer().showSearch();
    control<QLineEdit>("HelpWords").setText("钢筋混凝土");
    QTest::keyClick(&control<QLineEdit>("HelpWords"), Qt::Key_Return);
    EXPECT_EQ(control<QListWidget>("HelpHits").count(), 0);
    EXPECT_TRUE(control<QLabel>("HelpHitCount").text().startsWith("没有找到"));
}

TEST_F(HelpWindow, GoesBackAndForwardAndHome) {
    help.showContents(file);
    EXPECT_FALSE(control<QAction>("HelpBack").isEnabled());
    help.showPage(file, "frmBid");
    help.showPage(file, "DlgNew");
    control<QAction>("HelpBack").trigger();
    EXPECT_EQ(page(), "frmBid.html");
    control<QAction>("HelpForward").trigger();
    EXPECT_EQ(page(), "DlgNew.html");
    control<QAction>("HelpHome").trigger();
    EXPECT_EQ(page(), "index.html");
}

TEST_F(HelpWindow, ZoomsAndGoesBackToTheUsualSize) {
    help.showContents(file);
    const int usual = viewer().browser().font().pointSize();
    control<QAction>("HelpLarger").trigger();
    control<QAction>("HelpLarger").trigger();
    EXPECT_EQ(viewer().browser().font().pointSize(), usual + 2);
    control<QAction>("HelpSmaller").trigger();
    EXPECT_EQ(viewer().browser().font().pointSize(), usual + 1);
    control<QAction>("HelpUsualSize").trigger();
    EXPECT_EQ(viewer().browser().font().pointSize(), usual);
}

TEST_F(HelpWindow, PicturesAndStyleComeOutOfTheHelpFile) {
    help.showPage(file, "frmBid");
    auto& browser = viewer().browser();
    const QUrl picture("pictures/frmBid.png");
    EXPECT_FALSE(
        browser.loadResource(QTextDocument::ImageResource, picture).toByteArray().isEmpty());
    EXPECT_TRUE(browser.loadResource(QTextDocument::StyleSheetResource, QUrl("help.css"))
                    .toString()
                    .contains("h1"));
}

TEST_F(HelpWindow, ThePageWearsItsStyle) {
    help.showPage(file, "DlgNew");
    const QTextBlock heading = viewer().browser().document()->firstBlock();
    EXPECT_EQ(heading.text(), "新建方案、工程信息");
    EXPECT_EQ(heading.begin().fragment().charFormat().foreground().color(), QColor("#1d4e89"));
}

TEST_F(HelpWindow, EscapeClosesIt) {
    help.showContents(file);
    QTest::keyClick(&viewer(), Qt::Key_Escape);
    EXPECT_FALSE(viewer().isVisible());
}

TEST_F(HelpWindow, EveryControlHasAnAccessibleNameAndAKeyboardWay) {
    help.showContents(file);
    int controls = 0;
    for (const QWidget* widget : viewer().findChildren<QWidget*>()) {
        if (!widget->objectName().startsWith("Help")) {
            continue;
        }
        ++controls;
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
    }
    EXPECT_GT(controls, 8);
    auto& bar = control<QToolBar>("HelpToolBar");
    for (QAction* action : bar.actions()) {
        if (!action->isSeparator()) {
            EXPECT_FALSE(action->shortcut().isEmpty()) << action->text().toStdString();
            EXPECT_FALSE(bar.widgetForAction(action)->accessibleName().isEmpty());
        }
    }
    for (const char* list : {"HelpContents", "HelpIndex", "HelpHits", "HelpPage"}) {
        EXPECT_TRUE(control<QWidget>(list).focusPolicy() & Qt::TabFocus) << list;
    }
}

TEST_F(HelpWindow, MayGoWhileContentsAndIndexAreStillBeingRead) {
    for (int i = 0; i < 100; ++i) {
        desktop::QtHelpWindow another(folder.path("cache" + QString::number(i)));
        another.showContents(file);
        another.showPage(file, "DlgNew");
        QTest::keyClick(another.viewer()->windowHandle(), Qt::Key_Escape);
        another.showContents(file);
        EXPECT_TRUE(another.viewer()->isVisible());
    }
}

TEST_F(HelpWindow, CanBeUsedBesideAModalDialogAndOutlivesIt) {
    help.showContents(file);
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    help.showPage(file, "DlgNew");
    EXPECT_EQ(viewer().windowHandle()->transientParent(), dialog.windowHandle());
    QTest::keyClick(viewer().windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(viewer().isVisible()) << "the keyboard reached it";
    help.showContents(file);
    dialog.hide();
    EXPECT_TRUE(viewer().isVisible());
    EXPECT_EQ(viewer().windowHandle()->transientParent(), nullptr);
}

TEST_F(HelpWindow, KeepsOneCatalogueAndMakesItAnewForAChangedFile) {
    help.showContents(file);
    const QStringList first = catalogues();
    ASSERT_EQ(first.size(), 1);
    {
        desktop::QtHelpWindow again(folder.path("cache"));
        again.showContents(file);
        EXPECT_EQ(catalogues(), first) << "an unchanged file";
    }
    QFile changed(file);
    ASSERT_TRUE(changed.open(QIODevice::Append));
    changed.write("\n");
    changed.close();
    help.showContents(file);
    EXPECT_EQ(catalogues().size(), 1);
    EXPECT_NE(catalogues(), first);
    EXPECT_EQ(page(), "index.html");
}

TEST_F(HelpWindow, AHalfMadeCatalogueIsMadeOnceMore) {
    help.showContents(file);
    const QString catalogue = folder.path("cache") + '/' + catalogues().constFirst();
    desktop::QtHelpWindow again(folder.path("cache"));
    {
        QFile half(catalogue);
        ASSERT_TRUE(half.open(QIODevice::WriteOnly));
        half.write("half");
    }
    again.showPage(file, "DlgNew");
    EXPECT_EQ(again.viewer()->browser().source().fileName(), "DlgNew.html");
}

TEST_F(HelpWindow, AMissingFileIsToldByItsPath) {
    QFile::remove(file);
    EXPECT_EQ(failure(), error::fileNotFound);
    EXPECT_EQ(reason, "找不到帮助文件：" + QDir::toNativeSeparators(file) +
                          "\n请重新启动程序；仍然没有时，把安装包 share/qvnd 文件夹中的 "
                          "Qvnd.hlp 复制过来。");
}

TEST_F(HelpWindow, AFolderInItsPlaceCannotBeRead) {
    QFile::remove(file);
    QDir().mkpath(file);
    EXPECT_EQ(failure(), error::pathAccess);
    EXPECT_TRUE(reason.startsWith("不能读取帮助文件："));
}

TEST_F(HelpWindow, AFileThatIsNoHelpIsTold) {
    for (const QByteArray& content : {QByteArray("no help at all"), QByteArray()}) {
        writeFile(content);
        EXPECT_EQ(failure(), error::unrecognizedFormat);
        EXPECT_EQ(reason, "帮助文件已损坏，或者不是帮助文件：" + QDir::toNativeSeparators(file));
    }
}

TEST_F(HelpWindow, AFileThatWasCutOffIsTold) {
    QFile whole(test::builtHelpFile());
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray content = whole.readAll();
    for (const int part : {4, 2}) {
        writeFile(content.left(content.size() / part));
        EXPECT_EQ(failure(), error::unrecognizedFormat) << "one part of " << part;
    }
}

TEST_F(HelpWindow, AFileThatWasDamagedLaterClosesTheWindow) {
    help.showContents(file);
    writeFile("no help any more");
    EXPECT_EQ(failure(), error::unrecognizedFormat);
    EXPECT_EQ(help.viewer(), nullptr);
}

TEST_F(HelpWindow, ACacheThatCannotBeMadeIsToldByItsPath) {
    QFile inTheWay(folder.path("cache"));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    EXPECT_EQ(failure(), error::pathAccess);
    EXPECT_TRUE(reason.startsWith("不能建立帮助的缓存文件夹："));
}

} // namespace

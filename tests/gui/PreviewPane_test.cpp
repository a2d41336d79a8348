#include "platform/preview/windows/PreviewPane.h"

#include "outline/windows/PreviewFrame.h"
#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/FakeOffice.h"
#include "support/WaitFor.h"

#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QScrollBar>
#include <QTest>
#include <QThreadPool>

#include <gtest/gtest.h>

namespace qvnd::preview {
namespace {

using test::waitFor;

// A pane in the workbench's frame, with a suite that makes PDFs of as many pages as `pdf` has.
class PreviewPaneTest : public testing::Test {
protected:
    PreviewPaneTest() {
        office.setScript("mkdir -p \"$out\"; cp \"" + pdf.toUtf8() + "\" \"$out/document.pdf\"\n");
    }

    QString document(const QString& name, int paragraphs) {
        test::ContentBuilder builder;
        for (int i = 0; i < paragraphs; ++i) {
            builder.add({test::bold(u"施工方案的一段文字，说明各道工序的做法。\r")});
        }
        QString path = office.folder.path(name);
        word::DocumentWriter().saveAs(path.toStdU16String(), builder.content);
        return path;
    }
    // A document of another format under the name of a .doc.
    QString rtf(int characters = 4) const {
        office.folder.write("b.doc", "{\\rtf1 " + QByteArray(characters, 'x') + "}");
        return office.folder.path("b.doc");
    }
    // Pages wholly of that colour.
    void writePdf(int pages, const QColor& colour) {
        QPdfWriter writer(pdf);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins({});
        QPainter painter(&writer);
        for (int page = 0; page < pages; ++page) {
            if (page > 0) {
                writer.newPage();
            }
            painter.fillRect(QRect(0, 0, writer.width(), writer.height()), colour);
        }
    }
    // A frame with a pane on the suite, or without one.
    void open(bool withSuite) {
        ConversionSettings settings = office.settings();
        settings.program = withSuite ? settings.program : QString();
        settings.patience = patience;
        conversion = std::make_unique<PageConversion>(settings);
        pane = new PreviewPane(*conversion);
        frame = std::make_unique<outline::PreviewFrame>(*pane, *pane);
        frame->resize(640, 480);
        frame->show();
        QCoreApplication::processEvents();
    }
    void show(const QString& path) {
        frame->document().show(path);
        ASSERT_TRUE(waitFor([&] { return pane->pageCount() > 0; }));
        QCoreApplication::processEvents();
    }
    QWidget& area() { return *frame->findChild<QWidget*>("PicSee"); }
    QScrollBar& bar() { return *frame->findChild<QScrollBar*>("VSSee"); }
    QLabel& notice() { return *pane->findChild<QLabel*>("lblNotice"); }
    // Colour in the middle of what is seen.
    QColor middle() {
        const QImage seen = area().grab().toImage();
        return seen.pixelColor(seen.width() / 2, seen.height() / 2);
    }
    int top() const { return -pane->y(); }

    test::FakeOffice office;
    QString pdf = office.folder.path("made.pdf");
    std::chrono::milliseconds patience{60'000};
    std::unique_ptr<PageConversion> conversion;
    PreviewPane* pane = nullptr;
    std::unique_ptr<outline::PreviewFrame> frame;
};

bool hasInk(const QImage& image) {
    constexpr int darkerThanTheDesk = 100;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < darkerThanTheDesk) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(PreviewPaneTest, WithoutASuiteOurOwnReadingStandsAndNothingIsSaid) {
    open(false);
    show(document("a.doc", 3));
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_FALSE(pane->isExact());
    EXPECT_TRUE(pane->isVisible());
    EXPECT_TRUE(notice().isHidden());
    EXPECT_TRUE(hasInk(area().grab().toImage()));
    EXPECT_EQ(office.starts(), 0);
}

// The pages draw with its fonts.
TEST_F(PreviewPaneTest, TheThreadThatReadADocumentDoesNotEnd) {
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setExpiryTimeout(1);
    open(false);
    show(document("a.doc", 100));
    EXPECT_LT(pool.expiryTimeout(), 0);
    QTest::qWait(50);
    frame->resize(700, 480);
    EXPECT_TRUE(hasInk(area().grab().toImage()));
}

TEST_F(PreviewPaneTest, TheViewIsAsHighAsItsPagesNeed) {
    open(false);
    show(document("a.doc", 200));
    ASSERT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(pane->width(), area().width());
    EXPECT_EQ(pane->height(), pane->heightForWidth(area().width()));
    EXPECT_GT(pane->heightForWidth(800), pane->heightForWidth(400));
    EXPECT_EQ(bar().maximum(), 10);
}

TEST_F(PreviewPaneTest, ALongDocumentShowsItsFirstPagesAndThenTheOthers) {
    open(false);
    frame->document().show(document("a.doc", 600));
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 12; }));
}

TEST_F(PreviewPaneTest, AFileThatCannotBeOpenedIsRefusedAndNothingStaysShown) {
    open(false);
    show(document("a.doc", 3));
    office.folder.write("b.doc", "no document");
    try {
        frame->document().show(office.folder.path("b.doc"));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(), u"不能打开文件“b.doc”：不是 Word 97-2003 格式的文档。");
    }
    EXPECT_FALSE(pane->isVisible());
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_THROW(frame->document().show(office.folder.path("missing.doc")), RunTimeError);
}

TEST_F(PreviewPaneTest, ADocumentOfAnotherFormatShowsAsTheSuitesPages) {
    writePdf(4, Qt::green);
    open(true);
    const QString path = rtf();
    frame->document().show(path);
    EXPECT_EQ(notice().text(), "这是RTF 文档，正在由办公套件转换……");
    EXPECT_FALSE(notice().isHidden());
    ASSERT_TRUE(waitFor([&] { return pane->isExact(); }));
    EXPECT_EQ(pane->pageCount(), 4);
    EXPECT_TRUE(notice().isHidden());
    EXPECT_TRUE(waitFor([&] { return middle() == QColor(Qt::green); }));
}

TEST_F(PreviewPaneTest, ADocumentOfAnotherFormatThatTheSuiteRefusesSaysSo) {
    office.setScript("exit 1\n");
    open(true);
    frame->document().show(rtf());
    ASSERT_TRUE(waitFor([&] { return notice().text() == "办公套件无法转换这个文档。"; }));
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_TRUE(pane->isVisible());
}

TEST_F(PreviewPaneTest, WithoutASuiteADocumentOfAnotherFormatIsRefused) {
    open(false);
    const QString path = rtf();
    EXPECT_THROW(frame->document().show(path), RunTimeError);
    EXPECT_FALSE(pane->isVisible());
}

TEST_F(PreviewPaneTest, ALongDocumentOfAnotherFormatShowsAsTheSuitesPagesToo) {
    writePdf(2, Qt::green);
    open(true);
    frame->document().show(rtf(3'000'000));
    ASSERT_TRUE(waitFor([&] { return pane->isExact(); }));
    EXPECT_EQ(pane->pageCount(), 2);
}

TEST_F(PreviewPaneTest, TheExactPagesTakeOverWhenTheyAreReady) {
    writePdf(4, Qt::green);
    open(true);
    show(document("a.doc", 3));
    EXPECT_FALSE(pane->isExact());
    ASSERT_TRUE(waitFor([&] { return pane->isExact(); }));
    EXPECT_EQ(pane->pageCount(), 4);
    QCoreApplication::processEvents();
    EXPECT_EQ(pane->height(), pane->heightForWidth(area().width()));
    EXPECT_TRUE(waitFor([&] { return middle() == QColor(Qt::green); }));
    EXPECT_TRUE(notice().isHidden());
    EXPECT_TRUE(pane->accessibleDescription().contains("a.doc，共 4 页"));
}

TEST_F(PreviewPaneTest, ThePlaceThatIsSeenStaysWhenTheExactPagesArrive) {
    writePdf(12, Qt::green);
    office.setScript("while [ ! -e '" + office.folder.path("go").toUtf8() +
                     "' ]; do sleep 0.05; done\nmkdir -p \"$out\"; cp \"" + pdf.toUtf8() +
                     "\" \"$out/document.pdf\"\n");
    open(true);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->pageCount() > 6; }));
    QCoreApplication::processEvents();
    bar().setValue(4);
    pane->setFocus();
    QTest::keyClick(pane, Qt::Key_Down);
    const double before = double(top()) / pane->height();
    office.folder.write("go", "");
    ASSERT_TRUE(waitFor([&] { return pane->isExact() && pane->pageCount() == 12; }));
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_NEAR(double(top()) / pane->height(), before, 0.001);
    EXPECT_EQ(bar().value(), 4);
}

TEST_F(PreviewPaneTest, WhyTheExactPagesDoNotComeIsSaidAndTheReadingStays) {
    office.setScript("exit 1\n");
    open(true);
    show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return !notice().isHidden(); }));
    EXPECT_EQ(notice().text(), "办公套件无法转换这个文档。这里显示的是按内容读出的版面。");
    EXPECT_FALSE(pane->isExact());
    EXPECT_TRUE(hasInk(area().grab().toImage()));
    frame->document().show(document("b.doc", 2));
    EXPECT_TRUE(notice().isHidden());
}

TEST_F(PreviewPaneTest, ASuiteThatHangsIsEndedAndThatIsSaid) {
    office.setScript("exec sleep 600\n");
    patience = std::chrono::milliseconds(1200);
    open(true);
    show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return !notice().isHidden(); }));
    EXPECT_EQ(notice().text(), "办公套件长时间没有响应，已结束。这里显示的是按内容读出的版面。");
}

TEST_F(PreviewPaneTest, APdfThatCannotBeReadIsSaidAndNotKept) {
    office.setScript(test::FakeOffice::makePdf());
    open(true);
    show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return !notice().isHidden(); }));
    EXPECT_EQ(notice().text(), "转换的结果无法打开。这里显示的是按内容读出的版面。");
    EXPECT_EQ(QDir(office.folder.path("cache")).entryList({"*.pdf"}), QStringList());
}

TEST_F(PreviewPaneTest, HidingLetsGoOfTheDocument) {
    office.setScript("exec sleep 600\n");
    open(true);
    show(document("a.doc", 200));
    frame->document().hide();
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_FALSE(pane->isVisible());
    EXPECT_TRUE(waitFor([&] { return office.leftovers().isEmpty(); }));
}

TEST_F(PreviewPaneTest, KeysAndWheelScrollAndTheBarFollows) {
    open(false);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->pageCount() > 6; }));
    QCoreApplication::processEvents();
    const int page = area().height() * 9 / 10;
    QTest::keyClick(pane, Qt::Key_PageDown);
    EXPECT_NEAR(top(), page, 1);
    QTest::keyClick(pane, Qt::Key_PageDown);
    QTest::keyClick(pane, Qt::Key_PageUp);
    EXPECT_NEAR(top(), page, 1);
    QTest::keyClick(pane, Qt::Key_Up);
    EXPECT_NEAR(top(), page - 40, 1);
    QTest::keyClick(pane, Qt::Key_End);
    EXPECT_EQ(top(), pane->height() - area().height());
    EXPECT_EQ(bar().value(), qRound(10.0 * top() / pane->height()));
    QTest::keyClick(pane, Qt::Key_Home);
    EXPECT_EQ(top(), 0);
    QWheelEvent down({50, 50}, pane->mapToGlobal(QPointF(50, 50)), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(pane, &down);
    EXPECT_EQ(top(), 120);
    EXPECT_EQ(bar().value(), 0);
}

TEST_F(PreviewPaneTest, ThePaneTellsWhatItIsToThoseWhoCannotSeeIt) {
    open(false);
    EXPECT_EQ(pane->objectName(), "Olesee");
    EXPECT_EQ(pane->accessibleName(), "文档视图");
    show(document("方案.doc", 3));
    EXPECT_EQ(pane->accessibleDescription(), "方案.doc，共 1 页");
    EXPECT_EQ(pane->focusPolicy(), Qt::StrongFocus);
}

TEST_F(PreviewPaneTest, AnotherDocumentIsShownFromItsTop) {
    open(false);
    show(document("a.doc", 300));
    QTest::keyClick(pane, Qt::Key_End);
    show(document("b.doc", 250));
    EXPECT_EQ(top(), 0);
    EXPECT_EQ(bar().value(), 0);
}

// A file that the word processor has saved

TEST_F(PreviewPaneTest, ASavedDocumentIsShownAnewAtThePlaceThatIsSeen) {
    open(false);
    show(document("a.doc", 200));
    ASSERT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
    const int pages = pane->pageCount();
    QCoreApplication::processEvents();
    pane->move(0, -300);
    document("a.doc", 300);
    ASSERT_TRUE(waitFor([&] { return pane->pageCount() > pages; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(top(), 300);
}

TEST_F(PreviewPaneTest, ASavedDocumentIsDrawnExactlyAnew) {
    writePdf(2, Qt::red);
    open(true);
    show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return pane->isExact(); }));
    writePdf(5, Qt::blue);
    document("a.doc", 40);
    ASSERT_TRUE(waitFor([&] { return pane->isExact() && pane->pageCount() == 5; }));
}

TEST_F(PreviewPaneTest, WhileTheSavedFileCannotBeReadThePagesSeenStay) {
    open(false);
    show(document("a.doc", 3));
    office.folder.write("a.doc", "half written");
    ASSERT_TRUE(waitFor([&] { return !notice().isHidden(); }));
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_TRUE(hasInk(area().grab().toImage()));
    document("a.doc", 200);
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
    EXPECT_TRUE(notice().isHidden());
}

TEST_F(PreviewPaneTest, WhileItDoesNotFollowThePagesSeenStayAndAfterwardsTheNewOnesCome) {
    open(false);
    show(document("a.doc", 3));
    pane->setFollowing(false);
    document("a.doc", 200);
    QTest::qWait(700);
    EXPECT_EQ(pane->pageCount(), 1);
    pane->setFollowing(true);
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
}

TEST_F(PreviewPaneTest, AVeryLongDocumentIsAnnouncedAtOnceAndThenShown) {
    open(false);
    const QString path = document("a.doc", 40000);
    ASSERT_GT(QFileInfo(path).size(), 2'000'000);
    frame->document().show(path);
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_EQ(notice().text(), "正在读取文档……");
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
}

TEST_F(PreviewPaneTest, AHiddenPaneFollowsNoFile) {
    open(false);
    show(document("a.doc", 3));
    frame->document().hide();
    document("a.doc", 200);
    QTest::qWait(700);
    EXPECT_EQ(pane->pageCount(), 0);
}

} // namespace
} // namespace qvnd::preview

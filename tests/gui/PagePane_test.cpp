#include "platform/preview/windows/PagePane.h"

#include "outline/windows/PreviewFrame.h"
#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/Errors.h"
#include "support/FakeOffice.h"
#include "support/Metafiles.h"
#include "support/WaitFor.h"

#include <QLabel>
#include <QPainter>
#include <QPdfWriter>
#include <QScrollBar>
#include <QSemaphore>
#include <QTest>
#include <QThreadPool>

#include <gtest/gtest.h>

namespace qvnd::preview {
namespace {

using test::waitFor;

// A pane in the workbench's frame, with a suite that makes PDFs of as many pages as `pdf` has.
class PagePaneTest : public testing::Test {
protected:
    PagePaneTest() {
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
        pane = new PagePane(*conversion);
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
    // Shows a long file before any of it is read.
    void showUnread(const QString& path, const DocumentPreview::Failed& failed) {
        const auto isShown = std::make_shared<QSemaphore>();
        QThreadPool& readers = *QThreadPool::globalInstance();
        const int threads = readers.maxThreadCount();
        readers.setMaxThreadCount(1);
        readers.start([isShown] { isShown->acquire(); });
        frame->document().show(path);
        frame->document().onLateFailure(failed);
        isShown->release();
        readers.setMaxThreadCount(threads);
    }
    // Follows the file, and so tells when the other one would have seen a change.
    std::unique_ptr<PagePane> anotherPaneOn(const QString& path) {
        auto other = std::make_unique<PagePane>(*conversion);
        other->resize(area().size());
        other->show(path);
        EXPECT_TRUE(waitFor([&] { return other->pageCount() > 0; }));
        return other;
    }
    QWidget& area() { return *frame->findChild<QWidget*>("PicSee"); }
    QScrollBar& bar() { return *frame->findChild<QScrollBar*>("VSSee"); }
    QLabel& notice() { return *pane->findChild<QLabel*>("lblNotice"); }
    // Colour in the middle of what is seen.
    QColor middle() {
        const QImage seen = area().grab().toImage();
        return seen.pixelColor(seen.width() / 2, seen.height() / 2);
    }
    QScrollBar& pageBar() { return *pane->findChild<QScrollBar*>("PageBar"); }
    QAction& wish() { return *pane->findChild<QAction*>("mnuOfficePages"); }

    test::FakeOffice office;
    QString pdf = office.folder.path("made.pdf");
    std::chrono::milliseconds patience{60'000};
    std::unique_ptr<PageConversion> conversion;
    PagePane* pane = nullptr;
    std::unique_ptr<outline::PreviewFrame> frame;
};

bool showsInk(const QImage& image) {
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

TEST_F(PagePaneTest, ADocumentIsShownWithoutWhitePaperAtFirstAndNothingIsSaid) {
    open(false);
    frame->document().show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return pane->pageCount() > 0; }));
    EXPECT_TRUE(showsInk(area().grab().toImage()));
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_TRUE(pane->isVisible());
    EXPECT_TRUE(notice().isHidden());
    EXPECT_EQ(office.starts(), 0);
}

TEST_F(PagePaneTest, AResizedPageIsPaintedAnewAndNotStretchedForGood) {
    open(false);
    show(document("a.doc", 30));
    frame->resize(800, 480);
    QCoreApplication::processEvents();
    PagePane fresh(*conversion);
    fresh.resize(area().size());
    fresh.show(office.folder.path("a.doc"));
    ASSERT_TRUE(waitFor([&] { return fresh.isWhole() && pane->isWhole(); }));
    EXPECT_TRUE(waitFor([&] { return pane->grab().toImage() == fresh.grab().toImage(); }));
}

TEST_F(PagePaneTest, TheViewIsAsTallAsThePaneAndScrollsItself) {
    open(false);
    show(document("a.doc", 200));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    ASSERT_GT(pane->pageCount(), 3);
    EXPECT_EQ(pane->size(), area().size());
    EXPECT_EQ(area().width(), frame->contentsRect().width());
    EXPECT_EQ(bar().maximum(), 0);
    EXPECT_FALSE(bar().isVisible());
    EXPECT_TRUE(pageBar().isVisible());
}

TEST_F(PagePaneTest, ADocumentThatFitsNeedsNoScrollBar) {
    open(false);
    frame->resize(300, 900);
    show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    EXPECT_FALSE(pageBar().isVisible());
}

TEST_F(PagePaneTest, NoPlaceOfTheScrollBarShowsAnEmptyPane) {
    open(false);
    show(document("a.doc", 200));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    for (int step = 0; step <= 20; ++step) {
        pageBar().setValue(pageBar().maximum() * step / 20);
        EXPECT_TRUE(waitFor([&] { return showsInk(area().grab().toImage()); })) << step;
    }
}

TEST_F(PagePaneTest, ALongDocumentShowsItsFirstPageAndThenFindsTheOthers) {
    open(false);
    std::vector<int> counts; // whenever there is more to scroll
    QObject::connect(&pageBar(), &QScrollBar::rangeChanged, pane,
                     [&] { counts.push_back(pane->pageCount()); });
    frame->document().show(document("a.doc", 600));
    EXPECT_TRUE(waitFor([&] { return pane->isWhole(); }));
    EXPECT_GT(pane->pageCount(), 12);
    std::erase(counts, 0);
    ASSERT_FALSE(counts.empty());
    EXPECT_EQ(counts.front(), 1) << "as soon as it is there, and the others came later";
}

TEST_F(PagePaneTest, AFileThatCannotBeOpenedIsRefusedAndNothingStaysShown) {
    open(false);
    show(document("a.doc", 3));
    office.folder.write("b.doc", "no document");
    try {
        frame->document().show(office.folder.path("b.doc"));
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error::documentNotShown);
        EXPECT_EQ(error.description(), u"不能打开文件“b.doc”：不是 Word 97-2003 格式的文档。");
    }
    EXPECT_FALSE(pane->isVisible());
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_EQ(test::errorNumberOf([&] { frame->document().show("missing.doc"); }),
              error::fileNotFound);
}

TEST_F(PagePaneTest, WhatALongFileTurnsOutToBeIsToldLaterOnceAndSaid) {
    open(false);
    office.folder.write("b.doc", QByteArray(3'000'000, 'x'));
    std::vector<RunTimeError> told;
    showUnread(office.folder.path("b.doc"), [&](const RunTimeError& failure) {
        told.push_back(failure);
        return true;
    });
    ASSERT_TRUE(waitFor([&] { return !told.empty(); }));
    EXPECT_EQ(told[0].number(), error::documentNotShown);
    EXPECT_EQ(told[0].description(), u"不能打开文件“b.doc”：不是 Word 97-2003 格式的文档。");
    EXPECT_EQ(notice().text(), "不能打开文件“b.doc”：不是 Word 97-2003 格式的文档。");
    office.folder.write("b.doc", QByteArray(3'000'001, 'y'));
    test::waitFor([] { return false; }, 500);
    EXPECT_EQ(told.size(), 1U) << "nobody has asked for what was saved since";
}

// What the file is was found by whoever has read it: nobody reads it again.
TEST_F(PagePaneTest, TheFormatOfALongFileComesWithItsRefusal) {
    writePdf(2, Qt::green);
    open(true);
    const QString path = rtf(3'000'000);
    bool isTold = false;
    showUnread(path, [&](const RunTimeError&) { return isTold = true; });
    QThreadPool::globalInstance()->waitForDone();
    pane->setFollowing(false);
    document("b.doc", 3);
    EXPECT_TRUE(waitFor([this] { return pane->showsOfficePages(); }));
    EXPECT_EQ(pane->pageCount(), 2);
    EXPECT_FALSE(isTold);
}

TEST_F(PagePaneTest, ADocumentThatIsNoLongerWantedTellsNothing) {
    open(false);
    office.folder.write("b.doc", QByteArray(3'000'000, 'x'));
    bool isTold = false;
    showUnread(office.folder.path("b.doc"), [&](const RunTimeError&) { return isTold = true; });
    show(document("a.doc", 3));
    test::waitFor([] { return false; }, 300);
    EXPECT_FALSE(isTold);
}

TEST_F(PagePaneTest, AFailureThatCannotBeToldYetIsToldLaterOnce) {
    open(false);
    office.folder.write("b.doc", QByteArray(3'000'000, 'x'));
    int asked = 0;
    showUnread(office.folder.path("b.doc"), [&](const RunTimeError&) { return ++asked == 3; });
    ASSERT_TRUE(waitFor([&] { return asked == 3; }));
    test::waitFor([] { return false; }, 300);
    EXPECT_EQ(asked, 3);
}

TEST_F(PagePaneTest, AFailureThatCouldNotBeToldYetIsForgottenWhenSomethingElseIsShown) {
    open(false);
    office.folder.write("b.doc", QByteArray(3'000'000, 'x'));
    int asked = 0;
    const auto refuse = [&](const RunTimeError&) {
        ++asked;
        return false;
    };
    showUnread(office.folder.path("b.doc"), refuse);
    ASSERT_TRUE(waitFor([&] { return asked > 0; }));
    frame->document().show(document("a.doc", 3));
    frame->document().onLateFailure(refuse);
    const int before = asked;
    test::waitFor([] { return false; }, 300);
    EXPECT_EQ(asked, before);
    EXPECT_EQ(pane->pageCount(), 1);
}

TEST_F(PagePaneTest, AnEmptyDocumentIsOneWhitePage) {
    open(false);
    show(document("a.doc", 0));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_EQ(middle(), QColor(Qt::white));
}

TEST_F(PagePaneTest, APictureThatCannotBeDrawnKeepsItsPlaceAndIsNamed) {
    test::ContentBuilder builder;
    const word::Bytes wmf = test::WmfBuilder().window(10, 10).placeable(0, 0, 960, 960, 96);
    auto picture = *word::Picture::fromImage(wmf);
    picture.setWidth(7000);
    picture.setHeight(7000);
    builder.content.tables.blobs.push_back(picture.blob());
    const word::Bytes inPlace =
        word::withSprm8(word::withSprm32({}, word::sprm::CPicLocation, 0), word::sprm::CFSpec, 1);
    builder.add({{u"\x01", inPlace}, test::plain(u"\r")});
    word::DocumentWriter().saveAs(office.folder.path("a.doc").toStdU16String(), builder.content);
    open(false);
    show(office.folder.path("a.doc"));
    const QImage seen = area().grab().toImage();
    const QColor grey(0xF0, 0xF0, 0xF0);
    int greyPixels = 0;
    for (int x = 0; x < seen.width(); ++x) {
        greyPixels += seen.pixelColor(x, seen.height() / 2) == grey ? 1 : 0;
    }
    EXPECT_GT(greyPixels, seen.width() / 3);
}

// The office suite's pages, as a second opinion

TEST_F(PagePaneTest, TheSuiteIsStartedAtTheUsersWishAlone) {
    writePdf(4, Qt::green);
    open(true);
    show(document("a.doc", 3));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(office.starts(), 0);
    EXPECT_FALSE(pane->showsOfficePages());
    EXPECT_TRUE(wish().isEnabled());
}

TEST_F(PagePaneTest, WithoutASuiteTheWishCannotBeMade) {
    open(false);
    show(document("a.doc", 3));
    EXPECT_FALSE(wish().isEnabled());
    EXPECT_TRUE(wish().text().contains("没有安装 LibreOffice"));
}

TEST_F(PagePaneTest, TheSuitesPagesTakeOverWhenTheyAreReadyAndGoAgain) {
    writePdf(4, Qt::green);
    open(true);
    show(document("a.doc", 3));
    wish().trigger();
    EXPECT_EQ(notice().text(), "正在由办公套件排版……");
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages(); }));
    EXPECT_EQ(pane->pageCount(), 4);
    EXPECT_TRUE(waitFor([&] { return middle() == QColor(Qt::green); }));
    EXPECT_TRUE(notice().isHidden());
    EXPECT_TRUE(pane->accessibleDescription().contains("a.doc，共 4 页"));
    wish().trigger();
    EXPECT_FALSE(pane->showsOfficePages());
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_TRUE(waitFor([&] { return showsInk(area().grab().toImage()); }));
}

TEST_F(PagePaneTest, AnotherDocumentIsShownAsOurOwnLayoutHasIt) {
    writePdf(4, Qt::green);
    open(true);
    show(document("a.doc", 3));
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages(); }));
    show(document("b.doc", 3));
    EXPECT_FALSE(wish().isChecked());
    EXPECT_FALSE(pane->showsOfficePages());
}

TEST_F(PagePaneTest, ThePlaceThatIsSeenStaysWhenTheSuitesPagesArrive) {
    writePdf(12, Qt::green);
    open(true);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    pane->scrollTo(pageBar().maximum() * 4 / 10);
    const double before = double(pane->top()) / pageBar().maximum();
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages() && pane->pageCount() == 12; }));
    EXPECT_NEAR(double(pane->top()) / pageBar().maximum(), before, 0.02);
}

TEST_F(PagePaneTest, WhyTheSuitesPagesDoNotComeIsSaidAndOurOwnStay) {
    office.setScript("exit 1\n");
    open(true);
    show(document("a.doc", 3));
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return notice().text().contains("无法转换"); }));
    EXPECT_EQ(notice().text(), "办公套件无法转换这个文档。这里显示的是系统自己排的版面。");
    EXPECT_FALSE(wish().isChecked());
    EXPECT_TRUE(showsInk(area().grab().toImage()));
    frame->document().show(document("b.doc", 2));
    EXPECT_TRUE(notice().isHidden());
}

TEST_F(PagePaneTest, ASuiteThatHangsIsEndedAndThatIsSaid) {
    office.setScript("exec sleep 600\n");
    patience = std::chrono::milliseconds(1200);
    open(true);
    show(document("a.doc", 3));
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return notice().text().contains("长时间"); }));
    EXPECT_EQ(notice().text(), "办公套件长时间没有响应，已结束。这里显示的是系统自己排的版面。");
}

TEST_F(PagePaneTest, APdfThatCannotBeReadIsSaidAndNotKept) {
    office.setScript(test::FakeOffice::makePdf());
    open(true);
    show(document("a.doc", 3));
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return notice().text().contains("无法打开"); }));
    EXPECT_EQ(notice().text(), "转换的结果无法打开。这里显示的是系统自己排的版面。");
    EXPECT_EQ(QDir(office.folder.path("cache")).entryList({"*.pdf"}), QStringList());
}

TEST_F(PagePaneTest, HidingLetsGoOfTheDocumentAndOfTheSuite) {
    office.setScript("exec sleep 600\n");
    open(true);
    show(document("a.doc", 200));
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return office.starts() == 1; }));
    frame->document().hide();
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_FALSE(pane->isVisible());
    EXPECT_TRUE(waitFor([&] { return office.leftovers().isEmpty(); }));
}

TEST_F(PagePaneTest, ADocumentOfAnotherFormatShowsAsTheSuitesPages) {
    writePdf(4, Qt::green);
    open(true);
    const QString path = rtf();
    frame->document().show(path);
    EXPECT_EQ(notice().text(), "这是RTF 文档，正在由办公套件转换……");
    EXPECT_FALSE(notice().isHidden());
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages(); }));
    EXPECT_EQ(pane->pageCount(), 4);
    EXPECT_TRUE(notice().isHidden());
    EXPECT_FALSE(wish().isEnabled()) << "there are no other pages";
    EXPECT_TRUE(waitFor([&] { return middle() == QColor(Qt::green); }));
}

TEST_F(PagePaneTest, ADocumentOfAnotherFormatThatTheSuiteRefusesSaysSo) {
    office.setScript("exit 1\n");
    open(true);
    long told = 0;
    frame->document().show(rtf());
    frame->document().onLateFailure([&](const RunTimeError& failure) {
        told = failure.number();
        return true;
    });
    ASSERT_TRUE(waitFor([&] { return notice().text() == "办公套件无法转换这个文档。"; }));
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_TRUE(pane->isVisible());
    EXPECT_TRUE(waitFor([&] { return told == error::documentNotShown; }));
}

TEST_F(PagePaneTest, WithoutASuiteADocumentOfAnotherFormatIsRefused) {
    open(false);
    const QString path = rtf();
    EXPECT_THROW(frame->document().show(path), RunTimeError);
    EXPECT_FALSE(pane->isVisible());
}

TEST_F(PagePaneTest, ALongDocumentOfAnotherFormatShowsAsTheSuitesPagesToo) {
    writePdf(2, Qt::green);
    open(true);
    frame->document().show(rtf(3'000'000));
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages(); }));
    EXPECT_EQ(pane->pageCount(), 2);
}

TEST_F(PagePaneTest, ADocumentSavedInOurFormatAgainIsShownAsOurOwnLayoutHasIt) {
    writePdf(2, Qt::green);
    open(true);
    frame->document().show(rtf());
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages(); }));
    document("b.doc", 3);
    ASSERT_TRUE(waitFor([&] { return !pane->showsOfficePages(); }));
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_TRUE(waitFor([&] { return showsInk(area().grab().toImage()); }));
}

// Scrolling

TEST_F(PagePaneTest, KeysAndWheelScrollLineByLineAndByWhatIsSeen) {
    open(false);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    const int screen = qRound(area().height() * 0.9);
    QTest::keyClick(pane, Qt::Key_PageDown);
    EXPECT_EQ(pane->top(), screen);
    QTest::keyClick(pane, Qt::Key_Space);
    QTest::keyClick(pane, Qt::Key_PageUp);
    EXPECT_EQ(pane->top(), screen);
    QTest::keyClick(pane, Qt::Key_Up);
    EXPECT_EQ(pane->top(), screen - 40);
    QTest::keyClick(pane, Qt::Key_Down);
    EXPECT_EQ(pane->top(), screen);
    QTest::keyClick(pane, Qt::Key_End);
    EXPECT_EQ(pane->top(), pageBar().maximum());
    QTest::keyClick(pane, Qt::Key_Home);
    EXPECT_EQ(pane->top(), 0);
    QWheelEvent down({50, 50}, pane->mapToGlobal(QPointF(50, 50)), {}, {0, -120}, Qt::NoButton, {},
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(pane, &down);
    EXPECT_EQ(pane->top(), 120);
}

TEST_F(PagePaneTest, CtrlWithPageKeysScrollsPageByPage) {
    open(false);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    QTest::keyClick(pane, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(pane->pageSeen(), 1);
    const int second = pane->top();
    QTest::keyClick(pane, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(pane->pageSeen(), 2);
    QTest::keyClick(pane, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(pane->top(), second);
}

TEST_F(PagePaneTest, ThePartOfThePageThatIsSeenStaysWhenThePaneIsResized) {
    open(false);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    QTest::keyClick(pane, Qt::Key_PageDown, Qt::ControlModifier);
    QTest::keyClick(pane, Qt::Key_PageDown, Qt::ControlModifier);
    frame->resize(900, 480);
    QCoreApplication::processEvents();
    EXPECT_EQ(pane->pageSeen(), 2);
}

TEST_F(PagePaneTest, ThePaneTellsWhatItIsToThoseWhoCannotSeeIt) {
    open(false);
    EXPECT_EQ(pane->objectName(), "Olesee");
    EXPECT_EQ(pane->accessibleName(), "文档视图");
    show(document("方案.doc", 3));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    EXPECT_EQ(pane->accessibleDescription(), "方案.doc，共 1 页");
    EXPECT_EQ(pane->focusPolicy(), Qt::StrongFocus);
}

TEST_F(PagePaneTest, AnotherDocumentIsShownFromItsTop) {
    open(false);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    QTest::keyClick(pane, Qt::Key_End);
    show(document("b.doc", 250));
    EXPECT_EQ(pane->top(), 0);
}

// A file that the word processor has saved

TEST_F(PagePaneTest, ASavedDocumentIsShownAnewAtThePlaceThatIsSeen) {
    open(false);
    show(document("a.doc", 200));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    const int pages = pane->pageCount();
    pane->scrollTo(1700);
    document("a.doc", 300);
    ASSERT_TRUE(waitFor([&] { return pane->isWhole() && pane->pageCount() > pages; }));
    EXPECT_EQ(pane->top(), 1700);
    EXPECT_TRUE(showsInk(area().grab().toImage()));
}

TEST_F(PagePaneTest, ASavedDocumentThatEndsBeforeThePlaceIsShownAtItsEnd) {
    open(false);
    show(document("a.doc", 300));
    ASSERT_TRUE(waitFor([&] { return pane->isWhole(); }));
    QTest::keyClick(pane, Qt::Key_End);
    const int pages = pane->pageCount();
    document("a.doc", 60);
    ASSERT_TRUE(waitFor([&] { return pane->isWhole() && pane->pageCount() < pages; }));
    EXPECT_EQ(pane->top(), pageBar().maximum());
    EXPECT_TRUE(waitFor([&] { return showsInk(area().grab().toImage()); }));
}

TEST_F(PagePaneTest, ASavedDocumentIsConvertedAnewWhereTheSuitesPagesAreSeen) {
    writePdf(2, Qt::red);
    open(true);
    show(document("a.doc", 3));
    wish().trigger();
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages(); }));
    writePdf(5, Qt::blue);
    document("a.doc", 40);
    ASSERT_TRUE(waitFor([&] { return pane->showsOfficePages() && pane->pageCount() == 5; }));
}

TEST_F(PagePaneTest, WhileTheSavedFileCannotBeReadThePagesSeenStay) {
    open(false);
    show(document("a.doc", 3));
    office.folder.write("a.doc", "half written");
    ASSERT_TRUE(waitFor([&] { return !notice().isHidden(); }));
    EXPECT_EQ(pane->pageCount(), 1);
    EXPECT_TRUE(showsInk(area().grab().toImage()));
    document("a.doc", 200);
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
    EXPECT_TRUE(notice().isHidden());
}

TEST_F(PagePaneTest, WhileItDoesNotFollowThePagesSeenStayAndAfterwardsTheNewOnesCome) {
    open(false);
    show(document("a.doc", 3));
    pane->setFollowing(false);
    const auto other = anotherPaneOn(office.folder.path("a.doc"));
    document("a.doc", 200);
    ASSERT_TRUE(waitFor([&] { return other->pageCount() > 3; }));
    EXPECT_EQ(pane->pageCount(), 1);
    pane->setFollowing(true);
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
}

TEST_F(PagePaneTest, AVeryLongDocumentIsAnnouncedAtOnceAndThenShown) {
    open(false);
    const QString path = document("a.doc", 40000);
    ASSERT_GT(QFileInfo(path).size(), 2'000'000);
    frame->document().show(path);
    EXPECT_EQ(pane->pageCount(), 0);
    EXPECT_EQ(notice().text(), "正在读取文档……");
    EXPECT_TRUE(waitFor([&] { return pane->pageCount() > 3; }));
    EXPECT_TRUE(notice().isHidden());
    EXPECT_FALSE(pane->isWhole());
    EXPECT_TRUE(waitFor([&] { return pane->accessibleDescription().contains("已排出"); }));
}

TEST_F(PagePaneTest, AHiddenPaneFollowsNoFile) {
    open(false);
    show(document("a.doc", 3));
    const auto other = anotherPaneOn(office.folder.path("a.doc"));
    frame->document().hide();
    document("a.doc", 200);
    ASSERT_TRUE(waitFor([&] { return other->pageCount() > 3; }));
    EXPECT_EQ(pane->pageCount(), 0);
}

} // namespace
} // namespace qvnd::preview

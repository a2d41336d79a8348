#include "platform/preview/PaintedPages.h"

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/Files.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

namespace qvnd::preview {
namespace {

using test::waitFor;
using namespace std::chrono_literals;

class PagesOfAFile : public testing::Test {
protected:
    QString document(int paragraphs) {
        test::ContentBuilder builder;
        for (int i = 0; i < paragraphs; ++i) {
            builder.add({test::bold(u"施工方案的一段文字，说明各道工序的做法。\r")});
        }
        QString path = folder.path("a.doc");
        word::DocumentWriter().saveAs(path.toStdU16String(), builder.content);
        return path;
    }
    PaintedPages& open(const QString& path) {
        pages = std::make_unique<PaintedPages>(
            path, fonts, [](QSizeF size) { return qRound(size.width()); },
            PaintedPages::Receiver{[this](const PaintedPages::Sizes& found, bool whole) {
                                       sizes = found;
                                       isWhole = whole;
                                   },
                                   [this](int page, const QImage& image) { images[page] = image; },
                                   [this] { ++outdated; },
                                   [this](const RunTimeError& failed) {
                                       failure = QString::fromStdU16String(failed.description());
                                   }});
        return *pages;
    }

    int argc = 1;
    char name[5] = "test";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    test::TemporaryFolder folder;
    std::shared_ptr<FontShelf> fonts = std::make_shared<FontShelf>();
    PaintedPages::Sizes sizes;
    bool isWhole = false;
    std::map<int, QImage> images;
    int outdated = 0;
    QString failure;
    std::unique_ptr<PaintedPages> pages;
};

bool isInked(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qGray(image.pixel(x, y)) < 100) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(PagesOfAFile, TheFirstPageComesPaintedInTheWidthThatItsSizeAsksFor) {
    const PaintedPages::First first = open(document(100)).wait(60s);
    ASSERT_FALSE(first.sizes.empty());
    EXPECT_EQ(first.image.width(), qRound(first.sizes.front().width()));
    EXPECT_NEAR(first.image.height(), first.sizes.front().height(), 1);
    EXPECT_TRUE(isInked(first.image));
}

TEST_F(PagesOfAFile, AFirstPageThatIsNotWaitedForComesToTheReceiver) {
    EXPECT_TRUE(open(document(100)).wait(0s).sizes.empty());
    EXPECT_TRUE(waitFor([&] { return images.contains(0) && !sizes.empty(); }));
}

TEST_F(PagesOfAFile, AllPagesAreFoundWithoutBeingAskedFor) {
    open(document(400)).wait(60s);
    EXPECT_TRUE(waitFor([&] { return isWhole; }));
    EXPECT_GT(sizes.size(), 8U);
    EXPECT_TRUE(images.empty()) << "only what is wanted is painted";
    EXPECT_EQ(outdated, 0);
}

TEST_F(PagesOfAFile, AWantedPageIsPaintedAsSoonAsItIsFound) {
    open(document(400)).wait(60s);
    pages->want({{5, 300}});
    ASSERT_TRUE(waitFor([&] { return images.contains(5); }));
    EXPECT_EQ(images[5].width(), 300);
    EXPECT_TRUE(isInked(images[5]));
}

TEST_F(PagesOfAFile, PagesAreStillPaintedWhenAllAreFound) {
    open(document(100)).wait(60s);
    ASSERT_TRUE(waitFor([&] { return isWhole; }));
    for (const int width : {100, 200, 300}) {
        pages->want({{1, width}});
        ASSERT_TRUE(waitFor([&] { return images[1].width() == width; }));
    }
}

TEST_F(PagesOfAFile, APageThatTheDocumentDoesNotHaveIsNotPainted) {
    open(document(3)).wait(60s);
    ASSERT_TRUE(waitFor([&] { return isWhole; }));
    pages->want({{-1, 100}, {7, 100}, {0, 100}});
    ASSERT_TRUE(waitFor([&] { return images.contains(0); }));
    EXPECT_EQ(images.size(), 1U);
}

TEST_F(PagesOfAFile, AfterItsEndNothingComes) {
    open(document(400)).wait(60s);
    pages.reset();
    test::waitFor([] { return false; }, 200);
    EXPECT_FALSE(isWhole);
    EXPECT_TRUE(sizes.empty());
}

TEST_F(PagesOfAFile, AFileThatCannotBeReadIsRefusedWithTheReason) {
    folder.write("b.doc", "no document");
    try {
        open(folder.path("b.doc")).wait(60s);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.description(), u"不能打开文件“b.doc”：不是 Word 97-2003 格式的文档。");
    }
    try {
        open(folder.path("missing.doc")).wait(60s);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error::fileNotFound);
    }
}

TEST_F(PagesOfAFile, AReasonThatComesTooLateToBeThrownGoesToTheReceiver) {
    folder.write("b.doc", "no document");
    try {
        open(folder.path("b.doc")).wait(0s);
        EXPECT_TRUE(waitFor([&] { return !failure.isEmpty(); }));
    } catch (const RunTimeError& early) {
        failure = QString::fromStdU16String(early.description());
    }
    EXPECT_EQ(failure, "不能打开文件“b.doc”：不是 Word 97-2003 格式的文档。");
}

TEST(FontShelf, FontsThatWereGivenBackAreTakenAgain) {
    FontShelf shelf;
    auto fonts = shelf.take();
    const drawing::FontFaces* const known = fonts.get();
    shelf.giveBack(std::move(fonts));
    const auto first = shelf.take();
    EXPECT_EQ(first.get(), known);
    EXPECT_NE(shelf.take().get(), known) << "while they are in use, others are made";
}

} // namespace
} // namespace qvnd::preview

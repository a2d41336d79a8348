#include "platform/pictures/Picture.h"

#include "support/Metafiles.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColor>
#include <QElapsedTimer>
#include <QPainter>

#include <cmath>
#include <initializer_list>
#include <random>

namespace qvnd::test {
namespace {

using pictures::Picture;

constexpr std::uint32_t red = rgb(255, 0, 0);
constexpr std::uint32_t green = rgb(0, 255, 0);
constexpr std::uint32_t blue = rgb(0, 0, 255);
constexpr std::uint32_t sourceCopy = 0x00CC0020;
constexpr std::uint32_t sourceAnd = 0x008800C6;

// Found once for all tests.
drawing::FontFaces& fonts() {
    static drawing::FontFaces faces(drawing::FontChoice::named);
    return faces;
}

QByteArray qtBytes(const word::Bytes& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

// On white paper of 100 by 100.
QImage drawn(const QByteArray& file, QRect target = {0, 0, 100, 100}) {
    QImage paper(100, 100, QImage::Format_ARGB32_Premultiplied);
    paper.fill(Qt::white);
    QPainter painter(&paper);
    painter.drawImage(target.topLeft(), Picture::fromData(file).image(target.size(), fonts()));
    return paper;
}
QImage drawn(const word::Bytes& file, QRect target = {0, 0, 100, 100}) {
    return drawn(qtBytes(file), target);
}

bool isAlike(QColor seen, QColor wanted) {
    return std::abs(seen.red() - wanted.red()) < 40 &&
           std::abs(seen.green() - wanted.green()) < 40 &&
           std::abs(seen.blue() - wanted.blue()) < 40;
}

struct Spot {
    int x;
    int y;
    QColor color;
};

void expectSpots(const QImage& paper, const std::vector<Spot>& spots) {
    for (const Spot& spot : spots) {
        const QColor seen = paper.pixelColor(spot.x, spot.y);
        EXPECT_TRUE(isAlike(seen, spot.color))
            << spot.x << "," << spot.y << " is " << seen.name().toStdString() << ", not "
            << spot.color.name().toStdString();
    }
}

// How many pixels of the area are no longer white.
int ink(const QImage& paper, QRect area) {
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            count += paper.pixelColor(x, y) != QColor(Qt::white);
        }
    }
    return count;
}

// More pixels than `least` in the one place, none in the others.
void expectText(const QImage& paper, QRect place, int least, std::initializer_list<QRect> empty) {
    EXPECT_GT(ink(paper, place), least);
    for (const QRect& area : empty) {
        EXPECT_EQ(ink(paper, area), 0) << "from " << area.left() << "," << area.top();
    }
}

WmfBuilder redBrush() {
    WmfBuilder wmf;
    wmf.pen(5, 0, 0).select(0).brush(red).select(1);
    return wmf;
}

QByteArray encoded(const char* format) {
    QImage image(4, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

TEST(PictureFile, BmpJpgAndPngAreStretchedOverTheirPlace) {
    for (const char* format : {"BMP", "JPG", "PNG"}) {
        const Picture picture = Picture::fromData(encoded(format));
        ASSERT_FALSE(picture.isNull()) << format;
        expectSpots(drawn(encoded(format), {10, 10, 50, 80}),
                    {{5, 5, Qt::white}, {12, 12, Qt::red}, {58, 88, Qt::red}, {65, 50, Qt::white}});
    }
}

TEST(PictureFile, AGifShowsItsFirstFrame) {
    // One pixel of pure red, as the smallest files are written by hand.
    const QByteArray gif = QByteArray::fromHex(
        "47494638396101000100800000ff000000000021f90400000000002c000000000100010000020244010"
        "03b");
    const Picture picture = Picture::fromData(gif);
    ASSERT_FALSE(picture.isNull());
    expectSpots(drawn(gif), {{50, 50, Qt::red}});
}

TEST(PictureFile, OtherBytesAreNoPicture) {
    EXPECT_TRUE(Picture::fromData({}).isNull());
    EXPECT_TRUE(Picture::fromData("no picture at all").isNull());
    EXPECT_TRUE(Picture::fromData(encoded("PNG").first(20)).isNull());
    EXPECT_TRUE(Picture::fromFile("/nowhere/at/all.bmp").isNull());
    EXPECT_EQ(ink(drawn("no picture at all"), {0, 0, 100, 100}), 0);
}

TEST(WmfPicture, APlaceableFileFillsItsPlaceWithItsBounds) {
    const word::Bytes file = redBrush().rectangle(0, 0, 500, 250).placeable(0, 0, 1000, 500, 1000);
    expectSpots(drawn(file),
                {{10, 10, Qt::red}, {45, 45, Qt::red}, {55, 45, Qt::white}, {45, 55, Qt::white}});
}

TEST(WmfPicture, APlainFileFillsItsPlaceWithItsWindow) {
    WmfBuilder wmf = redBrush();
    wmf.origin(100, 100).window(200, 200).rectangle(100, 100, 200, 300);
    expectSpots(drawn(wmf.plain()),
                {{5, 5, Qt::red}, {45, 95, Qt::red}, {55, 5, Qt::white}, {95, 95, Qt::white}});
}

TEST(WmfPicture, APlainFileWithoutAWindowShowsNoArea) {
    EXPECT_TRUE(Picture::fromData(qtBytes(redBrush().rectangle(0, 0, 10, 10).plain())).isNull());
}

TEST(WmfPicture, AWindowThatGoesUpwardsStandsUpright) {
    WmfBuilder wmf = redBrush();
    wmf.origin(0, 100).window(100, -100).rectangle(0, 0, 100, 50);
    expectSpots(drawn(wmf.plain()), {{50, 20, Qt::white}, {50, 80, Qt::red}});
}

TEST(WmfPicture, AFreedPlaceOfTheTableIsTakenAgain) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).remove(1).brush(green).select(1).rectangle(0, 0, 100, 100);
    expectSpots(drawn(wmf.plain()), {{50, 50, Qt::green}});
}

TEST(WmfPicture, EveryKindOfObjectTakesAPlaceOfTheTable) {
    WmfBuilder wmf;
    wmf.window(100, 100);
    wmf.record(0x00F7, {0x300, 0});   // palette
    wmf.record(0x01F9, {0, 0, 0, 0}); // pattern
    wmf.pen(5, 0, 0).select(2).brush(green).select(3).rectangle(0, 0, 100, 100);
    expectSpots(drawn(wmf.plain()), {{50, 50, Qt::green}});
}

TEST(WmfPicture, SavedStateComesBack) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).brush(green).record(0x001E, {}).select(2);
    wmf.rectangle(0, 0, 50, 100).record(0x0127, {-1}).rectangle(50, 0, 100, 100);
    expectSpots(drawn(wmf.plain()), {{25, 50, Qt::green}, {75, 50, Qt::red}});
}

TEST(WmfPicture, ClippingKeepsTheRestAway) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).record(0x0416, {90, 90, 10, 10}).record(0x0415, {60, 60, 40, 40});
    wmf.rectangle(0, 0, 100, 100);
    expectSpots(drawn(wmf.plain()),
                {{5, 5, Qt::white}, {20, 20, Qt::red}, {50, 50, Qt::white}, {95, 50, Qt::white}});
}

TEST(WmfPicture, NothingIsDrawnOutsideItsPlace) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).rectangle(-500, -500, 500, 500);
    expectSpots(drawn(wmf.plain(), {20, 20, 40, 40}),
                {{40, 40, Qt::red}, {10, 40, Qt::white}, {70, 40, Qt::white}, {40, 70, Qt::white}});
}

TEST(WmfPicture, APolygonIsFilledByItsRule) {
    const std::initializer_list<int> twice{8,  0,  0,  100, 0,  100, 100, 0, 100,
                                           25, 25, 75, 25,  75, 75,  25,  75};
    WmfBuilder alternate = redBrush();
    alternate.window(100, 100).record(0x0106, {1}).record(0x0324, twice);
    WmfBuilder winding = redBrush();
    winding.window(100, 100).record(0x0106, {2}).record(0x0324, twice);
    expectSpots(drawn(alternate.plain()), {{90, 50, Qt::red}, {50, 60, Qt::white}});
    expectSpots(drawn(winding.plain()), {{90, 50, Qt::red}, {50, 60, Qt::red}});
}

TEST(WmfPicture, PolygonsOfOneRecordFormOneShape) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).record(0x0106, {1});
    wmf.record(0x0538, {2, 4, 4, 0, 0, 100, 0, 100, 100, 0, 100, 25, 25, 75, 25, 75, 75, 25, 75});
    expectSpots(drawn(wmf.plain()), {{10, 50, Qt::red}, {50, 50, Qt::white}});
}

TEST(WmfPicture, EllipseArcChordAndPieFollowTheEllipse) {
    WmfBuilder ellipse = redBrush();
    ellipse.window(100, 100).record(0x0418, {100, 100, 0, 0});
    expectSpots(drawn(ellipse.plain()), {{50, 50, Qt::red}, {3, 3, Qt::white}});
    // From the right upwards to the top: a quarter.
    WmfBuilder pie = redBrush();
    pie.window(100, 100).record(0x081A, {0, 50, 50, 100, 100, 100, 0, 0});
    expectSpots(drawn(pie.plain()), {{60, 40, Qt::red}, {40, 60, Qt::white}, {40, 40, Qt::white}});
    WmfBuilder chord = redBrush();
    chord.window(100, 100).record(0x0830, {0, 50, 50, 100, 100, 100, 0, 0});
    expectSpots(drawn(chord.plain()), {{80, 20, Qt::red}, {55, 45, Qt::white}});
    WmfBuilder arc;
    arc.window(100, 100).pen(0, 4, red).select(0);
    arc.record(0x0817, {0, 50, 50, 100, 98, 98, 2, 2});
    expectSpots(drawn(arc.plain()), {{84, 16, Qt::red}, {60, 40, Qt::white}, {16, 84, Qt::white}});
}

TEST(WmfPicture, LinesGoOnFromWhereTheLastEnded) {
    WmfBuilder wmf;
    wmf.window(100, 100).pen(0, 6, blue).select(0);
    wmf.record(0x0214, {10, 10}).record(0x0213, {10, 90}).record(0x0213, {90, 90});
    wmf.record(0x0325, {2, 10, 50, 50, 50});
    expectSpots(drawn(wmf.plain()),
                {{50, 10, Qt::blue}, {90, 50, Qt::blue}, {30, 50, Qt::blue}, {50, 90, Qt::white}});
}

TEST(WmfPicture, AHatchShowsTheBackgroundInItsGaps) {
    WmfBuilder wmf;
    wmf.window(100, 100).record(0x0201, [](auto& out) { out.u32(green); });
    wmf.brush(red, 2, 0).select(0).rectangle(0, 0, 100, 100);
    const QImage paper = drawn(wmf.plain());
    int reds = 0;
    int greens = 0;
    for (int y = 5; y < 95; ++y) {
        const QColor seen = paper.pixelColor(50, y);
        reds += isAlike(seen, Qt::red);
        greens += isAlike(seen, Qt::green);
    }
    EXPECT_GT(reds, 5);
    EXPECT_GT(greens, 40);
}

TEST(WmfPicture, ABitmapStandsUpright) {
    WmfBuilder wmf;
    wmf.window(100, 100).stretchDib(sourceCopy, 0, 0, 100, 100, fourPixels());
    expectSpots(drawn(wmf.plain()),
                {{10, 10, Qt::red}, {90, 10, Qt::green}, {10, 90, Qt::blue}, {90, 90, Qt::white}});
}

TEST(WmfPicture, ANegativeWidthMirrorsABitmap) {
    WmfBuilder wmf;
    wmf.window(100, 100).stretchDib(sourceCopy, 100, 0, -100, 100, fourPixels());
    expectSpots(drawn(wmf.plain()), {{10, 10, Qt::green}, {90, 10, Qt::red}});
}

TEST(WmfPicture, AMaskKeepsWhatIsBelowItsWhite) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).rectangle(0, 0, 100, 100);
    wmf.stretchDib(sourceAnd, 0, 0, 100, 100, fourPixels());
    expectSpots(drawn(wmf.plain()), {{90, 90, Qt::red}, {10, 90, Qt::black}, {10, 10, Qt::red}});
}

TEST(WmfPicture, ABlockOfThePatternIsFilledByTheBrush) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).record(0x061D, {0x0021, 0x00F0, 50, 50, 0, 0});
    expectSpots(drawn(wmf.plain()), {{20, 20, Qt::red}, {70, 70, Qt::white}});
}

TEST(WmfPicture, ARegionClips) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100);
    wmf.record(0x06FF, {0, 6, 0, 0, 0, 1, 2, 0, 0, 50, 100, 2, 0, 100, 0, 50, 2});
    wmf.record(0x012C, {2}).rectangle(0, 0, 100, 100);
    expectSpots(drawn(wmf.plain()), {{20, 50, Qt::red}, {80, 50, Qt::white}});
}

TEST(WmfPicture, TextStandsAtItsPlaceInItsColour) {
    WmfBuilder wmf;
    wmf.window(100, 100).record(0x0102, {1}).record(0x0209, [](auto& out) { out.u32(blue); });
    wmf.font("Noto Sans", -30, 134).select(0).text(10, 20, "\xB9\xA4\xB3\xCC"); // 工程 in GBK
    // Two letters of 30, not four.
    expectText(drawn(wmf.plain()), {10, 20, 60, 45}, 100,
               {{0, 0, 100, 18}, {0, 70, 100, 30}, {76, 0, 24, 100}});
}

TEST(WmfPicture, TextIsAlignedAtItsPlace) {
    WmfBuilder wmf;
    wmf.window(100, 100).record(0x0102, {1}).record(0x012E, {2 + 24}); // right, baseline
    wmf.font("Noto Sans", -20, 0).select(0).text(90, 60, "HHH");
    expectText(drawn(wmf.plain()), {40, 40, 50, 20}, 50, {{92, 0, 8, 100}, {0, 63, 100, 37}});
}

TEST(WmfPicture, LettersAreAsWideAsTheFileSays) {
    WmfBuilder wmf;
    wmf.window(100, 100).record(0x0102, {1});
    wmf.font("Noto Sans", -20, 0).select(0);
    wmf.text(10, 10, "II", {60, 20});
    const QImage paper = drawn(wmf.plain());
    EXPECT_GT(ink(paper, {10, 10, 15, 30}), 5);
    EXPECT_EQ(ink(paper, {30, 10, 35, 30}), 0);
    EXPECT_GT(ink(paper, {70, 10, 15, 30}), 5);
}

TEST(WmfPicture, ARecordThatIsTooShortIsPassedOver) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).record(0x0418, {7}).record(0x0325, {}).record(0x0F43, {1, 2});
    wmf.rectangle(0, 0, 100, 100);
    expectSpots(drawn(wmf.plain()), {{50, 50, Qt::red}});
}

TEST(WmfPicture, WhereRecordsNoLongerLineUpTheDrawingEnds) {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).rectangle(0, 0, 50, 100).raw(word::Bytes(6, 0xFF));
    wmf.rectangle(50, 0, 100, 100);
    expectSpots(drawn(wmf.plain()), {{25, 50, Qt::red}, {75, 50, Qt::white}});
}

TEST(EmfPicture, TheFrameFillsItsPlace) {
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1).rectangle(0, 0, 50, 25);
    expectSpots(drawn(emf.file()),
                {{10, 10, Qt::red}, {45, 20, Qt::red}, {55, 10, Qt::white}, {10, 30, Qt::white}});
}

TEST(EmfPicture, WindowAndViewportMapTheUnits) {
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1).record(17, {8});
    emf.record(10, {1000, 1000}).record(9, {2000, 2000});
    emf.record(12, {50, 50}).record(11, {50, 50}).rectangle(1000, 1000, 2000, 3000);
    expectSpots(drawn(emf.file()),
                {{60, 60, Qt::red}, {70, 95, Qt::red}, {40, 60, Qt::white}, {80, 60, Qt::white}});
}

TEST(EmfPicture, ExtentsCountInTheModesThatUseThemAlone) {
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1).record(17, {1}).record(9, {1000, 1000});
    emf.rectangle(0, 0, 50, 50);
    expectSpots(drawn(emf.file()), {{45, 45, Qt::red}, {55, 55, Qt::white}});
}

TEST(EmfPicture, MillimetresGoUpwards) {
    EmfBuilder emf; // tenths of a millimetre: a device unit each
    emf.withoutPen().brush(1, red).select(1).record(17, {2}).record(12, {0, 100});
    emf.rectangle(0, 0, 100, 50);
    expectSpots(drawn(emf.file()), {{50, 20, Qt::white}, {50, 80, Qt::red}});
}

TEST(EmfPicture, TheWorldTransformTurnsAndMoves) {
    const auto number = [](float value) { return std::bit_cast<std::uint32_t>(value); };
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1);
    emf.record(35, {number(0), number(1), number(-1), number(0), number(100), number(0)});
    emf.rectangle(0, 0, 100, 20); // now down the right edge
    emf.record(36, {0, 0, 0, 0, 0, 0, 1}).rectangle(0, 90, 10, 100);
    expectSpots(drawn(emf.file()),
                {{90, 50, Qt::red}, {50, 10, Qt::white}, {5, 95, Qt::red}, {5, 50, Qt::white}});
}

TEST(EmfPicture, APathIsFilledAsAWhole) {
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1).record(59, {});
    emf.record(27, {0, 0}).record(54, {100, 0}).record(54, {100, 100}).record(61, {});
    emf.record(60, {}).record(62, {0, 0, 99, 99});
    expectSpots(drawn(emf.file()), {{80, 20, Qt::red}, {20, 80, Qt::white}});
}

TEST(EmfPicture, APathClips) {
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1).record(59, {}).rectangle(0, 0, 50, 100);
    emf.record(60, {}).record(67, {5}).rectangle(0, 0, 100, 100).record(75, {0, 5});
    emf.rectangle(60, 0, 70, 10);
    expectSpots(drawn(emf.file()), {{20, 50, Qt::red}, {80, 50, Qt::white}, {65, 5, Qt::red}});
}

TEST(EmfPicture, ShapesOfSixteenBitsAreDrawnAsThoseOfThirtyTwo) {
    const auto packed = [](int x, int y) { return x | (y << 16); };
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1);
    emf.record(86, {0, 0, 99, 99, 4, packed(0, 0), packed(50, 0), packed(50, 50), packed(0, 50)});
    emf.record(3, {0, 0, 99, 99, 4, 50, 50, 100, 50, 100, 100, 50, 100});
    expectSpots(drawn(emf.file()), {{25, 25, Qt::red}, {75, 75, Qt::red}, {75, 25, Qt::white}});
}

TEST(EmfPicture, CurvesArePassedThroughTheirEnds) {
    EmfBuilder emf;
    emf.record(95, {1, 0, 0, 0, 0, 0x00010000, 6, 0, red, 0, 0}).select(1);
    emf.record(2, {0, 0, 99, 99, 4, 10, 90, 10, 10, 90, 10, 90, 90});
    expectSpots(drawn(emf.file()), {{50, 30, Qt::red}, {50, 60, Qt::white}});
}

TEST(EmfPicture, TextStandsAtItsPlaceInItsColour) {
    EmfBuilder emf;
    emf.record(18, {1}).record(24, {blue});
    emf.font(u"Noto Sans", -30).text(10, 20, u"工程", {30, 30});
    expectText(drawn(emf.file()), {10, 20, 60, 45}, 100, {{0, 0, 100, 18}, {76, 0, 24, 100}});
}

TEST(EmfPicture, ABitmapStandsUpright) {
    EmfBuilder emf;
    emf.stretchDib(sourceCopy, 0, 0, 100, 100, 2, 2, fourPixels());
    expectSpots(drawn(emf.file()),
                {{10, 10, Qt::red}, {90, 10, Qt::green}, {10, 90, Qt::blue}, {90, 90, Qt::white}});
}

TEST(EmfPicture, ABlockWithoutABitmapTakesTheBrush) {
    EmfBuilder emf;
    emf.brush(1, red).select(1);
    emf.record(76,
               {0, 0, 99, 99, 0, 0, 50, 50, 0x00F00021, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    expectSpots(drawn(emf.file()), {{20, 20, Qt::red}, {70, 70, Qt::white}});
}

TEST(EmfPicture, ANumberWithoutAnObjectIsLeftAlone) {
    EmfBuilder emf;
    emf.withoutPen().brush(1, red).select(1).select(77).select(0x800000FF);
    emf.record(39, {4'000'000'000LL, 0, green, 0}).rectangle(0, 0, 100, 100);
    expectSpots(drawn(emf.file()), {{50, 50, Qt::red}});
}

// Whatever a bitmap claims, no more memory is asked for than it brings.
TEST(PictureOfPixels, ABitmapThatClaimsMoreThanItBringsIsLeftOut) {
    word::Bytes dib = fourPixels();
    dib[6] = 0xFF; // 2 by 16,711,682
    dib[4] = 2;
    WmfBuilder wmf;
    wmf.window(100, 100).stretchDib(sourceCopy, 0, 0, 100, 100, dib);
    EXPECT_EQ(ink(drawn(wmf.plain()), {0, 0, 100, 100}), 0);
}

// One of each kind of record.
word::Bytes richWmf() {
    WmfBuilder wmf = redBrush();
    wmf.window(100, 100).origin(0, 0).record(0x001E, {}).record(0x0416, {90, 90, 10, 10});
    wmf.rectangle(0, 0, 60, 60).record(0x0418, {90, 90, 20, 20});
    wmf.record(0x061C, {5, 5, 90, 90, 50, 50}).record(0x081A, {0, 50, 50, 99, 99, 99, 0, 0});
    wmf.record(0x0324, {3, 0, 0, 50, 0, 50, 50}).record(0x0325, {3, 0, 0, 50, 0, 50, 50});
    wmf.record(0x0538, {2, 3, 3, 0, 0, 9, 0, 9, 9, 20, 20, 50, 20, 50, 50});
    wmf.font("Noto Sans", -20, 134).select(2).text(10, 20, "text");
    wmf.record(0x0A32, {10, 10, 2, 2, 0, 0, 50, 50, 'I' | ('I' << 8), 60, 20});
    wmf.stretchDib(sourceCopy, 0, 0, 50, 50, fourPixels()).record(0x0127, {-1});
    wmf.pen(1, 3, blue).select(3).record(0x0213, {90, 90}).brush(green, 2, 5).select(4);
    wmf.record(0x06FF, {0, 6, 0, 0, 0, 1, 2, 0, 0, 50, 100, 2, 0, 100, 0, 50, 2});
    wmf.record(0x012C, {5}).rectangle(0, 0, 100, 100);
    return wmf.placeable(0, 0, 100, 100, 96);
}

word::Bytes richEmf() {
    EmfBuilder emf;
    emf.brush(1, red).select(1).record(17, {8}).record(9, {100, 100}).record(11, {100, 100});
    emf.record(95, {2, 0, 0, 0, 0, 0x00010001, 2, 0, red, 0, 0}).select(2).record(33, {});
    emf.rectangle(0, 0, 50, 50).record(42, {0, 0, 90, 90}).record(44, {0, 0, 90, 90, 5, 5});
    emf.record(47, {0, 0, 90, 90, 0, 50, 50, 0}).record(41, {50, 50, 30, 0, 0x42B40000});
    emf.record(2, {0, 0, 99, 99, 4, 10, 90, 10, 10, 90, 10, 90, 90}).record(59, {});
    emf.record(56, {0, 0, 99, 99, 3, 1, 1, 50, 50, 90, 0, 0x030206}).record(60, {});
    emf.record(67, {1}).record(8, {0, 0, 99, 99, 1, 3, 3, 0, 0, 50, 0, 50, 50});
    emf.record(75, {48, 1, 32, 1, 1, 16, 0, 0, 9, 9, 0, 0, 60, 60}).record(34, {-1});
    emf.record(84, {0, 0, 99, 99, 1, 0, 0, 10, 20, 2, 76, 2, 0, 0, 9, 9, 80, 0x00480048, 9, 9});
    emf.record(76, {0, 0, 9, 9, 0, 0, 5, 5, 0x00F00021, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    emf.stretchDib(sourceCopy, 0, 0, 100, 100, 2, 2, fourPixels());
    return emf.file();
}

struct Damage : testing::TestWithParam<word::Bytes (*)()> {
    const word::Bytes whole = GetParam()();
};

TEST_P(Damage, IsBornAtEveryLength) {
    EXPECT_GT(ink(drawn(whole), {0, 0, 100, 100}), 500);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        drawn(word::Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
    }
}

// Each byte in turn, and then many at once, by a seed that repeats.
TEST_P(Damage, OfAnyByteEndsSoon) {
    QElapsedTimer timer;
    timer.start();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const std::uint8_t value : {0x00, 0x7F, 0x80, 0xFF}) {
            word::Bytes damaged = whole;
            damaged[at] = value;
            drawn(damaged);
        }
    }
    std::mt19937 dice(20011);
    for (int round = 0; round < 1000; ++round) {
        word::Bytes damaged = whole;
        for (int i = 0; i < 12; ++i) {
            damaged[dice() % whole.size()] = static_cast<std::uint8_t>(dice());
        }
        drawn(damaged);
    }
    EXPECT_LT(timer.elapsed(), 60'000);
}

INSTANTIATE_TEST_SUITE_P(Metafiles, Damage, testing::Values(&richWmf, &richEmf));

} // namespace
} // namespace qvnd::test

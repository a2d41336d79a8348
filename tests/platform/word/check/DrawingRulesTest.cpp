#include "platform/word/check/SoundDocument.h"
#include "platform/word/docfile/DrawingBytes.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/Blip.h"
#include "support/Images.h"

#include <gtest/gtest.h>

// Each rule about drawings: one thing broken breaks that rule and no other.
namespace qvnd::test {
namespace {

using namespace word;
using namespace word::drawings;
using Rules = std::set<std::string>;

// A document with a shape that shows a text, and one that shows a picture.
class DrawnDocument {
public:
    ShapeBytes box;
    ShapeBytes picture;
    std::vector<Bytes> pictures{encodeBlip(*recogniseImage(png(4, 2)))};
    std::vector<BoxBytes> boxes{{0, 1, 0x402}};
    std::u16string boxText = u"框\r";
    Bytes behind; // the drawing
    std::uint32_t drawings = 1;
    std::uint32_t uncounted = 0; // shapes that the drawing does not count
    std::vector<Bytes> inner;    // shapes of a group whose own shape is the picture's

    DrawnDocument() {
        box.id = 0x402;
        box.text = 0x10000;
        picture.id = 0x403;
        picture.anchor = 1;
        picture.properties.setBlip(art::pib, 1);
    }

    Rules rules() {
        const Cp first = document_.find(u"节");
        const Cp second = document_.find(u"末");
        for (const Cp cp : {first, second}) {
            document_.text().characters[cp].properties = withSprm8({}, sprm::CFSpec, 1);
            document_.text().text[cp] = 0x08;
        }
        document_.text().text[first] = firstMark;
        auto& piece = document_.text();
        const auto back = piece.text.size() - 1; // in front of the mark that ends all text
        piece.text.insert(back, boxText + u"\r");
        piece.characters.push_back({static_cast<Cp>(boxText.size() + 1), {}});
        const PieceText::Paragraph last = piece.paragraphs.back();
        piece.paragraphs.back() = {static_cast<Cp>(boxText.size()), 0, {}};
        piece.paragraphs.push_back({1, 0, {}});
        piece.paragraphs.push_back(last);
        document_.file.lengths.textBoxes = static_cast<Cp>(boxText.size() + 1);
        auto& parts = document_.file.parts;
        std::vector<Bytes> group{picture.bytes()};
        group.insert(group.end(), inner.begin(), inner.end());
        const Bytes other = inner.empty() ? picture.bytes() : groupBytes(group);
        Bytes drawing = drawingBytes(0, {box.bytes(), other});
        put32(drawing, countAt, get32(drawing, countAt) - uncounted);
        parts[FibPair::DggInfo] = joined({sharedBytes(pictures, drawings), drawing, behind});
        parts[FibPair::PlcSpaMom] = anchorTable({{first, 0x402}, {second, anchoredShape}});
        parts[FibPair::PlcftxbxTxt] = boxTable(boxes, static_cast<Cp>(boxText.size()));
        parts[FibPair::PlcfTxbxBkd] = breaks;
        return brokenRules(document_.bytes());
    }

    char16_t firstMark = 0x08;
    std::uint32_t anchoredShape = 0x403;
    Bytes breaks = encodePlc({0, 2, 5}, hex("0000 0000 0000 ffff 0000 0000"));

private:
    // Behind the label and the heads of the drawing and of its first record.
    static constexpr std::size_t countAt = 1 + 2 * art::headerSize;

    SoundDocument document_;
};

TEST(DrawingRules, ASoundDocumentBreaksNone) { EXPECT_EQ(DrawnDocument().rules(), Rules{}); }

TEST(DrawingRules, RecordsMustFillTheirPlace) {
    DrawnDocument document;
    document.behind = Bytes(3, 0);
    EXPECT_EQ(document.rules(), Rules{"drawing.records"});
}

TEST(DrawingRules, EachPartHasOneDrawing) {
    DrawnDocument document;
    document.behind = drawingBytes(0, {});
    EXPECT_EQ(document.rules().count("drawing.records"), 1U);
}

TEST(DrawingRules, AnIdentifierIsUsedOnce) {
    DrawnDocument document;
    document.behind = drawingBytes(1, {});
    document.picture.id = 0x402;
    document.anchoredShape = 0x402;
    EXPECT_EQ(document.rules().count("drawing.id"), 1U);
}

TEST(DrawingRules, AnIdentifierLiesInAClusterOfItsDrawing) {
    DrawnDocument document;
    document.picture.id = document.anchoredShape = 0x802;
    EXPECT_EQ(document.rules(), Rules{"drawing.id"});
}

TEST(DrawingRules, AnAnchorNamesAShape) {
    DrawnDocument document;
    document.anchoredShape = 0x404;
    EXPECT_EQ(document.rules(), Rules{"drawing.anchor"});
}

TEST(DrawingRules, AShapeKnowsThePlaceOfItsAnchor) {
    DrawnDocument document;
    document.picture.anchor = 0;
    EXPECT_EQ(document.rules(), Rules{"drawing.anchor"});
}

TEST(DrawingRules, AnAnchorStandsAtItsCharacter) {
    DrawnDocument document;
    document.firstMark = u'x';
    EXPECT_EQ(document.rules(), Rules{"drawing.mark"});
}

TEST(DrawingRules, AShapeNamesAPictureThatThereIs) {
    DrawnDocument document;
    document.pictures.clear();
    EXPECT_EQ(document.rules(), Rules{"drawing.picture"});
}

TEST(DrawingRules, APictureElsewhereIsARecordOfTheMainStream) {
    DrawnDocument document;
    Bytes& entry = document.pictures[0];
    entry.resize(art::headerSize + art::fbseSize);
    put32(entry, 4, art::fbseSize);
    put32(entry, art::headerSize + art::fbseCountAt, 1);
    EXPECT_EQ(document.rules(), Rules{"drawing.picture"});
}

TEST(DrawingRules, AShapeNamesATextThatNamesIt) {
    DrawnDocument document;
    document.boxes[0].first = 0x403;
    EXPECT_EQ(document.rules().count("drawing.text"), 1U);
}

TEST(DrawingRules, AChainIsAsLongAsItsTextSays) {
    DrawnDocument document;
    document.boxes[0].shapes = 2;
    EXPECT_EQ(document.rules(), Rules{"drawing.text"});
}

TEST(DrawingRules, ATextEndsInAParagraphMark) {
    DrawnDocument document;
    document.boxText = u"框框";
    EXPECT_EQ(document.rules().count("drawing.text"), 1U);
}

TEST(DrawingRules, ABreakLiesInItsText) {
    DrawnDocument document;
    document.breaks = encodePlc({0, 4, 5}, hex("0000 0000 0000 ffff 0000 0000"));
    EXPECT_EQ(document.rules(), Rules{"drawing.break"});
}

// A shape in a group, which has no anchor of its own.
ShapeBytes innerShape(std::uint32_t id) {
    ShapeBytes shape;
    shape.id = id;
    shape.anchor.reset();
    return shape;
}

TEST(DrawingRules, OfAGroupTheGroupItselfIsAnchored) {
    DrawnDocument document;
    document.inner = {innerShape(0x404).bytes()};
    EXPECT_EQ(document.rules(), Rules{});
    DrawnDocument nested;
    nested.inner = {groupBytes({innerShape(0x404).bytes(), innerShape(0x405).bytes()}),
                    innerShape(0x406).bytes()};
    EXPECT_EQ(nested.rules(), Rules{});
}

TEST(DrawingRules, ShapesOfGroupsHaveIdentifiersAndPicturesToo) {
    DrawnDocument twice;
    twice.inner = {groupBytes({innerShape(0x404).bytes(), innerShape(0x402).bytes()})};
    EXPECT_EQ(twice.rules(), Rules{"drawing.id"});
    DrawnDocument picture;
    ShapeBytes shape = innerShape(0x404);
    shape.properties.setBlip(art::pib, 2);
    picture.inner = {shape.bytes()};
    EXPECT_EQ(picture.rules(), Rules{"drawing.picture"});
}

TEST(DrawingRules, AShapeThatIsDeletedIsNone) {
    DrawnDocument document;
    ShapeBytes shape = innerShape(0x402);
    shape.flags |= art::shapeIsDeleted;
    document.inner = {shape.bytes()};
    EXPECT_EQ(document.rules(), Rules{});
}

TEST(DrawingRules, AnIdentifierIsOneOfThoseGivenOutOfItsCluster) {
    const auto rulesWith = [](std::uint32_t id) {
        DrawnDocument document;
        document.picture.id = document.anchoredShape = id;
        return document.rules();
    };
    EXPECT_EQ(rulesWith(0x463), Rules{});
    EXPECT_EQ(rulesWith(0x464), Rules{"drawing.id"});
    EXPECT_EQ(rulesWith(0x3), Rules{"drawing.id"}) << "in no cluster";
    EXPECT_EQ(rulesWith(0xC01), Rules{"drawing.id"}) << "behind the last cluster";
}

TEST(DrawingRules, AShapeHasOneAnchorAndEachAnchorAShapeOfItsOwn) {
    DrawnDocument document;
    document.anchoredShape = 0x402;
    EXPECT_EQ(document.rules(), Rules{"drawing.anchor"});
}

TEST(DrawingRules, APictureThatNobodyUsesOrThatIsNowhereNeedsNoRecord) {
    const auto rulesWith = [](std::size_t field, std::uint32_t value) {
        DrawnDocument document;
        Bytes& entry = document.pictures[0];
        entry.resize(art::headerSize + art::fbseSize);
        put32(entry, 4, art::fbseSize);
        put32(entry, art::headerSize + art::fbseCountAt, 1);
        put32(entry, art::headerSize + art::fbseDelayAt, 0x7FFFFFFF);
        put32(entry, art::headerSize + field, value);
        return document.rules();
    };
    EXPECT_EQ(rulesWith(art::fbseCountAt, 0), Rules{});
    EXPECT_EQ(rulesWith(art::fbseSizeAt, 0), Rules{});
    EXPECT_EQ(rulesWith(art::fbseDelayAt, 0xFFFFFFFF), Rules{});
    EXPECT_EQ(rulesWith(art::fbseDelayAt, 0xFFFFFFFE), Rules{"drawing.picture"});
    EXPECT_EQ(rulesWith(art::fbseCountAt, 1), Rules{"drawing.picture"});
}

TEST(DrawingRules, ABreakNamesATextOfTheTable) {
    const auto rulesWith = [](const std::vector<std::uint32_t>& positions, std::string_view data) {
        DrawnDocument document;
        document.breaks = encodePlc(positions, hex(data));
        return document.rules();
    };
    EXPECT_EQ(rulesWith({0, 1, 5}, "0000 0000 0000 ffff 0000 0000"), Rules{});
    EXPECT_EQ(rulesWith({0, 3, 5}, "0000 0000 0000 ffff 0000 0000"), Rules{"drawing.break"});
    EXPECT_EQ(rulesWith({0, 2, 5}, "0100 0000 0000 ffff 0000 0000"), Rules{"drawing.break"});
}

TEST(DrawingRules, RecordsNestEightyDeepAndNoDeeper) {
    const auto rulesAt = [](int depth) {
        Bytes records;
        for (int i = 0; i < depth; ++i) {
            records = artRecord(art::container, 0, art::clientData, records);
        }
        DrawnDocument document;
        Bytes drawing = joined({drawingBytes(1, {}), records});
        constexpr std::size_t lengthAt = 1 + 4; // behind the label and the record's kind
        put32(drawing, lengthAt,
              get32(drawing, lengthAt) + static_cast<std::uint32_t>(records.size()));
        document.behind = drawing;
        document.drawings = 2;
        return document.rules();
    };
    EXPECT_EQ(rulesAt(80), Rules{});
    EXPECT_EQ(rulesAt(81), Rules{"drawing.records"});
}

TEST(DrawingRules, ADrawingCountsItsShapesWithTheBackgroundOrWithout) {
    const auto rulesWithout = [](std::uint32_t uncounted) {
        DrawnDocument document;
        document.uncounted = uncounted;
        return document.rules();
    };
    EXPECT_EQ(rulesWithout(1), Rules{});
    EXPECT_EQ(rulesWithout(2), Rules{"drawing.count"});
}

TEST(DrawingRules, DrawingsAreCounted) {
    DrawnDocument fewer;
    fewer.drawings = 2;
    EXPECT_EQ(fewer.rules(), Rules{"drawing.count"});
    DrawnDocument more;
    more.behind = drawingBytes(1, {});
    EXPECT_EQ(more.rules(), Rules{"drawing.count"});
}

TEST(DrawingRules, ADrawingHasOneGroupOfAllShapes) {
    DrawnDocument document;
    document.picture.flags |= art::shapeIsPatriarch;
    EXPECT_EQ(document.rules(), Rules{"drawing.group"});
}

TEST(DrawingRules, AShapeNamesOtherShapesThatThereAre) {
    for (const std::uint16_t opid : {art::nextShape, art::masterShape}) {
        const auto rulesNaming = [opid](std::uint32_t shape) {
            DrawnDocument document;
            document.picture.properties.set(opid, shape);
            return document.rules();
        };
        EXPECT_EQ(rulesNaming(0), Rules{}) << "names none";
        EXPECT_EQ(rulesNaming(0x402), Rules{});
        EXPECT_EQ(rulesNaming(0x404), Rules{"drawing.link"});
    }
}

TEST(DrawingRules, AChainHasEachOfItsLinksOnce) {
    const auto rulesWithLink = [](std::uint32_t text) {
        DrawnDocument document;
        document.boxes[0].shapes = 2;
        document.picture.text = text;
        return document.rules();
    };
    EXPECT_EQ(rulesWithLink(0x10001), Rules{});
    EXPECT_EQ(rulesWithLink(0x10002), Rules{"drawing.text"});
}

TEST(DrawingRules, EveryTextHasABreak) {
    DrawnDocument document;
    document.breaks.clear();
    EXPECT_EQ(document.rules(), Rules{"drawing.break"});
}

TEST(DrawingRules, ADrawingIsThatOfTheTextOrOfTheHeaders) {
    DrawnDocument third;
    third.behind = drawingBytes(2, {});
    EXPECT_EQ(third.rules().count("drawing.records"), 1U);
    DrawnDocument shared;
    shared.behind = joined({Bytes{1}, sharedBytes()});
    EXPECT_EQ(shared.rules().count("drawing.records"), 1U);
}

} // namespace
} // namespace qvnd::test

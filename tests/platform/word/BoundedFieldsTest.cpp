// What fields may ask of memory where a bookmark that they speak of gets another name: the codes of
// all of them are read then.

#include "platform/word/BoundedMemory.h"
#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/BookmarkTables.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>

namespace qvnd::word {
namespace {

std::u16string repeated(std::u16string_view text, std::size_t count) {
    std::u16string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// One byte a character, all marked so, with a bookmark "a" at the start.
Bytes fileWithBookmark(std::u16string text, const Bytes& properties) {
    test::PieceText piece;
    piece.text = std::move(text) + u"\r";
    piece.text += piece.text.size() % 2 == 0 ? u"" : u"\r";
    piece.compressed = true;
    const auto length = static_cast<Cp>(piece.text.size());
    piece.characters = {{length, properties}};
    test::WordFile file;
    LittleEndianWriter data; // a picture without anything behind its head
    constexpr unsigned headSize = 0x44;
    data.u32(headSize);
    data.u16(headSize);
    data.zeros(headSize - 6);
    file.data = data.take();
    file.pieces.push_back(std::move(piece));
    const std::array<Bookmark, 1> bookmarks{{{u"a", 0, 1, 0}}};
    const BookmarkTables tables = encodeBookmarks(bookmarks, length);
    file.parts[FibPair::SttbfBkmk] = tables.names;
    file.parts[FibPair::PlcfBkf] = tables.starts;
    file.parts[FibPair::PlcfBkl] = tables.ends;
    return test::wordFile(file);
}

const Bytes special = withSprm8({}, sprm::CFSpec, 1);

// Expects of files with text of so many characters that each further byte asks for no more than
// one does that is a paragraph mark.
void expectGrowth(const std::function<Bytes(std::size_t)>& fileOf) {
    constexpr std::size_t characters = 60'000;
    constexpr std::size_t mostForByte = 30;
    const Bytes once = fileOf(characters);
    const Bytes twice = fileOf(2 * characters);
    const std::size_t before = test::peakOfBringingIn(once, u"a");
    const std::size_t behind = test::peakOfBringingIn(twice, u"a");
    EXPECT_LE(behind, before + mostForByte * (twice.size() - once.size()))
        << (behind - before) / (twice.size() - once.size()) << " bytes for each";
}

TEST(BoundedFields, BegunInsideOneAnother) {
    expectGrowth([](std::size_t count) {
        return fileWithBookmark(repeated(u"\u0013a ", count / 4) + repeated(u"\u0015", count / 4),
                                special);
    });
}

TEST(BoundedFields, BegunInsideOneAnotherWithLongCodes) {
    expectGrowth([](std::size_t count) {
        const std::u16string code = u"\u0013=" + repeated(u"a ", 100);
        const std::size_t depth = count / 203;
        return fileWithBookmark(repeated(code, depth) + repeated(u"\u0015", depth), special);
    });
}

TEST(BoundedFields, OneBehindTheOther) {
    expectGrowth([](std::size_t count) {
        return fileWithBookmark(repeated(u"\u0013a\u0015", count / 3), special);
    });
}

TEST(BoundedFields, OneFormulaOfNothingButNames) {
    expectGrowth([](std::size_t count) {
        return fileWithBookmark(u"\u0013=" + repeated(u"a+", count / 2) + u"\u0015", special);
    });
}

TEST(BoundedFields, LinksWithDataThatRepeatTheName) {
    expectGrowth([](std::size_t count) {
        const Bytes properties =
            withSprm32(withSprm8(special, sprm::CFData, 1), sprm::CPicLocation, 0);
        return fileWithBookmark(u"\u0013REF a " + repeated(u"\u0001", count) + u"\u0014\u0015",
                                properties);
    });
}

} // namespace
} // namespace qvnd::word

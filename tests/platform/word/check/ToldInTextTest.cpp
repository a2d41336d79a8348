#include "platform/word/check/SoundDocument.h"

#include "platform/error/Utf8.h"
#include "platform/word/docfile/check/Finding.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>

// What a finding in the text says: characters are counted from 1 within their part, pieces and
// stories from 0 as the file counts them.
namespace qvnd::test {
namespace {

using namespace word;
using Told = std::vector<std::string>;

Bytes withFib(const std::function<void(Fib&)>& change) {
    return changed(SoundDocument(), [&](WordStreams& streams, const Fib& before) {
        Fib fib = before;
        change(fib);
        const Bytes head = encodeFib(fib);
        std::copy(head.begin(), head.end(), streams.wordDocument.begin());
    });
}

Bytes withParagraph(std::u16string_view text, const Bytes& properties) {
    SoundDocument document;
    document.setParagraph(text, properties);
    return document.bytes();
}

Bytes withTable(FibPair pair, const Bytes& table) {
    SoundDocument document;
    document.file.parts[pair] = table;
    return document.bytes();
}

Bytes withBookmarks(std::vector<Bookmark> bookmarks) {
    SoundDocument document;
    const BookmarkTables tables = encodeBookmarks(bookmarks, document.file.lengths.text);
    document.file.parts[FibPair::SttbfBkmk] = tables.names;
    document.file.parts[FibPair::PlcfBkf] = tables.starts;
    document.file.parts[FibPair::PlcfBkl] = tables.ends;
    return document.bytes();
}

// --- pieces -------------------------------------------------------------------------------------

std::size_t firstPieceAt(const Fib& fib) { return fib.at(FibPair::Clx).fc + 5 + 8; }

TEST(ToldPlace, OfAPieceIsItsNumber) {
    EXPECT_EQ(toldOf("piece.place", changed(SoundDocument(),
                                            [](WordStreams& streams, const Fib& fib) {
                                                put32(streams.table, firstPieceAt(fib) + 2,
                                                      0x3FFFFF0);
                                            })),
              Told{"第 0 个片段超出 WordDocument 流"});
    EXPECT_EQ(toldOf("piece.prm", changed(SoundDocument(),
                                          [](WordStreams& streams, const Fib& fib) {
                                              put16(streams.table, firstPieceAt(fib) + 6, 1);
                                          })),
              Told{"第 0 个片段所用的属性不存在"});
}

TEST(ToldPlace, OfAModifierIsItsNumber) {
    SoundDocument document;
    document.file.modifiers = {flag(sprm::CFBold), withSprm16({}, sprm::CRgFtc1, 2), Bytes(0x3FA3)};
    const Bytes file = document.bytes();
    EXPECT_EQ(toldOf("sprm.font", file), Told{"片段属性 1：字体 2 不存在"});
    EXPECT_EQ(toldOf("piece.prc", file), Told{"片段属性 2 过长"});
}

TEST(ToldCount, OfCharactersIsThatOfTheHeadAndThatOfThePieces) {
    EXPECT_EQ(toldOf("piece.total", withFib([](Fib& fib) { ++fib.ccp.headers; })),
              Told{"FIB 共有 42 个字符，片段表却有 41 个"});
    EXPECT_EQ(toldOf("piece.total", withFib([](Fib& fib) {
                         fib.ccp.footnotes = 0;
                         fib.ccp.headers = 0;
                     })),
              Told{"FIB 共有 31 个字符，片段表却有 41 个"});
}

TEST(PieceRules, OldKindOfAModifierNamesNoList) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        put16(streams.table, firstPieceAt(fib) + 6, 0x0200); // no bit 0: a property by itself
    });
    EXPECT_EQ(brokenRules(file), std::set<std::string>{});
}

// --- text and properties ------------------------------------------------------------------------

TEST(ToldPlace, OfACharacterIsCountedFromOneInItsPart) {
    SoundDocument document;
    document.text().text[document.find(u"\x02说明") + 4] = u'x';
    EXPECT_EQ(toldOf("text.end", document.bytes()), Told{"脚注第 5 个字符应为段落标记"});
    SoundDocument shorter;
    shorter.text().paragraphs[0].length -= 1;
    shorter.text().paragraphs[1].length += 1;
    EXPECT_EQ(toldOf("text.boundary", shorter.bytes()),
              Told{"正文第 2 个字符：段落在没有段落标记处结束"});
    EXPECT_EQ(toldOf("text.huge", withParagraph(u"标题", withSprm32({}, sprm::PHugePapx, 9999))),
              Told{"正文第 3 个字符：另存的段落属性超出 Data 流"});
}

TEST(TextRules, TheLastCharacterMustBeAParagraphMark) {
    SoundDocument document;
    document.text().text.back() = u'x';
    EXPECT_EQ(toldOf("text.end", document.bytes()), Told{"文末没有段落标记"});
}

TEST(ToldPlace, OfPropertiesIsTheirPageAndTheirText) {
    SoundDocument document;
    document.setCharacters(u"题", withSprm16({}, sprm::CRgFtc1, 2));
    Told told = toldOf("sprm.font", document.bytes());
    ASSERT_EQ(told.size(), 1U);
    const Fib fib = readFib(document.streams().wordDocument);
    const Bytes table = document.streams().table;
    const std::size_t bins = fib.at(FibPair::PlcfBteChpx).fc;
    const std::uint32_t text = get32(table, firstPieceAt(fib) + 2);
    EXPECT_EQ(told[0], "字符格式页 " + std::to_string(get32(table, bins + 8)) + "（" +
                           toUtf8(hexadecimal(text + 2)) + " 起）：字体 2 不存在");
}

TEST(ToldPlace, OfARunOutOfOrderIsItsNumberInThePage) {
    const Bytes file = changed(SoundDocument(), [](WordStreams& streams, const Fib& fib) {
        const std::size_t bins = fib.at(FibPair::PlcfBteChpx).fc;
        const std::size_t page = std::size_t{512} * get32(streams.table, bins + 8);
        put32(streams.wordDocument, page + 8, get32(streams.wordDocument, page + 4));
    });
    const Told told = toldOf("fkp.order", file);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("第 1 项的位置没有递增"), std::string::npos) << told[0];
}

// --- tables -------------------------------------------------------------------------------------

TEST(ToldPlace, OfARowIsItsEnd) {
    const Bytes inTable = flag(sprm::PFInTable);
    EXPECT_EQ(toldOf("table.mark", withParagraph(u"a\a", {})),
              Told{"正文第 8 个字符：单元格标记不在表格中"});
    EXPECT_EQ(toldOf("table.cells", withParagraph(u"\a\x13", rowDefinition(3))),
              Told{"正文第 11 个字符：表格定义有 3 个单元格，行中有 2 个"});
    EXPECT_EQ(toldOf("table.row", withParagraph(u"\a\x13", inTable)),
              Told{"正文第 22 个字符：之前的表格行没有行结束标记"});
    EXPECT_EQ(
        toldOf("table.definition", withParagraph(u"\a\x13", joined({inTable, flag(sprm::PFTtp)}))),
        Told{"正文第 11 个字符：行结束标记没有表格定义"});
    EXPECT_EQ(toldOf("table.mark",
                     withParagraph(u"a\a", joined({inTable, withSprm32({}, sprm::PItap, 2)}))),
              Told{"正文第 8 个字符：内层表格中有外层的单元格标记"});
}

TEST(TableRules, ARowThatIsOpenWhereTheTextEndsHasNoEnd) {
    SoundDocument document;
    document.text().paragraphs.back().properties = flag(sprm::PFInTable);
    EXPECT_EQ(toldOf("table.row", document.bytes()),
              Told{"文末之后第 1 个字符：之前的表格行没有行结束标记"});
}

TEST(TableRules, ACellWithTextAndNoEndIsToldOfItsRow) {
    SoundDocument document;
    document.text().text[document.find(u"b\a") + 1] = u'\r';
    document.setParagraph(u"\a\x13", rowDefinition(1));
    EXPECT_EQ(toldOf("table.cell", document.bytes()),
              Told{"正文第 11 个字符：行中最后一个单元格没有结束标记"});
}

TEST(TableRules, ADepthOfNoneInATableIsThatOfTheOutermost) {
    EXPECT_EQ(brokenRules(withParagraph(
                  u"a\a", joined({flag(sprm::PFInTable), withSprm32({}, sprm::PItap, 0)}))),
              std::set<std::string>{});
}

TEST(TableRules, OfADefinitionsEdgesEachCountsAgainstTheOneInFrontOfIt) {
    const auto told = [](std::size_t edge, unsigned value) {
        Bytes row = rowDefinition(2);
        put16(row, findSprm(row, sprm::TDefTable)->operandOffset + 3 + 2 * edge, value);
        return toldOf("table.edges", withParagraph(u"\a\x13", row));
    };
    EXPECT_EQ(told(2, 1000), Told{});
    EXPECT_EQ(told(2, 999), Told{"正文第 11 个字符：表格定义中单元格的边界不按顺序"});
    EXPECT_EQ(told(0, 0x8000), Told{}) << "the least of all";
}

TEST(TableRules, ColumnsInsertedWithoutADefinitionAreNone) {
    const Bytes row = joined({flag(sprm::PFInTable), flag(sprm::PFTtp)});
    EXPECT_EQ(toldOf("table.definition",
                     withParagraph(u"\a\x13", withSprm32(row, sprm::TInsert, 0x00640300))),
              Told{"正文第 11 个字符：行结束标记没有表格定义"});
    EXPECT_EQ(toldOf("table.cells",
                     withParagraph(u"\a\x13", withSprm16(rowDefinition(2), sprm::TDelete, 0x0102))),
              Told{})
        << "a last column in front of the first deletes none";
}

// --- fields -------------------------------------------------------------------------------------

TEST(ToldPlace, OfAFieldIsThatOfItsMark) {
    SoundDocument open;
    open.text().text[open.find(u"\x15")] = u'x';
    open.file.parts[FibPair::PlcfFldMom] = encodePlc({11, 18, 99}, hex("1321 14FF"));
    EXPECT_EQ(toldOf("field.balance", open.bytes()), Told{"正文第 12 个字符：域没有结束"});
    SoundDocument closed;
    closed.text().text[closed.find(u"\x13")] = u'x';
    closed.text().text[closed.find(u"\x14")] = u'x';
    closed.file.parts[FibPair::PlcfFldMom] = encodePlc({20, 99}, hex("1580"));
    EXPECT_EQ(toldOf("field.balance", closed.bytes()),
              Told{"正文第 21 个字符：域字符没有相应的开始"});
    EXPECT_EQ(toldOf("field.mark",
                     withTable(FibPair::PlcfFldMom,
                               encodePlc({11, 12, 18, 20, 99}, hex("1321 1321 14FF 1580")))),
              Told{"正文第 13 个字符：域表所指之处不是域字符"});
}

TEST(FieldRules, EachMarkOfAFieldWithAResultMustBeInTheTable) {
    SoundDocument document;
    document.file.parts.erase(FibPair::PlcfFldMom);
    EXPECT_EQ(toldOf("field.table", document.bytes()),
              (Told{"正文第 19 个字符：域字符不在域表中", "正文第 21 个字符：域字符不在域表中"}));
    EXPECT_EQ(toldOf("field.table",
                     withTable(FibPair::PlcfFldMom, encodePlc({11, 18, 99}, hex("1321 14FF")))),
              Told{"正文第 21 个字符：域字符不在域表中"});
    EXPECT_EQ(toldOf("field.table",
                     withTable(FibPair::PlcfFldMom, encodePlc({11, 20, 99}, hex("1321 1580")))),
              Told{"正文第 19 个字符：域字符不在域表中"});
}

TEST(FieldRules, CharactersThatAreNotSpecialBeginNoField) {
    SoundDocument document;
    document.text().text[document.find(u"题")] = u'\x13';
    EXPECT_EQ(brokenRules(document.bytes()), std::set<std::string>{});
    document.text().characters[1].properties = special();
    EXPECT_EQ(toldOf("field.balance", document.bytes()), Told{"正文第 2 个字符：域没有结束"});
}

TEST(FieldRules, FieldsOfNotesStandInTheTableOfNotes) {
    SoundDocument document;
    document.mark(u"说", u'\x13');
    document.mark(u"明", u'\x15');
    EXPECT_EQ(brokenRules(document.bytes()), std::set<std::string>{}) << "it marks a place";
    document.file.parts[FibPair::PlcfFldFtn] = encodePlc({1, 2, 5}, hex("1321 1580"));
    EXPECT_EQ(brokenRules(document.bytes()), std::set<std::string>{});
    document.file.parts[FibPair::PlcfFldFtn] = encodePlc({2, 3, 5}, hex("1321 1580"));
    EXPECT_EQ(toldOf("field.mark", document.bytes()),
              (Told{"脚注第 3 个字符：域表所指之处不是域字符",
                    "脚注第 4 个字符：域表所指之处不是域字符"}));
}

// --- bookmarks ----------------------------------------------------------------------------------

TEST(ToldPlace, OfABookmarkIsItsName) {
    EXPECT_EQ(toldOf("bookmark.order", withBookmarks({{u"x", 5, 3, 0}})),
              Told{"书签“x”的结束在开始之前"});
    EXPECT_EQ(toldOf("bookmark.order", withBookmarks({{u"x", 3, 3, 0}})), Told{});
    EXPECT_EQ(toldOf("bookmark.unique", withBookmarks({{u"Mark", 0, 1, 0}, {u"mARK", 2, 3, 0}})),
              Told{"书签“mARK”重复"});
    EXPECT_EQ(toldOf("bookmark.unique", withBookmarks({{u"a@", 0, 1, 0}, {u"a`", 2, 3, 0}})),
              Told{})
        << "signs in front of the letters have no case";
    EXPECT_EQ(toldOf("bookmark.unique", withBookmarks({{u"a[", 0, 1, 0}, {u"a{", 2, 3, 0}})),
              Told{})
        << "nor have those behind them";
    EXPECT_EQ(toldOf("bookmark.unique", withBookmarks({{u"AZ", 0, 1, 0}, {u"az", 2, 3, 0}})),
              Told{"书签“az”重复"});
    EXPECT_EQ(toldOf("bookmark.text", withBookmarks({{u"x", 30, 32, 0}})),
              Told{"书签“x”的开始和结束不在同一段独立的文字中"});
}

TEST(ToldPlace, OfARangeOfACommentIsItsNumber) {
    const auto told = [](const char* rule, Cp start, Cp end, std::uint16_t endOfRange) {
        SoundDocument document;
        Bytes data(4);
        put16(data, 0, endOfRange);
        document.file.parts[FibPair::SttbfAtnBkmk] =
            hex("FFFF 0100 0A00 0000 0001 00000000 FFFFFFFF");
        document.file.parts[FibPair::PlcfAtnBkf] = encodePlc({start, 31}, data);
        document.file.parts[FibPair::PlcfAtnBkl] = encodePlc({end, 31}, {});
        return toldOf(rule, document.bytes());
    };
    EXPECT_EQ(told("bookmark.comments", 3, 3, 0), Told{});
    EXPECT_EQ(told("bookmark.comments", 3, 2, 0), Told{"批注范围 0 的结束在开始之前"});
    EXPECT_EQ(told("bookmark.comments", 3, 5, 1), Told{"批注范围 0 没有自己的结束位置"});
    EXPECT_EQ(told("bookmark.text", 30, 32, 0),
              Told{"批注范围 0 的开始和结束不在同一段独立的文字中"});
}

TEST(ToldCount, OfBookmarksIsThatOfEachTable) {
    SoundDocument document;
    document.file.parts[FibPair::SttbfBkmk] = hex("FFFF 0000 0000");
    EXPECT_EQ(toldOf("bookmark.count", document.bytes()),
              Told{"书签的名称 0 个，开始 2 个，结束 2 个"});
}

// --- notes, headers, sections -------------------------------------------------------------------

TEST(ToldPlace, OfAMarkOfANoteIsItsCharacter) {
    SoundDocument moved;
    moved.setCharacters(u"\x02\r", {});
    moved.file.parts[FibPair::PlcffndRef] = encodePlc({1, 30}, hex("0100"));
    EXPECT_EQ(toldOf("note.mark", moved.bytes()), Told{"正文第 2 个字符应为脚注的引用标记"});
    SoundDocument stray;
    stray.mark(u"题", special::noteReference);
    EXPECT_EQ(toldOf("note.stray", stray.bytes()),
              Told{"正文第 2 个字符是引用标记，却没有所引用的文字"});
}

TEST(ToldPlace, OfANotesTextIsCountedFromOne) {
    EXPECT_EQ(toldOf("note.text", withTable(FibPair::PlcffndTxt, encodePlc({0, 3, 5}, {}))),
              Told{"脚注第 1 条没有文字，或者没有以段落标记结束"});
    EXPECT_EQ(toldOf("note.end", withTable(FibPair::PlcffndTxt, encodePlc({0, 5, 5}, {}))),
              Told{"脚注的文字没有到其部分的末尾"});
    EXPECT_EQ(toldOf("note.count", withTable(FibPair::PlcffndTxt, encodePlc({0, 4}, {}))),
              Told{"脚注的引用与文字个数不同"});
}

TEST(NoteRules, ReferencesWithoutTextAreToldToo) {
    SoundDocument document;
    document.file.parts[FibPair::PlcfendRef] = encodePlc({1, 31}, hex("0000"));
    document.file.parts[FibPair::PlcfendTxt] = encodePlc({0, 1, 2}, {});
    EXPECT_EQ(toldOf("note.table", document.bytes()), Told{"尾注有引用，却没有文字"});
    SoundDocument without;
    without.file.parts.erase(FibPair::PlcffndRef);
    without.file.parts.erase(FibPair::PlcffndTxt);
    EXPECT_EQ(toldOf("note.table", without.bytes()), Told{"脚注有文字，却没有引用"});
}

TEST(ToldPlace, OfAHeaderIsItsNumber) {
    std::vector<std::uint32_t> stories(8, 0);
    stories.resize(19, 1);
    stories.push_back(4);
    EXPECT_EQ(toldOf("header.mark", withTable(FibPair::PlcfHdd, encodePlc(stories, {}))),
              Told{"第 7 个页眉页脚没有以段落标记结束"});
    stories.assign(8, 0);
    stories.resize(13, 3);
    stories.push_back(4);
    EXPECT_EQ(toldOf("header.count", withTable(FibPair::PlcfHdd, encodePlc(stories, {}))),
              Told{"应有 18 个页眉页脚的位置，实有 12 个"});
}

TEST(ToldPlace, OfASectionIsCountedFromOne) {
    SoundDocument document;
    document.file.sections[0].length -= 2;
    document.file.sections[1].length += 2;
    EXPECT_EQ(toldOf("section.mark", document.bytes()), Told{"第 1 节没有以分节符结束"});
    SoundDocument wrong;
    wrong.file.sections[0].properties = flag(sprm::CFBold);
    EXPECT_EQ(toldOf("sprm.group", wrong.bytes()), Told{"第 1 节：属性 0x835 不该在此"});
    EXPECT_EQ(toldOf("section.place", changed(SoundDocument(),
                                              [](WordStreams& streams, const Fib& fib) {
                                                  const auto at = fib.at(FibPair::PlcfSed).fc;
                                                  put32(streams.table, at + 12 + 2, 0x7FFFFFF);
                                              })),
              Told{"第 1 节的属性超出 WordDocument 流"});
}

// --- pictures -----------------------------------------------------------------------------------

TEST(ToldPlace, OfAPictureIsItsCharacterAndItsByte) {
    SoundDocument document;
    document.setCharacters(u"\x01\r", withSprm32(special(), sprm::CPicLocation, 9999));
    EXPECT_EQ(toldOf("picture.place", document.bytes()),
              Told{"正文第 23 个字符的图片（Data 流 0x270F）超出 Data 流"});
    document.setCharacters(
        u"\x14", withSprm8(withSprm32(special(), sprm::CPicLocation, 12), sprm::CFOle2, 1));
    EXPECT_EQ(toldOf("object.storage", document.bytes()),
              Told{"正文第 19 个字符的对象 12 没有存储"});
}

TEST(PictureRules, OneThatTwoCharactersShowIsToldOnce) {
    SoundDocument document;
    document.file.data.resize(40);
    document.setCharacters(u"\x01\r", withSprm32(special(), sprm::CPicLocation, 0));
    document.text().text[document.find(u"题")] = special::picture;
    document.text().characters[1].properties = withSprm32(special(), sprm::CPicLocation, 0);
    EXPECT_EQ(toldOf("picture.place", document.bytes()),
              Told{"正文第 2 个字符的图片（Data 流 0x0）超出 Data 流"});
}

TEST(PictureRules, CharacterThatIsNotSpecialShowsNone) {
    SoundDocument document;
    document.setCharacters(u"\x01\r", withSprm32({}, sprm::CPicLocation, 9999));
    EXPECT_EQ(brokenRules(document.bytes()), std::set<std::string>{});
}

} // namespace
} // namespace qvnd::test

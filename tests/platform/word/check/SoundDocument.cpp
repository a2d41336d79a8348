#include "platform/word/check/SoundDocument.h"

#include "platform/error/Utf8.h"
#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/pictures/Picture.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/RevisionAuthors.h"
#include "support/Images.h"

#include <algorithm>

namespace qvnd::test {

using namespace word;

namespace {

constexpr std::u16string_view mainText = u"标题\r项目\ra\ab\a\a\x13 PAGE \x14"
                                         u"1\x15\r\x01\r注\x02\r节\f末\r";
constexpr std::u16string_view noteText = u"\x02说明\r\r"; // a note, the part's own mark
constexpr std::u16string_view headerText = u"眉\r\r\r";   // header, guard, the document's own mark

StyleDefinition style(std::u16string name, std::uint16_t sti, StyleKind kind, StyleIndex base) {
    StyleDefinition result;
    result.name = std::move(name);
    result.sti = sti;
    result.kind = kind;
    result.basedOn = base;
    return result;
}

} // namespace

Bytes flag(SprmOpcode opcode) { return withSprm8({}, opcode, 1); }

Bytes special() { return flag(sprm::CFSpec); }

Bytes rowDefinition(unsigned columns) {
    LittleEndianWriter operand;
    operand.u16(2 + 2 * (columns + 1) + 20 * columns);
    operand.u8(columns);
    for (unsigned i = 0; i <= columns; ++i) {
        operand.u16(i * 1000);
    }
    operand.zeros(std::size_t{20} * columns);
    return withSprm(joined({flag(sprm::PFInTable), flag(sprm::PFTtp)}), sprm::TDefTable,
                    operand.data());
}

SoundDocument::SoundDocument() {
    styles.styles.resize(20);
    styles.styles[0] = style(u"Normal", 0, StyleKind::paragraph, StyleDefinition::none);
    styles.styles[1] = style(u"heading 1", 1, StyleKind::paragraph, 0);
    styles.styles[10] =
        style(u"Default Paragraph Font", 65, StyleKind::character, StyleDefinition::none);
    styles.styles[15] = style(u"Strong", 87, StyleKind::character, 10);
    styles.styles[16] = style(u"Body", StyleDefinition::userDefined, StyleKind::paragraph, 0);
    fonts = {makeFont(u"Times New Roman"), makeFont(u"宋体")};
    authors = {u"Unknown"};
    ListDefinition list;
    list.lsid = 77;
    list.linkedStyles.fill(StyleDefinition::none);
    list.levels.resize(9);
    for (std::size_t i = 0; i < 9; ++i) {
        list.levels[i].head[6] = 1;
        list.levels[i].text = {static_cast<char16_t>(i), u'.'};
    }
    listDefinitions = {list};
    listOverrides = {{77, 0, 0, {{1, 0x10, std::nullopt}}}};
    addText();
    addTables();
}

void SoundDocument::addText() {
    PieceText piece;
    piece.text = std::u16string(mainText) + std::u16string(noteText) + std::u16string(headerText);
    piece.text += u'\r';
    file.lengths.text = static_cast<std::uint32_t>(mainText.size());
    file.lengths.footnotes = static_cast<std::uint32_t>(noteText.size());
    file.lengths.headers = static_cast<std::uint32_t>(headerText.size());
    Cp begin = 0;
    for (Cp cp = 0; cp < piece.text.size(); ++cp) {
        piece.characters.push_back({1, {}});
        const char16_t c = piece.text[cp];
        if (c == u'\r' || c == u'\a' || c == u'\f') {
            piece.paragraphs.push_back({cp + 1 - begin, 0, {}});
            begin = cp + 1;
        }
        if (c == 1 || c == 2 || (c >= 0x13 && c <= 0x15)) {
            piece.characters.back().properties = special();
        }
    }
    file.pieces.push_back(std::move(piece));
    text().paragraphs[0].style = 1;
    setParagraph(u"项目", withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0));
    setParagraph(u"a\a", flag(sprm::PFInTable));
    setParagraph(u"b\a", flag(sprm::PFInTable));
    setParagraph(u"\a\x13", rowDefinition(2));
    file.data = *Picture::fromImage(png(96, 96))->blob();
    setCharacters(u"\x01\r", withSprm32(special(), sprm::CPicLocation, 0));
    setCharacters(u"标题", withSprm16(withSprm16({}, sprm::CRgFtc0, 1), sprm::CIstd, 15));
    const Cp second = find(u"末");
    file.sections = {{second, withSprm8({}, sprm::SBkc, 2)},
                     {static_cast<Cp>(mainText.size()) - second, {}}};
}

void SoundDocument::addTables() {
    const Cp total = static_cast<Cp>(text().text.size());
    const std::vector<Bookmark> bookmarks{{u"_Toc1", 0, 2, 0}, {u"here", 1, 5, 0}};
    const BookmarkTables tables = encodeBookmarks(bookmarks, total);
    file.parts[FibPair::SttbfBkmk] = tables.names;
    file.parts[FibPair::PlcfBkf] = tables.starts;
    file.parts[FibPair::PlcfBkl] = tables.ends;
    const Cp field = find(u"\x13");
    const Cp length = file.lengths.text;
    file.parts[FibPair::PlcfFldMom] =
        encodePlc({field, find(u"\x14"), find(u"\x15"), length}, hex("1321 14FF 1580"));
    file.parts[FibPair::PlcffndRef] = encodePlc({find(u"\x02\r"), length}, hex("0100"));
    file.parts[FibPair::PlcffndTxt] =
        encodePlc({0, file.lengths.footnotes - 1, file.lengths.footnotes}, {});
    std::vector<std::uint32_t> stories(8, 0); // six separators, two headers of the first section
    stories.resize(19, 3);
    stories.push_back(4);
    file.parts[FibPair::PlcfHdd] = encodePlc(stories, {});
    file.parts[FibPair::Dop] = defaultDop();
}

void SoundDocument::append(std::u16string_view added) {
    PieceText& piece = text();
    const PieceText::Paragraph closing = piece.paragraphs.back();
    piece.paragraphs.pop_back();
    piece.text.insert(piece.text.size() - 1, added);
    Cp length = 0;
    for (const char16_t c : added) {
        ++length;
        const bool isSpecial = c == 2 || c == 5;
        piece.characters.insert(piece.characters.end() - 1, {1, isSpecial ? special() : Bytes()});
        if (c == u'\r') {
            piece.paragraphs.push_back({length, 0, {}});
            length = 0;
        }
    }
    piece.paragraphs.push_back(closing);
}

void SoundDocument::mark(std::u16string_view sought, char16_t character) {
    const Cp cp = find(sought);
    text().text[cp] = character;
    text().characters[cp].properties = special();
}

Cp SoundDocument::find(std::u16string_view sought) const {
    return static_cast<Cp>(file.pieces[0].text.find(sought));
}

void SoundDocument::setParagraph(std::u16string_view sought, const Bytes& properties) {
    Cp begin = 0;
    for (PieceText::Paragraph& paragraph : text().paragraphs) {
        if (begin == find(sought)) {
            paragraph.properties = properties;
        }
        begin += paragraph.length;
    }
}

void SoundDocument::setCharacters(std::u16string_view sought, Bytes properties) {
    text().characters[find(sought)].properties = std::move(properties);
}

WordStreams SoundDocument::streams() const {
    WordFile written = file;
    const EncodedListDefinitions definitions = encodeListDefinitions(listDefinitions, lists);
    const auto give = [&](FibPair pair, const Bytes& bytes) {
        written.parts.try_emplace(pair, bytes);
    };
    give(FibPair::Stshf, encodeStyleSheet(styles, lists));
    give(FibPair::SttbfFfn, encodeFonts(fonts));
    give(FibPair::PlfLst, definitions.bytes);
    give(FibPair::PlfLfo, encodeListOverrides(listOverrides, lists));
    give(FibPair::SttbfRMark, encodeRevisionAuthors(authors));
    WordStreams result = wordStreams(written);
    Fib fib = readFib(result.wordDocument);
    const FcLcb place = fib.at(FibPair::PlfLst);
    fib.set(FibPair::PlfLst,
            {place.fc, std::min(place.lcb, static_cast<std::uint32_t>(definitions.size))});
    const Bytes head = encodeFib(fib);
    std::copy(head.begin(), head.end(), result.wordDocument.begin());
    return result;
}

Bytes SoundDocument::bytes() const { return compoundFile(streams()); }

std::set<std::string> brokenRules(const Bytes& file) {
    std::set<std::string> rules;
    for (const Finding& finding : checkDocument(file)) {
        rules.insert(finding.rule);
    }
    return rules;
}

std::vector<std::string> toldOf(const char* rule, const Bytes& file) {
    std::vector<std::string> told;
    for (const Finding& finding : checkDocument(file)) {
        if (finding.rule == rule) {
            told.push_back(toUtf8(finding.text));
        }
    }
    return told;
}

std::set<std::string> brokenRulesWithTable(FibPair table, const Bytes& bytes) {
    SoundDocument document;
    document.file.parts[table] = bytes;
    return brokenRules(document.bytes());
}

void put16(Bytes& bytes, std::size_t at, unsigned value) {
    bytes.at(at) = static_cast<std::uint8_t>(value);
    bytes.at(at + 1) = static_cast<std::uint8_t>(value >> 8);
}

void put32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    put16(bytes, at, value & 0xFFFF);
    put16(bytes, at + 2, value >> 16);
}

std::uint32_t get32(const Bytes& bytes, std::size_t at) {
    LittleEndianReader reader(bytes, "test");
    reader.seek(at);
    return reader.u32();
}

Bytes changed(const SoundDocument& document,
              const std::function<void(WordStreams&, const Fib&)>& change) {
    WordStreams streams = document.streams();
    change(streams, readFib(streams.wordDocument));
    return compoundFile(streams);
}

} // namespace qvnd::test

#include "platform/word/engine/EngineHeadersFooters.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"
#include "platform/word/engine/SprmList.h"
#include "platform/word/engine/StoryBuilder.h"
#include "platform/word/engine/TemplateStyles.h"

#include <algorithm>

namespace qvnd::word {

namespace {

void setSectionEntry(EngineDocument& document, SprmOpcode opcode, ByteView operand) {
    WorkingDocument& content = document.change();
    const std::size_t section = document.selectedSection();
    PropertyLists& lists = content.tables().lists;
    const Bytes list = withSprm(lists[content.sections().properties(section)], opcode, operand);
    content.sections().setProperties(section, lists.intern(list));
}

// The frame that page numbers stand in: text flows around, placed in its line, at one side of the
// margins ([MS-DOC] sprmPPc, sprmPDxaAbs: -4 centre, -8 right).
PropertyListId frameOf(PropertyLists& lists, PageNumberAlignment alignment) {
    constexpr unsigned besideMarginInLine = 0x60;
    constexpr unsigned around = 2;
    const int side = alignment == PageNumberAlignment::center  ? -4
                     : alignment == PageNumberAlignment::right ? -8
                                                               : 0;
    return SprmList()
        .byte(sprm::PWr, around)
        .byte(sprm::PPc, besideMarginInLine)
        .word(sprm::PDxaAbs, static_cast<std::uint16_t>(side))
        .word(sprm::PDyaAbs, 1)
        .in(lists);
}

Story pageNumberParagraph(DocumentTables& tables, HeaderKind kind, PageNumberAlignment alignment) {
    const StyleIndex paragraphStyle =
        requireStyle(tables, kind == HeaderKind::oddFooter ? sti::footer : sti::header);
    const StyleIndex numberStyle = requireStyle(tables, sti::pageNumber);
    const PropertyListId number = SprmList().word(sprm::CIstd, numberStyle).in(tables.lists);
    const PropertyListId mark =
        SprmList().word(sprm::CIstd, numberStyle).byte(sprm::CFSpec, 1).in(tables.lists);
    Story story;
    StoryBuilder builder(story);
    builder.fieldBegin(field::page, mark);
    builder.text(u" PAGE ", number);
    builder.fieldSeparator(mark);
    builder.text(u"1", number);
    builder.fieldEnd(field::hasSeparator, mark);
    builder.mark(u'\r', {paragraphStyle, frameOf(tables.lists, alignment)}, number);
    return story;
}

} // namespace

void EnginePageNumbers::setByte(std::uint16_t opcode, unsigned operand) {
    const auto byte = static_cast<std::uint8_t>(operand);
    setSectionEntry(document_, opcode, ByteView(&byte, 1));
}

void EnginePageNumbers::setNumberStyle(int style) {
    setByte(sprm::SNfcPgn, static_cast<unsigned>(style));
}

void EnginePageNumbers::setHeadingLevelForChapter(int level) {
    // Counted from 0 for the first heading; the file counts from 1, and 0 is none.
    chapterLevel_ = std::clamp(level, 0, 8) + 1;
}

void EnginePageNumbers::setIncludeChapterNumber(bool include) {
    setByte(sprm::SiHeadingPgn, include ? static_cast<unsigned>(std::max(chapterLevel_, 1)) : 0);
}

void EnginePageNumbers::setChapterPageSeparator(int separator) {
    setByte(sprm::ScnsPgn, static_cast<unsigned>(separator));
}

void EnginePageNumbers::setRestartNumberingAtSection(bool restart) {
    setByte(sprm::SFPgnRestart, restart ? 1 : 0);
}

void EnginePageNumbers::setStartingNumber(int number) {
    if (number < 0 || number > 0xFFFF) {
        throw outOfRange();
    }
    LittleEndianWriter operand;
    operand.u16(static_cast<unsigned>(number));
    setSectionEntry(document_, sprm::SPgnStart97, operand.data());
    operand.u16(0);
    setSectionEntry(document_, sprm::SPgnStart, operand.data());
}

void EnginePageNumbers::Add(PageNumberAlignment alignment, bool firstPage) {
    WorkingDocument& content = document_.change();
    content.setTitlePage(document_.selectedSection(), !firstPage);
    auto paragraph =
        std::make_shared<const Story>(pageNumberParagraph(content.tables(), kind_, alignment));
    const Cp length = paragraph->size();
    content.header(document_.selectedSection(), kind_).insertFragment(0, std::move(paragraph));
    document_.moveHeaderInsertion(kind_, length);
}

bool EngineHeaderFooter::IsHeader() {
    return kind_ == HeaderKind::oddHeader || kind_ == HeaderKind::evenHeader ||
           kind_ == HeaderKind::firstHeader;
}

HeaderFooter& EngineSection::Headers(int index) {
    if (index != 1) {
        throw memberNotFound();
    }
    return header_;
}

HeaderFooter& EngineSection::Footers(int index) {
    if (index != 1) {
        throw memberNotFound();
    }
    return footer_;
}

} // namespace qvnd::word

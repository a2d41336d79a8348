#include "platform/word/engine/ContentsInsertion.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/ParagraphChange.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StoryBuilder.h"
#include "platform/word/engine/TemplateStyles.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

constexpr std::size_t levels = 9;

std::array<StyleIndex, levels> contentsStyles(DocumentTables& tables) {
    std::array<StyleIndex, levels> styles{};
    for (std::size_t i = 0; i < levels; ++i) {
        styles[i] = requireStyle(tables, static_cast<std::uint16_t>(sti::contents1 + i));
    }
    return styles;
}

// PChgTabsPapx with one added tab: TBD is the kind of tab (2 right) and the leader above it.
constexpr std::size_t positionAt = 3;
constexpr std::size_t kindAt = 5;
std::array<std::uint8_t, 6> rightTab(int position, TabLeader leader) {
    constexpr unsigned right = 2;
    const unsigned kind = right | (static_cast<unsigned>(leader) << 3);
    return {5,
            0,
            1,
            static_cast<std::uint8_t>(position),
            static_cast<std::uint8_t>(position >> 8),
            static_cast<std::uint8_t>(kind)};
}

int textWidth(WorkingDocument& document, Cp at) {
    const DocumentSections& sections = document.sections();
    const ByteView page = document.tables().lists[sections.properties(sections.indexAt(at))];
    constexpr int narrowest = 1440;
    return std::max(sectionPaper(page, gutterOnTop(document.settings())).textWidth(), narrowest);
}

class ContentsInsertion {
public:
    ContentsInsertion(WorkingDocument& document, Insertion& insertion,
                      const TableOfContentsOptions& options)
        : document_(document), tables_(document.tables()), story_(document.main()),
          editor_(story_, tables_, insertion), insertion_(insertion), options_(options) {}

    ContentsLosses run() {
        beginParagraph();
        Story field = makeField();
        const Cp at = insertion_.start;
        // An empty paragraph becomes the last one of the contents, unless nothing follows it.
        const Cp end = story_.paragraphEnd(at);
        const bool takesMark = end == at + 1 && end < story_.size() && story_.at(at) != u'\a';
        const bool breaksPage = hasPageBreak(tables_.lists, story_.paragraphLook(at));
        if (takesMark) {
            setMark(at, lastLook_, true);
        } else {
            const ParagraphLook rest =
                withPageBreak(tables_.lists, story_.paragraphLook(at), false);
            setMark(end - 1, rest, false);
            StoryBuilder(field).mark(u'\r', lastLook_, PropertyListId::empty);
        }
        const Cp length = field.size();
        story_.insertFragment(at, std::make_shared<const Story>(std::move(field)));
        if (breaksPage) {
            breakPageBefore(at);
        }
        const Cp behind = at + length + (takesMark ? 1 : 0);
        editor_.select(behind, behind);
        return losses_;
    }

private:
    void beginParagraph() {
        editor_.eraseSelection();
        if (story_.paragraphStart(insertion_.start) != insertion_.start) {
            editor_.typeParagraph();
            makePlain(insertion_.start - 1);
        }
    }

    // Formatting that reaches over the mark up to the contents is lost by some readers, together
    // with that of the text before it.
    void makePlain(Cp mark) {
        story_.changeCharacters(mark, mark + 1,
                                [](PropertyListId) { return PropertyListId::empty; });
    }

    Story makeField() {
        const auto styles = contentsStyles(tables_);
        setContentsTab(tables_, textWidth(document_, insertion_.start), TabLeader::dots);
        std::vector<ContentsEntry> entries = contentsEntries(document_, options_);
        losses_ = bookmarkEntries(document_, entries);
        const int level = entries.empty() ? 1 : entries.back().level;
        lastLook_.style = styles.at(static_cast<std::size_t>(level - 1));
        return contentsField(tables_.lists, entries, options_, styles);
    }

    void setMark(Cp mark, const ParagraphLook& look, bool plain) {
        story_.changeParagraphs(mark, mark + 1, [&](const ParagraphLook&) { return look; });
        if (plain) {
            makePlain(mark);
        }
    }

    void breakPageBefore(Cp at) {
        const Cp mark = story_.paragraphEnd(at) - 1;
        setMark(mark, withPageBreak(tables_.lists, story_.paragraphLook(at), true), false);
    }

    WorkingDocument& document_;
    DocumentTables& tables_;
    WorkingStory& story_;
    StoryEditor editor_;
    Insertion& insertion_;
    const TableOfContentsOptions& options_;
    ParagraphLook lastLook_;
    ContentsLosses losses_;
};

} // namespace

void setContentsTab(DocumentTables& tables, int position, TabLeader leader) {
    for (const StyleIndex style : contentsStyles(tables)) {
        PropertyListId& list = tables.styles.styles[style]->paragraph;
        const Bytes plain = withoutSprm(tables.lists[list], sprm::PChgTabs);
        list = tables.lists.intern(withSprm(plain, sprm::PChgTabsPapx, rightTab(position, leader)));
    }
}

void setContentsLeader(DocumentTables& tables, TabLeader leader) {
    for (const StyleIndex style : contentsStyles(tables)) {
        const auto tabs =
            findSprm(tables.lists[tables.styles.styles[style]->paragraph], sprm::PChgTabsPapx);
        const bool isOurs = tabs && tabs->operand.size() > kindAt && tabs->operand[1] == 0;
        const int position = isOurs
                                 ? tabs->operand[positionAt] | (tabs->operand[positionAt + 1] << 8)
                                 : normalTextWidth;
        PropertyListId& list = tables.styles.styles[style]->paragraph;
        list = tables.lists.intern(
            withSprm(tables.lists[list], sprm::PChgTabsPapx, rightTab(position, leader)));
    }
}

ContentsLosses insertContents(WorkingDocument& document, Insertion& insertion,
                              const TableOfContentsOptions& options) {
    return ContentsInsertion(document, insertion, options).run();
}

void removeContents(WorkingDocument& document, FieldSpan contents) {
    WorkingStory& story = document.main();
    const bool beginsParagraph = story.paragraphStart(contents.start) == contents.start;
    const bool endsParagraph = story.paragraphEnd(contents.end) == contents.end + 1;
    const bool takesMark = beginsParagraph && endsParagraph && contents.end + 1 < story.size() &&
                           story.at(contents.end) == u'\r';
    story.erase(contents.start, contents.end + (takesMark ? 1 : 0));
}

} // namespace qvnd::word

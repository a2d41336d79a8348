#include "platform/word/docfile/text/DocumentText.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/TablePlaces.h"

namespace qvnd::word {

namespace {

// Writes one character after the other; the caller tells where paragraphs end.
class TextCollector {
public:
    TextCollector(const Story& story, const DocumentTables& tables)
        : story_(story), lists_(tables.lists), places_(tables.lists) {}

    std::u16string collect() {
        Cp at = 0;
        for (const ParagraphRun& paragraph : story_.paragraphs) {
            const Cp end = at + paragraph.length;
            for (; at + 1 < end; ++at) {
                take(at);
            }
            if (at < end) {
                endParagraph(at, paragraph);
                ++at;
            }
        }
        return std::move(result_);
    }

private:
    void endParagraph(Cp at, const ParagraphRun& paragraph) {
        const char16_t mark = story_.text[at];
        if (mark != special::paragraphMark && mark != special::cellMark &&
            mark != special::pageBreak) {
            take(at);
            return;
        }
        const TablePlace place = places_.of(paragraph.properties, mark);
        if (instructions()) {
            return;
        }
        if (place.rowEnd && !result_.empty() && result_.back() == special::tab) {
            result_.back() = u'\n'; // the tab behind the row's last cell
        } else {
            result_.push_back(place.cellEnd ? special::tab : u'\n');
        }
    }

    void take(Cp at) {
        const char16_t c = story_.text[at];
        if (nextField_ < story_.fields.size() && story_.fields[nextField_].at == at) {
            instructions_.take(story_.fields[nextField_++].character);
        } else if (!instructions()) {
            takeCharacter(at, c);
        }
    }

    bool instructions() const { return instructions_.isInside(); }

    void takeCharacter(Cp at, char16_t c) {
        if (c == special::lineBreak || c == special::pageBreak || c == special::columnBreak) {
            result_.push_back(u'\n');
        } else if (c == special::fixedHyphen) {
            result_.push_back(u'-');
        } else if (c == special::symbol) {
            result_.push_back(symbolAt(at));
        } else if (c >= special::firstPrintable || c == special::tab) {
            result_.push_back(c);
        }
    }

    // What stands as a bracket in the text may be a symbol of another font.
    char16_t symbolAt(Cp at) {
        while (run_ < story_.characters.size() &&
               runStart_ + story_.characters[run_].length <= at) {
            runStart_ += story_.characters[run_++].length;
        }
        const auto symbol = findSprm(lists_[story_.characters[run_].properties], sprm::CSymbol);
        if (!symbol) {
            return special::symbol;
        }
        LittleEndianReader reader(symbol->operand, "sprmCSymbol");
        reader.skip(2); // the font
        return static_cast<char16_t>(reader.u16());
    }

    const Story& story_;
    const PropertyLists& lists_;
    TablePlaces places_;
    std::u16string result_;
    FieldInstructions instructions_;
    std::size_t nextField_ = 0;
    std::size_t run_ = 0;
    Cp runStart_ = 0;
};

} // namespace

std::u16string documentText(const SlicedText& text, const DocumentTables& tables) {
    const auto story = joined(text);
    return TextCollector(*story, tables).collect();
}

} // namespace qvnd::word

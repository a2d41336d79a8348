#include "platform/word/layout/NoteNumbers.h"

#include "platform/word/docfile/format/Dop.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/formatting/NumberForms.h"
#include "platform/word/formatting/PropertyValues.h"
#include "platform/word/layout/StoryReader.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace qvnd::layout {

namespace {

namespace sprm = word::sprm;
namespace dop = word::dop;

// Where the numbering of one kind of notes is told: by a section, and by the document.
struct Told {
    word::SprmOpcode restart = 0;
    word::SprmOpcode first = 0;
    word::SprmOpcode form = 0;
    word::DopField restartOfAll;
    word::DopField firstOfAll;
    word::DopField formOfAll;
};

constexpr Told footnotes{sprm::SRncFtn,        sprm::SNFtn,        sprm::SNfcFtnRef,
                         dop::footnoteRestart, dop::firstFootnote, dop::footnoteNumbers};
constexpr Told endnotes{sprm::SRncEdn,       sprm::SNEdn,       sprm::SNfcEdnRef,
                        dop::endnoteRestart, dop::firstEndnote, dop::endnoteNumbers};

struct Numbering {
    enum Restart : std::uint32_t { never, bySection, byPage };

    std::uint32_t restart = never;
    int first = 1;
    unsigned form = 0;
};

Numbering numberingOf(const LayoutSource& source, std::size_t section, const Told& told) {
    const auto value = [&](word::SprmOpcode opcode, word::DopField ofAll) {
        const auto entry =
            section < source.sections.size()
                ? word::findSprm(source.tables->lists[source.sections[section].properties], opcode)
                : std::nullopt;
        return entry ? word::numberOf(*entry) : word::readDop(source.settings, ofAll);
    };
    constexpr std::uint32_t highest = 0x3FFF;
    Numbering numbering;
    numbering.restart = value(told.restart, told.restartOfAll);
    numbering.first =
        static_cast<int>(std::clamp<std::uint32_t>(value(told.first, told.firstOfAll), 1, highest));
    numbering.form = value(told.form, told.formOfAll);
    return numbering;
}

class Counter {
public:
    int next(const Numbering& numbering, std::size_t section, int sheet) {
        const bool isFirst = !section_;
        const bool isOfNextSection = numbering.restart != Numbering::never && section_ != section;
        const bool isOfNextPage = numbering.restart == Numbering::byPage && sheet_ != sheet;
        number_ = isFirst || isOfNextSection || isOfNextPage ? numbering.first : number_ + 1;
        section_ = section;
        sheet_ = sheet;
        return number_;
    }

private:
    std::optional<std::size_t> section_; // of the note before
    int sheet_ = 0;
    int number_ = 0;
};

// Calls `take` with each anchor of a note in the text and the section that it stands in.
template <class Take>
void forEachNote(const LayoutSource& source, const Take& take) {
    std::size_t section = 0;
    word::Cp end = source.sections.empty() ? 0 : source.sections[0].length;
    for (const word::Anchor& anchor : source.main->anchors) {
        while (section + 1 < source.sections.size() && anchor.at >= end) {
            end += source.sections[++section].length;
        }
        if (namesNote(anchor) && anchor.index < source.tables->sideStories.size()) {
            take(anchor, section);
        }
    }
}

} // namespace

bool countsNotesByPage(const LayoutSource& source) {
    bool isByPage = false;
    forEachNote(source, [&](const word::Anchor& anchor, std::size_t section) {
        isByPage =
            isByPage || (anchor.kind == word::AnchorKind::footnote &&
                         numberingOf(source, section, footnotes).restart == Numbering::byPage);
    });
    return isByPage;
}

std::vector<std::u16string> noteMarks(const LayoutSource& source, const std::vector<int>& sheets) {
    std::vector<std::u16string> marks(source.tables->sideStories.size());
    Counter ofFootnotes;
    Counter ofEndnotes;
    forEachNote(source, [&](const word::Anchor& anchor, std::size_t section) {
        if (!source.tables->sideStories[anchor.index].automatic) {
            return;
        }
        const bool atFoot = anchor.kind == word::AnchorKind::footnote;
        const Numbering numbering = numberingOf(source, section, atFoot ? footnotes : endnotes);
        const int sheet = anchor.index < sheets.size() ? sheets[anchor.index] : 0;
        Counter& counter = atFoot ? ofFootnotes : ofEndnotes;
        marks[anchor.index] =
            word::numberInForm(counter.next(numbering, section, sheet), numbering.form);
    });
    return marks;
}

} // namespace qvnd::layout

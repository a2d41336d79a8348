#include "platform/word/docfile/writer/DocumentSummary.h"

#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/TablePlaces.h"

#include <algorithm>
#include <set>

namespace qvnd::word {

namespace {

constexpr std::uint16_t highestList = 0x07FE; // sprmPIlfo; what is above names no list

// Counts tables by their first row: what only claims to stand in a table is none.
class TableCounter {
public:
    int tables = 0;

    void next(const TablePlace& place) {
        // A table ends where the text is no longer as deep.
        withRow_.resize(static_cast<std::size_t>(place.depth));
        if (place.rowEnd && !withRow_.back()) {
            withRow_.back() = true;
            ++tables;
        }
    }

private:
    std::vector<bool> withRow_; // by depth: whether a row of the present table has ended
};

void countParagraphs(const DocumentContent& document, DocumentSummary& summary) {
    TablePlaces places(document.tables.lists);
    TableCounter counter;
    const auto main = joined(document.main);
    const Story& story = *main;
    Cp end = 0;
    for (const ParagraphRun& paragraph : story.paragraphs) {
        end += paragraph.length;
        const TablePlace place = places.of(paragraph.properties, story.text[end - 1]);
        counter.next(place);
        summary.cells += place.cellEnd ? 1 : 0;
        summary.paragraphs += place.rowEnd ? 0 : 1;
    }
    summary.tables = counter.tables;
}

// Form fields and hyperlinks keep data behind the same character.
bool isPicture(ByteView list) {
    const auto data = findSprm(list, sprm::CFData);
    return findSprm(list, sprm::CPicLocation) && !(data && data->operand[0] != 0);
}

int countPictures(const DocumentContent& document) {
    const auto main = joined(document.main);
    const Story& story = *main;
    int pictures = 0;
    Cp at = 0;
    for (const CharacterRun& run : story.characters) {
        const auto first = story.text.begin() + at;
        const auto found = std::count(first, first + run.length, special::picture);
        if (found > 0 && isPicture(document.tables.lists[run.properties])) {
            pictures += static_cast<int>(found);
        }
        at += run.length;
    }
    return pictures;
}

std::optional<std::uint16_t> listOf(ByteView properties) {
    const auto entry = findSprm(properties, sprm::PIlfo);
    return entry ? std::optional(LittleEndianReader(entry->operand, "sprmPIlfo").u16())
                 : std::nullopt;
}

// The list that a style gives its paragraphs, its own or that of a style below it; 0 for none.
std::uint16_t listOfStyle(const DocumentTables& tables, StyleIndex style) {
    const auto& styles = tables.styles.styles;
    for (std::size_t step = 0; step < styles.size(); ++step) {
        if (style >= styles.size() || !styles[style]) {
            break;
        }
        if (const auto list = listOf(tables.lists[styles[style]->paragraph])) {
            return *list;
        }
        style = styles[style]->basedOn;
    }
    return 0;
}

int countLists(const DocumentContent& document) {
    const DocumentTables& tables = document.tables;
    std::set<std::pair<PropertyListId, StyleIndex>> seen;
    std::set<std::int32_t> lists;
    const auto main = joined(document.main);
    for (const ParagraphRun& paragraph : main->paragraphs) {
        if (!seen.emplace(paragraph.properties, paragraph.style).second) {
            continue;
        }
        const auto own = listOf(tables.lists[paragraph.properties]);
        const std::uint16_t list = own ? *own : listOfStyle(tables, paragraph.style);
        if (list > 0 && list <= highestList && list <= tables.listOverrides.size()) {
            lists.insert(tables.listOverrides[list - 1].lsid);
        }
    }
    return static_cast<int>(lists.size());
}

int countFields(const Story& story) {
    return static_cast<int>(
        std::count_if(story.fields.begin(), story.fields.end(),
                      [](const FieldMark& mark) { return mark.character == fieldBegin; }));
}

} // namespace

DocumentSummary summarize(const DocumentContent& document) {
    DocumentSummary summary;
    const auto main = joined(document.main);
    countParagraphs(document, summary);
    summary.pictures = countPictures(document);
    summary.sections = static_cast<int>(document.sections.size());
    summary.lists = countLists(document);
    summary.fields = countFields(*main);
    for (const Anchor& anchor : main->anchors) {
        ++summary.anchors[static_cast<std::size_t>(anchor.kind)];
    }
    summary.bookmarks =
        static_cast<int>(std::count_if(document.bookmarks.begin(), document.bookmarks.end(),
                                       [](const Bookmark& bookmark) { return !bookmark.comment; }));
    summary.embeddedObjects = static_cast<int>(document.tables.objects.size());
    const auto& styles = document.tables.styles.styles;
    summary.styles = static_cast<int>(
        std::count_if(styles.begin(), styles.end(), [](const auto& style) { return bool(style); }));
    return summary;
}

} // namespace qvnd::word

#include "platform/word/engine/DocumentFacts.h"

#include "platform/word/docfile/SprmCodes.h"
#include "platform/word/engine/SectionProperties.h"
#include "platform/word/engine/StyleLookup.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace qvnd::word {

namespace {

struct Place {
    int depth = 0; // of tables around the paragraph
    bool isCell = false;
    bool isRowEnd = false;
};

Place placeOf(ByteView look, char16_t mark) {
    Place place;
    const auto inTable = static_cast<int>(sprmValue(look, sprm::PFInTable, 0) != 0);
    place.depth = std::max(inTable, static_cast<int>(sprmValue(look, sprm::PItap, 0)));
    place.isRowEnd =
        sprmValue(look, sprm::PFTtp, 0) != 0 || sprmValue(look, sprm::PFInnerTtp, 0) != 0;
    place.isCell =
        !place.isRowEnd && (mark == u'\a' || sprmValue(look, sprm::PFInnerTableCell, 0) != 0);
    return place;
}

void countParagraphs(const DocumentData& document, DocumentFacts& facts) {
    std::unordered_map<PropertyListId, Place> known[2];
    int depth = 0;
    Cp end = 0;
    for (const ParagraphRun& run : document.main.paragraphs) {
        end += run.length;
        const char16_t mark = document.main.text[end - 1];
        auto& places = known[mark == u'\a' ? 1 : 0];
        auto found = places.find(run.properties);
        if (found == places.end()) {
            const ByteView look = document.tables.lists[run.properties];
            found = places.emplace(run.properties, placeOf(look, mark)).first;
        }
        const Place& place = found->second;
        facts.tables += std::max(place.depth - depth, 0);
        depth = place.depth;
        facts.cells += place.isCell ? 1 : 0;
        facts.paragraphs += place.isCell || place.isRowEnd ? 0 : 1;
    }
}

int countLists(const DocumentData& document) {
    std::set<std::pair<StyleIndex, PropertyListId>> looks;
    for (const ParagraphRun& run : document.main.paragraphs) {
        looks.emplace(run.style, run.properties);
    }
    std::set<std::int32_t> lists;
    for (const auto& [style, properties] : looks) {
        const ByteView list = document.tables.lists[properties];
        const std::uint32_t inStyle = styleValue(document.tables, style, sprm::PIlfo).value_or(0);
        const std::uint32_t number = sprmValue(list, sprm::PIlfo, inStyle);
        if (number > 0 && number <= document.tables.listOverrides.size()) {
            lists.insert(document.tables.listOverrides[number - 1].lsid);
        }
    }
    return static_cast<int>(lists.size());
}

bool isPicture(ByteView look) {
    return findSprm(look, sprm::CPicLocation) && sprmValue(look, sprm::CFData, 0) == 0 &&
           sprmValue(look, sprm::CFOle2, 0) == 0 && sprmValue(look, sprm::CFObj, 0) == 0;
}

int countPictures(const DocumentData& document) {
    int pictures = 0;
    std::size_t at = 0;
    for (const CharacterRun& run : document.main.characters) {
        const auto text = std::u16string_view(document.main.text).substr(at, run.length);
        at += run.length;
        const auto marks = std::count(text.begin(), text.end(), u'\x01');
        if (marks > 0 && isPicture(document.tables.lists[run.properties])) {
            pictures += static_cast<int>(marks);
        }
    }
    return pictures;
}

} // namespace

DocumentFacts factsOf(const DocumentData& document) {
    DocumentFacts facts;
    countParagraphs(document, facts);
    facts.pictures = countPictures(document);
    facts.sections = static_cast<int>(document.sections.size());
    facts.lists = countLists(document);
    facts.fields = static_cast<int>(
        std::count_if(document.main.fields.begin(), document.main.fields.end(),
                      [](const FieldMark& mark) { return mark.character == 0x13; }));
    facts.bookmarks = static_cast<int>(document.bookmarks.size());
    facts.footnotes = document.side.footnotes;
    facts.endnotes = document.side.endnotes;
    facts.comments = document.side.comments;
    facts.shapes = document.side.drawings;
    facts.embeddedObjects = document.side.embeddedObjects;
    const auto& styles = document.tables.styles.styles;
    facts.styles = static_cast<int>(std::count_if(
        styles.begin(), styles.end(), [](const auto& style) { return style.has_value(); }));
    return facts;
}

std::u16string plainText(const Story& story, const PropertyLists& lists) {
    std::u16string result;
    std::vector<bool> inCode; // for each open field
    auto run = story.paragraphs.begin();
    Cp end = run == story.paragraphs.end() ? 0 : run->length;
    for (Cp at = 0; at < story.size(); ++at) {
        while (at >= end && std::next(run) != story.paragraphs.end()) {
            end += (++run)->length;
        }
        const char16_t c = story.text[at];
        const bool isShown = std::find(inCode.begin(), inCode.end(), true) == inCode.end();
        if (c == u'\x13') {
            inCode.push_back(true);
        } else if (c == u'\x14' && !inCode.empty()) {
            inCode.back() = false;
        } else if (c == u'\x15' && !inCode.empty()) {
            inCode.pop_back();
        } else if (!isShown) {
            continue;
        } else if (c == u'\a') {
            result += placeOf(lists[run->properties], c).isRowEnd ? u'\n' : u'\t';
        } else if (c == u'\r' || c == u'\f' || c == u'\v') {
            result += u'\n';
        } else if (c == u'\t' || c >= u' ') {
            result += c;
        }
    }
    return result;
}

} // namespace qvnd::word

#include "platform/word/engine/TextImport.h"

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/StoryRepair.h"
#include "platform/word/engine/StyleLookup.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr StyleIndex normalTable = 11; // the style of rows that name none

} // namespace

StyleIndex TextImport::effectiveStyle(StyleIndex style) const {
    return hasStyle(source_.styles, style, StyleKind::paragraph) ? style : StyleIndex{0};
}

Story TextImport::importedText(const Story& story) {
    Story result;
    result.text = story.text;
    result.fields = story.fields;
    result.anchors = story.anchors;
    result.paragraphs.reserve(story.paragraphs.size());
    auto run = story.characters.begin();
    Cp leftOfRun = run != story.characters.end() ? run->length : 0;
    for (const ParagraphRun& paragraph : story.paragraphs) {
        result.paragraphs.push_back(imported(paragraph));
        Cp left = paragraph.length;
        while (left > 0 && run != story.characters.end()) {
            const Cp part = std::min(left, leftOfRun);
            appendRun(result.characters, {part, importedRun(paragraph.style, run->properties)});
            left -= part;
            leftOfRun -= part;
            if (leftOfRun == 0 && ++run != story.characters.end()) {
                leftOfRun = run->length;
            }
        }
    }
    return result;
}

ParagraphRun TextImport::imported(const ParagraphRun& paragraph) {
    StyleImport& styles = tables_.styles();
    const StyleIndex style = effectiveStyle(paragraph.style);
    const auto [direct, isNew] = directs_.try_emplace(paragraph.properties, PropertyListId::empty);
    if (isNew) {
        direct->second = withTableStyle(paragraph.properties,
                                        tables_.rewriter().rewritten(paragraph.properties));
    }
    return {paragraph.length, styles.paragraphStyle(style),
            fitting_.fitted(styles.paragraph(style, direct->second))};
}

PropertyListId TextImport::importedRun(StyleIndex paragraphStyle, PropertyListId list) {
    return fitting_.fitted(tables_.styles().character(effectiveStyle(paragraphStyle),
                                                      facts_.of(list).characterStyle,
                                                      tables_.rewriter().rewritten(list)));
}

Story TextImport::imported(const Story& story) {
    Story result = importedText(story);
    settleMarks(result, target_.lists);
    return result;
}

// A row that names no table style has the normal one; where the target defines that otherwise,
// the row has to name its own.
PropertyListId TextImport::withTableStyle(PropertyListId list, PropertyListId rewritten) {
    const ByteView entries = source_.lists[list];
    const bool rowWithoutStyle =
        findSprm(entries, sprm::TDefTable) && !findSprm(entries, sprm::TIstd);
    if (!rowWithoutStyle) {
        return rewritten;
    }
    const auto there = tables_.style(normalTable, StyleKind::table);
    if (!there || *there == normalTable) {
        return rewritten;
    }
    Bytes named;
    named = withSprm16(named, sprm::TIstd, *there);
    const ByteView rest = target_.lists[rewritten];
    named.insert(named.end(), rest.begin(), rest.end());
    return target_.lists.intern(named);
}

} // namespace qvnd::word

#pragma once

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/engine/PropertyRewriter.h"
#include "platform/word/engine/StyleDifference.h"
#include "platform/word/engine/StyleMatch.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/StyleResolver.h"

#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace qvnd::word {

// Finds the styles of one document in the style sheet of another, brings along those that it
// lacks, and tells what must be said directly where the two define a style differently.
class StyleImport {
public:
    // `defaultFonts`: those of the source in terms of the target.
    StyleImport(DocumentTables& target, const DocumentTables& source, PropertyRewriter& rewriter,
                ImportReferences& references, const std::array<std::uint16_t, 4>& defaultFonts);

    // The place in the target; nothing when the source has no such style.
    std::optional<StyleIndex> style(StyleIndex istd);
    // That of a paragraph's style; an index without a paragraph style stands for Normal.
    StyleIndex paragraphStyle(StyleIndex istd);

    // Property lists (already in terms of the target) of a paragraph in a style of the source,
    // and of a run in such a paragraph: what must be said in the target to look the same.
    PropertyListId paragraph(StyleIndex sourceStyle, PropertyListId direct);
    PropertyListId character(StyleIndex sourceStyle, StyleIndex sourceCharacterStyle,
                             PropertyListId direct);

    // Gives the styles that came along the styles that follow them and those they are tied to.
    // Call it when the text is through.
    void finish();
    // The new place of a style of the source that came along.
    std::optional<StyleIndex> cameAlong(StyleIndex istd) const;
    // Whether it came along or would if the text asked for it: the target has none of its own.
    bool mayComeAlong(StyleIndex istd) const;
    // Lists that stayed as they were, because a damaged source combines more styles and lists than
    // memory can hold.
    int withoutRoom() const { return withoutRoom_; }

private:
    using StylePair = std::pair<StyleIndex, StyleIndex>;

    const StyleDefinition* sourceStyle(StyleIndex istd) const;
    StyleIndex bring(StyleIndex istd);
    std::optional<StyleIndex> newPlace(const StyleDefinition& style) const;
    StyleDefinition translated(const StyleDefinition& style);
    void basedInTarget(StyleDefinition& style, const StyleDefinition& source);
    void flattenCharacterStyle(StyleDefinition& style, const StyleDefinition& source);
    std::optional<StyleIndex> sameTableStyle(const StyleDefinition& style);
    PropertyListId under(const StyleDifference& difference, PropertyListId direct);

    DocumentTables& target_;
    const DocumentTables& source_;
    PropertyRewriter& rewriter_;
    ImportReferences& references_;
    ListLevels levels_; // of the target
    StyleMatch match_;
    StyleResolver sourceLooks_;
    StyleResolver targetLooks_;
    std::vector<std::optional<StyleIndex>> places_; // by istd of the source
    std::set<StyleIndex> brought_;                  // istds of the source
    std::set<StyleIndex> underWay_;
    std::map<StyleIndex, StyleDifference> paragraphs_;
    std::map<StylePair, StyleDifference> characters_;
    std::map<std::pair<StyleIndex, PropertyListId>, PropertyListId> paragraphLists_;
    std::map<std::pair<StylePair, PropertyListId>, PropertyListId> characterLists_;
    CopyBudget room_; // of lists with a difference of styles in them
    int withoutRoom_ = 0;
};

} // namespace qvnd::word

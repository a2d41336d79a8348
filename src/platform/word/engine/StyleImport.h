#pragma once

#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/document/DocumentTables.h"
#include "platform/word/engine/LeftOut.h"
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

// Finds the styles of one document in the style sheet of another and adds those that it lacks.
// Where the two define a style differently, it computes the direct formatting that keeps the look.
class StyleImport {
public:
    // `defaultFonts`: those of the source in terms of the target.
    StyleImport(DocumentTables& target, const DocumentTables& source, PropertyRewriter& rewriter,
                ImportReferences& references, const std::array<std::uint16_t, 4>& defaultFonts);

    // The place in the target; nothing when the source has no such style.
    std::optional<StyleIndex> style(StyleIndex istd);
    // The same for a paragraph. An index that names no paragraph style stands for Normal.
    StyleIndex paragraphStyle(StyleIndex istd);

    // Both return the direct formatting with which a paragraph in a style of the source, and a run
    // in such a paragraph, look the same in the target. `direct` is in terms of the target already.
    PropertyListId paragraph(StyleIndex sourceStyle, PropertyListId direct);
    PropertyListId character(StyleIndex sourceStyle, StyleIndex sourceCharacterStyle,
                             PropertyListId direct);

    // Sets the next and linked styles of the styles that were added. Call it after all text has
    // been imported.
    void finish();
    // The index in the target of a style that was added; nothing for any other.
    std::optional<StyleIndex> cameAlong(StyleIndex istd) const;
    // Whether the style is or may still be added: the target has no such style.
    bool mayComeAlong(StyleIndex istd) const;
    // The styles that were added under another name, as the target has theirs for something else.
    const std::vector<ImportChanges::Renamed>& renamed() const { return renamed_; }
    // How many property lists were not adjusted, because a damaged source combines more styles and
    // lists than memory can hold.
    int withoutRoom() const { return withoutRoom_; }
    // How many styles stayed behind, because a document holds no more than mostStyles.
    int withoutPlace() const { return static_cast<int>(withoutPlace_.size()); }

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
    bool isUnderWay(StyleIndex place) const;
    PropertyListId underStyle(const StyleDifference& difference, PropertyListId own);

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
    std::set<StyleIndex> underWay_;                 // of the source, whose bases are being sought
    std::map<StyleIndex, StyleDifference> paragraphs_;
    std::map<StylePair, StyleDifference> characters_;
    std::map<std::pair<StyleIndex, PropertyListId>, PropertyListId> paragraphLists_;
    std::map<std::pair<StylePair, PropertyListId>, PropertyListId> characterLists_;
    std::vector<ImportChanges::Renamed> renamed_;
    CopyBudget room_; // of lists with a difference of styles in them
    int withoutRoom_ = 0;
    std::set<StyleIndex> withoutPlace_; // istds of the source
};

} // namespace qvnd::word

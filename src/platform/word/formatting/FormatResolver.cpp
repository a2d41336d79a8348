#include "platform/word/formatting/FormatResolver.h"

#include "platform/word/docfile/format/SprmCodes.h"

namespace qvnd::word {

FormatResolver::FormatResolver(const DocumentTables& tables, bool office)
    : tables_(tables), office_(office), levels_(tables),
      styles_(
          tables.styles, tables.styles.defaultFonts,
          [&tables](PropertyListId id) { return tables.lists[id]; }, levels_, office),
      places_(tables.lists) {}

const ResolvedParagraph& FormatResolver::paragraph(StyleIndex style, PropertyListId properties) {
    const auto [at, isNew] = paragraphs_.try_emplace(keyOf(style, properties));
    if (isNew) {
        ResolvedProperties look = styles_.paragraph(style);
        look.lay(tables_.lists[properties], levels_);
        at->second = resolvedParagraphOf(look);
        if (office_ && look.isIndentedByList()) {
            at->second.right = {};
        }
    }
    return at->second;
}

ResolvedProperties FormatResolver::resolved(StyleIndex paragraphStyle, PropertyListId properties) {
    const ByteView own = tables_.lists[properties];
    const auto named = findSprm(own, sprm::CIstd);
    const auto style = named ? static_cast<StyleIndex>(numberOf(*named)) : StyleDefinition::none;
    ResolvedProperties look = styles_.character(paragraphStyle, style);
    look.lay(own, levels_);
    return look;
}

const ResolvedText& FormatResolver::text(StyleIndex paragraphStyle, PropertyListId properties) {
    const auto [at, isNew] = texts_.try_emplace(keyOf(paragraphStyle, properties));
    if (isNew) {
        at->second =
            resolvedTextOf(resolved(paragraphStyle, properties), tables_.lists[properties]);
    }
    return at->second;
}

const ResolvedText& FormatResolver::label(StyleIndex paragraphStyle, PropertyListId properties,
                                          PropertyListId level) {
    const auto [at, isNew] = labels_.try_emplace({keyOf(paragraphStyle, properties), level});
    if (isNew) {
        ResolvedProperties look = resolved(paragraphStyle, properties);
        look.lay(tables_.lists[level], levels_);
        at->second = resolvedTextOf(look, {});
        // Underlines and markers belong to the text; a label has its level's own.
        const auto line = findSprm(tables_.lists[level], sprm::CKul);
        at->second.underlined = line && line->operand[0] != 0;
        at->second.background.reset();
    }
    return at->second;
}

const ResolvedRow& FormatResolver::row(PropertyListId properties) {
    const auto [at, isNew] = rows_.try_emplace(properties);
    if (isNew) {
        at->second = resolvedRowOf(tables_.lists[properties], tables_);
    }
    return at->second;
}

} // namespace qvnd::word

#include "platform/word/formatting/FormatResolver.h"

#include "platform/word/docfile/format/SprmCodes.h"

namespace qvnd::word {

FormatResolver::FormatResolver(const DocumentTables& tables, bool office)
    : tables_(tables), office_(office), levels_(tables),
      styles_(
          tables.styles, tables.styles.defaultFonts,
          [&tables](PropertyListId id) { return tables.lists[id]; }, levels_, office),
      places_(tables.lists), tableStyles_(tables) {}

const ResolvedParagraph& FormatResolver::paragraph(StyleIndex style, PropertyListId properties,
                                                   CellLook cell) {
    const auto [at, isNew] = paragraphs_.try_emplace(keyOf(style, properties, cell));
    if (isNew) {
        ResolvedProperties look = cell == CellLook::none
                                      ? styles_.paragraph(style)
                                      : styles_.paragraphAbove(layersOf(cell).paragraphs, style);
        look.lay(tables_.lists[properties], levels_);
        at->second = resolvedParagraphOf(look);
        if (office_ && look.isIndentedByList()) {
            at->second.right = {};
        }
    }
    return at->second;
}

ResolvedProperties FormatResolver::resolved(StyleIndex paragraphStyle, PropertyListId properties,
                                            CellLook cell) {
    const ByteView own = tables_.lists[properties];
    const auto named = findSprm(own, sprm::CIstd);
    const auto style = named ? static_cast<StyleIndex>(numberOf(*named)) : StyleDefinition::none;
    ResolvedProperties look =
        cell == CellLook::none
            ? styles_.character(paragraphStyle, style)
            : styles_.characterAbove(layersOf(cell).characters, paragraphStyle, style);
    look.lay(own, levels_);
    return look;
}

const ResolvedText& FormatResolver::text(StyleIndex paragraphStyle, PropertyListId properties,
                                         CellLook cell) {
    const auto [at, isNew] = texts_.try_emplace(keyOf(paragraphStyle, properties, cell));
    if (isNew) {
        at->second =
            resolvedTextOf(resolved(paragraphStyle, properties, cell), tables_.lists[properties]);
    }
    return at->second;
}

const ResolvedText& FormatResolver::label(StyleIndex paragraphStyle, PropertyListId properties,
                                          PropertyListId level, CellLook cell) {
    const auto [at, isNew] = labels_.try_emplace({keyOf(paragraphStyle, properties, cell), level});
    if (isNew) {
        ResolvedProperties look = resolved(paragraphStyle, properties, cell);
        look.lay(tables_.lists[level], levels_);
        at->second = resolvedTextOf(look, {});
        // Underlines and markers belong to the text; a label has its level's own.
        const auto line = findSprm(tables_.lists[level], sprm::CKul);
        at->second.underline = line ? underlineOf(line->operand[0]) : Underline();
        at->second.background.reset();
    }
    return at->second;
}

CellLook FormatResolver::cellLook(const TableStyle& table, const CellPlace& cell) {
    constexpr std::size_t most = 0xFFFF;
    if (office_ || tableStyles_.isPlain(table.style) || layers_.size() == most) {
        return CellLook::none;
    }
    const unsigned parts = tableStyles_.partsAt(table, cell);
    const auto [at, isNew] = cells_.try_emplace({table.style, parts});
    if (isNew) {
        layers_.push_back(tableStyles_.layersOf(table.style, parts));
        at->second = static_cast<CellLook>(layers_.size());
    }
    return at->second;
}

const TableStyles::Layers& FormatResolver::layersOf(CellLook cell) const {
    return layers_[static_cast<std::size_t>(cell) - 1];
}

std::optional<std::uint32_t> FormatResolver::background(CellLook cell) const {
    return cell == CellLook::none ? std::nullopt : layersOf(cell).background;
}

const ResolvedRow& FormatResolver::row(PropertyListId properties) {
    const auto [at, isNew] = rows_.try_emplace(properties);
    if (isNew) {
        at->second = resolvedRowOf(tables_.lists[properties], tables_);
    }
    return at->second;
}

} // namespace qvnd::word

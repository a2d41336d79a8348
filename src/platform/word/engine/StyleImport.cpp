#include "platform/word/engine/StyleImport.h"

#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/formatting/BuiltInStyles.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr StyleIndex normalStyle = 0;
constexpr StyleIndex firstFreePlace = 15;

// In documents that people write the lists grow by a third, or to the double.
std::size_t roomFor(const PropertyLists& lists) {
    constexpr std::size_t always = std::size_t{16} << 20;
    std::size_t size = 0;
    for (std::size_t i = 0; i < lists.size(); ++i) {
        size += lists[static_cast<PropertyListId>(i)].size();
    }
    return always + 8 * size;
}

} // namespace

StyleImport::StyleImport(DocumentTables& target, const DocumentTables& source,
                         PropertyRewriter& rewriter, ImportReferences& references,
                         const std::array<std::uint16_t, 4>& defaultFonts)
    : target_(target), source_(source), rewriter_(rewriter), references_(references),
      levels_(target), match_(target.styles),
      sourceLooks_(
          source.styles, defaultFonts,
          [this](PropertyListId id) { return target_.lists[rewriter_.rewritten(id)]; }, levels_),
      targetLooks_(
          target.styles, target.styles.defaultFonts,
          [this](PropertyListId id) { return target_.lists[id]; }, levels_),
      places_(source.styles.styles.size()), room_(roomFor(source.lists)) {}

const StyleDefinition* StyleImport::sourceStyle(StyleIndex istd) const {
    const auto& styles = source_.styles.styles;
    return istd < styles.size() && styles[istd] ? &*styles[istd] : nullptr;
}

std::optional<StyleIndex> StyleImport::style(StyleIndex istd) {
    const StyleDefinition* wanted = sourceStyle(istd);
    if (wanted == nullptr) {
        return std::nullopt;
    }
    if (!places_[istd]) {
        const std::optional<StyleIndex> there =
            wanted->kind == StyleKind::table ? sameTableStyle(*wanted) : match_.find(*wanted);
        if (there) {
            places_[istd] = there;
        } else if (!newPlace(*wanted)) {
            withoutPlace_.insert(istd);
            return std::nullopt;
        } else {
            bring(istd);
        }
    }
    return places_[istd];
}

StyleIndex StyleImport::paragraphStyle(StyleIndex istd) {
    const StyleDefinition* wanted = sourceStyle(istd);
    if (wanted == nullptr || wanted->kind != StyleKind::paragraph) {
        return istd == normalStyle ? normalStyle : paragraphStyle(normalStyle);
    }
    return style(istd).value_or(normalStyle);
}

std::optional<StyleIndex> StyleImport::cameAlong(StyleIndex istd) const {
    return brought_.contains(istd) ? places_[istd] : std::nullopt;
}

bool StyleImport::mayComeAlong(StyleIndex istd) const {
    const StyleDefinition* style = sourceStyle(istd);
    return brought_.contains(istd) || (style != nullptr && !match_.find(*style));
}

// --- bringing along -------------------------------------------------------------------------

std::optional<StyleIndex> StyleImport::newPlace(const StyleDefinition& style) const {
    const auto& styles = target_.styles.styles;
    const auto number = builtInNumberOf(style);
    if (const auto fixed = number ? fixedStyleIndex(*number) : std::nullopt) {
        if (*fixed >= styles.size() || !styles[*fixed]) {
            return fixed;
        }
    }
    const auto next = std::max<std::size_t>(firstFreePlace, styles.size());
    return next < mostStyles ? std::optional(static_cast<StyleIndex>(next)) : std::nullopt;
}

StyleIndex StyleImport::bring(StyleIndex istd) {
    const StyleDefinition& wanted = *sourceStyle(istd);
    const StyleIndex place = *newPlace(wanted);
    auto& styles = target_.styles.styles;
    if (place >= styles.size()) {
        styles.resize(place + std::size_t{1});
    }
    StyleDefinition style = translated(wanted);
    if (match_.find(style)) { // a table style under a name that has another definition
        style.sti = StyleDefinition::userDefined;
    }
    if (std::u16string name = match_.freeName(style.name); name != style.name) {
        renamed_.push_back({style.name, name});
        style.name = std::move(name);
    }
    style.aliases = match_.freeAliases(style.aliases);
    style.basedOn = StyleDefinition::none;
    styles[place] = style;
    places_[istd] = place;
    brought_.insert(istd);
    underWay_.insert(istd);
    match_.add(place, style);
    basedInTarget(style, wanted);
    styles[place] = std::move(style);
    underWay_.erase(istd);
    return place;
}

StyleDefinition StyleImport::translated(const StyleDefinition& style) {
    StyleDefinition result = style;
    result.sti = builtInNumberOf(style).value_or(StyleDefinition::userDefined);
    result.next = 0;
    result.link = 0;
    result.paragraph = rewriter_.rewritten(style.paragraph);
    result.character = rewriter_.rewritten(style.character);
    result.table = rewriter_.rewritten(style.table);
    if (result.original) {
        result.original->author = references_.author(style.original->author).value_or(0);
        result.original->paragraph = rewriter_.rewritten(style.original->paragraph);
        result.original->character = rewriter_.rewritten(style.original->character);
    }
    return result;
}

// Puts the style over its base in the target, and into its own definition what the base there
// says otherwise.
void StyleImport::basedInTarget(StyleDefinition& style, const StyleDefinition& source) {
    const StyleDefinition* base = sourceStyle(source.basedOn);
    const bool usable =
        base != nullptr && base->kind == source.kind && !underWay_.contains(source.basedOn);
    const std::optional<StyleIndex> there = usable ? this->style(source.basedOn) : std::nullopt;
    if (there && !isUnderWay(*there)) {
        style.basedOn = *there;
    }
    if (style.kind == StyleKind::character) {
        flattenCharacterStyle(style, source);
    }
    if (style.kind != StyleKind::paragraph) {
        return;
    }
    const StyleIndex here = usable ? source.basedOn : StyleDefinition::none;
    const StyleDifference paragraph(sourceLooks_.paragraph(here),
                                    targetLooks_.paragraph(style.basedOn));
    const StyleDifference character(sourceLooks_.character(here),
                                    targetLooks_.character(style.basedOn));
    style.paragraph = underStyle(paragraph, style.paragraph);
    style.character = underStyle(character, style.character);
}

// Two styles of a source may become one of the target: they have the same built-in number, or one
// got the name of the other. What is based on the second must not stand on the first while that is
// being based on it.
bool StyleImport::isUnderWay(StyleIndex place) const {
    return std::any_of(underWay_.begin(), underWay_.end(),
                       [&](StyleIndex istd) { return places_[istd] == place; });
}

// The same as under(), as far as a style has room for it.
PropertyListId StyleImport::underStyle(const StyleDifference& difference, PropertyListId own) {
    const PropertyListId list = under(difference, own);
    const bool fits = target_.lists[list].size() <= longestStyleList;
    withoutRoom_ += fits ? 0 : 1;
    return fits ? list : own;
}

// What a character style leaves unsaid is the paragraph's, so there is no default to fall back
// to: a base that is defined otherwise in the target is written into the style itself.
void StyleImport::flattenCharacterStyle(StyleDefinition& style, const StyleDefinition& source) {
    Bytes whole(target_.lists[style.character].begin(), target_.lists[style.character].end());
    bool same = true;
    bool fits = true;
    std::set<StyleIndex> seen;
    for (StyleIndex at = source.basedOn; seen.insert(at).second;) {
        const StyleDefinition* base = sourceStyle(at);
        if (base == nullptr || base->kind != StyleKind::character) {
            break;
        }
        const PropertyListId list = rewriter_.rewritten(base->character);
        const auto there = this->style(at);
        same = same && there && !isUnderWay(*there) &&
               target_.styles.styles[*there]->character == list;
        const ByteView below = target_.lists[list];
        fits = fits && below.size() + whole.size() <= longestStyleList;
        if (fits) {
            whole.insert(whole.begin(), below.begin(), below.end());
        }
        at = base->basedOn;
    }
    if (!same) {
        withoutRoom_ += fits ? 0 : 1;
        style.character = target_.lists.intern(whole);
        style.basedOn = StyleDefinition::none;
    }
}

// A table style counts as there only if it is the same in every respect, since little of it could
// be said directly.
std::optional<StyleIndex> StyleImport::sameTableStyle(const StyleDefinition& wanted) {
    const StyleDefinition here = translated(wanted);
    const StyleDefinition* baseHere = sourceStyle(wanted.basedOn);
    const bool based = baseHere != nullptr && baseHere->kind == StyleKind::table &&
                       baseHere != &wanted && underWay_.insert(wanted.basedOn).second;
    const StyleIndex base =
        based ? style(wanted.basedOn).value_or(StyleDefinition::none) : StyleDefinition::none;
    if (based) {
        underWay_.erase(wanted.basedOn);
    }
    const auto& styles = target_.styles.styles;
    for (std::size_t i = 0; i < styles.size(); ++i) {
        const bool same =
            styles[i] && styles[i]->kind == StyleKind::table && styles[i]->basedOn == base &&
            styles[i]->table == here.table && styles[i]->paragraph == here.paragraph &&
            styles[i]->character == here.character && styles[i]->name.starts_with(wanted.name);
        if (same) {
            return static_cast<StyleIndex>(i);
        }
    }
    return std::nullopt;
}

void StyleImport::finish() {
    // Bringing a style that follows may bring more.
    std::set<StyleIndex> done;
    while (done.size() < brought_.size()) {
        const std::set<StyleIndex> round = brought_;
        for (const StyleIndex istd : round) {
            if (!done.insert(istd).second) {
                continue;
            }
            const StyleDefinition& source = *sourceStyle(istd);
            const StyleIndex next = style(source.next).value_or(*places_[istd]);
            target_.styles.styles[*places_[istd]]->next = next;
        }
    }
    for (const StyleIndex istd : brought_) {
        const StyleDefinition& source = *sourceStyle(istd);
        const StyleDefinition* tied = sourceStyle(source.link);
        if (source.link != 0 && tied != nullptr && tied->link == istd) {
            target_.styles.styles[*places_[istd]]->link = cameAlong(source.link).value_or(0);
        }
    }
}

// --- direct formatting ----------------------------------------------------------------------

PropertyListId StyleImport::under(const StyleDifference& difference, PropertyListId direct) {
    if (difference.empty()) {
        return direct;
    }
    const Bytes list = difference.under(target_.lists[direct], levels_);
    if (!room_.take(list.size())) {
        ++withoutRoom_;
        return direct;
    }
    return target_.lists.intern(list);
}

PropertyListId StyleImport::paragraph(StyleIndex sourceStyle, PropertyListId direct) {
    const auto [known, isNew] = paragraphLists_.try_emplace({sourceStyle, direct}, direct);
    if (isNew) {
        auto found = paragraphs_.find(sourceStyle);
        if (found == paragraphs_.end()) {
            const StyleIndex there = paragraphStyle(sourceStyle);
            found = paragraphs_
                        .emplace(sourceStyle, StyleDifference(sourceLooks_.paragraph(sourceStyle),
                                                              targetLooks_.paragraph(there)))
                        .first;
        }
        known->second = under(found->second, direct);
    }
    return known->second;
}

PropertyListId StyleImport::character(StyleIndex sourceStyle, StyleIndex sourceCharacterStyle,
                                      PropertyListId direct) {
    const StylePair styles(sourceStyle, sourceCharacterStyle);
    const auto [known, isNew] = characterLists_.try_emplace({styles, direct}, direct);
    if (isNew) {
        auto found = characters_.find(styles);
        if (found == characters_.end()) {
            const StyleIndex there = paragraphStyle(sourceStyle);
            const StyleIndex above = style(sourceCharacterStyle).value_or(StyleDefinition::none);
            found = characters_
                        .emplace(styles, StyleDifference(sourceLooks_.character(
                                                             sourceStyle, sourceCharacterStyle),
                                                         targetLooks_.character(there, above)))
                        .first;
        }
        known->second = under(found->second, direct);
    }
    return known->second;
}

} // namespace qvnd::word

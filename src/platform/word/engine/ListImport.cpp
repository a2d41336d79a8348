#include "platform/word/engine/ListImport.h"

#include "platform/word/engine/ListMembership.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t numberFormatAt = 4; // nfc of LVLF
constexpr std::uint8_t bullet = 23;
constexpr std::uint8_t noNumber = 255;

bool showsBullets(const ListDefinition& list) {
    return std::all_of(list.levels.begin(), list.levels.end(), [](const ListLevel& level) {
        return level.head[numberFormatAt] == bullet || level.head[numberFormatAt] == noNumber;
    });
}

bool linksStyle(const ListDefinition& list) {
    return std::any_of(list.linkedStyles.begin(), list.linkedStyles.end(),
                       [](StyleIndex style) { return style != StyleDefinition::none; });
}

bool same(const ListLevel& one, const ListLevel& other) {
    return one.head == other.head && one.paragraph == other.paragraph &&
           one.character == other.character && one.text == other.text;
}

bool sameBullets(const ListDefinition& one, const ListDefinition& other) {
    return one.name == other.name && one.flags == other.flags && !linksStyle(one) &&
           std::equal(one.levels.begin(), one.levels.end(), other.levels.begin(),
                      other.levels.end(), same);
}

} // namespace

ListImport::ListImport(DocumentTables& target, const DocumentTables& source,
                       PropertyRewriter& rewriter)
    : target_(target), source_(source), rewriter_(rewriter), known_(source.listOverrides.size()) {}

std::uint16_t ListImport::list(std::uint16_t ilfo) {
    const std::uint16_t index = listIndexOf(ilfo);
    if (index == 0) {
        return ilfo;
    }
    if (index > source_.listOverrides.size()) {
        return noList;
    }
    std::optional<std::uint16_t>& known = known_[index - 1];
    if (!known) {
        known = noList; // while its levels come, which may name it
        known = bring(source_.listOverrides[index - 1]);
    }
    return ilfo >= firstHiddenList && *known != noList
               ? static_cast<std::uint16_t>(0x10000 - *known)
               : *known;
}

const ListDefinition* ListImport::sourceDefinition(std::int32_t lsid) const {
    const auto found = std::find_if(source_.listDefinitions.begin(), source_.listDefinitions.end(),
                                    [&](const ListDefinition& list) { return list.lsid == lsid; });
    return found != source_.listDefinitions.end() ? &*found : nullptr;
}

std::uint16_t ListImport::bring(const ListOverride& list) {
    const ListDefinition* definition = sourceDefinition(list.lsid);
    if (definition == nullptr) {
        return noList;
    }
    if (list.levels.empty()) {
        // Overrides that change nothing are one and the same list.
        if (const auto known = plain_.find(list.lsid); known != plain_.end()) {
            return known->second;
        }
    }
    ListOverride override = list;
    for (ListLevelOverride& level : override.levels) {
        if (level.level) {
            level.level = rewritten(*level.level);
        }
    }
    if (list.levels.empty() && showsBullets(*definition) && !linksStyle(*definition)) {
        if (const auto shared = sharedBullets(*definition)) {
            return *shared;
        }
    }
    if (target_.listOverrides.size() >= lastListIndex) {
        ++withoutRoom_;
        return noList;
    }
    override.lsid = bringDefinition(*definition);
    target_.listOverrides.push_back(std::move(override));
    const auto index = static_cast<std::uint16_t>(target_.listOverrides.size());
    if (list.levels.empty()) {
        plain_[list.lsid] = index;
    }
    return index;
}

ListLevel ListImport::rewritten(const ListLevel& level) {
    ListLevel result = level;
    result.paragraph = rewriter_.rewritten(level.paragraph);
    result.character = rewriter_.rewritten(level.character);
    return result;
}

std::optional<std::uint16_t> ListImport::sharedBullets(const ListDefinition& definition) const {
    ListDefinition wanted = definition;
    for (ListLevel& level : wanted.levels) {
        level.paragraph = rewriter_.rewritten(level.paragraph);
        level.character = rewriter_.rewritten(level.character);
    }
    for (std::size_t i = 0; i < target_.listOverrides.size(); ++i) {
        const ListOverride& list = target_.listOverrides[i];
        if (!list.levels.empty()) {
            continue;
        }
        const auto found =
            std::find_if(target_.listDefinitions.begin(), target_.listDefinitions.end(),
                         [&](const ListDefinition& there) { return there.lsid == list.lsid; });
        if (found != target_.listDefinitions.end() && sameBullets(*found, wanted)) {
            return static_cast<std::uint16_t>(i + 1);
        }
    }
    return std::nullopt;
}

std::int32_t ListImport::bringDefinition(const ListDefinition& definition) {
    if (const auto known = definitions_.find(definition.lsid); known != definitions_.end()) {
        return known->second;
    }
    ListDefinition list = definition;
    list.lsid = freshNumber(definition.lsid);
    definitions_[definition.lsid] = list.lsid;
    list.linkedStyles.fill(StyleDefinition::none);
    for (ListLevel& level : list.levels) {
        level = rewritten(level);
    }
    brought_.push_back({target_.listDefinitions.size(), &definition});
    target_.listDefinitions.push_back(std::move(list));
    return target_.listDefinitions.back().lsid;
}

// Lists are few, at most those that overrides have room for.
bool ListImport::isFree(std::int32_t lsid) const {
    // 0 and -1 mean "no list". A list may still be on its way, while its levels bring others.
    return lsid != 0 && lsid != -1 &&
           std::none_of(target_.listDefinitions.begin(), target_.listDefinitions.end(),
                        [&](const ListDefinition& list) { return list.lsid == lsid; }) &&
           std::none_of(definitions_.begin(), definitions_.end(),
                        [&](const auto& brought) { return brought.second == lsid; });
}

std::int32_t ListImport::freshNumber(std::int32_t lsid) const {
    if (isFree(lsid)) {
        return lsid;
    }
    // The step visits every number before it meets one again. Documents that were made from each
    // other have lists of the same number, so the search begins behind those that it found before.
    constexpr std::uint32_t step = 0x9E3779B1;
    const auto there = static_cast<std::uint32_t>(target_.listDefinitions.size());
    std::uint32_t number = static_cast<std::uint32_t>(lsid) + there * step;
    while (!isFree(static_cast<std::int32_t>(number))) {
        number += step;
    }
    return static_cast<std::int32_t>(number);
}

void ListImport::linkStyles(const std::function<std::optional<StyleIndex>(StyleIndex)>& cameAlong) {
    for (const Brought& list : brought_) {
        for (std::size_t level = 0; level < list.source->linkedStyles.size(); ++level) {
            target_.listDefinitions[list.definition].linkedStyles[level] =
                cameAlong(list.source->linkedStyles[level]).value_or(StyleDefinition::none);
        }
    }
}

} // namespace qvnd::word

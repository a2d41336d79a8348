#include "platform/word/engine/ListImport.h"

#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/formatting/ListMembership.h"
#include "platform/word/formatting/NameFolding.h"

#include <algorithm>
#include <utility>

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

bool isPlainBullets(const ListDefinition& list) { return showsBullets(list) && !linksStyle(list); }

// All that shows of a list without numbers: two lists with equal keys may be one.
Bytes bulletKey(const ListDefinition& list) {
    LittleEndianWriter key;
    key.u32(static_cast<std::uint32_t>(list.name.size()));
    key.text(list.name);
    key.u8(list.flags);
    for (const ListLevel& level : list.levels) {
        key.bytes(level.head);
        key.u32(static_cast<std::uint32_t>(level.paragraph));
        key.u32(static_cast<std::uint32_t>(level.character));
        key.u32(static_cast<std::uint32_t>(level.text.size()));
        key.text(level.text);
    }
    return key.take();
}

using DefinitionsByNumber = std::unordered_map<std::int32_t, const ListDefinition*>;

DefinitionsByNumber byNumber(const std::vector<ListDefinition>& definitions) {
    DefinitionsByNumber result;
    for (const ListDefinition& definition : definitions) {
        result.try_emplace(definition.lsid, &definition);
    }
    return result;
}

} // namespace

ListImport::ListImport(DocumentTables& target, const DocumentTables& source,
                       PropertyRewriter& rewriter, MayComeAlong mayComeAlong)
    : target_(target), source_(source), rewriter_(rewriter), mayComeAlong_(std::move(mayComeAlong)),
      known_(source.listOverrides.size()), sourceDefinitions_(byNumber(source.listDefinitions)) {
    for (const ListDefinition& list : source.listDefinitions) {
        if (!list.name.empty()) {
            named_.try_emplace(foldedName(list.name), &list);
        }
    }
}

std::uint16_t ListImport::list(std::uint16_t ilfo) {
    const std::uint16_t index = listIndexOf(ilfo);
    if (index == 0) {
        return ilfo == listOfWord95 ? listOfWord95 : noList;
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

bool ListImport::cameAlong(std::uint16_t ilfo) const {
    const auto& overrides = source_.listOverrides;
    const std::uint16_t index = listIndexOf(ilfo);
    if (index == 0 || index > overrides.size()) {
        return false;
    }
    for (std::size_t i = 0; i < overrides.size(); ++i) {
        if (overrides[i].lsid == overrides[index - 1U].lsid &&
            known_[i].value_or(noList) != noList) {
            return true;
        }
    }
    return false;
}

const ListDefinition* ListImport::sourceDefinition(std::int32_t lsid) const {
    const auto found = sourceDefinitions_.find(lsid);
    return found != sourceDefinitions_.end() ? found->second : nullptr;
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
    const bool bullets = list.levels.empty() && comesAsPlainBullets(*definition);
    if (bullets) {
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
    if (bullets) {
        bullets_->try_emplace(bulletKey(inTarget(*definition)), index);
    }
    return index;
}

ListLevel ListImport::rewritten(const ListLevel& level) {
    ListLevel result = level;
    result.paragraph = rewriter_.rewritten(level.paragraph);
    result.character = rewriter_.rewritten(level.character);
    return result;
}

// The definition with its levels in terms of the target.
ListDefinition ListImport::inTarget(const ListDefinition& definition) {
    ListDefinition result = definition;
    for (ListLevel& level : result.levels) {
        level = rewritten(level);
    }
    return result;
}

// A list is tied to those of its styles that come along.
bool ListImport::comesAsPlainBullets(const ListDefinition& definition) const {
    return showsBullets(definition) &&
           std::none_of(definition.linkedStyles.begin(), definition.linkedStyles.end(),
                        [this](StyleIndex style) {
                            return style != StyleDefinition::none && mayComeAlong_(style);
                        });
}

std::optional<std::uint16_t> ListImport::sharedBullets(const ListDefinition& definition) {
    if (!bullets_) {
        indexBullets();
    }
    const auto found = bullets_->find(bulletKey(inTarget(definition)));
    return found != bullets_->end() ? std::optional(found->second) : std::nullopt;
}

void ListImport::indexBullets() {
    bullets_.emplace();
    const DefinitionsByNumber definitions = byNumber(target_.listDefinitions);
    for (std::size_t i = 0; i < target_.listOverrides.size(); ++i) {
        const ListOverride& list = target_.listOverrides[i];
        const auto found = definitions.find(list.lsid);
        if (list.levels.empty() && found != definitions.end() && isPlainBullets(*found->second)) {
            bullets_->try_emplace(bulletKey(*found->second), static_cast<std::uint16_t>(i + 1));
        }
    }
}

std::int32_t ListImport::bringDefinition(const ListDefinition& definition) {
    if (const auto known = definitions_.find(definition.lsid); known != definitions_.end()) {
        return known->second;
    }
    const std::int32_t lsid = freshNumber(definition.lsid);
    definitions_[definition.lsid] = lsid; // before its levels come, which may name it
    ListDefinition list = inTarget(definition);
    list.lsid = lsid;
    list.name = uniqueName(definition);
    list.linkedStyles.fill(StyleDefinition::none);
    brought_.push_back({target_.listDefinitions.size(), &definition});
    target_.listDefinitions.push_back(std::move(list));
    return target_.listDefinitions.back().lsid;
}

std::u16string ListImport::uniqueName(const ListDefinition& definition) {
    if (definition.name.empty()) {
        return {};
    }
    if (!names_) {
        names_.emplace(longestListName);
        for (const ListDefinition& list : target_.listDefinitions) {
            names_->add(list.name);
        }
    }
    std::u16string name = names_->addUnique(definition.name);
    if (name != definition.name) {
        newNames_[definition.lsid] = name;
        renamed_.push_back({definition.name, name});
    }
    return name;
}

std::optional<std::u16string> ListImport::newName(std::u16string_view name) {
    const auto found = named_.find(foldedName(name));
    if (found == named_.end()) {
        return std::nullopt;
    }
    const std::int32_t lsid = found->second->lsid;
    if (inFields_.insert(lsid).second) {
        bring({lsid, 0, 0, {}});
    }
    const auto renamed = newNames_.find(lsid);
    return renamed != newNames_.end() ? std::optional(renamed->second) : std::nullopt;
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

#include "platform/word/engine/BookmarkNames.h"

#include "platform/word/formatting/NameFolding.h"

namespace qvnd::word {

std::u16string UniqueNames::numbered(std::u16string_view name, std::uint32_t number) const {
    std::u16string suffix = u"_";
    for (const char digit : std::to_string(number)) {
        suffix.push_back(static_cast<char16_t>(digit));
    }
    return std::u16string(name.substr(0, maximumLength_ - suffix.size())) + suffix;
}

bool UniqueNames::contains(std::u16string_view name) const {
    return used_.contains(foldedName(name));
}

void UniqueNames::add(std::u16string_view name) { used_.insert(foldedName(name)); }

std::u16string UniqueNames::addUnique(std::u16string_view name) {
    if (used_.insert(foldedName(name)).second) {
        return std::u16string(name);
    }
    std::uint32_t& number = lastNumber_.try_emplace(foldedName(name), 1).first->second;
    for (;;) {
        std::u16string candidate = numbered(name, ++number);
        if (used_.insert(foldedName(candidate)).second) {
            return candidate;
        }
    }
}

} // namespace qvnd::word

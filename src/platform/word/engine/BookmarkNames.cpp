#include "platform/word/engine/BookmarkNames.h"

#include "platform/word/formatting/NameFolding.h"

namespace qvnd::word {

namespace {

std::u16string numbered(std::u16string_view name, std::uint32_t number) {
    std::u16string suffix = u"_";
    for (const char digit : std::to_string(number)) {
        suffix.push_back(static_cast<char16_t>(digit));
    }
    const std::size_t room = BookmarkNames::maximumLength - suffix.size();
    return std::u16string(name.substr(0, room)) + suffix;
}

} // namespace

bool BookmarkNames::contains(std::u16string_view name) const {
    return used_.contains(foldedName(name));
}

void BookmarkNames::add(std::u16string_view name) { used_.insert(foldedName(name)); }

std::u16string BookmarkNames::addUnique(std::u16string_view name) {
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

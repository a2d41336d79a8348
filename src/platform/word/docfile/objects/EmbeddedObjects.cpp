#include "platform/word/docfile/objects/EmbeddedObjects.h"

#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/CopyBudget.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>

namespace qvnd::word {

namespace {

constexpr std::u16string_view pool = u"ObjectPool/";

// The number in "_1234"; nothing for any other name.
std::optional<std::uint32_t> numberOf(std::u16string_view name) {
    constexpr std::size_t mostDigits = 10;
    if (name.size() < 2 || name.size() > mostDigits + 1 || name[0] != u'_') {
        return std::nullopt;
    }
    std::uint64_t number = 0;
    for (const char16_t digit : name.substr(1)) {
        if (digit < u'0' || digit > u'9') {
            return std::nullopt;
        }
        number = number * 10 + (digit - u'0');
    }
    return number <= 0xFFFFFFFF ? std::optional(static_cast<std::uint32_t>(number)) : std::nullopt;
}

struct Place {
    std::uint32_t object = 0;
    std::u16string_view path; // within the object; empty for its storage
};

std::optional<Place> placeOf(std::u16string_view path) {
    if (!path.starts_with(pool)) {
        return std::nullopt;
    }
    const std::u16string_view rest = path.substr(pool.size());
    const std::size_t slash = rest.find(u'/');
    const std::optional<std::uint32_t> number = numberOf(rest.substr(0, slash));
    const auto within =
        slash == std::u16string_view::npos ? std::u16string_view{} : rest.substr(slash + 1);
    return number ? std::optional(Place{*number, within}) : std::nullopt;
}

// Whether a storage can hold the entries: each has a name that may stand in a file, in a storage
// that comes before it, and no two of a storage have the same.
bool isSound(const EmbeddedObject& object) {
    std::set<std::u16string_view, EntryNameOrder> met;
    std::set<std::u16string_view> storages{{}};
    return std::all_of(
        object.entries.begin(), object.entries.end(), [&](const EmbeddedObject::Entry& entry) {
            const std::u16string_view path = entry.path;
            const std::size_t slash = path.rfind(u'/');
            const bool isInside = slash != std::u16string_view::npos;
            const std::u16string_view name = isInside ? path.substr(slash + 1) : path;
            const std::u16string_view above = isInside ? path.substr(0, slash) : u"";
            if (entry.storage) {
                storages.insert(path);
            }
            return isEntryName(name) && storages.contains(above) && met.insert(path).second;
        });
}

} // namespace

EmbeddedObjects readEmbeddedObjects(const CompoundFile& file, int& damaged) {
    std::map<std::uint32_t, std::shared_ptr<EmbeddedObject>> objects;
    std::set<std::uint32_t> begun;
    std::set<std::uint32_t> broken;
    CopyBudget budget(file.size());
    for (const CompoundFile::Entry& entry : file.entries()) {
        const std::optional<Place> place = placeOf(entry.path);
        if (!place) {
            continue;
        }
        auto& object = objects[place->object];
        if (!object) {
            object = std::make_shared<EmbeddedObject>();
        }
        if (place->path.empty()) {
            if (!entry.storage || !begun.insert(place->object).second) {
                broken.insert(place->object);
            }
            object->classId = entry.classId;
            continue;
        }
        if (!budget.take(
                static_cast<std::size_t>(std::min<std::uint64_t>(entry.size, file.size())))) {
            broken.insert(place->object);
            continue;
        }
        try {
            Bytes content = entry.storage ? Bytes{} : file.stream(entry);
            object->entries.push_back(
                {std::u16string(place->path), entry.storage, entry.classId, std::move(content)});
        } catch (const FormatError&) {
            broken.insert(place->object);
        }
    }
    for (const auto& [number, object] : objects) {
        if (!begun.contains(number) || !isSound(*object)) {
            broken.insert(number);
        }
    }
    damaged = static_cast<int>(broken.size());
    EmbeddedObjects result;
    for (auto& [number, object] : objects) {
        if (!broken.contains(number)) {
            result.emplace(number, std::move(object));
        }
    }
    return result;
}

} // namespace qvnd::word

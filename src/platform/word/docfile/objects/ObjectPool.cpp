#include "platform/word/docfile/objects/ObjectPool.h"

#include "platform/error/Utf8.h"

#include <map>
#include <string>
#include <string_view>

namespace qvnd::word {

namespace {

// Ten digits, as Word's own numbers have.
constexpr std::uint32_t firstNumber = 1000000001;

} // namespace

std::uint32_t ObjectPool::numberOf(const EmbeddedObjectRef& object) {
    if (const auto known = numbers_.find(object.get()); known != numbers_.end()) {
        return known->second.second;
    }
    const std::uint32_t number = firstNumber + static_cast<std::uint32_t>(numbers_.size());
    add(*object, number);
    numbers_.emplace(object.get(), std::pair(object, number));
    return number;
}

void ObjectPool::add(const EmbeddedObject& object, std::uint32_t number) {
    if (!pool_) {
        pool_ = store_.addStorage(CompoundDirectory::root, u"ObjectPool", {});
    }
    std::map<std::u16string, CompoundStore::Stream, std::less<>> storages;
    const CompoundStore::Stream root =
        store_.addStorage(*pool_, u"_" + fromUtf8(std::to_string(number)), object.classId);
    for (const EmbeddedObject::Entry& entry : object.entries) {
        const std::u16string_view path = entry.path;
        const std::size_t slash = path.rfind(u'/');
        const auto above = slash == std::u16string_view::npos
                               ? storages.end()
                               : storages.find(path.substr(0, slash));
        const CompoundStore::Stream storage = above != storages.end() ? above->second : root;
        const std::u16string_view name =
            slash == std::u16string_view::npos ? path : path.substr(slash + 1);
        if (entry.storage) {
            storages.emplace(entry.path, store_.addStorage(storage, name, entry.classId));
        } else {
            store_.append(store_.addStream(storage, name), entry.content);
        }
    }
}

} // namespace qvnd::word

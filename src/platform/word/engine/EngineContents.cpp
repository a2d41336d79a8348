#include "platform/word/engine/EngineContents.h"

#include "platform/word/engine/ContentsInsertion.h"
#include "platform/word/engine/EngineDocument.h"
#include "platform/word/engine/EngineErrors.h"
#include "platform/word/engine/LeftOut.h"

#include <algorithm>

namespace qvnd::word {

FieldSpan EngineTableOfContents::span() {
    const auto fields = contentsFields(document_.read().main());
    if (number_ < 1 || static_cast<std::size_t>(number_) > fields.size()) {
        throw memberNotFound();
    }
    return fields[static_cast<std::size_t>(number_ - 1)];
}

void EngineTableOfContents::setTabLeader(TabLeader leader) {
    span();
    setContentsLeader(document_.change().tables(), leader);
}

void EngineTableOfContents::Delete() {
    const FieldSpan contents = span();
    removeContents(document_.change(), contents);
    document_.selectInMain(contents.start, contents.start);
}

TableOfContents& EngineTablesOfContents::numbered(int number) {
    auto& item = items_[number];
    if (!item) {
        item = std::make_unique<EngineTableOfContents>(document_, number);
    }
    return *item;
}

TableOfContents& EngineTablesOfContents::Item(int index) {
    EngineTableOfContents(document_, index).span();
    return numbered(index);
}

TableOfContents& EngineTablesOfContents::Add(Range& range, const TableOfContentsOptions& options) {
    const auto at = static_cast<Cp>(std::max(range.Start(), 0));
    const auto end = static_cast<Cp>(std::max(range.End(), 0));
    document_.selectInMain(at, end);
    document_.addLosses(
        leftOutOf(insertContents(document_.change(), document_.mainInsertion(), options)));
    const auto fields = contentsFields(document_.read().main());
    const auto before = std::count_if(fields.begin(), fields.end(),
                                      [&](const FieldSpan& field) { return field.start < at; });
    return numbered(static_cast<int>(before) + 1);
}

} // namespace qvnd::word

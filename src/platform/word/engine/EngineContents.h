#pragma once

#include "platform/word/engine/ContentsField.h"
#include "platform/word/model/TablesOfContents.h"

#include <map>
#include <memory>

namespace qvnd::word {

class EngineDocument;

// The contents of that number, counted from 1 in the order of the text.
class EngineTableOfContents : public TableOfContents {
public:
    EngineTableOfContents(EngineDocument& document, int number)
        : document_(document), number_(number) {}

    // Both throw 5941 when the document has not that many contents.
    void setTabLeader(TabLeader leader) override;
    void Delete() override;

    FieldSpan span();

private:
    EngineDocument& document_;
    int number_;
};

class EngineTablesOfContents : public TablesOfContents {
public:
    explicit EngineTablesOfContents(EngineDocument& document) : document_(document) {}

    // In paragraphs of its own: text in front of the place stays above, what follows begins a new
    // paragraph, in front of which the selection stands afterwards. The page numbers are set when
    // the document is saved; what the contents had no room for is told then.
    TableOfContents& Add(Range& range, const TableOfContentsOptions& options) override;
    TableOfContents& Item(int index) override;

private:
    TableOfContents& numbered(int number);

    EngineDocument& document_;
    std::map<int, std::unique_ptr<EngineTableOfContents>> items_;
};

} // namespace qvnd::word

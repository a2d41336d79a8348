#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/engine/FittingLists.h"
#include "platform/word/engine/ImportTables.h"
#include "platform/word/engine/RunFacts.h"

#include <unordered_map>

namespace qvnd::word {

// Rewrites stories in terms of the target's tables: the same text with styles and property lists of
// the target.
class TextImport {
public:
    TextImport(ImportTables& tables, DocumentTables& target, const DocumentTables& source)
        : tables_(tables), target_(target), source_(source), facts_(source, source.lists),
          fitting_(target.lists) {}

    Story imported(const Story& story);

    // Cuts the lists that no file has room for.
    FittingLists& fitting() { return fitting_; }

    const RunFacts& facts(PropertyListId list) { return facts_.of(list); }

private:
    ParagraphRun imported(const ParagraphRun& paragraph);
    PropertyListId importedRun(StyleIndex paragraphStyle, PropertyListId list);
    PropertyListId withTableStyle(PropertyListId list, PropertyListId rewritten);
    Story importedText(const Story& story);
    StyleIndex effectiveStyle(StyleIndex style) const;

    ImportTables& tables_;
    DocumentTables& target_;
    const DocumentTables& source_;
    RunFactsTable facts_;
    FittingLists fitting_;
    std::unordered_map<PropertyListId, PropertyListId> directs_; // of paragraphs, by source list
};

} // namespace qvnd::word

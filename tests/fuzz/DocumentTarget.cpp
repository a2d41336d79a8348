#include "fuzz/DocumentTarget.h"

#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/MemoryFolder.h"

#include <optional>

namespace qvnd::test {

using namespace word;

namespace {

// Of the file that is written of it.
std::set<std::string> brokenRules(const DocumentContent& content) {
    const auto folder = std::make_shared<MemoryFolder>();
    DocumentWriter(folder).saveAs("/folder/a.doc", content);
    std::set<std::string> rules;
    for (const Finding& finding : checkDocument(folder->bytes("/folder/a.doc"))) {
        rules.insert(finding.rule);
    }
    return rules;
}

} // namespace

InsertionOutcome insertAndCheck(ByteView file) {
    std::optional<DocumentContent> source;
    try {
        source = readDocument(file);
    } catch (const FormatError&) {
        return {};
    }
    WorkingDocument document(normalTemplate());
    std::vector<std::u16string> leftOut;
    DocumentBody text =
        importDocument(document.tables(), document.bookmarkNames(), *source, leftOut);
    insertDocument(document, document.main().size() - 1, std::move(text));
    InsertionOutcome outcome;
    outcome.accepted = true;
    outcome.broken = brokenRules(document.content());
    for (const std::string& rule : brokenRules(openedDocument(std::move(*source)))) {
        outcome.broken.insert("opened:" + rule);
    }
    return outcome;
}

} // namespace qvnd::test

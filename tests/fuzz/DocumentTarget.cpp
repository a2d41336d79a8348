#include "fuzz/DocumentTarget.h"

#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/FontChange.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/MemoryFolder.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace qvnd::test {

using namespace word;

namespace {

const std::filesystem::path place = "/folder/a.doc";

// Of the file that stands there.
std::set<std::string> brokenRules(const MemoryFolder& folder) {
    std::set<std::string> rules;
    for (const Finding& finding : checkDocument(folder.bytes(place))) {
        rules.insert(finding.rule);
    }
    return rules;
}

// Inserted twice, as generation does it: the document is saved behind each, and the text behind
// its insertion gets a font.
std::set<std::string> brokenByInsertion(const DocumentContent& source) {
    const auto folder = std::make_shared<MemoryFolder>();
    DocumentWriter writer(folder);
    WorkingDocument document(normalTemplate());
    writer.saveAs(place, document.content());
    for (int i = 0; i < 2; ++i) {
        ImportNotes notes;
        DocumentBody text =
            importDocument(document.tables(), document.bookmarkNames(), source, notes);
        const Cp begin = document.main().size() - 1;
        const Cp end = insertDocument(document, begin, std::move(text));
        document.main().changeCharacters(
            begin, end, propertyChange(document.tables(), {u"宋体", 12.0F, std::nullopt}));
        writer.save(document.content());
    }
    return brokenRules(*folder);
}

std::set<std::string> brokenByOpening(DocumentContent source) {
    const auto folder = std::make_shared<MemoryFolder>();
    DocumentWriter(folder).saveAs(place, openedDocument(std::move(source)));
    return brokenRules(*folder);
}

} // namespace

InsertionOutcome insertAndCheck(ByteView file) {
    std::optional<DocumentContent> source;
    try {
        source = readDocument(file);
    } catch (const FormatError&) {
        return {};
    }
    InsertionOutcome outcome;
    outcome.accepted = true;
    outcome.broken = brokenByInsertion(*source);
    for (const std::string& rule : brokenByOpening(std::move(*source))) {
        outcome.broken.insert("opened:" + rule);
    }
    return outcome;
}

} // namespace qvnd::test

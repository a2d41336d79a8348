#include "fuzz/DocumentTarget.h"

#include "platform/word/check/SoundDocument.h"
#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/DocumentOpening.h"
#include "platform/word/engine/FontChange.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/layout/DocumentLayout.h"
#include "platform/word/layout/LayoutSource.h"
#include "support/ContentBuilder.h"
#include "support/FixedFonts.h"
#include "support/MemoryFolder.h"

#include <filesystem>
#include <memory>
#include <numeric>
#include <optional>
#include <set>
#include <utility>

namespace qvnd::test {

using namespace word;

namespace {

const std::filesystem::path place = "/folder/a.doc";

// The pages that a preview shows first.
void layOut(const DocumentContent& source) {
    constexpr int pages = 20;
    const layout::LayoutSource shown = layout::sourceOf(source);
    FixedFonts fonts;
    layout::DocumentLayout layout(shown, fonts, {});
    for (int page = 0; page < pages && layout.nextPage(); ++page) {
    }
}

// Which call of the next save fails differs from input to input.
FileTrouble troubleBy(const FileTrouble& before, std::size_t chance) {
    FileTrouble trouble = before;
    const std::size_t later = chance / 4 % 8;
    trouble.failingReplace = chance % 4 == 0;
    if (chance % 4 == 1) {
        trouble.failingSync = before.syncs + later % 2;
    } else {
        trouble.failingWrite = before.writes + later;
        trouble.failingTruncate = chance % 4 == 2;
    }
    return trouble;
}

// A save that fails leaves the state before it or the new one, and the next one is whole.
std::set<std::string> brokenByTrouble(DocumentWriter& writer, WorkingDocument& document,
                                      MemoryFolder& folder, std::size_t chance) {
    folder.trouble = troubleBy(folder.trouble, chance);
    try {
        if (chance % 4 < 2) {
            writer.saveAs(place, document.content());
        } else {
            writer.save(document.content());
        }
    } catch (const RunTimeError&) {
        // As on a disk that fails.
    }
    folder.trouble = {};
    std::set<std::string> rules = brokenRules(folder.bytes(place));
    writer.save(document.content());
    rules.merge(brokenRules(folder.bytes(place)));
    return rules;
}

// Inserted twice, as generation does it: the document is saved behind each, and the text behind
// its insertion gets a font.
std::set<std::string> brokenByInsertion(const DocumentContent& source, std::size_t chance) {
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
    std::set<std::string> rules = brokenRules(folder->bytes(place));
    constexpr std::size_t oneOf = 8; // inputs; it takes as long as all the rest
    if (chance % oneOf == 0) {
        document.main().changeCharacters(
            0, 1, propertyChange(document.tables(), {u"黑体", 15.0F, std::nullopt}));
        for (const std::string& rule : brokenByTrouble(writer, document, *folder, chance / oneOf)) {
            rules.insert("trouble:" + rule);
        }
    }
    return rules;
}

// Anything that differs from input to input and is the same with every run.
std::size_t chanceOf(ByteView file) {
    return std::accumulate(file.begin(), file.end(), file.size());
}

std::set<std::string> brokenByOpening(DocumentContent source) {
    const auto folder = std::make_shared<MemoryFolder>();
    DocumentWriter(folder).saveAs(place, openedDocument(std::move(source)));
    return brokenRules(folder->bytes(place));
}

// An embedded object, and lists that no page holds.
Bytes documentWithObject() {
    auto object = std::make_shared<EmbeddedObject>();
    object->entries = {{u"\u0001Ole", false, {}, Bytes(20)},
                       {u"Inner", true, {9}, {}},
                       {u"Inner/Contents", false, {}, Bytes(5000)}};
    const Bytes marks = withSprm8(withSprm8({}, sprm::CFSpec, 1), sprm::CFOle2, 1);
    Bytes longList;
    for (unsigned i = 0; i < 200; ++i) {
        const Bytes entry = withSprm16({}, sprm::PDxaLeft, i);
        longList.insert(longList.end(), entry.begin(), entry.end());
    }
    ContentBuilder builder;
    builder.content.tables.objects = {object};
    builder.add({plain(u"\u0013EMBED x"),
                 {u"\u0014", withSprm32(marks, sprm::CObjLocation, 0)},
                 plain(u"y\u0015\r")},
                1, longList);
    const auto folder = std::make_shared<MemoryFolder>();
    DocumentWriter(folder).saveAs("/a.doc", builder.content);
    return folder->bytes("/a.doc");
}

} // namespace

FuzzTarget::Outcome DocumentTarget::run(ByteView file) {
    std::optional<DocumentContent> source;
    try {
        source = readDocument(file);
    } catch (const FormatError&) {
        return {};
    }
    layOut(*source);
    std::set<std::string> broken = brokenByInsertion(*source, chanceOf(file));
    for (const std::string& rule : brokenByOpening(std::move(*source))) {
        broken.insert("opened:" + rule);
    }
    Outcome outcome{true, {}};
    for (const std::string& rule : broken) {
        outcome.fault += " " + rule;
    }
    return outcome;
}

std::vector<Bytes> DocumentTarget::ownFiles() const {
    return {SoundDocument().bytes(), documentWithObject()};
}

} // namespace qvnd::test

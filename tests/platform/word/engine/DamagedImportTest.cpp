#include "platform/word/check/SoundDocument.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentInsertion.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <random>

namespace qvnd::test {
namespace {

using namespace word;
using testing::IsEmpty;

// The file of a new document into which this one was inserted; nothing where it was refused.
std::optional<Bytes> inserted(const Bytes& file) {
    std::optional<DocumentContent> source;
    try {
        source = readDocument(file);
    } catch (const FormatError&) {
        return std::nullopt;
    }
    WorkingDocument document(normalTemplate());
    ImportNotes notes;
    DocumentBody text = importDocument(document.tables(), document.bookmarkNames(), *source, notes);
    insertDocument(document, document.main().size() - 1, std::move(text));
    const auto folder = std::make_shared<MemoryFolder>();
    DocumentWriter(folder).saveAs("/folder/a.doc", document.content());
    return folder->bytes("/folder/a.doc");
}

TEST(DamagedImport, ASoundDocumentBecomesASoundDocument) {
    const auto file = inserted(SoundDocument().bytes());
    ASSERT_TRUE(file);
    EXPECT_THAT(brokenRules(*file), IsEmpty());
}

// Whatever the reader accepts is made sound.
TEST(DamagedImport, DamageNeverSpoilsTheResult) {
    const WordStreams sound = SoundDocument().streams();
    std::mt19937 chance(11);
    int accepted = 0;
    for (int round = 0; round < 1200; ++round) {
        WordStreams damaged = sound;
        Bytes& victim = round % 3 == 0 ? damaged.wordDocument : damaged.table;
        const unsigned changes = 1 + chance() % 4;
        for (unsigned change = 0; change < changes; ++change) {
            victim[chance() % victim.size()] = static_cast<std::uint8_t>(chance());
        }
        if (const auto file = inserted(compoundFile(damaged))) {
            ++accepted;
            EXPECT_THAT(brokenRules(*file), IsEmpty()) << "round " << round;
        }
    }
    EXPECT_GT(accepted, 600);
}

} // namespace
} // namespace qvnd::test

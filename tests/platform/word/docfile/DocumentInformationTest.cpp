#include "platform/word/docfile/reader/DocumentReader.h"

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Sttb.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::plainWordFile;

TEST(DocumentInformation, OfFewerTextsThanThereAreThoseThatAreThereAreKept) {
    for (const std::size_t count : {0U, 1U, 3U, 7U, 8U, 19U}) {
        Sttb table;
        for (std::size_t i = 0; i < count; ++i) {
            table.entries.push_back({u"t" + digits(static_cast<std::int64_t>(i)), {}});
        }
        test::WordFile file = plainWordFile(u"text\r");
        file.parts[FibPair::SttbfAssoc] = encodeSttb(table);
        const auto texts = readDocument(test::wordFile(file)).information.associated;
        ASSERT_EQ(texts.size(), count == 0 ? 0U : 18U);
        for (const std::size_t place : {2U, 3U, 4U, 6U, 7U}) {
            if (place < texts.size()) {
                EXPECT_EQ(texts[place], place < count
                                            ? u"t" + digits(static_cast<std::int64_t>(place))
                                            : std::u16string());
            }
        }
    }
}

TEST(DocumentInformation, AStreamOfTheNameOfAStorageIsNone) {
    const test::WordStreams streams = test::wordStreams(plainWordFile(u"text\r"));
    test::MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store(folder.createBeside("/folder/target", &path), {});
    store.append(store.addStream(u"WordDocument"), streams.wordDocument);
    store.append(store.addStream(u"1Table"), streams.table);
    store.append(store.addStream(u"Macros"), Bytes(9));
    store.append(store.addStream(u"MsoDataStore"), Bytes(9));
    store.commit(CompoundStore::Durability::killedProcess);
    const DocumentContent document = readDocument(folder.bytes(path));
    EXPECT_EQ(joined(document.main)->text, u"text\r");
    EXPECT_TRUE(document.unread.kinds.empty());
}

} // namespace
} // namespace qvnd::word

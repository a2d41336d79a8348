#include "platform/word/docfile/CompoundChecks.h"
#include "platform/word/docfile/ObjectContents.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/Corpus.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

std::optional<DocumentContent> readable(const std::filesystem::path& path) {
    try {
        return readDocument(path);
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

// What a property list means, the blob or object itself in place of its index.
Bytes meaning(const DocumentTables& tables, PropertyListId id) {
    Bytes result;
    for (const SprmView& entry : parseSprms(tables.lists[id]).sprms) {
        if (entry.opcode == sprm::CPicLocation) {
            const auto index = LittleEndianReader(entry.operand, "index").u32();
            result.insert(result.end(), tables.blobs.at(index)->begin(),
                          tables.blobs.at(index)->end());
        } else if (entry.opcode == sprm::CObjLocation) {
            const auto index = LittleEndianReader(entry.operand, "index").u32();
            const Bytes object = test::contentsOf(*tables.objects.at(index));
            result.insert(result.end(), object.begin(), object.end());
        } else {
            result.insert(result.end(), entry.whole.begin(), entry.whole.end());
        }
    }
    return result;
}

using Formatting = std::vector<std::pair<Cp, Bytes>>; // where runs end, and what they mean

Formatting charactersOf(const DocumentTables& tables, const Story& story) {
    Formatting result;
    Cp at = 0;
    for (const CharacterRun& run : story.characters) {
        at += run.length;
        Bytes now = meaning(tables, run.properties);
        if (!result.empty() && result.back().second == now) {
            result.back().first = at;
        } else if (run.length != 0) {
            result.emplace_back(at, std::move(now));
        }
    }
    return result;
}

Formatting paragraphsOf(const DocumentTables& tables, const Story& story) {
    Formatting result;
    Cp at = 0;
    for (const ParagraphRun& run : story.paragraphs) {
        at += run.length;
        result.emplace_back(at, meaning(tables, run.properties));
        result.back().second.push_back(static_cast<std::uint8_t>(run.style));
        result.back().second.push_back(static_cast<std::uint8_t>(run.style >> 8));
    }
    return result;
}

void expectSameStory(const DocumentContent& a, const Story& left, const DocumentContent& b,
                     const Story& right) {
    EXPECT_TRUE(left.text == right.text);
    EXPECT_TRUE(charactersOf(a.tables, left) == charactersOf(b.tables, right));
    EXPECT_TRUE(paragraphsOf(a.tables, left) == paragraphsOf(b.tables, right));
    ASSERT_EQ(left.fields.size(), right.fields.size());
    for (std::size_t i = 0; i < left.fields.size(); ++i) {
        EXPECT_EQ(left.fields[i].at, right.fields[i].at);
        if (left.fields[i].character != 0x14) { // the data of a separator bears no meaning
            EXPECT_EQ(left.fields[i], right.fields[i]);
        }
    }
}

void expectSame(const DocumentContent& a, const DocumentContent& b) {
    expectSameStory(a, *joined(a.main), b, *joined(b.main));
    ASSERT_EQ(a.sections.size(), b.sections.size());
    for (std::size_t i = 0; i < a.sections.size(); ++i) {
        EXPECT_EQ(a.sections[i].length, b.sections[i].length);
        EXPECT_EQ(meaning(a.tables, a.sections[i].properties),
                  meaning(b.tables, b.sections[i].properties));
    }
    for (std::size_t i = 0; i < a.headers.size(); ++i) {
        for (std::size_t kind = 0; kind < a.headers[i].size(); ++kind) {
            const auto& left = a.headers[i][kind];
            const auto right = i < b.headers.size() ? b.headers[i][kind] : SlicedText{};
            ASSERT_EQ(left.empty(), right.empty());
            expectSameStory(a, *joined(left), b, *joined(right));
        }
    }
    ASSERT_EQ(a.bookmarks.size(), b.bookmarks.size());
    EXPECT_EQ(a.tables.styles.styles.size(), b.tables.styles.styles.size());
    EXPECT_EQ(a.tables.fonts.size(), b.tables.fonts.size());
    EXPECT_EQ(a.tables.listDefinitions.size(), b.tables.listDefinitions.size());
    EXPECT_EQ(a.tables.listOverrides.size(), b.tables.listOverrides.size());
    EXPECT_EQ(a.tables.authors, b.tables.authors);
}

TEST(WriterCorpus, WhatIsWrittenWholeIsReadBackTheSame) {
    std::size_t checked = 0;
    for (const auto& path : test::foreignDocuments()) {
        const auto original = readable(path);
        if (!original) {
            continue;
        }
        SCOPED_TRACE(path.filename().string());
        auto folder = std::make_shared<test::MemoryFolder>();
        DocumentWriter writer(folder);
        writer.saveAs("/out.doc", *original);
        EXPECT_THAT(test::compoundFaults(folder->bytes("/out.doc")), testing::IsEmpty());
        const DocumentContent read = readDocument(folder->bytes("/out.doc"));
        EXPECT_THAT(read.unread.remarks, testing::IsEmpty());
        expectSame(*original, read);
        ++checked;
    }
    EXPECT_GT(checked, test::foreignDocuments().size() / 2);
}

// Most of the text first, and then its middle third, which comes to lie behind the rest.
TEST(WriterCorpus, WhatIsWrittenInTwoStepsIsReadBackTheSame) {
    for (const auto& path : test::foreignDocuments()) {
        auto original = readable(path);
        auto copy = readable(path);
        if (!original || lengthOf(original->main) < 3) {
            continue;
        }
        SCOPED_TRACE(path.filename().string());
        DocumentContent& content = *copy;
        const StorySlice whole = content.main.front();
        const Cp third = whole.length / 3;
        const StorySlice first{whole.fragment, 0, third};
        const StorySlice last{whole.fragment, 2 * third, whole.length - 2 * third};
        auto folder = std::make_shared<test::MemoryFolder>();
        DocumentWriter writer(folder);
        content.main = {first, last};
        writer.saveAs("/out.doc", content);
        content.main = {first, {whole.fragment, third, third}, last};
        writer.save(content);
        EXPECT_THAT(test::compoundFaults(folder->bytes("/out.doc")), testing::IsEmpty());
        expectSame(*original, readDocument(folder->bytes("/out.doc")));
    }
}

} // namespace
} // namespace qvnd::word

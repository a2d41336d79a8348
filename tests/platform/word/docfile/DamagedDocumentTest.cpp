#include "platform/word/docfile/reader/DocumentReader.h"

#include "platform/word/docfile/StoryChecks.h"
#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/docfile/text/Fields.h"
#include "platform/word/docfile/text/HeaderStory.h"
#include "platform/word/docfile/writer/DocumentSummary.h"
#include "support/ByteText.h"
#include "support/Corpus.h"
#include "support/MemoryFolder.h"
#include "support/ScratchFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace qvnd::word {
namespace {

using Kind = FormatError::Kind;
using test::ascii;
using test::hex;
using test::plainWordFile;
using test::WordFile;
using test::WordStreams;
using testing::IsEmpty;

std::optional<Kind> refusal(const Bytes& file) {
    try {
        readDocument(file);
    } catch (const FormatError& error) {
        return error.kind();
    }
    return std::nullopt;
}

DocumentContent readSound(const Bytes& file) {
    DocumentContent document = readDocument(file);
    EXPECT_THAT(test::documentFaults(document), IsEmpty());
    return document;
}

Bytes compoundWith(std::u16string_view name, const Bytes& content) {
    test::MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store(folder.createBeside("/folder/target", &path), {});
    store.append(store.addStream(name), content);
    store.commit(CompoundStore::Durability::killedProcess);
    return folder.bytes(path);
}

void setU32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        bytes.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

// Where the FIB keeps place and length of a structure.
std::size_t pairAt(FibPair pair) { return 154 + std::size_t{8} * static_cast<std::size_t>(pair); }

TEST(RefusedDocument, WhatIsNoCompoundFile) {
    EXPECT_EQ(refusal(ascii("{\\rtf1 text}")), Kind::notCompoundFile);
    EXPECT_EQ(refusal({}), Kind::notCompoundFile);
}

TEST(RefusedDocument, FilesOfWordBeforeCompoundFiles) {
    EXPECT_EQ(refusal(hex("DB A5 2D 00 00 00")), Kind::olderThanWord97); // Word 2
    EXPECT_EQ(refusal(hex("31 BE 00 00 00 AB")), Kind::olderThanWord97); // Word for DOS
}

TEST(RefusedDocument, FilesOfOldWordsByTheirPathToo) {
    const test::ScratchFolder folder;
    const auto refusalOf = [&](const Bytes& file) -> std::optional<Kind> {
        try {
            readDocument(folder.write("a.doc", file));
        } catch (const FormatError& error) {
            return error.kind();
        }
        return std::nullopt;
    };
    for (const char* magic : {"9BA5", "DBA5", "DCA5", "31BE"}) {
        EXPECT_EQ(refusalOf(hex(magic)), Kind::olderThanWord97) << magic;
        EXPECT_EQ(refusal(hex(magic)), Kind::olderThanWord97) << magic;
    }
    EXPECT_EQ(refusalOf(hex("9C A5 00")), Kind::notCompoundFile);
    EXPECT_EQ(refusalOf(hex("DB")), Kind::notCompoundFile);
    EXPECT_EQ(refusal(hex("DB")), Kind::notCompoundFile);
}

TEST(RefusedDocument, ACompoundFileOfAnotherProgram) {
    EXPECT_EQ(refusal(compoundWith(u"Workbook", Bytes(5000))), Kind::notWord);
}

TEST(RefusedDocument, AnEncryptedPackage) {
    EXPECT_EQ(refusal(compoundWith(u"EncryptedPackage", Bytes(5000))), Kind::encrypted);
}

TEST(RefusedDocument, AnEncryptedDocument) {
    WordStreams streams = test::wordStreams(plainWordFile(u"x\r"));
    streams.wordDocument[0x0B] |= 0x01;
    EXPECT_EQ(refusal(test::compoundFile(streams)), Kind::encrypted);
}

TEST(RefusedDocument, ADocumentOfWord95) {
    WordStreams streams = test::wordStreams(plainWordFile(u"x\r"));
    streams.wordDocument[2] = 0x68;
    EXPECT_EQ(refusal(test::compoundFile(streams)), Kind::olderThanWord97);
}

TEST(RefusedDocument, AFileThatDoesNotExist) {
    try {
        readDocument(std::filesystem::path("/nowhere/at/all.doc"));
        FAIL() << "the file was read";
    } catch (const FormatError& error) {
        EXPECT_EQ(error.kind(), Kind::unreadable);
    }
}

TEST(RefusedDocument, WithoutATableStreamThereIsNothingToRead) {
    const WordStreams streams = test::wordStreams(plainWordFile(u"x\r"));
    EXPECT_EQ(refusal(compoundWith(u"WordDocument", streams.wordDocument)), Kind::damaged);
}

TEST(DamagedDocument, TheOtherTableStreamServesWhenTheNamedOneIsMissing) {
    WordStreams streams = test::wordStreams(plainWordFile(u"text\r"));
    streams.wordDocument[0x0B] &= static_cast<std::uint8_t>(~0x02);
    const DocumentContent document = readSound(test::compoundFile(streams));
    EXPECT_EQ(joined(document.main)->text, u"text\r");
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DamagedDocument, WithoutAPieceTableTheFibsPlaceOfTheTextServes) {
    for (const bool compressed : {false, true}) {
        WordFile file = plainWordFile(u"text\r");
        file.pieces[0].compressed = compressed;
        file.pieces[0].text += compressed ? u"\r" : u"";
        const Cp length = static_cast<Cp>(file.pieces[0].text.size());
        WordStreams streams = test::wordStreams(file);
        setU32(streams.wordDocument, 0x18, 2048);
        setU32(streams.wordDocument, 0x1C, 2048 + length * (compressed ? 1 : 2));
        setU32(streams.wordDocument, pairAt(FibPair::Clx) + 4, 0);
        const DocumentContent document = readSound(test::compoundFile(streams));
        EXPECT_EQ(joined(document.main)->text, file.pieces[0].text);
        EXPECT_EQ(document.unread.remarks.size(), 1U);
    }
}

TEST(DamagedDocument, WithoutAnyPlaceOfTheTextItIsRefused) {
    WordStreams streams = test::wordStreams(plainWordFile(u"text\r"));
    setU32(streams.wordDocument, pairAt(FibPair::Clx) + 4, 0);
    EXPECT_EQ(refusal(test::compoundFile(streams)), Kind::damaged);
}

TEST(DamagedDocument, WithoutBinTablesTheTextIsReadUnformatted) {
    WordFile file = plainWordFile(u"bold\r");
    file.pieces[0].characters = {{5, hex("35 08 01")}};
    WordStreams streams = test::wordStreams(file);
    setU32(streams.wordDocument, pairAt(FibPair::PlcfBteChpx) + 4, 0);
    setU32(streams.wordDocument, pairAt(FibPair::PlcfBtePapx), 0x7FFFFFFF);
    const DocumentContent document = readSound(test::compoundFile(streams));
    EXPECT_EQ(joined(document.main)->text, u"bold\r");
    EXPECT_EQ(joined(document.main)->characters.size(), 1U);
    EXPECT_EQ(joined(document.main)->characters[0].properties, PropertyListId::empty);
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DamagedDocument, APageThatIsNoneIsNamedAndTheOthersRead) {
    WordFile file = plainWordFile(u"first\r");
    file.pieces[0].characters = {{6, hex("35 08 01")}};
    file.pieces.push_back({u"second\r", false, 0, {{7, hex("36 08 01")}}, {}});
    WordStreams streams = test::wordStreams(file);
    streams.wordDocument[2560 + 511] = 0; // no runs in the first page of characters
    const DocumentContent document = readSound(test::compoundFile(streams));
    ASSERT_EQ(joined(document.main)->characters.size(), 2U);
    EXPECT_EQ(joined(document.main)->characters[0].properties, PropertyListId::empty);
    EXPECT_NE(joined(document.main)->characters[1].properties, PropertyListId::empty);
    EXPECT_EQ(document.unread.remarks.size(),
              2U); // of the page, and of the text without formatting
}

TEST(DamagedDocument, AMainStoryLongerThanTheTextEndsWithIt) {
    WordFile file = plainWordFile(u"text");
    file.lengths.text = 4000000;
    const DocumentContent document = readSound(test::wordFile(file));
    EXPECT_EQ(joined(document.main)->text, u"text\r");
    EXPECT_EQ(document.unread.remarks.size(), 1U);
}

TEST(DamagedDocument, PiecesThatClaimFarMoreTextThanThereIsDoNotExhaustTheMemory) {
    const std::u16string text(20000, u'x');
    const WordStreams plain = test::wordStreams(plainWordFile(text));
    PieceTable table;
    for (int i = 0; i < 20000; ++i) {
        table.pieces.push_back({20000, 2048, false, 0, 0});
    }
    WordStreams streams = plain;
    const Bytes clx = encodeClx(table);
    setU32(streams.wordDocument, pairAt(FibPair::Clx),
           static_cast<std::uint32_t>(streams.table.size()));
    setU32(streams.wordDocument, pairAt(FibPair::Clx) + 4, static_cast<std::uint32_t>(clx.size()));
    setU32(streams.wordDocument, 0x4C, 400000000);
    streams.table.insert(streams.table.end(), clx.begin(), clx.end());
    const DocumentContent document = readSound(test::compoundFile(streams));
    EXPECT_LT(joined(document.main)->text.size(), 10 * streams.wordDocument.size());
    EXPECT_FALSE(document.unread.remarks.empty());
}

TEST(DamagedDocument, PiecesMayNameAKilobyteMoreTextThanTheFileIsLongAndNoCharacterFurther) {
    const WordStreams plain = test::wordStreams(plainWordFile(std::u16string(20000, u'x')));
    const auto most = static_cast<Cp>(plain.wordDocument.size() + 1024);
    for (const Cp length : {most, most + 1}) {
        PieceTable table;
        for (Cp named = 0; named < length; named += table.pieces.back().length) {
            table.pieces.push_back({std::min<Cp>(20000, length - named), 2048, false, 0, 0});
        }
        WordStreams streams = plain;
        const Bytes clx = encodeClx(table);
        setU32(streams.wordDocument, pairAt(FibPair::Clx),
               static_cast<std::uint32_t>(streams.table.size()));
        setU32(streams.wordDocument, pairAt(FibPair::Clx) + 4,
               static_cast<std::uint32_t>(clx.size()));
        setU32(streams.wordDocument, 0x4C, length);
        streams.table.insert(streams.table.end(), clx.begin(), clx.end());
        const DocumentContent document = readSound(test::compoundFile(streams));
        EXPECT_EQ(joined(document.main)->text.size() >= length, length == most) << length;
    }
}

// A document with something of everything that the reader understands.
WordFile richFile() {
    WordFile file;
    const Bytes cell = hex("16 24 01");
    const Bytes row = hex("16 24 01 17 24 01 08 D6 08 00 02 00 00 64 00 2C 01");
    file.pieces = {
        {u"Title\rText \x13 PAGE \x14"
         u"1\x15 and \x01 end\r",
         false,
         0,
         {{6, hex("35 08 01")}, {20, {}}, {1, hex("03 6A 00000000 55 08 01")}, {5, {}}},
         {{6, 0, hex("61 24 01")}, {26, 0, hex("46 66 48000000")}}},
        {u"one\x07two\x07\x07 ", true, 0x01AA, {}, {{4, 0, cell}, {4, 0, cell}, {2, 0, row}}},
        {u"break\x0Clast\r", false, 0x0001, {{6, hex("36 08 01")}, {5, {}}}, {}},
        {u"head\r\r\r", false, 0, {}, {}},
        {u"\r", false, 0, {}, {}}};
    file.storedOrder = {2, 0, 4, 1, 3};
    file.modifiers = {hex("36 08 01 61 24 01")};
    const Cp main = 32 + 10 + 11;
    file.sections = {{32 + 10 + 6, hex("1D 30 02")}, {5, hex("09 30 00")}};
    file.lengths.text = main;
    file.lengths.headers = 7;
    file.parts[FibPair::PlcfHdd] =
        hex("00000000 00000000 00000000 00000000 00000000 00000000"
            "00000000 00000000 06000000 06000000 06000000 06000000"
            "06000000 06000000 06000000 06000000 06000000 06000000 06000000 07000000");
    file.parts[FibPair::PlcfFldMom] = encodeFields(
        std::vector<FieldMark>{{11, 0x13, 0x21}, {18, 0x14, 0xFF}, {20, 0x15, 0x80}}, main);
    LittleEndianWriter data;
    data.u32(0x48);
    data.u16(0x44);
    data.zeros(0x42);
    data.bytes(hex("03 00 61 24 01"));
    file.data = data.take();
    return file;
}

// Demands the document or a reason, and that a document keeps its promises.
void readMutant(const Bytes& file, const std::string& name) {
    try {
        const DocumentContent document = readDocument(file);
        EXPECT_THAT(test::documentFaults(document), IsEmpty()) << name;
        summarize(document);
        documentText(document.main, document.tables);
    } catch (const FormatError&) {
        SUCCEED();
    }
}

void mutate(Bytes& bytes, std::mt19937& random) {
    if (bytes.empty()) {
        return;
    }
    const std::size_t at = random() % bytes.size();
    switch (random() % 4) {
    case 0:
        bytes[at] = static_cast<std::uint8_t>(random());
        break;
    case 1:
        bytes[at] ^= static_cast<std::uint8_t>(1U << (random() % 8));
        break;
    case 2:
        bytes[at] = random() % 2 == 0 ? 0xFF : 0x00;
        break;
    default:
        for (std::size_t i = at; i < std::min(at + 4, bytes.size()); ++i) {
            bytes[i] = static_cast<std::uint8_t>(random());
        }
    }
}

TEST(MutatedDocument, TheUnchangedOneIsSound) {
    const DocumentContent document = readSound(test::wordFile(richFile()));
    EXPECT_THAT(document.unread.remarks, IsEmpty());
    EXPECT_EQ(document.sections.size(), 2U);
    EXPECT_EQ(joined(document.main)->fields.size(), 3U);
    EXPECT_EQ(document.tables.blobs.size(), 1U);
    EXPECT_EQ(documentText(document.main, document.tables),
              u"Title\nText 1 and  end\none\ttwo\n break\nlast\n");
}

TEST(MutatedDocument, ChangedStreamsGiveADocumentOrAReason) {
    const WordStreams original = test::wordStreams(richFile());
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        WordStreams mutant = original;
        Bytes& victim = i % 5 == 0 ? mutant.data : i % 5 <= 2 ? mutant.table : mutant.wordDocument;
        const int changes = 1 + static_cast<int>(random() % 4);
        for (int change = 0; change < changes; ++change) {
            mutate(victim, random);
        }
        readMutant(test::compoundFile(mutant), "mutant " + std::to_string(i));
    }
}

TEST(MutatedDocument, ShortenedStreamsGiveADocumentOrAReason) {
    const WordStreams original = test::wordStreams(richFile());
    std::mt19937 random(2);
    for (int i = 0; i < 60; ++i) {
        WordStreams mutant = original;
        Bytes& victim = i % 2 == 0 ? mutant.table : mutant.wordDocument;
        victim.resize(random() % victim.size());
        readMutant(test::compoundFile(mutant), "shortened " + std::to_string(i));
    }
}

TEST(MutatedDocument, ChangedFilesGiveADocumentOrAReason) {
    const Bytes original = test::wordFile(richFile());
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        Bytes mutant = original;
        if (i % 4 == 0) {
            mutant.resize(random() % mutant.size());
        }
        mutate(mutant, random);
        mutate(mutant, random);
        readMutant(mutant, "file " + std::to_string(i));
    }
}

Bytes contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(MutatedDocument, ChangedRealDocumentsGiveADocumentOrAReason) {
    const auto files = test::foreignDocuments();
    std::mt19937 random(4);
    for (const auto& path : files) {
        const Bytes original = contentsOf(path);
        if (original.size() > 300000) {
            continue;
        }
        for (int i = 0; i < 6; ++i) {
            Bytes mutant = original;
            for (int change = 0; change < 12; ++change) {
                mutate(mutant, random);
            }
            readMutant(mutant, path.filename().string() + " " + std::to_string(i));
        }
    }
}

} // namespace
} // namespace qvnd::word

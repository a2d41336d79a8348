#include "platform/word/docfile/container/CompoundFile.h"

#include "platform/word/docfile/container/CompoundFormat.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/container/FormatError.h"
#include "support/Corpus.h"
#include "support/MemoryFolder.h"

#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>

namespace qvnd::word {
namespace {

FormatError::Kind refusal(const std::function<void()>& action) {
    try {
        action();
    } catch (const FormatError& error) {
        EXPECT_STRNE(error.what(), "");
        return error.kind();
    }
    ADD_FAILURE() << "nothing was refused";
    return FormatError::Kind::unreadable;
}

Bytes counted(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    }
    return bytes;
}

TEST(LittleEndian, AWriterWhoseBytesAreTakenIsEmptyAgain) {
    LittleEndianWriter writer;
    writer.u16(0x0201);
    EXPECT_EQ(writer.take(), (Bytes{1, 2}));
    EXPECT_EQ(writer.position(), 0U);
    EXPECT_TRUE(writer.take().empty());
    writer.u8(3);
    EXPECT_EQ(writer.take(), Bytes{3});
}

// A file with a large and a small stream, and what a test does to it.
class CompoundFileTest : public testing::Test {
protected:
    CompoundFileTest() {
        std::filesystem::path path;
        CompoundStore store(folder.createBeside("/x", &path), {});
        store.append(store.addStream(u"Large"), counted(6000));
        store.append(store.addStream(u"Small"), counted(200));
        store.append(store.addStream(store.addStorage(0, u"Folder", {}), u"Inner"), counted(70));
        store.commit(CompoundStore::Durability::killedProcess);
        file = folder.bytes(path);
    }

    std::uint32_t number(std::size_t at) const {
        LittleEndianReader reader(file, "test");
        reader.seek(at);
        return reader.u32();
    }
    void setNumber(std::size_t at, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i) {
            file.at(at + i) = static_cast<std::uint8_t>(value >> (8 * i));
        }
    }
    std::size_t sectorAt(std::uint32_t sector) const { return (std::size_t{sector} + 1) * 512; }
    // Where the entry of `sector` in the allocation table stands.
    std::size_t tableEntry(std::uint32_t sector) const {
        return sectorAt(number(76)) + 4 * std::size_t{sector};
    }
    std::size_t directoryEntry(std::size_t index) const {
        return sectorAt(number(48)) + 128 * index;
    }
    CompoundFile opened() const { return CompoundFile::over(file); }

    test::MemoryFolder folder;
    Bytes file;
};

TEST_F(CompoundFileTest, ListsStoragesAndStreamsByPath) {
    const CompoundFile read = opened();
    std::map<std::u16string, std::uint64_t> sizes;
    for (const auto& entry : read.entries()) {
        sizes[entry.path] = entry.size;
        EXPECT_EQ(entry.storage, entry.path == u"Folder");
    }
    const std::map<std::u16string, std::uint64_t> expected{
        {u"Large", 6000}, {u"Small", 200}, {u"Folder", 0}, {u"Folder/Inner", 70}};
    EXPECT_EQ(sizes, expected);
    EXPECT_EQ(read.stream(u"Large"), counted(6000));
    EXPECT_EQ(read.stream(u"Folder/Inner"), counted(70));
}

TEST_F(CompoundFileTest, PathsAreFoundWithoutRegardToCase) {
    EXPECT_TRUE(opened().has(u"LARGE"));
    EXPECT_EQ(opened().stream(u"folder/INNER"), counted(70));
    EXPECT_FALSE(opened().has(u"Larger"));
}

TEST_F(CompoundFileTest, AMovedFileIsStillRead) {
    CompoundFile first = CompoundFile::fromBytes(file);
    const CompoundFile second = std::move(first);
    EXPECT_EQ(second.stream(u"Small"), counted(200));
}

TEST_F(CompoundFileTest, AStreamThatIsNotThereIsDamage) {
    EXPECT_EQ(refusal([&] { opened().stream(u"None"); }), FormatError::Kind::damaged);
    EXPECT_EQ(refusal([&] { opened().stream(u"Folder"); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, AnythingElseIsNoCompoundFile) {
    const std::string rtf = "{\\rtf1 text}";
    for (const Bytes& bytes : {Bytes{}, Bytes(rtf.begin(), rtf.end()), Bytes(5000)}) {
        EXPECT_EQ(refusal([&] { CompoundFile::over(bytes); }), FormatError::Kind::notCompoundFile);
    }
}

TEST_F(CompoundFileTest, AFileThatCannotBeOpenedIsUnreadable) {
    EXPECT_EQ(refusal([] { CompoundFile::open("/nowhere/file.doc"); }),
              FormatError::Kind::unreadable);
    EXPECT_EQ(refusal([] { CompoundFile::open(std::filesystem::temp_directory_path()); }),
              FormatError::Kind::unreadable);
}

TEST_F(CompoundFileTest, ACutHeaderIsDamage) {
    file.resize(300);
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, ImpossibleSectorSizesAreDamage) {
    file.at(30) = 40;
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, SmallSectorsAreSmallerThanSectorsAndHoldANumberAtLeast) {
    for (const std::uint8_t shift : {2, 8}) {
        file.at(32) = shift;
        EXPECT_NO_THROW(opened()) << int{shift};
    }
    for (const std::uint8_t shift : {1, 9}) {
        file.at(32) = shift;
        EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged) << int{shift};
    }
}

TEST_F(CompoundFileTest, MoreTableSectorsThanTheFileHasSectorsAreDamage) {
    const std::size_t most = file.size() / 512 + 1;
    ASSERT_LT(most, cfb::difatPlacesInHeader);
    setNumber(44, 0); // the places count, not the header
    for (std::size_t i = 0; i < most; ++i) {
        setNumber(76 + 4 * i, number(76));
    }
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
    setNumber(76 + 4 * most, number(76));
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, ASectorOfTheDifatHasAPlaceAndALinkAtLeast) {
    setNumber(68, static_cast<std::uint32_t>(file.size() / 512 - 1));
    file.resize(file.size() + 4, 0xFF);
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
    file.resize(file.size() + 4, 0xFF);
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
}

TEST_F(CompoundFileTest, AChainInACircleIsDamage) {
    const std::uint32_t first = number(directoryEntry(1) + 116);
    setNumber(tableEntry(first + 1), first);
    EXPECT_EQ(refusal([&] {
                  setNumber(directoryEntry(1) + 120, 600000); // more than the circle gives at once
                  opened().stream(u"Large");
              }),
              FormatError::Kind::damaged);
    EXPECT_EQ(opened().stream(u"Small"), counted(200)); // the others are not concerned
}

TEST_F(CompoundFileTest, AChainOutOfTheFileIsDamage) {
    const std::uint32_t first = number(directoryEntry(1) + 116);
    setNumber(tableEntry(first), 100);
    EXPECT_EQ(refusal([&] { opened().stream(u"Large"); }), FormatError::Kind::damaged);
    setNumber(tableEntry(first), 100000);
    EXPECT_EQ(refusal([&] { opened().stream(u"Large"); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, ASmallChainInACircleIsDamage) {
    setNumber(sectorAt(number(60)), 0);
    setNumber(directoryEntry(2) + 120, 4000);
    EXPECT_EQ(refusal([&] { opened().stream(u"Small"); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, AChainThatEndsEarlyGivesWhatExists) {
    const std::uint32_t first = number(directoryEntry(1) + 116);
    setNumber(tableEntry(first + 3), cfb::endOfChain);
    const Bytes all = counted(6000);
    EXPECT_EQ(opened().stream(u"Large"), Bytes(all.begin(), all.begin() + 2048));
}

TEST_F(CompoundFileTest, ADirectoryTreeInACircleIsReadOnce) {
    setNumber(directoryEntry(1) + 68, 1);
    setNumber(directoryEntry(1) + 72, 0);
    EXPECT_TRUE(opened().has(u"Large"));
}

// 10,000 of them once took gigabytes for their paths.
TEST_F(CompoundFileTest, StoragesNestedTooDeeplyAreLeftOutAndCounted) {
    std::filesystem::path path;
    CompoundStore store(folder.createBeside("/y", &path), {});
    CompoundStore::Stream inner = 0;
    for (int depth = 0; depth < 500; ++depth) {
        inner = store.addStorage(inner, u"storage_with_a_long_name", {});
    }
    store.append(store.addStream(u"Beside"), counted(5000));
    store.commit(CompoundStore::Durability::killedProcess);
    file = folder.bytes(path);

    const CompoundFile read = opened();
    EXPECT_EQ(read.entries().size(), CompoundFile::deepestStorage + 1);
    EXPECT_EQ(read.tooDeep(), 1U);
    EXPECT_EQ(read.stream(u"Beside"), counted(5000));
}

TEST_F(CompoundFileTest, ADirectoryInACircleIsDamage) {
    setNumber(tableEntry(number(48)), number(48));
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, TheDifatInACircleIsDamage) {
    setNumber(68, 0);
    setNumber(sectorAt(0) + 508, 0);
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, AHeaderThatCountsNoTableSectorsIsReadByTheirPlaces) {
    setNumber(44, 0);
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
}

TEST_F(CompoundFileTest, AFileWithoutADirectoryIsDamage) {
    setNumber(48, 0xFFFFFFFE);
    EXPECT_EQ(refusal([&] { opened(); }), FormatError::Kind::damaged);
}

TEST_F(CompoundFileTest, AHeaderThatCountsMoreTableSectorsThanItNamesIsReadByTheirPlaces) {
    setNumber(44, 2);
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
}

TEST_F(CompoundFileTest, PlacesBeyondTheCountedTableSectorsAreNotRead) {
    setNumber(80, 100000); // behind the one place that counts
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
}

TEST_F(CompoundFileTest, RubbishInTheUpperHalfOfASizeIsIgnoredInVersion3) {
    setNumber(directoryEntry(1) + 124, 0xDEADBEEF);
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
}

// Of lengths of eight bytes, which version 4 has.
TEST_F(CompoundFileTest, AStreamThatClaimsMoreThanTheFileHoldsGivesWhatExists) {
    file.at(26) = 4;
    setNumber(directoryEntry(1) + 124, 0x40000000);
    const Bytes read = opened().stream(u"Large");
    ASSERT_EQ(read.size(), 6144U); // its sectors
    EXPECT_EQ(Bytes(read.begin(), read.begin() + 6000), counted(6000));
}

// Version 4: sectors of 4096 bytes, the last one cut short.
TEST_F(CompoundFileTest, Version4WithACutLastSectorIsRead) {
    constexpr std::size_t size = 4096;
    LittleEndianWriter out;
    out.bytes(ByteView(file).first(26));
    out.u16(4);
    out.u16(0xFFFE);
    out.u16(12);
    out.u16(6);
    out.zeros(6);
    out.u32(1); // directory sectors
    out.u32(1); // FAT sectors
    out.u32(1); // first directory sector
    out.u32(0);
    out.u32(4096);
    out.u32(cfb::endOfChain);
    out.u32(0);
    out.u32(cfb::endOfChain);
    out.u32(0);
    out.u32(0);
    while (out.position() < 512) {
        out.u32(cfb::freeSector);
    }
    out.align(size);
    for (const std::uint32_t next : {cfb::fatSector, cfb::endOfChain, 3U, cfb::endOfChain}) {
        out.u32(next);
    }
    while (out.position() < 2 * size) {
        out.u32(cfb::freeSector);
    }
    CompoundDirectory directory({});
    directory.place(directory.addStream(0, u"Large"), 2, 6000);
    out.bytes(directory.encodeSector(0));
    out.align(size);
    out.bytes(counted(6000));
    file = out.take();
    EXPECT_EQ(opened().stream(u"Large"), counted(6000));
}

TEST_F(CompoundFileTest, NoByteOutOfPlaceBreaksTheReader) {
    const Bytes sound = file;
    std::size_t refused = 0;
    for (std::size_t at = 0; at < sound.size(); at += at < 512 ? 1 : 3) {
        for (const std::uint8_t value : {0x00, 0x01, 0x7F, 0xFF}) {
            file = sound;
            file[at] = value;
            try {
                const CompoundFile read = opened();
                for (const auto& entry : read.entries()) {
                    EXPECT_LE(entry.storage ? 0 : read.stream(entry.path).size(), file.size());
                }
            } catch (const FormatError& error) {
                EXPECT_NE(error.kind(), FormatError::Kind::unreadable);
                ++refused;
            }
        }
    }
    EXPECT_GT(refused, 100U);
}

TEST_F(CompoundFileTest, NamesAreOrderedByLengthAndThenByUpperCase) {
    EXPECT_LT(compareEntryNames(u"zz", u"aaa"), 0);
    EXPECT_GT(compareEntryNames(u"b", u"A"), 0);
    EXPECT_EQ(compareEntryNames(u"abc", u"ABC"), 0);
    EXPECT_LT(compareEntryNames(u"1Table", u"\001CompObj"), 0);
    EXPECT_EQ(compareEntryNames(u"é", u"É"), 0);
}

TEST_F(CompoundFileTest, NamesOfOtherCaseAreEqualInTheScriptsThatNamesAreMadeOf) {
    const auto areEqual = [](char16_t one, char16_t other) {
        return compareEntryNames(std::u16string(1, one), std::u16string(1, other)) == 0;
    };
    for (const auto& [small, capital] :
         std::initializer_list<std::pair<char16_t, char16_t>>{{u'a', u'A'},
                                                              {u'z', u'Z'},
                                                              {0xE0, 0xC0},
                                                              {0xFE, 0xDE},
                                                              {0xFF, 0x178},
                                                              {0x3B1, 0x391},
                                                              {0x3C9, 0x3A9},
                                                              {0x430, 0x410},
                                                              {0x44F, 0x42F},
                                                              {0x450, 0x400},
                                                              {0x45F, 0x40F}}) {
        EXPECT_TRUE(areEqual(small, capital)) << std::uint32_t{small};
    }
    for (const auto& [one, other] :
         std::initializer_list<std::pair<char16_t, char16_t>>{{u'`', u'@'},
                                                              {u'{', u'['},
                                                              {0xDF, 0xBF},
                                                              {0xF7, 0xD7},
                                                              {0x3B0, 0x390},
                                                              {0x3C2, 0x3A2},
                                                              {0x3CA, 0x3AA},
                                                              {0x42F, 0x40F},
                                                              {0x460, 0x440},
                                                              {0x460, 0x410}}) {
        EXPECT_FALSE(areEqual(one, other)) << std::uint32_t{one};
    }
}

TEST_F(CompoundFileTest, EveryStreamOfEveryRealDocumentIsReadOrRefused) {
    std::size_t read = 0;
    for (const auto& path : test::foreignDocuments()) {
        try {
            const CompoundFile compound = CompoundFile::open(path);
            for (const auto& entry : compound.entries()) {
                read += !entry.storage && compound.stream(entry.path).size() == entry.size ? 1 : 0;
            }
        } catch (const FormatError& error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
    EXPECT_GT(read, 4 * test::foreignDocuments().size());
}

} // namespace
} // namespace qvnd::word

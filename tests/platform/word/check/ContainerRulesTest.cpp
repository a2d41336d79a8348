#include "platform/word/check/SoundDocument.h"

#include "support/ByteText.h"

#include <gtest/gtest.h>

#include <algorithm>

// Each rule about the container: one thing broken breaks that rule.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t freeSector = 0xFFFFFFFF;

// Its main stream is long enough for sectors of its own.
Bytes soundFile() {
    return changed(SoundDocument(),
                   [](WordStreams& streams, const Fib&) { streams.wordDocument.resize(8192); });
}

// A sound file's bytes by their meaning: sectors of 512 bytes, one FAT sector.
class Container : public ::testing::Test {
protected:
    std::size_t sectorAt(std::uint32_t sector) const { return (std::size_t{sector} + 1) * 512; }
    std::size_t fatAt(std::uint32_t sector) const {
        return sectorAt(get32(file, 76)) + std::size_t{4} * sector;
    }
    // Where the directory's entry of that name begins.
    std::size_t entryAt(std::u16string_view name) const {
        Bytes sought;
        for (const char16_t c : name) {
            sought.push_back(static_cast<std::uint8_t>(c));
            sought.push_back(0);
        }
        const std::size_t directory = sectorAt(get32(file, 48));
        const auto found = std::search(file.begin() + static_cast<long>(directory), file.end(),
                                       sought.begin(), sought.end());
        EXPECT_NE(found, file.end());
        return static_cast<std::size_t>(found - file.begin());
    }
    std::uint32_t firstSectorOf(std::u16string_view name) const {
        return get32(file, entryAt(name) + 116);
    }
    Rules rules() const { return brokenRules(file); }
    bool breaks(const char* rule) const { return rules().count(rule) == 1; }

    Bytes file = soundFile();
};

TEST_F(Container, OtherFilesAreNoContainer) {
    EXPECT_EQ(brokenRules(ascii("plain text")), (Rules{"cfb.header", "file.unreadable"}));
    EXPECT_EQ(brokenRules({}), (Rules{"cfb.header", "file.unreadable"}));
}

TEST_F(Container, HeaderMustHaveItsFixedValues) {
    put16(file, 32, 7); // mini sector shift
    EXPECT_TRUE(breaks("cfb.header"));
}

TEST_F(Container, VersionMustFitTheSectorSize) {
    const auto breaksHeader = [this](unsigned version, unsigned sectorShift) {
        put16(file, 26, version);
        put16(file, 30, sectorShift);
        return breaks("cfb.header");
    };
    EXPECT_FALSE(breaksHeader(3, 9));
    EXPECT_TRUE(breaksHeader(4, 9));
    EXPECT_TRUE(breaksHeader(3, 12));
    EXPECT_FALSE(breaksHeader(4, 12));
    EXPECT_TRUE(breaksHeader(5, 12));
}

TEST_F(Container, HeaderMustCountTheFatSectors) {
    put32(file, 44, 2);
    EXPECT_TRUE(breaks("cfb.difat"));
}

TEST_F(Container, DifatChainMustNotBreakOff) {
    put32(file, 68, 0x7FFF);
    put32(file, 72, 1);
    EXPECT_TRUE(breaks("cfb.difat"));
}

TEST_F(Container, HeaderMustCountTheSectorsOfTheDifat) {
    const auto added = static_cast<std::uint32_t>(file.size() / 512 - 1);
    file.resize(file.size() + 512, 0xFF); // no further places
    put32(file, file.size() - 4, endOfChain);
    put32(file, fatAt(added), 0xFFFFFFFC); // a sector of the DIFAT
    put32(file, 68, added);
    put32(file, 72, 1);
    EXPECT_EQ(rules(), Rules{});
    put32(file, 72, 0);
    EXPECT_EQ(rules(), Rules{"cfb.difat"});
    put32(file, 72, 1);
    put32(file, fatAt(added), endOfChain);
    EXPECT_EQ(toldOf("cfb.fat.mark", file),
              std::vector<std::string>{"DIFAT 扇区 " + std::to_string(added) + " 没有相应的标记"});
}

TEST_F(Container, FatSectorsMustBeMarked) {
    put32(file, fatAt(get32(file, 76)), endOfChain);
    EXPECT_EQ(rules(), Rules{"cfb.fat.mark"});
}

TEST_F(Container, MiniFatMustHaveTheSizeTheHeaderTells) {
    put32(file, 64, get32(file, 64) + 1);
    EXPECT_EQ(rules(), Rules{"cfb.minifat"});
}

TEST_F(Container, ChainMustEnd) {
    const std::uint32_t first = firstSectorOf(u"WordDocument");
    put32(file, fatAt(first + 1), first);
    EXPECT_TRUE(breaks("cfb.chain.cycle"));
    EXPECT_FALSE(breaks("cfb.chain.shared"));
}

TEST_F(Container, ChainMustNotRunIntoNowhere) {
    put32(file, fatAt(firstSectorOf(u"WordDocument") + 1), 0x7FFFFF);
    EXPECT_TRUE(breaks("cfb.chain.end"));
}

TEST_F(Container, SectorMustHaveOneOwner) {
    put32(file, entryAt(u"WordDocument") + 116, get32(file, 48)); // the directory's
    EXPECT_TRUE(breaks("cfb.chain.shared"));
    EXPECT_FALSE(breaks("cfb.chain.cycle"));
}

TEST_F(Container, ChainMustBeAsLongAsItsStream) {
    const std::size_t size = entryAt(u"WordDocument") + 120;
    put32(file, size, get32(file, size) + 512);
    EXPECT_EQ(rules(), Rules{"cfb.chain.short"});
    put32(file, size, get32(file, size) - 1024);
    EXPECT_TRUE(breaks("cfb.chain.long"));
}

TEST_F(Container, UsedSectorMustHaveAnOwner) {
    std::uint32_t last = 0;
    while (get32(file, fatAt(last)) != freeSector) {
        ++last;
    }
    put32(file, fatAt(last), endOfChain);
    EXPECT_EQ(rules(), Rules{"cfb.orphan"});
}

TEST_F(Container, FileMustConsistOfWholeSectors) {
    file.push_back(0);
    EXPECT_EQ(rules(), Rules{"cfb.size"});
}

TEST_F(Container, SectorMustLieInTheFile) {
    file.resize(file.size() - 1024);
    EXPECT_TRUE(breaks("cfb.sector"));
}

TEST_F(Container, EntriesMustBeOfAKnownKind) {
    file[entryAt(u"1Table") + 66] = 9;
    EXPECT_TRUE(breaks("cfb.directory.kind"));
}

TEST_F(Container, DirectoryMustHaveARoot) {
    file[entryAt(u"Root Entry") + 66] = 1;
    EXPECT_TRUE(breaks("cfb.directory.kind"));
}

TEST_F(Container, NamesMustBeWellFormed) {
    file[entryAt(u"Data")] = '/';
    EXPECT_TRUE(breaks("cfb.directory.name"));
}

TEST_F(Container, NamesMustStandInOrder) {
    file[entryAt(u"Data") + 64] = 8; // without its last letter, and without a closing zero
    EXPECT_TRUE(breaks("cfb.directory.name"));
    file = soundFile();
    const std::size_t data = entryAt(u"Data");
    std::swap_ranges(file.begin() + static_cast<long>(data),
                     file.begin() + static_cast<long>(data) + 66,
                     file.begin() + static_cast<long>(entryAt(u"WordDocument")));
    EXPECT_TRUE(breaks("cfb.directory.order"));
}

TEST_F(Container, EntriesMustBeLinkedOnce) {
    const std::size_t root = entryAt(u"Root Entry");
    const std::uint32_t child = get32(file, root + 76);
    const std::size_t top = sectorAt(get32(file, 48)) + std::size_t{128} * child;
    put32(file, top + 68, child);
    EXPECT_TRUE(breaks("cfb.directory.link"));
}

TEST_F(Container, EntriesMustBeReachable) {
    put32(file, entryAt(u"Root Entry") + 76, freeSector);
    EXPECT_TRUE(breaks("cfb.directory.lost"));
}

TEST_F(Container, RedEntriesMustNotFollowEachOther) {
    for (const char16_t* name : {u"1Table", u"Data", u"WordDocument"}) {
        file[entryAt(name) + 67] = 0;
    }
    EXPECT_EQ(rules(), Rules{"cfb.directory.red"});
}

} // namespace
} // namespace qvnd::test

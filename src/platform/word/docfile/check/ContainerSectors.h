#pragma once

#include "platform/word/docfile/check/Finding.h"
#include "platform/word/docfile/container/Bytes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qvnd::word {

// The sectors of a compound file and who owns each, read with no tolerance ([MS-CFB] 2.2 to 2.4).
class ContainerSectors {
public:
    struct Header {
        std::uint16_t majorVersion = 0;
        std::uint16_t byteOrder = 0;
        std::uint16_t sectorShift = 0;
        std::uint16_t miniSectorShift = 0;
        std::uint32_t directorySectors = 0;
        std::uint32_t fatSectors = 0;
        std::uint32_t firstDirectorySector = 0;
        std::uint32_t miniCutoff = 0;
        std::uint32_t firstMiniFatSector = 0;
        std::uint32_t miniFatSectors = 0;
        std::uint32_t firstDifatSector = 0;
        std::uint32_t difatSectors = 0;
    };

    // Reads header, DIFAT and FAT. Throws FormatError when there is not even a header.
    ContainerSectors(ByteView file, Findings& findings);

    const Header& header() const { return header_; }
    const std::vector<std::uint32_t>& fatSectors() const { return fatSectors_; }
    const std::vector<std::uint32_t>& difatSectors() const { return difatSectors_; }
    // What the FAT says of a sector; freeSector for one that it does not know.
    std::uint32_t next(std::uint32_t sector) const;

    // The bytes of a chain, which from now on owns its sectors. `size` of them must be there.
    // Tells circles, sectors with two owners, sectors outside of the file, chains too short.
    Bytes claim(std::uint32_t first, std::uint64_t size, const std::u16string& owner,
                Findings& findings);
    // A chain whose length nothing tells: to its end.
    Bytes claimAll(std::uint32_t first, const std::u16string& owner, Findings& findings);

    // The same within the mini stream, once setMiniStream() said what it is.
    void setMiniStream(std::size_t size, Findings& findings);
    void claimMini(std::uint32_t first, std::uint64_t size, const std::u16string& owner,
                   Findings& findings);

    // Sectors that the tables call used and that nothing owns.
    void checkLeftOver(Findings& findings) const;

private:
    struct Chains {
        std::vector<std::uint32_t> next;
        std::vector<bool> owned;
        const char16_t* name;
    };
    // The sectors of a chain up to the first fault, marked as owned.
    static std::vector<std::uint32_t> walk(Chains& chains, std::uint32_t first,
                                           const std::u16string& owner, Findings& findings);
    static void tellLength(std::size_t sectors, std::size_t sectorSize, std::uint64_t size,
                           const std::u16string& owner, Findings& findings);
    void readHeader();
    void readDifat(Findings& findings);
    void takeFatSectors(ByteView entries);
    ByteView sector(std::uint32_t number) const;

    ByteView file_;
    Header header_;
    std::size_t sectorSize_ = 512;
    std::vector<std::uint32_t> fatSectors_;
    std::vector<std::uint32_t> difatSectors_;
    Chains fat_{{}, {}, u"扇区 "};
    Chains miniFat_{{}, {}, u"小扇区 "};
    std::size_t miniStreamSize_ = 0;
};

// The tree of entries and the streams that they name. Rules "cfb.directory.*" and "cfb.chain.*".
void checkDirectory(ContainerSectors& sectors, Findings& findings);

} // namespace qvnd::word

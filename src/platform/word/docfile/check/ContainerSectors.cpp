#include "platform/word/docfile/check/ContainerSectors.h"

#include "platform/word/docfile/container/CompoundFormat.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr std::size_t miniSectorSize = 64;

std::vector<std::uint32_t> numbersOf(ByteView bytes) {
    LittleEndianReader reader(bytes, "FAT");
    std::vector<std::uint32_t> numbers(bytes.size() / 4);
    for (std::uint32_t& number : numbers) {
        number = reader.u32();
    }
    return numbers;
}

} // namespace

ContainerSectors::ContainerSectors(ByteView file, Findings& findings) : file_(file) {
    readHeader();
    if (file_.size() % sectorSize_ != 0) {
        findings.add("cfb.size",
                     u"文件长度 " + digits(std::int64_t(file_.size())) + u" 不是扇区大小的整数倍");
    }
    readDifat(findings);
    for (const std::uint32_t number : fatSectors_) {
        const auto entries = numbersOf(sector(number));
        if (entries.empty()) {
            findings.add("cfb.sector", u"FAT 扇区 " + digits(number) + u" 在文件之外");
        }
        fat_.next.insert(fat_.next.end(), entries.begin(), entries.end());
        fat_.next.resize((fat_.next.size() + sectorSize_ / 4 - 1) / (sectorSize_ / 4) *
                             (sectorSize_ / 4),
                         cfb::freeSector);
    }
    fat_.owned.resize(fat_.next.size());
    for (const auto* own : {&fatSectors_, &difatSectors_}) {
        for (const std::uint32_t number : *own) {
            if (number < fat_.owned.size()) {
                fat_.owned[number] = true;
            }
        }
    }
}

void ContainerSectors::readHeader() {
    LittleEndianReader reader(file_, "compound file header");
    const ByteView magic = reader.view(cfb::signature.size());
    if (!std::equal(magic.begin(), magic.end(), cfb::signature.begin())) {
        throw FormatError(FormatError::Kind::notCompoundFile, "no signature");
    }
    reader.skip(16 + 2); // class, minor version
    header_.majorVersion = reader.u16();
    header_.byteOrder = reader.u16();
    header_.sectorShift = reader.u16();
    header_.miniSectorShift = reader.u16();
    reader.skip(6);
    header_.directorySectors = reader.u32();
    header_.fatSectors = reader.u32();
    header_.firstDirectorySector = reader.u32();
    reader.skip(4); // transaction signature
    header_.miniCutoff = reader.u32();
    header_.firstMiniFatSector = reader.u32();
    header_.miniFatSectors = reader.u32();
    header_.firstDifatSector = reader.u32();
    header_.difatSectors = reader.u32();
    reader.skip(cfb::difatPlacesInHeader * 4);
    sectorSize_ = header_.sectorShift == 12 ? 4096 : 512;
}

void ContainerSectors::takeFatSectors(ByteView entries) {
    for (const std::uint32_t number : numbersOf(entries)) {
        if (number <= cfb::lastSector) {
            fatSectors_.push_back(number);
        }
    }
}

void ContainerSectors::readDifat(Findings& findings) {
    constexpr std::size_t difatAt = 76;
    takeFatSectors(file_.subspan(difatAt, cfb::difatPlacesInHeader * 4));
    std::uint32_t number = header_.firstDifatSector;
    const std::size_t most = file_.size() / sectorSize_;
    while (number <= cfb::lastSector) {
        const ByteView entries = sector(number);
        if (entries.size() < sectorSize_ || difatSectors_.size() > most) {
            findings.add("cfb.difat", u"DIFAT 扇区链在扇区 " + digits(number) + u" 处断开");
            return;
        }
        difatSectors_.push_back(number);
        takeFatSectors(entries.first(sectorSize_ - 4));
        number = numbersOf(entries.last(4))[0];
    }
}

ByteView ContainerSectors::sector(std::uint32_t number) const {
    const std::uint64_t begin = (std::uint64_t{number} + 1) * sectorSize_;
    if (begin >= file_.size()) {
        return {};
    }
    return file_.subspan(begin, std::min<std::size_t>(sectorSize_, file_.size() - begin));
}

std::uint32_t ContainerSectors::next(std::uint32_t sector) const {
    return sector < fat_.next.size() ? fat_.next[sector] : cfb::freeSector;
}

std::vector<std::uint32_t> ContainerSectors::walk(Chains& chains, std::uint32_t first,
                                                  const std::u16string& owner, Findings& findings) {
    std::vector<std::uint32_t> sectors;
    const auto tell = [&](const char* rule, std::uint32_t number, const char16_t* what) {
        findings.add(rule, owner + u"：" + chains.name + digits(number) + what);
    };
    std::uint32_t number = first;
    while (number != cfb::endOfChain) {
        if (number >= chains.next.size()) {
            tell("cfb.chain.end", number, u" 不是可用的扇区号");
            break;
        }
        if (chains.owned[number]) {
            const bool own = std::find(sectors.begin(), sectors.end(), number) != sectors.end();
            tell(own ? "cfb.chain.cycle" : "cfb.chain.shared", number,
                 own ? u" 使扇区链成环" : u" 已属于别的流");
            break;
        }
        chains.owned[number] = true;
        sectors.push_back(number);
        number = chains.next[number];
    }
    return sectors;
}

void ContainerSectors::tellLength(std::size_t sectors, std::size_t sectorSize, std::uint64_t size,
                                  const std::u16string& owner, Findings& findings) {
    const std::uint64_t needed = (size + sectorSize - 1) / sectorSize;
    if (sectors < needed) {
        findings.add("cfb.chain.short", owner + u"：需要 " + digits(std::int64_t(needed)) +
                                            u" 个扇区，链中只有 " + digits(std::int64_t(sectors)) +
                                            u" 个");
    } else if (sectors > needed) {
        findings.add("cfb.chain.long", owner + u"：只需 " + digits(std::int64_t(needed)) +
                                           u" 个扇区，链中却有 " + digits(std::int64_t(sectors)) +
                                           u" 个");
    }
}

Bytes ContainerSectors::claim(std::uint32_t first, std::uint64_t size, const std::u16string& owner,
                              Findings& findings) {
    if (size == 0 && first > cfb::lastSector) {
        return {};
    }
    const std::vector<std::uint32_t> chain = walk(fat_, first, owner, findings);
    tellLength(chain.size(), sectorSize_, size, owner, findings);
    Bytes bytes;
    for (const std::uint32_t number : chain) {
        const ByteView content = sector(number);
        bytes.insert(bytes.end(), content.begin(), content.end());
        const std::uint64_t end = std::min<std::uint64_t>(size, bytes.size() + sectorSize_);
        if (content.size() < sectorSize_ && bytes.size() < std::min(size, end)) {
            findings.add("cfb.sector", owner + u"：扇区 " + digits(number) + u" 超出文件末尾");
            break;
        }
    }
    return bytes;
}

Bytes ContainerSectors::claimAll(std::uint32_t first, const std::u16string& owner,
                                 Findings& findings) {
    Bytes bytes;
    for (const std::uint32_t number : walk(fat_, first, owner, findings)) {
        const ByteView content = sector(number);
        if (content.size() < sectorSize_) {
            findings.add("cfb.sector", owner + u"：扇区 " + digits(number) + u" 超出文件末尾");
            break;
        }
        bytes.insert(bytes.end(), content.begin(), content.end());
    }
    return bytes;
}

void ContainerSectors::setMiniStream(std::size_t size, Findings& findings) {
    const Bytes table = claimAll(header_.firstMiniFatSector, u"小扇区分配表", findings);
    if (table.size() / sectorSize_ != header_.miniFatSectors) {
        findings.add("cfb.minifat", u"小扇区分配表的扇区数与文件头不符");
    }
    miniFat_.next = numbersOf(table);
    miniFat_.owned.assign(miniFat_.next.size(), false);
    miniStreamSize_ = size;
}

void ContainerSectors::claimMini(std::uint32_t first, std::uint64_t size,
                                 const std::u16string& owner, Findings& findings) {
    if (size == 0 && first > cfb::lastSector) {
        return;
    }
    const std::vector<std::uint32_t> chain = walk(miniFat_, first, owner, findings);
    tellLength(chain.size(), miniSectorSize, size, owner, findings);
    for (const std::uint32_t number : chain) {
        if (std::uint64_t{number} * miniSectorSize >= miniStreamSize_) {
            findings.add("cfb.sector", owner + u"：小扇区 " + digits(number) + u" 在小流之外");
            break;
        }
    }
}

void ContainerSectors::checkLeftOver(Findings& findings) const {
    for (const Chains* chains : {&fat_, &miniFat_}) {
        for (std::size_t i = 0; i < chains->next.size(); ++i) {
            if (!chains->owned[i] && chains->next[i] != cfb::freeSector) {
                findings.add("cfb.orphan",
                             chains->name + digits(std::int64_t(i)) + u" 已分配却不属于任何流");
            }
        }
    }
}

} // namespace qvnd::word

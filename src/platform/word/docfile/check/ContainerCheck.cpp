#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/check/ContainerSectors.h"

#include "platform/word/docfile/container/CompoundFormat.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"

namespace qvnd::word {

namespace {

void checkHead(const ContainerSectors& sectors, Findings& findings) {
    const ContainerSectors::Header& head = sectors.header();
    const bool versionFits = (head.majorVersion == 3 && head.sectorShift == 9) ||
                             (head.majorVersion == 4 && head.sectorShift == 12);
    if (!versionFits) {
        findings.add("cfb.header", u"复合文档的版本与扇区大小不符");
    }
    if (head.byteOrder != 0xFFFE || head.miniSectorShift != 6 || head.miniCutoff != 4096) {
        findings.add("cfb.header", u"复合文档的文件头有不允许的值");
    }
}

// The FAT's own sectors and those of the DIFAT carry marks of their own in the FAT.
void checkTableMarks(const ContainerSectors& sectors, Findings& findings) {
    const ContainerSectors::Header& head = sectors.header();
    if (sectors.fatSectors().size() != head.fatSectors) {
        findings.add("cfb.difat", u"文件头写明 " + digits(head.fatSectors) +
                                      u" 个 FAT 扇区，实有 " +
                                      digits(std::int64_t(sectors.fatSectors().size())) + u" 个");
    }
    if (sectors.difatSectors().size() != head.difatSectors) {
        findings.add("cfb.difat", u"DIFAT 扇区的个数与文件头不符");
    }
    for (const std::uint32_t sector : sectors.fatSectors()) {
        if (sectors.next(sector) != cfb::fatSector) {
            findings.add("cfb.fat.mark", u"FAT 扇区 " + digits(sector) + u" 没有相应的标记");
        }
    }
    for (const std::uint32_t sector : sectors.difatSectors()) {
        if (sectors.next(sector) != cfb::difatSector) {
            findings.add("cfb.fat.mark", u"DIFAT 扇区 " + digits(sector) + u" 没有相应的标记");
        }
    }
}

} // namespace

void checkContainer(ByteView file, Findings& findings) {
    try {
        ContainerSectors sectors(file, findings);
        checkHead(sectors, findings);
        checkTableMarks(sectors, findings);
        checkDirectory(sectors, findings);
        sectors.checkLeftOver(findings);
    } catch (const FormatError&) {
        findings.add("cfb.header", u"不是复合文档，或文件头不完整");
    }
}

} // namespace qvnd::word

#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"
#include "platform/word/docfile/format/SpecialCharacters.h"

namespace qvnd::word {

namespace {

constexpr std::uint32_t noSepx = 0xFFFFFFFF;

void checkSepx(std::uint32_t fc, const std::u16string& where, const Evidence& evidence,
               Findings& findings) {
    if (fc == noSepx) {
        return;
    }
    try {
        LittleEndianReader reader(evidence.word, "Sepx");
        reader.seek(fc);
        checkPropertyList(reader.view(reader.u16()), ListPlace::section, where, evidence, findings);
    } catch (const FormatError&) {
        findings.add("section.place", where + u"的属性超出 WordDocument 流");
    }
}

void checkEnds(const Evidence& evidence, Findings& findings) {
    for (std::size_t i = 0; i + 1 < evidence.sectionEnds.size(); ++i) {
        const Cp end = evidence.sectionEnds[i];
        if (end != 0 && end <= evidence.text.size() &&
            evidence.text[end - 1] != special::pageBreak) {
            findings.add("section.mark",
                         u"第 " + digits(std::int64_t(i + 1)) + u" 节没有以分节符结束");
        }
    }
}

} // namespace

void checkSections(Evidence& evidence, Findings& findings) {
    constexpr std::size_t sedSize = 12;
    const Plc sections = decodePlc(evidence.at(FibPair::PlcfSed), sedSize);
    if (sections.count() == 0) {
        findings.add("section.none", u"文档没有节");
        return;
    }
    if (sections.positions.front() != 0) {
        findings.add("section.range", u"第一节没有从正文开头开始");
    }
    // The last section reaches to the end of the main text, or over the marks that close the file.
    if (sections.positions.back() < evidence.fib.ccp.text) {
        findings.add("section.range", u"最后一节没有到正文末尾");
    }
    for (std::size_t i = 0; i < sections.count(); ++i) {
        LittleEndianReader sed(sections.element(i), "Sed");
        sed.skip(2);
        checkSepx(sed.u32(), u"第 " + digits(std::int64_t(i + 1)) + u" 节", evidence, findings);
        evidence.sectionEnds.push_back(sections.positions[i + 1]);
    }
    if (!evidence.text.empty()) {
        checkEnds(evidence, findings);
    }
}

} // namespace qvnd::word

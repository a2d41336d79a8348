#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/PieceTable.h"

#include <algorithm>
#include <set>

namespace qvnd::word {

namespace {

// The properties that the Data stream holds for a paragraph that has too many for its page.
ByteView storedProperties(std::uint32_t offset, const std::u16string& where,
                          const Evidence& evidence, Findings& findings) {
    try {
        LittleEndianReader reader(evidence.data, "PrcData");
        reader.seek(offset);
        const ByteView sprms = reader.view(reader.u16());
        if (sprms.size() > longestPrc) {
            findings.add("text.huge", where + u"：另存的段落属性过长");
        }
        checkPropertyList(sprms, ListPlace::paragraph, where, evidence, findings);
        return sprms;
    } catch (const FormatError&) {
        findings.add("text.huge", where + u"：另存的段落属性超出 Data 流");
        return {};
    }
}

// All properties of the paragraph whose mark stands at `cp`.
Bytes propertiesAt(Cp cp, const Evidence& evidence, Findings& findings) {
    const TextPiece* piece = evidence.pieceOf(cp);
    const FormatRun* run = piece == nullptr ? nullptr : runAt(evidence.paragraphs, piece->fcOf(cp));
    if (run == nullptr) {
        return {};
    }
    Bytes sprms;
    for (const SprmView& entry : parseSprms(run->sprms).sprms) {
        if (entry.opcode == sprm::PHugePapx || entry.opcode == sprm::PTableProps) {
            LittleEndianReader operand(entry.operand, "sprmPHugePapx");
            append(sprms,
                   storedProperties(operand.u32(), placeOf(evidence, cp), evidence, findings));
        } else {
            append(sprms, entry.whole);
        }
    }
    append(sprms, modifierProperties(evidence.pieceLists, piece->prm));
    return sprms;
}

std::set<Cp> partEnds(const Evidence& evidence) {
    std::set<Cp> ends;
    Cp end = 0;
    for (const Cp length : evidence.partLengths()) {
        end += length;
        if (length != 0) {
            ends.insert(end);
        }
    }
    return ends;
}

void collect(Evidence& evidence, Findings& findings) {
    const std::set<Cp> sections(evidence.sectionEnds.begin(), evidence.sectionEnds.end());
    Cp begin = 0;
    for (Cp cp = 0; cp < evidence.text.size(); ++cp) {
        const char16_t c = evidence.text[cp];
        const bool ends = c == special::paragraphMark || c == special::cellMark ||
                          (c == special::pageBreak && sections.count(cp + 1) != 0);
        if (ends) {
            evidence.marked.push_back({begin, cp + 1, c, propertiesAt(cp, evidence, findings)});
            begin = cp + 1;
        }
    }
    if (begin != evidence.text.size()) {
        findings.add("text.end", u"文末没有段落标记");
    }
}

// Every part's last character ends a paragraph.
void checkPartEnds(const Evidence& evidence, Findings& findings) {
    for (const Cp end : partEnds(evidence)) {
        if (end > evidence.text.size() || evidence.text[end - 1] != special::paragraphMark) {
            findings.add("text.end", placeOf(evidence, end - 1) + u"应为段落标记");
        }
    }
}

// Where the pages let a paragraph end within the text, there is its mark.
void checkBoundaries(const Evidence& evidence, Findings& findings) {
    std::set<std::uint32_t> limits;
    for (const FormatRun& run : evidence.paragraphs) {
        limits.insert(run.end);
    }
    for (const TextPiece& piece : evidence.pieces) {
        const auto inside = limits.upper_bound(piece.fc);
        for (auto at = inside; at != limits.end() && *at <= piece.fcEnd(); ++at) {
            const std::uint32_t width = piece.wide ? 2 : 1;
            const Cp cp = piece.begin + (*at - piece.fc) / width;
            if ((*at - piece.fc) % width != 0 || cp == 0 || cp > evidence.text.size()) {
                continue;
            }
            const char16_t c = evidence.text[cp - 1];
            if (c != special::paragraphMark && c != special::cellMark && c != special::pageBreak) {
                findings.add("text.boundary",
                             placeOf(evidence, cp - 1) + u"：段落在没有段落标记处结束");
            }
        }
    }
}

} // namespace

void checkParagraphs(Evidence& evidence, Findings& findings) {
    if (evidence.text.empty()) {
        return;
    }
    checkPartEnds(evidence, findings);
    checkBoundaries(evidence, findings);
    collect(evidence, findings);
}

} // namespace qvnd::word

#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/text/PieceTable.h"

namespace qvnd::word {

namespace {

// Reads the property lists before the piece table; stands at the table's own bytes afterwards.
ByteView readClx(Evidence& evidence, Findings& findings) {
    constexpr unsigned prc = 1;
    constexpr unsigned pcdt = 2;
    LittleEndianReader reader(evidence.at(FibPair::Clx), "Clx");
    unsigned kind = reader.u8();
    while (kind == prc) {
        const ByteView list = reader.view(reader.u16());
        if (list.size() > longestPrc) {
            findings.add("piece.prc", u"片段属性 " +
                                          digits(std::int64_t(evidence.pieceLists.size())) +
                                          u" 过长");
        }
        evidence.pieceLists.emplace_back(list.begin(), list.end());
        kind = reader.u8();
    }
    if (kind != pcdt) {
        throw FormatError(FormatError::Kind::damaged, "Clx: clxt");
    }
    const ByteView table = reader.view(reader.u32());
    if (!reader.atEnd()) {
        findings.add("piece.clx", u"片段表之后还有多余的字节");
    }
    return table;
}

std::vector<TextPiece> readPieces(ByteView plcPcd) {
    constexpr std::size_t pcdSize = 8;
    constexpr std::uint32_t compressed = 0x40000000;
    const std::size_t count = plcPcd.size() < 4 ? 0 : (plcPcd.size() - 4) / (4 + pcdSize);
    LittleEndianReader positions(plcPcd, "PlcPcd");
    LittleEndianReader data(plcPcd, "PlcPcd");
    data.seek((count + 1) * 4);
    std::vector<TextPiece> pieces;
    Cp begin = positions.u32();
    for (std::size_t i = 0; i < count; ++i) {
        const Cp end = positions.u32();
        data.skip(2);
        const std::uint32_t place = data.u32();
        const bool wide = (place & compressed) == 0;
        const std::uint32_t fc = place & ~compressed & 0x7FFFFFFF;
        pieces.push_back({begin, end, wide ? fc : fc / 2, wide, data.u16()});
        begin = end;
    }
    return pieces;
}

// Whether the text can be put together from the pieces.
bool checkPlaces(const std::vector<TextPiece>& pieces, const Evidence& evidence,
                 Findings& findings) {
    bool usable = !pieces.empty();
    std::uint64_t total = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const TextPiece& piece = pieces[i];
        const std::u16string where = u"第 " + digits(std::int64_t(i)) + u" 个片段";
        if (piece.end <= piece.begin) {
            findings.add("piece.order", where + u"的位置没有递增");
            usable = usable && piece.end == piece.begin;
        } else if (piece.fcEnd() > evidence.word.size()) {
            findings.add("piece.place", where + u"超出 WordDocument 流");
            usable = false;
        } else {
            total += piece.end - piece.begin;
        }
    }
    // Every character stands in the stream once.
    return usable && pieces[0].begin == 0 && total <= evidence.word.size();
}

void checkTotal(const std::vector<TextPiece>& pieces, const Evidence& evidence,
                Findings& findings) {
    const std::uint64_t side = evidence.fib.ccp.sideTotal();
    const std::uint64_t counted = evidence.fib.ccp.text + side + (side != 0 ? 1 : 0);
    const std::uint64_t held = pieces.empty() ? 0 : pieces.back().end;
    if (pieces.empty() || pieces[0].begin != 0 || held != counted) {
        findings.add("piece.total", u"FIB 共有 " + digits(std::int64_t(counted)) +
                                        u" 个字符，片段表却有 " + digits(std::int64_t(held)) +
                                        u" 个");
    }
}

void checkModifiers(const std::vector<TextPiece>& pieces, const Evidence& evidence,
                    Findings& findings) {
    for (std::size_t i = 0; i < evidence.pieceLists.size(); ++i) {
        checkPropertyList(evidence.pieceLists[i], ListPlace::piece,
                          u"片段属性 " + digits(std::int64_t(i)), evidence, findings);
    }
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const bool names = (pieces[i].prm & 1) != 0;
        if (names && static_cast<std::size_t>(pieces[i].prm >> 1) >= evidence.pieceLists.size()) {
            findings.add("piece.prm",
                         u"第 " + digits(std::int64_t(i)) + u" 个片段所用的属性不存在");
        }
    }
}

std::u16string textOf(const std::vector<TextPiece>& pieces, ByteView word) {
    std::u16string text;
    for (const TextPiece& piece : pieces) {
        LittleEndianReader reader(word, "text");
        reader.seek(piece.fc);
        if (piece.wide) {
            text += reader.text(piece.end - piece.begin);
            continue;
        }
        for (const std::uint8_t byte : reader.view(piece.end - piece.begin)) {
            text.push_back(decompressed(byte));
        }
    }
    return text;
}

} // namespace

void checkPieces(Evidence& evidence, Findings& findings) {
    try {
        std::vector<TextPiece> pieces = readPieces(readClx(evidence, findings));
        checkTotal(pieces, evidence, findings);
        checkModifiers(pieces, evidence, findings);
        if (checkPlaces(pieces, evidence, findings)) {
            evidence.text = textOf(pieces, evidence.word);
            evidence.pieces = std::move(pieces);
        }
    } catch (const FormatError&) {
        findings.add("piece.clx", u"片段表不完整");
    }
}

} // namespace qvnd::word

#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"

#include <algorithm>
#include <array>

namespace qvnd::word {

namespace {

// What positions count.
enum class Counts : std::uint8_t {
    main,
    footnotes,
    headers,
    comments,
    endnotes,
    textBoxes,
    headerTextBoxes,
    all,
    bytes
};

struct Table {
    FibPair pair;
    std::size_t dataSize;
    Counts counts;
    const char16_t* name;
};

constexpr std::array<Table, 29> tables{{
    {FibPair::PlcffndRef, 2, Counts::main, u"PlcffndRef"},
    {FibPair::PlcffndTxt, 0, Counts::footnotes, u"PlcffndTxt"},
    {FibPair::PlcfandRef, 30, Counts::main, u"PlcfandRef"},
    {FibPair::PlcfandTxt, 0, Counts::comments, u"PlcfandTxt"},
    {FibPair::PlcfSed, 12, Counts::all, u"PlcfSed"},
    {FibPair::PlcfHdd, 0, Counts::headers, u"PlcfHdd"},
    {FibPair::PlcfBteChpx, 4, Counts::bytes, u"PlcBteChpx"},
    {FibPair::PlcfBtePapx, 4, Counts::bytes, u"PlcBtePapx"},
    {FibPair::PlcfFldMom, 2, Counts::main, u"PlcfFldMom"},
    {FibPair::PlcfFldHdr, 2, Counts::headers, u"PlcfFldHdr"},
    {FibPair::PlcfFldFtn, 2, Counts::footnotes, u"PlcfFldFtn"},
    {FibPair::PlcfFldAtn, 2, Counts::comments, u"PlcfFldAtn"},
    {FibPair::PlcfFldEdn, 2, Counts::endnotes, u"PlcfFldEdn"},
    {FibPair::PlcfFldTxbx, 2, Counts::textBoxes, u"PlcfFldTxbx"},
    {FibPair::PlcffldHdrTxbx, 2, Counts::headerTextBoxes, u"PlcffldHdrTxbx"},
    {FibPair::PlcfBkf, 4, Counts::all, u"PlcfBkf"},
    {FibPair::PlcfBkl, 0, Counts::all, u"PlcfBkl"},
    {FibPair::PlcfAtnBkf, 4, Counts::all, u"PlcfAtnBkf"},
    {FibPair::PlcfAtnBkl, 0, Counts::all, u"PlcfAtnBkl"},
    {FibPair::PlcSpaMom, 26, Counts::main, u"PlcSpaMom"},
    {FibPair::PlcSpaHdr, 26, Counts::headers, u"PlcSpaHdr"},
    {FibPair::PlcfendRef, 2, Counts::main, u"PlcfendRef"},
    {FibPair::PlcfendTxt, 0, Counts::endnotes, u"PlcfendTxt"},
    {FibPair::PlcftxbxTxt, 22, Counts::textBoxes, u"PlcftxbxTxt"},
    {FibPair::PlcfHdrtxbxTxt, 22, Counts::headerTextBoxes, u"PlcfHdrtxbxTxt"},
    {FibPair::PlcfTxbxBkd, 6, Counts::textBoxes, u"PlcfTxbxBkd"},
    {FibPair::PlcfTxbxHdrBkd, 6, Counts::headerTextBoxes, u"PlcfTxbxHdrBkd"},
    {FibPair::PlcfSpl, 2, Counts::all, u"PlcfSpl"},
    {FibPair::PlcfGram, 2, Counts::all, u"PlcfGram"},
}};

std::uint64_t limitOf(const Evidence& evidence, Counts counts) {
    const PartLengths& ccp = evidence.fib.ccp;
    switch (counts) {
    case Counts::main:
        return ccp.text;
    case Counts::footnotes:
        return ccp.footnotes;
    case Counts::headers:
        return ccp.headers;
    case Counts::comments:
        return ccp.comments;
    case Counts::endnotes:
        return ccp.endnotes;
    case Counts::textBoxes:
        return ccp.textBoxes;
    case Counts::headerTextBoxes:
        return ccp.headerTextBoxes;
    case Counts::bytes:
        return evidence.word.size();
    case Counts::all:
        break;
    }
    return ccp.text + ccp.sideTotal();
}

bool strictly(FibPair pair) {
    return pair == FibPair::PlcfSed || pair == FibPair::PlcfBteChpx || pair == FibPair::PlcfBtePapx;
}

void checkOrder(const Table& table, const Plc& plc, Findings& findings) {
    for (std::size_t i = 1; i < plc.positions.size(); ++i) {
        const bool falls = plc.positions[i] < plc.positions[i - 1];
        // The position that closes a table may be anything where the format says so.
        const bool last = i + 1 == plc.positions.size() && table.counts != Counts::bytes;
        const bool equal = strictly(table.pair) && plc.positions[i] == plc.positions[i - 1];
        if ((falls && !last) || equal) {
            findings.add("plc.order", std::u16string(table.name) + u" 的第 " +
                                          digits(std::int64_t(i)) + u" 个位置没有递增");
        }
    }
}

void checkLimit(const Evidence& evidence, const Table& table, const Plc& plc, Findings& findings) {
    constexpr std::uint64_t closing = 2; // behind the text: its last mark and the table's own end
    const std::uint64_t limit = limitOf(evidence, table.counts) + closing;
    for (std::size_t i = 0; i + 1 < plc.positions.size(); ++i) {
        if (plc.positions[i] > limit) {
            findings.add("plc.limit", std::u16string(table.name) + u" 的第 " +
                                          digits(std::int64_t(i)) + u" 个位置 " +
                                          digits(plc.positions[i]) + u" 超出文本末尾");
        }
    }
}

} // namespace

void checkPositions(const Evidence& evidence, Findings& findings) {
    for (const Table& table : tables) {
        const ByteView bytes = evidence.at(table.pair);
        if (bytes.empty()) {
            continue;
        }
        if (bytes.size() < 4 || (bytes.size() - 4) % (4 + table.dataSize) != 0) {
            findings.add("plc.size", std::u16string(table.name) + u" 的长度 " +
                                         digits(std::int64_t(bytes.size())) + u" 不对");
            continue;
        }
        const Plc plc = decodePlc(bytes, table.dataSize);
        checkOrder(table, plc, findings);
        checkLimit(evidence, table, plc, findings);
    }
}

} // namespace qvnd::word

#include "platform/word/docfile/text/DocumentVariables.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sttb.h"

#include <cstdint>
#include <string>
#include <unordered_set>
#include <utility>

namespace qvnd::word {

namespace {

constexpr unsigned extended = 0xFFFF; // a table of UTF-16 strings
constexpr std::uint16_t extraBytesOfName = 4;

bool isSignature(std::u16string_view name) { return name == u"Sign" || name == u"SigAgile"; }

// Where the values begin.
std::size_t sizeOf(const Sttb& names) {
    constexpr std::size_t head = 6;
    std::size_t size = head;
    for (const Sttb::Entry& entry : names.entries) {
        size += 2 + 2 * entry.text.size() + names.extraSize;
    }
    return size;
}

} // namespace

std::vector<DocumentVariable> decodeVariables(ByteView stwUser, Remarks& remarks) {
    std::vector<DocumentVariable> variables;
    if (stwUser.empty()) {
        return variables;
    }
    DecodedSttb names = decodeSttb(stwUser);
    LittleEndianReader reader(stwUser, "StwUser");
    std::unordered_set<std::u16string> seen;
    try {
        if (reader.u16() != extended || !names.complete) {
            throw FormatError(FormatError::Kind::damaged, "StwUser: names are missing");
        }
        reader.seek(sizeOf(names.table));
        for (Sttb::Entry& entry : names.table.entries) {
            std::u16string value = reader.text(reader.u16());
            const bool counts = !entry.text.empty() && !isSignature(entry.text);
            if (counts && seen.insert(entry.text).second) {
                variables.push_back({std::move(entry.text), std::move(value)});
            }
        }
    } catch (const FormatError&) {
        remarks.emplace_back(u"文档变量已损坏，未能全部读出。");
    }
    return variables;
}

Bytes encodeVariables(std::span<const DocumentVariable> variables) {
    if (variables.empty()) {
        return {};
    }
    Sttb names{{}, extraBytesOfName};
    names.entries.reserve(variables.size());
    for (const DocumentVariable& variable : variables) {
        names.entries.push_back({variable.name, {}});
    }
    LittleEndianWriter writer;
    writer.bytes(encodeSttb(names));
    for (const DocumentVariable& variable : variables) {
        writer.u16(static_cast<unsigned>(variable.value.size()));
        writer.text(variable.value);
    }
    return writer.take();
}

} // namespace qvnd::word

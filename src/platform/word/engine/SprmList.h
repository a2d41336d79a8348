#pragma once

#include "platform/word/docfile/container/Bytes.h"
#include "platform/word/docfile/document/PropertyLists.h"
#include "platform/word/docfile/format/Sprm.h"

namespace qvnd::word {

// A property list put together entry by entry. The operand's size is that of the opcode.
class SprmList {
public:
    SprmList& byte(SprmOpcode opcode, unsigned operand) {
        list_.u16(opcode);
        list_.u8(operand);
        return *this;
    }
    SprmList& word(SprmOpcode opcode, unsigned operand) {
        list_.u16(opcode);
        list_.u16(operand);
        return *this;
    }
    SprmList& dword(SprmOpcode opcode, std::uint32_t operand) {
        list_.u16(opcode);
        list_.u32(operand);
        return *this;
    }
    // The operand as it stands in the file, a length byte included.
    SprmList& bytes(SprmOpcode opcode, ByteView operand) {
        list_.u16(opcode);
        list_.bytes(operand);
        return *this;
    }
    PropertyListId in(PropertyLists& lists) const { return lists.intern(list_.data()); }
    ByteView data() const { return list_.data(); }

private:
    LittleEndianWriter list_;
};

} // namespace qvnd::word

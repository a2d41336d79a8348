#include "platform/word/check/SoundDocument.h"

#include "platform/word/docfile/format/Plc.h"
#include "support/ByteText.h"

#include <gtest/gtest.h>

// Each rule about notes: one thing broken breaks that rule and no other.
namespace qvnd::test {
namespace {

using namespace word;
using Rules = std::set<std::string>;

Rules rulesWithTable(FibPair pair, const Bytes& bytes) {
    SoundDocument document;
    document.file.parts[pair] = bytes;
    return brokenRules(document.bytes());
}

TEST(NoteRules, EveryReferenceMustHaveItsText) {
    EXPECT_EQ(rulesWithTable(FibPair::PlcffndTxt, encodePlc({0, 4}, {})), Rules{"note.count"});
}

TEST(NoteRules, ReferenceMustStandAtItsMark) {
    EXPECT_EQ(rulesWithTable(FibPair::PlcffndRef, encodePlc({1, 30}, hex("0100"))),
              Rules{"note.mark"});
    EXPECT_EQ(rulesWithTable(FibPair::PlcffndRef, encodePlc({1, 30}, hex("0000"))), Rules{});
}

} // namespace
} // namespace qvnd::test

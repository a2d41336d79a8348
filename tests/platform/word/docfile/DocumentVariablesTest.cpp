#include "platform/word/docfile/text/DocumentVariables.h"

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentOpening.h"
#include "support/ByteText.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace qvnd::word {
namespace {

using Variables = std::vector<DocumentVariable>;

const Variables two{{u"Project", u"桥梁"}, {u"Empty", u""}};

TEST(DocumentVariables, AreReadAsTheyAreWritten) {
    Remarks remarks;
    EXPECT_EQ(decodeVariables(encodeVariables(two), remarks), two);
    EXPECT_THAT(remarks, testing::IsEmpty());
    EXPECT_EQ(encodeVariables({}), Bytes());
}

TEST(DocumentVariables, AreNamesWithFourBytesEachAndThenTheValues) {
    EXPECT_EQ(encodeVariables(Variables{{u"A", u"bc"}}),
              test::hex("FFFF 0100 0400  0100 4100 00000000  0200 6200 6300"));
}

TEST(DocumentVariables, TheSignatureOfMacrosIsNone) {
    Remarks remarks;
    const Bytes bytes =
        encodeVariables(Variables{{u"Sign", u"x"}, {u"SigAgile", u"y"}, {u"A", u"b"}});
    EXPECT_EQ(decodeVariables(bytes, remarks), (Variables{{u"A", u"b"}}));
}

TEST(DocumentVariables, OfTwoWithOneNameTheFirstCounts) {
    Remarks remarks;
    const Bytes bytes = encodeVariables(Variables{{u"A", u"1"}, {u"A", u"2"}, {u"", u"3"}});
    EXPECT_EQ(decodeVariables(bytes, remarks), (Variables{{u"A", u"1"}}));
}

TEST(DocumentVariables, WhatIsDamagedIsSaid) {
    const Bytes whole = encodeVariables(two);
    for (std::size_t length = 1; length < whole.size(); ++length) {
        Remarks remarks;
        const Variables read = decodeVariables(ByteView(whole).first(length), remarks);
        EXPECT_LT(read.size(), two.size()) << length;
        EXPECT_THAT(remarks, testing::ElementsAre(u"文档变量已损坏，未能全部读出。")) << length;
    }
}

TEST(DocumentVariables, StayInADocumentThatIsOpenedAndSaved) {
    test::WordFile file = test::plainWordFile(u"text\r");
    file.parts[FibPair::StwUser] = encodeVariables(two);
    const auto folder = std::make_shared<test::MemoryFolder>();
    DocumentWriter(folder).saveAs("/a.doc", openedDocument(readDocument(test::wordFile(file))));
    EXPECT_EQ(readDocument(folder->bytes("/a.doc")).information.variables, two);
}

} // namespace
} // namespace qvnd::word

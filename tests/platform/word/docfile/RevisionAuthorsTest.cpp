#include "platform/word/docfile/text/RevisionAuthors.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

TEST(RevisionAuthors, ReadsBackWhatItWrites) {
    const std::vector<std::u16string> authors{u"Unknown", u"张工"};
    Remarks remarks;
    EXPECT_EQ(decodeRevisionAuthors(encodeRevisionAuthors(authors), remarks), authors);
    EXPECT_TRUE(remarks.empty());
}

TEST(RevisionAuthors, NoAuthorIsNoTable) { EXPECT_TRUE(encodeRevisionAuthors({}).empty()); }

TEST(RevisionAuthors, TableThatEndsEarlyIsNamed) {
    Bytes bytes = encodeRevisionAuthors({u"Unknown", u"张工"});
    bytes.resize(bytes.size() - 1);
    Remarks remarks;
    EXPECT_EQ(decodeRevisionAuthors(bytes, remarks).size(), 1U);
    EXPECT_EQ(remarks.at(0), u"修订者名单已损坏，只读入了前 1 项");
}

} // namespace
} // namespace qvnd::word

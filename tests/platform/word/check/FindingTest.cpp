#include "platform/word/docfile/check/Finding.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

std::vector<Finding> found(int count) {
    Findings findings;
    for (int i = 0; i < count; ++i) {
        findings.add("rule", u"text");
    }
    return findings.take();
}

TEST(FindingsOfOneRule, AreToldUpToTwentyAndTheFurtherOnesCounted) {
    EXPECT_EQ(found(20).size(), 20U);
    EXPECT_EQ(found(20).back().text, u"text");
    for (const int further : {1, 30}) {
        const std::vector<Finding> findings = found(20 + further);
        ASSERT_EQ(findings.size(), 21U);
        EXPECT_EQ(findings[19].text, u"text");
        EXPECT_EQ(findings.back().rule, "rule");
        EXPECT_EQ(findings.back().text,
                  u"同类问题还有 " + std::u16string(further == 1 ? u"1" : u"30") + u" 处");
    }
}

} // namespace
} // namespace qvnd::word

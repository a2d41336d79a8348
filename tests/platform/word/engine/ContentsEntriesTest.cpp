#include "platform/word/engine/ContentsEntries.h"

#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ContentBuilder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

using test::plain;
using test::Words;

Words marked(std::u16string text, SprmOpcode opcode, unsigned value = 1) {
    return {std::move(text), withSprm8({}, opcode, value)};
}

// The texts of the entries that a heading of these words gives.
std::vector<std::u16string> entriesOf(const std::vector<Words>& heading) {
    test::ContentBuilder builder;
    builder.add(heading, 1);
    WorkingDocument document(std::move(builder.content));
    std::vector<std::u16string> texts;
    for (const ContentsEntry& entry : contentsEntries(document, {})) {
        texts.push_back(entry.text);
    }
    return texts;
}

using Texts = std::vector<std::u16string>;

TEST(ContentsEntries, TextMarkedAsDeletedIsNotListed) {
    EXPECT_EQ(entriesOf({plain(u"第一章"), marked(u"旧名", sprm::CFRMarkDel), plain(u"总则\r")}),
              Texts{u"第一章总则"});
    EXPECT_EQ(entriesOf({marked(u"旧章", sprm::CFRMarkDel), plain(u"\r")}), Texts{});
}

TEST(ContentsEntries, HiddenTextIsNotListed) {
    EXPECT_EQ(entriesOf({plain(u"第一章"), marked(u"密", sprm::CFVanish), plain(u"总则\r")}),
              Texts{u"第一章总则"});
}

TEST(ContentsEntries, TextThatIsMarkedAsNeitherIsListed) {
    EXPECT_EQ(entriesOf({marked(u"留", sprm::CFRMarkDel, 0), marked(u"下", sprm::CFVanish, 0),
                         plain(u"\r")}),
              Texts{u"留下"});
}

TEST(ContentsEntries, HeadingsOfOneFragmentMayShareRunsAndBeAskedForAgain) {
    test::ContentBuilder builder;
    builder.add({plain(u"甲\r乙"), marked(u"密\r丙", sprm::CFVanish), plain(u"丁\r")}, 1);
    WorkingDocument document(std::move(builder.content));
    for (int round = 0; round < 2; ++round) {
        std::vector<std::u16string> texts;
        for (const ContentsEntry& entry : contentsEntries(document, {})) {
            texts.push_back(entry.text);
        }
        EXPECT_EQ(texts, (Texts{u"甲", u"乙", u"丁"}));
    }
    document.main().erase(0, 3); // the slice begins in the midst of its fragment
    const auto entries = contentsEntries(document, {});
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].text, u"丁");
}

TEST(ContentsEntries, AHyphenThatDoesNotBreakIsOneAndTabsAndLinesAreBlanks) {
    EXPECT_EQ(entryText(u"a\u001Eb\tc\vd"), u"a-b c d");
    EXPECT_EQ(entryText(u"a\u001F\u0001b"), u"ab") << "what does not print is left out";
    EXPECT_EQ(entryText(u" \u3000a b\u3000 "), u"a b");
    EXPECT_EQ(entryText(u" \u3000"), u"");
    EXPECT_EQ(entryText(u""), u"");
}

TEST(ContentsEntries, OfAFieldTheResultIsListed) {
    EXPECT_EQ(entryText(u"a\u0013 CODE \u0014res\u0015b"), u"aresb");
    EXPECT_EQ(entryText(u"a\u0013 CODE \u0015b"), u"ab");
}

} // namespace
} // namespace qvnd::word

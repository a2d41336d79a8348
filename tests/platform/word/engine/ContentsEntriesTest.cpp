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

} // namespace
} // namespace qvnd::word

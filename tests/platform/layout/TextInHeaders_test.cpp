// What headers and footers show of the text of their pages: chapters.

#include "platform/error/Utf8.h"
#include "platform/layout/PagedDocument.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qvnd::layout {
namespace {

using word::Bytes;
using word::HeaderKind;
using word::withSprm16;
using word::withSprm8;
namespace sprm = word::sprm;

constexpr std::uint8_t pageField = 0x21;

class TextInHeaders : public test::PagedDocument {
protected:
    // A paragraph in the style of headings of that level.
    void heading(const std::u16string& text, word::StyleIndex level = 1, const Bytes& own = {}) {
        type(text + u"\r", own);
        main.paragraphs.back().style = level;
    }
    // Lists of that text for each level; 0 to 8 stand for the numbers.
    void numberHeadings(const std::vector<std::u16string>& texts) {
        word::ListDefinition list = numberedList(0);
        for (std::size_t level = 0; level < texts.size(); ++level) {
            list.levels[level] = list.levels[0];
            list.levels[level].text = texts[level];
        }
        document.tables.listDefinitions = {list};
        document.tables.listOverrides = {{77, 0, 0, {}}};
    }
    static Bytes numbered(unsigned level = 0) {
        return withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, level);
    }
    static Bytes withChapters(unsigned level, unsigned separator = 0) {
        return withSprm8(withSprm8(section(), sprm::SiHeadingPgn, level), sprm::ScnsPgn, separator);
    }
    void setSection(const Bytes& list) { document.sections[0].properties = intern(list); }
    // A header of fields, nested as braces say; each bar parts an instruction from its result.
    void putFields(const std::u16string& text, std::vector<std::uint8_t> kinds) {
        word::Story header = story(text + u"\r");
        std::size_t kind = 0;
        for (word::Cp at = 0; at < header.text.size(); ++at) {
            char16_t& c = header.text[at];
            if (c == u'{' || c == u'|' || c == u'}') {
                c = c == u'{' ? u'\x13' : c == u'|' ? u'\x14' : u'\x15';
                const bool begins = c == u'\x13';
                header.fields.push_back({at, static_cast<std::uint8_t>(c),
                                         begins ? kinds.at(kind++) : std::uint8_t{0}});
            }
        }
        putHeader(HeaderKind::oddHeader, header);
    }
    // What stands on each page in front of its first line of text.
    std::vector<std::string> headers() {
        std::vector<std::string> result;
        for (const Page& page : pages()) {
            std::u16string header;
            for (const PlacedText& run : page.layer.texts) {
                header += run.baseline < 1000 ? run.text : std::u16string();
            }
            result.push_back(toUtf8(header));
        }
        return result;
    }
    using Texts = std::vector<std::string>;
};

TEST_F(TextInHeaders, APageNumberHasTheNumberOfItsChapterInFront) {
    numberHeadings({std::u16string(u"第\0章", 3)});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"总则", 1, numbered());
    paragraphs(10);
    heading(u"施工", 1, numbered());
    EXPECT_EQ(headers(), (Texts{"1-1", "2-2"}));
    EXPECT_EQ(pages().at(1).numberText, u"2-2");
}

TEST_F(TextInHeaders, TheSignBetweenChapterAndPageIsThatOfTheSection) {
    numberHeadings({std::u16string(u"\0.", 2)});
    putFields(u"{PAGE|9}", {pageField});
    heading(u"总则", 1, numbered());
    const std::vector<std::string> signs{"-", ".", ":", "—", "–", "-"};
    for (unsigned sign = 0; sign < signs.size(); ++sign) {
        setSection(withChapters(1, sign));
        EXPECT_EQ(headers(), Texts{"1" + signs[sign] + "1"});
    }
}

TEST_F(TextInHeaders, AChapterIsTheFirstThatBeginsOnThePageOrElseTheLastBeforeIt) {
    numberHeadings({std::u16string(1, u'\0')});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    paragraphs(10);
    heading(u"甲", 1, numbered());
    paragraphs(8);
    heading(u"乙", 1, numbered());
    paragraphs(8);
    heading(u"丙", 1, numbered());
    heading(u"丁", 1, numbered());
    paragraphs(10);
    EXPECT_EQ(headers(), (Texts{"1", "1-2", "3-3", "4-4"})) << "none before the first heading";
}

TEST_F(TextInHeaders, AChapterWithoutANumberIsThatOfAHigherHeadingOrNone) {
    document.tables.styles.styles[2] = document.tables.styles.styles[1];
    document.tables.styles.styles[2]->sti = 2;
    numberHeadings({std::u16string(1, u'\0'), std::u16string(u"\0.\1", 3)});
    setSection(withChapters(2));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"甲", 1, numbered());
    paragraphs(9);
    heading(u"乙", 2, numbered(1));
    EXPECT_EQ(headers(), (Texts{"1-1", "1.1-2"}));
    main = {};
    heading(u"甲");
    EXPECT_EQ(headers(), Texts{"1"});
}

TEST_F(TextInHeaders, InTheOfficeSuitePageNumbersHaveNoChapters) {
    options = officeOptions();
    numberHeadings({std::u16string(1, u'\0')});
    setSection(withChapters(1));
    putFields(u"{PAGE|9}", {pageField});
    heading(u"甲", 1, numbered());
    EXPECT_EQ(headers(), Texts{"1"});
}

} // namespace
} // namespace qvnd::layout

#include "platform/word/layout/SectionPages.h"

#include "platform/layout/PagedDocument.h"

namespace qvnd::word {
namespace {

using Start = ResolvedSection::Start;

TEST(SectionPages, OneThatBeginsOnAnEvenOrOddPageLeavesTheOtherEmpty) {
    const auto skips = [](Start start, int number) {
        ResolvedSection section;
        section.start = start;
        return skipsPage(section, number);
    };
    EXPECT_TRUE(skips(Start::evenPage, 1));
    EXPECT_FALSE(skips(Start::evenPage, 2));
    EXPECT_FALSE(skips(Start::oddPage, 1));
    EXPECT_TRUE(skips(Start::oddPage, 2));
    for (const Start start : {Start::continuous, Start::page}) {
        EXPECT_FALSE(skips(start, 1));
        EXPECT_FALSE(skips(start, 2));
    }
}

// Sections of ten characters each; the first page of each as another program has it.
class NumberedSections : public test::PagedDocument {
protected:
    NumberedSections() { document.sections.clear(); }
    void add(const Bytes& properties) { document.sections.push_back({10, intern(properties)}); }
    std::u16string shown(const std::vector<int>& firstSheets, Cp position, int sheet) {
        return PageNumbering(document, firstSheets).shown(position, sheet);
    }
};

TEST_F(NumberedSections, CountOnFromTheSectionBefore) {
    add({});
    add({});
    EXPECT_EQ(shown({0, 3}, 9, 2), u"3");
    EXPECT_EQ(shown({0, 3}, 10, 3), u"4");
    EXPECT_EQ(shown({0, 3}, 10, 5), u"6");
}

TEST_F(NumberedSections, CountAnewFromTheirFirstNumberInTheirForm) {
    constexpr unsigned smallRoman = 2;
    add({});
    add(withSprm8(withSprm16(withSprm8({}, sprm::SFPgnRestart, 1), sprm::SPgnStart97, 5),
                  sprm::SNfcPgn, smallRoman));
    EXPECT_EQ(shown({0, 3}, 9, 3), u"4");
    EXPECT_EQ(shown({0, 3}, 10, 3), u"v");
    EXPECT_EQ(shown({0, 3}, 19, 4), u"vi");
}

TEST_F(NumberedSections, CountTheEmptyPageThatTheOtherProgramLeavesOut) {
    constexpr unsigned evenPage = 3;
    add({});
    add(withSprm8({}, sprm::SBkc, evenPage));
    EXPECT_EQ(shown({0, 1}, 10, 1), u"2");
    EXPECT_EQ(shown({0, 2}, 10, 2), u"4");
    document.sections.pop_back();
    add(withSprm16(withSprm8(withSprm8({}, sprm::SBkc, evenPage), sprm::SFPgnRestart, 1),
                   sprm::SPgnStart97, 5));
    EXPECT_EQ(shown({0, 2}, 10, 2), u"5") << "the number that it says";
}

TEST_F(NumberedSections, HaveTheirChapterInFrontOfTheirNumbers) {
    document.tables.listDefinitions = {numberedList(0)};
    document.tables.listOverrides = {{77, 0, 0, {}}};
    main = story(u"一二三四五六七八九\r总则\r一二三四五六\r",
                 withSprm8(withSprm16({}, sprm::PIlfo, 1), sprm::PIlvl, 0));
    main.paragraphs[1].style = 1;
    document.main = slicesOf(main);
    add(withSprm8({}, sprm::SiHeadingPgn, 1));
    add(withSprm8({}, sprm::SiHeadingPgn, 1));
    EXPECT_EQ(shown({0, 1}, 9, 0), u"1");
    EXPECT_EQ(shown({0, 1}, 10, 1), u"2-2");
}

TEST_F(NumberedSections, WithoutAPageOfTheirOwnCountAsTheSectionBefore) {
    add({});
    add(withSprm16(withSprm8({}, sprm::SFPgnRestart, 1), sprm::SPgnStart97, 5));
    EXPECT_EQ(shown({0}, 10, 1), u"2");
    EXPECT_EQ(shown({}, 10, 1), u"2");
    EXPECT_EQ(shown({0, 1, 2}, 10, 1), u"5") << "there is no third one";
}

} // namespace
} // namespace qvnd::word

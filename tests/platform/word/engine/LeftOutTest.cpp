#include "platform/word/engine/LeftOut.h"

#include "platform/word/engine/ImportFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

// What is told of structures that no document of this program holds.
namespace qvnd::word {
namespace {

using namespace importing;
using testing::ElementsAre;

TEST(LeftOut, WhatIsOfTheContentIsNamedWhetherInsertedOrOpened) {
    SourceDocument source;
    source.paragraph(u"a");
    source.data.unread.kinds = {UnreadKind::embeddedFonts,   UnreadKind::mailMerge,
                                UnreadKind::contentControls, UnreadKind::subdocuments,
                                UnreadKind::editableRanges,  UnreadKind::moveMarks,
                                UnreadKind::autoText};
    const std::vector<std::u16string> lines{
        u"嵌入的字体未能带入，没有安装这些字体的电脑会用别的字体显示",
        u"邮件合并的设置未能带入",
        u"内容控件未能带入，其文字不变",
        u"主控文档与子文档的链接未能带入",
        u"允许编辑的区域未能带入，其文字不变",
        u"修订中的移动标记未能带入，其文字不变",
        u"自动图文集未能带入"};
    EXPECT_EQ(ImportTarget().import(source.document()).leftOut, lines);
    EXPECT_EQ(leftOutOfOpened(source.document(), {}), lines);
}

TEST(LeftOut, WhatIsOfTheFileIsNamedWhereItIsOpened) {
    SourceDocument source;
    source.paragraph(u"a");
    source.data.unread.kinds = {UnreadKind::captions,       UnreadKind::routing,
                                UnreadKind::envelope,       UnreadKind::writePassword,
                                UnreadKind::readOnlyAdvice, UnreadKind::signature,
                                UnreadKind::customXml};
    EXPECT_THAT(ImportTarget().import(source.document()).leftOut, ElementsAre());
    EXPECT_THAT(leftOutOfOpened(source.document(), {}),
                ElementsAre(u"自动插入题注的设置未能带入", u"传送名单未能带入",
                            u"邮件的信头未能带入", u"修改权限密码未能带入",
                            u"建议以只读方式打开的设置未能带入", u"数字签名未能带入",
                            u"附带的 XML 数据未能带入，正文不变"));
}

TEST(LeftOut, VariablesOfADocumentStayBehindWhereItIsInserted) {
    SourceDocument source;
    source.paragraph(u"a");
    source.data.information.variables = {{u"Project", u"桥梁"}};
    EXPECT_THAT(ImportTarget().import(source.document()).leftOut,
                ElementsAre(u"文档变量未能带入，显示它们的域保持现有的文字"));
    EXPECT_THAT(leftOutOfOpened(source.document(), {}), ElementsAre());
}

TEST(LeftOut, AFieldOfAnObjectWithoutItsPictureGoesWhole) {
    constexpr std::uint8_t embed = 58;
    constexpr std::uint8_t control = 87;
    constexpr std::uint8_t other = 33;
    for (const std::uint8_t kind : {embed, control, other}) {
        SourceDocument source;
        source.run(u"a\u0013 CODE \u0015b\r");
        source.main.fields.at(0).data = kind;
        source.endParagraph();
        ImportTarget target;
        target.import(source.document());
        EXPECT_EQ(target.last.text->text, kind == other ? source.main.text : u"ab\r");
        EXPECT_EQ(target.last.text->fields.size(), kind == other ? 2U : 0U);
        EXPECT_EQ(target.last.leftOut.size(), kind == other ? 0U : 1U);
    }
}

TEST(SectionsThatComeAlong, AreAsLongAsTheTextWhateverTheirFileSays) {
    for (const Cp length : {Cp{0}, Cp{2}, Cp{5}, Cp{99}}) {
        SourceDocument source;
        source.paragraph(u"text");
        source.data.sections = {{length, PropertyListId::empty}, {1, PropertyListId::empty}};
        ImportTarget target;
        target.import(source.document());
        Cp total = 0;
        for (const SectionRun& section : target.last.sections) {
            total += section.length;
        }
        EXPECT_EQ(total, 5U) << length;
    }
}

TEST(ListsThatComeAlong, KeepTheirNumberWhereItIsFree) {
    SourceDocument source;
    source.paragraph(u"1", 0, sprm16(sprm::PIlfo, source.addList(7, 0)));
    ImportTarget target;
    target.import(source.document());
    ASSERT_EQ(target.tables.listDefinitions.size(), 1U);
    EXPECT_EQ(target.tables.listDefinitions[0].lsid, 7);
    SourceDocument other;
    other.paragraph(u"1", 0, sprm16(sprm::PIlfo, other.addList(7, 1)));
    target.import(other.document());
    ASSERT_EQ(target.tables.listDefinitions.size(), 2U);
    EXPECT_NE(target.tables.listDefinitions[1].lsid, 7);
}

} // namespace
} // namespace qvnd::word

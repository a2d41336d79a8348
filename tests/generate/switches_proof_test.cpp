#include "generate/SettingsProof.h"

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;

// The settings that no table holds, as the document shows them.
namespace {

class SwitchesProof : public SettingsProof {};

const QString usualHeadings = u"第一章 施工部署|第一节 编制说明|第一小节 编制依据|第二章 附则"_s;

} // namespace

TEST_F(SwitchesProof, MultiLevelNumbersTakeTheCountersOfAllLevels) {
    EXPECT_EQ(generated().headings(), usualHeadings);
    switches.gMultLevelOn = true;
    EXPECT_EQ(generated().headings(),
              u"第1章 施工部署|第1.1节 编制说明|第1.1.1小节 编制依据|第2章 附则"_s);
    switches.gMultLevelMode = 1;
    EXPECT_EQ(generated().headings(), u"1 施工部署|1.1 编制说明|1.1.1 编制依据|2 附则"_s);
}

TEST_F(SwitchesProof, TheThirdModeOfMultiLevelNumbersPutsItsTextAroundTheFirstLevel) {
    switches.gMultLevelOn = true;
    switches.gMultLevelMode = 2;
    switches.gMultLevelText = u"第篇"_s;
    EXPECT_EQ(generated().headings(), u"第1篇 施工部署|1.1 编制说明|1.1.1 编制依据|第2篇 附则"_s);
    switches.gMultLevelText = u"总第章"_s;
    EXPECT_EQ(generated().headings(),
              u"总1第章 施工部署|1.1 编制说明|1.1.1 编制依据|总2第章 附则"_s);
}

TEST_F(SwitchesProof, MultiLevelNumbersIgnoreTheTitleFlagOfALevel) {
    change(settings(), u"章节设置表"_s, u"带该级标题"_s, u"否");
    EXPECT_TRUE(generated().headings().startsWith(u"一 施工部署|"_s));
    switches.gMultLevelOn = true;
    EXPECT_TRUE(generated().headings().startsWith(u"第1章 施工部署|"_s));
}

TEST_F(SwitchesProof, BlankLinesStandBehindAHeadingAndBehindItsText) {
    const DocumentProbe without = generated();
    EXPECT_EQ(without.blanksBehind(u"第一节 编制说明"_s), 0);
    switches.gBlankLineAroundTitle = true;
    const DocumentProbe with = generated();
    EXPECT_EQ(with.blanksBehind(u"第一节 编制说明"_s), 1);
    EXPECT_EQ(with.blanksBehind(u"说明正文"_s), without.blanksBehind(u"说明正文"_s) + 1);
}

TEST_F(SwitchesProof, ADocumentBelowADocumentBecomesANumberedParagraph) {
    controls.style = u"a)"_s;
    EXPECT_EQ(generated().headings(), usualHeadings) << "the style alone changes nothing";
    switches.gChildDocAsNumber = true;
    const std::pair<QString, QString> styles[] = {
        {u""_s, u"1 编制依据"_s},    {u"无"_s, u"编制依据"_s},    {u"1、"_s, u"1、 编制依据"_s},
        {u"1."_s, u"1. 编制依据"_s}, {u"A."_s, u"A. 编制依据"_s}, {u"1)"_s, u"1) 编制依据"_s},
        {u"a)"_s, u"a) 编制依据"_s}, {u"A)"_s, u"A) 编制依据"_s}, {u"I."_s, u"I. 编制依据"_s},
    };
    for (const auto& [style, line] : styles) {
        controls.style = style;
        const DocumentProbe document = generated();
        EXPECT_EQ(document.headings(), u"第一章 施工部署|第一节 编制说明|第二章 附则"_s);
        EXPECT_NE(document.lookOf(line), u"none"_s) << line.toStdString();
    }
}

// A character's width is that of the text, twelve points.
TEST_F(SwitchesProof, TheTextOfANumberedDocumentIsIndentedByCharacters) {
    EXPECT_EQ(generated().indentOf(u"依据正文"_s), 0);
    switches.gChildDocAsNumber = true;
    EXPECT_EQ(generated().indentOf(u"依据正文"_s), 2 * 12);
    controls.indent = u"4"_s;
    EXPECT_EQ(generated().indentOf(u"依据正文"_s), 4 * 12);
}

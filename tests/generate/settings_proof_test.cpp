#include "generate/SettingsProof.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/Gif.h"
#include "support/Images.h"
#include "support/Text.h"

#include <QSet>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;

// Each field of the working tables, changed, and what of it a reader finds in the document.
namespace {

Ask lookOf(const QString& text) {
    return [text](const DocumentProbe& document) { return document.lookOf(text); };
}
Ask section(word::SprmOpcode opcode) {
    return [opcode](const DocumentProbe& document) {
        return QString::number(document.section(opcode));
    };
}
QString contents(const DocumentProbe& document) { return document.contents(); }
QString header(const DocumentProbe& document) { return document.header(); }
QString footer(const DocumentProbe& document) { return document.footer(); }
QString leader(const DocumentProbe& document) { return QString::number(document.leader()); }
QString picture(const DocumentProbe& document) { return document.picture(); }
QString top(const DocumentProbe& document) { return QString::number(document.paper().top / 20.0); }
QString bottom(const DocumentProbe& document) {
    return QString::number(document.paper().bottom / 20.0);
}
QString left(const DocumentProbe& document) {
    return QString::number(document.paper().left / 20.0);
}
QString right(const DocumentProbe& document) {
    return QString::number(document.paper().right / 20.0);
}

const QString first = u"第一章 施工部署"_s;
const QString usualLook = u"仿宋_GB2312 12 bold centre"_s;

std::vector<Change> headingChanges() {
    return {{u"字体"_s, u"黑体", lookOf(first), usualLook, u"黑体 12 bold centre"_s},
            {u"字号"_s, u"三号", lookOf(first), usualLook, u"仿宋_GB2312 16 bold centre"_s},
            {u"位置"_s, u"左", lookOf(first), usualLook, u"仿宋_GB2312 12 bold left"_s},
            {u"位置"_s, u"右", lookOf(first), usualLook, u"仿宋_GB2312 12 bold right"_s},
            {u"前缀"_s, u"卷", lookOf(u"卷一章 施工部署"_s), u"none"_s, usualLook},
            {u"后缀"_s, u"篇", lookOf(u"第一篇 施工部署"_s), u"none"_s, usualLook},
            {u"序号标志"_s, u"A型", lookOf(u"第A章 施工部署"_s), u"none"_s, usualLook},
            {u"序号标志"_s, u"aa型", lookOf(u"第a章 施工部署"_s), u"none"_s, usualLook},
            {u"序号标志"_s, u"I型", lookOf(u"第1章 施工部署"_s), u"none"_s, usualLook},
            {u"序号标志"_s, u"a型", lookOf(u"第1章 施工部署"_s), u"none"_s, usualLook},
            {u"带该级标题"_s, u"否", lookOf(u"一 施工部署"_s), u"none"_s, usualLook}};
}

std::vector<Change> pageChanges() {
    const QString body = u"仿宋_GB2312 12 plain justified"_s;
    return {
        {u"页边距上"_s, 3.0F, top, u"42.5"_s, u"85.05"_s},
        {u"页边距下"_s, 3.0F, bottom, u"42.5"_s, u"85.05"_s},
        {u"页边距左"_s, 3.0F, left, u"42.5"_s, u"85.05"_s},
        {u"页边距右"_s, 3.0F, right, u"42.5"_s, u"85.05"_s},
        {u"装订距离"_s, 2.0F, left, u"42.5"_s, u"99.2"_s},
        {u"距页眉"_s, 2.0F, section(word::sprm::SDyaHdrTop), u"567"_s, u"1134"_s},
        {u"距页脚"_s, 2.0F, section(word::sprm::SDyaHdrBottom), u"567"_s, u"1134"_s},
        {u"正文字体"_s, u"楷体", lookOf(u"说明正文"_s), body, u"楷体 12 plain justified"_s},
        {u"正文字号"_s, u"小五", lookOf(u"说明正文"_s), body, u"仿宋_GB2312 9 plain justified"_s}};
}

// With a gutter of two centimetres.
std::vector<Change> gutterChanges() {
    return {{u"装订位置"_s, u"顶", top, u"42.5"_s, u"99.2"_s},
            {u"装订位置"_s, u"顶", left, u"99.2"_s, u"42.5"_s}};
}

std::vector<Change> contentsChanges() {
    const QString all = u"第一章 施工部署 7|第一节 编制说明 7|第一小节 编制依据 7|第二章 附则 7"_s;
    QString aligned = all;
    aligned.replace(u" 7"_s, u"\t7"_s);
    QString unnumbered = all;
    unnumbered.remove(u" 7"_s);
    return {
        {u"是否右对齐"_s, u"是", contents, all, aligned},
        {u"是否显示页码"_s, u"否", contents, all, unnumbered},
        {u"显示级别"_s, 1, contents, all, u"第一章 施工部署 7|第二章 附则 7"_s},
        {u"显示级别"_s, 2, contents, all, u"第一章 施工部署 7|第一节 编制说明 7|第二章 附则 7"_s}};
}

// With page numbers at the right.
std::vector<Change> leaderChanges() {
    return {{u"制表样式"_s, u"断连线", leader, u"1"_s, u"2"_s},
            {u"制表样式"_s, u"连连线", leader, u"1"_s, u"3"_s},
            {u"制表样式"_s, u"重虚线", leader, u"1"_s, u"4"_s},
            {u"制表样式"_s, u"无", leader, u"1"_s, u"0"_s}};
}

// The font is set before the selection goes into the story: that of the header shapes the footer,
// that of the footer nothing, and the header keeps the font of its style.
std::vector<Change> storyChanges() {
    const QString head = u"页眉: 宋体 9 plain centre"_s;
    const QString foot = u"页脚: 仿宋_GB2312 12 plain centre"_s;
    return {{u"是否带页眉"_s, u"否", header, head, u"empty"_s},
            {u"页眉内容"_s, u"滨江工程", header, head, u"滨江工程: 宋体 9 plain centre"_s},
            {u"页眉位置"_s, u"左", header, head, u"页眉: 宋体 9 plain left"_s},
            {u"页眉位置"_s, u"右", header, head, u"页眉: 宋体 9 plain right"_s},
            {u"页眉字体"_s, u"黑体", header, head, head},
            {u"页眉字体"_s, u"黑体", footer, foot, u"页脚: 黑体 12 plain centre"_s},
            {u"页眉字号"_s, u"三号", header, head, head},
            {u"页眉字号"_s, u"三号", footer, foot, u"页脚: 仿宋_GB2312 16 plain centre"_s},
            {u"是否带页脚"_s, u"否", footer, foot, u"empty"_s},
            {u"页脚内容"_s, u"一建公司", footer, foot, u"一建公司: 仿宋_GB2312 12 plain centre"_s},
            {u"页脚位置"_s, u"左", footer, foot, u"页脚: 仿宋_GB2312 12 plain left"_s},
            {u"页脚位置"_s, u"右", footer, foot, u"页脚: 仿宋_GB2312 12 plain right"_s},
            {u"页脚字体"_s, u"黑体", header, head, head},
            {u"页脚字体"_s, u"黑体", footer, foot, foot},
            {u"页脚字号"_s, u"三号", header, head, head},
            {u"页脚字号"_s, u"三号", footer, foot, foot}};
}

// Without a header the selection stands in the footer already when its font is set.
std::vector<Change> footerAloneChanges() {
    const QString foot = u"页脚: 仿宋_GB2312 12 plain centre"_s;
    return {{u"页脚字体"_s, u"黑体", footer, foot, u"页脚: 黑体 12 plain centre"_s},
            {u"页脚字号"_s, u"三号", footer, foot, u"页脚: 仿宋_GB2312 16 plain centre"_s},
            {u"页眉字体"_s, u"黑体", footer, foot, foot},
            {u"页眉字号"_s, u"三号", footer, foot, foot}};
}

std::vector<Change> coverChanges() {
    const QString bold = u"仿宋_GB2312 12 bold centre"_s;
    const QString plain = u"仿宋_GB2312 12 plain centre"_s;
    const Ask day = lookOf(u"2026-5-1"_s);
    return {{u"工程名称"_s, u"滨江工程", lookOf(u"滨江工程"_s), u"none"_s, bold},
            {u"工程字体"_s, u"黑体", lookOf(u"工程名称"_s), bold, u"黑体 12 bold centre"_s},
            {u"工程字号"_s, u"一号", lookOf(u"工程名称"_s), bold, u"仿宋_GB2312 26 bold centre"_s},
            // The organisation's line keeps the size of the project's name.
            {u"工程字号"_s, u"一号", lookOf(u"单位名称"_s), bold, u"仿宋_GB2312 26 bold centre"_s},
            {u"单位名称"_s, u"一建公司", lookOf(u"一建公司"_s), u"none"_s, bold},
            {u"单位字体"_s, u"黑体", lookOf(u"单位名称"_s), bold, u"黑体 12 bold centre"_s},
            {u"日期"_s, QDate(2003, 4, 5), lookOf(u"2003-4-5"_s), u"none"_s, plain},
            {u"日期字体"_s, u"黑体", day, plain, u"黑体 12 plain centre"_s},
            {u"日期字号"_s, u"二号", day, plain, u"仿宋_GB2312 22 plain centre"_s}};
}

// The size of the organisation goes to the third paragraph of the document, an empty one above the
// project's name.
std::vector<Change> thirdParagraphChanges() {
    const auto third = [](const DocumentProbe& document) {
        return document.lookAt(2).section(u' ', 1, 1);
    };
    return {{u"单位字号"_s, u"初号", third, u"12"_s, u"48"_s}};
}

// With a picture of ten centimetres each way.
std::vector<Change> pictureChanges() {
    return {{u"图片"_s, u"", picture, u"283 x 283"_s, u"none"_s},
            {u"图片宽度"_s, 5, picture, u"283 x 283"_s, u"142 x 283"_s},
            {u"图片高度"_s, 4, picture, u"283 x 283"_s, u"283 x 113"_s}};
}

QSet<QString> fieldsOf(const QString& table, std::initializer_list<std::vector<Change>> lists) {
    QSet<QString> fields;
    for (const std::vector<Change>& list : lists) {
        for (const Change& each : list) {
            fields << table + u'.' + each.field;
        }
    }
    return fields;
}

} // namespace

TEST_F(SettingsProof, EachFieldOfTheHeadingLevelsShowsInTheDocument) {
    prove(u"章节设置表"_s, headingChanges());
}

TEST_F(SettingsProof, ALevelStartsAPageWhenItsRowSaysSo) {
    const auto rows = settings().OpenRecordset(u"Select * from 章节设置表"_s);
    rows->MoveNext();
    const QString second = u"第一节 编制说明"_s;
    EXPECT_FALSE(generated().startsPage(second));
    rows->Edit();
    rows->Set(u"置页头", u"是"_s);
    rows->Update();
    EXPECT_TRUE(generated().startsPage(second));
    EXPECT_TRUE(generated().startsPage(u"第二章 附则"_s));
    change(settings(), u"章节设置表"_s, u"置页头"_s, u"否");
    EXPECT_FALSE(generated().startsPage(u"第二章 附则"_s));
}

// The break behind the contents is that of the row whose 级别 is "1", wherever it stands.
TEST_F(SettingsProof, TheBreakBehindTheContentsGoesByTheLevelsNameAndNotByItsPlace) {
    change(settings(), u"章节设置表"_s, u"置页头"_s, u"否");
    EXPECT_TRUE(generated().startsPage(first));
    change(settings(), u"章节设置表"_s, u"级别"_s, u"10");
    EXPECT_FALSE(generated().startsPage(first));
}

TEST_F(SettingsProof, TheSampleOfALevelShapesNothing) {
    const QString before = generated().lines();
    change(settings(), u"章节设置表"_s, u"中缀"_s, u"A");
    EXPECT_EQ(generated().lines(), before);
}

TEST_F(SettingsProof, TheNumberWordsComeFromTheirTableAndItsOtherColumnsShapeNothing) {
    prove(u"序号表"_s, {{u"一型"_s, u"壹", lookOf(u"第壹章 施工部署"_s), u"none"_s, usualLook}});
    const QString before = generated().lines();
    for (const auto& column : {u"I型"_s, u"A型"_s, u"aa型"_s, u"序号"_s}) {
        change(settings(), u"序号表"_s, column, u"外");
    }
    EXPECT_EQ(generated().lines(), before);
}

TEST_F(SettingsProof, EachFieldOfThePageShowsInTheDocument) {
    prove(u"页面设置表"_s, pageChanges());
}

TEST_F(SettingsProof, AGutterOnTopTakesFromTheHeight) {
    change(settings(), u"页面设置表"_s, u"装订距离"_s, 2.0F);
    prove(u"页面设置表"_s, gutterChanges());
}

TEST_F(SettingsProof, EachFieldOfTheContentsShowsInTheDocument) {
    prove(u"页眉页脚表"_s, contentsChanges());
    change(settings(), u"页眉页脚表"_s, u"是否右对齐"_s, u"是");
    prove(u"页眉页脚表"_s, leaderChanges());
}

TEST_F(SettingsProof, EachFieldOfHeaderAndFooterShowsInTheDocument) {
    prove(u"页眉页脚表"_s, storyChanges());
}

TEST_F(SettingsProof, WithoutAHeaderTheFooterBearsItsOwnFontAndSize) {
    change(settings(), u"页眉页脚表"_s, u"是否带页眉"_s, u"否");
    prove(u"页眉页脚表"_s, footerAloneChanges());
}

TEST_F(SettingsProof, ThePlaceOfTheFooterMovesThePageNumber) {
    const auto side = [](const DocumentProbe& document) {
        return QString::number(document.pageNumberSide());
    };
    prove(u"页眉页脚表"_s, {{u"页脚位置"_s, u"左", side, u"8"_s, u"4"_s},
                            {u"页脚位置"_s, u"右", side, u"8"_s, u"4"_s}});
}

TEST_F(SettingsProof, EachFieldOfTheCoverShowsInTheDocument) { prove(u"封面表"_s, coverChanges()); }

TEST_F(SettingsProof, TheSizeOfTheOrganisationShapesTheThirdParagraph) {
    prove(u"封面表"_s, thirdParagraphChanges());
}

TEST_F(SettingsProof, ThePictureOfTheCoverShowsInItsSize) {
    keepPicture(u"楼.png"_s, png(40, 30));
    change(settings(), u"封面表"_s, u"图片"_s, u"楼.png");
    prove(u"封面表"_s, pictureChanges());
}

TEST_F(SettingsProof, EveryPictureFormatThatThePickerOffersStandsInTheDocumentInItsSize) {
    change(settings(), u"封面表"_s, u"图片宽度"_s, 6);
    change(settings(), u"封面表"_s, u"图片高度"_s, 3);
    const std::pair<QString, word::Bytes> files[] = {
        {u"点阵.bmp"_s, bmp(40, 30)},        {u"照片.jpg"_s, jpeg(40, 30)},
        {u"动画.gif"_s, gifOfRedThenBlue()}, {u"可放置.wmf"_s, placeableWmf(400, 300, 96)},
        {u"普通.wmf"_s, bareWmf(400, 300)},  {u"增强.wmf"_s, emf(4000, 3000)},
        {u"图.png"_s, png(40, 30)},
    };
    for (const auto& [name, bytes] : files) {
        keepPicture(name, bytes);
        change(settings(), u"封面表"_s, u"图片"_s, name);
        EXPECT_TRUE(generated().picture().startsWith(u"170 x 85"_s)) << name.toStdString();
    }
    EXPECT_EQ(linesOf("message"), "");
}

// The lists of saved settings serve the dialog alone.
TEST_F(SettingsProof, TheNamesOfLibrariesAndPagesShapeNothing) {
    const QString before = generated().lines();
    for (const auto& [table, field] :
         {std::pair(u"设置库"_s, u"名称"_s), std::pair(u"封面库"_s, u"名称"_s),
          std::pair(u"自定义表"_s, u"路径"_s)}) {
        const auto rows = settings().OpenRecordset(u"Select * from "_s + table);
        rows->AddNew();
        rows->Set(field, u"别的"_s);
        rows->Update();
    }
    EXPECT_EQ(generated().lines(), before);
}

TEST_F(SettingsProof, NoFieldOfTheSettingsIsLeftOut) {
    const QString headings = u"章节设置表"_s;
    const QString headerFooter = u"页眉页脚表"_s;
    QSet<QString> proven = fieldsOf(headings, {headingChanges()});
    proven.unite(fieldsOf(u"页面设置表"_s, {pageChanges(), gutterChanges()}));
    proven.unite(fieldsOf(headerFooter, {contentsChanges(), leaderChanges(), storyChanges()}));
    proven.unite(
        fieldsOf(u"封面表"_s, {coverChanges(), thirdParagraphChanges(), pictureChanges()}));
    // Each in a test of its own, here or with the libraries.
    proven.unite({u"章节设置表.级别"_s, u"章节设置表.置页头"_s, u"章节设置表.中缀"_s,
                  u"序号表.序号"_s, u"序号表.一型"_s, u"序号表.I型"_s, u"序号表.A型"_s,
                  u"序号表.aa型"_s, u"设置库.名称"_s, u"封面库.名称"_s, u"自定义表.路径"_s,
                  u"当前自定义.路径"_s, u"是否设置表.是否封面"_s, u"是否设置表.封面名称"_s,
                  u"是否设置表.是否设置"_s, u"是否设置表.设置名称"_s, u"是否设置表.是否定义"_s});
    QStringList leftOut;
    for (const jet::TableDef& table : settings().TableDefs().All()) {
        for (const jet::Field& field : table.Fields) {
            if (!field.IsAutoIncrement() && !proven.remove(table.Name + u'.' + field.Name)) {
                leftOut << table.Name + u'.' + field.Name;
            }
        }
    }
    EXPECT_EQ(leftOut.join(u' '), QString());
    EXPECT_EQ(proven.values().join(u' '), QString()) << "no field of the settings";
}

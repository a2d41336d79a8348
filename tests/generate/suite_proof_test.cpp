#include "generate/SettingsProof.h"
#include "generate/SuiteReading.h"
#include "platform/files/Paths.h"
#include "platform/office/PdfPrinter.h"
#include "support/Images.h"

#include <QFile>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;

// The settings in the document as the office suite reads it, which shares no code with the engine.
namespace {

class SuiteProof : public SettingsProof {
protected:
    void SetUp() override {
        if (office::OfficeSuite::installedProgram().isEmpty()) {
            GTEST_SKIP() << "no office suite is installed";
        }
    }

    SuiteReading readBySuite() {
        generated();
        const QString target = files::fromPath(place("work") / "施工方案.fodt");
        office::OfficeSuite(files::fromPath(place("suite")))
            .convert(files::fromPath(place("work") / u"施工方案.doc"), target,
                     u"fodt:OpenDocument Text Flat XML"_s);
        QFile file(target);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return SuiteReading(QString::fromUtf8(file.readAll()));
    }

    void set(const QString& table, const std::vector<Cell>& cells) {
        for (const Cell& cell : cells) {
            change(settings(), table, cell.field, cell.value);
        }
    }

    // Every field that shapes something away from its first value.
    void setEverything() {
        set(u"章节设置表"_s, {{u"字体"_s, u"黑体"},
                              {u"字号"_s, u"三号"},
                              {u"前缀"_s, u"卷"},
                              {u"后缀"_s, u"篇"},
                              {u"序号标志"_s, u"A型"},
                              {u"位置"_s, u"右"}});
        set(u"页面设置表"_s, {{u"页边距上"_s, 4.0F},
                              {u"页边距下"_s, 3.5F},
                              {u"页边距左"_s, 2.5F},
                              {u"页边距右"_s, 2.0F},
                              {u"装订距离"_s, 1.0F},
                              {u"距页眉"_s, 2.0F},
                              {u"距页脚"_s, 1.5F},
                              {u"正文字体"_s, u"楷体"},
                              {u"正文字号"_s, u"小五"}});
        set(u"页眉页脚表"_s, {{u"页眉内容"_s, u"滨江工程"},
                              {u"页眉位置"_s, u"右"},
                              {u"页眉字体"_s, u"黑体"},
                              {u"页眉字号"_s, u"四号"},
                              {u"页脚内容"_s, u"一建公司"},
                              {u"页脚位置"_s, u"左"},
                              {u"页脚字体"_s, u"楷体"},
                              {u"页脚字号"_s, u"一号"},
                              {u"显示级别"_s, 2},
                              {u"制表样式"_s, u"断连线"},
                              {u"是否右对齐"_s, u"是"}});
        keepPicture(u"楼.png"_s, png(40, 30));
        set(u"封面表"_s, {{u"工程名称"_s, u"滨江中心"},
                          {u"工程字体"_s, u"黑体"},
                          {u"工程字号"_s, u"一号"},
                          {u"单位名称"_s, u"江城一建"},
                          {u"单位字体"_s, u"楷体"},
                          {u"日期"_s, QDate(2003, 4, 5)},
                          {u"日期字体"_s, u"宋体"},
                          {u"日期字号"_s, u"四号"},
                          {u"图片"_s, u"楼.png"},
                          {u"图片宽度"_s, 6},
                          {u"图片高度"_s, 3}});
    }
};

} // namespace

TEST_F(SuiteProof, TheSuiteFindsEverySettingInTheDocument) {
    setEverything();
    const SuiteReading document = readBySuite();
    EXPECT_EQ(document.headings(),
              u"卷A篇 施工部署|第一节 编制说明|第一小节 编制依据|卷B篇 附则"_s);
    EXPECT_EQ(document.lookOf(u"卷A篇 施工部署"_s), u"黑体 16pt bold end"_s);
    EXPECT_TRUE(document.startsPage(u"卷B篇 附则"_s));
    EXPECT_FALSE(document.startsPage(u"第一节 编制说明"_s));
    EXPECT_EQ(document.lookOf(u"说明正文"_s), u"楷体 9pt plain justify"_s);

    EXPECT_EQ(document.lookOf(u"滨江中心"_s), u"黑体 26pt bold center"_s);
    EXPECT_EQ(document.lookOf(u"江城一建"_s), u"楷体 26pt bold center"_s);
    EXPECT_EQ(document.lookOf(u"2003-4-5"_s), u"宋体 14pt plain center"_s);
    EXPECT_EQ(document.picture(), u"60 x 30"_s);

    EXPECT_EQ(document.contents(), u"卷A篇 施工部署\t7|第一节 编制说明\t7|卷B篇 附则\t7"_s);
    EXPECT_EQ(document.leader(), u"-"_s);

    EXPECT_EQ(document.header(), u"滨江工程"_s);
    EXPECT_EQ(document.lookOf(u"滨江工程"_s), u"宋体 9pt plain end"_s);
    EXPECT_TRUE(document.footer().contains(u"一建公司"_s));
    EXPECT_EQ(document.lookOf(u"一建公司"_s), u"黑体 14pt plain start"_s);
}

// The suite counts the header's room into the margin of the text, and the gutter into the left one.
TEST_F(SuiteProof, TheSuiteFindsTheLengthsOfThePage) {
    setEverything();
    const SuiteReading document = readBySuite();
    EXPECT_NEAR(document.length(u"page.fo:margin-top"_s), 20, 0.2);
    EXPECT_NEAR(document.length(u"header.fo:min-height"_s), 20, 0.2);
    EXPECT_NEAR(document.length(u"page.fo:margin-bottom"_s), 15, 0.2);
    EXPECT_NEAR(document.length(u"footer.fo:min-height"_s), 20, 0.2);
    EXPECT_NEAR(document.length(u"page.fo:margin-left"_s), 35, 0.2);
    EXPECT_NEAR(document.length(u"page.fo:margin-right"_s), 20, 0.2);
}

TEST_F(SuiteProof, WithoutAHeaderTheSuiteFindsTheFootersOwnFont) {
    setEverything();
    change(settings(), u"页眉页脚表"_s, u"是否带页眉"_s, u"否");
    const SuiteReading document = readBySuite();
    EXPECT_EQ(document.header(), QString());
    EXPECT_EQ(document.lookOf(u"一建公司"_s), u"楷体 26pt plain start"_s);
}

// Text of a PDF's outline: UTF-16 in hexadecimal digits, behind a mark of the byte order.
TEST_F(SuiteProof, ThePdfHasABookmarkForEachHeading) {
    generated();
    const QString pdf = files::fromPath(place("work") / u"施工方案.pdf");
    office::SuitePdfPrinter printer{office::OfficeSuite(files::fromPath(place("suite")))};
    printer.print(files::fromPath(place("work") / u"施工方案.doc"), pdf);
    QFile file(pdf);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.contains("/Outlines "));
    for (const QString& heading : {u"编制说明"_s, u"编制依据"_s, u"附则"_s}) {
        QByteArray digits;
        for (const QChar character : heading) {
            digits += QByteArray::number(character.unicode(), 16).rightJustified(4, '0').toUpper();
        }
        const auto title = bytes.indexOf(digits);
        EXPECT_GE(title, 0) << heading.toStdString();
        EXPECT_GE(bytes.lastIndexOf("/Title", title), title - 60) << heading.toStdString();
    }
}

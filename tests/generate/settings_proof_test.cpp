#include "format/FormatLibraries.h"
#include "generate/DocumentProbe.h"
#include "generate/GenerationWorld.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/engine/EngineApplication.h"
#include "store/DatabaseCreation.h"
#include "support/Images.h"
#include "support/Text.h"

#include <fstream>
#include <functional>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;

namespace {

class FixedPages : public word::PageNumberSource {
public:
    std::vector<int> displayedPages(const word::DocumentContent& /*content*/,
                                    std::span<const word::Cp> positions) override {
        return std::vector<int>(positions.size(), 7);
    }
};

class NoReport : public word::ImportReport {
public:
    void notCarried(const std::filesystem::path& /*path*/, std::u16string_view what) override {
        ADD_FAILURE() << std::string(what.begin(), what.end());
    }
};

class NoQuestion : public word::UnsavedChangesQuestion {
public:
    bool save(const std::filesystem::path& /*document*/) override { return false; }
};

// What a reader of the document is asked.
using Ask = std::function<QString(const DocumentProbe&)>;

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
QString top(const DocumentProbe& document) { return QString::number(document.paper().top); }
QString bottom(const DocumentProbe& document) { return QString::number(document.paper().bottom); }
QString left(const DocumentProbe& document) { return QString::number(document.paper().left); }
QString right(const DocumentProbe& document) { return QString::number(document.paper().right); }

// One field of one table, what a reader sees before it is changed, and what after.
struct Change {
    QString field;
    jet::Value value;
    Ask ask;
    QString before;
    QString after;
};

// A plan of three levels, the last a document under a document; the settings of a first
// installation; our own engine, and another reader.
class SettingsProof : public GenerationWorld {
protected:
    SettingsProof() {
        std::filesystem::create_directory(place("plans") / u"工程");
        program.gDbBidSet.reset();
        program.gWs = &workspace;
        store::CreateBidSetDb(program, program.gAppPath + u"first.mdb"_s, QDate(2026, 5, 1));
        folder(u"工程.1"_s, u"施工部署"_s);
        documentWith(u"工程.1.1"_s, u"编制说明"_s, u"说明正文");
        documentWith(u"工程.1.1.1"_s, u"编制依据"_s, u"依据正文");
        folder(u"工程.2"_s, u"附则"_s);
        // The first run of a window leaves its first folder's paragraph open.
        window.AfterNodeFlag = true;
    }

    void documentWith(const QString& key, const QString& text, std::u16string_view words) {
        document(key, text);
        word::EngineApplication writer(engine);
        word::Document& file = writer.documents().Add();
        writer.Selection().TypeText(words);
        file.SaveAs(place("plans") / u"工程" / (key + u".doc"_s).toStdU16String());
    }

    DocumentProbe generated() {
        window.AfterNodeFlag = true;
        word::EngineApplicationFactory real(engine);
        const generate::GenerationServices platform{real,    messages, dlgTB,   events,
                                                    windows, screen,   controls};
        EXPECT_EQ(generate::BuildBid({program, switches, word}, platform, window, TrvEdit),
                  generate::BuildOutcome::finished);
        return DocumentProbe(place("work") / u"施工方案.doc");
    }

    // Changes the field in the table's first row, and takes the change back.
    void prove(const QString& table, const std::vector<Change>& changes) {
        for (const Change& each : changes) {
            SCOPED_TRACE((table + u'.' + each.field).toStdString());
            EXPECT_EQ(each.ask(generated()), each.before);
            const auto rows = settings().OpenRecordset(u"Select * from [%1]"_s.arg(table));
            const jet::Value earlier = rows->Get(each.field);
            change(settings(), table, each.field, each.value);
            EXPECT_EQ(each.ask(generated()), each.after);
            change(settings(), table, each.field, earlier);
        }
        EXPECT_EQ(linesOf("message"), "");
    }

    void changePicture(const QString& name, word::ByteView bytes) {
        const auto folderOfPictures = place("app") / u"sys" / u"图片库";
        std::filesystem::create_directories(folderOfPictures);
        std::ofstream file(folderOfPictures / name.toStdU16String(), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }

    FixedPages pages;
    NoReport report;
    NoQuestion question;
    word::EngineServices engine{pages, report, question};
};

const QString first = u"第一章 施工部署"_s;
const QString usualLook = u"仿宋_GB2312 12 bold centre"_s;

} // namespace

TEST_F(SettingsProof, EachFieldOfTheHeadingLevelsShowsInTheDocument) {
    prove(u"章节设置表"_s,
          {{u"字体"_s, u"黑体", lookOf(first), usualLook, u"黑体 12 bold centre"_s},
           {u"字号"_s, u"三号", lookOf(first), usualLook, u"仿宋_GB2312 16 bold centre"_s},
           {u"位置"_s, u"左", lookOf(first), usualLook, u"仿宋_GB2312 12 bold left"_s},
           {u"位置"_s, u"右", lookOf(first), usualLook, u"仿宋_GB2312 12 bold right"_s},
           {u"前缀"_s, u"卷", lookOf(u"卷一章 施工部署"_s), u"none"_s, usualLook},
           {u"后缀"_s, u"篇", lookOf(u"第一篇 施工部署"_s), u"none"_s, usualLook},
           {u"序号标志"_s, u"A型", lookOf(u"第A章 施工部署"_s), u"none"_s, usualLook},
           {u"序号标志"_s, u"aa型", lookOf(u"第a章 施工部署"_s), u"none"_s, usualLook},
           {u"序号标志"_s, u"I型", lookOf(u"第1章 施工部署"_s), u"none"_s, usualLook},
           {u"序号标志"_s, u"a型", lookOf(u"第1章 施工部署"_s), u"none"_s, usualLook},
           {u"带该级标题"_s, u"否", lookOf(u"一 施工部署"_s), u"none"_s, usualLook}});
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
    prove(u"页面设置表"_s,
          {{u"页边距上"_s, 3.0F, top, u"42.5"_s, u"85.05"_s},
           {u"页边距下"_s, 3.0F, bottom, u"42.5"_s, u"85.05"_s},
           {u"页边距左"_s, 3.0F, left, u"42.5"_s, u"85.05"_s},
           {u"页边距右"_s, 3.0F, right, u"42.5"_s, u"85.05"_s},
           {u"装订距离"_s, 2.0F, left, u"42.5"_s, u"99.2"_s},
           {u"距页眉"_s, 2.0F, section(word::sprm::SDyaHdrTop), u"567"_s, u"1134"_s},
           {u"距页脚"_s, 2.0F, section(word::sprm::SDyaHdrBottom), u"567"_s, u"1134"_s},
           {u"正文字体"_s, u"楷体", lookOf(u"说明正文"_s), u"仿宋_GB2312 12 plain justified"_s,
            u"楷体 12 plain justified"_s},
           {u"正文字号"_s, u"小五", lookOf(u"说明正文"_s), u"仿宋_GB2312 12 plain justified"_s,
            u"仿宋_GB2312 9 plain justified"_s}});
}

TEST_F(SettingsProof, AGutterOnTopTakesFromTheHeight) {
    change(settings(), u"页面设置表"_s, u"装订距离"_s, 2.0F);
    prove(u"页面设置表"_s, {{u"装订位置"_s, u"顶", top, u"42.5"_s, u"99.2"_s},
                            {u"装订位置"_s, u"顶", left, u"99.2"_s, u"42.5"_s}});
}

TEST_F(SettingsProof, EachFieldOfTheContentsShowsInTheDocument) {
    const QString three =
        u"第一章 施工部署 7|第一节 编制说明 7|第一小节 编制依据 7|第二章 附则 7"_s;
    QString aligned = three;
    aligned.replace(u" 7"_s, u"\t7"_s);
    QString unnumbered = three;
    unnumbered.remove(u" 7"_s);
    prove(u"页眉页脚表"_s,
          {{u"是否右对齐"_s, u"是", contents, three, aligned},
           {u"是否显示页码"_s, u"否", contents, three, unnumbered},
           {u"显示级别"_s, 1, contents, three, u"第一章 施工部署 7|第二章 附则 7"_s},
           {u"显示级别"_s, 2, contents, three,
            u"第一章 施工部署 7|第一节 编制说明 7|第二章 附则 7"_s}});
    change(settings(), u"页眉页脚表"_s, u"是否右对齐"_s, u"是");
    prove(u"页眉页脚表"_s, {{u"制表样式"_s, u"断连线", leader, u"1"_s, u"2"_s},
                            {u"制表样式"_s, u"连连线", leader, u"1"_s, u"3"_s},
                            {u"制表样式"_s, u"重虚线", leader, u"1"_s, u"4"_s},
                            {u"制表样式"_s, u"无", leader, u"1"_s, u"0"_s}});
}

// The font is set before the selection goes into the story: that of the header shapes the footer,
// that of the footer nothing, and the header keeps the font of its style.
TEST_F(SettingsProof, EachFieldOfHeaderAndFooterShowsInTheDocument) {
    const QString head = u"页眉: 宋体 9 plain centre"_s;
    const QString foot = u"页脚: 仿宋_GB2312 12 plain centre"_s;
    prove(u"页眉页脚表"_s,
          {{u"是否带页眉"_s, u"否", header, head, u"empty"_s},
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
           {u"页脚字号"_s, u"三号", footer, foot, foot}});
}

TEST_F(SettingsProof, ThePlaceOfTheFooterMovesThePageNumber) {
    const auto side = [](const DocumentProbe& document) {
        return QString::number(document.pageNumberSide());
    };
    prove(u"页眉页脚表"_s, {{u"页脚位置"_s, u"左", side, u"8"_s, u"4"_s},
                            {u"页脚位置"_s, u"右", side, u"8"_s, u"4"_s}});
}

TEST_F(SettingsProof, EachFieldOfTheCoverShowsInTheDocument) {
    const QString bold = u"仿宋_GB2312 12 bold centre"_s;
    prove(u"封面表"_s,
          {{u"工程名称"_s, u"滨江工程", lookOf(u"滨江工程"_s), u"none"_s, bold},
           {u"工程字体"_s, u"黑体", lookOf(u"工程名称"_s), bold, u"黑体 12 bold centre"_s},
           {u"工程字号"_s, u"一号", lookOf(u"工程名称"_s), bold, u"仿宋_GB2312 26 bold centre"_s},
           // The organisation's line keeps the size of the project's name.
           {u"工程字号"_s, u"一号", lookOf(u"单位名称"_s), bold, u"仿宋_GB2312 26 bold centre"_s},
           {u"单位名称"_s, u"一建公司", lookOf(u"一建公司"_s), u"none"_s, bold},
           {u"单位字体"_s, u"黑体", lookOf(u"单位名称"_s), bold, u"黑体 12 bold centre"_s},
           {u"日期"_s, QDate(2003, 4, 5), lookOf(u"2003-4-5"_s), u"none"_s,
            u"仿宋_GB2312 12 plain centre"_s},
           {u"日期字体"_s, u"黑体", lookOf(u"2026-5-1"_s), u"仿宋_GB2312 12 plain centre"_s,
            u"黑体 12 plain centre"_s},
           {u"日期字号"_s, u"二号", lookOf(u"2026-5-1"_s), u"仿宋_GB2312 12 plain centre"_s,
            u"仿宋_GB2312 22 plain centre"_s}});
}

// Its size goes to the third paragraph of the document, an empty one above the project's name.
TEST_F(SettingsProof, TheSizeOfTheOrganisationShapesTheThirdParagraph) {
    const auto third = [](const DocumentProbe& document) {
        return document.lookAt(2).section(u' ', 1, 1);
    };
    prove(u"封面表"_s, {{u"单位字号"_s, u"初号", third, u"12"_s, u"48"_s}});
}

TEST_F(SettingsProof, ThePictureOfTheCoverShowsInItsSize) {
    changePicture(u"楼.png"_s, png(40, 30));
    prove(u"封面表"_s, {{u"图片"_s, u"楼.png", picture, u"none"_s, u"283 x 283"_s}});
    change(settings(), u"封面表"_s, u"图片"_s, u"楼.png");
    prove(u"封面表"_s, {{u"图片宽度"_s, 5, picture, u"283 x 283"_s, u"142 x 283"_s},
                        {u"图片高度"_s, 4, picture, u"283 x 283"_s, u"283 x 113"_s}});
}

TEST_F(SettingsProof, EveryPictureFormatThatThePickerOffersStandsInTheDocumentInItsSize) {
    change(settings(), u"封面表"_s, u"图片宽度"_s, 6);
    change(settings(), u"封面表"_s, u"图片高度"_s, 3);
    const std::pair<QString, word::Bytes> files[] = {
        {u"点阵.bmp"_s, bmp(40, 30)},
        {u"照片.jpg"_s, jpeg(40, 30)},
        {u"可放置.wmf"_s, placeableWmf(400, 300, 96)},
        {u"普通.wmf"_s, bareWmf(400, 300)},
        {u"增强.wmf"_s, emf(4000, 3000)},
        {u"图.png"_s, png(40, 30)},
    };
    for (const auto& [name, bytes] : files) {
        changePicture(name, bytes);
        change(settings(), u"封面表"_s, u"图片"_s, name);
        EXPECT_TRUE(generated().picture().startsWith(u"170 x 85"_s)) << name.toStdString();
    }
    EXPECT_EQ(linesOf("message"), "");
}

namespace {

// The settings with libraries beside them: 甲 of settings, 乙 of covers.
class LibraryProof : public SettingsProof {
protected:
    LibraryProof() {
        format::copySettingTables(settings(), u"甲"_s);
        format::copyCoverTable(settings(), u"乙"_s);
        change(settings(), u"甲页面"_s, u"页边距上"_s, 3.0F);
        change(settings(), u"甲页面"_s, u"正文字号"_s, u"小五");
        change(settings(), u"甲眉脚"_s, u"页眉内容"_s, u"甲的页眉");
        change(settings(), u"甲眉脚"_s, u"显示级别"_s, 1);
        change(settings(), u"甲章节"_s, u"前缀"_s, u"卷");
        change(settings(), u"乙"_s, u"工程名称"_s, u"乙的工程");
    }
    void choose(const char16_t* flag, const char16_t* name) {
        putTable(settings(), u"是否设置表"_s, {selectionRow(u"否", nullptr, flag, name, u"否")});
    }
    // Which settings made the document: body, page, header, contents.
    QString made() {
        const DocumentProbe document = generated();
        return (document.lookOf(u"说明正文"_s).contains(u" 9 ") ? u"甲"_s : u"-"_s) +
               (document.paper().top > 50 ? u"甲"_s : u"-"_s) +
               (document.header().startsWith(u"甲"_s) ? u"甲"_s : u"-"_s) +
               (document.contents().count(u'|') == 1 ? u"甲"_s : u"-"_s);
    }
};

} // namespace

TEST_F(LibraryProof, ASettingLibraryShapesBodyPageHeaderAndContentsAndNoHeading) {
    EXPECT_EQ(made(), u"----"_s);
    format::writeSelection(settings(), {std::nullopt, u"甲"_s, false});
    EXPECT_EQ(made(), u"甲甲甲甲"_s);
    EXPECT_NE(generated().lookOf(first), u"none"_s);
    format::writeSelection(settings(), {});
    EXPECT_EQ(made(), u"----"_s);
}

TEST_F(LibraryProof, ABlankOrMissingNameOfALibraryFallsBackOnTheWorkingTables) {
    for (const char16_t* name : {u"", u"  ", static_cast<const char16_t*>(nullptr)}) {
        choose(u"是", name);
        EXPECT_EQ(made(), u"----"_s);
    }
    choose(u"否", u"甲");
    EXPECT_EQ(made(), u"----"_s);
}

// The body's font is chosen by the trimmed flag, page, header and contents by the flag as it is.
TEST_F(LibraryProof, TheThreeReadersOfTheChoiceDifferInHowTheyTakeBlanks) {
    choose(u" 是 ", u"甲");
    EXPECT_EQ(made(), u"甲---"_s);
    choose(u"是", u"甲");
    EXPECT_EQ(made(), u"甲甲甲甲"_s);
}

TEST_F(LibraryProof, ACoverLibraryTakesThePlaceOfTheCover) {
    EXPECT_TRUE(generated().lines().startsWith(u"工程名称|"_s));
    format::writeSelection(settings(), {u"乙"_s, std::nullopt, false});
    EXPECT_TRUE(generated().lines().startsWith(u"乙的工程|"_s));
    format::writeSelection(settings(), {u" "_s, std::nullopt, false});
    EXPECT_TRUE(generated().lines().startsWith(u"工程名称|"_s));
}

TEST_F(LibraryProof, ACustomPageTakesThePlaceOfTheCoverAndOutranksALibrary) {
    std::filesystem::create_directories(place("app") / u"sys" / u"自定义");
    word::EngineApplication writer(engine);
    word::Document& page = writer.documents().Add();
    writer.Selection().TypeText(u"我的扉页");
    page.SaveAs(place("app") / u"sys" / u"自定义" / u"扉页.doc");
    format::storeCurrentPage(settings(), u"扉页"_s);
    EXPECT_TRUE(generated().lines().startsWith(u"工程名称|"_s));
    format::writeSelection(settings(), {u"乙"_s, std::nullopt, true});
    EXPECT_TRUE(generated().lines().startsWith(u"我的扉页|目录|"_s))
        << generated().lines().toStdString();
}

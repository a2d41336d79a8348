#include "format/FormatLibraries.h"
#include "generate/SettingsProof.h"

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;

// The libraries, the custom page and the row that chooses between them, as the document shows them.
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
               (document.paper().top > 1000 ? u"甲"_s : u"-"_s) +
               (document.header().startsWith(u"甲"_s) ? u"甲"_s : u"-"_s) +
               (document.contents().count(u'|') == 1 ? u"甲"_s : u"-"_s);
    }
};

} // namespace

TEST_F(LibraryProof, ASettingLibraryShapesBodyPageHeaderAndContentsAndNoHeading) {
    EXPECT_EQ(made(), u"----"_s);
    format::writeSelection(settings(), {std::nullopt, u"甲"_s, false});
    EXPECT_EQ(made(), u"甲甲甲甲"_s);
    EXPECT_NE(generated().lookOf(u"第一章 施工部署"_s), u"none"_s);
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

#include "generate/PlanCheck.h"

#include "generate/GenerationWorld.h"
#include "platform/word/engine/EngineApplication.h"
#include "store/Names.h"
#include "store/PlanLists.h"
#include "store/PlanTables.h"
#include "support/FakeDocumentConverter.h"
#include "support/FakeFilesInUse.h"
#include "support/FixedFonts.h"

#include <fstream>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;
using generate::PlanFinding;
using Kind = generate::PlanFinding::Kind;

namespace {

// A plan whose documents are real files, written by our own engine.
class PlanCheck : public GenerationWorld,
                  private word::ImportReport,
                  private word::UnsavedChangesQuestion {
protected:
    PlanCheck() {
        std::filesystem::create_directory(place("plans") / u"工程");
        converter.isInstalled = false;
        program.gDbUser =
            workspace.CreateDatabase(program.gUserTplPath + u"Db_UsTemplate.mdb"_s, {});
        program.gDbUser->TableDefs().Append(store::nameTable(store::table::planList));
        plan(u"工程"_s, u"建设公司"_s);
    }
    // In the list of plans, with its information.
    void plan(const QString& name, const QString& contractor) {
        store::enlist(*program.gDbUser, name);
        program.gDbUser->TableDefs().Append(store::informationTable(name));
        const auto rows = program.gDbUser->OpenRecordset(u"Select * from ["_s +
                                                         store::informationTableOf(name) + u']');
        rows->AddNew();
        rows->Set(store::field::contractor, contractor);
        rows->Update();
    }
    // The texts that the document would bear of other plans.
    QStringList foreign() {
        QStringList texts;
        for (const auto& text : generate::textsOfOtherPlans(program, u"工程"_s))
            texts << (text.goesWithLoad ? u"封面："_s : QString()) + text.what;
        return texts;
    }

    void notCarried(const std::filesystem::path&, std::u16string_view) override {}
    bool save(const std::filesystem::path&) override { return false; }

    std::filesystem::path fileOf(const QString& key) const {
        return place("plans") / u"工程" / (key + u".doc"_s).toStdU16String();
    }
    void soundDocument(const QString& key, const QString& text) {
        document(key, text);
        word::EngineApplication writer({pages, *this, *this});
        word::Document& file = writer.documents().Add();
        writer.Selection().TypeText(u"正文");
        file.SaveAs(fileOf(key));
    }
    void overwrite(const QString& key, std::streamoff at, char byte) const {
        std::fstream file(fileOf(key), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(at);
        file.put(byte);
    }
    std::string bytesOf(const QString& key) const {
        std::ifstream file(fileOf(key), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::vector<PlanFinding> check() {
        return generate::checkPlan({program, TrvEdit, inUse, runsOn,
                                    [this](const auto&) { return ++yields < patience; }, &converter,
                                    [this](const std::function<void()>& work) {
                                        ++longWorks;
                                        work();
                                    }});
    }
    // "key kind" of each finding.
    QStringList kinds() {
        QStringList lines;
        for (const PlanFinding& finding : check()) {
            lines << finding.key + u' ' + nameOf(finding.kind);
            EXPECT_FALSE(finding.what.isEmpty());
            EXPECT_FALSE(finding.advice.isEmpty());
        }
        return lines;
    }

    FakeFilesInUse inUse;
    FakeDocumentConverter converter;
    test::FixedPageNumbers pages;
    bool runsOn = false;
    int yields = 0;
    int longWorks = 0;  // readings that may take long
    int patience = 100; // of the user, in nodes
};

} // namespace

TEST_F(PlanCheck, ASoundPlanHasNothingToTell) {
    folder(u"工程.1"_s, u"概况"_s);
    soundDocument(u"工程.1.1"_s, u"说明"_s);
    EXPECT_TRUE(check().empty());
    EXPECT_EQ(yields, 2);
    EXPECT_EQ(longWorks, 1) << "the document";
}

TEST_F(PlanCheck, AMissingDocumentIsNamedWithItsFile) {
    document(u"工程.1"_s, u"说明"_s);
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, Kind::missing);
    EXPECT_EQ(found[0].name, u"说明"_s);
    EXPECT_TRUE(found[0].what.contains(u"工程.1.doc"_s));
    EXPECT_TRUE(found[0].keepsDocumentOut());
}

TEST_F(PlanCheck, ADocumentWhoseKeyIsNoneIsAFindingOfItsOwnAndTheOthersAreRead) {
    document(u"工程.a"_s, u"外来"_s);
    soundDocument(u"工程.2"_s, u"说明"_s);
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(nameOf(found[0].kind), u"oddKey"_s);
    EXPECT_EQ(found[0].key, u"工程.a"_s);
    EXPECT_TRUE(found[0].keepsDocumentOut());
    EXPECT_TRUE(found[0].advice.contains(u"删除这个节点"_s));
}

TEST_F(PlanCheck, AnOpenDocumentIsNamedAndStillRead) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    inUse.open = QStringList{u"工程.1.doc"_s};
    EXPECT_EQ(kinds(), QStringList{u"工程.1 open"_s});
    std::ofstream(fileOf(u"工程.1"_s)) << "junk";
    EXPECT_EQ(kinds(), QStringList({u"工程.1 open"_s, u"工程.1 unreadable"_s}));
}

TEST_F(PlanCheck, ADocumentOfAnotherFormatIsUnreadable) {
    document(u"工程.1"_s, u"说明"_s);
    std::ofstream(fileOf(u"工程.1"_s)) << "{\\rtf1 text}";
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, Kind::unreadable);
    EXPECT_TRUE(found[0].what.contains(u"不是 Word 97-2003 格式的文档"_s));
}

TEST_F(PlanCheck, ADocumentOfAnotherFormatThatIsConvertedComesInAndIsTold) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    const std::string sound = bytesOf(u"工程.1"_s);
    converter.result = word::Bytes(sound.begin(), sound.end());
    converter.isInstalled = true;
    std::ofstream(fileOf(u"工程.1"_s)) << "{\\rtf1 text}";
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(nameOf(found[0].kind), u"converted"_s);
    EXPECT_EQ(found[0].what, u"原文件是RTF 文档，已由办公套件转换，版面可能有出入。"_s);
    EXPECT_FALSE(found[0].keepsDocumentOut());
    EXPECT_FALSE(found[0].keepsFromGenerating());
}

TEST_F(PlanCheck, ADocumentWhoseConversionFailsIsUnreadable) {
    document(u"工程.1"_s, u"说明"_s);
    std::ofstream(fileOf(u"工程.1"_s)) << "{\\rtf1 text}";
    converter.isInstalled = true;
    converter.failure = RunTimeError(error::invalidCall, u"办公套件没有响应。");
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, Kind::unreadable);
    EXPECT_TRUE(found[0].what.contains(u"办公套件没有响应"_s));
}

TEST_F(PlanCheck, ADocumentWithAPasswordIsEncrypted) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    const auto fib = bytesOf(u"工程.1"_s).find(std::string("\xEC\xA5\xC1\x00", 4));
    ASSERT_NE(fib, std::string::npos);
    overwrite(u"工程.1"_s, static_cast<std::streamoff>(fib) + 11, 0x13); // fEncrypted
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, Kind::encrypted) << found[0].what.toStdString();
    EXPECT_TRUE(found[0].keepsDocumentOut());
}

TEST_F(PlanCheck, AnEmptyFolderIsNamed) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    folder(u"工程.2"_s, u"空"_s);
    EXPECT_EQ(kinds(), QStringList{u"工程.2 emptyFolder"_s});
}

TEST_F(PlanCheck, AFirstFolderWhoseHeadingRunsOnIsNamed) {
    folder(u"工程.1"_s, u"概况"_s);
    soundDocument(u"工程.1.1"_s, u"说明"_s);
    runsOn = true;
    EXPECT_EQ(kinds(), QStringList{u"工程.1 runsOn"_s});
}

TEST_F(PlanCheck, AFirstDocumentsHeadingNeverRunsOn) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    folder(u"工程.2"_s, u"概况"_s);
    soundDocument(u"工程.2.1"_s, u"说明"_s);
    runsOn = true;
    EXPECT_TRUE(check().empty());
}

TEST_F(PlanCheck, AHeadingRunsOnBehindFirstDocumentsThatStayOut) {
    document(u"工程.1"_s, u"缺"_s);
    folder(u"工程.2"_s, u"概况"_s);
    soundDocument(u"工程.2.1"_s, u"说明"_s);
    runsOn = true;
    EXPECT_EQ(kinds(), QStringList({u"工程.1 missing"_s, u"工程.2 runsOn"_s}));
}

TEST_F(PlanCheck, FindingsComeInTheOrderOfTheTree) {
    folder(u"工程.1"_s, u"空"_s);
    document(u"工程.2"_s, u"缺"_s);
    folder(u"工程.3"_s, u"也空"_s);
    EXPECT_EQ(kinds(),
              QStringList({u"工程.1 emptyFolder"_s, u"工程.2 missing"_s, u"工程.3 emptyFolder"_s}));
}

TEST_F(PlanCheck, APlanOfOnlyARootIsNamedAsTheGenerationRefusesIt) {
    EXPECT_EQ(kinds(), QStringList{u"工程 emptyPlan"_s});
    EXPECT_EQ(check()[0].what, u"没有内容去生成标书！"_s);
    EXPECT_TRUE(check()[0].keepsFromGenerating());
    TrvEdit.Clear();
    EXPECT_EQ(kinds(), QStringList{u" emptyPlan"_s});
}

TEST_F(PlanCheck, AnOpenDocumentBesideThoseOfTheOutlineIsNamedAtTheRoot) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    std::ofstream(place("plans") / u"工程" / u"草稿.doc") << "draft";
    inUse.open = QStringList{u"草稿.doc"_s};
    EXPECT_EQ(kinds(), QStringList{u"工程 open"_s});
    inUse.open << u"工程.1.doc"_s;
    EXPECT_EQ(kinds(), QStringList{u"工程.1 open"_s}) << "once is enough";
}

TEST_F(PlanCheck, AnOpenDocumentOfTheWorkFolderIsNamedAtTheRoot) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    std::ofstream(place("work") / u"施工方案.doc") << "finished";
    inUse.open = QStringList{u"施工方案.doc"_s};
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].key, u"工程"_s);
    EXPECT_TRUE(found[0].what.contains(u"工作文件夹"_s));
    EXPECT_TRUE(found[0].keepsFromGenerating());
    EXPECT_FALSE(found[0].keepsDocumentOut());
}

TEST_F(PlanCheck, ACoverWithTheNameOfAnotherPlanIsNamedAtTheRoot) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    EXPECT_TRUE(check().empty()) << "no plan of the cover's name";
    plan(u"新楼工程"_s, {});
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(nameOf(found[0].kind), u"foreignCover"_s);
    EXPECT_EQ(found[0].key, u"工程"_s);
    EXPECT_EQ(found[0].what, u"封面的工程名称“新楼工程”属于另一个方案“新楼工程”。"_s);
    EXPECT_FALSE(found[0].keepsFromGenerating());
}

TEST_F(PlanCheck, ANameThatIsPartOfThisPlansOwnNameOrStandsBesideItIsNotAnotherPlans) {
    plan(u"新楼"_s, {});
    change(settings(), u"封面表"_s, u"工程名称"_s, u"新楼和工程"_s);
    EXPECT_EQ(foreign(), QStringList()) << "names this plan too";
    change(settings(), u"封面表"_s, u"工程名称"_s, u"新楼"_s);
    EXPECT_EQ(foreign().size(), 1);
    plan(u"工程二期"_s, {});
    change(settings(), u"封面表"_s, u"工程名称"_s, u"工程二期"_s);
    EXPECT_EQ(foreign(),
              QStringList{u"封面：封面的工程名称“工程二期”属于另一个方案“工程二期”。"_s});
}

TEST_F(PlanCheck, ATitleThatOnlyContainsAnotherPlansNameIsNotAdvisedToBeLoadedAnew) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    plan(u"新楼"_s, {});
    change(settings(), u"封面表"_s, u"工程名称"_s, u"新楼附属建筑"_s);
    const auto found = check();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(nameOf(found[0].kind), u"foreignText"_s);
    EXPECT_EQ(found[0].what, u"封面的工程名称“新楼附属建筑”中有另一个方案的名称“新楼”。"_s);
}

TEST_F(PlanCheck, AOneLetterNameCountsOnlyAsTheWholeText) {
    plan(u"楼"_s, {});
    EXPECT_EQ(foreign(), QStringList());
    change(settings(), u"封面表"_s, u"工程名称"_s, u" 楼 "_s);
    EXPECT_EQ(foreign(), QStringList{u"封面：封面的工程名称“楼”属于另一个方案“楼”。"_s});
}

TEST_F(PlanCheck, AnOfficeOfAnotherPlanIsNamedWhereThisPlanHasItsOwn) {
    plan(u"路"_s, u"路桥公司"_s);
    EXPECT_EQ(foreign(), QStringList()) << "the own one";
    change(settings(), u"封面表"_s, u"单位名称"_s, u"路桥公司"_s);
    EXPECT_EQ(foreign(), QStringList{u"封面：封面的单位名称“路桥公司”是另一个方案“路”的施工单位，"
                                     "本方案的施工单位是“建设公司”。"_s});
    change(settings(), u"封面表"_s, u"单位名称"_s, u"监理公司"_s);
    EXPECT_EQ(foreign(), QStringList()) << "nobody's";
    change(settings(), u"封面表"_s, u"单位名称"_s, u"路桥公司"_s);
    change(*program.gDbUser, u"工程Org"_s, u"施工单位"_s, u""_s);
    EXPECT_EQ(foreign(), QStringList()) << "this plan has none";
}

TEST_F(PlanCheck, HeaderAndFooterThatNameAnotherPlanAreNamedWhileTheyAreTyped) {
    plan(u"路桥"_s, {});
    change(settings(), u"页眉页脚表"_s, u"页眉内容"_s, u"路桥施工方案"_s);
    change(settings(), u"页眉页脚表"_s, u"页脚内容"_s, u"路桥"_s);
    EXPECT_EQ(foreign(), QStringList({u"页眉“路桥施工方案”中有另一个方案的名称“路桥”。"_s,
                                      u"页脚“路桥”中有另一个方案的名称“路桥”。"_s}));
    change(settings(), u"页眉页脚表"_s, u"是否带页眉"_s, u"否"_s);
    change(settings(), u"页眉页脚表"_s, u"是否带页脚"_s, u"否"_s);
    EXPECT_EQ(foreign(), QStringList());
}

TEST_F(PlanCheck, TheCoverThatTheDocumentWillBearIsLookedAt) {
    plan(u"新楼工程"_s, {});
    Row kept = coverRow();
    kept[0].value = u"旧楼"_s;
    putTable(settings(), u"库"_s, {kept});
    putTable(settings(), u"是否设置表"_s, {selectionRow(u"是", u"库", u"否", u"", u"否")});
    EXPECT_EQ(foreign(), QStringList()) << "a cover of the library";
    plan(u"旧楼"_s, {});
    EXPECT_EQ(foreign(), QStringList{u"封面的工程名称“旧楼”属于另一个方案“旧楼”。"_s})
        << "which no load changes";
    putTable(settings(), u"是否设置表"_s, {selectionRow(u"否", u"", u"否", u"", u"是")});
    EXPECT_EQ(foreign(), QStringList()) << "a custom page in its place";
}

TEST_F(PlanCheck, AUserWhoHasEnoughEndsIt) {
    document(u"工程.1"_s, u"缺"_s);
    document(u"工程.2"_s, u"也缺"_s);
    patience = 2;
    EXPECT_EQ(kinds(), QStringList{u"工程.1 missing"_s});
}

TEST_F(PlanCheck, NoFileIsChanged) {
    soundDocument(u"工程.1"_s, u"说明"_s);
    const std::string before = bytesOf(u"工程.1"_s);
    check();
    EXPECT_EQ(bytesOf(u"工程.1"_s), before);
}

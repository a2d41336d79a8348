#include "generate/PlanCheck.h"

#include "generate/GenerationWorld.h"
#include "platform/word/engine/EngineApplication.h"
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
                                    [this](const auto&) { return ++yields < patience; },
                                    &converter});
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
    int patience = 100; // of the user, in nodes
};

} // namespace

TEST_F(PlanCheck, ASoundPlanHasNothingToTell) {
    folder(u"工程.1"_s, u"概况"_s);
    soundDocument(u"工程.1.1"_s, u"说明"_s);
    EXPECT_TRUE(check().empty());
    EXPECT_EQ(yields, 2);
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

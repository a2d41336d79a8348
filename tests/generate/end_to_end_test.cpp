#include "generate/GenerationWorld.h"

#include "platform/word/docfile/check/DocumentCheck.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/engine/EngineApplication.h"
#include "store/DatabaseCreation.h"
#include "support/Text.h"

#include <fstream>
#include <iterator>
#include <set>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::test;
using qvnd::generate::BuildOutcome;

namespace {

// The n-th place asked for stands on page n.
class CountingPages : public word::PageNumberSource {
public:
    std::vector<std::u16string> displayedPages(const word::DocumentContent& /*content*/,
                                               std::span<const word::Cp> positions) override {
        std::vector<std::u16string> pages;
        for (std::size_t i = 0; i < positions.size(); ++i)
            pages.push_back(word::digits(static_cast<int>(i) + 1));
        return pages;
    }
};

class CollectedReport : public word::ImportReport {
public:
    void notCarried(const std::filesystem::path& path, std::u16string_view what) override {
        lines.push_back(path.filename().u16string() + u"：" + std::u16string(what));
    }
    std::vector<std::u16string> lines;
};

word::Bytes bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class NoQuestion : public word::UnsavedChangesQuestion {
public:
    bool save(const std::filesystem::path& /*document*/) override { return false; }
};

// The whole road: outline, settings of a first installation in a real store, our own engine.
class GeneratedDocument : public GenerationWorld {
protected:
    GeneratedDocument() {
        std::filesystem::create_directory(place("plans") / u"工程");
        program.gDbBidSet.reset();
        program.gWs = &workspace;
        store::CreateBidSetDb(program, program.gAppPath + u"first.mdb"_s, QDate(2026, 5, 1));
    }

    void documentWith(const QString& key, const QString& text, std::u16string_view words) {
        document(key, text);
        word::EngineApplication writer(engine);
        word::Document& file = writer.documents().Add();
        writer.Selection().Font().setName(u"楷体");
        writer.Selection().Font().setSize(20);
        writer.Selection().TypeText(words);
        file.SaveAs(place("plans") / u"工程" / (key + u".doc"_s).toStdU16String());
    }

    // Three levels; the first node is a document.
    void plan() {
        documentWith(u"工程.1"_s, u"编制说明"_s, u"说明正文");
        folder(u"工程.2"_s, u"施工部署"_s);
        documentWith(u"工程.2.1"_s, u"总体安排"_s, u"安排正文");
        folder(u"工程.2.2"_s, u"分部方案"_s);
        documentWith(u"工程.2.2.1"_s, u"基坑开挖"_s, u"开挖正文");
        documentWith(u"工程.2.2.2"_s, u"主体结构"_s, u"结构正文");
        documentWith(u"工程.3"_s, u"附则"_s, u"附则正文");
    }

    BuildOutcome generate() {
        word::EngineApplicationFactory real(engine);
        const generate::GenerationServices platform{real,    messages, dlgTB,   events,
                                                    windows, screen,   controls};
        return generate::BuildBid({program, switches, word}, platform, window, TrvEdit);
    }

    word::DocumentContent generated() const {
        return word::readDocument(place("work") / u"施工方案.doc");
    }
    // Whether all characters of the first such words are bold, or all are not; fails otherwise.
    bool isBold(std::u16string_view words) const {
        const word::DocumentContent data = generated();
        const auto at = word::joined(data.main)->text.find(words);
        EXPECT_NE(at, std::u16string::npos);
        std::set<unsigned> found;
        word::Cp begin = 0;
        for (const word::CharacterRun& run : word::joined(data.main)->characters) {
            const auto bold = word::findSprm(data.tables.lists[run.properties], word::sprm::CFBold);
            if (begin + run.length > at && begin < at + words.size())
                found.insert(bold ? bold->operand[0] : 0U);
            begin += run.length;
        }
        EXPECT_EQ(found.size(), 1U);
        return found == std::set<unsigned>{1};
    }
    // The lines of the document that are not blank.
    std::string generatedLines() const {
        const word::DocumentContent data = generated();
        const auto text = QString::fromStdU16String(word::documentText(data.main, data.tables));
        QStringList lines;
        for (const QString& line : text.split(u'\n'))
            if (!line.trimmed().isEmpty())
                lines << line.trimmed();
        return lines.join(u'\n').toStdString();
    }

    CountingPages pages;
    CollectedReport report;
    NoQuestion question;
    word::EngineServices engine{pages, report, question};
};

} // namespace

TEST_F(GeneratedDocument, HoldsCoverContentsHeadingsAndDocumentsInOrder) {
    plan();
    EXPECT_EQ(generate(), BuildOutcome::finished);
    EXPECT_EQ(linesOf("message"), "");
    EXPECT_EQ(report.lines, std::vector<std::u16string>());
    EXPECT_EQ(generatedLines(), R"(工程名称
单位名称
2026-5-1
目录
第一章 编制说明 1
第二章 施工部署 2
第一节 总体安排 3
第二节 分部方案 4
第一小节 基坑开挖 5
第二小节 主体结构 6
第三章 附则 7
第一章 编制说明
说明正文
第二章 施工部署
第一节 总体安排
安排正文
第二节 分部方案
第一小节 基坑开挖
开挖正文
第二小节 主体结构
结构正文
第三章 附则
附则正文)");
}

TEST_F(GeneratedDocument, AlignsThePageNumbersOfTheContentsWhenTheSettingsSaySo) {
    plan();
    change(settings(), u"页眉页脚表"_s, u"是否右对齐"_s, u"是");
    change(settings(), u"页眉页脚表"_s, u"显示级别"_s, 1);
    generate();
    EXPECT_NE(generatedLines().find("目录\n第一章 编制说明\t1\n第二章 施工部署\t2\n第三章 附则\t3\n"
                                    "第一章 编制说明\n说明正文"),
              std::string::npos);
}

TEST_F(GeneratedDocument, SetsTheBodyFontOverEveryCharacterThatCameIn) {
    plan();
    generate();
    const word::DocumentContent data = generated();
    const auto at = word::joined(data.main)->text.find(u"说明正文");
    ASSERT_NE(at, std::u16string::npos);
    word::Cp begin = 0;
    for (const word::CharacterRun& run : word::joined(data.main)->characters) {
        if (begin + run.length > at && begin < at + 4) {
            const auto size = word::findSprm(data.tables.lists[run.properties], word::sprm::CHps);
            ASSERT_TRUE(size.has_value()) << "character " << begin - at;
            EXPECT_EQ(size->operand[0], 24);
        }
        begin += run.length;
    }
}

TEST_F(GeneratedDocument, TheNamesOfTheCoverAreBoldAndItsDateIsNot) {
    plan();
    generate();
    EXPECT_TRUE(isBold(u"工程名称"));
    EXPECT_TRUE(isBold(u"单位名称"));
    EXPECT_FALSE(isBold(u"2026-5-1"));
    EXPECT_TRUE(isBold(u"目录"));
}

TEST_F(GeneratedDocument, ACustomPageWhoseFileIsMissingLeavesTheCoverPageBlank) {
    plan();
    putTable(settings(), u"是否设置表"_s, {selectionRow(u"否", nullptr, u"否", nullptr, u"是")});
    putTable(settings(), u"当前自定义"_s, {{{u"路径"_s, u"扉页"}}});
    EXPECT_EQ(generate(), BuildOutcome::finished);
    EXPECT_NE(linesOf("message").find("扉页.doc"), std::string::npos);
    const word::DocumentContent data = generated();
    EXPECT_TRUE(word::joined(data.main)->text.starts_with(u"\r目录\r"));
    ASSERT_GE(word::joined(data.main)->paragraphs.size(), 2U);
    const auto& look = data.tables.lists[word::joined(data.main)->paragraphs[1].properties];
    EXPECT_TRUE(word::findSprm(look, word::sprm::PFPageBreakBefore).has_value());
}

TEST_F(GeneratedDocument, AMissingDocumentIsNamedAndTheRestIsThere) {
    plan();
    std::filesystem::remove(place("plans") / u"工程" / u"工程.2.1.doc");
    EXPECT_EQ(generate(), BuildOutcome::finished);
    const std::string told = linesOf("message");
    EXPECT_TRUE(told.starts_with("message [information] ")) << told;
    EXPECT_NE(told.find("工程.2.1.doc"), std::string::npos) << told;
    EXPECT_NE(generatedLines().find("第一节 总体安排\n第二节 分部方案"), std::string::npos)
        << generatedLines();
    EXPECT_NE(generatedLines().find("附则正文"), std::string::npos);
}

TEST_F(GeneratedDocument, AStopLeavesTheOutlineWithoutCoverAndContents) {
    plan();
    stopAt("label 正在设置封面...");
    EXPECT_EQ(generate(), BuildOutcome::stopped);
    EXPECT_TRUE(generatedLines().starts_with("第一章 编制说明\n说明正文")) << generatedLines();
    EXPECT_TRUE(generatedLines().ends_with("第三章 附则\n附则正文")) << generatedLines();
}

TEST_F(GeneratedDocument, RebuildingTheContentsLeavesTheFileAsItIs) {
    plan();
    generate();
    const word::Bytes before = bytesOf(place("work") / u"施工方案.doc");
    word::EngineApplicationFactory real(engine);
    const generate::GenerationServices platform{real,    messages, dlgTB,   events,
                                                windows, screen,   controls};
    EXPECT_TRUE(generate::RebuildContents({program, switches, word}, platform));
    EXPECT_FALSE(logged("message"));
    EXPECT_EQ(bytesOf(place("work") / u"施工方案.doc"), before);
}

TEST_F(GeneratedDocument, RebuildingContentsThatAreNotThereIsAnErrorOfTheCaller) {
    plan();
    stopAt("label 正在设置封面...");
    generate();
    word::EngineApplicationFactory real(engine);
    const generate::GenerationServices platform{real,    messages, dlgTB,   events,
                                                windows, screen,   controls};
    try {
        generate::RebuildContents({program, switches, word}, platform);
        FAIL() << "contents were found in a document without any";
    } catch (const RunTimeError& failure) {
        EXPECT_EQ(failure.number(), error::memberNotFound);
    }
}

TEST_F(GeneratedDocument, IsSoundByTheStrictChecker) {
    plan();
    generate();
    const auto findings = word::checkDocument(bytesOf(place("work") / u"施工方案.doc"));
    for (const word::Finding& finding : findings)
        ADD_FAILURE() << finding.rule;
}

#include "platform/word/engine/DocumentSource.h"

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/DocumentMerge.h"
#include "platform/word/engine/EngineFixture.h"
#include "platform/word/engine/NormalTemplate.h"
#include "support/ByteText.h"
#include "support/FakeDocumentConverter.h"

namespace qvnd::test {

using namespace qvnd::word;

namespace {

constexpr const char16_t* whatWouldHelp = u"安装办公套件（LibreOffice）后程序会自动转换它；"
                                          u"也可以用相应的程序打开后另存为 Word 97-2003 文档。";
constexpr const char16_t* conversionOfRtf = u"原文件是RTF 文档，已由办公套件转换，版面可能有出入。";

class DocumentSource : public EngineTest {
protected:
    DocumentSource() {
        converter.result = wordFile(plainWordFile(u"正文\r"));
        services.documents = &converter;
    }

    std::filesystem::path rtf(const std::string& name = "文.doc") {
        return folder.write(name, ascii("{\\rtf1 plain}"));
    }
    // A document of a Word before Word 97: the version in its FIB says so.
    std::filesystem::path oldWord() {
        WordStreams streams = wordStreams(plainWordFile(u"x\r"));
        streams.wordDocument[0] = 0xDC;
        return folder.write("旧.doc", compoundFile(streams));
    }
    std::filesystem::path encrypted() {
        WordStreams streams = wordStreams(plainWordFile(u"x\r"));
        streams.wordDocument[11] |= 0x01;
        return folder.write("密.doc", compoundFile(streams));
    }
    std::filesystem::path damaged() {
        WordStreams streams = wordStreams(plainWordFile(u"x\r"));
        streams.wordDocument.resize(20);
        return folder.write("坏.doc", compoundFile(streams));
    }

    static std::u16string refusalOf(const std::filesystem::path& file, DocumentConverter* by) {
        try {
            readDocumentFile(file, by);
            return {};
        } catch (const RunTimeError& refusal) {
            EXPECT_EQ(refusal.number(), error::invalidCall);
            return refusal.description();
        }
    }

    FakeDocumentConverter converter;
};

} // namespace

TEST_F(DocumentSource, ATextDocumentOfAnotherFormatIsConvertedAndItsFirstRemarkSaysSo) {
    const DocumentContent read = readDocumentFile(rtf(), &converter);
    EXPECT_EQ(documentText(read.main, read.tables), u"正文\n");
    EXPECT_EQ(read.unread.remarks, std::vector<std::u16string>{conversionOfRtf});
    EXPECT_EQ(converter.asked, std::vector{folder.path() / "文.doc"});
}

TEST_F(DocumentSource, LongWorkIsGivenTheReadingOfAFileAndOfWhatTheConverterMakesOfIt) {
    int works = 0;
    const LongWork counted = [&](const std::function<void()>& work) {
        ++works;
        work();
    };
    const auto word = folder.write("字.doc", wordFile(plainWordFile(u"正文\r")));
    const DocumentContent read = readDocumentFile(word, nullptr, counted);
    EXPECT_EQ(documentText(read.main, read.tables), u"正文\n");
    EXPECT_EQ(works, 1);
    readDocumentFile(rtf(), &converter, counted);
    EXPECT_EQ(works, 3);
}

TEST_F(DocumentSource, ADocumentOfAWordBeforeWord97IsConverted) {
    const DocumentContent read = readDocumentFile(oldWord(), &converter);
    EXPECT_EQ(documentText(read.main, read.tables), u"正文\n");
    EXPECT_EQ(read.unread.remarks,
              std::vector<std::u16string>{
                  u"原文件是Word 97 以前版本的文档，已由办公套件转换，版面可能有出入。"});
}

TEST_F(DocumentSource, ADocumentOfOurOwnFormatIsNeverConverted) {
    const auto file = folder.write("文.doc", wordFile(plainWordFile(u"自己\r")));
    EXPECT_TRUE(readDocumentFile(file, &converter).unread.remarks.empty());
    EXPECT_TRUE(converter.asked.empty());
}

TEST_F(DocumentSource, WithoutAConverterTheRefusalSaysWhatTheFileIsAndWhatWouldHelp) {
    const std::u16string expected =
        std::u16string(u"不能打开文件“文.doc”：不是 Word 97-2003 格式的文档，而是RTF 文档。") +
        whatWouldHelp;
    EXPECT_EQ(refusalOf(rtf(), nullptr), expected);
    converter.isInstalled = false;
    EXPECT_EQ(refusalOf(rtf(), &converter), expected);
    EXPECT_EQ(refusalOf(oldWord(), &converter),
              std::u16string(u"不能打开文件“旧.doc”：是 Word 97 以前版本的文档。") + whatWouldHelp);
    EXPECT_TRUE(converter.asked.empty());
}

TEST_F(DocumentSource, WhatNoSuiteTurnsIntoTextIsNotHandedToOne) {
    const auto pdf = folder.write("图.doc", ascii("%PDF-1.4"));
    EXPECT_EQ(refusalOf(pdf, &converter),
              u"不能打开文件“图.doc”：不是 Word 97-2003 格式的文档，而是PDF 文档，"
              u"请用相应的程序打开后另存为 Word 97-2003 文档。");
    const auto unknown = folder.write("文.doc", ascii("plain text"));
    EXPECT_EQ(refusalOf(unknown, &converter),
              u"不能打开文件“文.doc”：不是 Word 97-2003 格式的文档。");
    EXPECT_NE(refusalOf(encrypted(), &converter).find(u"设有打开密码"), std::u16string::npos);
    EXPECT_EQ(refusalOf(damaged(), &converter),
              u"不能打开文件“坏.doc”：文件的基本结构已损坏，不能从中读出文字。"
              u"请在 Word 的“打开”对话框中用“打开并修复”打开它，另存后再试。");
    EXPECT_TRUE(converter.asked.empty());
}

TEST_F(DocumentSource, ADocumentUnderRightsManagementIsRefusedAsSuchAndNotForAPassword) {
    WordStreams streams = wordStreams(plainWordFile(u"placeholder\r"));
    streams.protectedContent.resize(5000);
    EXPECT_EQ(refusalOf(folder.write("限.doc", compoundFile(streams)), &converter),
              u"不能打开文件“限.doc”：受信息权限管理（IRM）保护，请在 Word 中解除限制后再试。");
}

TEST_F(DocumentSource, AConversionThatFailsTellsItsReason) {
    converter.failure = RunTimeError(error::automationServerGone, u"办公套件没有响应。");
    EXPECT_EQ(refusalOf(rtf(), &converter),
              u"不能打开文件“文.doc”：不是 Word 97-2003 格式的文档，而是RTF 文档。"
              u"办公套件没有响应。请用相应的程序打开后另存为 Word 97-2003 文档。");
}

TEST_F(DocumentSource, AResultOfTheSuiteThatCannotBeReadIsToldAsSuch) {
    converter.result = ascii("nothing");
    EXPECT_EQ(refusalOf(rtf(), &converter),
              u"不能打开文件“文.doc”：不是 Word 97-2003 格式的文档，而是RTF 文档。"
              u"办公套件转换的结果无法读取。请用相应的程序打开后另存为 Word 97-2003 文档。");
}

TEST_F(DocumentSource, ARefusalNamesTheFormatToConvertForSuchFilesAlone) {
    const auto formatToConvert = [](const std::filesystem::path& file) {
        try {
            readDocumentFile(file);
        } catch (const DocumentRefusal& refusal) {
            return refusal.formatToConvert();
        }
        ADD_FAILURE() << file << " was read";
        return std::u16string();
    };
    EXPECT_EQ(formatToConvert(rtf()), u"RTF 文档");
    EXPECT_EQ(formatToConvert(oldWord()), u"Word 97 以前版本的文档");
    EXPECT_EQ(formatToConvert(folder.write("b.doc", ascii("%PDF-1.4"))), u"");
    EXPECT_EQ(formatToConvert(encrypted()), u"");
    EXPECT_EQ(formatToConvert(damaged()), u"");
}

TEST_F(DocumentSource, AConversionIsToldApartFromTheRemarks) {
    const DocumentReading converted = readConverting(rtf(), &converter);
    EXPECT_EQ(converted.conversion, conversionOfRtf);
    EXPECT_TRUE(converted.content.unread.remarks.empty());
    const auto own = folder.write("a.doc", wordFile(plainWordFile(u"x\r")));
    EXPECT_EQ(readConverting(own, &converter).conversion, u"");
}

TEST_F(DocumentSource, WhatTakesLongInADocumentIsLongWorkToo) {
    int works = 0;
    services.longWork = [&](const std::function<void()>& work) {
        ++works;
        work();
    };
    const auto file = folder.write("a.doc", wordFile(plainWordFile(u"x\r")));
    EngineApplication with(services);
    with.documents().Open(file);
    EXPECT_EQ(works, 2) << "it is read, and made one to work on";
    with.documents().Add();
    works = 0;
    with.Selection().InsertFile(file);
    EXPECT_EQ(works, 2) << "it is read, and brought in";
    with.ActiveDocument().SaveAs(folder.path() / "b.doc");
    with.Selection().TypeText(u"y");
    with.ActiveDocument().Save();
    EXPECT_EQ(works, 4) << "each save";
}

TEST_F(DocumentSource, AnInsertedFileOfAnotherFormatComesInAndIsReported) {
    EngineApplication with(services);
    with.documents().Add();
    with.Selection().InsertFile(rtf());
    EXPECT_EQ(with.active().read().main().text(0, 2), u"正文");
    EXPECT_EQ(report.conversions,
              std::vector<std::u16string>{u"文.doc: " + std::u16string(conversionOfRtf)});
    EXPECT_TRUE(report.lines.empty()) << "nothing stayed behind";
}

TEST_F(DocumentSource, AnInsertionReportsWhatGotOtherNames) {
    DocumentContent content = normalTemplate();
    content.bookmarks = {{u"图", 0, 1, 0}};
    DocumentWriter().saveAs(folder.path() / "a.doc", content);
    selection().InsertFile(folder.path() / "a.doc");
    EXPECT_TRUE(report.changes.empty());
    selection().InsertFile(folder.path() / "a.doc");
    ASSERT_EQ(report.changes.size(), 1U);
    EXPECT_TRUE(report.changes[0].starts_with(u"a.doc: 书签 1 个改了名")) << report.changes.size();
    EXPECT_TRUE(report.lines.empty());
}

TEST_F(DocumentSource, AFailedConversionLeavesTheDocumentAsItWas) {
    converter.failure = RunTimeError(error::invalidCall, u"转换已停止。");
    EngineApplication with(services);
    with.documents().Add();
    with.Selection().TypeText(u"abc");
    with.active().selectInMain(0, 2);
    EXPECT_THROW(with.Selection().InsertFile(rtf()), RunTimeError);
    EXPECT_EQ(with.active().read().main().text(0, 4), u"abc\r");
    EXPECT_TRUE(report.lines.empty());
}

TEST_F(DocumentSource, AnOpenedFileOfAnotherFormatIsReportedWithItsFirstSave) {
    EngineApplication with(services);
    with.documents().Open(rtf());
    EXPECT_TRUE(report.lines.empty());
    with.ActiveDocument().SaveAs(folder.path() / "新.doc");
    EXPECT_EQ(report.lines,
              std::vector<std::u16string>{u"新.doc: " + std::u16string(conversionOfRtf)});
}

TEST_F(DocumentSource, MergingConvertsAndReportsEachFileOfAnotherFormat) {
    const std::vector<std::filesystem::path> files{rtf("一.doc"), rtf("二.doc")};
    const auto merged = mergeDocuments(files, {}, report, &converter);
    EXPECT_EQ(merged->main().text(0, merged->main().size()), u"正文\r正文\r");
    EXPECT_EQ(report.conversions.size(), 2U);
}

} // namespace qvnd::test

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/StoryEditor.h"
#include "platform/word/engine/WorkingDocument.h"
#include "support/ChangedVariable.h"
#include "support/FakeOffice.h"
#include "support/LossyDocument.h"
#include "support/Qvndctl.h"
#include "tools/Command.h"

#ifdef __linux__
#include "support/RestrictedProcess.h"
#endif

#include <utility>

using namespace qvnd;
using namespace qvnd::tools;

namespace {

class DocCommands : public Qvndctl {
protected:
    QString documentOf(const QString& name, std::u16string_view text) {
        word::WorkingDocument document(word::normalTemplate());
        word::Insertion start;
        word::StoryEditor(document.main(), document.tables(), start).typeText(text);
        word::DocumentWriter().saveAs(folder.path(name).toStdU16String(), document.content());
        return folder.path(name);
    }
};

} // namespace

TEST_F(DocCommands, MergePutsTheFilesOneAfterAnother) {
    const QString target = folder.path("out.doc");
    EXPECT_EQ(qvndctl({"doc", "merge", "--font", "楷体_GB2312", "--size", "12", target,
                       documentOf("a.doc", u"甲\r乙"), documentOf("b.doc", u"丙")}),
              ExitStatus::done);
    EXPECT_EQ(err, "");
    EXPECT_EQ(qvndctl({"doc", "text", target}), ExitStatus::done);
    EXPECT_EQ(out.trimmed(), "甲\n乙\n丙");
    EXPECT_EQ(qvndctl({"doc", "check", target}), ExitStatus::done);
    EXPECT_EQ(out.trimmed(), "");
}

TEST_F(DocCommands, MergeOfAFileThatIsNoDocumentSaysWhyAndWritesNothing) {
    folder.write("a.doc", "no document");
    EXPECT_EQ(qvndctl({"doc", "merge", folder.path("out.doc"), folder.path("a.doc")}),
              ExitStatus::refused);
    EXPECT_EQ(err.trimmed(), "警告！: 不能打开文件“a.doc”：不是 Word 97-2003 格式的文档。");
    EXPECT_FALSE(folder.exists("out.doc"));
}

TEST_F(DocCommands, MergeReplacesAFileOnlyWhenTheUserSaysSo) {
    const QString target = documentOf("out.doc", u"旧");
    const QString source = documentOf("a.doc", u"新");
    EXPECT_EQ(qvndctl({"doc", "merge", target, source}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("“" + target + "”已经存在，要替换它吗？")) << err.toStdString();
    qvndctl({"doc", "text", target});
    EXPECT_EQ(out.trimmed(), "旧");
    EXPECT_EQ(qvndctl({"--yes", "doc", "merge", target, source}), ExitStatus::done);
    qvndctl({"doc", "text", target});
    EXPECT_EQ(out.trimmed(), "新");
    EXPECT_FALSE(folder.exists("home")) << "a file elsewhere is not the program's";
}

TEST_F(DocCommands, MergeIntoTheWorkSpaceIsRecordedAndCanBeTakenBack) {
    expectDone({"plan", "create", "甲"});
    const QString source = documentOf("a.doc", u"新");
    const QString target = folder.path("home/Sys/用户模板/甲/甲.1.doc");
    expectDone({"doc", "merge", target, source});
    EXPECT_TRUE(folder.exists("home/Sys/用户模板/甲/甲.1.doc"));
    expectDone({"history", "undo"});
    EXPECT_EQ(out.trimmed(), "把各文件依次合成一个文档[甲.1.doc]");
    EXPECT_FALSE(folder.exists("home/Sys/用户模板/甲/甲.1.doc"));
}

TEST_F(DocCommands, ADocumentThatIsOpenInAWordProcessorIsNotReplaced) {
    const QString target = documentOf("out.doc", u"旧");
    const QString source = documentOf("a.doc", u"新");
    folder.write(".~lock.out.doc#", ",planner,another machine,21.11.2026 08:59,;");
    EXPECT_EQ(qvndctl({"--yes", "doc", "merge", target, source}), ExitStatus::refused);
    EXPECT_EQ(err.trimmed(),
              "提示: “" + target + "”正在另一个程序中打开，请先关闭它再操作。没有改动任何东西。");
    qvndctl({"doc", "text", target});
    EXPECT_EQ(out.trimmed(), "旧");
}

TEST_F(DocCommands, PdfAndPictureReplaceAFileOnlyWhenTheUserSaysSo) {
    const QString document = documentOf("a.doc", u"甲");
    for (const char* command : {"pdf", "png"}) {
        folder.write("out", "mine");
        const QStringList words{"doc", command, document, folder.path("out")};
        EXPECT_EQ(qvndctl(words), ExitStatus::refused);
        EXPECT_TRUE(err.contains("“" + folder.path("out") + "”已经存在，要替换它吗？"))
            << err.toStdString();
        EXPECT_EQ(folder.read("out"), "mine");
        EXPECT_EQ(qvndctl(QStringList{"--yes"} + words), ExitStatus::done);
        EXPECT_NE(folder.read("out"), "mine") << command;
    }
    EXPECT_FALSE(folder.exists("home")) << "a file elsewhere is not the program's";
}

TEST_F(DocCommands, PdfAndPictureInTheWorkSpaceAreRecordedAndCanBeTakenBack) {
    expectDone({"plan", "create", "甲"});
    const QString document = documentOf("a.doc", u"甲");
    const QString name = "home/Sys/用户模板/甲/图";
    for (const auto& [command, title] :
         {std::pair("pdf", "把文档写成 PDF[图]"), std::pair("png", "把一页画成图片[图]")}) {
        folder.write(name, "mine");
        expectDone({"--yes", "doc", command, document, folder.path(name)});
        EXPECT_NE(folder.read(name), "mine");
        expectDone({"history", "undo"});
        EXPECT_EQ(out.trimmed(), title);
        EXPECT_EQ(folder.read(name), "mine");
    }
}

#ifdef __linux__
TEST_F(DocCommands, AFileStaysWhereThereIsNoRoomToDrawThePagesThatAreToReplaceIt) {
    const QString document = documentOf("a.doc", u"甲");
    for (const char* command : {"pdf", "png"}) {
        folder.write("out", "mine");
        const auto status = test::RestrictedProcess::withFilesUpTo(20, [&] {
            return std::optional(static_cast<long>(
                qvndctl({"--yes", "doc", command, document, folder.path("out")})));
        });
        if (!status) {
            GTEST_SKIP() << "the size of files cannot be limited here";
        }
        EXPECT_EQ(*status, static_cast<long>(ExitStatus::refused)) << command;
        EXPECT_EQ(folder.read("out"), "mine") << command;
    }
}
#endif

TEST_F(DocCommands, MergeTellsWhatAFileLoses) {
    test::writeWithHeader(folder.path("a.doc"));
    EXPECT_EQ(qvndctl({"doc", "merge", folder.path("out.doc"), folder.path("a.doc")}),
              ExitStatus::done);
    EXPECT_EQ(err.trimmed(), "提示: a.doc：" + test::lossOfHeader);
}

TEST_F(DocCommands, PdfOfTheOfficeSuiteIsWhatThatMakesOfTheDocument) {
    const test::FakeOffice office;
    folder.makeFolder("bin");
    ASSERT_TRUE(QFile::link(office.settings().program, folder.path("bin/soffice")));
    const test::ChangedVariable path("PATH", folder.path("bin").toUtf8() + ":/usr/bin:/bin");
    folder.write("a.doc", "text");
    EXPECT_EQ(
        qvndctl({"--json", "doc", "pdf", "--office", folder.path("a.doc"), folder.path("a.pdf")}),
        ExitStatus::done);
    EXPECT_EQ(folder.read("a.pdf"), "%PDF-1.4 of text");
    EXPECT_TRUE(out.contains("\"output\"")) << out.toStdString();
}

TEST_F(DocCommands, WithoutTheOfficeSuiteThereIsNoPdfOfItAndThatIsSaid) {
    folder.makeFolder("bin");
    const test::ChangedVariable path("PATH", folder.path("bin").toUtf8());
    folder.write("a.doc", "text");
    EXPECT_EQ(qvndctl({"doc", "pdf", "--office", folder.path("a.doc"), folder.path("a.pdf")}),
              ExitStatus::refused);
    EXPECT_EQ(err.trimmed(), "警告！: 没有安装办公套件（LibreOffice），无法转换“a.doc”。");
    EXPECT_FALSE(folder.exists("a.pdf"));
}

TEST_F(DocCommands, PdfHasThePagesOfTheDocument) {
    const QString document = documentOf("a.doc", u"甲");
    EXPECT_EQ(json({"doc", "pdf", document, folder.path("a.pdf")}).toObject()["pages"].toInt(), 1);
    EXPECT_TRUE(folder.read("a.pdf").startsWith("%PDF-"));
    EXPECT_EQ(json({"doc", "pages", document}).toObject()["pages"].toInt(), 1);
}

TEST_F(DocCommands, PngIsThePageThatIsAskedForAndOneThatIsNotThereIsRefused) {
    const QString document = documentOf("a.doc", u"甲");
    const auto png = [&](const QString& page) {
        return qvndctl(
            {"doc", "png", "--page", page, "--width", "80", document, folder.path("a.png")});
    };
    for (const char* page : {"0", "2"}) {
        EXPECT_EQ(png(page), ExitStatus::refused);
        EXPECT_TRUE(err.contains(QString("没有第 %1 页，文档共 1 页。").arg(page)))
            << err.toStdString();
    }
    EXPECT_FALSE(folder.exists("a.png"));
    EXPECT_EQ(png("1"), ExitStatus::done) << err.toStdString();
    EXPECT_TRUE(folder.read("a.png").startsWith("\x89PNG"));
}

TEST_F(DocCommands, MergeWithoutAFileOrWithASizeThatIsNoneIsWrongUsage) {
    EXPECT_EQ(qvndctl({"doc", "merge", folder.path("out.doc")}), ExitStatus::wrongUsage);
    EXPECT_EQ(qvndctl({"doc", "merge", "--size", "big", "out.doc", "a.doc"}),
              ExitStatus::wrongUsage);
}

TEST_F(DocCommands, InfoCountsAsOneJsonValue) {
    const QString file = documentOf("a.doc", u"甲\r乙");
    EXPECT_EQ(qvndctl({"--json", "doc", "info", file}), ExitStatus::done);
    EXPECT_TRUE(out.contains("\"paragraphs\":2")) << out.toStdString();
    EXPECT_TRUE(out.contains("\"sections\":1")) << out.toStdString();
    EXPECT_TRUE(out.contains("\"pages\":1")) << out.toStdString();
}

TEST_F(DocCommands, CheckNamesEachFindingAndRefuses) {
    folder.write("a.doc", "no document");
    EXPECT_EQ(qvndctl({"doc", "check", folder.path("a.doc")}), ExitStatus::refused);
    EXPECT_TRUE(out.contains(": ")) << out.toStdString();
    EXPECT_EQ(qvndctl({"doc", "check", folder.path("missing.doc")}), ExitStatus::refused);
}

#include "platform/error/RunTimeError.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/engine/NormalTemplate.h"
#include "platform/word/engine/StoryEditor.h"
#include "platform/word/engine/WorkingDocument.h"
#include "support/Files.h"
#include "support/Text.h"
#include "tools/Command.h"
#include "tools/Run.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace qvnd;
using namespace qvnd::tools;

namespace {

class DocCommands : public testing::Test {
protected:
    QString documentOf(const QString& name, std::u16string_view text) {
        word::WorkingDocument document(word::normalTemplate());
        word::Insertion start;
        word::StoryEditor(document.main(), document.tables(), start).typeText(text);
        word::DocumentWriter().saveAs(folder.path(name).toStdU16String(), document.content());
        return folder.path(name);
    }
    ExitStatus ran(const QStringList& words) {
        std::ostringstream outStream;
        std::ostringstream errStream;
        const ExitStatus status = run(words, outStream, errStream);
        out = QString::fromStdString(outStream.str());
        err = QString::fromStdString(errStream.str());
        return status;
    }

    test::TemporaryFolder folder;
    QString out;
    QString err;
};

} // namespace

TEST_F(DocCommands, MergePutsTheFilesOneAfterAnother) {
    const QString target = folder.path("out.doc");
    EXPECT_EQ(ran({"doc", "merge", "--font", "楷体_GB2312", "--size", "12", target,
                   documentOf("a.doc", u"甲\r乙"), documentOf("b.doc", u"丙")}),
              ExitStatus::done);
    EXPECT_EQ(err, "");
    EXPECT_EQ(ran({"doc", "text", target}), ExitStatus::done);
    EXPECT_EQ(out.trimmed(), "甲\n乙\n丙");
    EXPECT_EQ(ran({"doc", "check", target}), ExitStatus::done);
    EXPECT_EQ(out.trimmed(), "");
}

TEST_F(DocCommands, MergeOfAFileThatIsNoDocumentSaysWhyAndWritesNothing) {
    folder.write("a.doc", "no document");
    EXPECT_EQ(ran({"doc", "merge", folder.path("out.doc"), folder.path("a.doc")}),
              ExitStatus::refused);
    EXPECT_EQ(err.trimmed(), "警告！: 不能打开文件“a.doc”：不是 Word 97-2003 格式的文档。");
    EXPECT_FALSE(folder.exists("out.doc"));
}

TEST_F(DocCommands, MergeWithoutAFileOrWithASizeThatIsNoneIsWrongUsage) {
    EXPECT_EQ(ran({"doc", "merge", folder.path("out.doc")}), ExitStatus::wrongUsage);
    EXPECT_EQ(ran({"doc", "merge", "--size", "big", "out.doc", "a.doc"}), ExitStatus::wrongUsage);
}

TEST_F(DocCommands, InfoCountsAsOneJsonValue) {
    const QString file = documentOf("a.doc", u"甲\r乙");
    EXPECT_EQ(ran({"--json", "doc", "info", file}), ExitStatus::done);
    EXPECT_TRUE(out.contains("\"paragraphs\":2")) << out.toStdString();
    EXPECT_TRUE(out.contains("\"sections\":1")) << out.toStdString();
}

TEST_F(DocCommands, CheckNamesEachFindingAndRefuses) {
    folder.write("a.doc", "no document");
    EXPECT_EQ(ran({"doc", "check", folder.path("a.doc")}), ExitStatus::refused);
    EXPECT_TRUE(out.contains(": ")) << out.toStdString();
    EXPECT_EQ(ran({"doc", "check", folder.path("missing.doc")}), ExitStatus::refused);
}

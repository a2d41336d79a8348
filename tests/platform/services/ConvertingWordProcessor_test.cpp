#include "platform/office/ConvertingWordProcessor.h"

#include "support/Files.h"
#include "support/RecordingWord.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::office;

namespace {

struct Converting : testing::Test {
    test::TemporaryFolder folder;
    test::CallLog log;
    test::RecordingApplicationFactory engine{log};

    Converting() { log.base = folder.path().toStdString(); }

    std::unique_ptr<word::Application> application(const QString& program) {
        return ConvertingWordProcessor(engine, OfficeSuite(folder.path("profile"), program))
            .create();
    }
};

TEST_F(Converting, DocumentsOfTheEnginesFormatGoStraightToIt) {
    const auto word = application({});
    word->documents().Open(files::toPath(folder.path("一.doc")));
    word->documents().Open(files::toPath(folder.path("二.DOT")));
    word->documents().Add();
    EXPECT_EQ(log.lines,
              std::vector<std::string>({"create Word.Application", "Documents.Open 一.doc",
                                        "Documents.Open 二.DOT", "Documents.Add"}));
}

TEST_F(Converting, WithoutASuiteAnotherFormatIsRefusedInPlainWords) {
    folder.write("说明.rtf", "{\\rtf1 x}");
    const auto word = application({});
    try {
        word->documents().Open(files::toPath(folder.path("说明.rtf")));
        FAIL();
    } catch (const RunTimeError& e) {
        const QString text = QString::fromStdU16String(e.description());
        EXPECT_TRUE(text.contains("说明.rtf") && text.contains("LibreOffice"));
    }
}

TEST_F(Converting, AnotherFormatReachesTheEngineAsADoc) {
    const QString program = OfficeSuite::installedProgram();
    if (program.isEmpty()) {
        GTEST_SKIP() << "no office suite is installed";
    }
    folder.write("说明.rtf", "{\\rtf1\\ansi one}");
    const auto word = application(program);
    word->documents().Open(files::toPath(folder.path("说明.rtf")));
    ASSERT_EQ(log.lines.size(), 2U);
    EXPECT_TRUE(log.lines[1].ends_with("/1.doc")) << log.lines[1];
    const std::string opened = log.lines[1].substr(std::string("Documents.Open ").size());
    QFile converted(QString::fromStdString(opened));
    ASSERT_TRUE(converted.open(QIODevice::ReadOnly));
    EXPECT_TRUE(converted.readAll().startsWith("\xD0\xCF\x11\xE0"));
}

TEST_F(Converting, EverythingElseIsTheEngines) {
    const auto word = application({});
    word->setVisible(true);
    word->Activate();
    word->Quit();
    EXPECT_EQ(word->CentimetersToPoints(2), 20);
    EXPECT_EQ(&word->ActiveDocument(), &word->ActiveDocument());
    EXPECT_EQ(log.lines.back(), "Application.Quit");
}

} // namespace

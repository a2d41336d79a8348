#include "platform/office/OfficeSuite.h"

#include "platform/error/RunTimeError.h"
#include "platform/office/OfficePageNumbers.h"
#include "platform/office/PdfDestinations.h"
#include "platform/office/PdfPrinter.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "support/ContentBuilder.h"
#include "support/FixedFonts.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QTemporaryDir>
#include <QUrl>

#include <algorithm>
#include <future>

using namespace Qt::StringLiterals;

namespace qvnd::office {
namespace {

long numberOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

class OfficeSuiteTest : public testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes, bool executable = false) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        if (executable) {
            file.setPermissions(file.permissions() | QFile::ExeOwner);
        }
        return file.fileName();
    }
    QByteArray read(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // A program that stands in for the suite: a shell script.
    OfficeSuite suite(const QByteArray& script, OfficeSuite::Stop stop = {}) {
        return OfficeSuite(folder.filePath(u"profile"_s),
                           write(u"suite.sh"_s, "#!/bin/sh\n" + script, true), std::move(stop));
    }

    QTemporaryDir folder;
};

TEST_F(OfficeSuiteTest, ASuiteForServersHasNoWindows) {
    QDir(folder.path()).mkpath(u"suite"_s);
    write(u"suite/soffice"_s, "#!/bin/sh\n");
    write(u"suite/soffice.bin"_s, "");
    const QString program = folder.filePath(u"soffice"_s);
    ASSERT_TRUE(QFile::link(folder.filePath(u"suite/soffice"_s), program));
    EXPECT_FALSE(OfficeSuite::hasWindows(program));
    write(u"suite/libvclplug_gtk3lo.so"_s, "");
    EXPECT_TRUE(OfficeSuite::hasWindows(program));
    EXPECT_TRUE(OfficeSuite::hasWindows(write(u"wrapper"_s, "#!/bin/sh\n")));
}

TEST_F(OfficeSuiteTest, TheProfilesAddressIsAsciiWhateverItsFolder) {
    const QString profile = folder.filePath(u"卷宗 编制/profile"_s);
    const QString seen = folder.filePath(u"seen"_s);
    const OfficeSuite suite(
        profile, write(u"suite.sh"_s,
                       "#!/bin/sh\nprintf %s \"$1\" > '" + seen.toUtf8() + "'\nexit 1\n", true));
    EXPECT_EQ(numberOf([&] {
                  suite.convert(write(u"a.rtf"_s, "{}"), folder.filePath(u"a.doc"_s), u"doc"_s);
              }),
              error::invalidCall);
    EXPECT_EQ(read(seen), "-env:UserInstallation=" + QUrl::fromLocalFile(profile).toEncoded());
}

TEST_F(OfficeSuiteTest, EveryArgumentIsAsciiWhateverTheProgramsName) {
    const QString name = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(u"卷宗编制系统"_s);
    const QString seen = folder.filePath(u"seen"_s);
    const OfficeSuite fake = suite("printf '%s\\n' \"$@\" > '" + seen.toUtf8() + "'\nexit 1\n");
    EXPECT_EQ(numberOf([&] {
                  fake.convert(write(u"甲.rtf"_s, "{}"), folder.filePath(u"乙.doc"_s), u"doc"_s);
              }),
              error::invalidCall);
    QCoreApplication::setApplicationName(name);
    const QByteArray arguments = read(seen);
    EXPECT_TRUE(arguments.contains("document.rtf"));
    EXPECT_TRUE(std::all_of(arguments.begin(), arguments.end(), [](char c) { return c > 0; }))
        << arguments.toStdString();
}

TEST_F(OfficeSuiteTest, TheCacheFolderDoesNotBearTheProgramsName) {
    const QString name = QCoreApplication::applicationName();
    QCoreApplication::setApplicationName(u"卷宗编制系统"_s);
    EXPECT_FALSE(OfficeSuite::cacheFolder().contains(u"卷宗"_s));
    EXPECT_TRUE(OfficeSuite::cacheFolder().endsWith(u"/qvnd"_s));
    QCoreApplication::setApplicationName(name);
}

// A suite that fails where another one with its profile is at work.
const QByteArray alone = "mkdir \"$0.busy\" || exit 1\n"
                         "sleep 0.2\n"
                         "while [ $# -gt 1 ]; do [ \"$1\" = --outdir ] && out=$2; shift; done\n"
                         "mkdir -p \"$out\"; echo done > \"$out/document.doc\"\n"
                         "rmdir \"$0.busy\"\n";

TEST_F(OfficeSuiteTest, TwoConversionsWithOneProfileWaitForEachOther) {
    const OfficeSuite fake = suite(alone);
    const QString source = write(u"a.rtf"_s, "{}");
    const auto convertTo = [&](const QString& name) {
        return numberOf([&] { fake.convert(source, folder.filePath(name), u"doc"_s); });
    };
    auto other = std::async(std::launch::async, convertTo, u"b.doc"_s);
    EXPECT_EQ(convertTo(u"c.doc"_s), 0);
    EXPECT_EQ(other.get(), 0);
    EXPECT_EQ(read(folder.filePath(u"b.doc"_s)), "done\n");
    EXPECT_EQ(read(folder.filePath(u"c.doc"_s)), "done\n");
}

TEST_F(OfficeSuiteTest, AConversionThatWaitsForAnotherCanBeStopped) {
    QLockFile other(folder.filePath(u"profile.lock"_s));
    ASSERT_TRUE(other.lock());
    const OfficeSuite fake = suite("touch \"$0.ran\"", [] { return true; });
    const QString source = write(u"a.rtf"_s, "{}");
    EXPECT_EQ(numberOf([&] { fake.convert(source, folder.filePath(u"b.doc"_s), u"doc"_s); }),
              error::invalidCall);
    EXPECT_FALSE(QFile::exists(folder.filePath(u"suite.sh.ran"_s)));
}

TEST_F(OfficeSuiteTest, WithoutASuiteTheFailureSaysSo) {
    const OfficeSuite none(folder.filePath(u"profile"_s), QString());
    const QString source = write(u"a.rtf"_s, "{}");
    try {
        none.convert(source, folder.filePath(u"a.doc"_s), u"doc"_s);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), error::fileNotFound);
        EXPECT_EQ(error.description(), u"没有安装办公套件（LibreOffice），无法转换“a.rtf”。");
    }
}

TEST_F(OfficeSuiteTest, TheResultReplacesTheTargetWhole) {
    // The last four arguments: format, --outdir, folder, source.
    const OfficeSuite fake = suite("while [ \"$1\" != --outdir ]; do shift; done\nmkdir -p \"$2\"\n"
                                   "printf new > \"$2/document.doc\"\n");
    const QString target = write(u"目标 文件.doc"_s, "old and longer");
    fake.convert(write(u"a.rtf"_s, "{}"), target, u"doc"_s);
    EXPECT_EQ(read(target), "new");
    EXPECT_EQ(QDir(folder.path()).entryList({u"*.neu"_s}).size(), 0);
}

TEST_F(OfficeSuiteTest, AFailureLeavesTheTargetAsItWas) {
    const QString target = write(u"a.doc"_s, "old");
    const QString source = write(u"a.rtf"_s, "{}");
    EXPECT_EQ(numberOf([&] { suite("exit 1\n").convert(source, target, u"doc"_s); }), 5);
    EXPECT_EQ(numberOf([&] { suite("exit 0\n").convert(source, target, u"doc"_s); }), 5);
    EXPECT_EQ(read(target), "old");
}

TEST_F(OfficeSuiteTest, AMissingSourceIsNamed) {
    EXPECT_EQ(numberOf([&] {
                  suite("exit 0\n")
                      .convert(folder.filePath(u"没有.rtf"_s), folder.filePath(u"a.doc"_s),
                               u"doc"_s);
              }),
              error::fileNotFound);
}

TEST_F(OfficeSuiteTest, AStopEndsASuiteThatHangs) {
    QElapsedTimer clock;
    clock.start();
    int asked = 0;
    const OfficeSuite hanging = suite("exec sleep 60\n", [&] { return ++asked > 2; });
    const QString source = write(u"a.rtf"_s, "{}");
    EXPECT_EQ(numberOf([&] { hanging.convert(source, folder.filePath(u"a.doc"_s), u"doc"_s); }), 5);
    EXPECT_LT(clock.elapsed(), 30'000);
}

TEST_F(OfficeSuiteTest, AFileThatIsNoPdfIsRefused) {
    const QString path = write(u"a.pdf"_s, "no pdf");
    EXPECT_EQ(numberOf([&] { readPdfDestinations(path); }), 5);
}

// A document whose second and third paragraphs each start a page.
word::DocumentContent threePages(test::ContentBuilder& builder) {
    using namespace word;
    const Bytes onNewPage = withSprm8({}, sprm::PFPageBreakBefore, 1);
    builder.add({{u"封面\r", {}}});
    builder.add({{u"第一章\r", {}}}, 1, onNewPage);
    builder.add({{u"第二章\r", {}}}, 1, onNewPage);
    return std::move(builder.content);
}

TEST_F(OfficeSuiteTest, APdfIsAskedForWithABookmarkForEachHeading) {
    const QString seen = folder.filePath(u"seen"_s);
    SuitePdfPrinter printer(suite("printf '%s\\n' \"$@\" > '" + seen.toUtf8() +
                                  "'\n"
                                  "while [ \"$1\" != --outdir ]; do shift; done\nmkdir -p \"$2\"\n"
                                  "printf drawn > \"$2/document.pdf\"\n"));
    const QString pdf = write(u"施工方案.pdf"_s, "earlier");
    printer.print(write(u"施工方案.doc"_s, "text"), pdf);
    const QByteArrayList arguments = read(seen).split('\n');
    const auto option = arguments.indexOf("--convert-to");
    ASSERT_GE(option, 0);
    EXPECT_EQ(
        arguments.value(option + 1),
        "pdf:writer_pdf_Export:{\"ExportBookmarks\":{\"type\":\"boolean\",\"value\":\"true\"}}");
    EXPECT_EQ(read(pdf), "drawn");
}

TEST_F(OfficeSuiteTest, TheInstalledSuiteTellsThePagesOfPositions) {
    if (OfficeSuite::installedProgram().isEmpty()) {
        GTEST_SKIP() << "no office suite is installed";
    }
    test::ContentBuilder builder;
    const word::DocumentContent content = threePages(builder);
    OfficePageNumbers numbers{OfficeSuite(folder.filePath(u"profile"_s))};
    EXPECT_EQ(numbers.displayedPages(content, std::vector<word::Cp>{0, 3, 7}),
              (std::vector<std::u16string>{u"1", u"2", u"3"}));
    EXPECT_EQ(numbers.pages(), 3);
}

} // namespace
} // namespace qvnd::office

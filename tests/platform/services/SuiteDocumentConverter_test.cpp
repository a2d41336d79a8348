#include "platform/office/SuiteDocumentConverter.h"

#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/word/docfile/text/DocumentText.h"
#include "platform/word/engine/DocumentSource.h"
#include "support/Files.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::office {
namespace {

class FolderOfFiles : public testing::Test {
protected:
    QString fileOf(const QString& name, const QByteArray& bytes) {
        folder.write(name, bytes);
        return folder.path(name);
    }

    test::TemporaryFolder folder;
};

class SuiteDocumentConverterTest : public FolderOfFiles {
protected:
    // A program that stands in for the suite: a shell script.
    SuiteDocumentConverter converter(const QByteArray& script) {
        const QString program = fileOf("suite.sh", "#!/bin/sh\n" + script);
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return SuiteDocumentConverter(OfficeSuite(folder.path("profile"), program));
    }
};

TEST_F(SuiteDocumentConverterTest, WithoutASuiteThereIsNone) {
    EXPECT_FALSE(SuiteDocumentConverter(OfficeSuite(folder.path("profile"), {})).isAvailable());
    EXPECT_TRUE(converter("").isAvailable());
}

TEST_F(SuiteDocumentConverterTest, TheSuiteIsAskedForAWord97DocumentAndItsBytesComeBack) {
    SuiteDocumentConverter asked = converter("while [ \"$1\" != --convert-to ]; do shift; done\n"
                                             "echo \"$2\" > '" +
                                             folder.path("asked").toUtf8() +
                                             "'\n"
                                             "mkdir -p \"$4\"; cat \"$5\" > \"$4/document.doc\"\n");
    const QString source = fileOf("文.doc", "the bytes");
    const word::Bytes bytes = asked.converted(files::toPath(source));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "the bytes");
    EXPECT_EQ(folder.read("asked"), "doc:MS Word 97\n");
    EXPECT_EQ(folder.read("文.doc"), "the bytes");
}

TEST_F(SuiteDocumentConverterTest, ASuiteThatFailsIsAnError) {
    SuiteDocumentConverter failing = converter("exit 1\n");
    const QString source = fileOf("文.doc", "x");
    EXPECT_THROW(failing.converted(files::toPath(source)), RunTimeError);
}

// Reads documents of other formats under the name of a .doc by the suite that is installed.
class InstalledSuite : public FolderOfFiles {
protected:
    void SetUp() override {
        if (OfficeSuite::installedProgram().isEmpty()) {
            GTEST_SKIP() << "no office suite is installed";
        }
        suite = std::make_unique<OfficeSuite>(folder.path("profile"));
    }
    QString textOf(const QString& file) {
        SuiteDocumentConverter converter(*suite);
        const word::DocumentContent read = word::readDocumentFile(files::toPath(file), &converter);
        EXPECT_FALSE(read.unread.remarks.empty());
        return QString::fromStdU16String(word::documentText(read.main, read.tables)).trimmed();
    }
    // The document as the suite writes it in that format, under the name of a .doc.
    QString as(const QString& source, const QString& filter) {
        QString target = folder.path(u"as-"_s + filter.section(u':', 0, 0) + u".doc"_s);
        suite->convert(source, target, filter);
        return target;
    }

    std::unique_ptr<OfficeSuite> suite;
};

TEST_F(InstalledSuite, RtfWebPagesAndXmlUnderTheNameOfADocAreRead) {
    EXPECT_EQ(textOf(fileOf("rtf.doc", "{\\rtf1\\ansi one}")), u"one"_s);
    EXPECT_EQ(textOf(fileOf("page.doc", "<html><body><p>two</p></body></html>")), u"two"_s);
    EXPECT_EQ(textOf(fileOf("xml.doc",
                            "<?xml version=\"1.0\"?><?mso-application progid=\"Word.Document\"?>"
                            "<w:wordDocument "
                            "xmlns:w=\"http://schemas.microsoft.com/office/word/2003/wordml\">"
                            "<w:body><w:p><w:r><w:t>three</w:t></w:r></w:p></w:body>"
                            "</w:wordDocument>")),
              u"three"_s);
}

TEST_F(InstalledSuite, LaterDocumentsUnderTheNameOfADocAreRead) {
    const QString source = fileOf("source.rtf", "{\\rtf1\\ansi one}");
    EXPECT_EQ(textOf(as(source, u"docx"_s)), u"one"_s);
    EXPECT_EQ(textOf(as(source, u"odt"_s)), u"one"_s);
    EXPECT_EQ(textOf(as(source, u"fodt"_s)), u"one"_s);
}

} // namespace
} // namespace qvnd::office

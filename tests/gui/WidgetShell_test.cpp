#include "platform/desktop/windows/WidgetShell.h"

#include "platform/error/RunTimeError.h"
#include "support/ChangedVariable.h"
#include "support/Errors.h"
#include "support/Files.h"
#include "support/WaitFor.h"

#include <QDesktopServices>
#include <QDir>
#include <QTextBrowser>
#include <QUrl>

#include <gtest/gtest.h>

namespace qvnd::desktop {
namespace {

using test::errorNumberOf;
using test::waitFor;

// Stands in for the desktop, which opens files by their kind.
class OpenedUrls : public QTextBrowser {
public:
    OpenedUrls() { QDesktopServices::setUrlHandler("file", this, "setSource"); }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler("file"); }
    QStringList files;

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType /*type*/) override {
        files << url.toLocalFile();
    }
};

struct WidgetShells : testing::Test {
    WidgetShells() { folder.write("说明.doc", "text"); }

    // A program that writes down what it is started with.
    void makeProgram(const QString& name) const {
        folder.write(name, "#!/bin/sh\nprintf '%s|' \"$@\" > '" +
                               folder.path("heard.new").toUtf8() + "'\nmv '" +
                               folder.path("heard.new").toUtf8() + "' '" +
                               folder.path("heard").toUtf8() + "'\n");
        QFile::setPermissions(folder.path(name), QFile::ReadOwner | QFile::ExeOwner);
    }
    QByteArray heard() const {
        EXPECT_TRUE(waitFor([&] { return folder.exists("heard"); }));
        return folder.read("heard");
    }

    test::TemporaryFolder folder;
    OpenedUrls desktop;
    WidgetShell shell;
};

TEST_F(WidgetShells, AProgramIsStartedWithoutArguments) {
    makeProgram("bin/tool");
    shell.run(folder.path("bin/tool"));
    EXPECT_EQ(heard(), "|");
    EXPECT_EQ(errorNumberOf([&] { shell.run(folder.path("bin/none")); }), error::fileNotFound);
}

TEST_F(WidgetShells, AFileIsOpenedByTheDesktop) {
    shell.open(folder.path("说明.doc"));
    EXPECT_EQ(desktop.files, QStringList{folder.path("说明.doc")});
    EXPECT_EQ(errorNumberOf([&] { shell.open(folder.path("无.doc")); }), error::fileNotFound);
    EXPECT_EQ(desktop.files.size(), 1);
}

TEST_F(WidgetShells, AsATemplateADocumentIsOpenedByTheSuite) {
    makeProgram("bin/soffice");
    const test::ChangedVariable path("PATH", folder.path("bin").toUtf8() + ":/usr/bin:/bin");
    shell.openAsTemplate(folder.path("说明.doc"));
    EXPECT_EQ(heard(), "-n|" + QUrl::fromLocalFile(folder.path("说明.doc")).toEncoded() + "|");
    EXPECT_EQ(desktop.files, QStringList());
}

TEST_F(WidgetShells, WithoutTheSuiteACopyOfTheTemplateIsOpened) {
    const test::ChangedVariable path("PATH", folder.path("bin").toUtf8());
    shell.openAsTemplate(folder.path("说明.doc"));
    ASSERT_EQ(desktop.files.size(), 1);
    EXPECT_NE(desktop.files[0], folder.path("说明.doc"));
    EXPECT_EQ(QFileInfo(desktop.files[0]).fileName(), "说明.doc");
    QFile copy(desktop.files[0]);
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), "text");
    QFileInfo(copy).absoluteDir().removeRecursively();
    EXPECT_EQ(errorNumberOf([&] { shell.openAsTemplate(folder.path("无.doc")); }),
              error::fileNotFound);
}

TEST_F(WidgetShells, WithoutAnyProgramForItTheFileIsNamedAndNoCopyStays) {
    const test::ChangedVariable path("PATH", folder.path("bin").toUtf8());
    const test::ChangedVariable temporary("TMPDIR", folder.path("temp").toUtf8());
    folder.makeFolder("temp");
    QDesktopServices::unsetUrlHandler("file");
    try {
        shell.openAsTemplate(folder.path("说明.doc"));
        ADD_FAILURE() << "opened";
    } catch (const RunTimeError& failure) {
        EXPECT_EQ(failure.number(), 31031);
        EXPECT_EQ(failure.description(),
                  u"没有打开“说明.doc”的程序。请安装文字处理软件，例如 LibreOffice Writer。");
    }
    EXPECT_TRUE(QDir(folder.path("temp")).isEmpty());
}

} // namespace
} // namespace qvnd::desktop

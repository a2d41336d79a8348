#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "startup/windows/DesktopRun.h"
#include "startup/windows/Pictures.h"
#include "startup/windows/ProgramApplication.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace qvnd;
using namespace Qt::StringLiterals;

namespace {

void nameTheProgram(QApplication& application) {
    // Boxes without a title of their own bear it; as a display name it would stand in every title.
    QApplication::setApplicationName(u"卷宗编制系统"_s);
    QApplication::setApplicationVersion(QStringLiteral(QVND_VERSION));
    QApplication::setWindowIcon(QIcon(startup::picture(u"qvnd"_s, QSize(256, 256))));
    QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
    auto* chinese = new QTranslator(&application);
    if (chinese->load(u"qtbase_zh_CN"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(chinese);
    }
}

} // namespace

int main(int argc, char* argv[]) {
    startup::ProgramApplication application(argc, argv);
    nameTheProgram(application);
    desktop::WidgetMessageBoxes messages;
    application.tellFailures(&messages);
    return startup::runOnDesktop(QCoreApplication::applicationDirPath(), messages);
}

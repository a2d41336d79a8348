#include "platform/desktop/windows/HelpKey.h"
#include "platform/desktop/windows/QtHelpWindow.h"
#include "platform/desktop/windows/WidgetEvents.h"
#include "platform/desktop/windows/WidgetFileDialogs.h"
#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "platform/desktop/windows/WidgetShell.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/Paths.h"
#include "platform/preview/windows/PreviewPane.h"
#include "platform/registry/RegistryFile.h"
#include "startup/FirstStart.h"
#include "startup/ProgramFolder.h"
#include "startup/WordProcessor.h"
#include "startup/windows/DesktopRun.h"
#include "startup/windows/Pictures.h"
#include "startup/windows/SingleInstance.h"
#include "startup/windows/frmSplash.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QStandardPaths>
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

// What an installed program needs before it starts; the program starts even where it fails.
void prepare(const QString& executables, const QString& home, registry::Registry& registry,
             desktop::MessageBoxes& messages) {
    try {
        startup::layOutProgramFolder(home);
        startup::bringShippedFiles(executables + u"/../share/qvnd"_s, home);
        if (!startup::isPortable(executables)) {
            startup::chooseWorkFolder(
                registry, home,
                QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        }
    } catch (const RunTimeError& failure) {
        messages.tell(QString::fromStdU16String(failure.description()), desktop::Icon::exclamation,
                      u"提示"_s);
    }
}

outline::PreviewFrame* newPreview(preview::PageConversion& conversion) {
    auto* pane = new preview::PreviewPane(conversion);
    return new outline::PreviewFrame(*pane, *pane);
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    nameTheProgram(application);
    const QString executables = QCoreApplication::applicationDirPath();
    const QString home = startup::programFolder(executables);
    desktop::WidgetMessageBoxes messages;

    startup::SingleInstance instance(home);
    if (!instance.begin()) {
        messages.tell(u"卷宗编制系统已经在运行，它的窗口已显示到最前面。"_s,
                      desktop::Icon::information, u"提示"_s);
        return 0;
    }
    auto registry = registry::RegistryFile::read(files::withSeparator(home) + u"registry.reg"_s);
    prepare(executables, home, registry, messages);

    startup::WidgetSplash splash;
    desktop::WidgetFileDialogs fileDialogs;
    desktop::WidgetEvents events;
    desktop::WidgetShell shell;
    desktop::QtHelpWindow help;
    startup::WordProcessor word(messages);
    preview::PageConversion conversion(preview::ConversionSettings::ofDesktop());
    startup::DesktopRun run({registry,
                             {messages, splash, fileDialogs, events, word.factory()},
                             help,
                             shell,
                             [&conversion] { return newPreview(conversion); },
                             [] { QCoreApplication::exit(); }});
    QObject::connect(&instance, &startup::SingleInstance::startedAgain,
                     [&run] { run.bringToFront(); });
    desktop::HelpKey helpKey(
        help, [&run] { return run.program().state().HelpFile; }, messages);
    application.installEventFilter(&helpKey);
    run.start(home);
    return QApplication::exec();
}

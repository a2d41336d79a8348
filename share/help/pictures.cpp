// qvnd_help_pictures HOME FOLDER: takes the pictures of the help from the real windows, on the
// program folder HOME, and puts them into FOLDER. take-pictures runs it.
#include "startup/windows/Pictures.h"
#include "generate/windows/dlgTB.h"
#include "outline/windows/OutlineIcons.h"
#include "outline/windows/OutlineView.h"
#include "outline/windows/PreviewFrame.h"
#include "platform/desktop/windows/QtHelpWindow.h"
#include "platform/desktop/windows/WidgetFileDialogs.h"
#include "platform/desktop/windows/WidgetFonts.h"
#include "platform/desktop/windows/WidgetInputBoxes.h"
#include "platform/desktop/windows/WidgetLongRun.h"
#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "platform/desktop/windows/WidgetShell.h"
#include "platform/files/Paths.h"
#include "platform/preview/windows/PagePane.h"
#include "platform/registry/RegistryFile.h"
#include "startup/WordProcessor.h"
#include "startup/windows/DesktopRun.h"
#include "startup/windows/frmAbout.h"
#include "startup/windows/frmSplash.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QTabWidget>
#include <QTextEdit>
#include <QThread>
#include <QTimer>

#include <cstdio>
#include <functional>

using namespace qvnd;
using namespace Qt::StringLiterals;

namespace {

constexpr QSize frameSize{780, 560};
constexpr int patience = 15000; // milliseconds for a document to be drawn exactly

class NoEvents : public desktop::Events {
public:
    void doEvents() override {}
};

// No notice of a missing printer stands in the way of a picture.
class PrinterFonts : public desktop::WidgetFonts {
public:
    bool hasPrinter() override { return true; }
};

void settle(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) {
        QApplication::processEvents();
        QThread::msleep(10);
    }
}

// The windows of one run, and the folder for their pictures.
class Camera {
public:
    Camera(startup::MainForm& frame, QString folder) : frame_(frame), folder_(std::move(folder)) {}

    void take() {
        prepareFrame();
        doubleClick(u"TrvCurrent"_s, 4);
        awaitPages(*part(u"frmBid"_s));
        keep(u"MainForm"_s, frame_);
        keep(u"frmBid"_s, *part(u"frmBid"_s));
        keep(u"preview"_s, *part(u"fraSee"_s));
        takeLibraries();
        takeDialog(u"mnuNew"_s, u"DlgNew"_s);
        click(u"TrvCurrent"_s, 1);
        takeDialog(u"mnuLTFolder"_s, u"dlgAddDoc"_s);
        takeDialog(u"mnuAbout"_s, u"frmAbout"_s);
        startup::frmSplash splash;
        keep(u"frmSplash"_s, splash);
        takePlanEditor();
        takeIcons();
    }

private:
    QWidget* part(const QString& name) { return frame_.findChild<QWidget*>(name); }

    void prepareFrame() {
        frame_.showNormal();
        frame_.resize(frameSize);
        frame_.findChild<QLabel*>(u"st1Panel1"_s)->setText(u"当前用户： 王建国"_s);
        frame_.findChild<QLabel*>(u"st1Panel2"_s)
            ->setText(u"当前工作路径： /home/wang/工程文档管理/"_s);
        settle(100);
        tree(u"TrvTemplate"_s).expandToDepth(0);
        tree(u"TrvTemplate_Us"_s).expandToDepth(0);
    }

    outline::OutlineView& tree(const QString& name) {
        return *frame_.findChild<outline::OutlineView*>(name);
    }

    // On the row with that number, counted over what is expanded.
    void click(const QString& name, int row) {
        outline::OutlineView& view = tree(name);
        view.expandToDepth(1);
        QModelIndex index = view.outline().index(0, 0);
        for (int i = 1; i < row; ++i) {
            index = view.indexBelow(index);
        }
        view.setCurrentIndex(index);
        view.outline().tree().Select(view.outline().nodeOf(index));
        emit view.nodeClick(view.outline().nodeOf(index));
    }

    void doubleClick(const QString& name, int row) {
        click(name, row);
        emit tree(name).dblClick();
    }

    // Until all of them are found and the ones that are seen are painted.
    static void awaitPages(const QWidget& window) {
        const auto* pane = window.findChild<preview::PagePane*>();
        QElapsedTimer timer;
        timer.start();
        while (!pane->isWhole() && timer.elapsed() < patience) {
            settle(100);
        }
        settle(500);
    }

    void takeLibraries() {
        auto* tabs = frame_.findChild<QTabWidget*>(u"TabTemplate"_s);
        tabs->setCurrentIndex(0);
        settle(50);
        keep(u"templates"_s, *tabs);
        tabs->setCurrentIndex(1);
        settle(50);
        keep(u"plans"_s, *tabs);
        tabs->setCurrentIndex(0);
    }

    void takePlanEditor() {
        frame_.showPlanEditor();
        settle(200);
        doubleClick(u"TrvEdit"_s, 4);
        awaitPages(*part(u"frmBidEdit"_s));
        keep(u"frmBidEdit"_s, *part(u"frmBidEdit"_s));
        takeDialog(u"mnuBidLike"_s, u"dlgLike"_s);
        takeFormatDialog();
        takeFindings();
        generate::dlgTB progress;
        progress.setLabel(u"正在设置封面..."_s);
        progress.setProgress(0.8);
        keep(u"dlgTB"_s, progress);
        frame_.unloadPlanEditor();
    }

    // The report comes by itself only when it has something to tell. In the plan of take-pictures a
    // document is missing, so both lists do.
    void takeFindings() {
        QTimer answer;
        answer.callOnTimeout(&frame_, [] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                box->close();
            }
        });
        answer.start(50);
        takeList(u"mnuCheck"_s, u"dlgCheck"_s);
        frame_.findChild<QAction*>(u"mnuBuildbid"_s)->trigger();
        takeList(u"mnuReport"_s, u"dlgReport"_s);
    }

    void takeList(const QString& item, const QString& list) {
        choose(item);
        QWidget* window = part(list);
        window->resize(640, 220);
        settle(200);
        keep(list, *window);
        window->close();
    }

    // A command that is off would leave its window without a picture.
    void choose(const QString& item) {
        auto* action = frame_.findChild<QAction*>(item);
        if (!action->isEnabled()) {
            qFatal("%s is off", qPrintable(item));
        }
        action->trigger();
    }

    // Opens the dialog of a menu item, has it looked at, and closes it.
    void withDialog(const QString& item, const std::function<void(QWidget&)>& look) {
        QTimer shutter;
        shutter.callOnTimeout(&frame_, [&] {
            QWidget* window = QApplication::activeModalWidget();
            if (window == nullptr) {
                return;
            }
            shutter.stop();
            look(*window);
            window->close();
        });
        shutter.start(50);
        choose(item);
    }

    // Every tab of the format dialog, and the dialog behind its button.
    void takeFormatDialog() {
        withDialog(u"mnuBidSet"_s, [this](QWidget& window) {
            keepTabs(window);
            takeMultLevel(window);
        });
    }

    void keepTabs(QWidget& window) {
        auto* outer = window.findChild<QTabWidget*>(u"SSTab1"_s);
        auto* inner = window.findChild<QTabWidget*>(u"SSTab2"_s);
        settle(50);
        keep(u"frmBidSet-cover"_s, window);
        outer->setCurrentIndex(1);
        const QString tabs[] = {u"headings"_s, u"headerfooter"_s, u"page"_s, u"other"_s};
        for (int tab = 0; tab < inner->count(); ++tab) {
            inner->setCurrentIndex(tab);
            settle(50);
            keep(u"frmBidSet-"_s + tabs[tab], window);
        }
    }

    void takeMultLevel(QWidget& window) {
        window.findChild<QCheckBox*>(u"chkMultLevel"_s)->click();
        QTimer::singleShot(100, &window, [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            keep(u"frmMultLevel"_s, *dialog);
            dialog->close();
        });
        window.findChild<QPushButton*>(u"Command1"_s)->click();
    }

    // The dialog filled as in use.
    void takeDialog(const QString& item, const QString& dialog) {
        withDialog(item, [&](QWidget& window) {
            fill(window);
            settle(50);
            keep(dialog, window);
        });
    }

    static void fill(QWidget& window) {
        const std::pair<QString, QString> texts[] = {{u"TxtName"_s, u"城南小学教学楼"_s},
                                                     {u"TxtBldOffice"_s, u"城南区教育局"_s},
                                                     {u"TxtConOffice"_s, u"江城第一建筑工程公司"_s},
                                                     {u"TxtEdit"_s, u"李明"_s},
                                                     {u"TxtDecide"_s, u"王建国"_s},
                                                     {u"TxtAdd"_s, u"施工部署"_s}};
        for (const auto& [name, text] : texts) {
            if (auto* box = window.findChild<QLineEdit*>(name)) {
                box->setText(text);
            }
        }
        if (auto* box = window.findChild<QTextEdit*>(u"RtfExplain"_s)) {
            box->setPlainText(u"四层框架结构，建筑面积 6800 平方米。"_s);
        }
    }

    void takeIcons() {
        const QSize size(20, 20);
        for (const char* name :
             {"folder-beside", "folder-below", "document-beside", "document-below", "delete",
              "rename", "browse", "copy", "paste", "edit", "exit"}) {
            outline::commandIcon(name).pixmap(size).save(path(name));
        }
        outline::outlineIcon(1).pixmap(size).save(path(u"root"_s));
        outline::outlineIcon(4).pixmap(size).save(path(u"folder"_s));
        outline::outlineIcon(5).pixmap(size).save(path(u"document"_s));
    }

    // With a thin border, as the page is as white as many a window.
    void keep(const QString& name, QWidget& window) {
        QPixmap picture = window.grab();
        QPainter painter(&picture);
        painter.setPen(QColor(160, 170, 180));
        painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
        painter.end();
        picture.save(path(name));
    }

    QString path(const QString& name) const { return folder_ + u'/' + name + u".png"_s; }

    startup::MainForm& frame_;
    QString folder_;
};

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("usage: qvnd_help_pictures HOME FOLDER\n", stderr);
        return 2;
    }
    QApplication::setApplicationName(u"卷宗编制系统"_s);
    QApplication::setApplicationDisplayName(u"卷宗编制系统"_s);
    QApplication::setApplicationVersion(QStringLiteral(QVND_VERSION));
    QApplication::setWindowIcon(QIcon(startup::picture(u"qvnd"_s, QSize(64, 64))));
    const QString home = QString::fromLocal8Bit(argv[1]);
    auto registry = registry::RegistryFile::read(files::withSeparator(home) + u"registry.reg"_s);
    desktop::WidgetMessageBoxes messages;
    startup::WidgetSplash splash;
    desktop::WidgetFileDialogs fileDialogs;
    desktop::WidgetInputBoxes inputBoxes;
    PrinterFonts fonts;
    NoEvents events;
    desktop::QtHelpWindow help;
    desktop::WidgetShell shell;
    desktop::WidgetLongRun longRun;
    startup::WordProcessor word(messages);
    preview::PageConversion conversion(preview::ConversionSettings::ofDesktop());
    startup::DesktopPlanEditing planEditing(messages, events, longRun, conversion,
                                            [] { return false; });
    startup::DesktopRun run({registry,
                             {messages, splash, fileDialogs, events, word.factory(), longRun},
                             inputBoxes,
                             fonts,
                             help,
                             shell,
                             [&conversion] {
                                 auto* pane = new preview::PagePane(conversion);
                                 return new outline::PreviewFrame(*pane, *pane);
                             },
                             [] {},
                             [] {},
                             planEditing.services()});
    if (!run.start(home)) {
        return 1;
    }
    Camera(*run.mainForm(), QString::fromLocal8Bit(argv[2])).take();
    return 0;
}

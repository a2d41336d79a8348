#include "format/windows/frmBidSetWindow.h"
#include "format/windows/frmMultLevelWindow.h"
#include "generate/windows/FindingsWindow.h"
#include "generate/windows/dlgLike.h"
#include "generate/windows/dlgTB.h"
#include "gui/WindowTexts.h"
#include "gui/support/DesktopWorld.h"
#include "gui/support/HelpFile.h"
#include "gui/support/ModalWindow.h"
#include "gui/support/WindowWalk.h"
#include "outline/windows/HistoryWindow.h"
#include "outline/windows/dlgAddDocWindow.h"
#include "plans/windows/DlgNewWindow.h"
#include "platform/desktop/windows/HelpViewer.h"
#include "platform/desktop/windows/QtHelpWindow.h"
#include "platform/desktop/windows/WidgetMessageBoxes.h"
#include "startup/windows/frmAbout.h"
#include "support/recording/RecordingDesk.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>

namespace qvnd::test {
namespace {

using Look = std::function<void(QWidget&)>;

// What the windows are opened in.
struct Program {
    FakeMessageBoxes messages;
    FakeFileDialogs dialogs;
    CallLog log;
    RecordingApplicationFactory word{log};
    DesktopWorld world{messages, dialogs, word};

    Program() { world.start(); }

    modMain& state() { return world.run().program().state(); }
    outline::Workbench& workbench() { return world.run().program().workbench(); }
};

// Shows the window as the user gets it, with the keyboard, and looks at it.
void show(QWidget& window, const Look& look) {
    window.show();
    window.activateWindow();
    QCoreApplication::processEvents();
    look(window);
}

void showFrame(Program& program, const Look& look) {
    startup::MainForm& frame = program.world.mainForm();
    frame.showNormal();
    frame.resize(1000, 700);
    show(frame, look);
}

void takeWorkbenchAway(Program& program) {
    auto& area = *program.world.mainForm().findChild<QMdiArea*>();
    QMdiSubWindow* workbench = area.subWindowList().constFirst();
    area.removeSubWindow(workbench);
    delete workbench;
}

void showEmptyFrame(Program& program, const Look& look) {
    takeWorkbenchAway(program);
    showFrame(program, look);
}

void showPlanEditor(Program& program, const Look& look) {
    program.world.mainForm().showPlanEditor();
    takeWorkbenchAway(program);
    showFrame(program, look);
}

// The list that these commands of the plan edit window come to, about plan 甲, whose documents are
// none and whose last folder is empty.
void showListOf(Program& program, const QStringList& commands, const QString& name,
                const Look& look) {
    program.world.mainForm().showPlanEditor();
    auto& editor = *program.world.mainForm().findChild<QWidget*>("frmBidEdit");
    for (const QString& command : commands) {
        editor.findChild<QAction*>(command)->trigger();
    }
    auto* list = editor.findChild<generate::FindingsWindow*>(name);
    ASSERT_NE(list, nullptr);
    show(*list, look);
}

void showDlgLike(Program& program, const Look& look) {
    outline::OutlineTree TrvEdit("TrvEdit");
    RecordingScreen screen(program.log);
    generate::WordSession session;
    generate::dlgLike dialog(program.state(), TrvEdit,
                             {program.messages, program.dialogs, program.world.openDocuments,
                              program.word, session, screen, program.world.services().longRun});
    show(dialog, look);
}

void showDlgNew(Program& program, plans::ShowMode mode, const Look& look) {
    plans::DlgNewWindow dialog(program.state(), program.workbench(), program.messages,
                               program.world.services().splash, mode);
    show(dialog, look);
}

void showDlgAddDoc(Program& program, outline::AddMode mode, const Look& look) {
    outline::dlgAddDocWindow dialog(program.state(), program.workbench(), program.world.services(),
                                    mode);
    show(dialog, look);
}

// With one step chosen, of which something can be put back and taken out.
void showHistory(Program&, const Look& look) {
    using history::Change;
    history::Step step;
    step.id = 1;
    step.time = QDateTime(QDate(2026, 2, 10), QTime(9, 30));
    step.title = QStringLiteral("删除[施工部署]");
    step.plan = QStringLiteral("甲");
    step.note = QStringLiteral("同时移除了 1 个节点：质量保证");
    const Change change{
        Change::Kind::rowRemoved, "Db_UsTemplate.mdb", "甲", "甲.2", "施工部署", {}};
    outline::HistoryWindow window(
        {[=](const QString&) { return QList{step}; }, [=](std::int64_t) { return QList{change}; },
         [] { return 2; }, [](std::int64_t, const Change&) { return QStringLiteral("甲.2.doc"); }},
        nullptr);
    window.refresh();
    auto* changes = window.findChild<QTreeWidget*>("historyChanges");
    changes->setCurrentItem(changes->topLevelItem(0));
    show(window, look);
}

void showFrmBidSet(Program& program, const Look& look) {
    DesktopWorld& world = program.world;
    format::frmBidSet dialog(program.state(), {program.messages, world.inputs, program.dialogs,
                                               world.fonts, world.shell, program.word});
    format::frmBidSetWindow window(program.state(), dialog, program.messages);
    show(window, look);
}

void showMessage(desktop::Buttons buttons, const Look& look) {
    onceModal<QMessageBox>([&](QMessageBox& box) {
        look(box);
        box.reject();
    });
    desktop::WidgetMessageBoxes().show(
        {QStringLiteral("真的要删除[质量保证]吗？"), desktop::Icon::question, {}, buttons});
}

void showHelp(Program& program, const Look& look) {
    desktop::QtHelpWindow help(program.world.folder.path("cache"));
    help.showContents(builtHelpFile());
    show(*help.viewer(), look);
}

struct Walked {
    const char* name;
    std::function<void(Program&, const Look&)> open;
};

// Every window and dialog that the program has. Its texts stand in WindowTexts.h.
const Walked walkedWindows[] = {
    {"MainForm", showEmptyFrame},
    {"frmBid", showFrame},
    {"frmBidEdit", showPlanEditor},
    {"dlgTB",
     [](Program&, const Look& look) {
         generate::dlgTB dialog;
         show(dialog, look);
     }},
    {"dlgLike", showDlgLike},
    {"dlgCheck", [](Program& program,
                    const Look& look) { showListOf(program, {"mnuCheck"}, "dlgCheck", look); }},
    {"dlgReport",
     [](Program& program, const Look& look) {
         showListOf(program, {"mnuBuildbid", "mnuReport"}, "dlgReport", look);
     }},
    {"frmSplash",
     [](Program&, const Look& look) {
         startup::frmSplash window;
         show(window, look);
     }},
    {"frmAbout",
     [](Program& program, const Look& look) {
         startup::frmAbout window(program.world.registry, program.messages, program.world.shell);
         show(window, look);
     }},
    {"DlgNew", [](Program& program,
                  const Look& look) { showDlgNew(program, plans::ShowMode::newPlan, look); }},
    {"DlgNewInformation",
     [](Program& program, const Look& look) {
         showDlgNew(program, plans::ShowMode::information, look);
     }},
    {"dlgAddDocBeside",
     [](Program& program, const Look& look) {
         showDlgAddDoc(program, outline::AddMode::beside, look);
     }},
    {"dlgAddDocBelow",
     [](Program& program, const Look& look) {
         showDlgAddDoc(program, outline::AddMode::below, look);
     }},
    {"HistoryWindow", showHistory},
    {"frmBidSet", showFrmBidSet},
    {"frmMultLevel",
     [](Program& program, const Look& look) {
         format::frmMultLevelWindow window(program.state().FormatSwitches, program.messages);
         show(window, look);
     }},
    {"HelpWindow", showHelp},
    {"MessageBoxOk", [](Program&, const Look& look) { showMessage(desktop::Buttons::ok, look); }},
    {"MessageBoxOkCancel",
     [](Program&, const Look& look) { showMessage(desktop::Buttons::okCancel, look); }},
    {"MessageBoxYesNo",
     [](Program&, const Look& look) { showMessage(desktop::Buttons::yesNo, look); }},
};

void PrintTo(const Walked& window, std::ostream* out) { *out << window.name; }

class EveryWindow : public testing::TestWithParam<Walked> {
protected:
    EveryWindow() {
        QApplication::setApplicationName(QStringLiteral("卷宗编制系统"));
        QApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    }
    void look(const Look& look) {
        bool looked = false;
        GetParam().open(program, [&](QWidget& window) {
            looked = true;
            look(window);
        });
        EXPECT_TRUE(looked);
    }
    static void expectNone(const QStringList& found) {
        EXPECT_TRUE(found.isEmpty()) << found.join("\n").toStdString();
    }

    Program program;
};

TEST_P(EveryWindow, HasANameForEveryControl) {
    look([](QWidget& window) { expectNone(namelessControls(window)); });
}

TEST_P(EveryWindow, HasAKeyboardWayToEveryControl) {
    look([](QWidget& window) { expectNone(unreachable(window)); });
}

TEST_P(EveryWindow, SharesNoMnemonic) {
    look([](QWidget& window) { expectNone(sharedMnemonics(window)); });
}

TEST_P(EveryWindow, ShowsEveryTextInFull) {
    look([](QWidget& window) { expectNone(cutTexts(window)); });
}

// Whether a text is the one that a line of the list states.
bool isStated(const SeenText& seen, const StatedText& stated) {
    const QString text = stated.text;
    return seen.owner == stated.owner &&
           (text.endsWith('*') ? seen.text.startsWith(text.chopped(1)) : seen.text == text);
}

TEST_P(EveryWindow, ShowsTheStatedTextsAndNoOthers) {
    ASSERT_TRUE(statedTexts().count(GetParam().name)) << "no texts are written down for it";
    look([](QWidget& window) {
        const auto& stated = statedTexts().at(GetParam().name);
        const QList<SeenText> seen = seenTexts(window);
        for (const SeenText& text : seen) {
            EXPECT_TRUE(std::any_of(stated.begin(), stated.end(),
                                    [&](const StatedText& line) { return isStated(text, line); }))
                << text.owner.toStdString() << " shows " << text.text.toStdString();
        }
        for (const StatedText& line : stated) {
            EXPECT_TRUE(std::any_of(seen.begin(), seen.end(),
                                    [&](const SeenText& text) { return isStated(text, line); }))
                << line.owner << " does not show " << line.text;
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Walk, EveryWindow, testing::ValuesIn(walkedWindows),
                         [](const auto& window) { return std::string(window.param.name); });

// The scale of a display is fixed when a program starts.
TEST(WalkOfDenseDisplays, ShowsEveryTextInFullAtTwiceTheScale) {
    QProcess walk;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    walk.setProcessEnvironment(environment);
    walk.setProcessChannelMode(QProcess::MergedChannels);
    walk.start(QCoreApplication::applicationFilePath(),
               {"--gtest_filter=Walk/EveryWindow.ShowsEveryTextInFull/*:Scale.*"});
    ASSERT_TRUE(walk.waitForFinished(120'000));
    const QByteArray report = walk.readAll();
    EXPECT_EQ(walk.exitCode(), 0) << report.constData();
    EXPECT_TRUE(report.contains("Scale.IsTheOneAskedFor")) << report.constData();
}

TEST(Scale, IsTheOneAskedFor) {
    const double asked = qEnvironmentVariableIsSet("QT_SCALE_FACTOR")
                             ? qEnvironmentVariable("QT_SCALE_FACTOR").toDouble()
                             : 1.0;
    EXPECT_EQ(QWidget().devicePixelRatioF(), asked);
}

// The walk itself, on windows that are not as they should be.
struct BadWindow : testing::Test {
    QWidget window;
    QHBoxLayout layout{&window};

    template <typename Control>
    Control& add(Control* control, const QString& name) {
        control->setObjectName(name);
        layout.addWidget(control);
        return *control;
    }
    void show() {
        test::show(window, [](QWidget&) {});
    }
};

TEST_F(BadWindow, AControlWithoutANameIsFound) {
    add(new QLineEdit, "TxtBare");
    add(new QLineEdit, "TxtNamed").setAccessibleName("名称");
    add(new QPushButton("确定"), "cmdOK");
    show();
    EXPECT_EQ(namelessControls(window), QStringList{"TxtBare"});
}

TEST_F(BadWindow, AControlThatTheKeyboardDoesNotReachIsFound) {
    add(new QPushButton("甲"), "cmdReached");
    add(new QPushButton("乙"), "cmdMouseOnly").setFocusPolicy(Qt::ClickFocus);
    add(new QPushButton("丙(&C)"), "cmdByMnemonic").setFocusPolicy(Qt::ClickFocus);
    show();
    EXPECT_EQ(unreachable(window), QStringList{"cmdMouseOnly"});
}

TEST_F(BadWindow, AMnemonicTakenTwiceIsFound) {
    add(new QPushButton("确定(&O)"), "cmdOne");
    add(new QPushButton("打开(&O)"), "cmdOther");
    add(new QPushButton("取消(&C)"), "cmdCancel");
    show();
    EXPECT_EQ(sharedMnemonics(window), QStringList{"cmdOne and cmdOther share Alt+O"});
}

TEST_F(BadWindow, AMnemonicThatATabSharesIsFound) {
    auto& tabs = add(new QTabWidget, "TabBoth");
    tabs.addTab(new QWidget, "索引(&I)");
    add(new QPushButton("图片(&I)"), "cmdPicture");
    show();
    EXPECT_EQ(sharedMnemonics(window).size(), 1);
}

TEST_F(BadWindow, ATextThatIsCutIsFound) {
    add(new QLabel("一段比它的位置长得多的文字"), "lblCut").setFixedWidth(20);
    QLabel& told = add(new QLabel("一段比它的位置长得多的文字"), "lblTold");
    told.setFixedWidth(20);
    told.setToolTip(told.text());
    add(new QPushButton("确定"), "cmdWhole");
    show();
    const QStringList cut = cutTexts(window);
    ASSERT_EQ(cut.size(), 1);
    EXPECT_TRUE(cut.first().startsWith("lblCut needs"));
}

TEST_F(BadWindow, HiddenTextsAreNotSeenAndThoseOfABackTabAre) {
    auto& tabs = add(new QTabWidget, "TabBoth");
    tabs.addTab(new QLabel("前"), "第一页");
    tabs.addTab(new QLabel("后"), "第二页");
    add(new QLabel("藏"), "lblHidden").hide();
    show();
    QStringList texts;
    for (const SeenText& seen : seenTexts(window)) {
        texts << seen.text;
    }
    texts.sort();
    EXPECT_EQ(texts, (QStringList{"前", "后", "第一页", "第二页"}));
}

} // namespace
} // namespace qvnd::test

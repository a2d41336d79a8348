#include "platform/desktop/DesktopWindows.h"

#include "support/ChangedVariable.h"
#include "support/Files.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

namespace qvnd::desktop {
namespace {

struct Running : Processes {
    std::vector<QStringList> commandLines() override { return lines; }
    QString hostName() override { return {}; }
    std::vector<QStringList> lines;
};

const QString program = QStringLiteral("/程序/sys/文档柜/文档柜.exe");

TEST(DesktopWindows, AWindowOfThatTitleIsEnough) {
    Running processes;
    QStringList asked;
    DesktopWindows windows(processes, [&](const QString& title) {
        asked << title;
        return true;
    });
    EXPECT_TRUE(windows.activate("文档柜", program));
    EXPECT_EQ(asked, QStringList{"文档柜"});
}

TEST(DesktopWindows, WithoutTitlesTheRunningProgramCounts) {
    Running processes;
    DesktopWindows windows(processes, [](const QString&) { return false; });
    EXPECT_FALSE(windows.activate("文档柜", program));
    processes.lines = {{"/usr/bin/editor", "-n", program}};
    EXPECT_FALSE(windows.activate("文档柜", program)) << "it only edits the file";
    processes.lines = {{program}};
    EXPECT_TRUE(windows.activate("文档柜", program));
    processes.lines = {{"/usr/bin/interpreter", program}};
    EXPECT_TRUE(windows.activate("文档柜", program));
}

// The tool that asks the desktop hangs.
TEST(DesktopWindows, WhileTheToolIsWaitedForTheWindowsStayAlive) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    const QCoreApplication application(argc, argv);
    const test::TemporaryFolder folder;
    folder.write("wmctrl", "#!/bin/sh\nexec sleep 600\n");
    QFile(folder.path("wmctrl"))
        .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const test::ChangedVariable path("PATH", folder.path().toUtf8() + ":" + qgetenv("PATH"));
    int served = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++served; });
    timer.start(50);
    Running processes;
    EXPECT_FALSE(DesktopWindows(processes).activate("文档柜", program));
    EXPECT_GE(served, 10);
}

} // namespace
} // namespace qvnd::desktop

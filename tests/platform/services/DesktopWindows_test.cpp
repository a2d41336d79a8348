#include "platform/desktop/DesktopWindows.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace qvnd::desktop

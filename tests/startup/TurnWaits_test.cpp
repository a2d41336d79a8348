#include "startup/TurnWaits.h"

#include "support/FakeLongRun.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::test;

namespace {

TEST(TurnWaits, OfTheStartStandOnTheSplashAndKeepItAlive) {
    CountingSplash splash;
    CountingEvents events;
    startup::StartWait wait(splash, events);
    wait.begin("『甲』正由乙使用。");
    EXPECT_TRUE(wait.goesOn());
    wait.end();
    EXPECT_EQ(splash.told, (QStringList{"正在等待：『甲』正由乙使用。", ""}));
    EXPECT_EQ(events.served, 1);
}

TEST(TurnWaits, OfACommandShowAProgressOfUnknownLengthThatCanBeCancelled) {
    FakeLongRun longRun;
    bool cancels = false;
    longRun.cancel = [&cancels] { return cancels; };
    CountingEvents events;
    startup::CommandWait wait(longRun, events);
    wait.begin("『甲』正由乙使用。");
    EXPECT_EQ(longRun.shown, (QStringList{"正在等待 0", "『甲』正由乙使用。\n轮到时自动继续。"}));
    EXPECT_TRUE(wait.goesOn());
    cancels = true;
    EXPECT_FALSE(wait.goesOn());
    wait.end();
    EXPECT_FALSE(longRun.running);
    EXPECT_EQ(events.painted, 2);
    EXPECT_EQ(events.served, 0) << "input waits, but for that of the progress";
}

} // namespace

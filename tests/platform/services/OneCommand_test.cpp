#include "platform/desktop/OneCommand.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

using namespace qvnd;

namespace {

struct OneCommand : testing::Test {
    bool runsOne() {
        const int before = runs;
        const bool answer = command.run([this] { ++runs; });
        EXPECT_EQ(answer, runs == before + 1);
        return answer;
    }
    void fail() {
        command.run([] { throw std::runtime_error("no such table"); });
    }

    desktop::OneCommand command;
    int runs = 0;
};

TEST_F(OneCommand, RunsAndIsFreeAgainBehindIt) {
    EXPECT_FALSE(command.isRunning());
    EXPECT_TRUE(command.run([this] { EXPECT_TRUE(command.isRunning()); }));
    EXPECT_FALSE(command.isRunning());
    EXPECT_TRUE(runsOne());
    EXPECT_TRUE(runsOne());
    EXPECT_EQ(runs, 2);
}

TEST_F(OneCommand, RefusesASecondInsideTheFirst) {
    bool inside = true;
    bool again = true;
    EXPECT_TRUE(command.run([&] {
        inside = runsOne();
        again = runsOne();
        EXPECT_TRUE(command.isRunning());
    }));
    EXPECT_FALSE(inside);
    EXPECT_FALSE(again);
    EXPECT_EQ(runs, 0);
    EXPECT_TRUE(runsOne());
}

TEST_F(OneCommand, LetsPassWhatACommandThrows) {
    std::string told;
    try {
        fail();
    } catch (const std::runtime_error& failure) {
        told = failure.what();
    }
    EXPECT_EQ(told, "no such table");
}

TEST_F(OneCommand, IsFreeAgainBehindACommandThatThrew) {
    EXPECT_THROW(fail(), std::runtime_error);
    EXPECT_FALSE(command.isRunning());
    EXPECT_TRUE(runsOne());
}

TEST_F(OneCommand, IsStillTakenInsideWhenTheRefusedOneWouldHaveThrown) {
    EXPECT_TRUE(command.run([this] {
        EXPECT_NO_THROW(fail());
        EXPECT_TRUE(command.isRunning());
    }));
    EXPECT_FALSE(command.isRunning());
}

TEST_F(OneCommand, TellsALateFailureBetweenCommandsAlone) {
    std::vector<long> told;
    const RunTimeError late(error::fileNotFound, u"没有");
    const auto tell = desktop::toldBetweenCommands(command, [&](const RunTimeError& failure) {
        EXPECT_TRUE(command.isRunning()) << "no command begins in the box";
        told.push_back(failure.number());
    });
    EXPECT_TRUE(command.run([&] { EXPECT_FALSE(tell(late)); }));
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(tell(late));
    EXPECT_EQ(told, std::vector<long>{error::fileNotFound});
}

} // namespace

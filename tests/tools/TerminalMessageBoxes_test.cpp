#include "tools/TerminalMessageBoxes.h"

#include "support/Text.h"
#include "tools/Output.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace qvnd;
using namespace qvnd::tools;

namespace {

struct Terminal : testing::Test {
    std::ostringstream out;
    std::ostringstream err;
    Output output{out, err};
    TerminalMessageBoxes messages{output, false, std::chrono::milliseconds(0)};

    int linesWith(const QString& text) const {
        return static_cast<int>(QString::fromStdString(err.str()).count(text));
    }
    bool retry() {
        return messages.askForRetry("请关闭", desktop::Icon::exclamation, QStringLiteral("提示"));
    }
};

TEST_F(Terminal, EveryTryIsToldAndTheyComeToAnEnd) {
    int tries = 0;
    while (retry()) {
        ASSERT_LT(++tries, 1000);
    }
    EXPECT_EQ(tries, TerminalMessageBoxes::mostRetries);
    EXPECT_EQ(linesWith("提示: 请关闭\n"), tries + 1);
    EXPECT_EQ(linesWith("不再重试"), 1);
}

TEST_F(Terminal, AMessageThatAsksForNoRetryIsNotCountedAsOne) {
    for (int i = 0; i < 100; ++i) {
        messages.tell("好");
    }
    EXPECT_TRUE(retry());
}

TEST_F(Terminal, WaitsBeforeEachTry) {
    TerminalMessageBoxes patient(output, false, std::chrono::milliseconds(30));
    const auto start = std::chrono::steady_clock::now();
    patient.askForRetry("请关闭", desktop::Icon::exclamation, {});
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
}

} // namespace

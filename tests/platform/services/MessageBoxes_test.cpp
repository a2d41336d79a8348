#include "platform/desktop/MessageBoxes.h"

#include <gtest/gtest.h>

using namespace qvnd::desktop;

TEST(MessageBoxes, WhoWantsNothingDeclinesWithAButtonThatTheBoxHas) {
    const auto answer = [](Buttons buttons) { return declined({{}, Icon::none, {}, buttons}); };
    EXPECT_EQ(answer(Buttons::ok), Answer::ok);
    EXPECT_EQ(answer(Buttons::okCancel), Answer::cancel);
    EXPECT_EQ(answer(Buttons::yesNo), Answer::no);
}

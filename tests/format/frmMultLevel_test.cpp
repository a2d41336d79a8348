#include "format/frmMultLevel.h"

#include "support/FakeMessageBoxes.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace qvnd::format {
namespace {

class MultLevel : public testing::Test {
protected:
    FormatSwitches switches;
    test::FakeMessageBoxes messages;
    frmMultLevel form{switches, messages};
};

TEST_F(MultLevel, OpensWithItsFirstTextsAndNoOptionWhateverTheSwitchesSay) {
    switches.gMultLevelMode = 2;
    switches.gMultLevelText = u"卷篇"_s;
    const frmMultLevel again(switches, messages);
    EXPECT_EQ(again.Text1_0.text(), u"第"_s);
    EXPECT_EQ(again.Text1_1.text(), u"章"_s);
    for (const OptionButton* option : again.options.options) {
        EXPECT_FALSE(option->value());
    }
    EXPECT_FALSE(again.Text1_0.enabled());
    EXPECT_FALSE(again.Text1_1.enabled());
}

TEST_F(MultLevel, TheThirdOptionOpensTheTextsAndTakesThemAtOnce) {
    form.Option1_2.click();
    EXPECT_TRUE(form.Text1_0.enabled());
    EXPECT_TRUE(form.Text1_1.enabled());
    EXPECT_EQ(switches.gMultLevelText, u"第章"_s);
    EXPECT_EQ(switches.gMultLevelMode, 0);
    for (OptionButton* option : {&form.Option1_0, &form.Option1_1}) {
        form.Option1_2.click();
        option->click();
        EXPECT_FALSE(form.Text1_0.enabled());
        EXPECT_FALSE(form.Text1_1.enabled());
    }
}

TEST_F(MultLevel, ConfirmingStoresTheOptionThatIsSelected) {
    form.Option1_1.click();
    form.confirm();
    EXPECT_EQ(switches.gMultLevelMode, 1);
    form.Option1_0.click();
    form.confirm();
    EXPECT_EQ(switches.gMultLevelMode, 0);
    EXPECT_EQ(switches.gMultLevelText, QString());
}

TEST_F(MultLevel, ConfirmingTheThirdOptionTakesTheTextsAgain) {
    form.Option1_2.click();
    form.Text1_0.type(u"卷上"_s);
    form.Text1_1.type(u"篇"_s);
    EXPECT_EQ(switches.gMultLevelText, u"第章"_s);
    form.confirm();
    EXPECT_EQ(switches.gMultLevelMode, 2);
    EXPECT_EQ(switches.gMultLevelText, u"卷上篇"_s);
}

TEST_F(MultLevel, ConfirmingWithoutAnOptionChangesNothing) {
    switches.gMultLevelMode = 1;
    switches.gMultLevelText = u"卷"_s;
    form.confirm();
    EXPECT_EQ(switches.gMultLevelMode, 1);
    EXPECT_EQ(switches.gMultLevelText, u"卷"_s);
}

TEST_F(MultLevel, LeavingByCancelKeepsTheTextThatTheThirdOptionHasSet) {
    {
        frmMultLevel cancelled(switches, messages);
        cancelled.Option1_1.click();
    }
    EXPECT_EQ(switches.gMultLevelMode, 0);
    {
        frmMultLevel cancelled(switches, messages);
        cancelled.Option1_2.click();
    }
    EXPECT_EQ(switches.gMultLevelText, u"第章"_s);
    EXPECT_EQ(switches.gMultLevelMode, 0);
}

} // namespace
} // namespace qvnd::format

#include "format/SettingsChanges.h"

#include "support/FormatWorld.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace qvnd;
using namespace qvnd::format;

namespace {

class SettingsChanges : public testing::Test, public test::FormatWorld {
protected:
    QList<SettingChange> since(const SettingsNow& before) {
        return before.changesUntil(SettingsNow(settings()));
    }
};

TEST_F(SettingsChanges, AHeadingIsNamedByItsLevelAndEveryOtherSettingByItsField) {
    const SettingsNow before(settings());
    change(u"章节设置表"_s, u"字号", u"二号"_s, u"级别='2'"_s);
    change(u"页面设置表"_s, u"页边距上", 3);
    EXPECT_EQ(wordsOfKept(since(before)),
              u"设置已保留，取消和关闭不撤回改动：第2级标题的字号由“小四”改为“二号”，"
              "页边距上由“1.5”改为“3”。"_s);
}

TEST_F(SettingsChanges, MoreThanFiveAreCounted) {
    const SettingsNow before(settings());
    for (const QStringView field :
         {u"页边距上", u"页边距下", u"页边距左", u"页边距右", u"距页眉"}) {
        change(u"页面设置表"_s, field, 3);
    }
    EXPECT_FALSE(wordsOfKept(since(before)).contains(u"等"_s));
    change(u"页面设置表"_s, u"距页脚", 3);
    const QString words = wordsOfKept(since(before));
    EXPECT_TRUE(words.endsWith(u"距页眉由“1”改为“3” 等 6 项。"_s)) << words.toStdString();
    EXPECT_FALSE(words.contains(u"距页脚"_s));
}

TEST_F(SettingsChanges, WithoutAChangeThereAreNoWords) {
    const SettingsNow before(settings());
    EXPECT_EQ(wordsOfLoad(since(before)), QString());
    EXPECT_EQ(wordsOfKept(since(before)), QString());
    EXPECT_EQ(wordsOfDecided(since(before)), QString());
}

TEST_F(SettingsChanges, WhatWasToldAlreadyIsNotToldOnceMore) {
    const SettingsNow before(settings());
    change(u"页面设置表"_s, u"页边距上", 3);
    const QList<SettingChange> told = since(before);
    EXPECT_EQ(wordsOfKept(told, told), u"设置已保留，取消和关闭不撤回改动。"_s);
    change(u"页面设置表"_s, u"页边距下", 3);
    EXPECT_EQ(wordsOfKept(since(before), told),
              u"设置已保留，取消和关闭不撤回改动：页边距下由“1.5”改为“3”。"_s);
    change(u"页面设置表"_s, u"页边距上", 4);
    EXPECT_TRUE(wordsOfKept(since(before), told).contains(u"页边距上由“1.5”改为“4”"_s))
        << "it has another value since";
}

TEST_F(SettingsChanges, OfWhatLibrariesHaveWrittenThatIsToldWhichStillStands) {
    ShownLibraries libraries;
    const auto show = [&](const QString& name, QStringView field, const jet::Value& value) {
        libraries.show(settings(), name, [&] { change(u"页面设置表"_s, field, value); });
    };
    const auto words = [&] {
        return wordsOfShown(libraries.names(), libraries.standing(SettingsNow(settings())));
    };
    show(u"无"_s, u"页边距上", 1.5);
    EXPECT_EQ(words(), QString()) << "it has changed nothing";
    show(u"甲"_s, u"页边距上", 3);
    show(u"乙"_s, u"页边距上", 4);
    EXPECT_EQ(words(), u"显示“甲”、“乙”时，其中的设置写入了现在的设置：页边距上由“1.5”改为“4”。"_s);
    change(u"页面设置表"_s, u"页边距上", 5);
    EXPECT_EQ(words(), QString()) << "the user has set it since";
    libraries.forget();
    EXPECT_EQ(libraries.names(), QStringList());
}

TEST_F(SettingsChanges, WhatALibraryHasWrittenBeforeItFailsCounts) {
    ShownLibraries libraries;
    const auto failing = [&] {
        change(u"页面设置表"_s, u"页边距上", 3);
        settings().OpenRecordset(u"Select * from 没有"_s);
    };
    EXPECT_THROW(libraries.show(settings(), u"甲"_s, failing), RunTimeError);
    EXPECT_EQ(libraries.standing(SettingsNow(settings())).size(), 1);
}

TEST_F(SettingsChanges, ATableThatIsGoneIsPassedOver) {
    const SettingsNow before(settings());
    drop(u"页眉页脚表"_s);
    change(u"页面设置表"_s, u"页边距上", 3);
    EXPECT_EQ(since(before).size(), 1);
}

TEST_F(SettingsChanges, ALoadThatGenerationTouchesOffIsRemarkedOnOnce) {
    openPlan(u"滨江"_s, u"一建"_s);
    state.gDbBidSet->Execute(u"Delete * from 页眉页脚表"_s);
    dialog.txtInde();
    EXPECT_EQ(state.Remarks, QStringList(u"打开设置时自动改动了：工程名称由“工程名称”改为“滨江”，"
                                         "单位名称由“单位名称”改为“一建”。"_s));
    dialog.cboBianHao();
    EXPECT_EQ(state.Remarks.size(), 1) << "loaded already";
}

} // namespace

#include "outline/BrowseTemplate.h"

#include "TemplateWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;
using desktop::Icon;

namespace {

struct BrowsingATemplate : testing::Test, test::TemplateWorld {
    Browsed browse(const QString& key) {
        listTemplates();
        selectTemplate(key);
        return mnuBroTemplate(state, workbench, messages, preview);
    }
    void removeFile(const QString& key) { QFile::remove(folder.path(templateFile(key))); }
    void expectHint(const QString& text) {
        ASSERT_EQ(messages.shown.size(), 1U);
        EXPECT_EQ(messages.shown[0].text, text);
        EXPECT_EQ(messages.shown[0].icon, Icon::exclamation);
        EXPECT_EQ(messages.shown[0].title, "提示");
    }
};

TEST_F(BrowsingATemplate, ShowsTheDocumentOfTheSelectedNode) {
    makeTemplate({"T", "T.1d"});
    EXPECT_EQ(browse("T.1"), Browsed::shown);
    EXPECT_EQ(preview.shown, QStringList{folder.path(templateFile("T.1"))});
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BrowsingATemplate, AMissingFileIsToldWithItsPathOnTwoLines) {
    makeTemplate({"T", "T.1d"});
    removeFile("T.1");
    EXPECT_EQ(browse("T.1"), Browsed::fileMissing);
    expectHint("找不到 [ " + folder.path(templateFile("T.1")) +
               " ]\n此文件可能是被删除了,或是文件、路径名不正确！\n文档：名T.1（T.1）");
    EXPECT_TRUE(preview.shown.isEmpty());
}

TEST_F(BrowsingATemplate, AMissingFileOfTheFirstTemplateLosesItsRowAndNoOther) {
    makeTemplate({"T", "T.1d", "T.10d"});
    removeFile("T.1");
    browse("T.1");
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.10"}));
    EXPECT_EQ(templateCopyKeys("T"), QStringList({"T", "T.1", "T.10"}));
}

TEST_F(BrowsingATemplate, AMissingFileLosesItsRowEvenWhenTheTreeWasListedAnewMeanwhile) {
    makeTemplate({"T", "T.1d", "T.2d"});
    removeFile("T.1");
    messages.whileOpen = [this] {
        messages.whileOpen = nullptr;
        listTemplates();
    };
    EXPECT_EQ(browse("T.1"), Browsed::fileMissing);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.2"}));
}

TEST_F(BrowsingATemplate, AMissingFileOfAnyOtherTemplateKeepsItsRow) {
    makeTemplate({"S", "S.1d"});
    makeTemplate({"T", "T.1d"});
    removeFile("T.1");
    EXPECT_EQ(browse("T.1"), Browsed::fileMissing);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
    EXPECT_EQ(templateKeys("S"), QStringList({"S", "S.1"}));
}

TEST_F(BrowsingATemplate, TheNodeOfAMissingFileStaysOnTheScreenUntilTheNextRefresh) {
    makeTemplate({"T", "T.1d"});
    removeFile("T.1");
    browse("T.1");
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList({"T", "T.1"}));
    EXPECT_EQ(messages.shown.size(), 1U);
    listTemplates();
    EXPECT_EQ(shown(workbench.TrvTemplate), QStringList{"T"});
}

TEST_F(BrowsingATemplate, TheNodeOfThatKeyIsTakenOutOfTheOpenPlanInstead) {
    makeTemplate({"T", "T.1d"});
    makePlan({"T", "T.1d"});
    openPlan("T");
    removeFile("T.1");
    EXPECT_EQ(browse("T.1"), Browsed::fileMissing);
    EXPECT_EQ(shown(workbench.TrvCurrent), QStringList{"T"});
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1"}));
}

TEST_F(BrowsingATemplate, TheTableIsTheOneThatTheFirstNodesTextNames) {
    makeTemplate({"T", "T.1d"});
    const auto root =
        state.gDbTemplate->OpenRecordset(QStringLiteral("Select * from T where Key='T'"));
    root->Edit();
    root->Set(u"名称", QStringLiteral("改名"));
    root->Update();
    removeFile("T.1");
    EXPECT_EQ(browse("T.1"), Browsed::failed);
    ASSERT_EQ(messages.shown.size(), 2U);
    EXPECT_EQ(messages.shown[1].icon, Icon::exclamation);
    EXPECT_EQ(messages.shown[1].title, "提示");
    EXPECT_TRUE(messages.shown[1].text.contains("改名")) << messages.shown[1].text.toStdString();
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
}

TEST_F(BrowsingATemplate, ATextWithBracketsNamesNoTable) {
    makeTemplate({"T", "T.1d"});
    listTemplates();
    workbench.TrvTemplate.setText(workbench.TrvTemplate.Item(1), "T] [x");
    selectTemplate("T.1");
    removeFile("T.1");
    EXPECT_EQ(mnuBroTemplate(state, workbench, messages, preview), Browsed::failed);
    EXPECT_EQ(templateKeys("T"), QStringList({"T", "T.1"}));
}

TEST_F(BrowsingATemplate, WhatThePreviewRaisesIsShown) {
    makeTemplate({"T", "T.1d"});
    preview.failure = RunTimeError(31024, u"无法显示");
    EXPECT_EQ(browse("T.1"), Browsed::failed);
    expectHint("无法显示\n文档：名T.1（T.1）");
}

TEST_F(BrowsingATemplate, WhatTurnsOutLaterIsShownAsWell) {
    makeTemplate({"T", "T.1d"});
    EXPECT_EQ(browse("T.1"), Browsed::shown);
    ASSERT_TRUE(preview.lateFailure);
    preview.lateFailure(RunTimeError(31024, u"无法显示"));
    expectHint("无法显示\n文档：名T.1（T.1）");
}

TEST_F(BrowsingATemplate, AnElementThatIsNotFoundIsNotTold) {
    makeTemplate({"T", "T.1d"});
    preview.failure = RunTimeError(error::elementNotFound, u"找不到元素");
    browse("T.1");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BrowsingATemplate, AnErrorWhoseNumberIsNotAboveZeroIsNotTold) {
    makeTemplate({"T", "T.1d"});
    preview.failure = RunTimeError(-2147467259, u"自动化错误");
    EXPECT_EQ(browse("T.1"), Browsed::failed);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(BrowsingATemplate, WithNothingSelectedTheErrorIsTold) {
    EXPECT_EQ(mnuBroTemplate(state, workbench, messages, preview), Browsed::failed);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].title, "提示");
}

} // namespace

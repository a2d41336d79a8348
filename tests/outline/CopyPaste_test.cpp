#include "outline/CopyPaste.h"

#include "support/DragWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::outline;

namespace {

constexpr std::size_t pasteButton = 10;

// The plan T and the template M, each with a folder and a document.
struct CopyPaste : testing::Test, test::DragWorld {
    CopyPaste() {
        plan({"T", "T.1", "T.2d"});
        systemTemplate({{"M", "M"}, {"M.1", "夹"}, {"M.2", "档", "是"}});
    }
    void copy(const QString& key) {
        workbench.TrvTemplate.Select(&workbench.TrvTemplate.Item(key));
        mnuCopy(workbench);
    }
    Pasted pasteAt(const QString& key) {
        workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item(key));
        workbench.TbarBid[pasteButton] = true;
        return mnuPaste(state, workbench, services());
    }
};

TEST_F(CopyPaste, WithoutANodeOfATemplateNothingIsCopied) {
    workbench.TrvTemplate.Select(nullptr);
    mnuCopy(workbench);
    EXPECT_FALSE(workbench.pasteArmed);
    EXPECT_EQ(workbench.copySourceKey, "");
}

TEST_F(CopyPaste, TheCopiedNodeIsKeptByItsKeyAndItsText) {
    copy("M.1");
    EXPECT_TRUE(workbench.pasteArmed);
    EXPECT_EQ(workbench.copySourceKey, "M.1");
    EXPECT_EQ(workbench.copySourceText, "夹");
}

TEST_F(CopyPaste, AFolderIsNotPastedBelowADocument) {
    copy("M.1");
    EXPECT_EQ(pasteAt("T.2").outcome, Copied::stopped);
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].text, "文档下面不能包含文件夹，此时文档不能作为拖放对象.");
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(CopyPaste, ADocumentIsPastedBelowADocument) {
    copy("M.2");
    EXPECT_EQ(pasteAt("T.2").newKeys, QStringList("T.2.1"));
    EXPECT_EQ(document("T.2.1"), "M.2");
}

TEST_F(CopyPaste, WithoutATargetNothingIsPasted) {
    copy("M.1");
    workbench.TrvCurrent.Select(nullptr);
    EXPECT_EQ(mnuPaste(state, workbench, services()).outcome, Copied::stopped);
    EXPECT_EQ(keys("T"), QStringList({"T", "T.1", "T.2"}));
}

TEST_F(CopyPaste, BehindAPasteTheTargetIsForgottenAndTheButtonClosed) {
    copy("M.2");
    pasteAt("T.2");
    EXPECT_EQ(workbench.dropTargetKey, "");
    EXPECT_EQ(workbench.dropTargetImage, 0);
    EXPECT_FALSE(workbench.TbarBid[pasteButton]);
}

TEST_F(CopyPaste, TheToolbarPastesAsTheMenuDoes) {
    copy("M.2");
    workbench.TrvCurrent.Select(&workbench.TrvCurrent.Item("T.1"));
    workbench.TbarBid[pasteButton] = true;
    EXPECT_EQ(toolbarPaste(state, workbench, services()).newKeys.size(), 1);
    EXPECT_FALSE(workbench.TbarBid[pasteButton]);
}

} // namespace

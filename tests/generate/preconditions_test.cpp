#include "generate/GenerationWorld.h"

#include "platform/files/Paths.h"

#include <fstream>

using namespace Qt::StringLiterals;
using namespace qvnd::test;
using qvnd::generate::BuildOutcome;
namespace image = qvnd::outline::image;

namespace {

class BuildBidPreconditions : public GenerationWorld {};

} // namespace

TEST_F(BuildBidPreconditions, APlanOfOnlyARootIsRefusedAndTheEarlierDocumentStays) {
    std::ofstream(place("work") / "施工方案.doc") << "earlier";
    EXPECT_EQ(build(), BuildOutcome::refused);
    EXPECT_EQ(wholeLog(), "message [information] 没有内容去生成标书！\n");
    EXPECT_TRUE(std::filesystem::exists(place("work") / "施工方案.doc"));
}

TEST_F(BuildBidPreconditions, AnEmptyTreeIsRefused) {
    TrvEdit.Clear();
    EXPECT_EQ(build(), BuildOutcome::refused);
    EXPECT_EQ(wholeLog(), "message [information] 没有内容去生成标书！\n");
}

TEST_F(BuildBidPreconditions, AnOpenWordWindowStopsTheCommandBeforeAnythingChanges) {
    smallPlan();
    windows.open = true;
    std::ofstream(place("work") / "施工方案.doc") << "earlier";
    EXPECT_EQ(build(), BuildOutcome::refused);
    EXPECT_EQ(wholeLog(), "message [exclamation] 对不起，请您先关闭Word文档。如不在任务栏显示请按"
                          "Ctrl+Alt+Del ！\n");
    EXPECT_TRUE(std::filesystem::exists(place("work") / "施工方案.doc"));
}

// The root of an adopted plan may have a key that names no folder.
TEST_F(BuildBidPreconditions, ARunAtWorkRefusesAPlanOfAnyKey) {
    TrvEdit.Clear();
    TrvEdit.Add(u"a/b"_s, u"工程"_s, image::root, image::rootSelected);
    TrvEdit.AddChild(u"a/b"_s, u"a/b.1"_s, u"概况"_s, image::folder, image::folderSelected);
    const qvnd::generate::WordSession::Work work(word);
    EXPECT_EQ(build(), BuildOutcome::refused);
}

TEST_F(BuildBidPreconditions, OpenDocumentsAreLookedForInTheWorkFolderAndThePlansFolder) {
    smallPlan();
    build();
    EXPECT_EQ(windows.asked, QStringList({program.gWorkPath, program.gUserTplPath + u"工程"_s}));
}

TEST_F(BuildBidPreconditions, TheNodeCountIsTestedBeforeTheOpenWindow) {
    windows.open = true;
    build();
    EXPECT_EQ(wholeLog(), "message [information] 没有内容去生成标书！\n");
}

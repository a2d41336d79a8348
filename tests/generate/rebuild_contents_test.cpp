#include "generate/GenerationWorld.h"

#include <fstream>

using namespace qvnd;
using namespace qvnd::test;

namespace {

class ContentsCommand : public GenerationWorld {
protected:
    bool rebuild() { return generate::RebuildContents(state(), services()); }
    void anyFileInTheWorkFolder() { std::ofstream(place("work") / "别的.txt") << "x"; }
};

} // namespace

TEST_F(ContentsCommand, AnEmptyWorkFolderIsToldOff) {
    EXPECT_FALSE(rebuild());
    EXPECT_EQ(wholeLog(), "message [exclamation] 还没生成标书!\n");
}

TEST_F(ContentsCommand, AnyFileInTheWorkFolderWillDo) {
    anyFileInTheWorkFolder();
    EXPECT_TRUE(rebuild());
    EXPECT_EQ(wholeLog(), R"(create Word.Application
Application.Visible = true
Documents.Open work/施工方案.doc
OpenedDocument.Activate
TablesOfContents(1).Delete
TablesOfContents.Add Selection.Range, UseHeadingStyles true, levels 1 to 3, RightAlignPageNumbers true, IncludePageNumbers true, AddedStyles "标题 1,1"
TablesOfContents(1).TabLeader = 1
ActiveDocument.Saved = true
Application.Quit
)");
}

TEST_F(ContentsCommand, DoesNotAskForOpenWordWindows) {
    anyFileInTheWorkFolder();
    windows.open = true;
    EXPECT_TRUE(rebuild());
}

TEST_F(ContentsCommand, HasNoErrorRoutine) {
    anyFileInTheWorkFolder();
    log.failAt("Documents.Open", 5174, u"找不到该文件");
    EXPECT_THROW(rebuild(), RunTimeError);
    EXPECT_FALSE(logged("message"));
}

TEST_F(ContentsCommand, LeavesTheServerHeldForTheNextGenerationToDrop) {
    anyFileInTheWorkFolder();
    rebuild();
    EXPECT_TRUE(word.held());
    smallPlan();
    log.lines.clear();
    build();
    EXPECT_EQ(linesBetween("progress 0.05", "create Word.Application"),
              "events\nApplication dropped\nevents\n");
}

#include "plans/UpdateLibraries.h"

#include "store/OutlineFolders.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::plans;
using test::OutlineWorld;

namespace {

// Notes with each change how many nodes the trees show at that moment.
class RecordingPointer : public desktop::MousePointer {
public:
    explicit RecordingPointer(const outline::Workbench& workbench) : workbench_(workbench) {}
    void showHourglass() override { note("hourglass"); }
    void showUsual() override { note("usual"); }
    QStringList changes;

private:
    void note(const char* what) {
        changes << QString("%1 %2 %3")
                       .arg(what)
                       .arg(workbench_.TrvTemplate.Count())
                       .arg(workbench_.TrvTemplate_Us.Count());
    }
    const outline::Workbench& workbench_;
};

struct LibraryUpdates : testing::Test, OutlineWorld {
    RecordingPointer pointer{workbench};
    UpdateLibraries update{state, workbench, messages, splash, pointer};

    // A folder with its database, unknown to the program.
    void drop(const QString& place, const QString& name, const QString& path) {
        folder.makeFolder(place + "/" + name);
        const auto db = create(path);
        makeTable(*db, name, {{name, name}, {name + ".1", "章"}});
        makeTable(*db, name + "Org", {});
    }
};

TEST_F(LibraryUpdates, PlansAreAdoptedUnderTheHourglass) {
    drop("用户模板", "外来", store::planDatabasePath(state, "外来"));
    update.plans();
    EXPECT_EQ(pointer.changes, QStringList({"hourglass 0 0", "usual 0 2"}));
    EXPECT_EQ(keys("外来"), QStringList({"外来", "外来.1"}));
    EXPECT_TRUE(state.gDbUser->TableDefs().Contains("外来Org"));
    EXPECT_EQ(registered(*state.gDbUser), QStringList({"外来"}));
}

TEST_F(LibraryUpdates, TemplatesAreAdoptedUnderTheHourglass) {
    drop("Sys/标书模板", "样板", folder.path("Sys/标书模板/样板/样板.mdb"));
    update.templates();
    EXPECT_EQ(pointer.changes, QStringList({"hourglass 0 0", "usual 2 0"}));
    EXPECT_EQ(column(*state.gDbTemplate, "样板", u"Key"), QStringList({"样板", "样板.1"}));
    EXPECT_FALSE(state.gDbTemplate->TableDefs().Contains("样板Org"));
}

TEST_F(LibraryUpdates, ThePointerComesBackAfterAFailureToo) {
    QDir(folder.path("Sys/标书模板")).removeRecursively();
    update.templates();
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(pointer.changes, QStringList({"hourglass 0 0", "usual 0 0"}));
}

} // namespace

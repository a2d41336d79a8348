// What storing a plan as a template, pruning the template, its mouse events and the list of similar
// documents cost on an outline of ten thousand rows with two thousand documents, and how that grows
// from a tenth of it.

#include "OutlineBench.h"

#include "generate/SimilarDocuments.h"
#include "outline/DeleteTemplate.h"
#include "outline/OutlinePaths.h"
#include "outline/OutlineRows.h"
#include "outline/StoreTemplate.h"
#include "outline/TreeLoading.h"
#include "outline/TrvTemplateEvents.h"
#include "platform/desktop/OpenDocuments.h"
#include "platform/files/DiskFileSystem.h"
#include "platform/files/Paths.h"
#include "store/PlanTables.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

using namespace qvnd;
using bench::plan;

const QString documentName = QStringLiteral("管理目标");

void require(bool well, const char* what) {
    if (!well) {
        std::fprintf(stderr, "%s failed\n", what);
        std::exit(1);
    }
}

// A plan of so many rows, whose documents all have one name.
class Library : bench::OutlineWork {
public:
    explicit Library(int rows) {
        fill(*state_.gDbUser, rows, Files::made, [](int) { return documentName; });
    }

    double storePlan() {
        return bench::milliseconds([&] {
            require(outline::mnuSaveTemplate(state_, workbench_, services_).result ==
                        outline::Stored::stored,
                    "store");
        });
    }
    // The rest is done to the stored template.
    double press(const QString& key) {
        storePlan();
        outline::OutlineNode& node = workbench_.TrvTemplate.Item(key);
        outline::TrvTemplateEvents tree(state_, workbench_, silence_, silence_);
        return bench::milliseconds([&] { tree.MouseDown(outline::MouseButton::right, &node); });
    }
    double remove(const QString& key) {
        storePlan();
        workbench_.TrvTemplate.Select(&workbench_.TrvTemplate.Item(key));
        return bench::milliseconds([&] {
            require(outline::mnuDelTemplate(state_, workbench_, services_).result ==
                        outline::TemplateDeleted::deleted,
                    "delete");
        });
    }
    double listSimilar() {
        storePlan();
        outline::OutlineTree TrvEdit(QStringLiteral("TrvEdit"));
        TrvEdit.Select(&TrvEdit.Add(plan + ".1", documentName, outline::image::document,
                                    outline::image::documentSelected));
        generate::WordSession word;
        generate::SimilarDocuments dialog(
            state_, TrvEdit, {silence_, silence_, silence_, silence_, word, silence_, silence_});
        return bench::milliseconds([&] {
            dialog.Load();
            require(!dialog.ListView1().empty(), "list");
        });
    }
};

const bench::Times<Library> commands[] = {
    {"store the plan", [](Library& l) { return l.storePlan(); }},
    {"right button on a document", [](Library& l) { return l.press(plan + ".11.13"); }},
    {"right button on the root", [](Library& l) { return l.press(plan); }},
    {"delete a folder of ten", [](Library& l) { return l.remove(plan + ".31"); }},
    {"delete a ninth of all", [](Library& l) { return l.remove(plan + ".1"); }},
    {"delete the template", [](Library& l) { return l.remove(plan); }},
    {"list similar documents", [](Library& l) { return l.listSimilar(); }},
};

} // namespace

int main() { bench::printTimes<Library>(commands); }

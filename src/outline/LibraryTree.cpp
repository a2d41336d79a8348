#include "outline/LibraryTree.h"

#include "outline/InformationTable.h"
#include "platform/error/RecordedErrors.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"
#include "store/PlanLists.h"

namespace qvnd::outline {

namespace {

bool isOfTemplates(const OutlineTree& tree) { return tree.Name() == u"TrvTemplate"; }

store::FolderState folderOf(const modMain& state, const OutlineTree& tree, const QString& name) {
    return isOfTemplates(tree) ? store::stateOfTemplateFolder(state, name)
                               : store::stateOfPlanFolder(state, name);
}

class LibraryRefresh {
public:
    LibraryRefresh(modMain& state, jet::Database& db, OutlineTree& tree, bool keepMissing,
                   desktop::SplashScreen& splash)
        : state_(state), db_(db), tree_(tree), splash_(splash), keepMissing_(keepMissing),
          isTemplates_(isOfTemplates(tree)) {}

    // True when an error is pending at the end.
    bool run() {
        tree_.Clear();
        errors_.statement([&] {
            list_ = store::openPlanList(db_);
            for (; !list_->Eof(); list_->MoveNext()) {
                errors_.statement([&] { visit(list_->Get(store::field::name).ToText()); });
            }
        });
        return errors_.first().has_value();
    }

private:
    // The rows of a name that can be no folder's stay: such a plan may have been made before names
    // were checked, and its tables are then the only newest copy of its outline.
    void visit(const QString& name) {
        const store::FolderState folder = folderOf(state_, tree_, name);
        if (folder == store::FolderState::there) {
            load(name);
        } else if (folder == store::FolderState::missing && (isTemplates_ || !keepMissing_)) {
            forget(name);
        }
    }

    void load(const QString& name) {
        try {
            const auto rs = db_.OpenRecordset("Select * from " + name + " order by ID asc");
            updateTree(*rs, tree_, {}, splash_);
        } catch (const RunTimeError& failure) {
            if (failure.number() != error::tableNotFound) {
                throw;
            }
            dropRowWithoutTable(name);
        }
    }

    void dropRowWithoutTable(const QString& name) {
        errors_.statement([&] { list_->Delete(); });
        if (isTemplates_) {
            const QString file = store::templateDatabasePath(state_, name);
            if (state_.gFso->FileExists(file)) {
                errors_.statement([&] { state_.gFso->DeleteFile(file); });
            }
        }
    }

    void forget(const QString& name) {
        errors_.statement([&] { list_->Delete(); });
        if (db_.TableDefs().Contains(name)) {
            errors_.statement([&] { db_.TableDefs().Delete(name); });
        }
        if (hasInformationTable(db_, name)) {
            errors_.statement([&] { deleteInformationTable(db_, name); });
        }
    }

    modMain& state_;
    jet::Database& db_;
    OutlineTree& tree_;
    desktop::SplashScreen& splash_;
    bool keepMissing_;
    bool isTemplates_;
    std::unique_ptr<jet::Recordset> list_;
    RecordedErrors errors_;
};

} // namespace

void updateTreeTemplate(modMain& state, jet::Database& db, OutlineTree& tree, bool keepMissing,
                        desktop::MessageBoxes& messages, desktop::SplashScreen& splash) {
    const bool pending = LibraryRefresh(state, db, tree, keepMissing, splash).run();
    splash.unload();
    if (pending) {
        messages.tell(QStringLiteral("更新标书模板库时发生错误!"), desktop::Icon::exclamation);
    }
}

std::vector<std::vector<OutlineRow>> readLibrary(modMain& state, jet::Database& db,
                                                 const OutlineTree& tree) {
    std::vector<std::vector<OutlineRow>> outlines;
    for (const QString& name : store::listedNames(db)) {
        if (folderOf(state, tree, name) == store::FolderState::there) {
            outlines.push_back(readOutline(db, name));
        }
    }
    return outlines;
}

void refreshTemplates(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash) {
    updateTreeTemplate(state, *state.gDbTemplate, workbench.TrvTemplate, false, messages, splash);
}

void refreshUserPlans(modMain& state, Workbench& workbench, desktop::MessageBoxes& messages,
                      desktop::SplashScreen& splash) {
    updateTreeTemplate(state, *state.gDbUser, workbench.TrvTemplate_Us, false, messages, splash);
}

} // namespace qvnd::outline

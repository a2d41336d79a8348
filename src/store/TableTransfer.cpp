#include "store/TableTransfer.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RecordedErrors.h"
#include "platform/jet/TransactionScope.h"
#include "store/LegacyPlans.h"
#include "store/Names.h"
#include "store/OutlineFolders.h"

namespace qvnd::store {

namespace {

// "SELECT * INTO 甲 IN 'file' FROM 甲", the name bare.
QString copyStatement(const QString& table, const QString& file) {
    return "SELECT * INTO " + table + " IN '" + file + "' FROM " + table;
}

// Looks from the current row on, not from the first, and by the exact characters.
bool isListed(jet::Recordset& list, const QString& name) {
    for (; !list.Eof(); list.MoveNext()) {
        if (list.Get(field::name).TextOrEmpty() == name) {
            return true;
        }
    }
    return false;
}

void enlist(jet::Recordset& list, const QString& name) {
    list.AddNew();
    list.Set(field::name, name);
    list.Update();
}

void show(const std::optional<RunTimeError>& failure, desktop::MessageBoxes& messages) {
    if (failure && failure->number() > 0) {
        messages.tell(desktop::descriptionOf(*failure), desktop::Icon::exclamation);
    }
}

// Why the last database of an older installation stays where and as it is. Its folder is not
// listed: a listed outline without a table would cost a template its database.
void showTakeover(const modMain& state, desktop::MessageBoxes& messages) {
    messages.tell(state.LegacyTakeovers.back().Failure, desktop::Icon::exclamation);
}

// Leaves the folders of outlines.
void removeUnreadable(modMain& state, std::vector<files::Entry>& folders, bool withInformation,
                      desktop::MessageBoxes& messages) {
    std::erase_if(folders, [&](const files::Entry& folder) {
        const QString file = databaseIn(folder.Path, folder.Name);
        if (!state.gFso->FileExists(file)) {
            return true;
        }
        const bool isAdopted = adoptLegacyFile(state, file, folder.Name, withInformation);
        if (!isAdopted) {
            showTakeover(state, messages);
        }
        return !isAdopted;
    });
}

class PlanImport {
public:
    PlanImport(modMain& state, const ImportSurroundings& surroundings)
        : state_(state), surroundings_(surroundings) {}

    void run() {
        errors_.statement([&] {
            list_ = state_.gDbUser->OpenRecordset(table::planList.toString(), jet::OpenAs::Table);
        });
        std::vector<files::Entry> folders;
        errors_.statement([&] { folders = state_.gFso->SubFolders(state_.gUserTplPath); });
        removeUnreadable(state_, folders, true, surroundings_.messages);
        takeInUnlisted(folders);
        errors_.statement([&] { surroundings_.refreshTree(); });
        surroundings_.splash.unload();
        show(errors_.last(), surroundings_.messages);
        list_.reset();
        state_.gDbPlan.reset();
    }

private:
    // In one transaction: many plans cost no more commits than one does.
    void takeInUnlisted(const std::vector<files::Entry>& folders) {
        errors_.statement([&] {
            jet::TransactionScope changes(*state_.gWs);
            for (const files::Entry& folder : folders) {
                bool listed = false;
                errors_.statement([&] { listed = isListed(list(), folder.Name); });
                if (!listed) {
                    takeIn(folder.Name, databaseIn(folder.Path, folder.Name));
                }
                errors_.statement([&] { list().MoveFirst(); });
            }
            changes.commit();
        });
    }

    void takeIn(const QString& name, const QString& file) {
        errors_.statement([&] { enlist(list(), name); });
        errors_.statement([&] { state_.gDbPlan = state_.gWs->OpenDatabase(file); });
        copy(name);
        copy(informationTableOf(name));
    }

    jet::Recordset& list() const {
        requireOpen(list_ != nullptr);
        return *list_;
    }
    jet::Database& planDatabase() const {
        requireOpen(state_.gDbPlan != nullptr);
        return *state_.gDbPlan;
    }

    // Error 91, with the first cause, where an earlier statement failed to open what is used.
    void requireOpen(bool isOpen) const {
        if (isOpen) {
            return;
        }
        throw RunTimeError(error::objectNotSet,
                           u"方案列表或收入的数据库没有打开，没有全部收入。\n" +
                               errors_.first()->description());
    }

    void copy(const QString& name) {
        errors_.statement(
            [&] { planDatabase().Execute(copyStatement(name, state_.gDbUser->Name())); });
    }

    modMain& state_;
    const ImportSurroundings& surroundings_;
    RecordedErrors errors_;
    std::unique_ptr<jet::Recordset> list_;
};

void adoptTemplates(modMain& state, const ImportSurroundings& surroundings) {
    const auto list =
        state.gDbTemplate->OpenRecordset(table::planList.toString(), jet::OpenAs::Table);
    std::vector<files::Entry> folders = state.gFso->SubFolders(templatesFolder(state));
    removeUnreadable(state, folders, false, surroundings.messages);
    jet::TransactionScope changes(*state.gWs);
    for (const files::Entry& folder : folders) {
        if (!isListed(*list, folder.Name)) {
            enlist(*list, folder.Name);
            state.gDbPlan = state.gWs->OpenDatabase(databaseIn(folder.Path, folder.Name));
            state.gDbPlan->Execute(copyStatement(folder.Name, state.gDbTemplate->Name()));
        }
        list->MoveFirst();
    }
    changes.commit();
    state.gDbTemplate->TableDefs().Refresh();
    surroundings.refreshTree();
    surroundings.splash.unload();
}

// The old table goes and the new one comes at one stroke: a killed process must not leave the
// folder without its outline.
void replaceIn(modMain& state, const QString& file, const QString& name, const QString& statement) {
    jet::TransactionScope changes(*state.gWs);
    const auto local = state.gWs->OpenDatabase(file);
    local->Execute("DROP TABLE " + name);
    state.gDbUser->Execute(statement);
    changes.commit();
}

} // namespace

void ImportPlanFolders(modMain& state, const ImportSurroundings& surroundings) {
    PlanImport(state, surroundings).run();
}

void ImportTemplateFolders(modMain& state, const ImportSurroundings& surroundings) {
    std::optional<RunTimeError> failure;
    try {
        adoptTemplates(state, surroundings);
    } catch (const RunTimeError& raised) {
        failure = raised;
    }
    show(failure, surroundings.messages);
    state.gDbPlan.reset();
}

void SaveCurrentPlanTables(modMain& state, const std::optional<QString>& openPlan) {
    if (!openPlan) {
        return;
    }
    const QString& name = *openPlan;
    RecordedErrors errors;
    QString file;
    if (!errors.statement([&] { file = planDatabasePath(state, name); })) {
        return;
    }
    const QString statement = "SELECT * INTO [" + name + "] IN '" + file + "' FROM [" + name + "]";
    bool isDone = errors.statement([&] { state.gDbUser->Execute(statement); });
    while (!isDone && errors.number() == error::tableExists) {
        isDone = errors.statement([&] { replaceIn(state, file, name, statement); });
    }
}

} // namespace qvnd::store

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
        for (const files::Entry& folder : folders) {
            adopt(folder);
        }
        errors_.statement([&] { surroundings_.refreshTree(); });
        surroundings_.splash.unload();
        show(errors_.last(), surroundings_.messages);
        list_.reset();
        state_.gDbPlan.reset();
    }

private:
    void adopt(const files::Entry& folder) {
        const QString file = databaseIn(folder.Path, folder.Name);
        if (!state_.gFso->FileExists(file)) {
            return;
        }
        if (!adoptLegacyFile(state_, file, folder.Name, true)) {
            showTakeover(state_, surroundings_.messages);
            return;
        }
        bool listed = false;
        errors_.statement([&] { listed = isListed(list(), folder.Name); });
        if (!listed) {
            errors_.statement([&] { takeIn(folder.Name, file); });
        }
        errors_.statement([&] { list().MoveFirst(); });
    }

    void takeIn(const QString& name, const QString& file) {
        jet::TransactionScope changes(*state_.gWs);
        errors_.statement([&] { enlist(list(), name); });
        errors_.statement([&] { state_.gDbPlan = state_.gWs->OpenDatabase(file); });
        copy(name);
        copy(informationTableOf(name));
        changes.commit();
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
    for (const files::Entry& folder : state.gFso->SubFolders(templatesFolder(state))) {
        const QString file = databaseIn(folder.Path, folder.Name);
        if (!state.gFso->FileExists(file)) {
            continue;
        }
        if (!adoptLegacyFile(state, file, folder.Name, false)) {
            showTakeover(state, surroundings.messages);
            continue;
        }
        if (!isListed(*list, folder.Name)) {
            jet::TransactionScope changes(*state.gWs);
            enlist(*list, folder.Name);
            state.gDbPlan = state.gWs->OpenDatabase(file);
            state.gDbPlan->Execute(copyStatement(folder.Name, state.gDbTemplate->Name()));
            changes.commit();
        }
        list->MoveFirst();
    }
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

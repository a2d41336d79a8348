#include "plans/LegacyConversion.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/files/Paths.h"
#include "store/LegacyPlans.h"

namespace qvnd::plans {

namespace {

QString databaseIn(const QString& folder, const QString& name) {
    return files::resolved(files::withSeparator(folder) + name + files::separator() + name +
                           ".mdb");
}

} // namespace

LegacyConversion::LegacyConversion(modMain& state, desktop::MessageBoxes& messages,
                                   std::function<void(int bType)> update)
    : state_(state), messages_(messages), update_(std::move(update)) {}

void LegacyConversion::FillListBox(const QString& path) {
    ListBox.clear();
    std::vector<files::Entry> folders;
    ignoringErrors([&] { folders = state_.gFso->SubFolders(path); });
    for (const files::Entry& folder : folders) {
        if (state_.gLegacyReader != nullptr &&
            state_.gLegacyReader->Recognizes(databaseIn(path, folder.Name))) {
            ListBox << folder.Name;
        }
    }
}

void LegacyConversion::Show() {
    bool converted = false;
    for (const QString& name : ListBox) {
        if (store::adoptLegacyFile(state_, databaseIn(sPath, name), name, bType == 1)) {
            converted = true;
        } else {
            messages_.tell(state_.LegacyTakeovers.back().Failure, desktop::Icon::exclamation);
        }
    }
    if (converted) {
        update_(bType);
    }
}

} // namespace qvnd::plans

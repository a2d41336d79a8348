#include "plans/ConvertOldData.h"

#include "platform/error/IgnoringErrors.h"
#include "platform/files/Paths.h"
#include "store/LegacyPlans.h"
#include "store/OutlineFolders.h"

namespace qvnd::plans {

namespace {

const QString title = QStringLiteral("转换标书");

QString prompt() {
    return QStringList{QStringLiteral("请选择要转换的类型:"), QStringLiteral("  1:  转换用户标书"),
                       QStringLiteral("  2:  转换标书模板"), QStringLiteral("请输入1-2:")}
        .join(QLatin1String("\n\n"));
}

QString below(const QString& folder, const QStringList& names) {
    return folder + files::separator() + names.join(files::separator());
}

void showForPlans(const modMain& state, ConversionDialog& dialog) {
    dialog.bType = 1;
    dialog.sPath = state.gUserTplPath;
    dialog.Text2 = state.gUserTplPath;
    dialog.FillListBox(state.gUserTplPath);
    dialog.Text1 = state.gUserTplPath + "Db_UsTemplate.mdb";
    dialog.Show();
}

void showForTemplates(const modMain& state, ConversionDialog& dialog) {
    dialog.bType = 2;
    dialog.sPath = below(state.AppPath, {"Sys", "标书模板", ""});
    dialog.Text2 = dialog.sPath;
    dialog.FillListBox(dialog.Text2);
    dialog.Text1 = below(state.AppPath, {"Sys", "Database", "Db_Template.mdb"});
    dialog.Show();
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
            state_.gLegacyReader->Recognizes(store::databaseIn(folder.Path, folder.Name))) {
            ListBox << folder.Name;
        }
    }
}

void LegacyConversion::Show() {
    bool converted = false;
    for (const QString& name : ListBox) {
        if (store::adoptLegacyFile(state_,
                                   store::databaseIn(files::withSeparator(sPath) + name, name),
                                   name, bType == 1)) {
            converted = true;
        } else {
            messages_.tell(state_.LegacyTakeovers.back().Failure, desktop::Icon::exclamation,
                           QStringLiteral("提示"));
        }
    }
    if (converted) {
        update_(bType);
    }
}

void convertOldData(const modMain& state, desktop::InputBoxes& input, ConversionDialog& dialog) {
    const QString answer = input.ask({prompt(), title, QStringLiteral("1")});
    if (answer == QLatin1String("1")) {
        showForPlans(state, dialog);
    } else if (answer == QLatin1String("2")) {
        showForTemplates(state, dialog);
    }
}

QStringList conversionNotice() {
    return {QStringLiteral("如果你还不知道此项的具体功能请先看帮助。"),
            QStringLiteral("因为意外的操作可能造成 2.2.1 版本以前生成"
                           "的标书或模板不能在主界面窗口中显示出来！")};
}

} // namespace qvnd::plans

#include "format/LibraryPages.h"

#include "format/FormatLibraries.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/files/Paths.h"
#include "platform/files/Trim.h"
#include "store/ProgramFiles.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace {

void fill(ListBox& list, const QStringList& entries) {
    for (const QString& entry : entries) {
        list.add(entry);
    }
}

void selectFirstOf(ListBox& list) {
    if (!list.entries().isEmpty()) {
        list.select(0);
    }
}

// A command whose error is told as it is; what was done before stays done.
template <class Command>
void telling(desktop::MessageBoxes& messages, Command command) {
    try {
        command();
    } catch (const RunTimeError& failure) {
        messages.tell(desktop::descriptionOf(failure));
    }
}

std::unique_ptr<jet::Recordset> rowsOf(const modMain& state, const QString& table) {
    return state.gDbBidSet->OpenRecordset(u"select * from "_s + table);
}

} // namespace

SettingLibraryFrame::SettingLibraryFrame(modMain& state, Controls& dialog,
                                         const FormatServices& services, const Pages& pages,
                                         ShownLibraries& shown)
    : lstSet(dialog, u"lstSet"), chkSet(dialog, u"chkSet"), cmdSaveSet(dialog, u"cmdSaveSet"),
      cmdDeleteSet(dialog, u"cmdDeleteSet"), state_(state), services_(services), pages_(pages),
      shown_(shown) {
    lstSet.Click = [this] { showSelected(); };
    cmdSaveSet.Click = [this] { telling(services_.messages, [this] { save(); }); };
    cmdDeleteSet.Click = [this] { removeSelected(); };
}

void SettingLibraryFrame::fillList() {
    ignoringErrors([this] { fill(lstSet, settingLibraries(*state_.gDbBidSet)); });
}

void SettingLibraryFrame::selectFirst() {
    const bool any = !lstSet.entries().isEmpty();
    chkSet.setEnabled(any);
    cmdDeleteSet.setEnabled(any);
    selectFirstOf(lstSet);
}

void SettingLibraryFrame::save() {
    const QString name =
        files::Trim(services_.inputBoxes.ask({u"请输入标书设置库名称"_s, u"添加库"_s, {}}));
    if (name.isEmpty()) {
        return;
    }
    cmdDeleteSet.setEnabled(true);
    chkSet.setEnabled(true);
    copySettingTables(*state_.gDbBidSet, name);
    lstSet.add(name);
    selectFirstOf(lstSet);
    registerSettingLibrary(*state_.gDbBidSet, name);
}

void SettingLibraryFrame::removeSelected() {
    const QString name = files::Trim(lstSet.text());
    if (name.isEmpty()) {
        return;
    }
    deleteSettingLibrary(*state_.gDbBidSet, name);
    lstSet.remove(lstSet.selected());
    if (lstSet.entries().isEmpty()) {
        // The check itself stays.
        cmdDeleteSet.setEnabled(false);
        chkSet.setEnabled(false);
    } else {
        lstSet.select(0);
    }
}

void SettingLibraryFrame::showSelected() {
    if (!state_.FormatSwitches.gBidSetLoaded) {
        return;
    }
    const QString library = lstSet.text();
    shown_.show(*state_.gDbBidSet, library, [&] { showInPages(library); });
}

void SettingLibraryFrame::showInPages(const QString& library) {
    const SettingTables tables(library);
    if (const auto row = rowsOf(state_, tables.chapters); !row->Eof()) {
        pages_.headings.show(*row, Failing::raised);
    }
    pages_.page.showLibrary(*rowsOf(state_, tables.page));
    if (const auto row = rowsOf(state_, tables.headerFooter); !row->Eof()) {
        pages_.headerFooter.showLibrary(*row);
    }
}

CoverLibraryFrame::CoverLibraryFrame(modMain& state, Controls& dialog,
                                     const FormatServices& services, CoverPage& cover,
                                     ShownLibraries& shown)
    : lstcover(dialog, u"lstcover"), chkCover(dialog, u"chkCover"),
      cmdSaveCover(dialog, u"cmdSaveCover"), cmdDeleteCover(dialog, u"cmdDeleteCover"),
      state_(state), services_(services), cover_(cover), shown_(shown) {
    lstcover.Click = [this] { showSelected(); };
    cmdSaveCover.Click = [this] { telling(services_.messages, [this] { save(); }); };
    cmdDeleteCover.Click = [this] { removeSelected(); };
}

void CoverLibraryFrame::Load() {
    ignoringErrors([this] { fill(lstcover, coverLibraries(*state_.gDbBidSet)); });
    if (lstcover.entries().isEmpty()) {
        chkCover.setEnabled(false);
        cmdDeleteCover.setEnabled(false);
    }
    selectFirstOf(lstcover);
}

void CoverLibraryFrame::save() {
    const QString name =
        files::Trim(services_.inputBoxes.ask({u"请输入封面库名称"_s, u"添加库"_s, {}}));
    if (name.isEmpty()) {
        return;
    }
    chkCover.setEnabled(true);
    cmdDeleteCover.setEnabled(true);
    copyCoverTable(*state_.gDbBidSet, name);
    lstcover.add(name);
    lstcover.select(lstcover.entries().size() - 1);
    registerCoverLibrary(*state_.gDbBidSet, name);
}

void CoverLibraryFrame::removeSelected() {
    const QString name = files::Trim(lstcover.text());
    if (name.isEmpty()) {
        return;
    }
    deleteCoverLibrary(*state_.gDbBidSet, name);
    lstcover.remove(lstcover.selected());
    if (lstcover.entries().isEmpty()) {
        chkCover.setChecked(false);
        chkCover.setEnabled(false);
        cmdDeleteCover.setEnabled(false);
    } else {
        lstcover.select(0);
    }
}

void CoverLibraryFrame::showSelected() {
    if (!state_.FormatSwitches.gBidSetLoaded) {
        return;
    }
    const QString library = lstcover.text();
    shown_.show(*state_.gDbBidSet, library, [&] {
        if (const auto row = rowsOf(state_, library); !row->Eof()) {
            cover_.showLibrary(*row);
        }
    });
}

CustomPageFrame::CustomPageFrame(modMain& state, Controls& dialog, const FormatServices& services)
    : lstSelf(dialog, u"lstSelf"), chkSelf(dialog, u"chkSelf"), cmdSelfBld(dialog, u"cmdSelfBld"),
      cmdSelfDel(dialog, u"cmdSelfDel"), state_(state), services_(services) {
    lstSelf.Click = [this] {
        if (chkSelf.checked()) {
            storeCurrentPage(*state_.gDbBidSet, lstSelf.text());
        }
    };
    lstSelf.DblClick = [this] {
        if (!lstSelf.entries().isEmpty()) {
            openSelected();
        }
    };
    cmdSelfBld.Click = [this] { create(); };
    cmdSelfDel.Click = [this] { telling(services_.messages, [this] { removeSelected(); }); };
}

void CustomPageFrame::Load() {
    ignoringErrors([this] { fill(lstSelf, customPages(*state_.gDbBidSet)); });
    if (lstSelf.entries().isEmpty()) {
        chkSelf.setEnabled(false);
        cmdSelfDel.setEnabled(false);
    }
    selectFirstOf(lstSelf);
}

void CustomPageFrame::storeIfChecked() {
    if (chkSelf.checked() && !lstSelf.entries().isEmpty()) {
        storeCurrentPage(*state_.gDbBidSet, files::Trim(lstSelf.text()));
    }
}

std::optional<QString> CustomPageFrame::askForNewName() {
    for (;;) {
        const QString name =
            files::Trim(services_.inputBoxes.ask({u"请输入自定义名称："_s, u"添加"_s, {}}));
        if (name.isEmpty()) {
            return std::nullopt;
        }
        if (!isCustomPage(*state_.gDbBidSet, name)) {
            return name;
        }
        services_.messages.tell(u"对不起，[%1]自定义已经存在！"_s.arg(name),
                                desktop::Icon::exclamation);
    }
}

void CustomPageFrame::create() {
    const auto name = askForNewName();
    if (!name) {
        return;
    }
    cmdSelfDel.setEnabled(true);
    chkSelf.setEnabled(true);
    createCustomPage(state_, services_.word, *name);
    registerCustomPage(*state_.gDbBidSet, *name);
    lstSelf.add(*name);
    lstSelf.select(lstSelf.entries().size() - 1);
    openSelected();
}

// The file that goes is one of the bare name in the current folder: the page's document stays. A
// name that leads elsewhere deletes nothing.
void CustomPageFrame::removeSelected() {
    if (!lstSelf.entries().isEmpty()) {
        const QString name = lstSelf.text();
        unregisterCustomPage(*state_.gDbBidSet, name);
        const QString file = QDir::toNativeSeparators(QDir::current().absoluteFilePath(name));
        if (QFileInfo(name).fileName() == name && state_.gFso->FileExists(file)) {
            state_.gFso->DeleteFile(file);
        }
    }
    lstSelf.remove(lstSelf.selected());
    if (!lstSelf.entries().isEmpty()) {
        lstSelf.select(0);
        return;
    }
    cmdSelfDel.setEnabled(false);
    chkSelf.setChecked(false);
    chkSelf.setEnabled(false);
}

void CustomPageFrame::openSelected() {
    services_.shell.open(files::resolved(store::customPageFile(state_.gAppPath, lstSelf.text())));
}

} // namespace qvnd::format

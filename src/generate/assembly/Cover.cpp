#include "generate/assembly/Cover.h"

#include "generate/assembly/BuiltInCover.h"
#include "generate/settings/SettingsChoice.h"
#include "generate/settings/SettingsRow.h"
#include "platform/files/Paths.h"
#include "store/Names.h"
#include "store/ProgramFiles.h"

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

void insertCustomPage(GenerationRun& run) {
    SettingsRow page;
    run.attempt([&] {
        page = {run.database(), "Select * from " + store::table::currentCustomPages.toString()};
    });
    if (page.hasRow())
        run.attempt([&] {
            run.gPathTmp
                .clear(); // without a name, or of one that leads elsewhere, nothing comes in
            run.gPathTmp =
                store::customPageFile(run.program.modMain.gAppPath, page.text(store::field::path));
        });
    run.attempt([&] { run.word.selection().InsertFile(files::toPath(run.gPathTmp)); });
}

void typeChosenCover(GenerationRun& run, const QString& table) {
    SettingsRow cover;
    run.attempt([&] { cover = {run.database(), u"Select * from "_s + table}; });
    typeBuiltInCover(run, cover);
}

} // namespace

void typeCover(GenerationRun& run) {
    CoverChoice choice = chooseCover(std::nullopt);
    run.attempt([&] { choice = chooseCover(readSelectionRow(run.database())); });
    if (choice.customPage)
        insertCustomPage(run);
    else
        typeChosenCover(run, choice.table);
    run.attempt([&] { run.word.selection().InsertBreak(word::BreakType::page); });
    run.services.dlgTB.setProgress(0.83);
    run.stopTest();
}

} // namespace qvnd::generate

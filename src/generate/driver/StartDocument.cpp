#include "generate/driver/StartDocument.h"

#include "platform/files/Paths.h"

namespace qvnd::generate {

namespace {

void showThatItRuns(GenerationRun& run) {
    const GenerationServices& services = run.services;
    services.screen.showHourglass();
    run.attempt([&] { services.screen.turnPreviewOn(); });
    services.dlgTB.show();
    services.dlgTB.setProgress(0.05);
}

void startWordProcessor(GenerationRun& run) {
    if (run.word.held()) {
        run.letEventsRun();
        run.word.dropApplication();
        run.letEventsRun();
    }
    run.attempt([&] { run.word.hold(run.services.wordProcessor.create()); });
}

void createTarget(GenerationRun& run) {
    files::FileSystemObject& gFso = *run.program.modMain.gFso;
    run.attempt([&] {
        if (gFso.FileExists(run.targetPath))
            gFso.DeleteFile(run.targetPath);
    });
    run.attempt([&] { run.word.keepDocument(run.word.application().documents().Add()); });
    run.attempt([&] { run.word.document().Activate(); });
    run.attempt([&] { run.word.document().SaveAs(files::toPath(run.targetPath)); });
    run.word.dropDocument();
    run.attempt([&] { run.word.application().setVisible(true); });
    run.services.dlgTB.setProgress(0.1);
}

void typeEmptyParagraphs(GenerationRun& run) {
    int start = 0;
    int end = 0;
    run.attempt([&] { start = run.word.activeDocument().paragraphs().First().Range().Start(); });
    run.attempt([&] { end = run.word.activeDocument().paragraphs().Last().Range().End(); });
    run.attempt([&] { run.word.activeDocument().Range(start, end)->Select(); });
    run.attempt([&] { run.word.selection().TypeParagraph(); });
    run.attempt([&] { run.word.selection().TypeParagraph(); });
}

} // namespace

void startDocument(GenerationRun& run) {
    showThatItRuns(run);
    startWordProcessor(run);
    createTarget(run);
    typeEmptyParagraphs(run);
}

} // namespace qvnd::generate

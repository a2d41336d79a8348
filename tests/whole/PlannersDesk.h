#pragma once

#include "format/frmBidSet.h"
#include "generate/SimilarDocuments.h"
#include "generate/driver/BuildBid.h"
#include "outline/TreeLoading.h"
#include "platform/word/engine/EngineApplication.h"
#include "store/Names.h"
#include "store/PlanLists.h"
#include "support/FakeFonts.h"
#include "support/FakeInputBoxes.h"
#include "support/FakeShell.h"
#include "support/FakeWordProcessorWindows.h"
#include "support/FixedFonts.h"
#include "support/Planner.h"
#include "support/recording/RecordingDesk.h"

#include <functional>

namespace qvnd::test {

// What a planner does outside the workbench: the format dialog, the information of the plan, the
// generation and the similar documents. The word processor is our own engine, which writes its
// files by itself.
class PlannersDesk : private word::ImportReport, private word::UnsavedChangesQuestion {
public:
    explicit PlannersDesk(Planner& planner) : planner_(planner) {}

    // What is done in the format dialog, which is loaded for it and, if nothing else is said,
    // closed by its close box; the remarks say what stays.
    void settings(const std::function<void(format::BidSetForm&)>& work,
                  format::frmBidSet::Ended ended = format::frmBidSet::Ended::left) {
        format::frmBidSet dialog(planner_.state(), formatServices());
        format::BidSetForm& form = dialog.form();
        const format::SettingsNow shown(*planner_.state().gDbBidSet);
        work(form);
        dialog.remarkEnd(shown, ended);
        dialog.Unload();
    }
    void information(const QString& author) {
        plans::DlgNew dialog(planner_.state(), planner_.workbench(), planner_.messages,
                             planner_.splash, plans::ShowMode::information);
        dialog.Load();
        dialog.form.TxtEdit = author;
        dialog.BtnOk();
    }
    // Of the open plan.
    generate::BuildOutcome generate() {
        outline::OutlineTree TrvEdit(QStringLiteral("TrvEdit"));
        jet::Database& db = *planner_.state().gDbUser;
        const QString plan = store::openCurrentPlan(db)->Get(store::field::name).TextOrEmpty();
        outline::FillOutlineTree(*db.OpenRecordset("Select * from [" + plan + "] order by ID asc"),
                                 TrvEdit);
        format::frmBidSet dialog(planner_.state(), formatServices());
        generate::BidEditState window;
        generate::WordSession session;
        const auto outcome = generate::BuildBid(
            {planner_.state(), planner_.state().FormatSwitches, session},
            {engine_, planner_.messages, progress_, planner_.events, windows_, screen_, dialog},
            window, TrvEdit);
        dialog.Unload();
        return outcome;
    }
    // The row of the list into the document that is selected in TrvCurrent.
    bool insertSimilar(std::size_t row) {
        generate::WordSession session;
        generate::SimilarDocuments dialog(planner_.state(), planner_.current(),
                                          {planner_.messages, planner_.dialogs, windows_, engine_,
                                           session, screen_, planner_.longRun});
        dialog.Load();
        dialog.select(dialog.ListView1().empty() ? row : row % dialog.ListView1().size());
        return dialog.cmdInsert();
    }
    // The services of the workbench, with that word processor.
    outline::Services services() {
        return {planner_.messages, planner_.splash, planner_.dialogs,
                planner_.events,   engine_,         planner_.longRun};
    }
    // A document of the word processor's own, at a path below the planner's folder.
    void writeDocument(const QString& file, std::u16string_view text) {
        planner_.folder.makeFolder(QFileInfo(file).path());
        word::EngineApplication writer({pages_, *this, *this});
        word::Document& made = writer.documents().Add();
        writer.Selection().TypeText(text);
        made.SaveAs(files::toPath(planner_.folder.path(file)));
    }

    // The next answers to what the dialog asks.
    FakeInputBoxes inputs;

private:
    void notCarried(const std::filesystem::path&, std::u16string_view) override {}
    bool save(const std::filesystem::path&) override { return false; }

    format::FormatServices formatServices() {
        return {planner_.messages, inputs, planner_.dialogs, fonts_, shell_, engine_};
    }

    Planner& planner_;
    FakeFonts fonts_;
    FakeShell shell_;
    FakeWordProcessorWindows windows_;
    FixedPageNumbers pages_;
    RecordingScreen screen_{planner_.log};
    RecordingProgressDialog progress_{planner_.log};
    word::EngineApplicationFactory engine_{{pages_, *this, *this}};
};

} // namespace qvnd::test

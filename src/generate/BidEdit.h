#pragma once

#include "generate/GenerationReport.h"
#include "generate/PlanCheck.h"
#include "generate/driver/BuildBid.h"
#include "outline/ShownOutlines.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/Shell.h"
#include "platform/desktop/WindowLookup.h"
#include "platform/office/PdfPrinter.h"
#include "platform/word/engine/DocumentConverter.h"

#include <functional>
#include <optional>
#include <vector>

namespace qvnd::generate {

// What the plan edit window reaches outside itself; all of it outlives the window.
struct BidEditServices {
    GenerationServices generation;
    // The screen of `generation`, with its sizes.
    BidEditPane& pane;
    desktop::Shell& shell;
    desktop::WindowLookup& windows;
    files::FilesInUse& inUse;
    office::PdfPrinter& pdf;
    // The progress of the check, of the contents that are rebuilt and of the PDF.
    desktop::LongRun& longRun;
    // Of the word processor of `generation`.
    GenerationRecord& record;
    word::DocumentConverter& documents;
};

// The plan edit window (frmBidEdit) without its window: the open plan's outline, which it never
// changes, and the commands that preview, open and generate it. Where two commands do nearly the
// same, their differences are meant.
//
// Unless a command says otherwise, an error passes to the caller.
class BidEdit {
public:
    BidEdit(const ProgramState& program, const BidEditServices& services);

    // Fills TrvEdit from the table of the open plan and selects the last node. An error shows its
    // description; without an open plan an empty text is shown first. True when that is another
    // plan than before, which has no report yet.
    bool Load();
    // Fills TrvEdit anew if another program has changed the plan since the last look that ended
    // well; true when it did. The selected node stays the selected one, else it is the root; a plan
    // that is gone leaves the tree empty. Nothing is written; errors of the store pass.
    bool lookAtOthers();
    // The same for what this program's workbench has changed, ahead of a command.
    void lookAtWorkbench() { showAnew(); }
    // Has 当前表 name the plan of TrvEdit again, if another program may have changed that.
    void keepPlanOpen() { plan_.keepOpen(); }
    // Opens and closes the commands that open a document, by the kind of the selected node.
    void NodeClick();

    // mnuBuildbid and the key "生成标书". A finished document stands in the preview.
    BuildOutcome mnuBuildbid();
    // False when there is nothing to rebuild, which is told, and when the user has cancelled.
    bool mnuBul();

    // The selected document in the preview; a node of another kind turns the preview off. The menu
    // shows it brought down to the pane and reports any error with one text; the double click is
    // silent about all errors but 31024.
    void mnuBrowseDoc();
    void DblClick();

    // The selected document in its own application, which may open what the preview cannot show.
    // mnuDocOpen ("打开" and the key "打开文档")
    // shows its failure and leaves the preview as it is; mnuOpenDoc ("打开文档") turns it off at
    // the end.
    void mnuDocOpen();
    void mnuOpenDoc();

    // The finished document: the key opens a new document based on it in the word processor, the
    // menu shows the file itself and opens it. Both tell when there is none.
    void browseAsTemplate();
    void mnuBrowsebid();

    // The companion tool: the menu starts it without any test; the key brings its window to front,
    // else starts it, and tells when it is not there.
    void mnuBidData();
    void showBidData();

    // What a planner should know before generating the outline as TrvEdit shows it; nothing when
    // he has cancelled. Events run while the documents are read.
    std::optional<std::vector<PlanFinding>> check();
    // Of the last run of the plan in this window that was not refused; nothing before.
    const std::optional<GenerationReport>& report() const { return report_; }
    // That run was taken back.
    void forgetReport() { report_.reset(); }
    // Makes 施工方案.pdf of the finished document beside it, and returns its path; empty when there
    // is none to make, which is told, or when the user has cancelled.
    QString printPdf();

    // Runs a command of the toolbar: after an error the progress dialog is gone, the pointer the
    // usual one and the word processor dropped; its description is shown, nothing for number 0.
    void runOfToolbar(const std::function<void()>& command);

    outline::OutlineTree TrvEdit{QStringLiteral("TrvEdit")};
    // Enabled: button 4 of the toolbar and mnuOpenDoc.
    bool openDocument = false;

private:
    const outline::OutlineNode& selectedNode() const;
    // Turns the preview on and loads the selected document; turns it off, and answers false, when
    // that is no document. Error 91 without a selection. `tell` is told of a failure that turns out
    // later, once no command runs.
    bool loadSelected(const std::function<void(const RunTimeError&)>& tell);
    QString selectedKey() const;
    // Fills TrvEdit by its table; true when that was news.
    bool showAnew();
    void loadToOpen(const QString& path);
    void tellUnexpected(const RunTimeError& failure, const QString& key, desktop::Icon icon);
    void tellUnstable(const RunTimeError& failure, const QString& key);
    QString documentOf(const outline::OutlineNode& node, const QString& plan) const;
    QString finishedDocument() const;
    bool isFinishedThere() const;
    QString companion() const;
    void report(BuildOutcome outcome);
    // False when the user has cancelled.
    bool drawPdf(const QString& pdf);
    void withHourglass(const std::function<void()>& work);

    ProgramState program_;
    BidEditServices services_;
    BidEditState state_;
    QString loaded_; // the plan of the last load that ended well
    outline::ShownPlan plan_{program_.modMain, TrvEdit};
    int seen_ = 0; // the changes of Db_UsTemplate.mdb at the last look
    std::optional<GenerationReport> report_;
};

} // namespace qvnd::generate

#pragma once

#include "format/ChildDocumentControls.h"
#include "generate/driver/ProgramState.h"
#include "generate/windows/BidEditFrame.h"
#include "generate/windows/BidEditLayout.h"
#include "generate/windows/BidEditMenus.h"
#include "generate/windows/dlgTB.h"
#include "outline/CommandsInTurn.h"
#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/Shell.h"
#include "platform/desktop/WindowLookup.h"
#include "platform/desktop/WordProcessorWindows.h"
#include "platform/files/FilesInUse.h"
#include "platform/history/Step.h"
#include "platform/office/PdfPrinter.h"
#include "platform/preview/DocumentPreview.h"
#include "platform/word/engine/DocumentConverter.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>

namespace qvnd::outline {
class OutlineNode;
class NoteBar;
class OutlineView;
class SplitterBar;
} // namespace qvnd::outline

namespace qvnd::generate {

class BidEdit;
class BidEditToolbar;
class FindingsWindow;
class GenerationRecord;
class PicEdit;

// The plan edit window: the open plan's outline, which it only reads, a preview, and the commands
// that open, generate and show. Events go to the logic as they come.
class frmBidEdit : public QWidget {
    Q_OBJECT

public:
    // What the window works on; all of it outlives the window.
    struct Parts {
        ProgramState program;
        desktop::MessageBoxes& messages;
        desktop::FileDialogs& fileDialogs;
        desktop::Events& events;
        desktop::LongRun& longRun;
        // Of the generation, and of the insertion of similar documents.
        word::ApplicationFactory& generation;
        word::ApplicationFactory& insertion;
        desktop::WordProcessorWindows& wordProcessorWindows;
        desktop::WindowLookup& windows;
        desktop::Shell& shell;
        files::FilesInUse& inUse;
        office::PdfPrinter& pdf;
        GenerationRecord& record;
        // Of the generation, for the check ahead of it.
        word::DocumentConverter& documents;
        format::ChildDocumentControls& frmBidSet;
        BidEditFrame& frame;
        // Shows the format dialog and waits for its end; without it the command is closed.
        std::function<void()> showSettings;
        // Takes that step of the history back if it is still the latest, and tells the user where
        // it is not; and shows the latest step in the list.
        std::function<void(std::int64_t step)> takeBack;
        std::function<void()> showDetails;
        // The view of a document, which becomes a child, and what shows a file in it.
        QWidget& view;
        preview::DocumentPreview& document;
    };

    explicit frmBidEdit(const Parts& parts, QWidget* parent = nullptr);
    ~frmBidEdit() override;

    // Fills the tree with the open plan. The lists of another plan go.
    void Load();
    // The menus that stand in the frame's menu bar while this window is the active one.
    QList<QMenu*> menus() const { return menus_.menuBar(); }

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    using Event = outline::CommandsInTurn::Event;

    void buildTree();
    void buildSplitter();
    void connectMenus();
    void connectToolbar();
    void connectTree();
    void bind(QAction* action, const Event& event);
    void bindAtOnce(QAction* action, const Event& event);

    // The two kinds of events; see CommandsInTurn.
    void read(const Event& event);
    // `caption` names the command in the history: the text of its menu item.
    void run(const Event& event, const QString& caption = QStringLiteral("方案编辑"));
    // The same for a command of the toolbar, under its own error routine.
    void runOfToolbar(const Event& event, const QString& caption);
    void seeOtherPrograms();
    // What a command did beyond what its name says, and the way back from it.
    void connectNote();
    void tellStep(const history::Step& step);
    void takeBack();
    bool isNotedLatest() const;
    void generate();
    void build();
    void tellFinished();
    void print();
    void withdraw();
    void hideLists();
    void rebuildContents();
    void setUp();
    void like();
    void openSeen();
    void check();
    void report();
    void chooseNode(const QString& key);
    void popUp(outline::OutlineNode* node, const QPoint& place);
    void applyCommands();
    void placePanes();

    Parts parts_;
    PicEdit* PicEdit_;
    ProgressWindow dlgTB_;
    std::unique_ptr<BidEdit> edit_;
    outline::CommandsInTurn inTurn_;
    WordSession likeWord_;
    BidEditMenus menus_;
    BidEditLayout layout_;
    BidEditToolbar* TbarBidSet_;
    outline::OutlineView* TrvEdit_ = nullptr;
    outline::SplitterBar* Image1_ = nullptr;
    outline::NoteBar* note_;
    // Tells what the running command has done, behind its end: until then it may be taken back.
    std::function<void()> whenDone_;
    bool hasGenerated_ = false;               // the report is that of the running command
    std::int64_t noted_ = history::beginning; // the step that the bar tells of
    FindingsWindow* findings_ = nullptr;
    FindingsWindow* report_ = nullptr;
};

} // namespace qvnd::generate

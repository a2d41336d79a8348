#pragma once

#include "generate/driver/BidEditScreen.h"
#include "generate/driver/WordSession.h"
#include "outline/OutlineTree.h"
#include "platform/desktop/FileDialogs.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/desktop/OneCommand.h"
#include "platform/desktop/WordProcessorWindows.h"
#include "store/modMain.h"

#include <QString>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qvnd::generate {

// What the dialog reaches outside itself; all of it outlives the dialog.
struct SimilarDocumentsServices {
    desktop::MessageBoxes& messages;
    desktop::FileDialogs& cmdlglike;
    desktop::WordProcessorWindows& wordProcessorWindows;
    word::ApplicationFactory& wordProcessor;
    // A reference of the dialog's own, apart from the generation's.
    WordSession& word;
    BidEditScreen& frmBidEdit;
    // The progress of an insertion.
    desktop::LongRun& longRun;
};

// The dialog for similar documents (dlgLike), without its window: the template documents that bear
// the name of the document selected in TrvEdit; one of them is inserted into it or opened alone.
class SimilarDocuments {
public:
    struct Row {
        QString text;
        QString path;
    };

    SimilarDocuments(modMain& state, const outline::OutlineTree& TrvEdit,
                     const SimilarDocumentsServices& services);

    // Lists the documents when a document is selected; else the list stays empty and the buttons as
    // they are. The last template comes first; within a template the rows keep the table's order.
    // An error of the store passes through, with the rows of the tables before in the list.
    void Load();

    const std::vector<Row>& ListView1() const { return rows_; }
    // Nothing takes the selection away.
    void select(std::optional<std::size_t> row) { selected_ = row; }

    // Enabled. A double click in the list asks neither.
    bool cmdInsertEnabled() const { return enabled_; }
    bool cmdOpenEnabled() const { return enabled_; }

    // Appends a file that the user chooses; any error, and a cancel too, ends it in silence.
    void cmdBrowse();
    // Puts the selected row's document in front of what the document selected in TrvEdit holds, and
    // shows that in the preview. Refused while a document of either folder is open in a word
    // processor, and while an insertion is under way. With an empty list the word processor that it
    // starts is left running. True when it was inserted; an error is shown and leaves the word
    // processor as it is. A user who cancels leaves the target as it was, without a word, and the
    // word processor is dropped; once the target is being saved nothing offers to cancel.
    bool cmdInsert();
    // Shows the selected row's document in the preview and starts its application on it, which may
    // open what the preview cannot show.
    void cmdOpen();

private:
    std::vector<Row> documentsOf(const QString& table, const QString& name) const;
    QStringList foldersAtWork() const;
    QString target() const;
    const Row& selectedRow() const;
    bool insertSelected();
    void insertInto(const QString& path);
    desktop::LateFailure toldWhenIdle(std::function<void(const RunTimeError&)> tell) const;
    void leaveIfCancelled() const;

    modMain& state_;
    const outline::OutlineTree& TrvEdit_;
    SimilarDocumentsServices services_;
    std::vector<Row> rows_;
    std::optional<std::size_t> selected_;
    bool enabled_ = true;
    // Shared with what is told later than the dialog may live.
    std::shared_ptr<desktop::OneCommand> command_ = std::make_shared<desktop::OneCommand>();
};

} // namespace qvnd::generate

#include "generate/SimilarDocuments.h"

#include "outline/OutlineKeys.h"
#include "outline/OutlinePaths.h"
#include "outline/QueryText.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/IgnoringErrors.h"
#include "platform/error/UnexpectedErrors.h"
#include "platform/files/Paths.h"
#include "platform/files/Trim.h"
#include "store/Names.h"
#include "store/PlanLists.h"

#include <QFileInfo>

#include <exception>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

using desktop::Icon;

[[noreturn]] void noRowSelected() {
    throw RunTimeError(error::objectNotSet, u"没有选中文档，请先在列表中选中一个文档。");
}

void tellFailedInsertion(desktop::MessageBoxes& messages, const RunTimeError& failure) {
    messages.tell(desktop::descriptionOf(failure), Icon::exclamation, desktop::hintTitle);
}

} // namespace

SimilarDocuments::SimilarDocuments(modMain& state, const outline::OutlineTree& TrvEdit,
                                   const SimilarDocumentsServices& services)
    : state_(state), TrvEdit_(TrvEdit), services_(services) {}

void SimilarDocuments::Load() {
    const outline::OutlineNode* selected = TrvEdit_.SelectedItem();
    if (!selected || selected->Image() != outline::image::document) {
        return;
    }
    const auto templates = store::openPlanList(*state_.gDbTemplate);
    for (; !templates->Eof(); templates->MoveNext()) {
        const auto found =
            documentsOf(templates->Get(store::field::name).ToText(), selected->Text());
        rows_.insert(rows_.begin(), found.begin(), found.end());
    }
    enabled_ = !rows_.empty();
}

std::vector<SimilarDocuments::Row> SimilarDocuments::documentsOf(const QString& table,
                                                                 const QString& name) const {
    std::vector<Row> found;
    const auto rs = state_.gDbTemplate->OpenRecordset(
        "Select * from " + table + " where 名称=" + outline::quoted(name) + " and 是否文档='是'");
    for (; !rs->Eof(); rs->MoveNext()) {
        const QString key = rs->Get(store::field::key).TextOrEmpty();
        found.push_back({rs->Get(store::field::name).TextOrEmpty(),
                         outline::templateDocumentPath(state_, outline::tableOfKey(key), key)});
    }
    return found;
}

void SimilarDocuments::cmdBrowse() {
    try {
        const auto chosen =
            services_.cmdlglike.open({u"打开文档"_s, u"Word文档(*.doc)|*.doc"_s, {}});
        rows_.push_back({chosen.fileTitle.section(u'.', 0, 0), chosen.fileName});
        enabled_ = true;
    } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): ends in silence
    }
}

// A second one while the first runs goes on to its refusal.
bool SimilarDocuments::cmdInsert() {
    bool isInserted = false;
    const bool isFirst = command_->run([&] { isInserted = insertSelected(); });
    return isFirst ? isInserted : insertSelected();
}

bool SimilarDocuments::insertSelected() {
    // No std::optional: GCC warns that it may be unset at its end.
    std::unique_ptr<desktop::LongRunScope> progress;
    try {
        if (services_.word.isAtWork() || services_.wordProcessorWindows.isOpenIn(foldersAtWork())) {
            services_.messages.tell(u"对不起，请先关闭Word文档！"_s, Icon::information);
            return false;
        }
        const WordSession::Work work(services_.word);
        services_.word.hold(services_.wordProcessor.create());
        const QString path = target();
        if (rows_.empty()) {
            return false;
        }
        progress = std::make_unique<desktop::LongRunScope>(services_.longRun, u"插入文档"_s, 0);
        insertInto(path);
        return true;
    } catch (const std::exception& failure) {
        const bool isCancelled = services_.longRun.isCancelled();
        progress.reset();
        if (isCancelled) {
            services_.word.dropApplication();
        } else {
            tellFailedInsertion(services_.messages, runTimeErrorOf(failure));
        }
        return false;
    }
}

// The command that has opened the dialog runs until it closes; while it is open its own ones count.
desktop::LateFailure
SimilarDocuments::toldWhenIdle(std::function<void(const RunTimeError&)> tell) const {
    return [dialog = std::weak_ptr(command_), &outer = state_.Command,
            tell = std::move(tell)](const RunTimeError& failure) {
        const auto open = dialog.lock();
        return (open ? *open : outer).run([&] { tell(failure); });
    };
}

void SimilarDocuments::leaveIfCancelled() const {
    if (services_.longRun.isCancelled()) {
        throw RunTimeError(error::stopped, u"插入已取消。");
    }
}

void SimilarDocuments::insertInto(const QString& path) {
    WordSession& word = services_.word;
    services_.longRun.next(u"正在打开“%1”……"_s.arg(QFileInfo(path).fileName()));
    word.keepDocument(word.application().documents().Open(files::toPath(path)));
    word.document().Activate();
    leaveIfCancelled();
    services_.longRun.next(u"正在插入“%1”……"_s.arg(QFileInfo(selectedRow().path).fileName()));
    word.selection().InsertFile(files::toPath(selectedRow().path));
    leaveIfCancelled();
    services_.longRun.offerNoCancel(); // from here on the target changes
    services_.longRun.next(u"正在保存“%1”……"_s.arg(QFileInfo(path).fileName()));
    word.activeDocument().Close(true);
    services_.frmBidEdit.turnPreviewOn();
    services_.frmBidEdit.loadPreview(path);
    services_.frmBidEdit.onLatePreviewFailure(
        toldWhenIdle([&messages = services_.messages](const RunTimeError& failure) {
            tellFailedInsertion(messages, failure);
        }));
    services_.frmBidEdit.updatePreview();
    word.application().Quit();
    word.dropApplication();
}

// The folders whose documents the insertion opens.
QStringList SimilarDocuments::foldersAtWork() const {
    QStringList folders;
    if (TrvEdit_.SelectedItem()) {
        folders << QFileInfo(target()).path();
    }
    if (selected_) {
        folders << QFileInfo(selectedRow().path).path();
    }
    return folders;
}

QString SimilarDocuments::target() const {
    const QString& key = TrvEdit_.Selected().Key();
    return outline::documentPath(state_, outline::tableOfKey(key), files::Trim(key));
}

const SimilarDocuments::Row& SimilarDocuments::selectedRow() const {
    if (!selected_ || *selected_ >= rows_.size()) {
        noRowSelected();
    }
    return rows_[*selected_];
}

void SimilarDocuments::cmdOpen() {
    try {
        const QString path = selectedRow().path;
        services_.frmBidEdit.turnPreviewOn();
        // What the preview refuses, as a document with a password, is for the word processor.
        ignoringErrors([&] { services_.frmBidEdit.loadPreview(path); });
        services_.frmBidEdit.activatePreview();
    } catch (const std::exception& cause) {
        const RunTimeError failure = runTimeErrorOf(cause);
        if (failure.number() == error::objectNotSet) {
            services_.messages.tell(u"没有文档，所以不能打开！"_s, Icon::exclamation, u"警告！"_s);
        } else {
            services_.messages.tell(desktop::descriptionOf(failure));
        }
    }
}

} // namespace qvnd::generate

#include "outline/DocumentMove.h"

#include "outline/OutlinePaths.h"
#include "platform/error/RunTimeError.h"

#include <utility>

namespace qvnd::outline {

DocumentMove::DocumentMove(const modMain& state, desktop::MessageBoxes& messages,
                           RecordedErrors& errors, QString plan)
    : state_(state), messages_(messages), errors_(errors), plan_(std::move(plan)) {}

// Names are compared without case: a file whose name would only change case stays where it is, as
// copying it onto itself and deleting it would lose it.
void DocumentMove::copy(const QString& oldKey, const QString& newKey) {
    if (oldKey.compare(newKey, Qt::CaseInsensitive) == 0) {
        return;
    }
    errors_.statement([&] {
        files_.push_back({oldKey,
                          newKey,
                          documentPath(state_, plan_, oldKey),
                          documentPath(state_, plan_, newKey),
                          {},
                          false});
        tryToCopy(files_.back());
    });
}

void DocumentMove::tryToCopy(File& file) {
    file.copied =
        file.errors.statement([&] { state_.gFso->CopyFile(file.oldPath, file.newPath, true); });
}

void DocumentMove::tryToDelete(File& file) {
    if (file.copied) {
        file.errors.statement([&] { state_.gFso->DeleteFile(file.oldPath); });
    }
}

void DocumentMove::deleteOld(const QSet<QString>& keysNow) {
    for (File& file : files_) {
        if (keysNow.contains(file.newKey) && !keysNow.contains(file.oldKey)) {
            deleteOld(file);
        }
    }
}

void DocumentMove::deleteOld(File& file) {
    tryToDelete(file);
    while (file.errors.number() == error::permissionDenied &&
           messages_.askForRetry("请关闭打开的 [" + file.oldPath + "] 文档！",
                                 desktop::Icon::exclamation, QStringLiteral("提示"))) {
        tryToCopy(file);
        tryToDelete(file);
    }
    if (file.errors.first() && state_.gFso->FileExists(file.oldPath)) {
        errors_.statement([&] { throw RunTimeError(*file.errors.first()); });
    }
}

} // namespace qvnd::outline

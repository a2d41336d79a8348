#include "outline/DocumentMove.h"

#include "platform/error/RunTimeError.h"

#include <utility>

namespace qvnd::outline {

DocumentMove::DocumentMove(files::FileSystemObject& fso, desktop::MessageBoxes& messages,
                           RecordedErrors& errors, QString folder)
    : fso_(fso), messages_(messages), errors_(errors), folder_(std::move(folder)) {}

// Names are compared without case: a file whose name would only change case stays where it is, as
// copying it onto itself and deleting it would lose it.
void DocumentMove::copy(const QString& oldKey, const QString& newKey) {
    if (oldKey.compare(newKey, Qt::CaseInsensitive) == 0) {
        return;
    }
    File& file = files_.emplace_back(File{oldKey, newKey, {}, false});
    tryToCopy(file);
}

void DocumentMove::tryToCopy(File& file) {
    file.copied = file.errors.statement(
        [&] { fso_.CopyFile(pathOf(file.oldKey), pathOf(file.newKey), true); });
}

void DocumentMove::tryToDelete(File& file) {
    if (file.copied) {
        file.errors.statement([&] { fso_.DeleteFile(pathOf(file.oldKey)); });
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
    const QString path = pathOf(file.oldKey);
    tryToDelete(file);
    while (file.errors.number() == error::permissionDenied &&
           messages_.askForRetry("请关闭打开的 [" + path + "] 文档！", desktop::Icon::exclamation,
                                 QStringLiteral("提示"))) {
        tryToCopy(file);
        tryToDelete(file);
    }
    if (file.errors.first() && fso_.FileExists(path)) {
        errors_.statement([&] { throw RunTimeError(*file.errors.first()); });
    }
}

} // namespace qvnd::outline

#include "platform/error/IgnoringErrors.h"
#include "platform/error/RunTimeError.h"
#include "platform/history/Restoration.h"
#include "platform/history/StepWords.h"
#include "platform/jet/file/Image.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

// A restoration that has failed or was killed on its way: it is given up, or carried on.
namespace qvnd::history {

// Goes back over what was done. That takes no more room than it gives free, so a full disk does not
// stop it; what does leaves the restoration to be carried on.
void Restoration::giveUp() {
    ignoringErrors([this] {
        HistoryFile& file = recorder_.file();
        const Pending pending = file.pending().value_or(Pending{});
        QList<PendingFile> files = pending.files;
        std::reverse(files.begin(), files.end());
        const auto databases = imagesAt(wayTo(pending.target));
        QMap<QString, QByteArray> before;
        for (const QString& database : databases.keys()) {
            before[database] = file.mirror(database);
        }
        removeUnfinished(pending);
        carryOut(before, [&] {
            for (const PendingFile& one : files) {
                revert(one);
            }
        });
        HistoryFile::Transaction all(file);
        for (const QString& database : before.keys()) {
            if (!Places::isElsewhere(database)) {
                file.setMirror(database, before[database], jet::imageOf(database));
            }
        }
        file.clearPending();
        all.commit();
    });
}

void Restoration::removeUnfinished(const Pending& pending) {
    QStringList paths;
    for (const PendingFile& one : pending.files) {
        if (!Places::isElsewhere(one.path)) {
            paths << one.path;
        }
    }
    KeptFiles::removeUnfinished(paths, pending.began, pending.began);
}

void Restoration::revert(const PendingFile& one) {
    if (Places::isElsewhere(one.path)) { // since it was begun, so what it had cannot go back
        throw RunTimeError(error::pathNotFound, outOfReachRefusal().toStdU16String());
    }
    const std::optional<Present> present = recorder_.file().present(one.path);
    const QString before = present ? present->content : content::absent;
    if (!one.keep.isEmpty()) {
        if (kept_.has(one.keep)) {
            kept_.giveBack(one.keep, one.path);
        }
    } else if (KeptFiles::isKept(before)) {
        if (stampOf(one.path) != present->stamp && kept_.canPut(before)) {
            kept_.put(before, one.path);
            recorder_.file().setPresent(one.path, {stampOf(one.path), before});
        }
    } else if (content::isOfFolder(before)) {
        kept_.putFolder(before, one.path);
    } else {
        if (content::isOfFolder(one.put)) {
            kept_.emptyFolder(one.put, one.path);
        }
        KeptFiles::takeAway(one.path);
    }
}

bool Restoration::isHalfDone() {
    bool isHalf = false;
    ignoringErrors([&] { isHalf = recorder_.file().pending().has_value(); });
    return isHalf;
}

bool Restoration::carryOn(const Question& mayLeaveOut) {
    const std::optional<Pending> pending = recorder_.file().pending();
    if (!pending) {
        return false;
    }
    note_.clear();
    try {
        leaveOut(goalOf(wayTo(pending->target)), mayLeaveOut);
        refuseOpen(pending->files);
        removeUnfinished(*pending);
        keepWhatCameMeanwhile(*pending);
        end(*pending);
    } catch (const RunTimeError& failure) {
        failWith(failure, u"上一次撤消或恢复只做了一半，要先把它做完：\n%1"_s);
    }
    return true;
}

// A file that is neither as it was before the restoration nor as this puts it.
bool Restoration::hasComeMeanwhile(const PendingFile& one) {
    const Stamp stamp = stampOf(one.path);
    const std::optional<Present> present = recorder_.file().present(one.path);
    return stamp != Stamp{} && !(present && present->stamp == stamp) &&
           !kept_.isCopiedTo(one.put, one.path) &&
           !(present && kept_.isCopiedTo(present->content, one.path));
}

// Since the restoration was broken off, other programs may have worked on what it has done and on
// what it was still to do.
void Restoration::keepWhatCameMeanwhile(const Pending& pending) {
    HistoryFile& file = recorder_.file();
    const auto images = imagesAt(wayTo(pending.target));
    QStringList databases;
    for (auto image = images.begin(); image != images.end(); ++image) {
        if (!Places::isElsewhere(image.key()) &&
            !jet::holdTheSame(jet::imageOf(image.key()), *image)) {
            databases << image.key();
        }
    }
    QStringList files;
    for (const PendingFile& one : pending.files) {
        if (!one.keep.isEmpty() && kept_.has(one.keep)) {
            file.contentOnDiskIsKept(one.path, one.keep);
        }
        if (hasComeMeanwhile(one)) {
            files << one.path;
        }
    }
    keepOutside(databases, files);
}

} // namespace qvnd::history

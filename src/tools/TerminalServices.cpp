#include "tools/TerminalServices.h"

#include "platform/error/RunTimeError.h"

#include <QDir>
#include <QFileInfo>

namespace qvnd::tools {

desktop::ChosenFile GivenFile::open(const desktop::OpenFileQuestion& question) {
    if (!fileName_) {
        throw RunTimeError(error::dialogCancelled, u"没有选择文件");
    }
    QFileInfo file(QDir().absoluteFilePath(*fileName_));
    if (!file.exists() && file.suffix().isEmpty()) {
        file.setFile(file.filePath() + '.' + question.defaultExtension);
    }
    return {QDir::toNativeSeparators(file.filePath()), file.fileName()};
}

} // namespace qvnd::tools

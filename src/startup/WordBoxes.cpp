#include "startup/WordBoxes.h"

#include "platform/files/Paths.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qvnd::startup {

namespace {

const QString title = u"提示"_s;

QString nameOf(const std::filesystem::path& path) {
    return QFileInfo(files::fromPath(path)).fileName();
}

} // namespace

void LossBoxes::notCarried(const std::filesystem::path& path, std::u16string_view what) {
    const QString loss = QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size()));
    messages_.tell(nameOf(path) + u"："_s + loss, desktop::Icon::information, title);
}

bool UnsavedChangesBox::save(const std::filesystem::path& document) {
    return messages_.ask(u"是否保存对“%1”的更改？"_s.arg(nameOf(document)), desktop::Icon::question,
                         title);
}

} // namespace qvnd::startup

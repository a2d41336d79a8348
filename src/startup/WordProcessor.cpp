#include "startup/WordProcessor.h"

#include "platform/files/Paths.h"

#include <QFileInfo>

#include <utility>

namespace qvnd::startup {

namespace {

QString nameOf(const std::filesystem::path& path) {
    return QFileInfo(files::fromPath(path)).fileName();
}

} // namespace

WordProcessor::WordProcessor(desktop::MessageBoxes& messages, office::OfficeSuite::Stop stop)
    : losses_(messages), unsaved_(messages),
      suite_(officeProfile_.path(), office::OfficeSuite::installedProgram(), std::move(stop)),
      engine_({pages_, losses_, unsaved_, &pictures_, &documents_}), factory_(engine_, suite_) {}

void WordProcessor::Losses::notCarried(const std::filesystem::path& path,
                                       std::u16string_view what) {
    messages_.tell(nameOf(path) + "：" +
                       QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size())),
                   desktop::Icon::information, QStringLiteral("提示"));
}

bool WordProcessor::Unsaved::save(const std::filesystem::path& document) {
    return messages_.ask("是否保存对“" + nameOf(document) + "”的更改？", desktop::Icon::question,
                         QStringLiteral("提示"));
}

} // namespace qvnd::startup

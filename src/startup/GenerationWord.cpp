#include "startup/GenerationWord.h"

#include "platform/files/Paths.h"

#include <QFileInfo>

#include <utility>

namespace qvnd::startup {

GenerationWord::GenerationWord(desktop::MessageBoxes& messages, office::OfficeSuite suite)
    : unsaved_(messages), exact_(std::move(suite)), pages_(exact_, estimate_),
      factory_({pages_, losses_, unsaved_, &pictures_}) {}

bool GenerationWord::Unsaved::save(const std::filesystem::path& document) {
    const QString name = QFileInfo(files::fromPath(document)).fileName();
    return messages_.ask("是否保存对“" + name + "”的更改？", desktop::Icon::question,
                         QStringLiteral("提示"));
}

} // namespace qvnd::startup

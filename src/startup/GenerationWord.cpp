#include "startup/GenerationWord.h"

#include "platform/files/Paths.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace qvnd::startup {

GenerationWord::GenerationWord(desktop::MessageBoxes& messages, office::OfficeSuite suite,
                               desktop::LongRun& longRun)
    : unsaved_(messages), exact_(std::move(suite), longRun), pages_(exact_, estimate_),
      factory_({pages_, losses_, unsaved_, &pictures_}) {}

std::vector<int> GenerationWord::Awaited::displayedPages(const word::DocumentContent& content,
                                                         std::span<const word::Cp> positions) {
    const desktop::LongRunScope scope(longRun_, u"计算目录的页码"_s, 0);
    longRun_.next(u"正在由办公软件排版……取消时使用估计的页码。"_s);
    return exact_.displayedPages(content, positions);
}

bool GenerationWord::Unsaved::save(const std::filesystem::path& document) {
    const QString name = QFileInfo(files::fromPath(document)).fileName();
    return messages_.ask("是否保存对“" + name + "”的更改？", desktop::Icon::question,
                         QStringLiteral("提示"));
}

} // namespace qvnd::startup

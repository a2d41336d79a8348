#include "startup/GenerationWord.h"

#include "platform/files/Paths.h"

#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace qvnd::startup {

GenerationWord::GenerationWord(desktop::MessageBoxes& messages, office::OfficeSuite suite,
                               desktop::LongRun& longRun, desktop::Events& events)
    : unsaved_(messages), documents_(suite), exact_(std::move(suite)), pages_(exact_, own_),
      awaited_(pages_, longRun, events),
      factory_({awaited_, losses_, unsaved_, &pictures_, &documents_}) {}

std::vector<int> GenerationWord::Awaited::displayedPages(const word::DocumentContent& content,
                                                         std::span<const word::Cp> positions) {
    events_.doEvents();
    const desktop::LongRunScope scope(longRun_, u"计算目录的页码"_s, 0);
    longRun_.next(u"正在由办公软件排版……取消时使用本程序排出的页码。"_s);
    std::vector<int> pages = source_.displayedPages(content, positions);
    events_.doEvents();
    return pages;
}

bool GenerationWord::Unsaved::save(const std::filesystem::path& document) {
    const QString name = QFileInfo(files::fromPath(document)).fileName();
    return messages_.ask("是否保存对“" + name + "”的更改？", desktop::Icon::question,
                         QStringLiteral("提示"));
}

} // namespace qvnd::startup

#include "generate/GenerationWorld.h"

#include "platform/files/Paths.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::test {

GenerationWorld::GenerationWorld() {
    log.base = files::toPath(home.path());
    for (const char* folder : {"app", "work", "plans"})
        std::filesystem::create_directory(log.base / folder);
    const auto path = [&](const char* folder) {
        return files::withSeparator(files::fromPath(log.base / folder));
    };
    program.AppPath = files::withoutSeparator(path("app"));
    program.gAppPath = path("app");
    program.gWorkPath = path("work");
    program.gUserTplPath = path("plans");
    program.gFso = std::make_unique<RecordingFileSystem>(log);
    program.gDbBidSet = workspace.CreateDatabase(path("app") + u"Db_BidSet.mdb"_s, {});
    workspace.BeginTrans();
    putFirstSettings(settings());
    workspace.CommitTrans();
    TrvEdit.Add(u"工程"_s, u"工程"_s, outline::image::root, outline::image::rootSelected);
}

void GenerationWorld::add(const QString& key, const QString& text, int image, int selectedImage) {
    TrvEdit.AddChild(key.left(key.lastIndexOf(u'.')), key, text, image, selectedImage);
}

void GenerationWorld::folder(const QString& key, const QString& text) {
    add(key, text, outline::image::folder, outline::image::folderSelected);
}

void GenerationWorld::document(const QString& key, const QString& text) {
    add(key, text, outline::image::document, outline::image::documentSelected);
}

void GenerationWorld::smallPlan() {
    folder(u"工程.1"_s, u"概况"_s);
    document(u"工程.1.2"_s, u"说明"_s);
}

generate::BuildOutcome GenerationWorld::build() {
    return generate::BuildBid(state(), services(), window, TrvEdit);
}

std::string GenerationWorld::joined(std::size_t from, std::size_t to) const {
    std::string text;
    for (std::size_t i = from; i < to; ++i)
        text += log.lines[i] + "\n";
    return text;
}

std::string GenerationWorld::linesBetween(const std::string& after,
                                          const std::string& until) const {
    const auto find = [&](std::size_t from, const std::string& prefix) {
        while (from < log.lines.size() && !log.lines[from].starts_with(prefix))
            ++from;
        return from;
    };
    const std::size_t first = std::min(find(0, after) + 1, log.lines.size());
    return joined(first, find(first, until));
}

std::string GenerationWorld::linesOf(const std::string& prefix) const {
    std::string text;
    for (const std::string& line : log.lines)
        if (line.starts_with(prefix))
            text += line + "\n";
    return text;
}

void GenerationWorld::stopAt(const std::string& prefix, int occurrence) {
    log.at(
        prefix, [this] { program.StopRequested = true; }, occurrence);
}

} // namespace qvnd::test

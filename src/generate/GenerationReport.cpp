#include "generate/GenerationReport.h"

#include "platform/files/Paths.h"

#include <QFileInfo>
#include <QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace qvnd::generate {

namespace {

using outline::OutlineNode;
using outline::OutlineTree;

ReportedNode reported(const OutlineNode& node, const QString& what) {
    return {node.Key(), node.Text(), node.isDocument(), what};
}

// A file that no node has is the custom page in the cover's place.
ReportedNode ofTheCover(const QString& what) { return {QString(), u"封面"_s, false, what}; }

std::vector<ReportedNode>& placeFor(GenerationReport& report, CollectedLosses::Kind kind) {
    switch (kind) {
    case CollectedLosses::Kind::converted:
        return report.converted;
    case CollectedLosses::Kind::changed:
        return report.changed;
    default:
        return report.leftOut;
    }
}

void addMissing(GenerationReport& report, const OutlineTree& tree, const BidEditState& run) {
    QHash<QString, std::optional<QString>> failures;
    for (const VisitedEntry& visited : run.Visited)
        failures.insert(visited.Key, visited.Failure);
    const std::optional<QString> notReached = u"生成在到达这个节点之前中断了。"_s;
    for (int i = 2; i <= tree.Count(); ++i) {
        const OutlineNode& node = tree.Item(i);
        if (const auto failure = failures.value(node.Key(), notReached))
            report.missing.push_back(reported(node, *failure));
    }
}

} // namespace

void CollectedLosses::notCarried(const std::filesystem::path& path, std::u16string_view what) {
    add(Kind::leftOut, path, what);
}

void CollectedLosses::converted(const std::filesystem::path& path, std::u16string_view what) {
    add(Kind::converted, path, what);
}

void CollectedLosses::changed(const std::filesystem::path& path, std::u16string_view what) {
    add(Kind::changed, path, what);
}

void CollectedLosses::add(Kind kind, const std::filesystem::path& path, std::u16string_view what) {
    losses_.push_back({QFileInfo(files::fromPath(path)).completeBaseName(),
                       QString::fromUtf16(what.data(), static_cast<qsizetype>(what.size())), kind});
}

int GenerationReport::missingDocuments() const {
    return static_cast<int>(std::count_if(
        missing.begin(), missing.end(), [](const ReportedNode& node) { return node.isDocument; }));
}

GenerationReport reportOf(const OutlineTree& TrvEdit, const BidEditState& run,
                          const std::vector<CollectedLosses::Loss>& losses) {
    GenerationReport report;
    report.nodes = TrvEdit.Count() - 1;
    for (int i = 2; i <= TrvEdit.Count(); ++i)
        report.documents += TrvEdit.Item(i).isDocument() ? 1 : 0;
    report.headings = static_cast<int>(std::count_if(
        run.Visited.begin(), run.Visited.end(), [](const auto& node) { return node.HasHeading; }));
    addMissing(report, TrvEdit, run);
    for (const CollectedLosses::Loss& loss : losses) {
        const OutlineNode* node = TrvEdit.find(loss.key);
        placeFor(report, loss.kind)
            .push_back(node ? reported(*node, loss.what) : ofTheCover(loss.what));
    }
    for (const QString& told : run.Told)
        report.failed.push_back({QString(), u"整份文档"_s, false, told});
    return report;
}

QString summaryOf(const GenerationReport& report) {
    const int lost = report.missingDocuments();
    QString text = report.whyUnfinished ? *report.whyUnfinished + u'\n' : QString();
    text += u"%1 个节点，%2 个文档"_s.arg(report.nodes).arg(report.documents);
    text += lost == 0 ? u"全部放入"_s
                      : u"放入 %1 个，%2 个没有放入"_s.arg(report.documents - lost).arg(lost);
    text += u"，%1 个标题"_s.arg(report.headings);
    if (report.pages > 0)
        text += u"，%1 页"_s.arg(report.pages);
    text += u"。"_s;
    if (report.whyEstimated)
        text += u"\n目录的页码是估计的："_s + *report.whyEstimated;
    return text;
}

} // namespace qvnd::generate

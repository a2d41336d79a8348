#pragma once

#include "generate/ForeignTexts.h"
#include "generate/driver/BidEditState.h"
#include "outline/OutlineTree.h"
#include "platform/word/engine/ImportReport.h"

#include <QString>

#include <optional>
#include <vector>

namespace qvnd::generate {

// A node that a report speaks of, or what stands around the nodes, and what it says.
struct ReportedNode {
    QString key; // empty for what is no node
    QString name;
    bool isDocument = false;
    QString what;
};

// Keeps what documents lose on their way in, and what changes of them, for a report.
class CollectedLosses : public word::ImportReport {
public:
    enum class Kind { leftOut, converted, changed };
    struct Loss {
        QString key; // of the document's node, after which its file is named
        QString what;
        Kind kind = Kind::leftOut;
    };

    void notCarried(const std::filesystem::path& path, std::u16string_view what) override;
    void converted(const std::filesystem::path& path, std::u16string_view what) override;
    void changed(const std::filesystem::path& path, std::u16string_view what) override;
    void clear() { losses_.clear(); }
    const std::vector<Loss>& losses() const { return losses_; }

private:
    void add(Kind kind, const std::filesystem::path& path, std::u16string_view what);

    std::vector<Loss> losses_;
};

// What the word processor of the generation notes of a run.
class GenerationRecord {
public:
    virtual ~GenerationRecord() = default;

    // Forgets the run before.
    virtual void clear() = 0;
    virtual const std::vector<CollectedLosses::Loss>& losses() const = 0;
    // Of the finished document; 0 when that is not known.
    virtual int pages() const = 0;
    // Why the page numbers of the contents are an estimate; nothing when they are exact.
    virtual std::optional<QString> whyEstimated() const = 0;
};

// What became of a run.
struct GenerationReport {
    // Why the finished document is not that of a whole run; nothing when it is.
    std::optional<QString> whyUnfinished;
    int nodes = 0; // without the root
    int documents = 0;
    int headings = 0; // that generation has typed; those inside documents do not count
    // Nodes whose heading or document is not in the target, or not whole, in the tree's order.
    std::vector<ReportedNode> missing;
    // What failed beside the nodes: of cover, contents, settings and saving, as it was told.
    std::vector<ReportedNode> failed;
    // What was left out of documents that came in, and of the custom page that stands in for the
    // cover, in the order in which it was met.
    std::vector<ReportedNode> leftOut;
    // The documents, and the custom page, that the office suite has converted.
    std::vector<ReportedNode> converted;
    // What of them has other numbers or names than in its file, and why.
    std::vector<ReportedNode> changed;
    // What the finished document bears of another plan; for the caller to look for.
    std::vector<ForeignText> foreign;
    // As in GenerationRecord; not known of a run that was not finished.
    int pages = 0;
    std::optional<QString> whyEstimated;

    int missingDocuments() const;
    // Whether the finished document is not all that its nodes say, or tells pages that may be
    // wrong, so that a user wants to know; other numbers and names are no such thing.
    bool wantsAttention() const {
        return whyEstimated || !missing.empty() || !failed.empty() || !leftOut.empty() ||
               !converted.empty() || !foreign.empty();
    }
};

// How the run ended, the pages and their source are for the caller to add.
GenerationReport reportOf(const outline::OutlineTree& TrvEdit, const BidEditState& run,
                          const std::vector<CollectedLosses::Loss>& losses);

// The report's first lines in Chinese: how the run ended if it was not finished, how much came in,
// and where the page numbers come from.
QString summaryOf(const GenerationReport& report);

} // namespace qvnd::generate

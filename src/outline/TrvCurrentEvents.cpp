#include "outline/TrvCurrentEvents.h"

#include "outline/BrowseDocument.h"
#include "outline/DeleteNode.h"
#include "outline/NodeCommands.h"
#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"

#include <optional>

namespace qvnd::outline {

namespace {

// What the row of the key says of being a document; nothing without a row.
std::optional<QString> documentMark(jet::Database& db, const QString& key) {
    const auto row = db.OpenRecordset(rowQuery(tableOfKey(key), key));
    return row->Eof() ? std::nullopt
                      : std::optional(row->Get(store::field::isDocument).TextOrEmpty());
}

void setMenu(Workbench& workbench, const NodeCommands& commands) {
    workbench.mnuBrowseDoc = commands.mnuBrowseDoc;
    workbench.mnuEQFolder = commands.mnuEQFolder;
    workbench.mnuLTFolder = commands.mnuLTFolder;
    workbench.mnuAddDoc = commands.mnuAddDoc;
    workbench.mnuEQDoc = commands.mnuEQDoc;
    workbench.mnuLTDoc = commands.mnuLTDoc;
    workbench.mnuRename = commands.mnuRename;
    workbench.mnuEditDelete = commands.mnuEditDelete;
    workbench.mnuSaveTemplate = commands.mnuSaveTemplate;
}

// The toolbar follows its own positions, separators counted, and not the menu items.
void setToolbar(Workbench& workbench, bool isRoot, bool isDocument) {
    auto& button = workbench.TbarBid;
    button[1] = !isRoot;
    button[2] = !isDocument;
    button[3] = !isRoot;
    button[4] = true;
    button[5] = true;
    button[6] = !isRoot;
    button[7] = isDocument;
    // Closed by a deletion, like the others, until the next click.
    button[8] = true;
    if (!isDocument) {
        button[10] = workbench.pasteArmed;
    }
}

} // namespace

TrvCurrentEvents::TrvCurrentEvents(modMain& state, Workbench& workbench, const Services& services,
                                   preview::DocumentPreview& preview)
    : state_(state), workbench_(workbench), services_(services), preview_(preview) {}

void TrvCurrentEvents::NodeClick(const OutlineNode& node) {
    const bool isRoot = depthOfKey(node.Key()) == 0;
    workbench_.mnuPaste = workbench_.pasteArmed;
    if (isRoot) {
        workbench_.mnuDelete = true;
    }
    state_.gSelectedPlan = isRoot ? node.Text() : QString();
    workbench_.clickedKey = node.Key();
    try {
        if (const auto mark = documentMark(*state_.gDbUser, node.Key())) {
            const bool isDocument = !isRoot && *mark == u"是";
            setMenu(workbench_, commandsOf(node, isDocument));
            setToolbar(workbench_, isRoot, isDocument);
        }
    } catch (const RunTimeError& failure) {
        services_.messages.tell(QString::fromStdU16String(failure.description()),
                                desktop::Icon::exclamation, QStringLiteral("提示"));
    }
}

PopUp TrvCurrentEvents::MouseDown(MouseButton button, OutlineNode* hit) {
    workbench_.selectedTemplate.clear();
    if (!hit) {
        return button == MouseButton::right ? PopUp::onlyMnuNew : PopUp::none;
    }
    workbench_.TrvCurrent.Select(hit);
    workbench_.clickedKey = hit->Key();
    lookUpForBrowsing(*hit);
    if (button != MouseButton::right) {
        return PopUp::none;
    }
    NodeClick(*hit);
    return PopUp::mnuSysEdit;
}

void TrvCurrentEvents::lookUpForBrowsing(const OutlineNode& node) {
    try {
        if (const auto mark = documentMark(*state_.gDbUser, node.Key())) {
            workbench_.mnuBrowseDoc = *mark != u"否";
        }
    } catch (const RunTimeError&) { // NOLINT(bugprone-empty-catch): NodeClick, which follows, tells
    }
}

void TrvCurrentEvents::Click() { state_.gSelectedPlan.clear(); }

void TrvCurrentEvents::KeyDown(int keyCode) {
    if (keyCode == deleteKey) {
        mnuEditDelete(state_, workbench_, services_);
    }
}

void TrvCurrentEvents::DblClick() { browseOrDropDocument(state_, workbench_, services_, preview_); }

} // namespace qvnd::outline

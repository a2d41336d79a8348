#include "outline/TrvTemplateEvents.h"

#include "outline/BrowseTemplate.h"
#include "outline/OutlineKeys.h"
#include "outline/QueryText.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "store/Names.h"

namespace qvnd::outline {

TrvTemplateEvents::TrvTemplateEvents(modMain& state, Workbench& workbench,
                                     desktop::MessageBoxes& messages,
                                     preview::DocumentPreview& preview)
    : state_(state), workbench_(workbench), messages_(messages), preview_(preview) {}

void TrvTemplateEvents::NodeClick(OutlineNode& node) {
    workbench_.TrvTemplate.Select(&node);
    const bool isRoot = depthOfKey(node.Key()) == 0;
    workbench_.TbarBid[9] = true;
    workbench_.mnuDelete = isRoot;
    workbench_.selectedTemplate = isRoot ? node.Text() : QString();
}

void TrvTemplateEvents::DblClick() {
    const OutlineNode* selected = workbench_.TrvTemplate.SelectedItem();
    if (!selected) {
        return;
    }
    try {
        if (isDocument(rowQuery(tableOfKey(selected->Key()), selected->Key()))) {
            mnuBroTemplate(state_, workbench_, messages_, preview_);
        }
    } catch (const RunTimeError& failure) {
        tell(failure);
    }
}

bool TrvTemplateEvents::MouseDown(MouseButton button, OutlineNode* hit) {
    if (hit) {
        workbench_.TrvTemplate.Select(hit);
        workbench_.copySourceKey = hit->Key();
        workbench_.copySourceText = hit->Text();
    }
    return button == MouseButton::right && readyMenu();
}

// The menu is for the node to copy, wherever the pointer is.
bool TrvTemplateEvents::readyMenu() {
    workbench_.mnuDelBrowse = true;
    OutlineNode* meant = workbench_.TrvTemplate.find(workbench_.copySourceKey);
    if (!meant) {
        return false;
    }
    workbench_.TrvTemplate.Select(meant);
    try {
        workbench_.mnuBroTemplate = isDocument("Select * from " + tableOfKey(meant->Key()) +
                                               " where key like " + quoted(meant->Key() + u'*'));
        return true;
    } catch (const RunTimeError& failure) {
        tell(failure);
        return false;
    }
}

void TrvTemplateEvents::MouseUp() { workbench_.mnuDelBrowse = false; }

void TrvTemplateEvents::Click() { workbench_.selectedTemplate.clear(); }

// Of the first row that the query finds.
bool TrvTemplateEvents::isDocument(const QString& query) {
    const auto row = state_.gDbTemplate->OpenRecordset(query);
    return !row->Eof() && row->Get(store::field::isDocument).TextOrEmpty() == u"是";
}

void TrvTemplateEvents::tell(const RunTimeError& failure) {
    messages_.tell(desktop::descriptionOf(failure), desktop::Icon::exclamation,
                   QStringLiteral("提示"));
}

} // namespace qvnd::outline

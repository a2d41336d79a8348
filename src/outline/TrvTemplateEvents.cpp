#include "outline/TrvTemplateEvents.h"

#include "outline/BrowseTemplate.h"
#include "outline/OutlineKeys.h"
#include "outline/TemplateLibrary.h"

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
    if (selected && isDocument(selected->Key(), "Key='" + selected->Key() + u'\'')) {
        mnuBroTemplate(state_, workbench_, messages_, preview_);
    }
}

bool TrvTemplateEvents::MouseDown(OutlineNode* hit, int button) {
    if (hit) {
        workbench_.TrvTemplate.Select(hit);
        workbench_.copySourceKey = hit->Key();
    }
    if (button != mouse::right) {
        return false;
    }
    workbench_.mnuDelBrowse = true;
    OutlineNode* meant = workbench_.TrvTemplate.find(workbench_.copySourceKey);
    if (!meant) {
        return false;
    }
    workbench_.TrvTemplate.Select(meant);
    workbench_.mnuBroTemplate = isDocument(meant->Key(), "key like '" + meant->Key() + "*'");
    return true;
}

void TrvTemplateEvents::MouseUp() { workbench_.mnuDelBrowse = false; }

void TrvTemplateEvents::Click() { workbench_.selectedTemplate.clear(); }

// Of the first row that the condition finds in the key's template.
bool TrvTemplateEvents::isDocument(const QString& key, const QString& condition) const {
    const auto row = state_.gDbTemplate->OpenRecordset(
        "Select * from " + withoutBrackets(tableOfKey(key)) + " where " + condition);
    return !row->Eof() && row->Get(u"是否文档").TextOrEmpty() == u"是";
}

} // namespace qvnd::outline

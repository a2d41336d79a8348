#include "tools/ClickedNode.h"

#include "outline/TrvCurrentEvents.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

namespace qvnd::tools {

namespace {

// A click shows no document.
class NoPreview : public preview::DocumentPreview {
public:
    void show(const QString&) override {}
    void hide() override {}
};

} // namespace

outline::OutlineNode* clickNode(Session& session, const QString& plan, const QString& key) {
    ProgramRun& run = session.program();
    openPlan(run, plan);
    outline::OutlineNode* node = run.workbench().TrvCurrent.find(key);
    if (!node) {
        session.output().note(QStringLiteral("方案“%1”中没有键为“%2”的节点").arg(plan, key));
        return nullptr;
    }
    NoPreview preview;
    outline::TrvCurrentEvents tree(run.state(), run.workbench(), run.services(), preview);
    tree.MouseDown(outline::MouseButton::left, node);
    tree.Click();
    tree.NodeClick(*node);
    return node;
}

} // namespace qvnd::tools

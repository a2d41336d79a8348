#include "tools/SimilarCommand.h"

#include "generate/SimilarDocuments.h"
#include "outline/TreeLoading.h"
#include "tools/Arguments.h"
#include "tools/GenerateServices.h"
#include "tools/Plans.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonArray>
#include <QJsonObject>

namespace qvnd::tools {

namespace {

// The list needs to know nothing of open documents.
class NoWindows : public desktop::WordProcessorWindows {
public:
    bool isOpenIn(const QStringList& /*folders*/) override { return false; }
};

// TrvEdit with the node selected; false when there is no such node.
bool fill(outline::OutlineTree& TrvEdit, ProgramRun& run, const QString& plan, const QString& key) {
    const auto rs =
        run.state().gDbUser->OpenRecordset("Select * from [" + plan + "] order by ID asc");
    outline::FillOutlineTree(*rs, TrvEdit);
    TrvEdit.Select(TrvEdit.find(key));
    return TrvEdit.SelectedItem() != nullptr;
}

ExitStatus similar(Session& session, const QStringList& words) {
    const Arguments arguments(words, {});
    arguments.expectPositions(2, 2);
    const QString plan = arguments.position(0);
    const QString key = arguments.position(1);
    ProgramRun& run = session.program();
    requirePlan(run, plan);
    outline::OutlineTree TrvEdit(QStringLiteral("TrvEdit"));
    if (!fill(TrvEdit, run, plan, key)) {
        session.output().note(QStringLiteral("方案“%1”中没有键为“%2”的节点").arg(plan, key));
        return ExitStatus::refused;
    }
    NoWindows windows;
    NoScreen screen;
    generate::WordSession word;
    generate::SimilarDocuments dialog(run.state(), TrvEdit,
                                      {run.services().messages, run.services().fileDialogs, windows,
                                       run.services().word, word, screen, run.services().longRun});
    dialog.Load();
    QJsonArray json;
    QStringList lines;
    for (const auto& row : dialog.ListView1()) {
        json << QJsonObject{{"text", row.text}, {"path", row.path}};
        lines << row.text + '\t' + row.path;
    }
    session.output().result(json, lines.join('\n'));
    return ExitStatus::done;
}

} // namespace

std::vector<Command> similarCommands() {
    return {{"similar", "方案 键", "列出各模板中与此文档同名的文档", similar}};
}

} // namespace qvnd::tools

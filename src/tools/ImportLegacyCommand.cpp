#include "tools/ImportLegacyCommand.h"

#include "tools/Arguments.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonArray>
#include <QJsonObject>

namespace qvnd::tools {

namespace {

using store::LegacyTakeover;

QJsonObject jsonOf(const LegacyTakeover& taken) {
    QJsonObject json{{"类型", taken.IsPlan ? "方案" : "模板"}, {"名称", taken.Name}};
    if (!taken.Failure.isEmpty()) {
        json["错误"] = taken.Failure;
        return json;
    }
    json["提纲行数"] = taken.Rows;
    json["工程信息"] = taken.Information;
    json["原文件"] = taken.KeptAs;
    return json;
}

QString lineOf(const LegacyTakeover& taken) {
    const QString name =
        (taken.IsPlan ? QStringLiteral("方案 %1：") : QStringLiteral("模板 %1：")).arg(taken.Name);
    if (!taken.Failure.isEmpty()) {
        return name + QStringLiteral("未接收。") + taken.Failure;
    }
    const QString information =
        taken.Information ? QStringLiteral("，工程信息一份") : QStringLiteral("，没有工程信息");
    return name + QStringLiteral("提纲 %1 行").arg(taken.Rows) +
           (taken.IsPlan ? information : QString()) +
           QStringLiteral("；原文件保存为 %1").arg(taken.KeptAs);
}

// The start of the program has taken over all that could be; this tells of it.
ExitStatus importLegacy(Session& session, const QStringList& words) {
    Arguments(words, {}).expectPositions(0, 0);
    QJsonArray json;
    QStringList lines;
    bool failed = false;
    for (const LegacyTakeover& taken : session.program().state().LegacyTakeovers) {
        json << jsonOf(taken);
        lines << lineOf(taken);
        failed = failed || !taken.Failure.isEmpty();
    }
    session.output().result(json, lines.isEmpty() ? QStringLiteral("没有旧版的方案或模板。")
                                                  : lines.join('\n'));
    return failed ? ExitStatus::refused : ExitStatus::done;
}

} // namespace

std::vector<Command> importLegacyCommands() {
    return {{"plan import-legacy", "", "接收旧版（Jet 数据库）的方案和模板，逐个说明结果",
             importLegacy}};
}

} // namespace qvnd::tools

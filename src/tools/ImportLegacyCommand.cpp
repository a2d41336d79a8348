#include "tools/ImportLegacyCommand.h"

#include "tools/Arguments.h"
#include "tools/ProgramRun.h"
#include "tools/Session.h"

#include <QJsonArray>
#include <QJsonObject>

namespace qvnd::tools {

namespace {

using store::LegacyKind;
using store::LegacyTakeover;

QString kindOf(const LegacyTakeover& taken) {
    switch (taken.Kind) {
    case LegacyKind::plan:
        return QStringLiteral("方案");
    case LegacyKind::templateFolder:
        return QStringLiteral("模板");
    default:
        return QStringLiteral("数据库");
    }
}

QJsonObject jsonOf(const LegacyTakeover& taken) {
    QJsonObject json{{"类型", kindOf(taken)}, {"名称", taken.Name}};
    if (!taken.KeptAs.isEmpty()) {
        json["原文件"] = taken.KeptAs;
    }
    if (!taken.Failure.isEmpty()) {
        json["错误"] = taken.Failure;
    } else if (taken.Kind == LegacyKind::central) {
        json["表数"] = taken.Tables;
    } else {
        json["提纲行数"] = taken.Rows;
        json["工程信息"] = taken.Information;
    }
    return json;
}

QString contentsOf(const LegacyTakeover& taken) {
    if (taken.Kind == LegacyKind::central) {
        return QStringLiteral("%1 个表").arg(taken.Tables);
    }
    QString outline = QStringLiteral("提纲 %1 行").arg(taken.Rows);
    if (taken.Kind == LegacyKind::templateFolder) {
        return outline;
    }
    return outline + (taken.Information ? QStringLiteral("，工程信息一份")
                                        : QStringLiteral("，没有工程信息"));
}

QString lineOf(const LegacyTakeover& taken) {
    const QString name = kindOf(taken) + ' ' + taken.Name + QStringLiteral("：");
    const QString kept =
        taken.KeptAs.isEmpty() ? QString() : QStringLiteral("；原文件保存为 %1").arg(taken.KeptAs);
    return taken.Failure.isEmpty() ? name + contentsOf(taken) + kept
                                   : name + QStringLiteral("未接收。") + taken.Failure + kept;
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

#include "tools/Run.h"

#include "platform/desktop/MessageBoxes.h"
#include "platform/error/RunTimeError.h"
#include "tools/Session.h"
#include "tools/UsageError.h"

#include <QRegularExpression>

#include <algorithm>
#include <exception>
#include <ostream>

namespace qvnd::tools {

namespace {

const Command* commandNamed(const std::vector<Command>& table, const QStringList& words) {
    const auto found = std::find_if(table.begin(), table.end(), [&](const Command& command) {
        const QStringList name = command.name.split(u' ');
        return words.mid(0, name.size()) == name;
    });
    return found == table.end() ? nullptr : &*found;
}

// The second words of the commands of a group; empty when there is no such group.
QString namesBehind(const std::vector<Command>& table, const QString& group) {
    QStringList names;
    for (const Command& command : table) {
        if (command.name.startsWith(group + ' ')) {
            names << command.name.mid(group.size() + 1);
        }
    }
    return names.join("、");
}

QString usageOf(const Command& command) {
    return command.parameters.isEmpty() ? command.name : command.name + u' ' + command.parameters;
}

ExitStatus wrongUsage(Output& output, const QString& reason, const QString& usage) {
    output.note(reason);
    output.note(QStringLiteral("用法：qvndctl ") + usage);
    return ExitStatus::wrongUsage;
}

// The meaning without its details: "新建方案，并成为当前方案" is "新建方案" in the history.
QString captionOf(const Command& command) {
    const QRegularExpression details(QStringLiteral("[，：；（]"));
    return command.caption.isEmpty() ? command.meaning.section(details, 0, 0) : command.caption;
}

// What a command did that could not be recorded has been taken back: then it has no result.
ExitStatus runCommand(const Command& command, const GlobalOptions& options, Output& output) {
    Session session(options, output, captionOf(command));
    try {
        const qsizetype nameLength = command.name.count(u' ') + 1;
        const ExitStatus status = command.run(session, options.words.mid(nameLength));
        if (!session.finish()) {
            output.withdraw();
            return ExitStatus::refused;
        }
        return status;
    } catch (const UsageError& error) {
        return wrongUsage(output, error.reason(), usageOf(command));
    } catch (const StartFailed&) {
        return ExitStatus::refused;
    } catch (const RunTimeError& failure) {
        output.note(desktop::descriptionOf(failure));
        return ExitStatus::refused;
    }
}

ExitStatus dispatch(const GlobalOptions& options, Output& output) {
    const auto table = commandTable();
    if (options.help) {
        const QString text = usageText(table, options.home);
        output.result(text, text);
        return ExitStatus::done;
    }
    if (options.words.isEmpty()) {
        output.note(usageText(table, options.home));
        return ExitStatus::wrongUsage;
    }
    if (const Command* command = commandNamed(table, options.words)) {
        return runCommand(*command, options, output);
    }
    const QString group = namesBehind(table, options.words[0]);
    const QString reason = group.isEmpty()
                               ? "没有这个命令：" + options.words.mid(0, 2).join(' ')
                               : "“" + options.words[0] + "”后面应是这些命令之一：" + group;
    return wrongUsage(output, reason, QStringLiteral("--help"));
}

} // namespace

QString usageText(const std::vector<Command>& table, const QString& home) {
    QString text =
        QStringLiteral("用法：qvndctl [--home 文件夹] [--json] [--yes|--no] 命令 ...\n"
                       "\n"
                       "  --home 文件夹  程序文件夹，其中的 registry.reg 是注册表；缺省为用户数据\n"
                       "                 文件夹中的 qvnd，旁边有文件 qvnd.portable 时为程序\n"
                       "                 所在的文件夹。现为 %1\n"
                       "  --json         结果以一个 JSON 值写到标准输出\n"
                       "  --yes, --no    对询问一律答“是”或“否”，缺省为“否”\n"
                       "\n"
                       "命令：\n")
            .arg(home);
    for (const Command& command : table) {
        text += "  " + usageOf(command) + "\n      " + command.meaning + u'\n';
    }
    return text +
           QStringLiteral("\n退出码：0 完成；1 被拒绝或失败，原因在标准错误上；2 用法不对。");
}

ExitStatus run(const QStringList& words, std::ostream& out, std::ostream& err,
               const QString& executableFolder) {
    Output output(out, err);
    try {
        const GlobalOptions options = parseGlobalOptions(words, executableFolder);
        output.setJson(options.json);
        const ExitStatus status = dispatch(options, output);
        output.print();
        return status;
    } catch (const UsageError& error) {
        return wrongUsage(output, error.reason(), QStringLiteral("--help"));
    } catch (const std::exception& failure) {
        // Unforeseen, as no memory left: by now the command has ended like an orderly exit.
        output.note(QStringLiteral("出现意外的错误：") + QString::fromLocal8Bit(failure.what()));
        return ExitStatus::refused;
    }
}

} // namespace qvnd::tools

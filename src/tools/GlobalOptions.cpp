#include "tools/GlobalOptions.h"

#include "startup/FirstStart.h"
#include "tools/UsageError.h"

#include <QDir>

namespace qvnd::tools {

GlobalOptions parseGlobalOptions(const QStringList& words, const QString& executableFolder) {
    GlobalOptions options;
    QString home;
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        if (word == QLatin1String("--")) {
            options.words += words.mid(i);
            break;
        }
        if (word == QLatin1String("--json")) {
            options.json = true;
        } else if (word == QLatin1String("--yes") || word == QLatin1String("--no")) {
            options.yes = word == QLatin1String("--yes");
        } else if (word == QLatin1String("--help") || word == QLatin1String("-h")) {
            options.help = true;
        } else if (word == QLatin1String("--home")) {
            if (i + 1 == words.size()) {
                throw UsageError(QStringLiteral("选项 --home 后面缺少文件夹"));
            }
            home = words[++i];
        } else if (options.words.isEmpty() && word.startsWith(QLatin1String("--"))) {
            throw UsageError(QStringLiteral("没有这个选项：%1").arg(word));
        } else {
            options.words << word;
        }
    }
    options.home = home.isEmpty() ? startup::programFolder(executableFolder)
                                  : QDir::toNativeSeparators(QDir(home).absolutePath());
    return options;
}

} // namespace qvnd::tools

#include "tools/Arguments.h"

#include "tools/UsageError.h"

namespace qvnd::tools {

Arguments::Arguments(const QStringList& words, const Known& known) {
    for (qsizetype i = 0; i < words.size(); ++i) {
        const QString& word = words[i];
        if (word == QLatin1String("--")) {
            positions_ += words.mid(i + 1);
            return;
        }
        if (!word.startsWith(QLatin1String("--"))) {
            positions_ << word;
        } else if (known.flags.contains(word)) {
            flags_ << word;
        } else if (!known.options.contains(word)) {
            throw UsageError(QStringLiteral("没有这个选项：%1").arg(word));
        } else if (i + 1 == words.size()) {
            throw UsageError(QStringLiteral("选项 %1 后面缺少值").arg(word));
        } else {
            options_.insert(word, words[++i]);
        }
    }
}

void Arguments::expectPositions(qsizetype least, qsizetype most) const {
    if (positions_.size() < least) {
        throw UsageError(QStringLiteral("参数不够"));
    }
    if (positions_.size() > most) {
        throw UsageError(QStringLiteral("多余的参数：%1").arg(positions_[most]));
    }
}

int Arguments::number(const QString& option, int otherwise) const {
    if (!options_.contains(option)) {
        return otherwise;
    }
    bool valid = false;
    const int number = options_.value(option).toInt(&valid);
    if (!valid) {
        throw UsageError(QStringLiteral("选项 %1 需要一个整数").arg(option));
    }
    return number;
}

} // namespace qvnd::tools

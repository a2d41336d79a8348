#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>

namespace qvnd::tools {

// The words behind a command's name, split into positions, flags ("--below") and options with a
// value ("--date 2026-05-01"), in any order. "--" ends the options, for names that begin with "-".
class Arguments {
public:
    // The options that a command knows, with their dashes.
    struct Known {
        QStringList flags;
        QStringList options;
    };

    // Throws UsageError for an unknown option or one without its value.
    Arguments(const QStringList& words, const Known& known);

    // Throws UsageError unless the number of positions is within the limits.
    void expectPositions(qsizetype least, qsizetype most) const;

    const QStringList& positions() const { return positions_; }
    QString position(qsizetype index) const { return positions_.value(index); }
    bool has(const QString& flag) const { return flags_.contains(flag); }
    bool hasOption(const QString& option) const { return options_.contains(option); }
    // The last value given; `otherwise` when the option was not given.
    QString option(const QString& option, const QString& otherwise = {}) const {
        return options_.value(option, otherwise);
    }
    // As a whole number; throws UsageError for any other text.
    int number(const QString& option, int otherwise) const;

private:
    QStringList positions_;
    QSet<QString> flags_;
    QHash<QString, QString> options_;
};

} // namespace qvnd::tools

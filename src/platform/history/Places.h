#pragma once

#include <QString>
#include <QStringList>

namespace qvnd::history {

// The folders whose files the history covers, and the paths as the history has them. Several
// programs, on one machine or more, may share a history: a path means the same file in each.
class Places {
public:
    // What identifies this machine.
    static QString thisMachine();

    // `home` is the folder that the history's own folder lies in, `others` are those besides it.
    explicit Places(const QString& home, const QStringList& others = {},
                    QString machine = thisMachine());

    bool hasIn(const QString& path) const;
    // What lies in `home`, or in a folder that has it in itself, is named from there, so that the
    // history stays true when all is moved together. Anything else belongs to its machine and
    // stays where it is.
    QString shortOf(const QString& path) const;
    // The path itself. The text as it came where that cannot be: for a file of another machine, and
    // for one outside of `home` whose folder is gone with the folder around it, as when a program
    // folder was moved away; a single folder may have been deleted by the command to be undone.
    QString longOf(const QString& text) const;
    // Whether it is such a text.
    static bool isElsewhere(const QString& path);
    // The path that such a text stands for on its machine.
    static QString pathElsewhere(const QString& text);
    // Whether the path goes along when the home is moved.
    bool movesAlong(const QString& path) const;

private:
    QString home_;
    QStringList others_;
    QString machine_;
};

// Whether the name is that of a database.
bool isDatabase(const QString& path);

// A path as the history has it: absolute, with native separators, its names spelt as on disk.
QString spelt(const QString& path);

} // namespace qvnd::history

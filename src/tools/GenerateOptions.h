#pragma once

#include "generate/numbering/FormatSwitches.h"

#include <QString>
#include <QStringList>

namespace qvnd::tools {

// Where the page numbers of the contents come from.
enum class PageSource { automatic, office, estimate };

// What stands behind "generate": the plan, and what the format dialog would hold in memory.
struct GenerateOptions {
    // Throws UsageError for an unknown word, a style that the dialog does not offer, an indent
    // outside 0 to 100 or a mode outside 0 to 2.
    explicit GenerateOptions(const QStringList& words);

    // What follows the command's name, for the usage text.
    static QString parameters();

    QString plan;
    generate::FormatSwitches switches;
    // Of documents under documents; empty unless they are numbered.
    QString childStyle;
    QString childIndent = QStringLiteral("2");
    PageSource pages = PageSource::automatic;
};

} // namespace qvnd::tools

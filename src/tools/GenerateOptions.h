#pragma once

#include "platform/drawing/FontFaces.h"
#include "store/FormatSwitches.h"

#include <QString>
#include <QStringList>

namespace qvnd::tools {

// Where the page numbers of the contents come from.
enum class PageSource { automatic, office, layout };

// What stands behind "generate": the plan, and what the format dialog would hold in memory.
struct GenerateOptions {
    // The plan edit window as it opens.
    GenerateOptions() = default;
    // Throws UsageError for an unknown word, a style that the dialog does not offer, an indent
    // outside 0 to 100 or a mode outside 0 to 2.
    explicit GenerateOptions(const QStringList& words);

    // What follows the command's name, for the usage text.
    static QString parameters();

    QString plan;
    FormatSwitches switches;
    // Of documents under documents; empty unless they are numbered, and when nothing is picked.
    QString childStyle;
    QString childIndent = QStringLiteral("2");
    // As the first run of a plan edit window: the heading of a folder that is the outline's first
    // node runs on into what follows. A later run ends its paragraph.
    bool isFirstRun = false;
    PageSource pages = PageSource::automatic;
    drawing::FontChoice fonts = drawing::FontChoice::named; // of our own layout
};

} // namespace qvnd::tools

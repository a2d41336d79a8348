#pragma once

#include "generate/ForeignTexts.h"
#include "outline/OutlineTree.h"
#include "platform/files/FilesInUse.h"
#include "platform/word/engine/DocumentConverter.h"
#include "store/modMain.h"

#include <QString>

#include <functional>
#include <vector>

namespace qvnd::generate {

// Something that a planner should know before generating: the node, what is the matter with it, and
// what to do about it.
struct PlanFinding {
    enum class Kind {
        missing,      // a document without a file
        oddKey,       // a document whose key is none, so that it can have no file
        open,         // a document that a word processor holds open, which refuses the generation
        encrypted,    // a document with a password
        unreadable,   // a damaged document, or one of another format
        converted,    // a document of another format, which comes in by the office suite
        notCarried,   // something in a document that stays behind
        emptyFolder,  // a heading with nothing below it
        runsOn,       // a first folder: its heading goes on in the next node's
        foreignCover, // a name on the cover that is another plan's, until the dialog is loaded
        foreignText,  // another plan's name in a text that only the user changes
        emptyPlan,    // nothing below the root, which refuses the generation
    };

    Kind kind;
    QString key;
    QString name;
    QString what;
    QString advice;

    // Whether the node's document will not come in.
    bool keepsDocumentOut() const;
    // Whether the generation will be refused.
    bool keepsFromGenerating() const;
};

// What to do about a text of another plan, as the check says it.
QString adviceFor(const ForeignText& text);

// The kind as scripts see it: the enumerator's name.
QString nameOf(PlanFinding::Kind kind);

struct PlanCheckParts {
    modMain& state;
    const outline::OutlineTree& TrvEdit;
    files::FilesInUse& inUse;
    // Whether the paragraph of a first folder's heading stays open: in the first run of a window,
    // without blank lines around titles.
    bool firstHeadingRunsOn;
    // Called ahead of each node, so that events can run; false ends the check.
    std::function<bool(const outline::OutlineNode&)> goOn;
    // Of the generation; null where it has none.
    word::DocumentConverter* documents = nullptr;
    word::LongWork longWork = [](const std::function<void()>& work) { work(); };
};

// Looks at every node of the tree and reads every document, as generating will. Changes nothing.
// In the order of the tree; what concerns the whole plan comes last, with the root's key.
std::vector<PlanFinding> checkPlan(const PlanCheckParts& parts);

} // namespace qvnd::generate

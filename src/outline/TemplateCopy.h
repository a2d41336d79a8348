#pragma once

#include "outline/Services.h"
#include "outline/TreeLoading.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

#include <QStringList>

#include <optional>

namespace qvnd::outline {

// How a copy ended; the user has been told of all but `copied`.
enum class Copied {
    copied,
    // An error was shown, or an overwriting declined: that one is missing, the others were copied.
    incomplete,
    // Refused; what had been copied by then stays.
    stopped,
};

// Copies a document or a folder with all that is below it from the system templates (TrvTemplate)
// into the plan open in TrvCurrent: rows at the table's end, numbered on from the highest number
// among the target's children, and a file for each document. The root of a template is copied as
// its children. Child nodes of a document are not copied; the plan's own copy of its outline is
// not touched. TrvCurrent is refilled behind every folder and every document.
//
// All rows are committed together at the end. A question to the user commits those added so far.
//
// A document of a text that a child of the target bears already asks whether to overwrite that
// child's file; a folder of such a text stops the whole copy. What is left out behind it is named
// in the Remarks of the state.
class TemplateCopy {
public:
    TemplateCopy(modMain& state, Workbench& workbench, const Services& services);

    // `sourceNode` null: looked up in TrvTemplate by `sourceKey`, so that a key of another tree is
    // an error (35601). Goes by the workbench's dropTargetImage: while it is that of a document,
    // the node selected in TrvTemplate must be a document's.
    Copied DragDrop(const QString& targetKey, const QString& sourceKey,
                    const OutlineNode* sourceNode = nullptr);

    // The keys of the rows that were added, in their order.
    const QStringList& newKeys() const { return newKeys_; }

private:
    Copied guarded(const QString& targetKey, const QString& sourceKey, const OutlineNode* given);
    Copied copy(const QString& targetKey, const QString& sourceKey, const OutlineNode* given);
    Copied copyFolder(const QString& targetKey, const OutlineNode& source);
    Copied copyDocument(const QString& targetKey, const QString& sourceKey,
                        const OutlineNode& source);
    Copied copyChildren(const QString& targetKey, const OutlineNode& source);
    const OutlineNode& sourceOf(const QString& key) const;
    bool isRefusedByDocument() const;
    OutlineRow addRow(const OutlineNode& target, const OutlineNode& source, const QString& number);
    void copyFile(const QString& file, const QString& target);
    void remarkLeftOut();
    void tellFailure(const RunTimeError& failure, const QString& sourceKey);
    Copied refuse(const QString& text);

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    TreeRefill trvCurrent_;
    QStringList newKeys_;
    QStringList leftOut_; // names, by the copy's stop; each with all that is below it
    // From the first file to the next message.
    std::optional<files::NameScope> names_;
};

} // namespace qvnd::outline

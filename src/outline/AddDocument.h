#pragma once

#include "outline/dlgAddDoc.h"

#include <QString>

#include <vector>

namespace qvnd::outline {

// The two commands that add a document to the plan open in TrvCurrent: mnuEQDoc beside the selected
// node, mnuLTDoc under it. Each asks for a file, brings it into the plan's folder under the new
// key's name, and adds the row. They differ on purpose: mnuEQDoc moves rows and compares names
// before it makes the file, without a look at the depth; mnuLTDoc moves none and looks at depth and
// name behind the file. A .doc is copied; any other file passes through the word processor.
//
// Of several files that are chosen at once each is added by the same rules, in their order, and
// what was refused is told at the end, as addFiles() says.
//
// Nothing is rolled back: a refusal leaves what was done up to it. A user who cancels a conversion
// finds the plan as it was. A .doc that generation cannot insert as it is comes in all the same;
// the Remarks of the state say why it cannot. While a file is converted or read the desktop's
// events run.
class AddDocument {
public:
    AddDocument(modMain& state, Workbench& workbench, const Services& services);

    Added mnuEQDoc();
    Added mnuLTDoc();

    // The key that the last command gave; also set when it was refused later.
    const QString& newKey() const { return newKey_; }

private:
    // The node that was selected when the command began.
    struct Selected {
        QString key;
        QString text;
    };

    Added addBeside(const Selected& selected);
    Added addBelow(const Selected& selected);
    Added addSeveral(AddMode mode, const QString& selectedKey,
                     const std::vector<desktop::ChosenFile>& files);
    void createMissingFolders(const QString& plan);
    bool bringFile(const QString& source, const QString& target, const QString& question);
    bool bringFileBeside(const QString& plan, const QString& source);
    void remarkIfUnreadable(const QString& plan);
    void makeEmptyDocument(const QString& target);
    void convert(const QString& source, const QString& target);
    void leaveIfCancelled() const;
    void addToPlanCopy(const QString& plan, const QString& name);
    void refreshAndSelect(const QString& name);
    Added refuse(Added reason, const QString& text);
    template <class Command>
    Added guarded(Command command);

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    QString newKey_;
    QString copied_; // the file that the command under way has copied; empty for none
};

// The file's title without its extension, as a node's text: the parts between the points but the
// last, or the whole title when it has no point.
QString storedName(const QString& fileTitle);
// The name that mnuEQDoc compares: one part shorter than the stored one, but never empty of its
// first part ("甲.乙.doc" is compared as 甲 and stored as 甲.乙).
QString comparedName(const QString& fileTitle);

} // namespace qvnd::outline

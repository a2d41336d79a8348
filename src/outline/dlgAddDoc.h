#pragma once

#include "outline/Services.h"
#include "outline/Workbench.h"
#include "store/modMain.h"

#include <QString>

namespace qvnd::outline {

// Where a new folder goes: 同级 beside the selected node, 下级 under it.
enum class AddMode { beside, below };

// How a command on the open plan ended. All but `added` have told the user why, except a
// cancelled dialog and an answer of no.
enum class Added { added, nothingSelected, cancelled, answeredNo, duplicateName, tooDeep, failed };

// The OK of the dialog that adds a folder to the plan open in TrvCurrent, beside or under the
// selected node. To stand between two rows, the rows behind the insert point move out to the
// scratch table `temp` and come back behind the new row with new IDs and their old keys.
//
// Nothing is rolled back: after a failure, or the refusal of a depth beside a node, the rows that
// were moved out stay in `temp` alone. After every end but `added` the dialog stays open.
class dlgAddDoc {
public:
    dlgAddDoc(modMain& state, Workbench& workbench, const Services& services, AddMode mode);

    // `TxtAdd` is the text box as the user left it; it is trimmed, and may be empty.
    Added OK(const QString& TxtAdd);

    // The key that the last OK gave; also set when the command failed later.
    const QString& newKey() const { return newKey_; }

private:
    Added run(const QString& name);
    bool isTaken(const OutlineNode& selected, const QString& name) const;
    void levelPlanCopy(const QString& table);
    void refill(const QString& table, const QString& name);

    modMain& state_;
    Workbench& workbench_;
    Services services_;
    AddMode mode_;
    QString newKey_;
};

} // namespace qvnd::outline

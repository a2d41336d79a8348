#pragma once

#include "format/BidSetForm.h"
#include "format/ChildDocumentControls.h"
#include "format/FormatServices.h"
#include "format/SettingsChanges.h"
#include "store/modMain.h"

#include <memory>

namespace qvnd::format {

// The format dialog without its window: one object for the run. It is loaded at its first show, or
// when generation touches one of its controls; 确定 and 取消 hide it, and a hidden dialog keeps
// what its controls hold and is not loaded again. The close box alone unloads it.
class frmBidSet : public ChildDocumentControls {
public:
    // State and services outlive the object.
    frmBidSet(modMain& state, const FormatServices& services);

    bool isLoaded() const { return form_ != nullptr; }
    // The controls; loads the dialog if it is not, and adds what the load changes to the Remarks of
    // the state. They stay valid until Unload.
    BidSetForm& form();
    // How a showing of the dialog ended: by 确定, or by 取消, Escape or the close box.
    enum class Ended { decided, left };
    // Adds what the user should know of that end to the Remarks of the state; `shown` are the
    // settings as the showing began.
    void remarkEnd(const SettingsNow& shown, Ended ended);
    // True when another program has changed the tables since the dialog was loaded: its controls
    // would show what was there before, and write it back. False while it is not loaded. Errors of
    // the store pass.
    bool isOutdated() const;
    // Loads a loaded dialog anew. What stands in no table is kept: the page of child documents, and
    // whether headings are multi-level. No window may show its controls.
    void loadAnew();
    // What the close box does: the tables stay as they are, the controls are gone. No window may
    // show them any more.
    void Unload();

    QString cboBianHao() override { return form().childDocuments.cboBianHao.text(); }
    QString txtInde() override { return form().childDocuments.txtInde.text(); }

private:
    void remark(const QString& words);

    modMain& state_;
    FormatServices services_;
    std::unique_ptr<BidSetForm> form_;
    int seen_ = 0; // the changes of Db_BidSet.mdb at the load
};

} // namespace qvnd::format

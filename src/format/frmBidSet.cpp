#include "format/frmBidSet.h"

namespace qvnd::format {

frmBidSet::frmBidSet(modMain& state, const FormatServices& services)
    : state_(state), services_(services) {}

BidSetForm& frmBidSet::form() {
    if (!form_) {
        const SettingsNow before(*state_.gDbBidSet);
        form_ = std::make_unique<BidSetForm>(state_, services_);
        seen_ = state_.gDbBidSet->ForeignChanges();
        remark(wordsOfLoad(before.changesUntil(SettingsNow(*state_.gDbBidSet))));
    }
    return *form_;
}

void frmBidSet::remark(const QString& words) {
    if (!words.isEmpty()) {
        state_.Remarks << words;
    }
}

void frmBidSet::remarkEnd(const SettingsNow& shown, Ended ended) {
    const SettingsNow now(*state_.gDbBidSet);
    ShownLibraries& libraries = form().shownLibraries;
    const QList<SettingChange> written = libraries.standing(now);
    remark(wordsOfShown(libraries.names(), written));
    libraries.forget();
    const QList<SettingChange> changes = shown.changesUntil(now);
    remark(ended == Ended::decided ? wordsOfDecided(changes) : wordsOfKept(changes, written));
}

bool frmBidSet::isOutdated() const { return form_ && state_.gDbBidSet->ForeignChanges() != seen_; }

void frmBidSet::loadAnew() {
    const bool isMultLevel = state_.FormatSwitches.gMultLevelOn;
    const ChildDocumentPage& before = form_->childDocuments;
    const bool isParagraph = before.Option1_1.value();
    const QString style = before.cboBianHao.text();
    const QString indent = before.txtInde.text();
    Unload();
    form().headings.chkMultLevel.setChecked(isMultLevel);
    ChildDocumentPage& page = form().childDocuments;
    if (isParagraph) {
        page.Option1_1.select();
    }
    page.cboBianHao.setText(style);
    page.txtInde.setText(indent);
}

void frmBidSet::Unload() {
    form_.reset();
    state_.FormatSwitches.gBidSetLoaded = false;
}

} // namespace qvnd::format

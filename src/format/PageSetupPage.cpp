#include "format/PageSetupPage.h"

#include "format/FormatLists.h"
#include "format/RangeCheck.h"
#include "platform/files/Trim.h"
#include "store/Names.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace field = store::field;

namespace {

constexpr double widestIndent = 100;

QString theRow() { return u"Select * from 页面设置表"_s; }

// Only if the guarding field holds something.
void showLength(TextBox& box, const jet::Recordset& row, QStringView field, QStringView guard) {
    if (holdsText(row, guard)) {
        box.setText(textOf(row, field));
    }
}

void setLength(jet::Recordset& row, QStringView field, const TextBox& box) {
    if (const QString text = stored(box); !text.isEmpty()) {
        row.Set(field, jet::singleOf(text));
    }
}

} // namespace

PageSetupPage::PageSetupPage(modMain& state, Controls& dialog, desktop::MessageBoxes& messages)
    : txtPageupdis(dialog, u"txtPageupdis"), TxtPageDownDis(dialog, u"TxtPageDownDis"),
      TxtPageLeftDis(dialog, u"TxtPageLeftDis"), TxtPageRightdis(dialog, u"TxtPageRightdis"),
      Txtheader(dialog, u"Txtheader"), TxtFooter(dialog, u"TxtFooter"), TxtBind(dialog, u"TxtBind"),
      optSide(dialog, Frame19, u"optSide"), optTop(dialog, Frame19, u"optTop"),
      cmbTextFont(dialog, u"cmbTextFont"), cmbTextSize(dialog, u"cmbTextSize"), state_(state) {
    connect(messages);
}

void PageSetupPage::connect(desktop::MessageBoxes& messages) {
    for (TextBox* box : lengths()) {
        checkOnLeaving(*box, pageLength(), messages, [this] { PageFresh(); });
    }
    for (ComboBox* box : {&cmbTextFont, &cmbTextSize}) {
        box->Click = [this] { PageFresh(); };
    }
    for (OptionButton* option : {&optSide, &optTop}) {
        option->Click = [this] { PageFresh(); };
    }
}

std::array<TextBox*, 7> PageSetupPage::lengths() {
    return {&txtPageupdis, &TxtPageDownDis, &TxtPageLeftDis, &TxtPageRightdis,
            &TxtBind,      &Txtheader,      &TxtFooter};
}

void PageSetupPage::Load() {
    loadRow(
        *state_.gDbBidSet, theRow(), [this](const jet::Recordset& row) { showRow(row); },
        [this] { fallBack(); });
}

// The right margin is guarded by the top one, not by its own field: installations have it so.
void PageSetupPage::showRow(const jet::Recordset& row) {
    const Statements attempt(Failing::passedOver);
    attempt([&] { showLength(txtPageupdis, row, field::marginTop, field::marginTop); });
    attempt([&] { showLength(TxtPageDownDis, row, field::marginBottom, field::marginBottom); });
    attempt([&] { showLength(TxtPageLeftDis, row, field::marginLeft, field::marginLeft); });
    attempt([&] { showLength(TxtPageRightdis, row, field::marginRight, field::marginTop); });
    attempt([&] { showLength(TxtBind, row, field::gutter, field::gutter); });
    attempt([&] { cmbTextFont.setText(textOf(row, field::bodyFont)); });
    attempt([&] { cmbTextSize.setText(textOf(row, field::bodySize)); });
    attempt([&] { showLength(Txtheader, row, field::headerDistance, field::headerDistance); });
    attempt([&] { showLength(TxtFooter, row, field::footerDistance, field::footerDistance); });
    attempt([&] { showGutterSide(row); });
}

void PageSetupPage::showGutterSide(const jet::Recordset& row) {
    OptionButton& option = textOf(row, field::gutterSide) == u"边" ? optSide : optTop;
    option.select();
}

// Without a row PageFresh fails, and nothing is written.
void PageSetupPage::fallBack() {
    for (TextBox* box : {&txtPageupdis, &TxtPageDownDis, &TxtPageLeftDis, &TxtPageRightdis,
                         &Txtheader, &TxtFooter}) {
        box->setText(u"2.5"_s);
    }
    TxtBind.setText(u"3"_s);
    cmbTextFont.setText(u"宋体"_s);
    cmbTextSize.setText(u"小四"_s);
    ignoringErrors([&] { optSide.select(); });
}

void PageSetupPage::showLibrary(const jet::Recordset& row) {
    txtPageupdis.setText(textOf(row, field::marginTop));
    TxtPageDownDis.setText(textOf(row, field::marginBottom));
    TxtPageLeftDis.setText(textOf(row, field::marginLeft));
    TxtPageRightdis.setText(textOf(row, field::marginRight));
    TxtBind.setText(textOf(row, field::gutter));
    showGutterSide(row);
    Txtheader.setText(textOf(row, field::headerDistance));
    TxtFooter.setText(textOf(row, field::footerDistance));
    cmbTextFont.setText(textOf(row, field::bodyFont));
    cmbTextSize.setText(textOf(row, field::bodySize));
}

void PageSetupPage::PageFresh() {
    const auto row = state_.gDbBidSet->OpenRecordset(theRow());
    row->Edit();
    setLength(*row, field::marginTop, txtPageupdis);
    setLength(*row, field::marginBottom, TxtPageDownDis);
    setLength(*row, field::marginLeft, TxtPageLeftDis);
    setLength(*row, field::marginRight, TxtPageRightdis);
    setLength(*row, field::gutter, TxtBind);
    row->Set(field::gutterSide, optSide.value() ? u"边" : u"顶");
    row->Set(field::bodyFont, stored(cmbTextFont));
    row->Set(field::bodySize, stored(cmbTextSize));
    setLength(*row, field::headerDistance, Txtheader);
    setLength(*row, field::footerDistance, TxtFooter);
    row->Update();
    for (TextBox* box : lengths()) {
        box->setNote({});
    }
}

ChildDocumentPage::ChildDocumentPage(modMain& state, Controls& dialog)
    : Option1_0(dialog, Frame22, u"Option1(0)"), Option1_1(dialog, Frame22, u"Option1(1)"),
      cboBianHao(dialog, u"cboBianHao"), txtInde(dialog, u"txtInde"), state_(state) {
    txtInde.setText(u"2"_s);
    cboBianHao.setEnabled(false);
    txtInde.setEnabled(false);
    Option1_0.Click = [this] { chooseForm(); };
    Option1_1.Click = [this] { chooseForm(); };
    txtInde.Change = [this] { keepWithinBounds(); };
    txtInde.KeyPress = [](QChar key) {
        return (key >= u'0' && key <= u'9') || key == u'\b' || key == u'.';
    };
}

void ChildDocumentPage::chooseForm() {
    cboBianHao.setEnabled(Option1_1.value());
    txtInde.setEnabled(Option1_1.value());
    state_.FormatSwitches.gChildDocAsNumber = Option1_1.value();
}

void ChildDocumentPage::keepWithinBounds() {
    const QString text = files::Trim(txtInde.text());
    if (text.isEmpty()) {
        txtInde.setText(u"2"_s);
    } else if (std::nearbyint(jet::numberOf(text)) > widestIndent) {
        txtInde.setText(u"100"_s);
    }
}

} // namespace qvnd::format

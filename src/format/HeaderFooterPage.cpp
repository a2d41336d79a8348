#include "format/HeaderFooterPage.h"

#include "format/FormatLists.h"
#include "store/Names.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace field = store::field;

namespace {

QString theRow() { return u"Select * from 页眉页脚表"_s; }

} // namespace

HeaderFooterPage::HeaderFooterPage(modMain& state, Controls& dialog)
    : chkHeader(dialog, u"chkHeader"), TxtHeaderCon(dialog, u"TxtHeaderCon"),
      cmbHeaderFont(dialog, u"cmbHeaderFont"), cmbHeaderSize(dialog, u"cmbHeaderSize"),
      optHeaderLeft(dialog, Frame4, u"optHeaderLeft"),
      optHeaderMiddle(dialog, Frame4, u"optHeaderMiddle"),
      optHeaderRight(dialog, Frame4, u"optHeaderRight"), chkfooter(dialog, u"chkfooter"),
      TxtFooterCon(dialog, u"TxtFooterCon"), cmbFooterFont(dialog, u"cmbFooterFont"),
      cmbFooterSize(dialog, u"cmbFooterSize"), optFooterLeft(dialog, Frame5, u"optFooterLeft"),
      optFooterMiddle(dialog, Frame5, u"optFooterMiddle"),
      optFooterRight(dialog, Frame5, u"optFooterRight"), cmbPageClass(dialog, u"cmbPageClass"),
      cmbPageSign(dialog, u"cmbPageSign"), chkPageIsNot(dialog, u"chkPageIsNot"),
      chkPageRight(dialog, u"chkPageRight"), state_(state) {
    connect();
}

void HeaderFooterPage::connect() {
    for (ComboBox* box : {&cmbHeaderFont, &cmbHeaderSize, &cmbFooterFont, &cmbFooterSize,
                          &cmbPageClass, &cmbPageSign}) {
        box->Click = [this] { HeaderFooterRefresh(); };
    }
    for (TextBox* box : {&TxtHeaderCon, &TxtFooterCon}) {
        box->LostFocus = [this] { HeaderFooterRefresh(); };
    }
    writesOnClick(chkHeader, field::withHeader);
    writesOnClick(chkfooter, field::withFooter);
    writesOnClick(chkPageIsNot, field::withPageNumbers);
    writesOnClick(chkPageRight, field::rightAligned);
    writesHeaderPosition(optHeaderLeft, u"左");
    writesHeaderPosition(optHeaderMiddle, u"中");
    writesHeaderPosition(optHeaderRight, u"右");
    writesFooterPosition(optFooterLeft, u"左");
    writesFooterPosition(optFooterMiddle, u"中");
    writesFooterPosition(optFooterRight, u"右");
}

void HeaderFooterPage::writesOnClick(CheckBox& box, QStringView field) {
    box.Click = [this, &box, field] { writeField(field, yesNo(box)); };
}

void HeaderFooterPage::writesHeaderPosition(OptionButton& option, QStringView word) {
    option.Click = [this, &option, word] {
        if (option.value()) {
            writeField(field::headerPosition, word.toString());
        }
    };
}

void HeaderFooterPage::writesFooterPosition(OptionButton& option, QStringView word) {
    option.Click = [this, word] { writeField(field::footerPosition, word.toString()); };
}

void HeaderFooterPage::Load() {
    loadRow(
        *state_.gDbBidSet, theRow(), [this](const jet::Recordset& row) { showRow(row); },
        [this] { fallBack(); });
}

void HeaderFooterPage::showRow(const jet::Recordset& row) {
    const Statements attempt(Failing::passedOver);
    attempt([&] { showLeader(textOf(row, field::leader)); });
    attempt([&] { cmbPageClass.setText(textOf(row, field::levelsShown)); });
    attempt([&] { TxtHeaderCon.setText(textOf(row, field::headerText)); });
    attempt([&] { cmbHeaderFont.setText(textOf(row, field::headerFont)); });
    attempt([&] { cmbHeaderSize.setText(textOf(row, field::headerSize)); });
    attempt([&] { TxtFooterCon.setText(textOf(row, field::footerText)); });
    attempt([&] { cmbFooterFont.setText(textOf(row, field::footerFont)); });
    attempt([&] { cmbFooterSize.setText(textOf(row, field::footerSize)); });
    attempt([&] { showPosition(textOf(row, field::headerPosition), headerOptions()); });
    attempt([&] { chkfooter.setChecked(isYes(row, field::withFooter)); });
    attempt([&] { showPosition(textOf(row, field::footerPosition), footerOptions()); });
    attempt([&] { chkPageRight.setChecked(isYes(row, field::rightAligned)); });
    attempt([&] { chkPageIsNot.setChecked(isYes(row, field::withPageNumbers)); });
    attempt([&] { chkHeader.setChecked(isYes(row, field::withHeader)); });
}

void HeaderFooterPage::showLibrary(const jet::Recordset& row) {
    chkHeader.setChecked(isYes(row, field::withHeader));
    TxtHeaderCon.setText(textOf(row, field::headerText));
    cmbHeaderFont.setText(textOf(row, field::headerFont));
    cmbHeaderSize.setText(textOf(row, field::headerSize));
    showPosition(textOf(row, field::headerPosition), headerOptions());
    chkfooter.setChecked(isYes(row, field::withFooter));
    TxtFooterCon.setText(textOf(row, field::footerText));
    cmbFooterFont.setText(textOf(row, field::footerFont));
    cmbFooterSize.setText(textOf(row, field::footerSize));
    showPosition(textOf(row, field::footerPosition), footerOptions());
    chkPageIsNot.setChecked(isYes(row, field::withPageNumbers));
    chkPageRight.setChecked(isYes(row, field::rightAligned));
    cmbPageClass.setText(textOf(row, field::levelsShown));
    showLeader(textOf(row, field::leader));
}

void HeaderFooterPage::fallBack() {
    const QScopedValueRollback quiet(writesNothing_, true);
    TxtFooterCon.setText({});
    TxtHeaderCon.setText({});
    showLeader(u"轻虚线"_s);
    cmbFooterFont.setText(u"宋体"_s);
    cmbHeaderFont.setText(u"宋体"_s);
    cmbFooterSize.setText(u"小四"_s);
    cmbHeaderSize.setText(u"小四"_s);
    cmbPageClass.setText(u"3"_s);
    for (CheckBox* box : {&chkfooter, &chkPageRight, &chkHeader, &chkPageIsNot}) {
        box->setChecked(true);
    }
    optFooterMiddle.select();
    optHeaderMiddle.select();
}

// A word that is none of the table's leaves the entry as it was.
void HeaderFooterPage::showLeader(const QString& word) {
    if (const auto entry = leaderEntryOf(word)) {
        cmbPageSign.setText(*entry);
    }
}

void HeaderFooterPage::HeaderFooterRefresh() {
    writeRow(
        *state_.gDbBidSet, theRow(), [this](jet::Recordset& row) { setAll(row); },
        [this](jet::Recordset& row) { setNew(row); });
}

void HeaderFooterPage::writeField(QStringView field, const QString& value) {
    if (writesNothing_) {
        return;
    }
    writeRow(
        *state_.gDbBidSet, theRow(), [&](jet::Recordset& row) { row.Set(field, value); },
        [this](jet::Recordset& row) { setNew(row); });
}

void HeaderFooterPage::setAll(jet::Recordset& row) {
    row.Set(field::withHeader, yesNo(chkHeader));
    setPosition(row, field::headerPosition, headerOptions());
    setHeaderTexts(row);
    row.Set(field::withFooter, yesNo(chkfooter));
    setFooterTexts(row);
    row.Set(field::rightAligned, yesNo(chkPageRight));
    setPosition(row, field::footerPosition, footerOptions());
    if (const auto word = leaderWordOf(cmbPageSign.text())) {
        row.Set(field::leader, *word);
    }
    row.Set(field::levelsShown, stored(cmbPageClass));
    row.Set(field::withPageNumbers, yesNo(chkPageIsNot));
}

void HeaderFooterPage::setHeaderTexts(jet::Recordset& row) const {
    row.Set(field::headerText, stored(TxtHeaderCon));
    row.Set(field::headerFont, stored(cmbHeaderFont));
    row.Set(field::headerSize, stored(cmbHeaderSize));
}

void HeaderFooterPage::setFooterTexts(jet::Recordset& row) const {
    row.Set(field::footerText, stored(TxtFooterCon));
    row.Set(field::footerFont, stored(cmbFooterFont));
    row.Set(field::footerSize, stored(cmbFooterSize));
}

void HeaderFooterPage::setNew(jet::Recordset& row) const {
    for (const QStringView flag :
         {field::withHeader, field::withFooter, field::rightAligned, field::withPageNumbers}) {
        row.Set(flag, store::yes);
    }
    row.Set(field::headerPosition, u"中");
    row.Set(field::footerPosition, u"中");
    row.Set(field::leader, u"轻虚线");
    setHeaderTexts(row);
    setFooterTexts(row);
    row.Set(field::levelsShown, stored(cmbPageClass));
}

PositionOptions HeaderFooterPage::headerOptions() {
    return {optHeaderLeft, optHeaderMiddle, optHeaderRight};
}

PositionOptions HeaderFooterPage::footerOptions() {
    return {optFooterLeft, optFooterMiddle, optFooterRight};
}

} // namespace qvnd::format

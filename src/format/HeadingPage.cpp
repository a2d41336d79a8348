#include "format/HeadingPage.h"

#include "platform/error/IgnoringErrors.h"
#include "store/FontSizeToPoints.h"
#include "store/Names.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace field = store::field;

namespace {

constexpr float previewScale = 0.7F;

QString rowOf(const QString& level) {
    return u"Select * from 章节设置表 where 级别='%1'"_s.arg(level);
}

float previewSize(const ComboBox& size) {
    return store::FontSizeToPoints(size.text()) * previewScale;
}

} // namespace

HeadingPage::HeadingPage(modMain& state, Controls& dialog)
    : cmbClass(dialog, u"cmbClass"), cmbChapterFont(dialog, u"cmbChapterFont"),
      cmbChapterSize(dialog, u"cmbChapterSize"), Txtformer(dialog, u"Txtformer"),
      cmbMiddle(dialog, u"cmbMiddle"), Txtback(dialog, u"Txtback"),
      optLeft(dialog, Frame12, u"optLeft"), optMiddle(dialog, Frame12, u"optMiddle"),
      optRight(dialog, Frame12, u"optRight"), chkHead(dialog, u"chkHead"),
      chkIsNot(dialog, u"chkIsNot"), chkMultLevel(dialog, u"chkMultLevel"),
      Command1(dialog, u"Command1"), chkBlackLine(dialog, u"chkBlackLine"),
      lblModel(dialog, u"lblModel", u"第一章 标题 "), lblTree(dialog, u"lblTree", u"第1级标题"),
      state_(state) {
    Command1.setEnabled(false);
    connect();
}

void HeadingPage::connect() {
    cmbClass.Click = [this] { showLevel(); };
    cmbChapterFont.Click = [this] {
        lblModel.setFontName(cmbChapterFont.text());
        ChapterRefresh();
    };
    cmbChapterSize.Click = [this] {
        lblModel.setFontSize(previewSize(cmbChapterSize));
        ChapterRefresh();
    };
    cmbMiddle.Click = [this] {
        ChapterRefresh();
        compose();
    };
    for (TextBox* affix : {&Txtformer, &Txtback}) {
        affix->Change = [this] { compose(); };
        affix->LostFocus = [this] { ChapterRefresh(); };
    }
    connectPosition(optLeft, TextAlign::left, u"左");
    connectPosition(optMiddle, TextAlign::middle, u"中");
    connectPosition(optRight, TextAlign::right, u"右");
    chkHead.Click = [this] { writeField(field::startsPage, yesNo(chkHead)); };
    chkIsNot.Click = [this] {
        composeByTitleBox();
        writeField(field::withTitle, yesNo(chkIsNot));
    };
    chkMultLevel.Click = [this] {
        state_.FormatSwitches.gMultLevelOn = chkMultLevel.checked();
        Command1.setEnabled(chkMultLevel.checked());
    };
}

void HeadingPage::connectPosition(OptionButton& option, TextAlign alignment, QStringView word) {
    option.Click = [this, alignment, word] {
        lblModel.setAlignment(alignment);
        writeField(field::position, word.toString());
    };
}

void HeadingPage::Load() {
    const QScopedValueRollback loading(isLoading_, true);
    loadRow(
        *state_.gDbBidSet, rowOf(u"1"_s),
        [this](const jet::Recordset& row) { show(row, Failing::passedOver); },
        [this] { fallBack(); });
}

void HeadingPage::fallBack() {
    const QScopedValueRollback quiet(writesNothing_, true);
    cmbClass.setText(u"1"_s);
    cmbChapterFont.setText(u"宋体"_s);
    cmbChapterSize.setText(u"小四"_s);
    Txtformer.setText({});
    cmbMiddle.setText(u"一"_s);
    Txtback.setText({});
    optMiddle.select();
    chkHead.setChecked(true);
    chkIsNot.setChecked(true);
}

// The level comes first: what the boxes and options write goes to its row.
void HeadingPage::show(const jet::Recordset& row, Failing failing) {
    const Statements attempt(failing);
    attempt([&] { cmbClass.setText(textOf(row, field::level)); });
    showFields(row, attempt);
}

void HeadingPage::showFields(const jet::Recordset& row, const Statements& attempt) {
    attempt([&] { cmbChapterFont.setText(textOf(row, field::font)); });
    attempt([&] { cmbChapterSize.setText(textOf(row, field::size)); });
    attempt([&] { Txtformer.setText(textOf(row, field::before)); });
    attempt([&] { cmbMiddle.setText(textOf(row, field::sample)); });
    attempt([&] { Txtback.setText(textOf(row, field::behind)); });
    attempt([&] { showPosition(textOf(row, field::position), {optLeft, optMiddle, optRight}); });
    attempt([&] { chkHead.setChecked(isYes(row, field::startsPage)); });
    attempt([&] { chkIsNot.setChecked(isYes(row, field::withTitle)); });
}

void HeadingPage::showLevel() {
    const auto row = state_.gDbBidSet->OpenRecordset(rowOf(cmbClass.text()));
    if (row->Eof()) {
        showMissingLevel();
    } else {
        showFields(*row, Statements(Failing::raised));
    }
    compose();
}

// The first of these that really changes a box or an option makes the row.
void HeadingPage::showMissingLevel() {
    Txtformer.setText({});
    Txtback.setText({});
    optMiddle.select();
    chkIsNot.setChecked(true);
    chkHead.setChecked(true);
}

void HeadingPage::ChapterRefresh() {
    writeRow(
        *state_.gDbBidSet, rowOf(cmbClass.text()),
        [this](jet::Recordset& row) { setAll(row, RowIs::there); },
        [this](jet::Recordset& row) { setAll(row, RowIs::made); });
}

void HeadingPage::writeField(QStringView field, const QString& value) {
    if (writesNothing_) {
        return;
    }
    writeRow(
        *state_.gDbBidSet, rowOf(cmbClass.text()),
        [&](jet::Recordset& row) { row.Set(field, value); },
        [this](jet::Recordset& row) { setAll(row, RowIs::made); });
}

void HeadingPage::setAll(jet::Recordset& row, RowIs there) {
    row.Set(field::level, stored(cmbClass));
    row.Set(field::font, stored(cmbChapterFont));
    row.Set(field::size, stored(cmbChapterSize));
    row.Set(field::before, stored(Txtformer));
    row.Set(field::sample, stored(cmbMiddle));
    if (const auto style = numberStyleOf(cmbMiddle.text(), there)) {
        row.Set(field::numberStyle, *style);
    }
    row.Set(field::behind, stored(Txtback));
    row.Set(field::startsPage, yesNo(chkHead));
    row.Set(field::withTitle, yesNo(chkIsNot));
    setPosition(row, field::position, {optLeft, optMiddle, optRight});
}

QString HeadingPage::headingText() const {
    return Txtformer.text() + cmbMiddle.text() + Txtback.text();
}

// The load moves the preview by the affixes alone.
void HeadingPage::composeByTitleBox() {
    if (!isLoading_) {
        lblModel.setCaption(headingText() + (chkIsNot.checked() ? u" 标题"_s : QString()));
    }
}

// Whatever chkIsNot says: only its own click leaves the title out.
void HeadingPage::compose() {
    lblTree.setCaption(u"第"_s + cmbClass.text() + u"级标题"_s);
    lblModel.setCaption(headingText() + u" 标题"_s);
    lblModel.setFontName(cmbChapterFont.text());
    lblModel.setFontSize(previewSize(cmbChapterSize));
}

} // namespace qvnd::format

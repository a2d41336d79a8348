#include "format/CoverPage.h"

#include "format/RangeCheck.h"
#include "platform/error/RunTimeError.h"
#include "platform/files/PlainName.h"
#include "platform/files/Trim.h"
#include "platform/jet/DateText.h"
#include "store/FontSizeToPoints.h"
#include "store/Names.h"
#include "store/PlanLists.h"
#include "store/ProgramFiles.h"

using namespace Qt::StringLiterals;

namespace qvnd::format {

namespace field = store::field;

namespace {

constexpr float previewScale = 0.5F;
// A list that has grown longer than this takes no further file in.
constexpr qsizetype mostListed = 4;

QString theRow() { return u"Select * from 封面表"_s; }

QString filter() { return u"Pictures (*.bmp;*.jpg;*.gif;*.wmf)|*.bmp;*.jpg;*.gif;*.wmf"_s; }

float previewSize(const ComboBox& size) {
    return store::FontSizeToPoints(size.text()) * previewScale;
}

void setLength(jet::Recordset& row, QStringView field, const TextBox& box) {
    if (const QString text = stored(box); !text.isEmpty()) {
        row.Set(field, jet::numberOf(text));
    }
}

} // namespace

CoverPage::CoverPage(modMain& state, Controls& dialog, desktop::MessageBoxes& messages,
                     desktop::FileDialogs& fileDialogs)
    : TxtPrjName(dialog, u"TxtPrjName"), cmbPrjFont(dialog, u"cmbPrjFont"),
      cmbPrjSize(dialog, u"cmbPrjSize"), TxtOffName(dialog, u"TxtOffName"),
      cmbOffFont(dialog, u"cmbOffFont"), cmbOffSize(dialog, u"cmbOffSize"),
      cmbDate(dialog, u"cmbDate"), cmbDateFont(dialog, u"cmbDateFont"),
      cmbDateSize(dialog, u"cmbDateSize"), cmbPic(dialog, u"cmbPic"),
      cmdBrowse(dialog, u"cmdBrowse"), TxtWidth(dialog, u"TxtWidth"),
      TxtHeight(dialog, u"TxtHeight"), lblPrjName(dialog, u"lblPrjName", u"工程名称"),
      Image1(dialog, u"Image1"), lblOffName(dialog, u"lblOffName", u"单位名称"),
      lblDate(dialog, u"lblDate", u"2001-8-31"), lblOffNote(dialog, u"lblOffNote", u""),
      state_(state) {
    connect(messages);
    cmdBrowse.Click = [this, &fileDialogs] { browse(fileDialogs); };
}

void CoverPage::connect(desktop::MessageBoxes& messages) {
    TxtPrjName.Change = [this] { lblPrjName.setCaption(stored(TxtPrjName)); };
    TxtOffName.Change = [this] { lblOffName.setCaption(stored(TxtOffName)); };
    for (TextBox* box : {&TxtPrjName, &TxtOffName}) {
        box->LostFocus = [this] { CoverRefresh(); };
    }
    connectFont(cmbPrjFont, lblPrjName);
    connectFont(cmbOffFont, lblOffName);
    connectFont(cmbDateFont, lblDate);
    connectSize(cmbPrjSize, lblPrjName);
    connectSize(cmbOffSize, lblOffName);
    connectSize(cmbDateSize, lblDate);
    for (ComboBox* box : {&cmbPrjSize, &cmbOffSize}) {
        box->Change = [this] { noteOfficeSize(); };
    }
    cmbDate.Change = [this] { lblDate.setCaption(jet::textOfDate(cmbDate.date().startOfDay())); };
    cmbDate.Click = [this] { CoverRefresh(); };
    cmbPic.Change = [this] { pictureChanged(); };
    cmbPic.Click = [this] { pictureClicked(); };
    for (TextBox* box : {&TxtWidth, &TxtHeight}) {
        checkOnLeaving(*box, pictureLength(), messages, [this] { CoverRefresh(); });
    }
}

void CoverPage::connectFont(ComboBox& font, Label& label) {
    font.Click = [this, &font, &label] {
        label.setFontName(font.text());
        CoverRefresh();
    };
}

void CoverPage::connectSize(ComboBox& size, Label& label) {
    size.Click = [this, &size, &label] {
        label.setFontSize(previewSize(size));
        noteOfficeSize();
        CoverRefresh();
    };
}

void CoverPage::Load() {
    const auto showWithNames = [this](jet::Recordset& row) {
        takeNamesOfPlan(row);
        ignoringErrors([&] { row.Requery(); });
        showRow(row);
    };
    loadRow(*state_.gDbBidSet, theRow(), showWithNames, [this] { fallBack(); });
    showFonts();
}

void CoverPage::takeNamesOfPlan(jet::Recordset& cover) {
    std::unique_ptr<jet::Recordset> plan;
    ignoringErrors([&] { plan = store::openCurrentPlan(*state_.gDbUser); });
    if (!plan || plan->Eof()) {
        return;
    }
    std::unique_ptr<jet::Recordset> information;
    ignoringErrors([&] { cover.Edit(); });
    ignoringErrors([&] { cover.Set(field::projectName, plan->Get(field::name)); });
    ignoringErrors([&] {
        information = state_.gDbUser->OpenRecordset(u"select %1 from %2 "_s.arg(
            field::contractor, store::informationTableOf(plan->Get(field::name).ToText())));
    });
    if (information) {
        ignoringErrors([&] { cover.Set(field::officeName, information->Get(field::contractor)); });
    }
    ignoringErrors([&] { cover.Update(); });
}

void CoverPage::showRow(const jet::Recordset& row) {
    const Statements attempt(Failing::passedOver);
    attempt([&] { TxtPrjName.setText(textOf(row, field::projectName)); });
    attempt([&] { cmbPrjFont.setText(textOf(row, field::projectFont)); });
    attempt([&] { cmbPrjSize.setText(textOf(row, field::projectSize)); });
    attempt([&] { TxtOffName.setText(textOf(row, field::officeName)); });
    attempt([&] { cmbOffFont.setText(textOf(row, field::officeFont)); });
    attempt([&] { cmbOffSize.setText(textOf(row, field::officeSize)); });
    attempt([&] { cmbDateFont.setText(textOf(row, field::dateFont)); });
    attempt([&] { cmbDateSize.setText(textOf(row, field::dateSize)); });
    if (holdsText(row, field::picture)) {
        const QString picture = textOf(row, field::picture);
        attempt([&] { cmbPic.setText(picture); });
        attempt([&] { Image1.load(fileOf(picture)); });
    }
    attempt([&] { TxtWidth.setText(textOf(row, field::pictureWidth)); });
    attempt([&] { TxtHeight.setText(textOf(row, field::pictureHeight)); });
}

void CoverPage::fallBack() {
    for (ComboBox* font : {&cmbPrjFont, &cmbOffFont, &cmbDateFont}) {
        font->setText(u"宋体"_s);
    }
    for (ComboBox* size : {&cmbPrjSize, &cmbOffSize, &cmbDateSize}) {
        size->setText(u"二号"_s);
    }
    TxtPrjName.setText({});
    TxtOffName.setText({});
    cmbPic.setText({});
    TxtWidth.setText(u"0"_s);
    TxtHeight.setText(u"0"_s);
}

// Assigning the text of a combo box moves no label.
void CoverPage::showFonts() {
    lblPrjName.setFontSize(previewSize(cmbPrjSize));
    lblOffName.setFontSize(previewSize(cmbOffSize));
    lblDate.setFontSize(previewSize(cmbDateSize));
    lblPrjName.setFontName(cmbPrjFont.text());
    lblOffName.setFontName(cmbOffFont.text());
    lblDate.setFontName(cmbDateFont.text());
    noteOfficeSize();
}

void CoverPage::noteOfficeSize() {
    const bool isAsShown = previewSize(cmbPrjSize) == previewSize(cmbOffSize);
    lblOffNote.setCaption(
        isAsShown ? QString()
                  : u"生成的文档中，单位名称和它上下的空行用工程名称的字号“%1”，不用“%2”；"
                    "字号很大时，日期会排到第二页。"_s.arg(stored(cmbPrjSize), stored(cmbOffSize)));
}

void CoverPage::showLibrary(const jet::Recordset& row) {
    TxtPrjName.setText(textOf(row, field::projectName));
    cmbPrjFont.setText(textOf(row, field::projectFont));
    cmbPrjSize.setText(textOf(row, field::projectSize));
    TxtOffName.setText(textOf(row, field::officeName));
    cmbOffFont.setText(textOf(row, field::officeFont));
    cmbOffSize.setText(textOf(row, field::officeSize));
    if (const jet::Value date = row.Get(field::date); !date.IsNull()) {
        cmbDate.setDate(date.ToDate().date());
    }
    cmbDateFont.setText(textOf(row, field::dateFont));
    cmbDateSize.setText(textOf(row, field::dateSize));
    if (holdsText(row, field::picture)) {
        const QString picture = textOf(row, field::picture);
        cmbPic.setText(picture);
        Image1.load(fileOf(picture));
    } else {
        Image1.clear();
    }
    TxtWidth.setText(textOf(row, field::pictureWidth));
    TxtHeight.setText(textOf(row, field::pictureHeight));
}

void CoverPage::CoverRefresh() {
    const auto set = [this](jet::Recordset& row) { setAll(row); };
    writeRow(*state_.gDbBidSet, theRow(), set, set);
    for (TextBox* box : {&TxtWidth, &TxtHeight}) {
        box->setNote({});
    }
}

void CoverPage::setAll(jet::Recordset& row) {
    row.Set(field::projectName, stored(TxtPrjName));
    row.Set(field::projectFont, stored(cmbPrjFont));
    row.Set(field::projectSize, stored(cmbPrjSize));
    row.Set(field::officeName, stored(TxtOffName));
    row.Set(field::officeFont, stored(cmbOffFont));
    row.Set(field::officeSize, stored(cmbOffSize));
    row.Set(field::date, cmbDate.date());
    row.Set(field::dateFont, stored(cmbDateFont));
    row.Set(field::dateSize, stored(cmbDateSize));
    row.Set(field::picture, stored(cmbPic));
    setLength(row, field::pictureHeight, TxtHeight);
    setLength(row, field::pictureWidth, TxtWidth);
}

// A name whose file is gone leaves the earlier picture in its place until the name is empty.
void CoverPage::pictureChanged() {
    const QString name = stored(cmbPic);
    const QString file = fileOf(name);
    ignoringErrors([&] {
        const auto row = state_.gDbBidSet->OpenRecordset(theRow());
        if (!row->Eof()) {
            row->Edit();
            row->Set(field::picture, state_.gFso->FileExists(file) ? name : QString());
            row->Update();
        }
    });
    if (name.isEmpty()) {
        Image1.clear();
    }
    ignoringErrors([&] {
        if (state_.gFso->FileExists(file)) {
            Image1.load(file);
        }
    });
}

void CoverPage::pictureClicked() {
    CoverRefresh();
    const QString file = fileOf(stored(cmbPic));
    if (state_.gFso->FileExists(file)) {
        Image1.load(file);
    }
}

QString CoverPage::fileOf(const QString& picture) const {
    const QString name = files::Trim(picture);
    return files::isPlainName(name) ? store::pictureFile(state_.gAppPath, name) : QString();
}

void CoverPage::browse(desktop::FileDialogs& fileDialogs) {
    desktop::ChosenFile chosen;
    try {
        chosen = fileDialogs.open({u"图片"_s, filter(), {}});
    } catch (const RunTimeError& failure) {
        if (failure.number() == error::dialogCancelled) {
            return;
        }
        throw;
    }
    if (cmbPic.entries().size() > mostListed) {
        replaceSecond(chosen.fileTitle);
    } else if (chosen.fileTitle.isEmpty() || cmbPic.entries().contains(chosen.fileTitle)) {
        return;
    } else {
        bringIn(chosen);
    }
    CoverRefresh();
}

void CoverPage::bringIn(const desktop::ChosenFile& chosen) {
    const QString copy = store::pictureFile(state_.gAppPath, chosen.fileTitle);
    state_.gFso->CopyFile(chosen.fileName, copy, true);
    cmbPic.setEntries(cmbPic.entries() + QStringList(chosen.fileTitle));
    if (state_.gFso->FileExists(chosen.fileName)) {
        Image1.load(copy);
    }
    cmbPic.setText(chosen.fileTitle);
}

// The file is not brought in, so a name that is new to the folder shows no picture.
void CoverPage::replaceSecond(const QString& fileTitle) {
    QStringList entries = cmbPic.entries();
    entries.removeAt(1);
    cmbPic.setEntries(entries << fileTitle);
    cmbPic.setText(fileTitle);
}

} // namespace qvnd::format

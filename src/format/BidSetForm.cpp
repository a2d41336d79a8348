#include "format/BidSetForm.h"

#include "format/FormatLibraries.h"
#include "format/FormatLists.h"
#include "platform/files/Trim.h"

using namespace Qt::StringLiterals;

namespace qvnd::format {

BidSetForm::BidSetForm(modMain& state, const FormatServices& services)
    : controls(services.messages), headings(state, controls), headerFooter(state, controls),
      page(state, controls, services.messages), childDocuments(state, controls),
      cover(state, controls, services.messages, services.fileDialogs),
      settingLibrary(state, controls, services, {headings, page, headerFooter}, shownLibraries),
      coverLibrary(state, controls, services, cover, shownLibraries),
      customPage(state, controls, services), state_(state), services_(services) {
    connect();
    Load();
}

// A cover library and a custom page exclude each other; a setting library stands by itself.
void BidSetForm::connect() {
    coverLibrary.chkCover.Click = [this] {
        if (coverLibrary.chkCover.checked() && customPage.chkSelf.checked()) {
            customPage.chkSelf.setChecked(false);
        }
    };
    customPage.chkSelf.Click = [this] {
        if (customPage.chkSelf.checked() && coverLibrary.chkCover.checked()) {
            coverLibrary.chkCover.setChecked(false);
        }
        customPage.storeIfChecked();
    };
}

void BidSetForm::Load() {
    state_.FormatSwitches.gChildDocAsNumber = childDocuments.Option1_1.value();
    headings.chkBlackLine.setChecked(state_.FormatSwitches.gBlankLineAroundTitle);
    childDocuments.cboBianHao.setEntries(childStyleList());
    fillFonts();
    cover.cmbDate.setDate(QDate::currentDate());
    fillLists();
    settingLibrary.fillList();
    headings.Load();
    headerFooter.Load();
    page.Load();
    cover.Load();
    coverLibrary.Load();
    customPage.Load();
    // Whatever the table says: its Click writes 是否右对齐.
    ignoringErrors([this] { headerFooter.chkPageRight.setChecked(true); });
    settingLibrary.selectFirst();
    state_.FormatSwitches.gBidSetLoaded = true;
}

QStringList BidSetForm::offeredFonts() {
    if (services_.fonts.hasPrinter()) {
        return services_.fonts.printerFonts();
    }
    services_.messages.tell(u"你没有安装打印机，以后在打印的时候可能对你所选的字体会不支持！"_s,
                            desktop::Icon::information, u"提示"_s);
    return services_.fonts.screenFonts();
}

void BidSetForm::fillFonts() {
    const QStringList fonts = offeredFonts();
    for (ComboBox* box :
         {&cover.cmbPrjFont, &cover.cmbDateFont, &headings.cmbChapterFont, &cover.cmbOffFont,
          &headerFooter.cmbHeaderFont, &headerFooter.cmbFooterFont, &page.cmbTextFont}) {
        box->setEntries(fonts);
    }
}

void BidSetForm::fillLists() {
    for (ComboBox* box :
         {&cover.cmbPrjSize, &cover.cmbOffSize, &cover.cmbDateSize, &headings.cmbChapterSize,
          &headerFooter.cmbHeaderSize, &headerFooter.cmbFooterSize, &page.cmbTextSize}) {
        box->setEntries(sizeList());
    }
    headings.cmbClass.setEntries(levelList());
    headerFooter.cmbPageClass.setEntries(levelList());
    headerFooter.cmbPageSign.setEntries(leaderList());
    headings.cmbMiddle.setEntries(sampleList());
}

bool BidSetForm::cmdDecide() {
    bool done = false;
    controls.userDid([&] {
        state_.FormatSwitches.gBlankLineAroundTitle = headings.chkBlackLine.checked();
        Selection selection;
        if (coverLibrary.chkCover.checked()) {
            selection.cover = files::Trim(coverLibrary.lstcover.text());
        }
        if (settingLibrary.chkSet.checked()) {
            selection.setting = files::Trim(settingLibrary.lstSet.text());
        }
        selection.customPage = customPage.chkSelf.checked();
        writeSelection(*state_.gDbBidSet, selection);
        done = true;
    });
    return done;
}

} // namespace qvnd::format

#include "generate/assembly/BuiltInCover.h"

#include "generate/assembly/CoverPicture.h"
#include "platform/files/Trim.h"

namespace qvnd::generate {

namespace {

void typeParagraphs(GenerationRun& run, int count) {
    for (int i = 0; i < count; ++i)
        run.attempt([&] { run.word.selection().TypeParagraph(); });
}

void setFont(GenerationRun& run, const SettingsRow& cover, QStringView field) {
    run.attempt([&] { run.word.selection().Font().setName(cover.text(field).toStdU16String()); });
}

void setSize(GenerationRun& run, const SettingsRow& cover, QStringView field) {
    run.attempt([&] { run.word.selection().Font().setSize(cover.fontSize(field)); });
}

void setBold(GenerationRun& run, bool bold) {
    run.attempt([&] { run.word.selection().Font().setBold(bold); });
}

void centre(GenerationRun& run) {
    run.attempt(
        [&] { run.word.selection().ParagraphFormat().setAlignment(word::Alignment::center); });
}

void typeField(GenerationRun& run, const SettingsRow& cover, QStringView field) {
    run.attempt([&] { run.word.selection().TypeText(cover.text(field).toStdU16String()); });
}

void typeProjectName(GenerationRun& run, const SettingsRow& cover) {
    typeParagraphs(run, 2);
    setFont(run, cover, u"工程字体");
    setSize(run, cover, u"工程字号");
    setBold(run, true);
    centre(run);
    typeParagraphs(run, 1);
    typeField(run, cover, u"工程名称");
    typeParagraphs(run, 2);
}

void typeSpacing(GenerationRun& run, const SettingsRow& cover) {
    bool blank = false;
    run.attempt([&] {
        const jet::Value picture = cover.value(u"图片");
        blank = !picture.IsNull() && files::Trim(picture.ToText()).isEmpty();
    });
    typeParagraphs(run, blank ? 8 : 3);
}

void typeOrganisation(GenerationRun& run, const SettingsRow& cover) {
    setFont(run, cover, u"单位字体");
    setBold(run, true);
    typeField(run, cover, u"单位名称");
    centre(run);
    run.attempt([&] {
        word::Paragraph& third = run.word.activeDocument().paragraphs().Item(3);
        third.Range().Font().setSize(cover.fontSize(u"单位字号"));
    });
}

void typeDate(GenerationRun& run, const SettingsRow& cover) {
    centre(run);
    setFont(run, cover, u"日期字体");
    setSize(run, cover, u"日期字号");
    bool dated = false;
    run.attempt([&] { dated = !cover.value(u"日期").IsNull(); });
    if (dated) {
        // The names' bold is still in force; the date stands without it.
        setBold(run, false);
        typeField(run, cover, u"日期");
    }
    // Set behind the date: it carries into what is typed next.
    centre(run);
    setFont(run, cover, u"日期字体");
    setBold(run, true);
    setSize(run, cover, u"日期字号");
}

} // namespace

void typeBuiltInCover(GenerationRun& run, const SettingsRow& cover) {
    run.stopTest();
    typeProjectName(run, cover);
    run.letEventsRun();
    run.stopTest();
    insertCoverPicture(run, cover);
    run.services.dlgTB.setProgress(0.81);
    typeSpacing(run, cover);
    typeOrganisation(run, cover);
    typeSpacing(run, cover);
    typeDate(run, cover);
}

} // namespace qvnd::generate

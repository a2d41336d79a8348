#include "generate/assembly/CoverPicture.h"

#include "platform/files/Paths.h"
#include "platform/files/Trim.h"
#include "store/Names.h"
#include "store/ProgramFiles.h"

namespace qvnd::generate {

namespace {

constexpr double pointsPerCentimetre = 28.345;

std::filesystem::path picturePath(const GenerationRun& run, const SettingsRow& cover) {
    return files::toPath(store::pictureFile(run.program.modMain.gAppPath,
                                            files::Trim(cover.text(store::field::picture))));
}

float pointsOf(const SettingsRow& cover, QStringView field) {
    return static_cast<float>(cover.number(field) * pointsPerCentimetre);
}

void setShape(GenerationRun& run, const SettingsRow& cover) {
    const auto shape = [&]() -> word::InlineShape& {
        return run.word.selection().InlineShapes().Item(1);
    };
    run.attempt([&] { shape().Fill().setVisible(false); });
    run.attempt([&] { shape().Fill().setTransparency(0); });
    run.attempt([&] { shape().Line().setWeight(0.75F); });
    run.attempt([&] { shape().Line().setTransparency(0); });
    run.attempt([&] { shape().Line().setVisible(false); });
    run.attempt([&] { shape().setLockAspectRatio(false); });
    run.attempt([&] { shape().setHeight(pointsOf(cover, store::field::pictureHeight)); });
    run.attempt([&] { shape().setWidth(pointsOf(cover, store::field::pictureWidth)); });
    run.attempt([&] { shape().PictureFormat().setBrightness(0.5F); });
    run.attempt([&] { shape().PictureFormat().setContrast(0.5F); });
    run.attempt([&] { shape().PictureFormat().setCropLeft(0); });
    run.attempt([&] { shape().PictureFormat().setCropRight(0); });
    run.attempt([&] { shape().PictureFormat().setCropTop(0); });
    run.attempt([&] { shape().PictureFormat().setCropBottom(0); });
}

} // namespace

void insertCoverPicture(GenerationRun& run, const SettingsRow& cover) {
    bool wanted = false;
    run.attempt(
        [&] { wanted = !files::Trim(cover.value(store::field::picture).TextOrEmpty()).isEmpty(); });
    if (!wanted)
        return;
    run.attempt([&] {
        run.word.selection().InlineShapes().AddPicture(picturePath(run, cover), false, true);
    });
    run.attempt([&] { run.word.selection().MoveLeftExtending(); });
    setShape(run, cover);
    run.attempt(
        [&] { run.word.selection().ParagraphFormat().setAlignment(word::Alignment::center); });
    run.attempt([&] { run.word.selection().MoveRightExtending(); });
}

} // namespace qvnd::generate

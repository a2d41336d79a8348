#include "generate/assembly/PageFormat.h"

namespace qvnd::generate {

void setPageFormat(GenerationRun& run, const SettingsRow& page) {
    if (page.opened() && !page.hasRow())
        return;
    const auto setup = [&]() -> word::PageSetup& { return run.word.activeDocument().pageSetup(); };
    const auto points = [&](QStringView field) {
        return run.word.application().CentimetersToPoints(page.single(field));
    };
    run.attempt([&] { setup().setTopMargin(points(u"页边距上")); });
    run.attempt([&] { setup().setBottomMargin(points(u"页边距下")); });
    run.attempt([&] { setup().setLeftMargin(points(u"页边距左")); });
    run.attempt([&] { setup().setRightMargin(points(u"页边距右")); });
    run.attempt([&] { setup().setGutter(points(u"装订距离")); });
    run.attempt([&] { setup().setGutterOnTop(!page.equals(u"装订位置", u"边")); });
    run.attempt([&] { setup().setHeaderDistance(points(u"距页眉")); });
    run.attempt([&] { setup().setFooterDistance(points(u"距页脚")); });
}

} // namespace qvnd::generate

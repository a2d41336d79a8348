#include "generate/assembly/ContentsHeading.h"

namespace qvnd::generate {

void typeContentsHeading(GenerationRun& run) {
    const auto selection = [&]() -> word::Selection& { return run.word.selection(); };
    run.attempt([&] { selection().ParagraphFormat().setAlignment(word::Alignment::center); });
    run.attempt([&] { selection().Font().setSize(16); });
    run.attempt([&] { selection().Font().setBold(true); });
    run.attempt([&] { selection().TypeText(u"目录"); });
}

} // namespace qvnd::generate

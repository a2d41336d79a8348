#include "tools/PageNumberChoice.h"

#include "tools/UsageError.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace qvnd::tools {

namespace {

// One profile serves all runs: making it costs seconds.
QString profileFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           u"/qvnd/office"_s;
}

} // namespace

drawing::FontChoice fontChoice(const Arguments& arguments) {
    if (!arguments.hasOption(u"--fonts"_s))
        return drawing::FontChoice::named;
    if (arguments.option(u"--fonts"_s) != u"here")
        throw UsageError(u"选项 --fonts 的值只能是 here"_s);
    return drawing::FontChoice::here;
}

layout::LayoutOptions layoutOptions(drawing::FontChoice fonts) {
    return fonts == drawing::FontChoice::here ? layout::officeOptions() : layout::LayoutOptions{};
}

PageNumberChoice::PageNumberChoice(PageSource wanted, drawing::FontChoice fonts,
                                   desktop::MessageBoxes& messages)
    : wanted_(wanted), messages_(messages), suite_(profileFolder()), exact_(suite_),
      own_([fonts] { return std::make_unique<drawing::FontFaces>(fonts); }, layoutOptions(fonts)) {}

bool PageNumberChoice::isOffered() const {
    return wanted_ != PageSource::office || suite_.isInstalled();
}

std::vector<std::u16string> PageNumberChoice::displayedPages(const word::DocumentContent& content,
                                                             std::span<const word::Cp> positions) {
    if (wanted_ == PageSource::office) {
        try {
            used_ = &exact_;
            return exact_.displayedPages(content, positions);
        } catch (const RunTimeError& failure) {
            messages_.tell(u"办公套件没有排出页码，页码由本程序排出。\n"_s +
                               desktop::descriptionOf(failure),
                           desktop::Icon::exclamation, desktop::hintTitle);
        }
    }
    used_ = &own_;
    return own_.displayedPages(content, positions);
}

QString PageNumberChoice::origin() const {
    if (pages() == 0)
        return {};
    return used_ == &exact_ ? u"office"_s : u"layout"_s;
}

} // namespace qvnd::tools

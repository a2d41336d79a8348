#include "tools/PageNumberChoice.h"

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

PageNumberChoice::PageNumberChoice(PageSource wanted, bool fontsHere)
    : wanted_(wanted), suite_(profileFolder()), exact_(suite_),
      own_(fontsHere ? drawing::openInstalledFonts : drawing::openNamedFonts,
           fontsHere ? layout::officeOptions() : layout::LayoutOptions{}) {}

bool PageNumberChoice::isOffered() const {
    return wanted_ != PageSource::office || suite_.isInstalled();
}

word::PageNumberSource& PageNumberChoice::source() {
    if (wanted_ == PageSource::office)
        return exact_;
    return own_;
}

QString PageNumberChoice::origin() {
    if (source().pages() == 0)
        return {};
    return wanted_ == PageSource::office ? u"office"_s : u"layout"_s;
}

} // namespace qvnd::tools

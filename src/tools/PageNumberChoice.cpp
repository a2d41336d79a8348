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

PageNumberChoice::PageNumberChoice(PageSource wanted)
    : wanted_(wanted), suite_(profileFolder()), exact_(suite_), best_(exact_, estimate_) {}

bool PageNumberChoice::isOffered() const {
    return wanted_ != PageSource::office || suite_.isInstalled();
}

word::PageNumberSource& PageNumberChoice::source() {
    switch (wanted_) {
    case PageSource::office:
        return exact_;
    case PageSource::estimate:
        return estimate_;
    default:
        return best_;
    }
}

PageNumberChoice::Origin PageNumberChoice::origin() {
    if (source().pages() == 0)
        return {};
    if (wanted_ == PageSource::office)
        return {u"office"_s, {}};
    if (wanted_ == PageSource::estimate)
        return {u"estimate"_s, {}};
    const auto& why = best_.whyEstimated();
    if (!why)
        return {u"office"_s, {}};
    return {u"estimate"_s, suite_.isInstalled() ? *why : u"没有安装办公套件（LibreOffice）。"_s};
}

} // namespace qvnd::tools

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

PageNumberChoice::PageNumberChoice()
    : suite_(profileFolder()), exact_(suite_), best_(exact_, estimate_) {}

bool PageNumberChoice::offers(PageSource wanted) const {
    return wanted != PageSource::office || suite_.isInstalled();
}

word::PageNumberSource& PageNumberChoice::source(PageSource wanted) {
    switch (wanted) {
    case PageSource::office:
        return exact_;
    case PageSource::estimate:
        return estimate_;
    default:
        return best_;
    }
}

} // namespace qvnd::tools

#include "platform/files/Trim.h"

namespace qvnd::files {

QString Trim(const QString& text) {
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && text[start] == u' ') {
        ++start;
    }
    while (end > start && text[end - 1] == u' ') {
        --end;
    }
    return text.mid(start, end - start);
}

} // namespace qvnd::files

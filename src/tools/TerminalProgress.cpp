#include "tools/TerminalProgress.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace qvnd::tools {

namespace {

constexpr int barWidth = 30;
constexpr const char* wipe = "\r\x1b[K";

} // namespace

bool standardErrorIsATerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(2) != 0;
#endif
}

void TerminalProgress::show() {
    shown_ = true;
    draw();
}

void TerminalProgress::hide() {
    if (shown_)
        terminal_ << wipe << std::flush;
    shown_ = false;
}

void TerminalProgress::setProgress(double part) {
    part_ = std::clamp(part, 0.0, 1.0);
    draw();
}

void TerminalProgress::setLabel(const QString& text) {
    label_ = text;
    draw();
}

void TerminalProgress::draw() {
    if (!shown_)
        return;
    const int filled = static_cast<int>(std::lround(part_ * barWidth));
    const QString bar = QString(filled, u'#') + QString(barWidth - filled, u'.');
    const int percent = static_cast<int>(std::lround(part_ * 100));
    terminal_ << wipe
              << QStringLiteral("[%1] %2% %3").arg(bar).arg(percent, 3).arg(label_).toStdString()
              << std::flush;
}

} // namespace qvnd::tools

#pragma once

#include <QString>

#include <map>

namespace qvnd::office {

struct PdfDestinations {
    int pages = 0;
    std::map<QString, int> pageOfName; // named destinations, pages counted from 0
};

// Throws RunTimeError 5 when the file is no readable PDF.
PdfDestinations readPdfDestinations(const QString& path);

} // namespace qvnd::office

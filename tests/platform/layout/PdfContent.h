#pragma once

#include "platform/drawing/PagePainter.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>

namespace qvnd::test {

// What the first page of a PDF is painted by, inflated.
inline std::string firstPageContent(const std::string& pdf) {
    const std::string mark = "stream\n"; // the first is that of the page
    const auto begin = pdf.find(mark) + mark.size();
    std::string content(100000, '\0');
    uLongf size = content.size();
    EXPECT_EQ(uncompress(reinterpret_cast<Bytef*>(content.data()), &size,
                         reinterpret_cast<const Bytef*>(pdf.data() + begin), pdf.size() - begin),
              Z_OK);
    content.resize(size);
    return content;
}

// A PDF of this page.
inline std::string pdfOf(const layout::Page& page, drawing::FontFaces& fonts) {
    std::string pdf;
    drawing::PagePainter painter(fonts, nullptr);
    const auto file = painter.pdf([&](word::ByteView part) {
        pdf.append(reinterpret_cast<const char*>(part.data()), part.size());
    });
    file->add(page);
    file->finish();
    return pdf;
}

} // namespace qvnd::test

#include "platform/office/OfficePageNumbers.h"

#include "platform/office/PdfDestinations.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "platform/word/layout/SectionPages.h"

#include <QTemporaryDir>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace qvnd::office {

namespace {

// Letters and digits only: other characters of a destination's name are written as codes.
QString positionMark(std::size_t index) { return u"qvndPosition"_s + QString::number(index); }
QString sectionMark(std::size_t index) { return u"qvndSection"_s + QString::number(index); }

word::Bookmark markAt(const QString& name, word::Cp position) {
    return {name.toStdU16String(), position, position, 0};
}

std::vector<word::Bookmark> marksFor(std::span<const word::Cp> positions,
                                     const std::vector<word::Cp>& sections) {
    std::vector<word::Bookmark> marks;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        marks.push_back(markAt(positionMark(i), positions[i]));
    }
    for (std::size_t i = 0; i < sections.size(); ++i) {
        marks.push_back(markAt(sectionMark(i), sections[i]));
    }
    return marks;
}

// The page of a mark; one that the suite has lost stands where the mark before it does.
int pageOf(const PdfDestinations& pdf, const QString& mark, int previous) {
    const auto found = pdf.pageOfName.find(mark);
    return found == pdf.pageOfName.end() ? previous : found->second;
}

} // namespace

std::vector<std::u16string> OfficePageNumbers::displayedPages(const word::DocumentContent& content,
                                                              std::span<const word::Cp> positions) {
    const QTemporaryDir scratch;
    const QString document = scratch.filePath(u"pages.doc"_s);
    const QString drawn = scratch.filePath(u"pages.pdf"_s);
    const std::vector<word::Cp> sections = word::sectionStarts(content.sections);
    word::writeMarkedCopy(std::filesystem::path(document.toStdU16String()), content,
                          marksFor(positions, sections));
    suite_.convert(document, drawn,
                   u"pdf:writer_pdf_Export:{\"ExportBookmarksToPDFDestination\":"
                   "{\"type\":\"boolean\",\"value\":\"true\"}}"_s);
    const PdfDestinations pdf = readPdfDestinations(drawn);
    pages_ = pdf.pages;
    std::vector<int> firstSheets;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        firstSheets.push_back(
            pageOf(pdf, sectionMark(i), firstSheets.empty() ? 0 : firstSheets.back()));
    }
    const word::PageNumbering numbering(content, firstSheets);
    std::vector<std::u16string> shown;
    int sheet = 0;
    for (std::size_t i = 0; i < positions.size(); ++i) {
        sheet = pageOf(pdf, positionMark(i), sheet);
        shown.push_back(numbering.shown(positions[i], sheet));
    }
    return shown;
}

} // namespace qvnd::office

#include "platform/office/PdfDestinations.h"

#include "platform/error/RunTimeError.h"

#include <qpdf/qpdf-c.h>

#include <memory>
#include <type_traits>

using namespace Qt::StringLiterals;

namespace qvnd::office {

namespace {

struct CloseFile {
    void operator()(qpdf_data pdf) const { qpdf_cleanup(&pdf); }
};
using PdfFile = std::unique_ptr<std::remove_pointer_t<qpdf_data>, CloseFile>;

std::map<int, int> pageOfObject(qpdf_data pdf, int pages) {
    std::map<int, int> numbers;
    for (int page = 0; page < pages; ++page) {
        numbers.emplace(
            qpdf_oh_get_object_id(pdf, qpdf_get_page_n(pdf, static_cast<std::size_t>(page))), page);
    }
    return numbers;
}

// The document's catalogue lists its destinations: name to an array that begins with the page.
PdfDestinations destinationsOf(qpdf_data pdf) {
    PdfDestinations result;
    result.pages = qpdf_get_num_pages(pdf);
    const std::map<int, int> pages = pageOfObject(pdf, result.pages);
    const qpdf_oh names = qpdf_oh_get_key(pdf, qpdf_get_root(pdf), "/Dests");
    if (qpdf_oh_is_dictionary(pdf, names) == QPDF_FALSE) {
        return result;
    }
    qpdf_oh_begin_dict_key_iter(pdf, names);
    while (qpdf_oh_dict_more_keys(pdf) != QPDF_FALSE) {
        const char* name = qpdf_oh_dict_next_key(pdf);
        const qpdf_oh destination = qpdf_oh_get_key(pdf, names, name);
        if (qpdf_oh_is_array(pdf, destination) != QPDF_FALSE &&
            qpdf_oh_get_array_n_items(pdf, destination) > 0) {
            const auto page =
                pages.find(qpdf_oh_get_object_id(pdf, qpdf_oh_get_array_item(pdf, destination, 0)));
            if (page != pages.end()) {
                result.pageOfName.emplace(QString::fromUtf8(name).mid(1), page->second);
            }
        }
    }
    return result;
}

} // namespace

PdfDestinations readPdfDestinations(const QString& path) {
    const PdfFile pdf(qpdf_init());
    qpdf_silence_errors(pdf.get());
    qpdf_set_suppress_warnings(pdf.get(), QPDF_TRUE);
    if ((qpdf_read(pdf.get(), path.toUtf8().constData(), nullptr) & QPDF_ERRORS) != 0) {
        throw RunTimeError(error::invalidCall,
                           (u"无法读取 PDF 文件“"_s + path + u"”。"_s).toStdU16String());
    }
    return destinationsOf(pdf.get());
}

} // namespace qvnd::office

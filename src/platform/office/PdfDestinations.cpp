#include "platform/office/PdfDestinations.h"

#include "platform/error/RunTimeError.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

using namespace Qt::StringLiterals;

namespace qvnd::office {

namespace {

constexpr long invalidCall = 5;

PdfDestinations destinationsOf(QPDF& pdf) {
    PdfDestinations result;
    std::map<QPDFObjGen, int> numbers;
    for (const QPDFPageObjectHelper& page : QPDFPageDocumentHelper(pdf).getAllPages()) {
        numbers.emplace(page.getObjectHandle().getObjGen(), result.pages++);
    }
    QPDFObjectHandle names = pdf.getRoot().getKey("/Dests");
    if (!names.isDictionary()) {
        return result;
    }
    for (const std::string& name : names.getKeys()) {
        QPDFObjectHandle destination = names.getKey(name);
        if (destination.isArray() && destination.getArrayNItems() > 0) {
            const auto page = numbers.find(destination.getArrayItem(0).getObjGen());
            if (page != numbers.end()) {
                result.pageOfName.emplace(QString::fromStdString(name).mid(1), page->second);
            }
        }
    }
    return result;
}

} // namespace

PdfDestinations readPdfDestinations(const QString& path) {
    try {
        QPDF pdf;
        pdf.setSuppressWarnings(true);
        pdf.processFile(path.toUtf8().constData());
        return destinationsOf(pdf);
    } catch (const std::exception&) {
        throw RunTimeError(invalidCall,
                           (u"无法读取 PDF 文件“"_s + path + u"”。"_s).toStdU16String());
    }
}

} // namespace qvnd::office

#include "platform/office/PdfPrinter.h"

namespace qvnd::office {

void SuitePdfPrinter::print(const QString& document, const QString& pdf) {
    suite_.convert(document, pdf,
                   QStringLiteral("pdf:writer_pdf_Export:{\"ExportBookmarks\":"
                                  "{\"type\":\"boolean\",\"value\":\"true\"}}"));
}

} // namespace qvnd::office

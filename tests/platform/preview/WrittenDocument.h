#pragma once

#include "platform/preview/OwnReading.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/ScratchFolder.h"

namespace qvnd::test {

// The document as it is read back from a file.
inline word::DocumentContent readBack(const word::DocumentContent& content) {
    const ScratchFolder folder;
    word::DocumentWriter().saveAs(folder.path() / "a.doc", content);
    return word::readDocument(folder.path() / "a.doc");
}

inline const preview::Paragraph& paragraphOf(const preview::Block& block) {
    return std::get<preview::Paragraph>(block.content);
}

inline const preview::Table& tableOf(const preview::Block& block) {
    return std::get<preview::Table>(block.content);
}

inline QString textOf(const preview::Paragraph& paragraph) {
    QString text;
    for (const preview::TextRun& run : paragraph.runs) {
        text += run.text;
    }
    return text;
}

} // namespace qvnd::test

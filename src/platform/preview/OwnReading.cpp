#include "platform/preview/OwnReading.h"

#include "platform/files/Paths.h"
#include "platform/preview/StoryReading.h"
#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/engine/DocumentSource.h"

#include <algorithm>

namespace qvnd::preview {

namespace {

// That of the first section, with margins that leave room for text.
Paper paperOf(const word::DocumentContent& document) {
    constexpr double twipsPerPoint = 20;
    constexpr double least = 72;
    constexpr double leastText = 36;
    const word::ByteView section =
        document.sections.empty() ? word::ByteView{}
                                  : document.tables.lists[document.sections.front().properties];
    const word::SectionPaper read =
        word::sectionPaper(section, word::gutterOnTop(document.settings));
    Paper paper;
    paper.width = std::max(least, read.width / twipsPerPoint);
    paper.height = std::max(least, read.height / twipsPerPoint);
    paper.left = read.left / twipsPerPoint;
    paper.right = read.right / twipsPerPoint;
    paper.top = read.top / twipsPerPoint;
    paper.bottom = read.bottom / twipsPerPoint;
    if (paper.left + paper.right > paper.width - leastText) {
        paper.left = paper.right = paper.width / 8;
    }
    if (paper.top + paper.bottom > paper.height - leastText) {
        paper.top = paper.bottom = paper.height / 8;
    }
    return paper;
}

} // namespace

DocumentReading ownReading(const word::DocumentContent& document, const ReadingLimits& limits) {
    DocumentReading reading;
    reading.paper = paperOf(document);
    ReadingContext context(document, reading);
    reading.blocks = StoryReading(context, *context.main, limits).read(reading.isCut);
    return reading;
}

DocumentReading ownReading(const QString& path, const ReadingLimits& limits) {
    return ownReading(word::readDocumentFile(files::toPath(path)), limits);
}

} // namespace qvnd::preview

#pragma once

#include "platform/preview/OwnReading.h"
#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/format/Sprm.h"

#include <QString>

#include <filesystem>

namespace qvnd::test {

// A finished document as its reader sees it: through the preview's reading, which resolves
// formatting by itself, and for what a preview does not show, through the properties in the file.
class DocumentProbe {
public:
    explicit DocumentProbe(const std::filesystem::path& file);

    // Font, size in points, boldness and alignment of the first paragraph whose text is `text`,
    // as "黑体 15 bold centre"; "none" when there is no such paragraph.
    QString lookOf(const QString& text) const;
    // The same of the `number`-th paragraph, counted from 0.
    QString lookAt(std::size_t number) const;
    // The lines of the document that are not blank, joined by "|".
    QString lines() const;
    // The lines of the contents.
    QString contents() const;
    // Whether a new page begins before the paragraph of that text.
    bool startsPage(const QString& text) const;
    // The paragraphs in a style of headings, joined by "|".
    QString headings() const;
    // How many empty paragraphs follow the one of that text; -1 when there is no such paragraph.
    int blanksBehind(const QString& text) const;
    // The indent of the first line of the paragraph of that text, in points; -1 when there is none.
    double indentOf(const QString& text) const;
    // Text and look of the first paragraph with text in the header or footer of the pages.
    QString header() const { return storyOf(word::HeaderKind::oddHeader); }
    QString footer() const { return storyOf(word::HeaderKind::oddFooter); }
    // Where the frame of the page number stands: 4 in the middle, 8 at the right ([MS-DOC] 2.6.2
    // sprmPDxaAbs, its sign turned round); 0 at the left or without a frame.
    int pageNumberSide() const;
    // The leader of the tab stops of the contents' first level; -1 without one.
    int leader() const;
    // A whole number of the section's properties, in twips; -1 when it does not say it.
    int section(word::SprmOpcode opcode) const;
    const preview::Paper& paper() const { return reading_.paper; }
    // The size of the first picture as "width x height" in whole points; "none" without one.
    QString picture() const;

private:
    const preview::Paragraph* find(const QString& text) const;
    QString describe(const preview::DocumentReading& reading,
                     const preview::Paragraph& paragraph) const;
    QString storyOf(word::HeaderKind kind) const;

    std::filesystem::path file_;
    word::DocumentContent data_;
    preview::DocumentReading reading_;
};

} // namespace qvnd::test

#pragma once

#include "platform/word/docfile/document/DocumentContent.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/formatting/SectionPaper.h"
#include "platform/word/formatting/ResolvedParagraph.h"
#include "platform/word/formatting/ResolvedText.h"

#include <QString>

#include <filesystem>
#include <vector>

namespace qvnd::test {

// A finished document as its reader sees it: formatting resolved through the styles, and what that
// does not tell, through the properties in the file.
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
    // The paragraphs at an outline level, joined by "|".
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
    // Of the first section.
    word::SectionPaper paper() const;
    // The size of the first picture as "width x height" in whole points; "none" without one.
    QString picture() const;

private:
    // A paragraph outside of tables, or what a page break leaves of it.
    struct Paragraph {
        QString text; // without blanks around it
        word::ResolvedParagraph format;
        word::ResolvedText look; // of the first text that shows something, else of the mark
        bool startsPage = false;
    };

    std::vector<Paragraph> paragraphsOf(const word::SlicedText& text) const;
    const Paragraph* find(const QString& text) const;
    QString describe(const Paragraph& paragraph) const;
    QString storyOf(word::HeaderKind kind) const;

    word::DocumentContent data_;
    std::vector<Paragraph> paragraphs_; // of the main story
};

} // namespace qvnd::test

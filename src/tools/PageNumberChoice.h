#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/drawing/FontFaces.h"
#include "platform/office/OfficePageNumbers.h"
#include "platform/word/layout/LayoutPageNumbers.h"
#include "tools/Arguments.h"
#include "tools/GenerateOptions.h"

#include <QString>

namespace qvnd::tools {

// What the option "--fonts" asks for. Throws UsageError for a value other than "here".
drawing::FontChoice fontChoice(const Arguments& arguments);
// The rules of lines that go with the fonts: those of a desktop are laid out as its office suite
// does.
layout::LayoutOptions layoutOptions(drawing::FontChoice fonts);

// The page numbers of a document by our own layout, or by the office suite where the user wishes.
class PageNumberChoice : public word::PageNumberSource {
public:
    // `messages` must outlive the object.
    PageNumberChoice(PageSource wanted, drawing::FontChoice fonts, desktop::MessageBoxes& messages);
    PageNumberChoice(const PageNumberChoice&) = delete;
    PageNumberChoice& operator=(const PageNumberChoice&) = delete;

    // False when the office suite is wanted and there is none.
    bool isOffered() const;
    // An office suite that fails, or does not answer in its time, is a message and does not end the
    // generation: our own layout gives the numbers in its place.
    std::vector<std::u16string> displayedPages(const word::DocumentContent& content,
                                               std::span<const word::Cp> positions) override;
    int pages() const override { return used_ != nullptr ? used_->pages() : 0; }
    // "layout" or "office", as it came to be; empty while no document has asked for numbers.
    QString origin() const;

private:
    PageSource wanted_;
    desktop::MessageBoxes& messages_;
    office::OfficeSuite suite_;
    office::OfficePageNumbers exact_;
    layout::LayoutPageNumbers own_;
    word::PageNumberSource* used_ = nullptr; // for the last document
};

} // namespace qvnd::tools

#pragma once

#include "generate/GenerationReport.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/LongRun.h"
#include "platform/desktop/MessageBoxes.h"
#include "platform/drawing/FontFaces.h"
#include "platform/office/OfficePageNumbers.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutPageNumbers.h"

namespace qvnd::startup {

// The word processor behind generation in a window: our own engine, with the page numbers of the
// office suite where it is installed and works, else those of our own layout; the suite converts
// documents of other formats, too. What a document loses on its way in is kept for the report and
// raises no box: there may be hundreds of documents. A user who cancels the wait for the office
// suite gets our own numbers.
class GenerationWord : public generate::GenerationRecord {
public:
    // All of it outlives the object; the suite asks `longRun` whether to stop.
    GenerationWord(desktop::MessageBoxes& messages, office::OfficeSuite suite,
                   desktop::LongRun& longRun, desktop::Events& events);

    word::ApplicationFactory& factory() { return factory_; }
    word::DocumentConverter& documents() { return documents_; }

    void clear() override { losses_.clear(); }
    const std::vector<generate::CollectedLosses::Loss>& losses() const override {
        return losses_.losses();
    }
    int pages() const override { return pages_.pages(); }
    std::optional<QString> whyEstimated() const override { return pages_.whyEstimated(); }

private:
    class Unsaved : public word::UnsavedChangesQuestion {
    public:
        explicit Unsaved(desktop::MessageBoxes& messages) : messages_(messages) {}
        bool save(const std::filesystem::path& document) override;

    private:
        desktop::MessageBoxes& messages_;
    };

    // The whole document is laid out when the progress dialog has gone already.
    class Awaited : public word::PageNumberSource {
    public:
        Awaited(word::PageNumberSource& source, desktop::LongRun& longRun, desktop::Events& events)
            : source_(source), longRun_(longRun), events_(events) {}
        std::vector<int> displayedPages(const word::DocumentContent& content,
                                        std::span<const word::Cp> positions) override;
        int pages() const override { return source_.pages(); }

    private:
        word::PageNumberSource& source_;
        desktop::LongRun& longRun_;
        desktop::Events& events_;
    };

    generate::CollectedLosses losses_;
    Unsaved unsaved_;
    pictures::PictureDecoder pictures_;
    office::SuiteDocumentConverter documents_;
    office::OfficePageNumbers exact_;
    layout::LayoutPageNumbers own_{drawing::openNamedFonts};
    office::BestPageNumbers pages_;
    Awaited awaited_;
    word::EngineApplicationFactory factory_;
};

} // namespace qvnd::startup

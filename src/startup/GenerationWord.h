#pragma once

#include "generate/GenerationReport.h"
#include "platform/desktop/Events.h"
#include "platform/desktop/LongRun.h"
#include "platform/drawing/FontFaces.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutPageNumbers.h"
#include "startup/WordBoxes.h"

#include <QElapsedTimer>

#include <functional>
#include <utility>

namespace qvnd::startup {

// The word processor behind generation in a window: our own engine, with the page numbers of our
// own layout; the office suite, where it is installed, converts documents of other formats. What a
// document loses on its way in is kept for the report and raises no box: there may be hundreds of
// documents. A user who cancels the wait for the page numbers gets estimates behind the last page.
class GenerationWord : public generate::GenerationRecord {
public:
    // All of it outlives the object; the suite asks `longRun` whether to stop. `isStopped` tells
    // whether the user has stopped the run: then no document is converted any more, and the suite
    // that ends because it asks the same raises error::stopped.
    GenerationWord(
        desktop::MessageBoxes& messages, office::OfficeSuite suite, desktop::LongRun& longRun,
        desktop::Events& events, std::function<bool()> isStopped = [] { return false; });

    word::ApplicationFactory& factory() { return factory_; }
    word::DocumentConverter& documents() { return documents_; }

    void clear() override;
    const std::vector<generate::CollectedLosses::Loss>& losses() const override {
        return losses_.losses();
    }
    int pages() const override { return own_.pages(); }
    std::optional<QString> whyEstimated() const override;

private:
    // The whole document is laid out when the progress dialog has gone already.
    class Awaited : public word::PageNumberSource {
    public:
        Awaited(layout::LayoutPageNumbers& source, desktop::LongRun& longRun,
                desktop::Events& events);
        std::vector<std::u16string> displayedPages(const word::DocumentContent& content,
                                                   std::span<const word::Cp> positions) override;
        int pages() const override { return source_.pages(); }

    private:
        bool goOn(int pages);

        layout::LayoutPageNumbers& source_;
        desktop::LongRun& longRun_;
        desktop::Events& events_;
        QElapsedTimer sinceEvents_;
    };

    class Stoppable : public word::DocumentConverter {
    public:
        Stoppable(office::OfficeSuite suite, std::function<bool()> isStopped)
            : suite_(std::move(suite)), isStopped_(std::move(isStopped)) {}
        bool isAvailable() const override { return suite_.isAvailable(); }
        word::Bytes converted(const std::filesystem::path& file) override;

    private:
        void leaveIfStopped() const;

        office::SuiteDocumentConverter suite_;
        std::function<bool()> isStopped_;
    };

    generate::CollectedLosses losses_;
    UnsavedChangesBox unsaved_;
    pictures::PictureDecoder pictures_;
    Stoppable documents_;
    layout::LayoutPageNumbers own_{drawing::openNamedFonts};
    Awaited awaited_;
    word::EngineApplicationFactory factory_;
};

} // namespace qvnd::startup

#pragma once

#include "platform/desktop/MessageBoxes.h"
#include "platform/drawing/FontFaces.h"
#include "platform/office/ConvertingWordProcessor.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutPageNumbers.h"

#include <QTemporaryDir>

namespace qvnd::startup {

// The word processor behind the outline commands: our own engine, and the office suite, if it is
// installed, for files of other formats.
class WordProcessor {
public:
    // `stop` is asked now and then while the office suite works; true ends its work.
    explicit WordProcessor(desktop::MessageBoxes& messages, office::OfficeSuite::Stop stop = {});

    word::ApplicationFactory& factory() { return factory_; }

private:
    class Losses : public word::ImportReport {
    public:
        explicit Losses(desktop::MessageBoxes& messages) : messages_(messages) {}
        void notCarried(const std::filesystem::path& path, std::u16string_view what) override;

    private:
        desktop::MessageBoxes& messages_;
    };

    class Unsaved : public word::UnsavedChangesQuestion {
    public:
        explicit Unsaved(desktop::MessageBoxes& messages) : messages_(messages) {}
        bool save(const std::filesystem::path& document) override;

    private:
        desktop::MessageBoxes& messages_;
    };

    Losses losses_;
    Unsaved unsaved_;
    layout::LayoutPageNumbers pages_{drawing::openNamedFonts};
    pictures::PictureDecoder pictures_;
    QTemporaryDir officeProfile_;
    office::OfficeSuite suite_;
    office::SuiteDocumentConverter documents_{suite_};
    word::EngineApplicationFactory engine_;
    office::ConvertingWordProcessor factory_;
};

} // namespace qvnd::startup

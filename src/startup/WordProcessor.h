#pragma once

#include "platform/drawing/FontFaces.h"
#include "platform/office/ConvertingWordProcessor.h"
#include "platform/office/SuiteDocumentConverter.h"
#include "platform/pictures/PictureDecoder.h"
#include "platform/word/engine/EngineApplication.h"
#include "platform/word/layout/LayoutPageNumbers.h"
#include "startup/WordBoxes.h"

#include <QTemporaryDir>

namespace qvnd::startup {

// The word processor behind the outline commands: our own engine, and the office suite, if it is
// installed, for files of other formats.
class WordProcessor {
public:
    // `stop` is asked now and then while the office suite works, and while pages are laid out for
    // the contents of a document that is saved: true ends the work with an error, and nothing is
    // written. It is asked while a file is read, too, where its answer counts for nothing.
    explicit WordProcessor(desktop::MessageBoxes& messages,
                           const office::OfficeSuite::Stop& stop = {});

    word::ApplicationFactory& factory() { return factory_; }

private:
    LossBoxes losses_;
    UnsavedChangesBox unsaved_;
    layout::LayoutPageNumbers pages_{drawing::openNamedFonts};
    pictures::PictureDecoder pictures_;
    QTemporaryDir officeProfile_;
    office::OfficeSuite suite_;
    office::SuiteDocumentConverter documents_{suite_};
    word::EngineApplicationFactory engine_;
    office::ConvertingWordProcessor factory_;
};

} // namespace qvnd::startup

#pragma once

#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/model/PageSetup.h"

namespace qvnd::word {

class EngineDocument;

// The page settings of all sections; lengths go into the file as twips.
class EnginePageSetup : public PageSetup {
public:
    explicit EnginePageSetup(EngineDocument& document) : document_(document) {}

    void setTopMargin(float points) override;
    void setBottomMargin(float points) override;
    void setLeftMargin(float points) override;
    void setRightMargin(float points) override;
    // A gutter that leaves room for text on top or at the side alone is taken: setGutterOnTop()
    // may follow, and tells then.
    void setGutter(float points) override;
    // Throws 4608 when a section's gutter leaves no room for text on that side; the section is then
    // without a gutter.
    void setGutterOnTop(bool onTop) override;
    void setHeaderDistance(float points) override;
    void setFooterDistance(float points) override;

private:
    // Throws 4608 for a length that no page has. A section whose text would have no room left
    // keeps its own length; the others take the new one, and 4608 is thrown behind that.
    void setLength(SprmOpcode opcode, float points);

    EngineDocument& document_;
};

} // namespace qvnd::word

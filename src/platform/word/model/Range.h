#pragma once

#include "platform/word/model/Format.h"

namespace qvnd::word {

class Range {
public:
    virtual ~Range() = default;
    virtual int Start() = 0;
    virtual int End() = 0;
    // Makes the range the selection.
    virtual void Select() = 0;
    virtual word::Font& Font() = 0;
    virtual word::ParagraphFormat& ParagraphFormat() = 0;
};

} // namespace qvnd::word

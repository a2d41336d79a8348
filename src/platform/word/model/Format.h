#pragma once

#include <string_view>

namespace qvnd::word {

enum class Alignment { left = 0, center = 1, right = 2 };

class Font {
public:
    virtual ~Font() = default;
    virtual void setName(std::u16string_view name) = 0;
    virtual void setSize(float points) = 0;
    virtual void setBold(bool bold) = 0;
};

class ParagraphFormat {
public:
    virtual ~ParagraphFormat() = default;
    virtual void setAlignment(Alignment alignment) = 0;
    // Changes the indent by that many character widths; a negative count takes it back.
    virtual void IndentCharWidth(int count) = 0;
};

class Style {
public:
    virtual ~Style() = default;
    virtual word::Font& Font() = 0;
    virtual word::ParagraphFormat& ParagraphFormat() = 0;
};

} // namespace qvnd::word

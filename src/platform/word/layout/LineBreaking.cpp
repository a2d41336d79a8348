#include "platform/word/layout/LineBreaking.h"

#include "platform/word/layout/TextWidth.h"

#include <algorithm>

namespace qvnd::word {

namespace {

constexpr int defaultTab = 420; // twips
constexpr int narrowest = 200;  // no line is narrower than this

// Fills one line after the other.
class Lines {
public:
    Lines(const ParagraphPlace& place, int width)
        : place_(place), width_(std::max(narrowest, width - place.left - place.right)),
          used_(place.firstLine) {}

    void add(char16_t c, const CharacterSize& size) {
        if (insideFieldCode(c) || size.hidden) {
            return;
        }
        if (c == u'\v') {
            end(size);
        } else if (c == 1 && size.pictureHeight > 0) {
            addBox(std::min(size.pictureWidth, width_), scaledHeight(size));
        } else if (c == u'\t') {
            addBox(defaultTab - std::max(0, used_) % defaultTab, textHeight(c, size));
        } else if (c >= 0x20) {
            addBox(characterWidth(c) * size.halfPoints / 100, textHeight(c, size));
        }
        if (breaksBehind(c)) {
            word_ = 0;
        }
    }

    std::vector<int> take(const CharacterSize& markSize) {
        end(markSize);
        return std::move(heights_);
    }

private:
    // Inside a field's code, up to its separator, nothing shows.
    bool insideFieldCode(char16_t c) {
        if (c == 0x13) {
            fieldShows_.push_back(false);
            ++codes_;
        } else if ((c == 0x14 || c == 0x15) && !fieldShows_.empty()) {
            codes_ -= fieldShows_.back() ? 0 : 1;
            fieldShows_.back() = true;
            if (c == 0x15) {
                fieldShows_.pop_back();
            }
        }
        return codes_ > 0;
    }

    static int textHeight(char16_t c, const CharacterSize& size) {
        return lineHeight(size.halfPoints * 10, isEastAsian(c));
    }

    int scaledHeight(const CharacterSize& size) const {
        return size.pictureWidth <= width_ ? size.pictureHeight
                                           : static_cast<int>(std::int64_t{size.pictureHeight} *
                                                              width_ / size.pictureWidth);
    }

    void addBox(int width, int height) {
        if (used_ > 0 && used_ + width > width_) {
            const int carried = word_ < used_ ? word_ : 0; // the word goes on in the next line
            finishLine();
            used_ = carried;
        }
        used_ += width;
        word_ += width;
        height_ = std::max(height_, height);
    }

    void finishLine() {
        heights_.push_back(spaced(height_));
        height_ = 0;
        used_ = 0;
    }

    void end(const CharacterSize& size) {
        height_ = height_ == 0 ? lineHeight(size.halfPoints * 10, true) : height_;
        finishLine();
        word_ = 0;
    }

    int spaced(int height) const {
        if (place_.lineIsMultiple) {
            return height * std::max(1, place_.lineValue) / 240;
        }
        return place_.lineValue < 0 ? -place_.lineValue : std::max(height, place_.lineValue);
    }

    const ParagraphPlace& place_;
    int width_;
    int used_;
    int word_ = 0; // of the line, the part behind the last place for a break
    int height_ = 0;
    std::vector<bool> fieldShows_; // of the open fields: whether the result has begun
    std::size_t codes_ = 0;        // how many of them are still in their code
    std::vector<int> heights_;
};

} // namespace

std::vector<int> lineHeights(const std::vector<SizedText>& paragraph, const ParagraphPlace& place,
                             int width) {
    Lines lines(place, width);
    const CharacterSize plain;
    const CharacterSize* last = &plain;
    for (const SizedText& part : paragraph) {
        last = part.size;
        for (Cp i = 0; i < part.length; ++i) {
            lines.add(part.text[i], *part.size);
        }
    }
    return lines.take(*last);
}

} // namespace qvnd::word

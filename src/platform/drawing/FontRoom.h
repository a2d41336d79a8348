#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <functional>
#include <string>

namespace qvnd::drawing {

// Gives all fonts of a PDF that Cairo writes one ascent and one descent. Readers of a PDF put words
// into lines by the room of their fonts: with each font's own, the Chinese and the Latin words of
// one line are two lines to them, and come in the wrong order when they are copied or searched.
// The room is that of a line of Chinese text, 1.3 times the font size.
class FontRoom {
public:
    using WriteBytes = std::function<void(word::ByteView)>;
    explicit FontRoom(WriteBytes write) : write_(std::move(write)) {}

    // The next bytes of the file; they are handed on with the entries changed in place, so that
    // nothing in the file moves.
    void take(word::ByteView bytes);
    // Hands on the rest.
    void finish();

private:
    void change();
    void handOn(std::size_t count);

    WriteBytes write_;
    std::string held_; // may begin an entry
};

} // namespace qvnd::drawing

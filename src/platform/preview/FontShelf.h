#pragma once

#include "platform/drawing/FontFaces.h"

#include <memory>
#include <mutex>
#include <utility>

namespace qvnd::preview {

// Fonts that have been found and measured, kept from one document to the next. May be used by any
// thread.
class FontShelf {
public:
    // Those that were given back last, or new ones. Throws as FontFaces does.
    std::unique_ptr<drawing::FontFaces> take() {
        {
            const std::scoped_lock guard(lock_);
            if (fonts_) {
                return std::exchange(fonts_, nullptr);
            }
        }
        return std::make_unique<drawing::FontFaces>(drawing::FontChoice::named);
    }
    void giveBack(std::unique_ptr<drawing::FontFaces> fonts) {
        const std::scoped_lock guard(lock_);
        fonts_ = std::move(fonts);
    }

private:
    std::mutex lock_;
    std::unique_ptr<drawing::FontFaces> fonts_;
};

} // namespace qvnd::preview

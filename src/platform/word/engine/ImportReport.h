#pragma once

#include <filesystem>
#include <string_view>

namespace qvnd::word {

// Hears what became of a document on its way into another one, a line of Chinese for the user each.
class ImportReport {
public:
    virtual ~ImportReport() = default;
    // One thing that stayed behind.
    virtual void notCarried(const std::filesystem::path& path, std::u16string_view what) = 0;
    // The file is of another format and was converted.
    virtual void converted(const std::filesystem::path& path, std::u16string_view what) {
        notCarried(path, what);
    }
    // One kind of thing that got other numbers or names, and why.
    virtual void changed(const std::filesystem::path& /*path*/, std::u16string_view /*what*/) {}
};

} // namespace qvnd::word

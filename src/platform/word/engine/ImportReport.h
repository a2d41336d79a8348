#pragma once

#include <filesystem>
#include <string_view>

namespace qvnd::word {

// Hears what of a document could not be carried into another one.
class ImportReport {
public:
    virtual ~ImportReport() = default;
    // One thing that stayed behind, in Chinese, for the user.
    virtual void notCarried(const std::filesystem::path& path, std::u16string_view what) = 0;
};

} // namespace qvnd::word

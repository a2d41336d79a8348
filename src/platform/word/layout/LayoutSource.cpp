#include "platform/word/layout/LayoutSource.h"

namespace qvnd::layout {

namespace {

constexpr std::uint8_t fileNameField = 0x1D;
constexpr std::uint8_t dateField = 0x1F;
constexpr std::uint8_t timeField = 0x20;

// [ECMA-376] part 1, 17.16.5.22.
std::u16string fileNameShown(std::u16string_view instruction, std::u16string_view path) {
    const bool wantsPath = instruction.find(u"\\p") != std::u16string_view::npos;
    const auto folderEnd = path.find_last_of(u"/\\");
    const bool isWhole = wantsPath || folderEnd == std::u16string_view::npos;
    return std::u16string(isWhole ? path : path.substr(folderEnd + 1));
}

} // namespace

LayoutOptions officeOptions() {
    LayoutOptions options;
    options.latinGap = 0.2;
    options.marksCount = false;
    options.officeLines = true;
    return options;
}

std::optional<std::u16string> resultAnew(const LayoutSource& source, std::uint8_t type,
                                         std::u16string_view instruction) {
    const bool isDate = type == dateField || type == timeField;
    if (isDate && source.now) {
        return word::dateShown(instruction, *source.now);
    }
    if (type == fileNameField && !source.path.empty()) {
        return fileNameShown(instruction, source.path);
    }
    return std::nullopt;
}

LayoutSource sourceOf(const word::DocumentContent& document) {
    return {&document.tables, word::joined(document.main), document.sections, document.headers,
            document.settings};
}

LayoutSource sourceOfToday(const word::DocumentContent& document) {
    LayoutSource source = sourceOf(document);
    source.now = word::localMoment();
    return source;
}

} // namespace qvnd::layout

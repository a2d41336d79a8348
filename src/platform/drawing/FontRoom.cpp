#include "platform/drawing/FontRoom.h"

#include <string_view>

namespace qvnd::drawing {

namespace {

// A font's entries as Cairo writes them, with line ends and blanks between.
constexpr std::string_view first = "/Ascent ";
constexpr std::string_view behind = "/CapHeight ";
constexpr std::string_view room = "/Ascent 950 /Descent -350 ";
constexpr std::size_t longest = 80; // from one to the other

} // namespace

void FontRoom::take(word::ByteView bytes) {
    held_.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    change();
    if (held_.size() > longest) {
        handOn(held_.size() - longest);
    }
}

void FontRoom::finish() { handOn(held_.size()); }

void FontRoom::change() {
    for (auto at = held_.find(first); at != std::string::npos; at = held_.find(first, at + 1)) {
        const auto end = held_.find(behind, at);
        const bool isWhole = end != std::string::npos && end - at <= longest;
        if (isWhole && end - at >= room.size()) {
            held_.replace(at, end - at, std::string(room).append(end - at - room.size(), ' '));
        }
    }
}

void FontRoom::handOn(std::size_t count) {
    if (count > 0) {
        write_(word::ByteView(reinterpret_cast<const std::uint8_t*>(held_.data()), count));
        held_.erase(0, count);
    }
}

} // namespace qvnd::drawing

#pragma once

#include <string>
#include <string_view>

namespace qvnd::word {

// The name in lower case, for comparisons that ignore the case of Latin letters.
inline std::u16string foldedName(std::u16string_view name) {
    std::u16string folded(name);
    for (char16_t& character : folded) {
        if (character >= u'A' && character <= u'Z') {
            character = static_cast<char16_t>(character + (u'a' - u'A'));
        }
    }
    return folded;
}

} // namespace qvnd::word

#include "platform/drawing/metafile/CodePages.h"

#include "platform/word/formatting/Symbols.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <memory>

namespace qvnd::drawing::metafile {

namespace {

struct CodePage {
    unsigned charset;
    const char* name;
    bool isDoubleByte;
};

constexpr std::array<CodePage, 13> codePages{{
    {0x80, "CP932", true},
    {0x81, "CP949", true},
    {0x86, "GB18030", true},
    {0x88, "CP950", true},
    {0xA1, "CP1253", false},
    {0xA2, "CP1254", false},
    {0xA3, "CP1258", false},
    {0xB1, "CP1255", false},
    {0xB2, "CP1256", false},
    {0xBA, "CP1257", false},
    {0xCC, "CP1251", false},
    {0xDE, "CP874", false},
    {0xEE, "CP1250", false},
}};

CodePage codePageOf(unsigned charset) {
    for (const CodePage& page : codePages) {
        if (page.charset == charset) {
            return page;
        }
    }
    return {charset, "CP1252", false};
}

// The converter of one code page; closed with the object.
class Converter {
public:
    explicit Converter(const char* page) : handle_(iconv_open("UTF-16LE", page)) {}
    ~Converter() {
        if (isOpen()) {
            iconv_close(handle_);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const {
        return handle_ != reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    }
    // One character; empty for bytes that mean none.
    std::u16string character(word::ByteView bytes) {
        std::array<char, 2> from{};
        std::copy(bytes.begin(), bytes.end(), from.begin());
        std::array<char, 8> to{};
        char* in = from.data();
        char* out = to.data();
        std::size_t inLeft = bytes.size();
        std::size_t outLeft = to.size();
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        if (iconv(handle_, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
            return {};
        }
        std::u16string result;
        for (std::size_t i = 0; i + 1 < to.size() - outLeft; i += 2) {
            const auto low = static_cast<std::uint8_t>(to[i]);
            const auto high = static_cast<std::uint8_t>(to[i + 1]);
            result += static_cast<char16_t>(low | (high << 8));
        }
        return result;
    }

private:
    iconv_t handle_;
};

} // namespace

std::u16string decodedText(word::ByteView bytes, unsigned charset,
                           std::vector<unsigned>& unitsOfByte) {
    constexpr unsigned symbols = 2;
    constexpr std::uint8_t firstOfTwo = 0x81;
    unitsOfByte.assign(bytes.size(), 0);
    const CodePage page = codePageOf(charset);
    Converter converter(page.name);
    std::u16string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::u16string character;
        std::size_t taken = 1;
        if (bytes[i] < 0x80 || charset == symbols || !converter.isOpen()) {
            character = static_cast<char16_t>(bytes[i]);
        } else {
            const bool isPair = page.isDoubleByte && bytes[i] >= firstOfTwo && i + 1 < bytes.size();
            taken = isPair ? 2 : 1;
            character = converter.character(bytes.subspan(i, taken));
        }
        unitsOfByte[i] = static_cast<unsigned>(character.size());
        text += character;
        i += taken - 1;
    }
    return text;
}

std::vector<double> advancesOfUnits(const std::vector<unsigned>& unitsOfByte,
                                    std::span<const double> advancesOfBytes) {
    std::vector<double> advances;
    if (advancesOfBytes.size() < unitsOfByte.size()) {
        return advances;
    }
    std::size_t character = 0; // its first code unit, which has the advance
    for (std::size_t i = 0; i < unitsOfByte.size(); ++i) {
        if (unitsOfByte[i] > 0) {
            character = advances.size();
            advances.resize(advances.size() + unitsOfByte[i], 0);
        }
        if (character < advances.size()) {
            advances[character] += advancesOfBytes[i];
        }
    }
    return advances;
}

std::u16string shownText(std::u16string text, const std::u16string& font) {
    if (word::isSymbolFont(font)) {
        for (char16_t& c : text) {
            c = word::symbolAsText(c, font);
        }
    }
    return text;
}

} // namespace qvnd::drawing::metafile

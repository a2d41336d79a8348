#include "platform/jet/legacy/JetText.h"

#include "platform/files/TextDecoding.h"

#include <algorithm>
#include <array>
#include <optional>

namespace qvnd::jet::legacy {

namespace {

// What code page 1252 has at 0x80 to 0x9F; 0 for the five bytes that it leaves out.
constexpr std::array<char16_t, 32> western = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
constexpr int westernFrom = 0x80;

char16_t westernCharacter(unsigned char byte) {
    const auto index = static_cast<std::size_t>(byte - westernFrom);
    return byte >= westernFrom && index < western.size() && western[index] != 0 ? western[index]
                                                                                : byte;
}

std::optional<unsigned char> westernByte(char16_t character) {
    const auto found = std::find(western.begin(), western.end(), character);
    if (character != 0 && found != western.end()) {
        return static_cast<unsigned char>(westernFrom + (found - western.begin()));
    }
    return character <= 0xFF ? std::optional(static_cast<unsigned char>(character)) : std::nullopt;
}

struct Pairs {
    int all = 0;
    int common = 0;
    bool whole = true; // no byte is left without its partner
};

Pairs pairsIn(const QByteArray& bytes) {
    Pairs pairs;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < westernFrom) {
            continue;
        }
        const int trail = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
        if (lead < 0x81 || lead > 0xFE || trail < 0x40 || trail == 0x7F || trail > 0xFE) {
            pairs.whole = false;
            return pairs;
        }
        ++pairs.all;
        const bool assigned = (lead >= 0xA1 && lead <= 0xA9) || (lead >= 0xB0 && lead <= 0xF7);
        pairs.common += assigned && trail >= 0xA1 ? 1 : 0;
        ++i;
    }
    return pairs;
}

} // namespace

QString textOfBytes(const QByteArray& bytes, int codePage) {
    const Pairs pairs = pairsIn(bytes);
    if (codePage == simplifiedChinese || (pairs.whole && pairs.common * 2 >= pairs.all)) {
        return files::decodeGbk(bytes);
    }
    QString text;
    for (const char byte : bytes) {
        text += QChar(westernCharacter(static_cast<unsigned char>(byte)));
    }
    return text;
}

QString mendedText(const QString& text) {
    QByteArray bytes;
    for (const QChar character : text) {
        const auto byte = westernByte(character.unicode());
        if (!byte) {
            return text;
        }
        bytes += static_cast<char>(*byte);
    }
    const Pairs pairs = pairsIn(bytes);
    return pairs.whole && pairs.all > 0 && pairs.common == pairs.all ? files::decodeGbk(bytes)
                                                                     : text;
}

} // namespace qvnd::jet::legacy

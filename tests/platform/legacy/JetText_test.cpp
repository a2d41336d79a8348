#include "platform/jet/legacy/JetText.h"

#include "platform/files/TextDecoding.h"
#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::jet::legacy;

namespace {

constexpr int western = 1252;

QString western1252(const QByteArray& bytes) {
    // As a converter takes GBK bytes for western ones.
    QString text;
    for (const char byte : bytes) {
        text += QChar(static_cast<unsigned char>(byte));
    }
    return text;
}

TEST(JetTexts, BytesThatAreGbkAreChineseThoughTheFileSaysWestern) {
    EXPECT_EQ(textOfBytes(files::encodeGbk("滨江工程.1.2 施工部署（一）"), western),
              "滨江工程.1.2 施工部署（一）");
    EXPECT_EQ(textOfBytes(files::encodeGbk("朱镕基"), western), "朱镕基");
    EXPECT_EQ(textOfBytes("plain", western), "plain");
    EXPECT_EQ(textOfBytes("", western), "");
}

TEST(JetTexts, BytesThatCannotBeGbkAreWestern) {
    EXPECT_EQ(textOfBytes("Caf\xE9", western), "Café");
    EXPECT_EQ(textOfBytes("citt\xE0 di", western), "città di");
    EXPECT_EQ(textOfBytes("\x80 5", western), "€ 5");
    EXPECT_EQ(textOfBytes("r\xE9sum\xE9s", western), "résumés");
    EXPECT_EQ(textOfBytes("\x81 5", western), "\u0081 5");
    EXPECT_EQ(textOfBytes("\x9F 5", western), "Ÿ 5");
}

TEST(JetTexts, BytesAreChineseWhenHalfOfThemAreCommonCharactersAndWesternWhenFewerAre) {
    EXPECT_EQ(textOfBytes(files::encodeGbk("镕基"), western), "镕基");
    EXPECT_NE(textOfBytes(files::encodeGbk("镕基镕"), western), "镕基镕");
}

TEST(JetTexts, APairBeginsWith81ToFEAndEndsWith40ToFEBut7F) {
    struct Pair {
        const char* bytes;
        bool isPair;
    };
    for (const Pair& pair :
         {Pair{"\x81\x40", true}, Pair{"\x80\x40", false}, Pair{"\xFE\x40", true},
          Pair{"\xFF\x40", false}, Pair{"\x81\x3F", false}, Pair{"\x81\x7E", true},
          Pair{"\x81\x7F", false}, Pair{"\x81\x80", true}, Pair{"\x81\xFE", true},
          Pair{"\x81\xFF", false}}) {
        const QByteArray bytes = files::encodeGbk("你好") + pair.bytes;
        EXPECT_EQ(textOfBytes(bytes, western).startsWith("你好"), pair.isPair)
            << bytes.toHex().toStdString();
    }
}

TEST(JetTexts, CommonAreTheSignsAndTheCharactersOfTheFirstStandard) {
    for (const char* common : {"\xA1\xA2", "\xA9\xA4", "\xB0\xA1", "\xF7\xFE"}) {
        const QString seen = western1252(common);
        EXPECT_EQ(mendedText(seen), files::decodeGbk(common)) << seen.toStdString();
    }
    for (const char* rare : {"\xA8\x96", "\xAA\xA1", "\xAF\xA1", "\xB0\xA0", "\xF8\xA1"}) {
        const QString seen = western1252(rare);
        EXPECT_EQ(mendedText(seen), seen) << seen.toStdString();
    }
}

TEST(JetTexts, WithTheChineseCodePageAllBytesAreGbk) {
    EXPECT_EQ(textOfBytes(files::encodeGbk("镕"), simplifiedChinese), "镕");
}

TEST(JetTexts, WesternLookingUnicodeOfChineseBytesIsSetRight) {
    EXPECT_EQ(mendedText("ÖÐ¹ú"), "中国");
    EXPECT_EQ(mendedText(western1252(files::encodeGbk("滨江工程.1"))), "滨江工程.1");
    EXPECT_EQ(mendedText("¹¤³Ì a"), "工程 a");
}

TEST(JetTexts, EveryOtherUnicodeStays) {
    for (const char* text :
         {"普林斯顿大学", "Café", "résumés", "plain", "", "20°", "中国ÖÐ", "A·B", "±0.000", "😀"}) {
        EXPECT_EQ(mendedText(text), text) << text;
    }
}

} // namespace

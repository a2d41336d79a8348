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
}

TEST(JetTexts, BytesAreChineseWhenHalfOfThemAreCommonCharactersAndWesternWhenFewerAre) {
    EXPECT_EQ(textOfBytes(files::encodeGbk("镕基"), western), "镕基");
    EXPECT_NE(textOfBytes(files::encodeGbk("镕基镕"), western), "镕基镕");
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

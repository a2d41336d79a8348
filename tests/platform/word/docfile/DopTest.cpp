#include "platform/word/docfile/format/Dop.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

TEST(Dop, ANewDocumentHasTheSettingsOfAChineseOne) {
    const Bytes settings = defaultDop();
    EXPECT_EQ(settings.size(), 616U);
    EXPECT_EQ(readDop(settings, dop::defaultTab), 420U);
    EXPECT_EQ(readDop(settings, dop::facingPages), 0U);
    EXPECT_EQ(readDop(settings, dop::gutterAtTop), 0U);
    EXPECT_EQ(readDop(settings, dop::footnotePlace), 1U);
    EXPECT_EQ(readDop(settings, dop::firstFootnote), 1U);
    EXPECT_EQ(readDop(settings, dop::footnoteRestart), 0U);
    EXPECT_EQ(readDop(settings, dop::viewKind), 1U);
    EXPECT_EQ(readDop(settings, dop::zoomPercent), 100U);
}

TEST(Dop, TheGutterIsTheTopmostBitOfTheViewWord) {
    Bytes settings = defaultDop();
    const Bytes before = settings;
    writeDop(settings, dop::gutterAtTop, 1);
    EXPECT_EQ(settings.at(83), before.at(83) | 0x80);
    EXPECT_EQ(readDop(settings, dop::zoomPercent), 100U);
    writeDop(settings, dop::gutterAtTop, 0);
    EXPECT_EQ(settings, before);
}

TEST(Dop, AFieldChangesNoOtherBit) {
    Bytes settings(616, 0xFF);
    writeDop(settings, dop::firstFootnote, 0);
    EXPECT_EQ(settings.at(1), 0xFF);
    EXPECT_EQ(settings.at(2), 0x03);
    EXPECT_EQ(settings.at(3), 0x00);
    EXPECT_EQ(settings.at(4), 0xFF);
}

TEST(Dop, BitsThatAFieldCannotHoldAreDropped) {
    Bytes settings(616, 0);
    writeDop(settings, dop::facingPages, 0xFFFFFFFE);
    EXPECT_EQ(settings, Bytes(616, 0));
    writeDop(settings, dop::created, 0xFFFFFFFF);
    EXPECT_EQ(readDop(settings, dop::created), 0xFFFFFFFFU);
    EXPECT_EQ(settings.at(19) + settings.at(24), 0);
}

TEST(Dop, SettingsOfAnOlderFileAreCompletedByTheDefaults) {
    const Bytes old(500, 0);
    const Bytes settings = dopOfWord2003(old);
    EXPECT_EQ(settings.size(), 616U);
    EXPECT_EQ(readDop(settings, dop::defaultTab), 0U);
    EXPECT_EQ(readDop(settings, dop::tableStyle), 0x0FFFU);
}

TEST(Dop, SettingsOfALaterFileAreCutToWhatWord2003Knows) {
    EXPECT_EQ(dopOfWord2003(Bytes(694, 7)), Bytes(616, 7));
}

TEST(Dop, WhatLiesBehindTheEndReadsAsZeroAndGrowsWhenWritten) {
    Bytes none;
    EXPECT_EQ(readDop(none, dop::gutterAtTop), 0U);
    writeDop(none, dop::gutterAtTop, 1);
    EXPECT_EQ(none.size(), 616U);
    EXPECT_EQ(readDop(none, dop::gutterAtTop), 1U);
    EXPECT_EQ(readDop(none, dop::defaultTab), 420U);
}

} // namespace
} // namespace qvnd::word

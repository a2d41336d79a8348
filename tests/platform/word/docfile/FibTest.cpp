#include "platform/word/docfile/format/Fib.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/FormatError.h"

#include "support/Corpus.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace qvnd::word {
namespace {

FormatError::Kind refusal(const Bytes& stream) {
    try {
        readFib(stream);
    } catch (const FormatError& error) {
        return error.kind();
    }
    ADD_FAILURE() << "the FIB was accepted";
    return FormatError::Kind::unreadable;
}

Bytes encodedWith(std::size_t at, std::uint8_t value) {
    Bytes stream = encodeFib(Fib{});
    stream.at(at) = value;
    return stream;
}

TEST(Fib, ReadsBackWhatItWrites) {
    Fib fib;
    fib.fComplex = true;
    fib.fHasPic = true;
    fib.cbMac = 123456;
    fib.ccp = {1000, 1, 20, 0, 3, 4, 5, 6};
    fib.set(FibPair::Clx, {77, 21});
    fib.set(FibPair::Afd, {99, 3});

    const Bytes bytes = encodeFib(fib);
    const Fib read = readFib(bytes);

    EXPECT_TRUE(read.fComplex);
    EXPECT_TRUE(read.fHasPic);
    EXPECT_TRUE(read.fExtChar);
    EXPECT_FALSE(read.fDot);
    EXPECT_EQ(read.cbMac, 123456U);
    EXPECT_EQ(read.ccp, fib.ccp);
    EXPECT_EQ(read.at(FibPair::Clx), (FcLcb{77, 21}));
    EXPECT_EQ(read.at(FibPair::Afd), (FcLcb{99, 3}));
    EXPECT_EQ(encodeFib(read), bytes);
}

TEST(Fib, SaysWord97InItsBaseAndWord2003InItsNewPart) {
    const Bytes bytes = encodeFib(Fib{});
    EXPECT_EQ(bytes.at(0), 0xEC);
    EXPECT_EQ(bytes.at(1), 0xA5);
    EXPECT_EQ(bytes.at(2), 0xC1);
    EXPECT_EQ(bytes.at(3), 0x00);
    EXPECT_EQ(bytes.at(152), 0xA4); // cbRgFcLcb
    EXPECT_EQ(bytes.size(), 154U + 0xA4 * 8 + 2 + 4);
    const Fib read = readFib(bytes);
    EXPECT_EQ(read.nFib, Fib::word2003);
    EXPECT_EQ(read.pairs.size(), 0xA4U);
    EXPECT_EQ(std::u16string(read.tableStreamName()), u"1Table");
}

TEST(Fib, EveryPairHasItsPlaceOnDisk) {
    EXPECT_EQ(static_cast<int>(FibPair::PlcfBteChpx), 12);
    EXPECT_EQ(static_cast<int>(FibPair::Dop), 31);
    EXPECT_EQ(static_cast<int>(FibPair::Clx), 33);
    EXPECT_EQ(static_cast<int>(FibPair::DggInfo), 50);
    EXPECT_EQ(static_cast<int>(FibPair::PlfLst), 73);
    EXPECT_EQ(static_cast<int>(FibPair::SttbListNames), 91);
    EXPECT_EQ(static_cast<int>(FibPair::SttbfUssr), 92);
    EXPECT_EQ(static_cast<int>(FibPair::BkdEdnOld), 107);
    EXPECT_EQ(static_cast<int>(FibPair::PlcflvcMixedXP), 135);
    EXPECT_EQ(static_cast<int>(FibPair::Afd), 163);
    EXPECT_EQ(static_cast<int>(FibPair::ColorSchemeMapping), 182);
}

TEST(Fib, APairThatTheFileDoesNotHaveIsEmpty) {
    EXPECT_EQ(Fib{}.at(FibPair::ColorSchemeMapping), (FcLcb{0, 0}));
}

TEST(Fib, WordSixAndNinetyFiveAreOlder) {
    EXPECT_EQ(refusal(encodedWith(0, 0xDC)), FormatError::Kind::olderThanWord97);
    EXPECT_EQ(refusal(encodedWith(2, 0x68)), FormatError::Kind::olderThanWord97);
    EXPECT_EQ(refusal(encodedWith(2, 0xBF)), FormatError::Kind::olderThanWord97);
}

TEST(Fib, TheMagicNumbersOfOlderVersionsAreThreeAndTwo) {
    const auto refusalOf = [](unsigned magic) {
        Bytes stream = encodedWith(0, static_cast<std::uint8_t>(magic));
        stream.at(1) = static_cast<std::uint8_t>(magic >> 8);
        return refusal(stream);
    };
    for (const unsigned older : {0xA5DBU, 0xA5DCU, 0xA697U, 0xA698U, 0xA699U}) {
        EXPECT_EQ(refusalOf(older), FormatError::Kind::olderThanWord97) << older;
    }
    for (const unsigned other : {0xA5DAU, 0xA5DDU, 0xA696U, 0xA69AU}) {
        EXPECT_EQ(refusalOf(other), FormatError::Kind::notWord) << other;
    }
}

TEST(Fib, TheFirstBuildsOfWord97AreRead) {
    EXPECT_EQ(readFib(encodedWith(2, 0xC0)).nFib, Fib::word2003);
}

TEST(Fib, AnOldFileThatIsEncryptedIsEncryptedInTheFirstPlace) {
    Bytes stream = encodedWith(2, 0x65);
    stream.at(11) |= 0x01;
    EXPECT_EQ(refusal(stream), FormatError::Kind::encrypted);
    stream.resize(11); // too short to tell
    EXPECT_EQ(refusal(stream), FormatError::Kind::olderThanWord97);
}

TEST(Fib, EncryptedAndObfuscatedFilesAreEncrypted) {
    Fib encrypted;
    encrypted.fEncrypted = true;
    EXPECT_EQ(refusal(encodeFib(encrypted)), FormatError::Kind::encrypted);
    encrypted.fObfuscated = true;
    EXPECT_EQ(refusal(encodeFib(encrypted)), FormatError::Kind::encrypted);
}

TEST(Fib, AnotherMagicNumberIsNotWord) {
    EXPECT_EQ(refusal(encodedWith(0, 0x00)), FormatError::Kind::notWord);
}

TEST(Fib, AFibThatEndsTooEarlyIsDamaged) {
    EXPECT_EQ(refusal({}), FormatError::Kind::damaged);
    Bytes cut = encodeFib(Fib{});
    cut.resize(100);
    EXPECT_EQ(refusal(cut), FormatError::Kind::damaged);
}

TEST(Fib, PairsBeyondTheEndOfTheStreamAreLeftOut) {
    Bytes cut = encodeFib(Fib{});
    cut.resize(154 + 40 * 8);
    EXPECT_EQ(readFib(cut).pairs.size(), 40U);
}

TEST(Fib, NegativeCountsAreTakenAsNone) {
    Fib fib;
    fib.ccp.text = 5;
    fib.ccp.headers = 0xFFFFFFFF;
    const Fib read = readFib(encodeFib(fib));
    EXPECT_EQ(read.ccp.text, 5U);
    EXPECT_EQ(read.ccp.headers, 0U);
}

TEST(Fib, EveryRealDocumentIsReadOrRefusedWithAReason) {
    std::size_t read = 0;
    for (const auto& path : test::foreignDocuments()) {
        try {
            const CompoundFile file = CompoundFile::open(path);
            if (!file.has(u"WordDocument")) {
                continue;
            }
            const Fib fib = readFib(file.stream(u"WordDocument"));
            if (!file.has(fib.tableStreamName())) {
                continue;
            }
            const Bytes table = file.stream(fib.tableStreamName());
            const FcLcb clx = fib.at(FibPair::Clx);
            read += std::uint64_t{clx.fc} + clx.lcb <= table.size() ? 1 : 0;
        } catch (const FormatError& error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
    EXPECT_GT(read, test::foreignDocuments().size() / 2);
}

TEST(Fib, WhatIsTooShortForAVersionIsNoOldFile) {
    const Bytes old{0xEC, 0xA5, 0x68, 0x00};
    EXPECT_TRUE(isOlderThanWord97(old));
    EXPECT_FALSE(isOlderThanWord97(ByteView(old).first(3)));
    EXPECT_FALSE(isOlderThanWord97({}));
    EXPECT_FALSE(isOlderThanWord97(encodeFib(Fib{})));
}

TEST(Fib, EachFlagIsABitOfItsOwn) {
    const auto flagsOf = [](const Fib& fib) {
        return std::vector<bool>{fib.fDot,
                                 fib.fGlsy,
                                 fib.fComplex,
                                 fib.fHasPic,
                                 fib.fWhichTblStm,
                                 fib.fReadOnlyRecommended,
                                 fib.fWriteReservation,
                                 fib.fFarEast};
    };
    constexpr std::array<unsigned, 8> bits{0x0001, 0x0002, 0x0004, 0x0008,
                                           0x0200, 0x0400, 0x0800, 0x4000};
    constexpr std::size_t flagsAt = 10;
    Fib none;
    none.fWhichTblStm = false;
    for (std::size_t i = 0; i < bits.size(); ++i) {
        Bytes stream = encodeFib(none);
        stream.at(flagsAt) |= static_cast<std::uint8_t>(bits[i]);
        stream.at(flagsAt + 1) |= static_cast<std::uint8_t>(bits[i] >> 8);
        std::vector<bool> expected = flagsOf(none);
        expected[i] = true;
        const Fib read = readFib(stream);
        EXPECT_EQ(flagsOf(read), expected) << i;
        EXPECT_EQ(encodeFib(read), stream) << i;
    }
}

} // namespace
} // namespace qvnd::word

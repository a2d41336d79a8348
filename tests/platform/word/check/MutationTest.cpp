#include "platform/word/check/SoundDocument.h"

#include <gtest/gtest.h>

#include <random>

namespace qvnd::test {
namespace {

using namespace word;

// A real part changed everywhere: the table stream, whose every byte means something.
TEST(CheckerMutation, EveryByteOfTheTableStreamMayBeWrong) {
    const WordStreams sound = SoundDocument().streams();
    for (const std::uint8_t wrong : {0x00, 0xFF}) {
        for (std::size_t at = 0; at < sound.table.size(); ++at) {
            WordStreams streams = sound;
            streams.table[at] = wrong;
            brokenRules(compoundFile(streams));
        }
    }
    EXPECT_TRUE(brokenRules(compoundFile(sound)).empty());
}

TEST(CheckerMutation, EveryByteOfTheContainerMayBeWrong) {
    const Bytes sound = SoundDocument().bytes();
    for (std::size_t at = 0; at < sound.size(); at += 7) {
        Bytes file = sound;
        file[at] = static_cast<std::uint8_t>(~file[at]);
        brokenRules(file);
    }
    EXPECT_TRUE(brokenRules(sound).empty());
}

TEST(CheckerMutation, EveryCutIsFound) {
    const Bytes sound = SoundDocument().bytes();
    for (std::size_t size = 0; size < sound.size(); size += 8) {
        const Bytes cut(sound.begin(), sound.begin() + static_cast<long>(size));
        EXPECT_FALSE(brokenRules(cut).empty()) << size;
    }
}

TEST(CheckerMutation, ChangesOfChanceAreSurvived) {
    const Bytes sound = SoundDocument().bytes();
    std::mt19937 chance(7);
    for (int round = 0; round < 1000; ++round) {
        Bytes file = sound;
        for (int change = 0; change < 10; ++change) {
            file[chance() % file.size()] = static_cast<std::uint8_t>(chance());
        }
        brokenRules(file);
    }
    EXPECT_TRUE(brokenRules(sound).empty());
}

} // namespace
} // namespace qvnd::test

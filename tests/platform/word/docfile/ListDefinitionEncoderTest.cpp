#include "platform/word/docfile/ListDefinitionEncoder.h"

#include <gtest/gtest.h>

namespace qvnd::test {

namespace {

using namespace qvnd::word;

class ListDefinitionEncoderTest : public testing::Test {
protected:
    ListDefinition list(std::int32_t lsid, std::u16string number) {
        ListDefinition definition;
        definition.lsid = lsid;
        definition.levels.resize(9);
        definition.levels[0].text = std::move(number);
        const Bytes properties{0x35, 0x08, static_cast<std::uint8_t>(lsid & 1)};
        definition.levels[0].character = lists.intern(properties);
        return definition;
    }
    // The encoder's answer is that of encoding everything at once.
    void expectAsAtOnce(const std::vector<ListDefinition>& definitions) {
        const auto grown = encoder.encode(definitions, lists);
        const auto atOnce = encodeListDefinitions(definitions, lists);
        EXPECT_EQ(grown.bytes, atOnce.bytes);
        EXPECT_EQ(grown.size, atOnce.size);
    }

    PropertyLists lists;
    ListDefinitionEncoder encoder;
};

} // namespace

TEST_F(ListDefinitionEncoderTest, WithoutListsThereIsTheCountAlone) { expectAsAtOnce({}); }

TEST_F(ListDefinitionEncoderTest, ListsThatCameAreAppended) {
    std::vector<ListDefinition> definitions{list(1, u"一")};
    expectAsAtOnce(definitions);
    definitions.push_back(list(2, u"二、"));
    definitions.push_back(list(3, u"(三)"));
    expectAsAtOnce(definitions);
    expectAsAtOnce(definitions);
}

TEST_F(ListDefinitionEncoderTest, AListThatChangedIsEncodedAgain) {
    std::vector<ListDefinition> definitions{list(1, u"一"), list(2, u"二")};
    expectAsAtOnce(definitions);
    definitions[0].levels[0].text = u"甲乙";
    expectAsAtOnce(definitions);
    definitions[1].linkedStyles[4] = 7;
    expectAsAtOnce(definitions);
    definitions[1].levels.resize(1);
    expectAsAtOnce(definitions);
}

TEST_F(ListDefinitionEncoderTest, FewerListsThanBeforeAreEncodedAgain) {
    expectAsAtOnce({list(1, u"一"), list(2, u"二")});
    expectAsAtOnce({list(1, u"一")});
}

} // namespace qvnd::test

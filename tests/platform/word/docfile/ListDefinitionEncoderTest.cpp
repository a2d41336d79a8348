#include "platform/word/docfile/styles/ListDefinitionEncoder.h"

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
    // Does what a save does, and answers how many bytes it leaves where they are.
    std::size_t save(const std::vector<ListDefinition>& definitions) {
        const ListDefinitionEncoder::Encoded encoded = encoder.encode(definitions, lists);
        EXPECT_LE(encoded.kept, file.size());
        file.erase(file.begin(), file.end() - static_cast<std::ptrdiff_t>(encoded.kept));
        file.insert(file.begin(), encoded.front.begin(), encoded.front.end());
        size = encoded.size;
        return encoded.kept;
    }
    // The file is as if everything had been encoded at once in this order.
    void expectFile(const std::vector<ListDefinition>& definitions) {
        const EncodedListDefinitions atOnce = encodeListDefinitions(definitions, lists);
        EXPECT_EQ(file, atOnce.bytes);
        EXPECT_EQ(size, atOnce.size);
    }

    PropertyLists lists;
    ListDefinitionEncoder encoder;
    Bytes file;
    std::size_t size = 0;
};

} // namespace

TEST_F(ListDefinitionEncoderTest, WithoutListsThereIsTheCountAlone) {
    EXPECT_EQ(save({}), 0U);
    EXPECT_EQ(file, (Bytes{0, 0}));
    EXPECT_EQ(size, 2U);
}

TEST_F(ListDefinitionEncoderTest, TheFirstListsAreInOrder) {
    save({list(1, u"一"), list(2, u"二、")});
    expectFile({list(1, u"一"), list(2, u"二、")});
}

TEST_F(ListDefinitionEncoderTest, ListsThatCameStandInFrontAndLevelsStayWhereTheyAre) {
    std::vector<ListDefinition> definitions{list(1, u"一")};
    save(definitions);
    const std::size_t levels = file.size() - size;
    definitions.push_back(list(2, u"二、"));
    definitions.push_back(list(3, u"(三)"));
    EXPECT_EQ(save(definitions), levels);
    expectFile({definitions[1], definitions[2], definitions[0]});
    definitions.push_back(list(4, u"4"));
    save(definitions);
    expectFile({definitions[3], definitions[1], definitions[2], definitions[0]});
}

TEST_F(ListDefinitionEncoderTest, WithNothingNewAllLevelsStay) {
    const std::vector<ListDefinition> definitions{list(1, u"一"), list(2, u"二")};
    save(definitions);
    EXPECT_EQ(save(definitions), file.size() - size);
    expectFile(definitions);
}

TEST_F(ListDefinitionEncoderTest, AListThatChangedIsEncodedAgain) {
    std::vector<ListDefinition> definitions{list(1, u"一"), list(2, u"二")};
    save(definitions);
    definitions[0].levels[0].text = u"甲";
    EXPECT_EQ(save(definitions), 0U);
    expectFile(definitions);
    definitions[1].linkedStyles[4] = 7;
    save(definitions);
    expectFile(definitions);
    definitions[1].levels.resize(1);
    save(definitions);
    expectFile(definitions);
}

TEST_F(ListDefinitionEncoderTest, FewerListsThanBeforeAreEncodedAgain) {
    save({list(1, u"一"), list(2, u"二")});
    save({list(1, u"一")});
    expectFile({list(1, u"一")});
}

TEST_F(ListDefinitionEncoderTest, NamesStandInTheOrderOfTheFile) {
    std::vector<ListDefinition> definitions{list(1, u"一")};
    definitions[0].name = u"甲";
    save(definitions);
    definitions.push_back(list(2, u"二"));
    definitions[1].name = u"乙";
    save(definitions);
    EXPECT_EQ(encoder.encodeNames(definitions), encodeListNames({u"乙", u"甲"}));
}

TEST_F(ListDefinitionEncoderTest, NoTableOfNamesWhenNoListHasOne) {
    save({list(1, u"一")});
    EXPECT_TRUE(encoder.encodeNames({list(1, u"一")}).empty());
}

TEST_F(ListDefinitionEncoderTest, EachThingThatChangesInALevelIsEncodedAgain) {
    std::vector<ListDefinition> definitions{list(1, u"一"), list(2, u"二")};
    save(definitions);
    const auto expectEncodedAgain = [&] {
        EXPECT_EQ(save(definitions), 0U);
        expectFile(definitions);
    };
    ListLevel& level = definitions[0].levels[3];
    level.head[4] = 5;
    expectEncodedAgain();
    level.paragraph = lists.intern(Bytes{0x05, 0x24, 1});
    expectEncodedAgain();
    level.character = lists.intern(Bytes{0x36, 0x08, 1});
    expectEncodedAgain();
    level.text = u"甲乙";
    expectEncodedAgain();
    level.text = u"甲";
    expectEncodedAgain();
}

} // namespace qvnd::test

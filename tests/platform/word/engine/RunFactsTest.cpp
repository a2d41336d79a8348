#include "platform/word/engine/RunFacts.h"

#include "platform/word/engine/ImportFixture.h"

#include <gtest/gtest.h>

#include <memory>

// What is told of the characters of a run.
namespace qvnd::word {
namespace {

using namespace importing;

TEST(RunFacts, APictureIsThereWhereTheDocumentHoldsItsData) {
    DocumentTables tables;
    const auto picture = std::make_shared<const Bytes>(Bytes{1});
    tables.blobs = {picture, nullptr, picture};
    tables.blobs.pop_back();
    const auto isThere = [&](std::uint32_t place) {
        const PropertyListId list = tables.lists.intern(sprm32(sprm::CPicLocation, place));
        return RunFactsTable(tables, tables.lists).of(list).pictureThere;
    };
    EXPECT_TRUE(isThere(0));
    EXPECT_FALSE(isThere(1)) << "its data are lost";
    EXPECT_FALSE(isThere(2));
    EXPECT_FALSE(isThere(0xFFFFFFFF));
}

TEST(RunFacts, AnObjectIsThereWhereTheDocumentHoldsIt) {
    DocumentTables tables;
    const auto object = std::make_shared<const EmbeddedObject>();
    tables.objects = {object, nullptr, object};
    tables.objects.pop_back();
    const auto isThere = [&](std::uint32_t place) {
        const PropertyListId list = tables.lists.intern(sprm32(sprm::CObjLocation, place));
        return RunFactsTable(tables, tables.lists).of(list).objectThere;
    };
    EXPECT_TRUE(isThere(0));
    EXPECT_FALSE(isThere(1));
    EXPECT_FALSE(isThere(2));
}

} // namespace
} // namespace qvnd::word

#include "platform/word/docfile/objects/EmbeddedObjects.h"

#include "platform/word/docfile/CompoundChecks.h"
#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/ContentBuilder.h"
#include "support/MemoryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace qvnd::word {
namespace {

using test::compoundFaults;
using test::ContentBuilder;
using test::plain;
using testing::IsEmpty;

EmbeddedObjectRef someObject(std::uint8_t mark) {
    auto object = std::make_shared<EmbeddedObject>();
    object->classId[0] = mark;
    object->entries.push_back({u"\u0001Ole", false, {}, Bytes(20, mark)});
    object->entries.push_back({u"Inner", true, {9}, {}});
    object->entries.push_back({u"Inner/Contents", false, {}, Bytes(5000, mark)});
    object->entries.push_back({u"Inner/Deep", true, {8}, {}});
    object->entries.push_back({u"Inner/Deep/Contents", false, {}, Bytes(30, mark)});
    return object;
}

class EmbeddedObjectsInFiles : public testing::Test {
protected:
    // A field whose separator bears the object with that index.
    void addField(std::uint32_t index) {
        const Bytes marks = withSprm8(withSprm8({}, sprm::CFSpec, 1), sprm::CFOle2, 1);
        const Bytes list = withSprm32(marks, sprm::CObjLocation, index);
        builder.add({plain(u"\u0013EMBED x"), {u"\u0014", list}, plain(u"y\u0015\r")});
    }
    DocumentContent read() const {
        EXPECT_THAT(compoundFaults(folder->bytes(path)), IsEmpty());
        return readDocument(folder->bytes(path));
    }
    std::size_t storages() const {
        const CompoundFile file = CompoundFile::over(folder->bytes(path));
        const auto& entries = file.entries();
        return static_cast<std::size_t>(
            std::count_if(entries.begin(), entries.end(), [](const CompoundFile::Entry& entry) {
                return entry.path.starts_with(u"ObjectPool/_") &&
                       entry.path.find(u'/', 12) == std::u16string::npos;
            }));
    }
    static EmbeddedObjectRef objectOf(const DocumentContent& document, std::size_t field) {
        std::size_t met = 0;
        for (const CharacterRun& run : joined(document.main)->characters) {
            const auto entry = findSprm(document.tables.lists[run.properties], sprm::CObjLocation);
            if (entry && met++ == field) {
                LittleEndianReader operand(entry->operand, "sprmCObjLocation");
                return document.tables.objects.at(operand.u32());
            }
        }
        return nullptr;
    }

    std::shared_ptr<test::MemoryFolder> folder = std::make_shared<test::MemoryFolder>();
    const std::filesystem::path path = "/folder/对象.doc";
    DocumentWriter writer{folder};
    ContentBuilder builder;
};

TEST_F(EmbeddedObjectsInFiles, AnObjectComesBackWithAllItHolds) {
    const EmbeddedObjectRef before = someObject(7);
    builder.content.tables.objects = {before};
    addField(0);
    writer.saveAs(path, builder.content);
    const EmbeddedObjectRef object = objectOf(read(), 0);
    ASSERT_TRUE(object);
    EXPECT_EQ(object->classId, before->classId);
    ASSERT_EQ(object->entries.size(), before->entries.size());
    for (const EmbeddedObject::Entry& entry : before->entries) {
        const auto found =
            std::find_if(object->entries.begin(), object->entries.end(),
                         [&](const auto& there) { return there.path == entry.path; });
        ASSERT_NE(found, object->entries.end());
        EXPECT_EQ(found->storage, entry.storage);
        EXPECT_EQ(found->classId, entry.classId);
        EXPECT_EQ(found->content, entry.content);
    }
}

TEST_F(EmbeddedObjectsInFiles, EachObjectIsInTheFileOnceHoweverOftenItIsSaved) {
    builder.content.tables.objects = {someObject(1), someObject(2)};
    addField(0);
    writer.saveAs(path, builder.content);
    EXPECT_EQ(storages(), 1U);
    addField(1);
    addField(0);
    writer.save(builder.content);
    EXPECT_EQ(storages(), 2U);
    const DocumentContent document = read();
    ASSERT_TRUE(objectOf(document, 2));
    EXPECT_EQ(objectOf(document, 1)->classId[0], 2);
    EXPECT_EQ(objectOf(document, 2)->classId[0], 1);
}

TEST_F(EmbeddedObjectsInFiles, AnObjectThatDoesNotExistIsNotNamed) {
    addField(3);
    writer.saveAs(path, builder.content);
    EXPECT_EQ(storages(), 0U);
    EXPECT_FALSE(objectOf(read(), 0));
}

// The entry of the directory with that name; its bytes can be changed to what no writer makes.
std::size_t entryAt(const Bytes& file, std::u16string_view name) {
    LittleEndianWriter written;
    written.text(name);
    written.u16(0);
    const auto found =
        std::search(file.begin(), file.end(), written.data().begin(), written.data().end());
    EXPECT_NE(found, file.end());
    return static_cast<std::size_t>(found - file.begin());
}

void rename(Bytes& file, std::u16string_view from, std::u16string_view to) {
    const std::size_t at = entryAt(file, from);
    for (std::size_t i = 0; i < to.size(); ++i) {
        file[at + 2 * i] = static_cast<std::uint8_t>(to[i]);
        file[at + 2 * i + 1] = static_cast<std::uint8_t>(to[i] >> 8);
    }
}

// A compound file with two objects whose directory a test changes.
class ObjectsWithOddNames : public testing::Test {
protected:
    ObjectsWithOddNames() {
        CompoundStore store(folder_.createBeside("/x", &path_), {});
        const auto pool = store.addStorage(CompoundDirectory::root, u"ObjectPool", {});
        const auto first = store.addStorage(pool, u"_1", {});
        store.append(store.addStream(first, u"ab"), Bytes(10, 1));
        store.append(store.addStream(first, u"cd"), Bytes(10, 2));
        const auto inner = store.addStorage(first, u"ef", {});
        store.append(store.addStream(inner, u"gh"), Bytes(10, 3));
        store.addStorage(pool, u"_22", {});
        store.commit(CompoundStore::Durability::killedProcess);
        file = folder_.bytes(path_);
    }
    // The numbers of the objects that are read.
    std::vector<std::uint32_t> numbers() {
        std::vector<std::uint32_t> result;
        for (const auto& [number, object] :
             readEmbeddedObjects(CompoundFile::over(file), damaged)) {
            result.push_back(number);
        }
        return result;
    }

    using Numbers = std::vector<std::uint32_t>;
    Bytes file;
    int damaged = 0;

private:
    test::MemoryFolder folder_;
    std::filesystem::path path_;
};

TEST_F(ObjectsWithOddNames, BothAreReadAsLongAsTheirNamesAreSound) {
    EXPECT_EQ(numbers(), (Numbers{1, 22}));
    EXPECT_EQ(damaged, 0);
}

TEST_F(ObjectsWithOddNames, ANameWithACharacterThatNoNameHasLeavesItsObjectOut) {
    const Bytes sound = file;
    for (const char16_t* name : {u"a/", u"a\\", u"a:", u"a!"}) {
        for (const char16_t* place : {u"ab", u"ef", u"gh"}) {
            file = sound;
            rename(file, place, name);
            EXPECT_EQ(numbers(), Numbers{22});
            EXPECT_EQ(damaged, 1);
        }
    }
}

TEST_F(ObjectsWithOddNames, AnEmptyNameLeavesItsObjectOut) {
    constexpr std::size_t nameSizeAt = 64;
    file[entryAt(file, u"gh") + nameSizeAt] = 2;
    EXPECT_EQ(numbers(), Numbers{22});
    EXPECT_EQ(damaged, 1);
}

TEST_F(ObjectsWithOddNames, TwoStreamsOfOneNameWhateverItsCaseLeaveTheirObjectOut) {
    rename(file, u"cd", u"AB");
    EXPECT_EQ(numbers(), Numbers{22});
    EXPECT_EQ(damaged, 1);
}

TEST_F(ObjectsWithOddNames, TwoStoragesOfOneNumberAreBothLeftOut) {
    rename(file, u"_22", u"_01");
    EXPECT_EQ(numbers(), Numbers{});
    EXPECT_EQ(damaged, 1);
}

// The numbers of the objects in a file whose pool has a storage of that name.
std::vector<std::uint32_t> numbersUnder(const std::u16string& name) {
    test::MemoryFolder folder;
    std::filesystem::path path;
    CompoundStore store(folder.createBeside("/x", &path), {});
    const auto pool = store.addStorage(CompoundDirectory::root, u"ObjectPool", {});
    store.append(store.addStream(store.addStorage(pool, name, {}), u"ab"), Bytes(10, 1));
    store.commit(CompoundStore::Durability::killedProcess);
    int damaged = 0;
    std::vector<std::uint32_t> numbers;
    for (const auto& object :
         readEmbeddedObjects(CompoundFile::over(folder.bytes(path)), damaged)) {
        numbers.push_back(object.first);
    }
    EXPECT_EQ(damaged, 0);
    return numbers;
}

TEST(NumbersOfObjects, AreThoseOfFourBytesInUpToTenDigitsBehindALine) {
    using Numbers = std::vector<std::uint32_t>;
    EXPECT_EQ(numbersUnder(u"_0"), Numbers{0});
    EXPECT_EQ(numbersUnder(u"_0000000007"), Numbers{7});
    EXPECT_EQ(numbersUnder(u"_4294967295"), Numbers{4294967295U});
    for (const char16_t* none : {u"_4294967296", u"_00000000007", u"_", u"7", u"x7", u"_7a"}) {
        EXPECT_EQ(numbersUnder(none), Numbers{});
    }
}

TEST_F(EmbeddedObjectsInFiles, ADocumentWithAnObjectOfAnImpossibleNameIsToldSoAndSavedWithoutIt) {
    builder.content.tables.objects = {someObject(7)};
    addField(0);
    writer.saveAs(path, builder.content);
    Bytes file = folder->bytes(path);
    rename(file, u"Contents", u"Cont!nts");
    const DocumentContent document = readDocument(file);
    EXPECT_THAT(document.unread.remarks, testing::Contains(u"有 1 个嵌入对象已损坏，未能读出。"));
    writer.saveAs(path, document);
    EXPECT_EQ(storages(), 0U);
}

} // namespace
} // namespace qvnd::word

#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/format/Fib.h"
#include "platform/word/docfile/styles/FontTable.h"
#include "platform/word/docfile/styles/ListTables.h"
#include "platform/word/docfile/styles/StyleSheetTable.h"
#include "platform/word/docfile/text/BookmarkTables.h"
#include "platform/word/docfile/text/RevisionAuthors.h"

#include "support/Corpus.h"

#include <gtest/gtest.h>

#include <functional>

namespace qvnd::word {
namespace {

// The table stream of a real document and the places in it.
struct TableStream {
    Fib fib;
    Bytes bytes;

    ByteView at(FibPair pair) const {
        const FcLcb place = fib.at(pair);
        if (place.fc > bytes.size() || place.lcb > bytes.size() - place.fc) {
            return {};
        }
        return ByteView(bytes).subspan(place.fc, place.lcb);
    }
    ByteView from(FibPair pair) const {
        const FcLcb place = fib.at(pair);
        return place.lcb == 0 || place.fc > bytes.size() ? ByteView{}
                                                         : ByteView(bytes).subspan(place.fc);
    }
};

class CorpusTables : public ::testing::Test {
protected:
    // Calls `look` with every readable document.
    static void each(const std::function<void(const TableStream&)>& look) {
        const auto paths = test::readableDocuments();
        EXPECT_GE(paths.size(), 24U);
        for (const auto& path : paths) {
            SCOPED_TRACE(path.filename().string());
            const CompoundFile file = CompoundFile::open(path);
            TableStream stream{readFib(file.stream(u"WordDocument")), {}};
            stream.bytes = file.stream(stream.fib.tableStreamName());
            look(stream);
        }
    }
};

TEST_F(CorpusTables, StyleSheetsComeOutEqualWhenReadAgain) {
    each([](const TableStream& stream) {
        PropertyLists lists;
        Remarks remarks;
        const StyleSheet sheet = decodeStyleSheet(stream.at(FibPair::Stshf), lists, remarks);
        const Bytes first = encodeStyleSheet(sheet, lists);
        const StyleSheet again = decodeStyleSheet(first, lists, remarks);
        EXPECT_EQ(encodeStyleSheet(again, lists), first);
        EXPECT_FALSE(sheet.styles[0]->name.empty());
        for (const std::u16string& remark : remarks) {
            EXPECT_EQ(remark.find(u"损坏"), std::u16string::npos);
        }
    });
}

TEST_F(CorpusTables, FontsComeOutByteForByte) {
    each([](const TableStream& stream) {
        Remarks remarks;
        const ByteView bytes = stream.at(FibPair::SttbfFfn);
        const Bytes written = encodeFonts(decodeFonts(bytes, remarks));
        // Some writers count bytes behind the last entry.
        ASSERT_LE(written.size(), bytes.size());
        EXPECT_TRUE(std::equal(written.begin(), written.end(), bytes.begin()));
        EXPECT_TRUE(remarks.empty());
    });
}

TEST_F(CorpusTables, ListsComeOutEqualWhenReadAgain) {
    int levels = 0;
    each([&](const TableStream& stream) {
        PropertyLists lists;
        Remarks remarks;
        auto definitions = decodeListDefinitions(stream.from(FibPair::PlfLst), lists, remarks);
        decodeListNames(stream.at(FibPair::SttbListNames), definitions);
        const auto overrides = decodeListOverrides(stream.at(FibPair::PlfLfo), lists, remarks);
        const Bytes first = encodeListDefinitions(definitions, lists).bytes;
        EXPECT_EQ(encodeListDefinitions(decodeListDefinitions(first, lists, remarks), lists).bytes,
                  first);
        const Bytes second = encodeListOverrides(overrides, lists);
        EXPECT_EQ(encodeListOverrides(decodeListOverrides(second, lists, remarks), lists), second);
        for (const ListDefinition& definition : definitions) {
            levels += static_cast<int>(definition.levels.size());
        }
        EXPECT_TRUE(remarks.empty());
    });
    EXPECT_GT(levels, 100);
}

TEST_F(CorpusTables, BookmarksAndAuthorsComeOutEqualWhenReadAgain) {
    each([](const TableStream& stream) {
        Remarks remarks;
        const BookmarkTableViews views{stream.at(FibPair::SttbfBkmk), stream.at(FibPair::PlcfBkf),
                                       stream.at(FibPair::PlcfBkl)};
        const auto bookmarks =
            decodeBookmarks(views, stream.fib.ccp.text, stream.fib.ccp.text, remarks);
        const BookmarkTables first = encodeBookmarks(bookmarks, stream.fib.ccp.text);
        const auto again = decodeBookmarks({first.names, first.starts, first.ends},
                                           stream.fib.ccp.text, stream.fib.ccp.text, remarks);
        EXPECT_EQ(encodeBookmarks(again, stream.fib.ccp.text).starts, first.starts);
        const auto authors = decodeRevisionAuthors(stream.at(FibPair::SttbfRMark), remarks);
        EXPECT_EQ(decodeRevisionAuthors(encodeRevisionAuthors(authors), remarks), authors);
    });
}

} // namespace
} // namespace qvnd::word

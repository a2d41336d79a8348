#include "platform/word/docfile/ObjectContents.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/reader/DocumentReader.h"
#include "platform/word/docfile/writer/DocumentWriter.h"
#include "support/Corpus.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace qvnd::word {
namespace {

DocumentContent copyThroughAFile(const DocumentContent& document) {
    const auto folder = std::make_shared<test::MemoryFolder>();
    DocumentContent content;
    content.tables.styles = document.tables.styles;
    content.tables.fonts = document.tables.fonts;
    content.tables.listDefinitions = document.tables.listDefinitions;
    content.tables.listOverrides = document.tables.listOverrides;
    content.tables.blobs = document.tables.blobs;
    content.tables.objects = document.tables.objects;
    content.tables.authors = document.tables.authors;
    content.tables.bulletPictures = document.tables.bulletPictures;
    content.tables.sideStories = document.tables.sideStories;
    content.tables.drawings = document.tables.drawings;
    content.tables.background = document.tables.background;
    content.tables.shapePictures = document.tables.shapePictures;
    content.tables.shapeTexts = document.tables.shapeTexts;
    content.tables.shapes = document.tables.shapes;
    content.tables.nextOrder = document.tables.nextOrder;
    for (std::size_t i = 0; i < document.tables.lists.size(); ++i) {
        content.tables.lists.intern(document.tables.lists[static_cast<PropertyListId>(i)]);
    }
    const DocumentBody& body = document;
    static_cast<DocumentBody&>(content) = body;
    content.settings = document.settings;
    DocumentWriter(folder).saveAs("/folder/copy.doc", content);
    return readDocument(folder->bytes("/folder/copy.doc"));
}

// A list's entries, with the picture or the object itself where the list names one.
Bytes comparable(const DocumentContent& document, PropertyListId id) {
    Bytes result;
    for (const SprmView& entry : parseSprms(document.tables.lists[id]).sprms) {
        result.insert(result.end(), entry.whole.begin(), entry.whole.end());
        if (entry.opcode == sprm::CPicLocation) {
            result.resize(result.size() - 4);
            const std::uint32_t index = LittleEndianReader(entry.operand, "index").u32();
            const Bytes& blob = *document.tables.blobs.at(index);
            result.insert(result.end(), blob.begin(), blob.end());
        } else if (entry.opcode == sprm::CObjLocation) {
            result.resize(result.size() - 4);
            const std::uint32_t index = LittleEndianReader(entry.operand, "index").u32();
            const Bytes object = test::contentsOf(*document.tables.objects.at(index));
            result.insert(result.end(), object.begin(), object.end());
        }
    }
    return result;
}

void expectSameStory(const DocumentContent& first, const Story& one, const DocumentContent& second,
                     const Story& other) {
    EXPECT_TRUE(one.text == other.text);
    EXPECT_EQ(one.fields.size(), other.fields.size());
    ASSERT_EQ(one.characters.size(), other.characters.size());
    for (std::size_t i = 0; i < one.characters.size(); ++i) {
        EXPECT_EQ(one.characters[i].length, other.characters[i].length) << "run " << i;
        EXPECT_EQ(comparable(first, one.characters[i].properties),
                  comparable(second, other.characters[i].properties))
            << "run " << i;
    }
    ASSERT_EQ(one.paragraphs.size(), other.paragraphs.size());
    for (std::size_t i = 0; i < one.paragraphs.size(); ++i) {
        EXPECT_EQ(one.paragraphs[i].length, other.paragraphs[i].length) << "paragraph " << i;
        EXPECT_EQ(one.paragraphs[i].style, other.paragraphs[i].style) << "paragraph " << i;
        EXPECT_EQ(comparable(first, one.paragraphs[i].properties),
                  comparable(second, other.paragraphs[i].properties))
            << "paragraph " << i;
    }
}

const Story& textOf(const DocumentContent& document, const Anchor& anchor) {
    return *document.tables.sideStories.at(anchor.index).text;
}

// Records without what the writer gives new numbers, and what stands behind those.
void expectSameDrawing(const DocumentContent& first, const Drawing& one,
                       const DocumentContent& second, const Drawing& other) {
    EXPECT_EQ(one.place, other.place);
    EXPECT_EQ(one.records, other.records);
    ASSERT_EQ(one.references.size(), other.references.size());
    for (std::size_t i = 0; i < one.references.size(); ++i) {
        const ShapeReference& mine = one.references[i];
        const ShapeReference& its = other.references[i];
        EXPECT_EQ(mine.kind, its.kind);
        if (mine.kind == ShapeReference::Kind::text) {
            EXPECT_EQ(mine.link, its.link);
            expectSameStory(first, *first.tables.shapeTexts.at(mine.index).text, second,
                            *second.tables.shapeTexts.at(its.index).text);
        } else if (mine.kind == ShapeReference::Kind::picture) {
            const Bytes& picture = *first.tables.shapePictures.at(mine.index);
            const Bytes& copy = *second.tables.shapePictures.at(its.index);
            constexpr std::size_t headSize = 44; // the entry counts uses and names a place
            EXPECT_TRUE(std::equal(picture.begin() + headSize, picture.end(),
                                   copy.begin() + headSize, copy.end()));
        }
    }
}

void expectSameSideTexts(const DocumentContent& first, const DocumentContent& second) {
    ASSERT_EQ(joined(first.main)->anchors.size(), joined(second.main)->anchors.size());
    for (std::size_t i = 0; i < joined(first.main)->anchors.size(); ++i) {
        const Anchor& one = joined(first.main)->anchors[i];
        const Anchor& other = joined(second.main)->anchors[i];
        EXPECT_EQ(one.at, other.at);
        ASSERT_EQ(one.kind, other.kind);
        if (one.kind == AnchorKind::drawing) {
            expectSameDrawing(first, first.tables.drawings.at(one.index), second,
                              second.tables.drawings.at(other.index));
        } else {
            expectSameStory(first, textOf(first, one), second, textOf(second, other));
        }
    }
}

// The drawings of a part of the text, counted in the order of their anchors, the lowest first.
std::vector<std::size_t> fromTheLowest(const DocumentContent& document,
                                       const std::vector<Anchor>& anchors) {
    std::vector<std::pair<std::uint32_t, std::size_t>> places;
    for (const Anchor& anchor : anchors) {
        if (anchor.kind == AnchorKind::drawing) {
            places.emplace_back(document.tables.drawings.at(anchor.index).order, places.size());
        }
    }
    std::sort(places.begin(), places.end());
    std::vector<std::size_t> result;
    result.reserve(places.size());
    for (const auto& [order, place] : places) {
        result.push_back(place);
    }
    return result;
}

std::vector<Anchor> anchorsOfHeaders(const DocumentContent& document) {
    std::vector<Anchor> result;
    for (const HeaderSet& set : document.headers) {
        for (const SlicedText& header : set) {
            const std::vector<Anchor> anchors = anchorsOf(header);
            result.insert(result.end(), anchors.begin(), anchors.end());
        }
    }
    return result;
}

void expectSame(const DocumentContent& first, const DocumentContent& second) {
    expectSameStory(first, *joined(first.main), second, *joined(second.main));
    expectSameSideTexts(first, second);
    EXPECT_EQ(fromTheLowest(first, anchorsOf(first.main)),
              fromTheLowest(second, anchorsOf(second.main)));
    EXPECT_EQ(fromTheLowest(first, anchorsOfHeaders(first)),
              fromTheLowest(second, anchorsOfHeaders(second)));
    ASSERT_EQ(first.sections.size(), second.sections.size());
    for (std::size_t i = 0; i < first.sections.size(); ++i) {
        EXPECT_EQ(first.sections[i].length, second.sections[i].length);
        EXPECT_EQ(comparable(first, first.sections[i].properties),
                  comparable(second, second.sections[i].properties));
        for (std::size_t kind = 0; kind < first.headers[i].size(); ++kind) {
            const auto& one = first.headers[i][kind];
            const auto& other = second.headers[i][kind];
            ASSERT_EQ(one.empty(), other.empty()) << "header " << kind;
            expectSameStory(first, *joined(one), second, *joined(other));
        }
    }
    EXPECT_EQ(first.bookmarks.size(), second.bookmarks.size());
    EXPECT_EQ(first.tables.styles.styles.size(), second.tables.styles.styles.size());
    EXPECT_EQ(first.tables.fonts.size(), second.tables.fonts.size());
    EXPECT_EQ(first.tables.listDefinitions.size(), second.tables.listDefinitions.size());
    EXPECT_EQ(first.tables.listOverrides.size(), second.tables.listOverrides.size());
}

TEST(RoundTrip, WhatWasReadIsWrittenAndReadAgainAlike) {
    const auto files = test::foreignDocuments();
    for (const auto& path : files) {
        SCOPED_TRACE(path.filename().string());
        std::optional<DocumentContent> document;
        try {
            document = readDocument(path);
        } catch (const FormatError&) {
            continue; // what is refused is the business of other tests
        }
        const DocumentContent copy = copyThroughAFile(*document);
        EXPECT_TRUE(copy.unread.remarks.empty());
        expectSame(*document, copy);
    }
}

} // namespace
} // namespace qvnd::word

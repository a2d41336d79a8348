#include "platform/word/docfile/reader/ForeignFile.h"

#include "platform/word/docfile/container/CompoundStore.h"
#include "support/MemoryFolder.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

std::u16string formatOf(std::string_view text) {
    return foreignFormat(ByteView(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

TEST(ForeignFile, IsNamedByItsFirstBytes) {
    EXPECT_EQ(formatOf("{\\rtf1\\ansi x}"), u"RTF 文档");
    EXPECT_EQ(formatOf("%PDF-1.4"), u"PDF 文档");
    EXPECT_EQ(formatOf("\xEF\xBB\xBF\r\n<HTML><body>"), u"网页");
    EXPECT_EQ(formatOf("<!DOCTYPE html><p>"), u"网页");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><?mso-application progid=\"Word.Document\"?>"),
              u"Word XML 文档");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><html>"), u"网页");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><a/>"), u"XML 文件");
    EXPECT_EQ(formatOf(""), u"空文件");
    EXPECT_EQ(formatOf("plain text"), u"");
}

TEST(ForeignFile, AnArchiveIsNamedByItsParts) {
    EXPECT_EQ(formatOf("PK\x03\x04 ... word/document.xml"), u"Word 2007 及以后版本的文档（.docx）");
    EXPECT_EQ(formatOf("PK\x03\x04 mimetypeapplication/vnd.oasis.opendocument.text"),
              u"OpenDocument 文档（.odt）");
    EXPECT_EQ(formatOf("PK\x03\x04 [Content_Types].xml xl/workbook.xml"), u"Excel 工作簿");
    EXPECT_EQ(formatOf("PK\x03\x04 readme.txt"), u"压缩文件");
}

TEST(ForeignFile, ACompoundFileIsNamedByItsStreams) {
    test::MemoryFolder memory;
    std::filesystem::path path;
    CompoundStore store(memory.createBeside("/x", &path), {});
    store.append(store.addStream(u"Workbook"), Bytes(5000));
    store.commit(CompoundStore::Durability::killedProcess);
    const test::ScratchFolder folder;
    EXPECT_EQ(foreignFormat(folder.write("a.doc", memory.bytes(path))), u"Excel 工作簿");
}

} // namespace
} // namespace qvnd::word

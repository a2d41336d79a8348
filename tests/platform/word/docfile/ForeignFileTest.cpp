#include "platform/word/docfile/reader/ForeignFile.h"

#include "platform/word/docfile/WordFileBuilder.h"
#include "platform/word/docfile/container/CompoundStore.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/reader/OpenedDocument.h"
#include "support/MemoryFolder.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace qvnd::word {
namespace {

ForeignFormat foreign(std::string_view text) {
    return foreignFormat(ByteView(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

std::u16string formatOf(std::string_view text) { return foreign(text).name; }

// The text in UTF-16, least significant byte first, behind its mark.
std::string wide(std::string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += {c, '\0'};
    }
    return bytes;
}

TEST(ForeignFile, IsNamedByItsFirstBytes) {
    EXPECT_EQ(formatOf("{\\rtf1\\ansi x}"), u"RTF 文档");
    EXPECT_EQ(formatOf("%PDF-1.4"), u"PDF 文档");
    EXPECT_EQ(formatOf("\xEF\xBB\xBF\r\n<HTML><body>"), u"网页");
    EXPECT_EQ(formatOf("<!DOCTYPE html><p>"), u"网页");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><?mso-application progid=\"Word.Document\"?>"),
              u"XML 文件");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><w:wordDocument xmlns:w="
                       "\"http://schemas.microsoft.com/office/word/2003/wordml\">"),
              u"Word 2003 XML 文档");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><office:document office:mimetype="
                       "\"application/vnd.oasis.opendocument.text\">"),
              u"OpenDocument 文档（.fodt）");
    EXPECT_EQ(formatOf("MIME-Version: 1.0"), u"单个文件网页（.mht）");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><html>"), u"网页");
    EXPECT_EQ(formatOf("<?xml version=\"1.0\"?><a/>"), u"XML 文件");
    EXPECT_EQ(formatOf(""), u"空文件");
    EXPECT_EQ(formatOf("plain text"), u"");
}

TEST(ForeignFile, AWebPageMayBeginWithACommentOrWithAPartOfItself) {
    for (const char* text : {"<META charset=gbk>", "<style>p{}</style>", "<div>x</div>",
                             "<!-- saved -->\r\n<!-- twice --> <html>"}) {
        EXPECT_EQ(formatOf(text), u"网页") << text;
        EXPECT_TRUE(foreign(text).isText) << text;
    }
    EXPECT_EQ(formatOf("<!-- only a comment -->"), u"");
    EXPECT_EQ(formatOf("<!-- without an end <html>"), u"");
}

TEST(ForeignFile, TextOfWideCharactersIsNamedToo) {
    EXPECT_EQ(formatOf(wide("<html><body>")), u"网页");
    EXPECT_EQ(formatOf(wide("{\\rtf1 x}")), u"RTF 文档");
}

constexpr const char* xmlOfWord2003 = "<?xml version=\"1.0\"?><w:wordDocument xmlns:w="
                                      "\"http://schemas.microsoft.com/office/word/2003/wordml\">";
constexpr const char* xmlOfWord2007 = "<?xml version=\"1.0\"?><pkg:package xmlns:pkg="
                                      "\"http://schemas.microsoft.com/office/2006/xmlPackage\">";

TEST(ForeignFile, TextDocumentsAreToldFromTheRest) {
    for (const char* text :
         {"{\\rtf1 x}", "<html>", "<!DOCTYPE html>", "<TABLE border=0>",
          "PK\x03\x04 word/document.xml",
          "PK\x03\x04 mimetypeapplication/vnd.oasis.opendocument.text", xmlOfWord2003}) {
        EXPECT_TRUE(foreign(text).isText) << text;
    }
    for (const char* text :
         {"%PDF-1.4", "PK\x03\x04 xl/workbook.xml", "PK\x03\x04 readme.txt",
          "<?xml version=\"1.0\"?><a/>", "MIME-Version: 1.0", xmlOfWord2007, "plain text", ""}) {
        EXPECT_FALSE(foreign(text).isText) << text;
    }
}

// The list of its parts stands at the end of an archive.
TEST(ForeignFile, APartThatIsNamedAtTheEndOfAnArchiveCounts) {
    const std::string filling(100'000, 'x');
    const std::string archive = "PK\x03\x04 [Content_Types].xml" + filling + "xl/workbook.xml";
    EXPECT_EQ(formatOf(archive), u"Excel 工作簿");
    const qvnd::test::ScratchFolder folder;
    const auto file = folder.write("a.doc", Bytes(archive.begin(), archive.end()));
    EXPECT_EQ(foreignFormat(file).name, u"Excel 工作簿");
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
    EXPECT_EQ(foreignFormat(folder.write("a.doc", memory.bytes(path))).name, u"Excel 工作簿");
}

// A document whose FIB has these flags, and whose table stream begins with these bytes.
std::u16string kindOf(unsigned flags, const Bytes& table, std::uint8_t version = 0xC1) {
    qvnd::test::WordStreams streams = qvnd::test::wordStreams(qvnd::test::plainWordFile(u"x\r"));
    streams.wordDocument[2] = version;
    streams.wordDocument[10] = static_cast<std::uint8_t>(flags);
    streams.wordDocument[11] = static_cast<std::uint8_t>(flags >> 8);
    streams.table = table;
    streams.table.resize(5000);
    const Bytes file = qvnd::test::compoundFile(streams);
    const qvnd::test::ScratchFolder folder;
    return encryptionOf(folder.write("a.doc", file));
}

TEST(ForeignFile, EachKindOfEncryptionIsNamed) {
    EXPECT_EQ(kindOf(0x0300, {1, 0, 1, 0}), u"RC4");
    EXPECT_EQ(kindOf(0x0300, {2, 0, 2, 0}), u"RC4 CryptoAPI");
    EXPECT_EQ(kindOf(0x0300, {4, 0, 2, 0}), u"RC4 CryptoAPI");
    for (const Bytes& unknown : {Bytes{1, 0, 2, 0}, Bytes{5, 0, 2, 0}, Bytes{2, 0, 1, 0},
                                 Bytes{2, 0, 3, 0}, Bytes{1, 0, 0, 0}}) {
        EXPECT_EQ(kindOf(0x0300, unknown), u"");
    }
    EXPECT_EQ(kindOf(0x8300, {}), u"XOR 混淆");
    EXPECT_EQ(kindOf(0x0300, {9, 0, 9, 0}), u"");
    EXPECT_EQ(kindOf(0x0200, {1, 0, 1, 0}), u""); // not encrypted
    EXPECT_EQ(kindOf(0x0100, {}, 0x68), u"Word 97 以前版本的密码");
}

TEST(ForeignFile, AnEncryptedPackageIsOneOfALaterOffice) {
    qvnd::test::MemoryFolder memory;
    std::filesystem::path path;
    CompoundStore store(memory.createBeside("/x", &path), {});
    store.append(store.addStream(u"EncryptedPackage"), Bytes(5000));
    store.commit(CompoundStore::Durability::killedProcess);
    const qvnd::test::ScratchFolder folder;
    EXPECT_EQ(encryptionOf(folder.write("a.doc", memory.bytes(path))),
              u"Office 2007 及以后版本的加密");
}

// Such a file shows older programs a page that says so in place of the document.
TEST(ForeignFile, ADocumentUnderRightsManagementIsEncrypted) {
    auto streams = qvnd::test::wordStreams(qvnd::test::plainWordFile(u"placeholder\r"));
    streams.protectedContent.resize(5000);
    const qvnd::test::ScratchFolder folder;
    const auto file = folder.write("a.doc", qvnd::test::compoundFile(streams));
    EXPECT_EQ(encryptionOf(file), u"信息权限管理（IRM）");
    Remarks remarks;
    try {
        openDocument(file, remarks);
        ADD_FAILURE() << "the placeholder was taken for the document";
    } catch (const FormatError& error) {
        EXPECT_EQ(error.kind(), FormatError::Kind::encrypted);
    }
}

} // namespace
} // namespace qvnd::word

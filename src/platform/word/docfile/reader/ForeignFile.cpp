#include "platform/word/docfile/reader/ForeignFile.h"

#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Fib.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <string_view>

namespace qvnd::word {

namespace {

constexpr std::size_t enough = 4096;
constexpr std::size_t enoughOfArchive = 16384;

struct Sign {
    std::string_view text;
    const char16_t* format;
    bool isText;
};

// What stands at the very beginning, in lower case.
constexpr std::array<Sign, 13> beginnings{
    {{"{\\rtf", u"RTF 文档", true},
     {"%pdf", u"PDF 文档", false},
     {"mime-version:", u"单个文件网页（.mht）", false},
     {"<html", u"网页", true},
     {"<!doctype html", u"网页", true},
     {"<head", u"网页", true},
     {"<body", u"网页", true},
     {"<table", u"网页", true},
     {"<meta", u"网页", true},
     {"<style", u"网页", true},
     {"<div", u"网页", true},
     {"<w:worddocument", u"Word 2003 XML 文档", true},
     {"<office:document", u"OpenDocument 文档（.fodt）", true}}};
// Names of the parts of an archive.
constexpr std::array<Sign, 5> parts{
    {{"word/", u"Word 2007 及以后版本的文档（.docx）", true},
     {"application/vnd.oasis.opendocument.text", u"OpenDocument 文档（.odt）", true},
     {"xl/", u"Excel 工作簿", false},
     {"ppt/", u"PowerPoint 演示文稿", false},
     {"[content_types].xml", u"Word 2007 及以后版本的文档（.docx）", true}}};
// What an XML file says of itself near its beginning. The order counts: the last one stands in many
// of the others.
constexpr std::array<Sign, 5> rootsOfXml{
    {{"http://schemas.microsoft.com/office/2006/xmlpackage", u"Word 2007 XML 文档", false},
     {"http://schemas.microsoft.com/office/word/2003/wordml", u"Word 2003 XML 文档", true},
     {"vnd.oasis.opendocument.text", u"OpenDocument 文档（.fodt）", true},
     {"excel.sheet", u"Excel 2003 XML 表格", false},
     {"<html", u"网页", true}}};
struct StreamSign {
    std::u16string_view name;
    const char16_t* format;
    bool isText;
};
constexpr std::array<StreamSign, 4> streams{
    {{u"Workbook", u"Excel 工作簿", false},
     {u"Book", u"Excel 工作簿", false},
     {u"PowerPoint Document", u"PowerPoint 演示文稿", false},
     {u"VisioDocument", u"Visio 绘图", false}}};

// Of UTF-16 the letters alone: the signs are all ASCII.
std::string lowered(ByteView bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (byte != 0) {
            text.push_back(static_cast<char>(std::tolower(byte)));
        }
    }
    return text;
}

std::string_view behindBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

// Behind a byte order mark, blank lines and comments of markup.
std::string_view content(std::string_view text) {
    for (const std::string_view mark : {"\xef\xbb\xbf", "\xff\xfe", "\xfe\xff"}) {
        text.remove_prefix(text.starts_with(mark) ? mark.size() : 0);
    }
    text = behindBlanks(text);
    while (text.starts_with("<!--")) {
        constexpr std::string_view end = "-->";
        const std::size_t place = text.find(end);
        text = behindBlanks(text.substr(place == text.npos ? text.size() : place + end.size()));
    }
    return text;
}

template <class Signs, class Matches>
ForeignFormat firstOf(const Signs& signs, const Matches& matches) {
    const auto* found = std::find_if(signs.begin(), signs.end(), matches);
    return found != signs.end() ? ForeignFormat{found->format, found->isText} : ForeignFormat();
}

template <class Signs>
ForeignFormat firstIn(const Signs& signs, std::string_view text) {
    return firstOf(signs, [&](const Sign& sign) { return text.find(sign.text) != text.npos; });
}

ForeignFormat formatOfArchive(ByteView bytes) {
    const std::string names = lowered(bytes.first(std::min(bytes.size(), enough))) +
                              lowered(bytes.last(std::min(bytes.size(), enoughOfArchive)));
    const ForeignFormat format = firstIn(parts, names);
    return format.name.empty() ? ForeignFormat{u"压缩文件", false} : format;
}

ForeignFormat formatOfXml(std::string_view text) {
    const ForeignFormat format = firstIn(rootsOfXml, text);
    return format.name.empty() ? ForeignFormat{u"XML 文件", false} : format;
}

// The flags of the FIB and the version at the start of the table stream are never encrypted.
std::u16string encryptionOfWord(const CompoundFile& file) {
    constexpr std::size_t flagsAt = 10;
    constexpr unsigned encrypted = 0x0100;
    constexpr unsigned secondTable = 0x0200;
    constexpr unsigned obfuscated = 0x8000;
    const Bytes main = file.stream(u"WordDocument");
    LittleEndianReader fib(main, "FibBase");
    fib.seek(flagsAt);
    const unsigned flags = fib.u16();
    if ((flags & encrypted) == 0) {
        return {};
    }
    if (isOlderThanWord97(main)) {
        return u"Word 97 以前版本的密码";
    }
    if ((flags & obfuscated) != 0) {
        return u"XOR 混淆";
    }
    const Bytes table = file.stream((flags & secondTable) != 0 ? u"1Table" : u"0Table");
    LittleEndianReader version(table, "EncryptionVersionInfo");
    const unsigned major = version.u16();
    const unsigned minor = version.u16();
    if (major == 1 && minor == 1) {
        return u"RC4";
    }
    return major >= 2 && major <= 4 && minor == 2 ? u"RC4 CryptoAPI" : u"";
}

// As much of a file as foreignFormat() looks at.
Bytes beginningAndEnd(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const auto size = file ? static_cast<std::size_t>(file.tellg()) : 0;
    const std::size_t begin = std::min(size, enough);
    const std::size_t end = std::min(size - begin, enoughOfArchive);
    Bytes bytes(begin + end);
    file.seekg(0);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(begin));
    file.seekg(static_cast<std::streamoff>(size - end));
    file.read(reinterpret_cast<char*>(bytes.data() + begin), static_cast<std::streamsize>(end));
    bytes.resize(file ? bytes.size() : 0);
    return bytes;
}

} // namespace

ForeignFormat foreignFormat(ByteView bytes) {
    if (bytes.empty()) {
        return {u"空文件", false};
    }
    const std::string lower = lowered(bytes.first(std::min(bytes.size(), enough)));
    const std::string_view text = content(lower);
    if (text.starts_with("pk\x03\x04")) {
        return formatOfArchive(bytes);
    }
    if (text.starts_with("<?xml")) {
        return formatOfXml(text);
    }
    return firstOf(beginnings, [&](const Sign& sign) { return text.starts_with(sign.text); });
}

ForeignFormat foreignFormat(const std::filesystem::path& path) {
    try {
        const CompoundFile file = CompoundFile::open(path);
        return firstOf(streams, [&](const StreamSign& sign) { return file.has(sign.name); });
    } catch (const FormatError&) {
        return foreignFormat(ByteView(beginningAndEnd(path)));
    }
}

std::u16string encryptionOf(const std::filesystem::path& path) {
    try {
        const CompoundFile file = CompoundFile::open(path);
        if (file.has(protectedContentName)) {
            return std::u16string(rightsManagement);
        }
        if (file.has(u"EncryptedPackage")) {
            return u"Office 2007 及以后版本的加密";
        }
        return file.has(u"WordDocument") ? encryptionOfWord(file) : std::u16string();
    } catch (const FormatError&) {
        return {};
    }
}

} // namespace qvnd::word

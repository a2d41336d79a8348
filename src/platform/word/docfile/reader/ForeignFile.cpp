#include "platform/word/docfile/reader/ForeignFile.h"

#include "platform/word/docfile/container/CompoundFile.h"
#include "platform/word/docfile/container/FormatError.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <string_view>

namespace qvnd::word {

namespace {

constexpr std::size_t enough = 4096;

struct Sign {
    std::string_view text;
    const char16_t* format;
};

// What stands at the very beginning, in lower case.
constexpr std::array<Sign, 4> beginnings{{{"{\\rtf", u"RTF 文档"},
                                          {"%pdf", u"PDF 文档"},
                                          {"<html", u"网页"},
                                          {"<!doctype html", u"网页"}}};
// Names of the parts of an archive, which lie near its beginning.
constexpr std::array<Sign, 5> parts{
    {{"word/", u"Word 2007 及以后版本的文档（.docx）"},
     {"application/vnd.oasis.opendocument.text", u"OpenDocument 文档（.odt）"},
     {"xl/", u"Excel 工作簿"},
     {"ppt/", u"PowerPoint 演示文稿"},
     {"[content_types].xml", u"Word 2007 及以后版本的文档（.docx）"}}};
struct StreamSign {
    std::u16string_view name;
    const char16_t* format;
};
constexpr std::array<StreamSign, 4> streams{{{u"Workbook", u"Excel 工作簿"},
                                             {u"Book", u"Excel 工作簿"},
                                             {u"PowerPoint Document", u"PowerPoint 演示文稿"},
                                             {u"VisioDocument", u"Visio 绘图"}}};

std::string lowered(ByteView bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text.push_back(static_cast<char>(std::tolower(byte)));
    }
    return text;
}

// Behind the mark of UTF-8 and blank lines.
std::string_view content(std::string_view text) {
    constexpr std::string_view mark = "\xef\xbb\xbf";
    text.remove_prefix(text.starts_with(mark) ? mark.size() : 0);
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text;
}

template <class Signs, class Matches>
std::u16string firstOf(const Signs& signs, const Matches& matches) {
    const auto* found = std::find_if(signs.begin(), signs.end(), matches);
    return found != signs.end() ? found->format : u"";
}

std::u16string formatOfXml(std::string_view text) {
    if (text.find("<html") != text.npos) {
        return u"网页";
    }
    return text.find("word.document") != text.npos ? u"Word XML 文档" : u"XML 文件";
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

} // namespace

std::u16string foreignFormat(ByteView start) {
    if (start.empty()) {
        return u"空文件";
    }
    const std::string lower = lowered(start.first(std::min(start.size(), enough)));
    const std::string_view text = content(lower);
    if (text.starts_with("pk\x03\x04")) {
        const std::u16string format =
            firstOf(parts, [&](const Sign& sign) { return text.find(sign.text) != text.npos; });
        return format.empty() ? u"压缩文件" : format;
    }
    if (text.starts_with("<?xml")) {
        return formatOfXml(text);
    }
    return firstOf(beginnings, [&](const Sign& sign) { return text.starts_with(sign.text); });
}

std::u16string foreignFormat(const std::filesystem::path& path) {
    try {
        const CompoundFile file = CompoundFile::open(path);
        return firstOf(streams, [&](const StreamSign& sign) { return file.has(sign.name); });
    } catch (const FormatError&) {
        Bytes start(enough);
        std::ifstream file(path, std::ios::binary);
        file.read(reinterpret_cast<char*>(start.data()), static_cast<std::streamsize>(enough));
        start.resize(static_cast<std::size_t>(file.gcount()));
        return foreignFormat(ByteView(start));
    }
}

std::u16string encryptionOf(const std::filesystem::path& path) {
    try {
        const CompoundFile file = CompoundFile::open(path);
        if (file.has(u"EncryptedPackage")) {
            return u"Office 2007 及以后版本的加密";
        }
        return file.has(u"WordDocument") ? encryptionOfWord(file) : std::u16string();
    } catch (const FormatError&) {
        return {};
    }
}

} // namespace qvnd::word

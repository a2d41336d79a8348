#include "platform/word/docfile/reader/OpenedDocument.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/objects/OleStreams.h"
#include "platform/word/docfile/reader/ForeignFile.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

namespace qvnd::word {

namespace {

constexpr std::u16string_view mainStream = u"WordDocument";
constexpr std::u16string_view dataStream = u"Data";
constexpr std::u16string_view encryptedPackage = u"EncryptedPackage";

// Word for Windows 1 and 2 and Word for DOS wrote no compound files.
bool isFileOfOldWord(ByteView start) {
    if (start.size() < 2) {
        return false;
    }
    const unsigned magic = start[0] | (start[1] << 8);
    return magic == 0xA59B || magic == 0xA5DB || magic == 0xA5DC || magic == 0xBE31;
}

[[noreturn]] void refuseOldWord() {
    throw FormatError(FormatError::Kind::olderThanWord97, "no compound file, but an old Word's");
}

bool notCompound(const FormatError& error) {
    return error.kind() == FormatError::Kind::notCompoundFile;
}

bool isOuterStorage(const CompoundFile::Entry& entry) {
    return entry.storage && std::count(entry.path.begin(), entry.path.end(), u'/') < 2;
}

Bytes optionalStream(const CompoundFile& file, std::u16string_view name, Remarks& remarks) {
    if (!file.has(name)) {
        return {};
    }
    try {
        return file.stream(name);
    } catch (const FormatError&) {
        remarks.emplace_back(u"文件中存放图片的部分已损坏，嵌入式图片和窗体域可能缺失。");
        return {};
    }
}

Bytes tableStream(const CompoundFile& file, const Fib& fib, Remarks& remarks) {
    const std::u16string_view named = fib.tableStreamName();
    if (file.has(named)) {
        return file.stream(named);
    }
    const std::u16string_view other = fib.fWhichTblStm ? u"0Table" : u"1Table";
    if (!file.has(other)) {
        throw FormatError(FormatError::Kind::damaged, "no table stream");
    }
    remarks.emplace_back(
        u"文件的格式记录缺失，改用了文件中的另一份，请核对文字、编号和版面是否为最后的状态。");
    return file.stream(other);
}

// A stream of properties; empty when there is none, and when it is damaged.
Bytes propertiesOf(const CompoundFile& file, const char16_t* name, bool& damaged) {
    Remarks told;
    Bytes stream = optionalStream(file, name, told);
    const bool sound = stream.empty() ? told.empty() : isPropertySetStream(stream);
    damaged = damaged || !sound;
    return sound ? std::move(stream) : Bytes();
}

OpenedDocument opened(const CompoundFile& file, Remarks& remarks) {
    if (file.has(protectedContentName)) { // the other streams hold a page that says so
        throw FormatError(FormatError::Kind::encrypted, "the document is under rights management");
    }
    if (!file.has(mainStream)) {
        const bool package = file.has(encryptedPackage);
        throw FormatError(package ? FormatError::Kind::encrypted : FormatError::Kind::notWord,
                          "no WordDocument stream");
    }
    OpenedDocument document;
    document.wordDocument = file.stream(mainStream);
    document.fib = readFib(document.wordDocument);
    document.table = tableStream(file, document.fib, remarks);
    document.data = optionalStream(file, dataStream, remarks);
    document.summary = propertiesOf(file, summaryName, document.damagedInformation);
    document.documentSummary = propertiesOf(file, documentSummaryName, document.damagedInformation);
    const auto& entries = file.entries();
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(document.storages),
                 isOuterStorage);
    if (file.tooDeep() > 0) {
        remarks.push_back(u"有 " + digits(static_cast<std::int64_t>(file.tooDeep())) +
                          u" 个存储嵌套过深，其中的内容未能读出。");
    }
    int damaged = 0;
    document.objects = readEmbeddedObjects(file, damaged);
    if (damaged > 0) {
        remarks.push_back(u"有 " + digits(damaged) + u" 个嵌入对象已损坏，未能读出。");
    }
    return document;
}

} // namespace

ByteView OpenedDocument::part(FibPair pair) const {
    const ByteView rest = partOn(pair);
    return rest.first(std::min<std::size_t>(rest.size(), fib.at(pair).lcb));
}

ByteView OpenedDocument::partOn(FibPair pair) const {
    const FcLcb place = fib.at(pair);
    if (place.lcb == 0 || place.fc > table.size()) {
        return {};
    }
    return ByteView(table).subspan(place.fc);
}

OpenedDocument openDocument(const std::filesystem::path& path, Remarks& remarks) {
    try {
        return opened(CompoundFile::open(path), remarks);
    } catch (const FormatError& error) {
        std::array<std::uint8_t, 2> start{};
        std::ifstream file(path, std::ios::binary);
        file.read(reinterpret_cast<char*>(start.data()), start.size());
        if (notCompound(error) && isFileOfOldWord(start)) {
            refuseOldWord();
        }
        throw;
    }
}

OpenedDocument openDocument(ByteView file, Remarks& remarks) {
    try {
        return opened(CompoundFile::over(file), remarks);
    } catch (const FormatError& error) {
        if (notCompound(error) && isFileOfOldWord(file)) {
            refuseOldWord();
        }
        throw;
    }
}

} // namespace qvnd::word

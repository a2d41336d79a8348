#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/OfficeArt.h"
#include "platform/word/docfile/format/SpecialCharacters.h"
#include "platform/word/docfile/format/Sprm.h"
#include "platform/word/docfile/format/SprmCodes.h"
#include "platform/word/docfile/text/Fields.h"

#include <set>

namespace qvnd::word {

namespace {

constexpr std::size_t picfSize = 0x44;
constexpr unsigned inlineShape = 0x64;
constexpr unsigned linkedShape = 0x66;

bool flagOf(ByteView sprms, SprmOpcode opcode) {
    const auto entry = findSprm(sprms, opcode);
    return entry && !entry->operand.empty() && entry->operand[0] != 0;
}

// Records fill the bytes without a gap; containers are filled by theirs. Depth is bounded.
bool recordsNest(ByteView bytes, int depth) {
    constexpr int deepest = 16;
    if (depth > deepest) {
        return false;
    }
    LittleEndianReader reader(bytes, "OfficeArt");
    while (!reader.atEnd()) {
        if (reader.remaining() < art::headerSize) {
            return false;
        }
        const art::RecordHeader header = art::readHeader(reader);
        if (header.length > reader.remaining()) {
            return false;
        }
        const ByteView content = reader.view(header.length);
        if (header.version == art::container && !recordsNest(content, depth + 1)) {
            return false;
        }
    }
    return true;
}

class PictureCheck {
public:
    PictureCheck(const Evidence& evidence, Findings& findings)
        : evidence_(evidence), findings_(findings) {}

    void check(std::uint32_t offset, bool isData, Cp cp) {
        if (!seen_.insert(offset).second) {
            return;
        }
        where_ = placeOf(evidence_, cp) + u"的图片（Data 流 " + hexadecimal(offset) + u"）";
        try {
            checkBlob(offset, isData);
        } catch (const FormatError&) {
            findings_.add("picture.place", where_ + u"超出 Data 流");
        }
    }

private:
    void checkBlob(std::uint32_t offset, bool isData) {
        LittleEndianReader reader(evidence_.data, "PICF");
        reader.seek(offset);
        const std::size_t size = reader.u32();
        const std::size_t headSize = reader.u16();
        if (size < headSize || headSize != picfSize) {
            findings_.add("picture.size", where_ + u"的长度不对");
            return;
        }
        reader.seek(offset);
        LittleEndianReader blob(reader.view(size), "PICF");
        blob.skip(6);
        const unsigned kind = blob.u16();
        blob.seek(picfSize);
        if (isData || (kind != inlineShape && kind != linkedShape)) {
            return;
        }
        if (kind == linkedShape) {
            blob.skip(blob.u8());
        }
        checkShape(blob);
    }

    void checkShape(LittleEndianReader& blob) {
        const ByteView records = blob.view(blob.remaining());
        LittleEndianReader reader(records, "OfficeArt");
        const bool starts =
            records.size() >= art::headerSize && art::readHeader(reader).type == art::spContainer;
        if (!starts || !recordsNest(records, 0)) {
            findings_.add("picture.records", where_ + u"的图形记录不完整");
        }
    }

    const Evidence& evidence_;
    Findings& findings_;
    std::set<std::uint32_t> seen_;
    std::u16string where_;
};

// The separator of an object's field names the storage that holds the object.
void checkObject(ByteView sprms, Cp cp, const Evidence& evidence, Findings& findings) {
    const auto location = findSprm(sprms, sprm::CPicLocation);
    if (!location || !flagOf(sprms, sprm::CFOle2)) {
        return;
    }
    const std::uint32_t number = LittleEndianReader(location->operand, "sprmCPicLocation").u32();
    if (!evidence.objects.contains(u"_" + digits(number))) {
        findings.add("object.storage",
                     placeOf(evidence, cp) + u"的对象 " + digits(number) + u" 没有存储");
    }
}

} // namespace

void checkPictures(const Evidence& evidence, Findings& findings) {
    PictureCheck pictures(evidence, findings);
    for (Cp cp = 0; cp < evidence.text.size(); ++cp) {
        const char16_t c = evidence.text[cp];
        const FormatRun* run =
            c == special::picture || c == fieldSeparator ? evidence.characterRunOf(cp) : nullptr;
        if (run == nullptr || !flagOf(run->sprms, sprm::CFSpec)) {
            continue;
        }
        if (c == fieldSeparator) {
            checkObject(run->sprms, cp, evidence, findings);
            continue;
        }
        const auto location = findSprm(run->sprms, sprm::CPicLocation);
        const bool object = flagOf(run->sprms, sprm::CFOle2) || flagOf(run->sprms, sprm::CFObj);
        if (location && !object) {
            LittleEndianReader operand(location->operand, "sprmCPicLocation");
            pictures.check(operand.u32(), flagOf(run->sprms, sprm::CFData), cp);
        }
    }
}

} // namespace qvnd::word

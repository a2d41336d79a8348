#include "platform/word/docfile/reader/DocumentInformation.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sttb.h"
#include "platform/word/docfile/text/DocumentVariables.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace qvnd::word {

namespace {

// Those of SttbfAssoc that speak of the document: title, subject, key words, author, who saved it
// last. The others name files, or a password.
std::vector<std::u16string> associatedTexts(ByteView table) {
    constexpr std::array<std::size_t, 5> kept{2, 3, 4, 6, 7};
    constexpr std::size_t longest = 255;
    const Sttb there = decodeSttb(table).table;
    std::vector<std::u16string> texts(there.entries.empty() ? 0 : associatedTextCount);
    for (const std::size_t place : kept) {
        if (place < std::min(there.entries.size(), texts.size())) {
            texts[place] = there.entries[place].text.substr(0, longest);
        }
    }
    return texts;
}

bool hasStorage(const OpenedDocument& document, std::u16string_view path) {
    return std::any_of(document.storages.begin(), document.storages.end(),
                       [&](const CompoundFile::Entry& entry) { return entry.path == path; });
}

struct TableOfKind {
    UnreadKind kind{};
    FibPair pair{};
};

// Tables of strings; without an entry there is nothing of the kind.
constexpr std::array<TableOfKind, 7> stringTables{{
    {UnreadKind::embeddedFonts, FibPair::SttbTtmbd},
    {UnreadKind::contentControls, FibPair::SttbfBkmkSdt},
    {UnreadKind::editableRanges, FibPair::SttbfBkmkProt},
    {UnreadKind::moveMarks, FibPair::SttbfBkmkMoveFrom},
    {UnreadKind::moveMarks, FibPair::SttbfBkmkMoveTo},
    {UnreadKind::captions, FibPair::SttbfCaption},
    {UnreadKind::captions, FibPair::SttbfAutoCaption},
}};

// Other structures, which say something where they have more bytes than the position that closes
// an empty table.
constexpr std::array<TableOfKind, 6> otherTables{{
    {UnreadKind::mailMerge, FibPair::Pms},
    {UnreadKind::mailMerge, FibPair::PmsNew},
    {UnreadKind::mailMerge, FibPair::ODSO},
    {UnreadKind::subdocuments, FibPair::PlcfWkb},
    {UnreadKind::routing, FibPair::RouteSlip},
    {UnreadKind::envelope, FibPair::MsoEnvelope},
}};

// The structures of Tcg255 ([MS-DOC] 2.9.325) up to the first that changes a toolbar or a key.
class CommandTable {
public:
    explicit CommandTable(ByteView bytes) : reader_(bytes, "Tcg255") {}

    bool changesAnything() {
        constexpr std::uint8_t commands = 0xFF;
        if (reader_.u8() != commands) {
            return false;
        }
        for (;;) {
            switch (reader_.u8()) {
            case 0x01: // PlfMcd: commands that are macros
                skipRows(24);
                break;
            case 0x02: // PlfAcd: commands with arguments
                skipRows(4);
                break;
            case 0x03: // PlfKme: keys
            case 0x04:
                if (skipRows(14) > 0) {
                    return true;
                }
                break;
            case 0x10: // TcgSttbf: names of commands
                skipNames();
                break;
            case 0x11: // MacroNames
                skipMacroNames();
                break;
            case 0x12: // CTBWRAPPER: toolbars
                return true;
            default: // the end
                return false;
            }
        }
    }

private:
    std::uint32_t skipRows(std::size_t size) {
        const std::uint32_t count = reader_.u32();
        reader_.skip(size * count);
        return count;
    }
    void skipNames() {
        reader_.skip(2); // fExtend
        const std::size_t count = reader_.u16();
        const std::size_t extra = reader_.u16();
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t length = reader_.u16();
            reader_.skip(2 * length + extra);
        }
    }
    void skipMacroNames() {
        for (std::size_t left = reader_.u16(); left > 0; --left) {
            reader_.skip(2);
            const std::size_t length = reader_.u16();
            reader_.skip(2 * length + 2);
        }
    }

    LittleEndianReader reader_;
};

// What is damaged changes nothing.
bool changesToolbars(ByteView commands) {
    try {
        return !commands.empty() && CommandTable(commands).changesAnything();
    } catch (const FormatError&) {
        return false;
    }
}

} // namespace

DocumentInformation takeInformation(OpenedDocument& document, Remarks& remarks) {
    return {std::move(document.summary), std::move(document.documentSummary),
            associatedTexts(document.part(FibPair::SttbfAssoc)),
            decodeVariables(document.part(FibPair::StwUser), remarks)};
}

void noteWhatIsNotRead(const OpenedDocument& document, UnreadContents& unread) {
    const auto note = [&](UnreadKind kind, bool there) {
        if (there) {
            unread.kinds.insert(kind);
        }
    };
    constexpr std::size_t emptyTable = 4;
    for (const TableOfKind& table : stringTables) {
        note(table.kind, !decodeSttb(document.part(table.pair)).table.entries.empty());
    }
    for (const TableOfKind& table : otherTables) {
        note(table.kind, document.part(table.pair).size() > emptyTable);
    }
    note(UnreadKind::macros,
         hasStorage(document, u"Macros") || hasStorage(document, u"_VBA_PROJECT_CUR"));
    note(UnreadKind::toolbars, changesToolbars(document.part(FibPair::Cmds)));
    note(UnreadKind::autoText, document.fib.pnNext != 0);
    note(UnreadKind::writePassword, document.fib.fWriteReservation);
    note(UnreadKind::readOnlyAdvice, document.fib.fReadOnlyRecommended);
    note(UnreadKind::signature, hasStorage(document, u"_xmlsignatures"));
    note(UnreadKind::customXml, hasStorage(document, u"MsoDataStore"));
    unread.smartTags =
        static_cast<int>(decodeSttb(document.part(FibPair::SttbfBkmkFactoid)).table.entries.size());
    unread.information = document.damagedInformation;
}

} // namespace qvnd::word

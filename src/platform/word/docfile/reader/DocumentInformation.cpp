#include "platform/word/docfile/reader/DocumentInformation.h"

#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/format/Sttb.h"

#include <algorithm>
#include <array>
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

bool isMacroStorage(const CompoundFile::Entry& entry) {
    return entry.storage && (entry.path == u"Macros" || entry.path == u"_VBA_PROJECT_CUR");
}

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

DocumentInformation takeInformation(OpenedDocument& document) {
    return {std::move(document.summary), std::move(document.documentSummary),
            associatedTexts(document.part(FibPair::SttbfAssoc))};
}

void noteWhatIsNotRead(const OpenedDocument& document, UnreadContents& unread) {
    unread.macros = std::any_of(document.storages.begin(), document.storages.end(), isMacroStorage);
    unread.toolbars = changesToolbars(document.part(FibPair::Cmds));
    unread.smartTags =
        static_cast<int>(decodeSttb(document.part(FibPair::SttbfBkmkFactoid)).table.entries.size());
    unread.information = document.damagedInformation;
}

} // namespace qvnd::word

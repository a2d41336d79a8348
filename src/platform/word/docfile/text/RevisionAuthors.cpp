#include "platform/word/docfile/text/RevisionAuthors.h"

#include "platform/word/docfile/format/Sttb.h"

namespace qvnd::word {

std::vector<std::u16string> decodeRevisionAuthors(ByteView sttbfRMark, Remarks& remarks) {
    DecodedSttb decoded = decodeSttb(sttbfRMark);
    std::vector<std::u16string> authors;
    for (Sttb::Entry& entry : decoded.table.entries) {
        authors.push_back(std::move(entry.text));
    }
    if (!decoded.complete) {
        remarks.push_back(u"修订者名单已损坏，只读入了前 " + digits(std::int64_t(authors.size())) +
                          u" 项");
    }
    return authors;
}

Bytes encodeRevisionAuthors(const std::vector<std::u16string>& authors) {
    if (authors.empty()) {
        return {};
    }
    Sttb table;
    for (const std::u16string& author : authors) {
        table.entries.push_back({author, {}});
    }
    return encodeSttb(table);
}

} // namespace qvnd::word

#include "platform/word/docfile/check/Checks.h"
#include "platform/word/docfile/container/FormatError.h"
#include "platform/word/docfile/document/Remarks.h"
#include "platform/word/docfile/format/Plc.h"

#include <algorithm>
#include <set>

namespace qvnd::word {

namespace {

constexpr std::size_t pageSize = 512;
constexpr std::size_t countAt = 511;

struct PageKind {
    FibPair binTable;
    const char16_t* name;
    std::size_t entrySize;
    std::size_t mostRuns;
    bool paragraphs;
};
constexpr PageKind characterPages{FibPair::PlcfBteChpx, u"字符格式页", 1, 101, false};
constexpr PageKind paragraphPages{FibPair::PlcfBtePapx, u"段落格式页", 13, 29, true};

// Throws FormatError for what reaches out of the page.
FormatRun readRecord(ByteView page, std::size_t offset, bool paragraph) {
    FormatRun run;
    if (offset == 0) {
        return run;
    }
    LittleEndianReader reader(page.first(countAt), "FKP");
    reader.seek(offset);
    if (!paragraph) {
        run.sprms = reader.view(reader.u8());
        return run;
    }
    // The size counts words: one byte less when it stands before, none when a zero comes first.
    const std::size_t words = reader.u8();
    LittleEndianReader papx(words != 0 ? reader.view(words * 2 - 1)
                                       : reader.view(std::size_t{reader.u8()} * 2),
                            "PapxInFkp");
    run.style = papx.u16();
    run.sprms = papx.view(papx.remaining());
    return run;
}

class PageCheck {
public:
    PageCheck(const PageKind& kind, const Evidence& evidence, Findings& findings)
        : kind_(kind), evidence_(evidence), findings_(findings) {}

    std::vector<FormatRun> check() {
        const Plc bins = decodePlc(evidence_.at(kind_.binTable), 4);
        if (bins.count() == 0) {
            findings_.add("bte.none", std::u16string(kind_.name) + u"的索引表不存在");
        }
        std::set<std::uint32_t> pages;
        for (std::size_t i = 0; i < bins.count(); ++i) {
            LittleEndianReader reader(bins.element(i), "PnFkp");
            const std::uint32_t number = reader.u32() & 0x3FFFFF;
            if (!pages.insert(number).second) {
                findings_.add("bte.page", where(number) + u"被用到两次");
            } else if ((std::uint64_t{number} + 1) * pageSize > evidence_.word.size()) {
                findings_.add("bte.page", where(number) + u"超出 WordDocument 流");
            } else {
                checkPage(number, bins.positions[i], bins.positions[i + 1]);
            }
        }
        std::stable_sort(runs_.begin(), runs_.end(),
                         [](const FormatRun& a, const FormatRun& b) { return a.begin < b.begin; });
        return std::move(runs_);
    }

private:
    std::u16string where(std::uint32_t number) const {
        return std::u16string(kind_.name) + u" " + digits(number);
    }

    void checkPage(std::uint32_t number, std::uint32_t begin, std::uint32_t end) {
        const ByteView page =
            ByteView(evidence_.word).subspan(std::size_t{number} * pageSize, pageSize);
        const std::size_t count = page[countAt];
        if (count == 0 || count > kind_.mostRuns) {
            findings_.add("fkp.count",
                          where(number) + u"的个数 " + digits(std::int64_t(count)) + u" 不对");
            return;
        }
        LittleEndianReader positions(page, "FKP");
        std::uint32_t from = positions.u32();
        const std::uint32_t first = from;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t to = positions.u32();
            if (to <= from) {
                findings_.add("fkp.order", where(number) + u"第 " + digits(std::int64_t(i)) +
                                               u" 项的位置没有递增");
            }
            const std::size_t entryAt = (count + 1) * 4 + i * kind_.entrySize;
            checkRun(page, std::size_t{page[entryAt]} * 2, from, to, number);
            from = to;
        }
        if (first != begin || from != end) {
            findings_.add("bte.range", where(number) + u"的范围与索引表不符");
        }
    }

    void checkRun(ByteView page, std::size_t offset, std::uint32_t from, std::uint32_t to,
                  std::uint32_t number) {
        const std::u16string place = where(number) + u"（" + hexadecimal(from) + u" 起）";
        try {
            FormatRun run = readRecord(page, offset, kind_.paragraphs);
            run.begin = from;
            run.end = to;
            checkPropertyList(run.sprms,
                              kind_.paragraphs ? ListPlace::paragraph : ListPlace::characters,
                              place, evidence_, findings_);
            if (kind_.paragraphs) {
                checkStyle(run.style, place);
            }
            runs_.push_back(run);
        } catch (const FormatError&) {
            findings_.add("fkp.place", place + u"的属性超出本页");
        }
    }

    void checkStyle(StyleIndex istd, const std::u16string& place) {
        const bool there =
            istd < evidence_.styles.size() && evidence_.styles[istd] == StyleKind::paragraph;
        if (!there) {
            findings_.add("fkp.style", place + u"：段落样式 " + digits(istd) + u" 不存在");
        }
    }

    const PageKind& kind_;
    const Evidence& evidence_;
    Findings& findings_;
    std::vector<FormatRun> runs_;
};

// Every character of the text has a run in the pages.
void checkCover(const PageKind& kind, const std::vector<FormatRun>& runs, const Evidence& evidence,
                Findings& findings) {
    for (const TextPiece& piece : evidence.pieces) {
        std::uint64_t fc = piece.fc;
        while (fc < piece.fcEnd()) {
            const FormatRun* run = runAt(runs, static_cast<std::uint32_t>(fc));
            if (run == nullptr) {
                findings.add("bte.cover", std::u16string(kind.name) + u"没有涵盖 " +
                                              hexadecimal(fc) + u" 处的文字");
                break;
            }
            fc = run->end;
        }
    }
}

} // namespace

void checkFormattingPages(Evidence& evidence, Findings& findings) {
    evidence.characters = PageCheck(characterPages, evidence, findings).check();
    evidence.paragraphs = PageCheck(paragraphPages, evidence, findings).check();
    checkCover(characterPages, evidence.characters, evidence, findings);
    checkCover(paragraphPages, evidence.paragraphs, evidence, findings);
}

} // namespace qvnd::word

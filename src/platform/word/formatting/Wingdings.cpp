#include "platform/word/formatting/Wingdings.h"

#include "platform/word/formatting/NameFolding.h"

#include <cstddef>

namespace qvnd::word {

namespace {

// Of the codes from 0x20 on. Signs that only few fonts have are told by a similar one.
constexpr std::u16string_view first = u" ✏✂✁••••☎✆✉✉••••••••••⌛⌨••••••✇✍"
                                      u"✍✌•••☜☞☝☟✋☺•☹•☠⚐⚑✈☼•❄✝✞✝✠✡☪☯ॐ☸♈♉"
                                      u"♊♋♌♍♎♏♐♑♒♓&&●○■□□❑❒◆◆◆❖◆☒⍓⌘❀✿❝❞▯"
                                      u"⓪①②③④⑤⑥⑦⑧⑨⑩⓿❶❷❸❹❺❻❼❽❾❿••••••••·•"
                                      u"▪○○○◉◎○▪□•✦★✶✴✹✵•⌖⟡⌑•✪✰•••••••••"
                                      u"•••••••••••••••••••••⌫⌦◀➢▲▼•➲••←"
                                      u"→↑↓↖↗↙↘←➔↑↓↖↗↙↘⇦⇨⇧⇩⇔⇕••••••✗✓☒☑";
constexpr std::u16string_view second =
    u" ••••✄✀••••••••••••••••••••••••"
    u"•"
    u"••☜☞••••••☝☟•••✗✓✗☑☒☒⊗⊗⊘⊘&&&&‽••"
    u"•••••••••⓪①②③④⑤⑥⑦⑧⑨⑩⓿❶❷❸❹❺❻❼❽❾❿•"
    u"☉•☽☾•✝••••••••••••••••••●○○○◉⊙◉•"
    u"▪■■□□□□▣▣▣•••◆◆◇◇◈••••◆◆◊◊◖◗";
constexpr std::u16string_view third = u" •••••••••••••••••••••••••••••••"
                                      u"••••••••••••••••••••••••••••••••"
                                      u"••••••←→↑↓••••••▲▼△▽◀▶◁▷◣◢◤◥◀▶▲";

} // namespace

bool isWingdings(std::u16string_view font) { return foldedName(font).starts_with(u"wingdings"); }

char16_t wingdingsAsText(std::uint8_t code, std::u16string_view font) {
    constexpr std::uint8_t firstCode = 0x20;
    constexpr char16_t bullet = u'•';
    const std::u16string name = foldedName(font);
    const std::u16string_view signs = name == u"wingdings 2"   ? second
                                      : name == u"wingdings 3" ? third
                                                               : first;
    const bool isKnown = code >= firstCode && code - std::size_t{firstCode} < signs.size();
    return isKnown ? signs[code - std::size_t{firstCode}] : bullet;
}

} // namespace qvnd::word

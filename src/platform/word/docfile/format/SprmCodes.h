#pragma once

#include <cstdint>

// Opcodes that this program reads or writes by name, [MS-DOC] 2.6. On-disk numbers: never change.
namespace qvnd::word::sprm {

// Characters.
inline constexpr std::uint16_t CFRMarkDel = 0x0800;
inline constexpr std::uint16_t CFRMarkIns = 0x0801;
inline constexpr std::uint16_t CFFldVanish = 0x0802;
inline constexpr std::uint16_t CPicLocation = 0x6A03;
inline constexpr std::uint16_t CIbstRMark = 0x4804;
inline constexpr std::uint16_t CFData = 0x0806;
inline constexpr std::uint16_t CSymbol = 0x6A09;
inline constexpr std::uint16_t CFOle2 = 0x080A;
inline constexpr std::uint16_t CHighlight = 0x2A0C;
inline constexpr std::uint16_t CFWebHidden = 0x0811;
inline constexpr std::uint16_t CIstd = 0x4A30;
inline constexpr std::uint16_t CIstdPermute = 0xCA31;
inline constexpr std::uint16_t CPlain = 0x2A33;
inline constexpr std::uint16_t CFBold = 0x0835;
inline constexpr std::uint16_t CFItalic = 0x0836;
inline constexpr std::uint16_t CFVanish = 0x083C;
inline constexpr std::uint16_t CKul = 0x2A3E;
inline constexpr std::uint16_t CIco = 0x2A42;
inline constexpr std::uint16_t CHps = 0x4A43;
inline constexpr std::uint16_t CHpsBi = 0x4A61;
inline constexpr std::uint16_t CRgFtc0 = 0x4A4F;
inline constexpr std::uint16_t CRgFtc1 = 0x4A50;
inline constexpr std::uint16_t CRgFtc2 = 0x4A51;
inline constexpr std::uint16_t CFtcBi = 0x4A5E;
inline constexpr std::uint16_t CFSpec = 0x0855;
inline constexpr std::uint16_t CFObj = 0x0856;
inline constexpr std::uint16_t CFtc = 0x4A3D; // sprmCFtcDefault of older writers
inline constexpr std::uint16_t CDispFldRMark = 0xCA62;
inline constexpr std::uint16_t CPropRMark90 = 0xCA57;
inline constexpr std::uint16_t CFBoldBi = 0x085C;
inline constexpr std::uint16_t CObjLocation = 0x680E;
inline constexpr std::uint16_t CIbstRMarkDel = 0x4863;
inline constexpr std::uint16_t CRgLid0 = 0x486D;
inline constexpr std::uint16_t CRgLid1 = 0x486E;
inline constexpr std::uint16_t CHpsKern = 0x484B;
inline constexpr std::uint16_t CIdctHint = 0x286F;
inline constexpr std::uint16_t CRgLid0New = 0x4873; // the same as CRgLid0 for Word 2000 on
inline constexpr std::uint16_t CRgLid1New = 0x4874;
inline constexpr std::uint16_t CFNoProof = 0x0875;
inline constexpr std::uint16_t CCv = 0x6870;
inline constexpr std::uint16_t CPropRMark = 0xCA89;
inline constexpr std::uint16_t CPbiIBullet = 0x6887;
inline constexpr std::uint16_t CPbiGrf = 0x4888;

// Paragraphs.
inline constexpr std::uint16_t PIstd = 0x4600;
inline constexpr std::uint16_t PIstdPermute = 0xC601;
inline constexpr std::uint16_t PIncLvl = 0x2602;
inline constexpr std::uint16_t PJc80 = 0x2403;
inline constexpr std::uint16_t PFKeep = 0x2405;
inline constexpr std::uint16_t PFKeepFollow = 0x2406;
inline constexpr std::uint16_t PFPageBreakBefore = 0x2407;
inline constexpr std::uint16_t PIlvl = 0x260A;
inline constexpr std::uint16_t PIlfo = 0x460B;
inline constexpr std::uint16_t PChgTabsPapx = 0xC60D;
inline constexpr std::uint16_t PDxaRight80 = 0x840E;
inline constexpr std::uint16_t PDxaLeft80 = 0x840F;
inline constexpr std::uint16_t PDxaLeft180 = 0x8411;
inline constexpr std::uint16_t PDyaLine = 0x6412;
inline constexpr std::uint16_t PDyaBefore = 0xA413;
inline constexpr std::uint16_t PDyaAfter = 0xA414;
inline constexpr std::uint16_t PChgTabs = 0xC615;
inline constexpr std::uint16_t PFInTable = 0x2416;
inline constexpr std::uint16_t PFTtp = 0x2417;
inline constexpr std::uint16_t PDxaAbs = 0x8418;
inline constexpr std::uint16_t PDyaAbs = 0x8419;
inline constexpr std::uint16_t PDxaWidth = 0x841A;
inline constexpr std::uint16_t PPc = 0x261B;
inline constexpr std::uint16_t PWr = 0x2423;
inline constexpr std::uint16_t PBrcBottom80 = 0x6426;
inline constexpr std::uint16_t PFWidowControl = 0x2431;
inline constexpr std::uint16_t PWHeightAbs = 0x442B;
inline constexpr std::uint16_t PDxaFromText = 0x842F;
inline constexpr std::uint16_t PPropRMark90 = 0xC63F;
inline constexpr std::uint16_t PAnld80 = 0xC63E;
inline constexpr std::uint16_t POutLvl = 0x2640;
inline constexpr std::uint16_t PNumRM = 0xC645;
inline constexpr std::uint16_t PHugePapx97 = 0x6645; // of the first Word 97; same operand
inline constexpr std::uint16_t PHugePapx = 0x6646;
inline constexpr std::uint16_t PItap = 0x6649;
inline constexpr std::uint16_t PFInnerTableCell = 0x244B;
inline constexpr std::uint16_t PFInnerTtp = 0x244C;
inline constexpr std::uint16_t PTableProps = 0x646B;
inline constexpr std::uint16_t PDcxaRight = 0x4455; // indents in hundredths of a character
inline constexpr std::uint16_t PDcxaLeft = 0x4456;
inline constexpr std::uint16_t PDcxaLeft1 = 0x4457;
inline constexpr std::uint16_t PDxaRight = 0x845D;
inline constexpr std::uint16_t PDxaLeft = 0x845E;
inline constexpr std::uint16_t PDxaLeft1 = 0x8460;
inline constexpr std::uint16_t PJc = 0x2461;
inline constexpr std::uint16_t PPropRMark = 0xC66F;

// Tables.
inline constexpr std::uint16_t TDefTable10 = 0xD606; // of Word 6, kept by some writers
inline constexpr std::uint16_t TDefTable = 0xD608;
inline constexpr std::uint16_t TDyaRowHeight = 0x9407;
inline constexpr std::uint16_t TIstd = 0x563A;
inline constexpr std::uint16_t TPropRMark = 0xD667;

// Sections.
inline constexpr std::uint16_t SBkc = 0x3009;
inline constexpr std::uint16_t SiHeadingPgn = 0x3001;
inline constexpr std::uint16_t ScnsPgn = 0x3000;
inline constexpr std::uint16_t SCcolumns = 0x500B;
inline constexpr std::uint16_t SDxaColumns = 0x900C;
inline constexpr std::uint16_t SFTitlePage = 0x300A;
inline constexpr std::uint16_t SNfcPgn = 0x300E;
inline constexpr std::uint16_t SFPgnRestart = 0x3011;
inline constexpr std::uint16_t SDyaHdrTop = 0xB017;
inline constexpr std::uint16_t SDyaHdrBottom = 0xB018;
inline constexpr std::uint16_t SPgnStart97 = 0x501C;
inline constexpr std::uint16_t SPgnStart = 0x7044; // the same as SPgnStart97, four bytes wide
inline constexpr std::uint16_t SBOrientation = 0x301D;
inline constexpr std::uint16_t SXaPage = 0xB01F;
inline constexpr std::uint16_t SYaPage = 0xB020;
inline constexpr std::uint16_t SDxaLeft = 0xB021;
inline constexpr std::uint16_t SDxaRight = 0xB022;
inline constexpr std::uint16_t SDyaTop = 0x9023;
inline constexpr std::uint16_t SDyaBottom = 0x9024;
inline constexpr std::uint16_t SDzaGutter = 0xB025;
inline constexpr std::uint16_t SOlstAnm80 = 0xD202;
inline constexpr std::uint16_t SPropRMark90 = 0xD227;
inline constexpr std::uint16_t SPropRMark = 0xD243;

} // namespace qvnd::word::sprm

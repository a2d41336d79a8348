#include "platform/word/docfile/format/SprmFacts.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

namespace qvnd::word {

namespace {

// What the separate lists said that this table took the place of, by number.
using Opcodes = std::set<SprmOpcode>;

const std::map<SprmOpcode, SprmOpcode> spellings{
    {0x2461, 0x2403}, {0x845E, 0x840F}, {0x8460, 0x8411}, {0x845D, 0x840E}, {0x465F, 0x4610},
    {0xC64D, 0x442D}, {0xC64E, 0x6424}, {0xC64F, 0x6425}, {0xC650, 0x6426}, {0xC651, 0x6427},
    {0xC652, 0x6428}, {0xC653, 0x6629}, {0x6870, 0x2A42}, {0xCA71, 0x4866}, {0xCA72, 0x6865},
    {0x4873, 0x486D}, {0x4874, 0x486E}, {0x4A3D, 0x4A4F}, {0xC615, 0xC60D}};
const Opcodes toggles{0x0835, 0x0836, 0x0837, 0x0838, 0x0839, 0x083A,
                      0x083B, 0x083C, 0x0854, 0x0858, 0x085C, 0x085D};
const Opcodes noLook{0x4600, 0xC601, 0x2602, 0x2416, 0x2417, 0x2443, 0xC645, 0x6646, 0x6645, 0x6649,
                     0x664A, 0x244B, 0x244C, 0x2664, 0x6465, 0xC666, 0x6467, 0xC669, 0x646B, 0xC66C,
                     0xC66F, 0xC63F, 0x0800, 0x0801, 0x0802, 0x6A03, 0x4804, 0x6805, 0x0806, 0x4807,
                     0x6A09, 0x080A, 0x680E, 0x4A30, 0xCA31, 0x2A33, 0x0855, 0x0856, 0xCA57, 0xCA89,
                     0xCA62, 0x4863, 0x6864, 0x2A83, 0xCA85, 0x6815, 0x6816, 0x6817};
const Opcodes tabStops{0xC60D, 0xC615};
const Opcodes indents{0x840F, 0x8411, 0x4456, 0x4457, 0x4610, 0x840E, 0x4455};
const std::map<SprmOpcode, std::uint32_t> defaults{
    {0x6412, 0x000100F0}, {0x2431, 1},      {0x2433, 1},      {0x2434, 1},
    {0x2435, 1},          {0x2437, 1},      {0x2438, 1},      {0x4439, 4},
    {0x2640, 9},          {0x2447, 1},      {0x2448, 1},      {0x4A43, 20},
    {0x4A61, 20},         {0x4852, 100},    {0x0868, 1},      {0x6870, 0xFF000000},
    {0x6877, 0xFF000000}, {0x486D, 0x0400}, {0x4873, 0x0400}, {0x486E, 0x0400},
    {0x4874, 0x0400},     {0x485F, 0x0400}};
const Opcodes notTyped{0x0800, 0x0801, 0x0802, 0x6A03, 0x4804, 0x0806, 0x6A09, 0x080A, 0x0855,
                       0x0856, 0x680E, 0x4863, 0xCA57, 0xCA89, 0x6805, 0x6864, 0xCA62};

struct Reference {
    SprmTarget target = SprmTarget::none;
    unsigned at = 0;
};
const std::map<SprmOpcode, Reference> references{
    {0x4A4F, {SprmTarget::font, 0}},           {0x4A50, {SprmTarget::font, 0}},
    {0x4A51, {SprmTarget::font, 0}},           {0x4A5E, {SprmTarget::font, 0}},
    {0x4A3D, {SprmTarget::font, 0}},           {0x6A09, {SprmTarget::font, 0}},
    {0x4A30, {SprmTarget::characterStyle, 0}}, {0x6A03, {SprmTarget::blob, 0}},
    {0x4804, {SprmTarget::author, 0}},         {0x4863, {SprmTarget::author, 0}},
    {0xCA57, {SprmTarget::author, 2}},         {0xCA89, {SprmTarget::author, 2}},
    {0xCA62, {SprmTarget::author, 2}},         {0x680E, {SprmTarget::object, 0}},
    {0x6887, {SprmTarget::bulletPicture, 0}},  {0xCA31, {SprmTarget::elsewhere, 0}},
    {0x4600, {SprmTarget::paragraphStyle, 0}}, {0x563A, {SprmTarget::tableStyle, 0}},
    {0x460B, {SprmTarget::list, 0}},           {0xC645, {SprmTarget::author, 3}},
    {0xC63F, {SprmTarget::author, 2}},         {0xC66F, {SprmTarget::author, 2}},
    {0xD227, {SprmTarget::author, 2}},         {0xD243, {SprmTarget::author, 2}},
    {0xD667, {SprmTarget::author, 2}},         {0xC63E, {SprmTarget::font, 7}},
    {0xD202, {SprmTarget::levelFonts, 0}},     {0xC601, {SprmTarget::elsewhere, 0}},
    {0x6465, {SprmTarget::elsewhere, 0}},      {0x6645, {SprmTarget::dataStream, 0}},
    {0x6646, {SprmTarget::dataStream, 0}},     {0x646B, {SprmTarget::dataStream, 0}},
    {0x7469, {SprmTarget::elsewhere, 0}},      {0xCA85, {SprmTarget::listInside, 3}},
    {0xC666, {SprmTarget::listInside, 3}},     {0xD66A, {SprmTarget::listInside, 3}},
    {0xCA47, {SprmTarget::listInside, 1}}};

// Calls `visit` with every opcode that a file can hold.
template <class Visit>
void forEveryOpcode(Visit visit) {
    for (unsigned opcode = 1; opcode <= 0xFFFF; ++opcode) {
        SCOPED_TRACE(opcode);
        visit(static_cast<SprmOpcode>(opcode));
    }
}

bool isOfText(SprmOpcode opcode) {
    return groupOf(opcode) == SprmGroup::paragraph || groupOf(opcode) == SprmGroup::character;
}

} // namespace

TEST(SprmFacts, NameAPropertyByItsOldestSpelling) {
    forEveryOpcode([](SprmOpcode opcode) {
        const auto older = spellings.find(opcode);
        EXPECT_EQ(factsOf(opcode).property, older != spellings.end() ? older->second : opcode);
    });
}

TEST(SprmFacts, KnowTogglesIndentsAndDefaults) {
    forEveryOpcode([](SprmOpcode opcode) {
        const SprmFacts facts = factsOf(opcode);
        EXPECT_EQ(facts.toggle, toggles.contains(opcode));
        EXPECT_EQ(facts.indent, indents.contains(opcode));
        EXPECT_EQ(facts.plain, defaults.contains(opcode) ? defaults.at(opcode) : 0);
    });
}

// The list of looks once lacked sprmCIdslRMarkDel, the reason for a deletion.
TEST(SprmFacts, TellLooksFromWhatIsNone) {
    forEveryOpcode([](SprmOpcode opcode) {
        if (isOfText(opcode) && opcode != 0x4867) {
            const bool plain = !noLook.contains(opcode) && !tabStops.contains(opcode);
            EXPECT_EQ(factsOf(opcode).kind == SprmKind::look, plain);
            EXPECT_EQ(factsOf(opcode).kind == SprmKind::tabStops, tabStops.contains(opcode));
        }
    });
    EXPECT_EQ(factsOf(0x4867).kind, SprmKind::revision);
}

// Reasons of revisions and the wall before a tracked change once went on into what was typed.
TEST(SprmFacts, KeepPicturesAndRevisionsOutOfWhatIsTypedBesideThem) {
    const Opcodes added{0x4807, 0x4867, 0x2A83};
    forEveryOpcode([&](SprmOpcode opcode) {
        const SprmKind kind = factsOf(opcode).kind;
        if (groupOf(opcode) == SprmGroup::character) {
            EXPECT_EQ(kind == SprmKind::substance || kind == SprmKind::revision,
                      notTyped.contains(opcode) || added.contains(opcode));
        }
    });
}

TEST(SprmFacts, KnowWhatOperandsReferTo) {
    forEveryOpcode([](SprmOpcode opcode) {
        const auto known = references.find(opcode);
        const Reference expected = known != references.end() ? known->second : Reference{};
        EXPECT_EQ(factsOf(opcode).target, expected.target);
        EXPECT_EQ(factsOf(opcode).targetAt, expected.at);
    });
}

TEST(SprmFacts, TellTheSizeOfEveryOperandThatHasAFixedOne) {
    forEveryOpcode([](SprmOpcode opcode) {
        const std::array<std::size_t, 8> sizes{1, 1, 2, 4, 2, 2, 0, 3};
        const auto size = fixedOperandSize(opcode);
        EXPECT_EQ(size.value_or(0), sizes.at(opcode >> 13));
    });
}

} // namespace qvnd::word

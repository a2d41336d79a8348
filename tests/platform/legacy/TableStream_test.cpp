#include "platform/jet/legacy/TableStream.h"

#include "support/Text.h"

#include <gtest/gtest.h>

using namespace qvnd;
using namespace qvnd::jet;
using namespace qvnd::jet::legacy;

namespace {

LegacyTable sample() {
    LegacyTable table;
    table.Name = "工程";
    table.Fields = {TableDef::CreateField("名称", FieldType::Memo),
                    TableDef::CreateField("ID", FieldType::Long)};
    table.Rows = {{Value(QString("甲")), Value(std::int32_t{-7})},
                  {Value(), Value(1.5)},
                  {Value(QString()), Value(QDate(1999, 12, 31))}};
    return table;
}

TEST(TableStreams, ATableComesBackAsItWas) {
    const auto back = tableIn(bytesOf(sample()));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->Name, "工程");
    ASSERT_EQ(back->Fields.size(), 2U);
    EXPECT_EQ(back->Fields[1].Name, "ID");
    EXPECT_EQ(back->Fields[1].Type, FieldType::Long);
    EXPECT_EQ(back->Rows, sample().Rows);
}

TEST(TableStreams, NamesComeBackAsTheyWere) {
    const QStringList names = {"甲", "", "b"};
    EXPECT_EQ(namesIn(bytesOf(names)), names);
}

TEST(TableStreams, CutOrStrayBytesGiveNothing) {
    const QByteArray whole = bytesOf(sample());
    for (qsizetype length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(tableIn(whole.left(length))) << length;
    }
    EXPECT_FALSE(tableIn(whole + "x"));
    EXPECT_FALSE(tableIn(QByteArray(100, '\xFE')));
    EXPECT_FALSE(namesIn(QByteArray(100, '\xFE')));
}

} // namespace

#include "platform/jet/legacy/TableStream.h"

#include "support/Text.h"

#include <QDataStream>
#include <QIODevice>

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

// What asks for gigabytes in vain would not come back from here in time.
TEST(TableStreams, StrayCountsAskForNoMemory) {
    const auto counts = [](quint32 fields, quint32 rows) {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << QString("工程") << fields << rows;
        return bytes + QByteArray(1000, '\0');
    };
    EXPECT_FALSE(tableIn(counts(0, 0xFFFFFFFF)));
    EXPECT_FALSE(tableIn(counts(0, 1)));
    EXPECT_FALSE(tableIn(counts(0xFFFFFFFF, 0)));
    EXPECT_FALSE(tableIn(counts(1, 0xFFFFFFFF)));
}

TEST(TableStreams, ATableWithoutFieldsComesBack) {
    LegacyTable table;
    table.Name = "空";
    const auto back = tableIn(bytesOf(table));
    ASSERT_TRUE(back);
    EXPECT_TRUE(back->Fields.empty() && back->Rows.empty());
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

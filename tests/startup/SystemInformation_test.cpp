#include "startup/SystemInformation.h"

#include "platform/files/Paths.h"
#include "platform/registry/RegistryFile.h"
#include "platform/registry/RegistryRoots.h"
#include "support/OutlineWorld.h"
#include "support/Text.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace qvnd;
using namespace qvnd::startup;

namespace {

const auto machine = registry::RootFromName("HKEY_LOCAL_MACHINE");

registry::RegistryFile with(const QString& key, const QString& line) {
    return registry::RegistryFile::parse(
        ("REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\" + key + "]\n" + line + "\n").toLatin1());
}

QString valueOf(const QString& line) {
    auto registry = with("K", line);
    QString result = "before";
    return GetKeyValue(registry, machine, "K", "v", result) ? result : "failed";
}

TEST(GetKeyValue, GivesATextWithoutItsTerminator) {
    EXPECT_EQ(valueOf(R"("v"="C:\\info.exe")"), "C:\\info.exe");
}

TEST(GetKeyValue, GivesANumberInDecimalDigits) {
    EXPECT_EQ(valueOf("\"v\"=dword:00000102"), "258");
    EXPECT_EQ(valueOf("\"v\"=dword:ffffffff"), "-1");
}

TEST(GetKeyValue, GivesOtherKindsAsTheirBytes) { EXPECT_EQ(valueOf("\"v\"=hex:41,42,00"), "AB"); }

TEST(GetKeyValue, FailsWithAnEmptyResultWithoutKeyOrValue) {
    auto registry = with("K", "\"v\"=\"x\"");
    QString result = "before";
    EXPECT_FALSE(GetKeyValue(registry, machine, "Other", "v", result));
    EXPECT_EQ(result, "");
    result = "before";
    EXPECT_FALSE(GetKeyValue(registry, machine, "K", "w", result));
    EXPECT_EQ(result, "");
}

TEST(SystemInformationProgram, IsTheOneThatTheRegistryNames) {
    auto registry =
        with(R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)", R"("PATH"="C:\\nowhere.exe")");
    EXPECT_EQ(systemInformationProgram(registry), "C:\\nowhere.exe");
}

TEST(SystemInformationProgram, IsLookedForInTheFolderOfSharedTools) {
    const test::TemporaryFolder folder;
    auto registry =
        with(R"(SOFTWARE\Microsoft\Shared Tools Location)", "\"MSINFO\"=\"" + folder.path() + "\"");
    EXPECT_EQ(systemInformationProgram(registry), std::nullopt) << "the file must be there";
    const QString program = folder.path() + files::separator() + "MSINFO32.EXE";
    ASSERT_TRUE(QFile(program).open(QIODevice::WriteOnly));
    EXPECT_EQ(systemInformationProgram(registry), program);
}

TEST(SystemInformationProgram, IsNoneWhereTheRegistrySaysNothing) {
    registry::RegistryFile registry;
    EXPECT_EQ(systemInformationProgram(registry), std::nullopt);
}

} // namespace

#include "support/Qvndctl.h"

using namespace qvnd;
using namespace qvnd::tools;

namespace {

class RegistryTool : public Qvndctl {
protected:
    void writeRegistry() const {
        folder.write("home/registry.reg", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\TREL]\n"
                                          "\"cfg\"=\"C:\\\\\xB9\xA4\"\n\"n\"=dword:0000002a\n"
                                          "\"b\"=hex:01,ff\n\"word\"=\"Error\"\n");
    }
    ExitStatus get(const QString& name) {
        return qvndctl({"registry", "get", "HKEY_LOCAL_MACHINE\\Software\\TREL", name});
    }
};

TEST_F(RegistryTool, AValueOfTheProgramsRegistryFileIsShown) {
    writeRegistry();
    EXPECT_EQ(get("cfg"), ExitStatus::done);
    EXPECT_EQ(out, "C:\\工\n");
    EXPECT_EQ(get("n"), ExitStatus::done);
    EXPECT_EQ(out, "42\n");
    EXPECT_EQ(get("b"), ExitStatus::done);
    EXPECT_EQ(out, "01 ff\n");
    EXPECT_EQ(get("word"), ExitStatus::done);
    EXPECT_EQ(out, "Error\n");
    EXPECT_EQ(qvndctl({"--json", "registry", "get", "HKEY_LOCAL_MACHINE\\Software\\TREL", "n"}),
              ExitStatus::done);
    EXPECT_EQ(out, "42\n");
}

TEST_F(RegistryTool, AMissingValueKeyOrFileIsRefusedWithTheReason) {
    EXPECT_EQ(get("cfg"), ExitStatus::refused);
    EXPECT_TRUE(err.contains("Bad Key Name")) << err.toStdString();
    EXPECT_FALSE(folder.exists("home"));
    writeRegistry();
    EXPECT_EQ(get("none"), ExitStatus::refused);
    EXPECT_EQ(out, "");
    EXPECT_EQ(qvndctl({"registry", "get", "Software\\TREL", "cfg"}), ExitStatus::refused);
    EXPECT_TRUE(err.contains("不是完整的注册表项")) << err.toStdString();
    EXPECT_EQ(qvndctl({"registry", "get", "HKEY_USERS"}), ExitStatus::wrongUsage);
}

TEST_F(RegistryTool, AValueOfAProfileIsShownOrTheDefault) {
    folder.write("p.ini", "[\xB9\xA4]\r\nwork = D:\\x\r\n");
    const QString file = folder.path("p.ini");
    EXPECT_EQ(qvndctl({"profile", "get", file, "工", "Work", "没有"}), ExitStatus::done);
    EXPECT_EQ(out, "D:\\x\n");
    EXPECT_EQ(qvndctl({"profile", "get", file, "工", "none", "没有"}), ExitStatus::done);
    EXPECT_EQ(out, "没有\n");
    EXPECT_EQ(qvndctl({"--json", "profile", "get", folder.path("none"), "s", "k", "d"}),
              ExitStatus::done);
    EXPECT_EQ(out, "\"d\"\n");
    EXPECT_EQ(qvndctl({"profile", "get", file, "工"}), ExitStatus::wrongUsage);
}

} // namespace

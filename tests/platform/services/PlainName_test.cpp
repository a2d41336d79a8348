#include "platform/files/PlainName.h"

#include "support/Errors.h"

#include <gtest/gtest.h>

using namespace qvnd;
using files::isPlainName;

namespace {

TEST(PlainNames, AreNamesOfOneFolderOrFile) {
    for (const char* name :
         {"滨江工程", "a.b", ".a", "a ", "CONSOLE", "COM", "COM10", "LPTX", "ABC1", "10"}) {
        EXPECT_TRUE(isPlainName(name)) << name;
        EXPECT_EQ(files::plainName(name), name);
    }
}

TEST(PlainNames, AreNoPlacesElsewhere) {
    for (const char* name : {"", " ", ".", "..", ". .", "a/b", "a\\b", "c:", "a\tb"}) {
        EXPECT_FALSE(isPlainName(name)) << name;
        EXPECT_EQ(test::errorNumberOf([&] { (void)files::plainName(name); }), 76) << name;
    }
}

TEST(PlainNames, AreNoDevicesWhateverTheirCaseTheirExtensionAndTheBlanksInFrontOfIt) {
    for (const char* name : {"CON", "nul", "Prn.txt", "aux.a.b", "COM1", "lpt9.doc", "CONIN$",
                             "CONOUT$", "CON .txt", "nul  .doc", "COM0"}) {
        EXPECT_FALSE(isPlainName(name)) << name;
    }
}

} // namespace

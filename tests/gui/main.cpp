#include "startup/windows/ProgramApplication.h"

#include <gtest/gtest.h>

// Real widgets on the offscreen platform: no display is needed.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qvnd::startup::ProgramApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("施工方案编制"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

#ifdef __SANITIZE_ADDRESS__
// What the PDF library keeps of a document that it has opened is not ours to free.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libQt6Pdf\n"; }
#endif

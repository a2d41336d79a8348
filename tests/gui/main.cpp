#include <gtest/gtest.h>

#include <QApplication>

// Real widgets on the offscreen platform: no display is needed.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("施工方案编制"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

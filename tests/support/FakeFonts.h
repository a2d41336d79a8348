#pragma once

#include "platform/desktop/Fonts.h"

namespace qvnd::test {

class FakeFonts : public desktop::Fonts {
public:
    bool hasPrinter() override { return withPrinter; }
    QStringList printerFonts() override { return ofPrinter; }
    QStringList screenFonts() override { return ofScreen; }

    bool withPrinter = true;
    QStringList ofPrinter{QStringLiteral("仿宋_GB2312"), QStringLiteral("宋体"),
                          QStringLiteral("黑体")};
    QStringList ofScreen{QStringLiteral("文泉驿"), QStringLiteral("宋体")};
};

} // namespace qvnd::test

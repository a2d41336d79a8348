#pragma once

#include "platform/desktop/windows/HelpCollection.h"
#include "support/Files.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace qvnd::test {

// The help file as it is built beside the tests.
inline QString builtHelpFile() {
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/qvnd/Qvnd.hlp");
}

// Opens the built help with a catalogue of its own.
class HelpFile : public testing::Test {
protected:
    TemporaryFolder cache;
    desktop::HelpCollection help{builtHelpFile(), cache.path("help")};
};

} // namespace qvnd::test

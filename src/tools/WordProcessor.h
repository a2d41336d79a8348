#pragma once

#include "platform/word/model/Application.h"

#include <QString>

#include <memory>

namespace qvnd::tools {

// The word processor that the tool's commands use.
std::unique_ptr<word::ApplicationFactory> createWordProcessor(const QString& home);

} // namespace qvnd::tools

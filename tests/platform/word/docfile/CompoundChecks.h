#pragma once

#include "platform/word/docfile/container/Bytes.h"

#include <string>
#include <vector>

namespace qvnd::test {

// What is wrong with a compound file of version 3 by the letter of [MS-CFB], read without the
// program's own reader; empty for a sound file. Checked are the header, that every sector is used
// once and marked as what it is, the lengths of chains, and each storage's red-black tree.
std::vector<std::string> compoundFaults(word::ByteView file);

} // namespace qvnd::test

#pragma once

#include "platform/word/docfile/check/Finding.h"
#include "platform/word/docfile/container/Bytes.h"

#include <vector>

namespace qvnd::word {

// Holds a file against the Word 97-2003 format: container, FIB, every table of positions, text,
// formatting pages, styles, lists, fields, tables, pictures. Stricter than the reader, which takes
// what other programs write wrongly. Answers every breach found, nothing for a sound document;
// a file that is no document at all gives findings, too. Never throws on any input.
std::vector<Finding> checkDocument(ByteView file);

} // namespace qvnd::word

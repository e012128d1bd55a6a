#ifndef MPUEVENT_TOOL_HEXDUMP_H
#define MPUEVENT_TOOL_HEXDUMP_H

#include <span>

#include "TextBuffer.h"

namespace mpuevent::tool {

/// Appends lines of 16 bytes, indented: their offset from the first byte, their hex digits, and
/// those that are printable ASCII.
void appendHexDump(TextPen& to, std::span<const unsigned char> bytes);

}  // namespace mpuevent::tool

#endif

#ifndef MPUEVENT_TOOL_EXPLAIN_HEXTEXT_H
#define MPUEVENT_TOOL_EXPLAIN_HEXTEXT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mpuevent::tool {

/// What a text of hex digits stands for.
struct HexText {
  std::vector<unsigned char> bytes;
  std::string error;  ///< why there are no bytes; empty if there are
};

/// Reads bytes out of what people paste: plain digits with or without blanks, commas, colons, 0x
/// and \x between them; what `xxd` (plain, too), `hexdump` (-C, too), `od` (any of -t x1, -x, -o)
/// and this program write, "*" for repeated lines included. Marks of a quoting mail, blank lines
/// and prose before and behind are passed over; a line between others that is no hex is an error,
/// and so is a line of a dump that is missing. `hexdump` and `od` are taken to have run on a
/// little-endian machine where they show words.
HexText readHexText(std::string_view text);

}  // namespace mpuevent::tool

#endif

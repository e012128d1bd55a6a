#ifndef MPUEVENT_TOOL_COLOURS_H
#define MPUEVENT_TOOL_COLOURS_H

#include <iterator>
#include <string_view>

namespace mpuevent::tool {

// What makes a terminal write in colours, and in none again.
inline constexpr std::string_view kPlain = "\x1b[0m";
inline constexpr std::string_view kFaint = "\x1b[2m";
inline constexpr std::string_view kBold = "\x1b[1m";

/// Of an event's type; empty if it has none.
constexpr std::string_view colourOfType(unsigned type) {
  constexpr std::string_view colours[] = {"", "", "\x1b[33m", "\x1b[1;31m"};
  return type < std::size(colours) ? colours[type] : std::string_view();
}

}  // namespace mpuevent::tool

#endif

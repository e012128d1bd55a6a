#ifndef MPUEVENT_TOOL_JSONTEXT_H
#define MPUEVENT_TOOL_JSONTEXT_H

#include <cstddef>
#include <string_view>

#include "PaddedView.h"

namespace mpuevent::tool {

inline constexpr std::size_t kLongestJsonEscape = 6;  // "\\u001F"

/// The room that the copy of a text takes at most.
constexpr std::size_t jsonRoom(std::size_t size) {
  return size * kLongestJsonEscape + PaddedView::padding;
}

/// Copies the text as it stands between the quotes of a JSON string to where there is jsonRoom()
/// for it; returns the end.
char* escapeJsonText(char* to, PaddedView utf8);

inline char* copyJsonText(char* to, PaddedView utf8) {
  return utf8.isPlain() ? utf8.copyTo(to) : escapeJsonText(to, utf8);
}

/// The same, slower, for a text that has no padding.
char* copyJsonText(char* to, std::string_view utf8);

}  // namespace mpuevent::tool

#endif

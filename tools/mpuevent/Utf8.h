#ifndef MPUEVENT_TOOL_UTF8_H
#define MPUEVENT_TOOL_UTF8_H

#include <Pegasus/Common/String.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace mpuevent::tool {

/// A `Pegasus::String` in UTF-8, always valid: half a surrogate pair becomes U+FFFD. Made to be
/// used again for text after text.
class Utf8Text {
 public:
  /// How many bytes may be read behind a text, so that a part of it can be copied in blocks.
  static constexpr std::size_t padding = 32;

  /// The view is valid until the next call.
  std::string_view assign(const Pegasus::String& text);

 private:
  std::string room_;
};

/// Appends UTF-8 text with control characters shown as \x0A, also those of U+0080 to U+009F, so
/// that it stays on its line and cannot command a terminal.
void appendVisible(std::string& to, std::string_view utf8);

}  // namespace mpuevent::tool

#endif

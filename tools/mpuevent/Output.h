#ifndef MPUEVENT_TOOL_OUTPUT_H
#define MPUEVENT_TOOL_OUTPUT_H

#include <cstddef>
#include <string_view>

#include "forms/TextBuffer.h"

namespace mpuevent::tool {

/// Nobody reads the output any more.
struct ClosedPipe {};

/// Standard output with a large buffer. Writing throws ClosedPipe when the reader has gone (SIGPIPE
/// must be ignored), and `std::system_error` for any other failure.
class Output {
 public:
  /// Text to be written, for the caller to append to; call flushIfLarge() now and then.
  TextBuffer& text() { return text_; }

  void flushIfLarge() {
    if (text_.size() >= large) flush();
  }
  void flush();
  /// Flushes, and waits until a file is on the disk.
  void synchronise();
  /// Flushes, and closes standard output, which may be when a failure shows.
  void close();

 private:
  static constexpr std::size_t large = std::size_t{128} << 10;

  TextBuffer text_;
  bool written_ = false;
};

/// Writes the text as it is. A failure is passed over: there is no further place to report it to.
void writeToStandardError(std::string_view text);

/// Writes one line "mpuevent: ..." to standard error, control characters made visible.
void complain(std::string_view message);

}  // namespace mpuevent::tool

#endif

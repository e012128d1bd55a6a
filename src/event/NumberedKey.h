#ifndef EVENT_NUMBEREDKEY_H
#define EVENT_NUMBEREDKEY_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "event/Numbers.h"

namespace mpuevent {

/// A key that is a name with a number behind it, as in "SCRATCH7". A name is cut behind 38
/// characters, which none of today's has.
class NumberedKey {
 public:
  explicit NumberedKey(std::string_view name) {
    name = name.substr(0, text_.size() - longestNumber);
    std::copy(name.begin(), name.end(), text_.begin());
    nameSize_ = name.size();
  }

  /// The key with this number. It is valid until the next call.
  std::string_view operator()(std::uint32_t number, Format format = Format::udec) {
    char* start = text_.data();
    const char* end = putNumber(start + nameSize_, format, number);
    return {start, static_cast<std::size_t>(end - start)};
  }

 private:
  std::array<char, 64> text_;
  std::size_t nameSize_;
};

}  // namespace mpuevent

#endif

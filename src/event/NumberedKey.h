#ifndef EVENT_NUMBEREDKEY_H
#define EVENT_NUMBEREDKEY_H

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace mpuevent {

/// A key that is a name with a number behind it, as in "SCRATCH7". In base 16 its digits are in
/// lower case. A name is cut behind 48 characters, which none of today's has.
class NumberedKey {
 public:
  explicit NumberedKey(std::string_view name) {
    name = name.substr(0, text_.size() - longestNumber);
    std::copy(name.begin(), name.end(), text_.begin());
    nameSize_ = name.size();
  }

  /// The key with this number. It is valid until the next call.
  std::string_view operator()(std::uint32_t number, int base = 10) {
    char* start = text_.data();
    const char* end = std::to_chars(start + nameSize_, start + text_.size(), number, base).ptr;
    return {start, static_cast<std::size_t>(end - start)};
  }

 private:
  static constexpr std::size_t longestNumber = 16;

  std::array<char, 64> text_;
  std::size_t nameSize_;
};

}  // namespace mpuevent

#endif

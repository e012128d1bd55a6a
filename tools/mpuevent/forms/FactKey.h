#ifndef MPUEVENT_TOOL_FACTKEY_H
#define MPUEVENT_TOOL_FACTKEY_H

#include <algorithm>
#include <array>
#include <cstddef>

namespace mpuevent::tool {

/// The name of a fact and the two ways in which it is written, in room of a fixed size so that
/// they can be copied without a look at their own.
struct FactKey {
  static constexpr std::size_t jsonMarks = 4;    // comma, quotes and colon
  static constexpr std::size_t labelWidth = 19;  // of the longest label with its colon and a blank
  static constexpr std::size_t jsonRoom = 32;
  static constexpr std::size_t labelRoom = 32;

  template <std::size_t count>
  consteval FactKey(const char (&key)[count]) : size(count - 1), jsonSize(size + jsonMarks) {
    std::copy_n(key, size, name.begin());
    json[0] = ',';
    json[1] = '"';
    std::copy_n(key, size, json.begin() + 2);
    json[size + 2] = '"';
    json[size + 3] = ':';
    label.fill(' ');
    std::replace_copy(key, key + size, label.begin(), '_', ' ');
    label[0] = static_cast<char>(label[0] - 'a' + 'A');
    label[size] = ':';
  }

  std::size_t size;
  std::size_t jsonSize;
  std::array<char, jsonRoom> json{};    ///< `,"event_id":`
  std::array<char, labelRoom> label{};  ///< "Event id:" and blanks up to the value
  std::array<char, labelWidth> name{};  ///< the key alone
};

/// `"name"_key` is one object for the whole program.
template <FactKey key>
constexpr const FactKey& operator""_key() {
  return key;
}

}  // namespace mpuevent::tool

#endif

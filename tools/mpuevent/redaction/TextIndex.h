#ifndef MPUEVENT_TOOL_TEXTINDEX_H
#define MPUEVENT_TOOL_TEXTINDEX_H

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace mpuevent::tool {

/// Finds many texts at once in bytes, in time linear in these however many the texts are.
class TextIndex {
 public:
  struct Match {
    std::size_t length;
    std::uint32_t number;
  };

  /// `anyCase`: ASCII letters are the same in both cases.
  explicit TextIndex(bool anyCase) : anyCase_(anyCase) {}

  /// The number stands for the text, unless another does already. Nothing is done with an empty
  /// text.
  void add(std::string_view text, std::uint32_t number);

  /// The longest text that begins at `at`. One of less than four bytes must be a word for itself,
  /// as it would be found everywhere.
  std::optional<Match> at(std::string_view bytes, std::size_t at) const;

  /// Whether one is anywhere in the bytes.
  bool anyIn(std::string_view bytes) const;

 private:
  struct Text {
    std::string bytes;
    std::uint32_t number;
  };

  static constexpr std::size_t anchor = 4;
  static constexpr std::size_t longest = 256;  // of which all bytes are hashed
  using Lengths = std::bitset<longest + 1>;

  unsigned char folded(char c) const;
  std::uint32_t anchorOf(std::string_view bytes) const;
  bool equal(std::string_view one, std::string_view other) const;
  std::size_t commonSize(std::string_view one, std::string_view other) const;
  bool isWord(std::string_view bytes, std::size_t at, std::size_t length) const;
  std::optional<Match> longAt(std::string_view bytes) const;
  std::optional<Match> shortAt(std::string_view bytes, std::size_t at) const;

  const bool anyCase_;
  std::vector<Text> texts_;
  std::unordered_map<std::uint64_t, std::uint32_t> byHash_;   // in texts_
  std::unordered_map<std::uint32_t, Lengths> lengths_;        // by anchor
  std::bitset<std::size_t{1} << 16> anchors_;                 // which there may be
  std::unordered_map<std::string, std::uint32_t> shortOnes_;  // numbers
  std::bitset<256> shortStarts_;
};

}  // namespace mpuevent::tool

#endif

#ifndef MPUEVENT_TOOL_STORE_POSTGRESQLTEXT_H
#define MPUEVENT_TOOL_STORE_POSTGRESQLTEXT_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <variant>
#include <vector>

#include "forms/TextBuffer.h"

namespace mpuevent::tool {

/// Writes rows in the binary form of COPY. No text can hold NUL there: it becomes U+2400.
class CopyText {
 public:
  explicit CopyText(TextBuffer& to) : to_(to) {}

  void begin();
  void end();
  /// So many columns follow.
  void row(std::size_t columns) { integer(columns, 2); }

  void operator()(std::monostate) { integer(0xFFFFFFFF, 4); }
  /// A bigint.
  void operator()(std::uint64_t number);
  void operator()(std::span<const unsigned char> bytes);
  void operator()(std::string_view text);
  /// A json.
  void json(std::string_view text);
  /// A tsvector of the words in the texts.
  void words(std::span<const std::string_view> texts);

 private:
  void integer(std::uint64_t number, unsigned bytes);
  std::string_view withoutNul(std::string_view text);
  std::string_view withoutEscapedNul(std::string_view json);
  void takeText(std::string_view text);
  void findWords(std::span<const std::string_view> texts);

  static constexpr int sizeOfBeginning = sizeof(std::uint64_t);
  struct Word {
    std::uint64_t beginning;  // some bytes, which mostly decide the order
    std::string_view text;
    std::size_t place;  // among the words, from 1

    // The beginning is all of a short one: words hold no zeros.
    bool isShort() const { return text.size() <= sizeOfBeginning; }
    bool isSame(const Word& other) const {
      return beginning == other.beginning && text.size() == other.text.size() &&
             (isShort() || text == other.text);
    }
    bool operator<(const Word& other) const {
      if (beginning != other.beginning) return beginning < other.beginning;
      if (isShort() && other.isShort()) return place < other.place;
      return std::tie(text, place) < std::tie(other.text, other.place);
    }
  };

  /// A word, wherever it stands.
  struct Lexeme {
    std::size_t first;   // of the words
    std::size_t places;  // how many that are kept
  };

  TextBuffer& to_;
  std::string room_;
  std::vector<Word> words_;
  std::vector<Lexeme> lexemes_;
};

/// An array as the server reads it.
class ArrayText {
 public:
  void add(std::string_view text);
  void add(std::uint64_t number) { add(std::to_string(number)); }
  void add(std::span<const unsigned char> bytes);
  std::string take() { return text_.empty() ? "{}" : text_ + "}"; }

 private:
  std::string text_;
};

}  // namespace mpuevent::tool

#endif

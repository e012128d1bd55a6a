#ifndef MPUEVENT_TOOL_WORDS_H
#define MPUEVENT_TOOL_WORDS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mpuevent::tool {

/// The words for the codes of a header field, as the library prints them.
class Words {
 public:
  /// Event types; what is none of them is "other".
  static Words ofTypes();
  /// Also the names of the modules that the library has decoders for.
  static Words ofSources();
  static Words ofCategories();

  /// The codes that a word stands for, in any case; none if it is none.
  std::vector<std::uint8_t> codesOf(std::string_view word) const;
  /// Words for all codes, each once, as printed.
  std::vector<std::string> listed() const;
  /// The same, as in a message.
  std::string list() const;

 private:
  struct Word {
    std::string text;
    std::uint8_t code;
    bool listed;
  };

  template <typename WordOf>
  void addAll(WordOf wordOf);
  void addModule(std::string_view name, unsigned code);
  void add(std::string text, unsigned code, bool listed = true);

  std::vector<Word> words_;  // a word of several codes is there several times
};

}  // namespace mpuevent::tool

#endif

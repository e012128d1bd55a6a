#include "BodyFields.h"

#include <cstddef>

namespace mpuevent::tool {

namespace {

constexpr int kDeepestLevel = 8;
constexpr std::size_t kClosingMarks = 3;  // "</" and ">"

constexpr bool isSeparator(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

// Whether "</key>" stands at `at`, where "<" does.
bool closes(std::string_view text, std::size_t at, std::string_view key) {
  return text.size() - at >= key.size() + kClosingMarks && text[at + 1] == '/' &&
         text[at + 2 + key.size()] == '>' && text.substr(at + 2, key.size()) == key;
}

}  // namespace

bool BodyFields::parse(std::string_view body) {
  fields_.clear();
  if (!parseElements(body, 1)) {
    fields_.clear();
    return false;
  }
  return true;
}

bool BodyFields::parseElements(std::string_view text, int level) {
  for (;;) {
    while (!text.empty() && isSeparator(text.front())) text.remove_prefix(1);
    if (text.empty()) return true;
    // The first "<" behind the opening tag's own can be no earlier than the tag's end.
    const std::size_t keyEnd = text.find('>');
    std::size_t close = text.find('<', 1);
    if (text.front() != '<' || keyEnd == std::string_view::npos || close < keyEnd) return false;
    const std::string_view key = text.substr(1, keyEnd - 1);
    // Linear: a key has no "<", so that no byte is compared twice.
    while (close != std::string_view::npos && !closes(text, close, key)) {
      close = text.find('<', close + 1);
    }
    if (close == std::string_view::npos) return false;
    const std::string_view content = text.substr(keyEnd + 1, close - keyEnd - 1);
    text.remove_prefix(close + key.size() + kClosingMarks);

    const std::size_t begun = fields_.size();
    fields_.push_back({BodyField::value, key, content});
    if (content.starts_with('<') && level < kDeepestLevel) {
      if (parseElements(content, level + 1)) {
        fields_[begun] = {BodyField::groupBegin, key, {}};
        fields_.push_back({BodyField::groupEnd, {}, {}});
      } else {
        fields_.resize(begun + 1);
      }
    }
  }
}

}  // namespace mpuevent::tool

#include "choosing/Words.h"

#include <MPUEvent/Quarn_Event.h>

#include <algorithm>

#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr unsigned kCodes = 256;
constexpr std::string_view kClassEnd = "_Event";
constexpr std::string_view kRevision = "8P";

// What the library knows no word for it prints as a number.
bool isNumber(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result) c = lower(c);
  return result;
}

bool isSame(std::string_view word, std::string_view other) {
  return std::equal(word.begin(), word.end(), other.begin(), other.end(),
                    [](char a, char b) { return lower(a) == lower(b); });
}

}  // namespace

template <typename WordOf>
void Words::addAll(WordOf wordOf) {
  Utf8Text utf8;
  for (unsigned code = 0; code < kCodes; ++code) {
    const std::string_view word = utf8.assign(wordOf(code));
    if (!isNumber(word)) add(std::string(word), code);
  }
}

Words Words::ofTypes() {
  Words words;
  Pegasus::Quarn_Event event(nullptr, 0);
  Utf8Text utf8;
  for (unsigned code = 0; code < kCodes; ++code) {
    event.setEventType(event.eventTypeFromEmpValue(code));
    const std::string_view word = utf8.assign(event.getEventType());
    words.add(word.empty() ? "other" : std::string(word), code);
  }
  return words;
}

Words Words::ofSources() {
  Words words;
  const Pegasus::Quarn_Event event(nullptr, 0);
  words.addAll([&event](unsigned code) { return event.sourceFromEmpValue(code); });
#define MODULE(source, word, name) words.addModule(#name, source);
#include "modules/Modules.def"
  return words;
}

Words Words::ofCategories() {
  Words words;
  const Pegasus::Quarn_Event event(nullptr, 0);
  words.addAll([&event](unsigned code) { return event.categoryFromEmpValue(code); });
  return words;
}

// The name of a decoder's class, which need not be written to its end: neither "_Event" nor "8P".
void Words::addModule(std::string_view name, unsigned code) {
  const std::string module = lower(name);
  add(module + lower(kClassEnd), code, false);
  const bool revised = name.ends_with(kRevision);
  if (revised) add(lower(name.substr(0, name.size() - kRevision.size())), code);
  add(module, code, !revised);
}

void Words::add(std::string text, unsigned code, bool listed) {
  words_.push_back({std::move(text), static_cast<std::uint8_t>(code), listed});
}

std::vector<std::uint8_t> Words::codesOf(std::string_view word) const {
  std::vector<std::uint8_t> codes;
  for (const Word& known : words_) {
    if (isSame(known.text, word)) codes.push_back(known.code);
  }
  return codes;
}

std::vector<std::string> Words::listed() const {
  std::vector<std::string> told;
  for (const Word& word : words_) {
    if (!word.listed) continue;
    const auto isThis = [&word](std::string_view other) { return isSame(other, word.text); };
    if (std::none_of(told.begin(), told.end(), isThis)) told.push_back(word.text);
  }
  return told;
}

std::string Words::list() const {
  std::string text;
  for (const std::string& word : listed()) {
    if (!text.empty()) text += ", ";
    text += word;
  }
  return text;
}

}  // namespace mpuevent::tool

#include <algorithm>
#include <string>

#include "Colours.h"
#include "EventFacts.h"
#include "EventForm.h"
#include "Numbers.h"
#include "Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kCountWidth = 10;
constexpr std::size_t kSlotWidth = 2;
constexpr std::size_t kTypeWidth = 13;
constexpr std::size_t kSourceWidth = 10;

/// How much of the text fits. Characters from the first wide ones on count as wide.
std::string_view fitting(std::string_view utf8, std::size_t columns) {
  std::size_t used = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    used += lead < 0xE1 ? 1 : 2;
    if (used > columns) return utf8.substr(0, at);
    at += lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  }
  return utf8;
}

/// Picks what a line shows, in the order of the facts.
class ShortLine {
 public:
  std::string_view write(const EventFacts& facts) {
    line_.clear();
    facts.describeEvent(*this);
    return line_.view();
  }
  unsigned type() const { return type_; }

  void number(const FactKey& key, std::uint64_t number) {
    if (&key == &"controller_slot"_key) slot_ = number;
  }
  void offset(const FactKey&, std::uint64_t) {}
  void timestamp(const FactKey&, std::uint64_t count, std::string_view date) {
    if (date.empty()) {
      decimal(count, kCountWidth);
    } else {
      line_ += date;
    }
    line_ += ' ';
    decimal(slot_, kSlotWidth);
  }
  void coded(const FactKey& codeKey, unsigned code, const FactKey&, std::string_view word) {
    if (&codeKey == &"source_code"_key) {
      source_.clear();
      wordOf(source_, code, word, kSourceWidth);
    } else if (&codeKey == &"event_type_code"_key) {
      type_ = code;
      wordOf(line_, code, word, kTypeWidth);
      line_ += source_.view();
    }
  }
  void text(const FactKey& key, std::string_view utf8) {
    if (&key != &"event_id"_key && &key != &"summary"_key) return;
    line_ += &key == &"summary"_key ? ": " : " ";
    appendVisible(line_, utf8);
  }

 private:
  void decimal(std::uint64_t number, std::size_t width) {
    TextBuffer digits;
    appendDecimal(digits, number);
    line_.fill(width - std::min(width, digits.size()), ' ');
    line_ += digits.view();
  }
  static void wordOf(TextBuffer& to, unsigned code, std::string_view word, std::size_t width) {
    to += ' ';
    const std::size_t begin = to.size();
    if (word.empty()) {
      to += '(';
      appendDecimal(to, code);
      to += ')';
    } else {
      appendVisible(to, word);
    }
    to.fill(width - std::min(width, to.size() - begin), ' ');
  }

  TextBuffer line_;
  TextBuffer source_;
  std::uint64_t slot_ = 0;
  unsigned type_ = 0;
};

class ShortForm : public EventForm {
 public:
  ShortForm(std::size_t width, bool coloured) : width_(width), coloured_(coloured) {}

  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    facts_.read(decoded);
    const std::string_view line = line_.write(facts_);
    const std::string_view colour = coloured_ ? colourOfType(line_.type()) : std::string_view();
    to += colour;
    to += width_ == 0 ? line : fitting(line, width_);
    if (!colour.empty()) to += kPlain;
    to += '\n';
  }

 private:
  const std::size_t width_;
  const bool coloured_;
  EventFacts facts_{ShowPayload::never, false};
  ShortLine line_;
};

}  // namespace

std::unique_ptr<EventForm> makeShortForm(std::size_t width, bool coloured) {
  return std::make_unique<ShortForm>(width, coloured);
}

}  // namespace mpuevent::tool

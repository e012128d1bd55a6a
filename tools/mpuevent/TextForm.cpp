#include <algorithm>

#include "EventFacts.h"
#include "EventForm.h"
#include "Numbers.h"
#include "Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kLabelWidth = 19;  // of the longest label with its colon and a blank
constexpr std::size_t kIndent = 2;
constexpr std::size_t kWidestAligned = 32;

constexpr std::string_view kPlain = "\x1b[0m";
constexpr std::string_view kFaint = "\x1b[2m";

// Event types 0 to 3.
constexpr std::string_view kTypeColours[] = {"", "", "\x1b[33m", "\x1b[1;31m"};

class TextForm : public EventForm {
 public:
  explicit TextForm(bool coloured) : coloured_(coloured) {}

  void write(const DecodedEvent& decoded, std::string& to) override {
    to_ = &to;
    facts_.read(decoded);
    if (!first_) to += '\n';
    first_ = false;
    facts_.describe(*this);
    writeBody();
  }

  void number(const FactKey& key, std::uint64_t number) {
    label(key);
    appendDecimal(*to_, number);
    *to_ += '\n';
  }
  void offset(const FactKey& key, std::uint64_t offset) {
    label(key);
    appendHex(*to_, offset);
    *to_ += '\n';
  }
  void text(const FactKey& key, std::string_view utf8) {
    label(key, !utf8.empty());
    appendVisible(*to_, utf8);
    *to_ += '\n';
  }
  void coded(const FactKey&, unsigned code, const FactKey& wordKey, std::string_view word) {
    label(wordKey);
    const std::string_view shade =
        wordKey.name() == "event_type" ? kTypeColours[std::min(code, 3U)] : std::string_view();
    colour(shade);
    appendVisible(*to_, word);
    if (!shade.empty()) colour(kPlain);
    *to_ += word.empty() ? "(" : " (";
    appendDecimal(*to_, code);
    *to_ += ")\n";
  }

 private:
  void colour(std::string_view code) {
    if (coloured_) *to_ += code;
  }

  // The label is the key in words: "event_id" becomes "Event id:".
  void label(const FactKey& key, bool valueFollows = true) {
    colour(kFaint);
    const std::size_t begin = to_->size();
    *to_ += key.name();
    std::replace(to_->begin() + static_cast<std::ptrdiff_t>(begin), to_->end(), '_', ' ');
    (*to_)[begin] = static_cast<char>((*to_)[begin] - 'a' + 'A');
    *to_ += ':';
    colour(kPlain);
    if (valueFollows) to_->append(kLabelWidth - key.size - 1, ' ');
  }

  void writeBody() {
    const BodyFields* fields = facts_.fields();
    if (fields == nullptr || fields->fields().empty()) {
      text("body"_key, facts_.body());
      return;
    }
    label("body"_key, false);
    *to_ += '\n';
    std::size_t level = 1;
    const std::size_t column = valueColumn(*fields);
    for (const BodyField& field : fields->fields()) {
      if (field.kind == BodyField::groupEnd) {
        --level;
        continue;
      }
      to_->append(level * kIndent, ' ');
      colour(kFaint);
      const std::size_t begin = to_->size();
      appendVisible(*to_, field.key);
      *to_ += ':';
      const std::size_t width = level * kIndent + to_->size() - begin;
      colour(kPlain);
      if (field.kind == BodyField::groupBegin) {
        ++level;
      } else if (!field.text.empty()) {
        to_->append(width < column ? column - width : 1, ' ');
        appendVisible(*to_, field.text);
      }
      *to_ += '\n';
    }
  }

  // Where the values begin: behind the longest key, unless it is very long.
  static std::size_t valueColumn(const BodyFields& fields) {
    std::size_t column = 0;
    std::size_t level = 1;
    for (const BodyField& field : fields.fields()) {
      if (field.kind == BodyField::value) {
        const std::size_t width = level * kIndent + field.key.size() + 2;
        column = std::max(column, std::min(width, kWidestAligned));
      }
      level += field.kind == BodyField::groupBegin ? 1U : 0U;
      level -= field.kind == BodyField::groupEnd ? 1U : 0U;
    }
    return column;
  }

  const bool coloured_;
  bool first_ = true;
  EventFacts facts_;
  std::string* to_ = nullptr;  // where the event at hand goes
};

}  // namespace

std::unique_ptr<EventForm> makeTextForm(bool coloured) {
  return std::make_unique<TextForm>(coloured);
}

}  // namespace mpuevent::tool

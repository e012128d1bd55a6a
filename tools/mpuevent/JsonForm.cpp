#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "EventFacts.h"
#include "EventForm.h"
#include "JsonText.h"

namespace mpuevent::tool {

namespace {

/// A writer with a faster way for what makes up most of an event: members of objects, and texts
/// with little to escape.
class Writer : public rapidjson::Writer<rapidjson::StringBuffer> {
 public:
  void number(const FactKey& key, std::uint64_t number) {
    beginMember(key);
    WriteUint64(number);
  }

  void text(const FactKey& key, std::string_view utf8) {
    beginMember(key);
    os_->Put('"');
    writeText(utf8);
    os_->Put('"');
  }

  /// `{"key":...,"value":...}` as the next value of an array. Both texts must have the padding of
  /// Utf8Text behind them.
  void element(std::string_view key, std::string_view value) {
    constexpr std::string_view opening = "{\"key\":\"";
    constexpr std::string_view middle = "\",\"value\":\"";
    constexpr std::string_view closing = "\"}";
    Prefix(rapidjson::kObjectType);
    const std::size_t size =
        opening.size() + key.size() + middle.size() + value.size() + closing.size();
    char* to = os_->Push(size + kJsonBlock);
    to = std::copy_n(opening.begin(), opening.size(), to);
    const bool keyCopied = copyJsonPadded(to, key);
    to = std::copy_n(middle.begin(), middle.size(), to + key.size());
    const bool valueCopied = copyJsonPadded(to, value);
    std::copy_n(closing.begin(), closing.size(), to + value.size());
    os_->Pop(kJsonBlock);
    if (!keyCopied || !valueCopied) {
      os_->Pop(size);
      writeMarks(opening);
      writeText(key);
      writeMarks(middle);
      writeText(value);
      writeMarks(closing);
    }
  }

  void key(const FactKey& key) {
    String(key.room.data(), static_cast<rapidjson::SizeType>(key.size));
  }

 private:
  // What Prefix() does for a key and for its value, and the key, in one.
  void beginMember(const FactKey& key) {
    constexpr std::size_t marks = 4;  // comma, quotes and colon
    char* const begin = os_->Push(key.room.size() + marks);
    char* to = begin;
    auto& count = level_stack_.Top<Level>()->valueCount;
    if (count != 0) *to++ = ',';
    count += 2;
    *to++ = '"';
    std::memcpy(to, key.room.data(), key.room.size());
    to += key.size;
    *to++ = '"';
    *to++ = ':';
    os_->Pop(key.room.size() + marks - static_cast<std::size_t>(to - begin));
  }

  // Without the quotes: what is plain in blocks, the rest in short steps.
  void writeText(std::string_view utf8) {
    constexpr std::size_t step = 8;
    for (;;) {
      const std::size_t copied = copyJsonPlain(os_->Push(utf8.size()), utf8);
      if (copied == utf8.size()) return;
      os_->Pop(utf8.size() - copied);
      utf8.remove_prefix(copied);
      const std::string_view next = utf8.substr(0, step);
      char* const begin = os_->Push(next.size() * kLongestJsonEscape);
      const char* const end = copyJsonEscaped(begin, next);
      os_->Pop(next.size() * kLongestJsonEscape - static_cast<std::size_t>(end - begin));
      utf8.remove_prefix(next.size());
    }
  }

  void writeMarks(std::string_view marks) {
    std::copy_n(marks.begin(), marks.size(), os_->Push(marks.size()));
  }
};

class JsonForm : public EventForm {
 public:
  void write(const DecodedEvent& decoded, std::string& to) override {
    facts_.read(decoded);
    buffer_.Clear();
    writer_.Reset(buffer_);
    writer_.StartObject();
    facts_.describe(*this);
    writer_.text("body"_key, facts_.body());
    writeFields();
    writer_.EndObject();
    to.append(buffer_.GetString(), buffer_.GetSize());
    to += '\n';
  }

  void number(const FactKey& key, std::uint64_t number) { writer_.number(key, number); }
  void offset(const FactKey& key, std::uint64_t offset) { number(key, offset); }
  void text(const FactKey& key, std::string_view utf8) { writer_.text(key, utf8); }
  void coded(const FactKey& codeKey, unsigned code, const FactKey& wordKey, std::string_view word) {
    number(codeKey, code);
    text(wordKey, word);
  }

 private:
  void writeFields() {
    writer_.key("fields"_key);
    const BodyFields* fields = facts_.fields();
    if (fields == nullptr) {
      writer_.Null();
      return;
    }
    writer_.StartArray();
    for (const BodyField& field : fields->fields()) {
      switch (field.kind) {
        case BodyField::value:
          writer_.element(field.key, field.text);
          break;
        case BodyField::groupBegin:
          writer_.StartObject();
          writer_.text("key"_key, field.key);
          writer_.key("fields"_key);
          writer_.StartArray();
          break;
        case BodyField::groupEnd:
          writer_.EndArray();
          writer_.EndObject();
          break;
      }
    }
    writer_.EndArray();
  }

  EventFacts facts_;
  rapidjson::StringBuffer buffer_;
  Writer writer_;
};

}  // namespace

std::unique_ptr<EventForm> makeJsonForm() { return std::make_unique<JsonForm>(); }

}  // namespace mpuevent::tool

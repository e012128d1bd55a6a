#include "EventProperties.h"

#include <forms/EventForm.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "FuzzTarget.h"

namespace mpuevent::fuzz {

namespace {

using rapidjson::Value;

// AWR trees that show their bytes eight times need the most: nodes of one byte, with 83 characters
// for 9 bytes each time. And what an event of few bytes says.
constexpr std::size_t kTextOfAnyEvent = 4096;
constexpr std::size_t kTextPerByte = 80;

std::string_view textOf(const Value& json) { return {json.GetString(), json.GetStringLength()}; }

bool take(std::string_view& text, std::string_view expected) {
  const bool there = text.starts_with(expected);
  text.remove_prefix(there ? expected.size() : 0);
  return there;
}

void takeBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

/// Whether the elements stand at the beginning of `body`, which is moved behind them.
bool takeElements(std::string_view& body, const Value& elements) {
  for (const Value& element : elements.GetArray()) {
    const std::string key(textOf(element["key"]));
    takeBlanks(body);
    if (!take(body, "<" + key + ">") ||
        !(element.HasMember("fields") ? takeElements(body, element["fields"])
                                      : take(body, textOf(element["value"]))) ||
        !take(body, "</" + key + ">")) {
      return false;
    }
  }
  takeBlanks(body);
  return true;
}

void requireSameFacts(std::string_view line, const support::EventFields& fields) {
  rapidjson::Document json;
  json.Parse<rapidjson::kParseValidateEncodingFlag>(line.data(), line.size());
  require(!json.HasParseError(), "a JSON line is JSON in UTF-8");
  require(line.find('\n') == line.size() - 1, "a JSON line is one line");
  constexpr const char* keys[] = {"enclosure_serial", "controller_serial", "source", "category",
                                  "event_id",         "summary",           "body"};
  for (std::size_t text = 0; text < std::size(keys); ++text) {
    require(textOf(json[keys[text]]) == fields.texts[text], "the JSON has the event's texts");
  }
  std::string_view body = fields.body();
  require(takeElements(body, json["fields"]) && body.empty(),
          "the JSON's fields are the Body taken apart");
}

}  // namespace

support::EventFields decodeChecked(
    std::string_view record, const std::function<std::unique_ptr<Pegasus::Quarn_Event>()>& decode) {
  static const std::unique_ptr<tool::EventForm> json =
      tool::makeJsonForm(tool::ShowPayload::automatic);
  const std::span bytes(reinterpret_cast<const unsigned char*>(record.data()), record.size());
  support::EventFields fields;
  tool::TextBuffer line;
  inLinearTime(record.size(), [&] {
    const Pegasus::FieldRecorder recorded;
    const std::unique_ptr<Pegasus::Quarn_Event> event = decode();
    fields = support::fieldsOf(*event);
    line.clear();
    json->write({{}, 0, 0, bytes, "decoder", *event, &recorded}, line);
  });
  require(fields.textSize() <= kTextOfAnyEvent + kTextPerByte * record.size(),
          "text in proportion to the record");
  require(fields == support::fieldsOf(*decode()), "decoding twice gives the same event");
  requireSameFacts(line.view(), fields);
  return fields;
}

}  // namespace mpuevent::fuzz

// What is recorded of a Body's elements: for every sample, for texts that look like elements, and
// for Bodies that are put together by hand.
#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/ISCSIMP_Event.h>
#include <MPUEvent/NETWORK_CONFIGMP_Event.h>
#include <MPUEvent/QuarnEvent.h>
#include <MPUEvent/XmlString.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "records/SampleRecords.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::support::fieldsOf;
using mpuevent::support::utf8;
using Pegasus::FieldRecorder;
using Pegasus::RecordedField;
using Pegasus::String;

std::string part(const String& body, unsigned start, unsigned length) {
  return utf8(body.subString(start, length));
}

std::string withoutEscapes(std::string text) {
  std::erase(text, '\\');
  return text;
}

/// "key=value;" for values, "key{...}" for groups. On the way it is required that tags and white
/// space are all that is left of the Body when the values are taken away.
std::string shown(const FieldRecorder& fields, const String& body) {
  EXPECT_TRUE(fields.isComplete()) << utf8(body);
  std::string text;
  std::vector<const RecordedField*> groups;
  unsigned at = 0;
  const auto passBlanks = [&](unsigned to) {
    EXPECT_LE(at, to);
    EXPECT_EQ(part(body, at, to - at).find_first_not_of(" \n"), std::string::npos);
  };
  const auto passClosingTag = [&](const RecordedField& field) {
    const unsigned from = field.valueStart + field.valueLength;
    at = field.start + field.length;
    const std::string key = part(body, field.keyStart, field.keyLength);
    EXPECT_EQ(withoutEscapes(part(body, from, at - from)), "</" + withoutEscapes(key) + ">");
  };
  const auto leaveGroups = [&](std::size_t depth) {
    for (; groups.size() > depth; groups.pop_back(), text += "}") {
      passBlanks(groups.back()->valueStart + groups.back()->valueLength);
      passClosingTag(*groups.back());
    }
  };
  for (const RecordedField& field : fields) {
    leaveGroups(field.depth);
    EXPECT_EQ(groups.size(), field.depth);
    passBlanks(field.start);
    const std::string key = part(body, field.keyStart, field.keyLength);
    EXPECT_EQ(withoutEscapes(part(body, field.start, field.valueStart - field.start)),
              "<" + withoutEscapes(key) + ">");
    text += key;
    if (field.isGroup) {
      text += "{";
      groups.push_back(&field);
      at = field.valueStart;
    } else {
      text += "=" + part(body, field.valueStart, field.valueLength) + ";";
      passClosingTag(field);
    }
  }
  leaveGroups(0);
  passBlanks(body.size());
  return text;
}

std::set<std::string> keysOf(const FieldRecorder& fields, const String& body) {
  std::set<std::string> keys;
  for (const RecordedField& field : fields) {
    keys.insert(std::to_string(field.depth) + part(body, field.keyStart, field.keyLength));
  }
  return keys;
}

TEST(FieldRecorder, TellsTheElementsOfEverySample) {
  std::mt19937 random(1307);
  FieldRecorder fields;
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      SCOPED_TRACE(testing::Message() << module.name << ", event id " << sample.id);
      const std::string whole = mpuevent::samples::record(module, sample).str();
      for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        std::string record = whole;
        for (int change = round; change > 0 && record.size() > 152; change /= 2) {
          constexpr char bytes[] = "<>/\\=&; \0\1\2\xC3\xA9\xFF";
          record[152 + random() % (record.size() - 152)] = bytes[random() % sizeof bytes];
        }
        const auto event = mpuevent::support::decode(record);
        const String body = event->getBody();
        const std::string text = shown(fields, body);
        EXPECT_EQ(text.empty(), body.size() == 0);
        FieldRecorder inner;  // the outer one stays as it is
        EXPECT_EQ(fieldsOf(*mpuevent::support::decode(record)), fieldsOf(*event));
        EXPECT_EQ(shown(inner, body), text);
        if (HasFailure()) return;
      }
    }
  }
}

/// The samples' texts replaced by ones that close their element and open another: nothing but the
/// value changes.
TEST(FieldRecorder, TellsNoElementThatATextForges) {
  FieldRecorder fields;
  std::set<std::string_view> forgedIn;
  for (const mpuevent::samples::Module& module : mpuevent::samples::modules()) {
    for (const mpuevent::samples::Sample& sample : module.samples()) {
      SCOPED_TRACE(testing::Message() << module.name << ", event id " << sample.id);
      const auto event = mpuevent::support::decode(mpuevent::samples::record(module, sample).str());
      const String body = event->getBody();
      const std::set<std::string> keys = keysOf(fields, body);
      for (const RecordedField& field : std::vector<RecordedField>(fields.begin(), fields.end())) {
        const std::string value = part(body, field.valueStart, field.valueLength);
        const std::size_t at = sample.payload.find(value);
        if (field.isGroup || value.size() < 4 || at == std::string::npos) continue;
        const std::string key = part(body, field.keyStart, field.keyLength);
        const std::string forged = "</" + key + "><X>9</X><" + key + ">";
        mpuevent::samples::Sample forgedSample = sample;
        if (key == "File" && module.source < 10) forgedSample.payload[19] = 127;  // its length
        forgedSample.payload.replace(at, std::min(value.size(), forged.size()), forged);
        const auto forgedEvent =
            mpuevent::support::decode(mpuevent::samples::record(module, forgedSample).str());
        const String forgedBody = forgedEvent->getBody();
        shown(fields, forgedBody);
        if (utf8(forgedBody).find("<X>9</X>") == std::string::npos) continue;
        EXPECT_TRUE(std::ranges::includes(keys, keysOf(fields, forgedBody)));
        forgedIn.insert(module.name);
      }
    }
  }
  const std::set<std::string_view> expected = {
      "AIMMP", "AWR8P", "DDLMMP",           "IOMGR8P",   "ISCSIMP",
      "ISNSC", "MIP8P", "NETWORK_CONFIGMP", "STARTUPMP", "SYSTEM_CONFIGMP"};
  EXPECT_TRUE(std::ranges::includes(forgedIn, expected)) << testing::PrintToString(forgedIn);
}

/// The safety pass takes the first closing tag that fits for the element's end, wherever it came
/// from; recorded is what the decoder wrote.
TEST(FieldRecorder, FollowsTheSafetyPass) {
  const auto decode = [](const std::string& module, const std::string& node) {
    mpuevent::support::Payload payload;
    payload.u32(1).u32(1).u32(2).field(module, 8).u32(77).u32(1).padTo(24 + 92);
    payload.field(node, 224).text("=");
    return mpuevent::support::decode(
        mpuevent::support::RecordBuilder().source(31).payload(payload).str());
  };
  FieldRecorder fields;
  const auto event = decode("a&b", "</ICS_MESSAGE><Line>5</Line>");
  const String body = event->getBody();
  const std::string text = shown(fields, body);
  EXPECT_TRUE(text.starts_with("ICS_MESSAGE{Module=a\\&b;Line=77;")) << text;
  EXPECT_TRUE(text.ends_with("src_node_id=</ICS_MESSAGE><Line>5</Line>;src_node_alias=: ;}"))
      << text;
  EXPECT_TRUE(
      utf8(body).ends_with("\\<src_node_id\\></ICS_MESSAGE><Line>5</Line>\\</src_node_id\\> "
                           "\\<src_node_alias\\>: \\</src_node_alias\\> \\</ICS_MESSAGE\\>"))
      << utf8(body);
}

TEST(FieldRecorder, FindsTextsThatBecomeTheBody) {
  FieldRecorder fields;
  Pegasus::QuarnEvent event(nullptr, 0);
  char key[] = "Key";
  char format[] = "%s";
  const auto now = [&] { return shown(fields, event.getBody()); };
  const auto bytes =
      mpuevent::support::RecordBuilder().payload(std::string("t\xC3\xA9\xF0\x9F\x98\x80")).str();
  const auto* record = reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(bytes.data());

  const String second = Pegasus::Quarn_Event::xmlizeString("B", "<A>1</A>");
  const String first = Pegasus::Quarn_Event::xmlize("A\xE9", "1");
  event.setBody(first + String("\n") + second);
  EXPECT_EQ(now(), "A\xC3\xA9=1;B=<A>1</A>;");
  event.addEntry(key, format, "\xC3\xA9<");
  event.setBody(event.getBody() + Pegasus::get_NCS_text_event_body(record));
  event.addEntry(key, format, std::string(3000, 'x').c_str());
  EXPECT_EQ(now(), "A\xC3\xA9=1;B=<A>1</A>;Key=\xC3\xA9<;Text=t\xC3\xA9\xF0\x9F\x98\x80;Key=" +
                       std::string(3000, 'x') + ";");
  Pegasus::XmlString elements;
  elements.append(Pegasus::XmlString::addDecimalElement("N", 5));
  elements.append(Pegasus::XmlString::addHexElement("H", 5));
  event.setBody(elements.text().c_str());
  EXPECT_EQ(now(), "N=5;H=0x00000005;");

  char loose[] = "<C>2</C>";
  event.appendBody(loose);
  EXPECT_FALSE(fields.isComplete());
  EXPECT_EQ(fields.size(), 2U);
  event.setBody("");
  EXPECT_EQ(now(), "");
  // Each text counts once, whoever repeats it.
  const String once = Pegasus::Quarn_Event::xmlize("A", "1");
  event.setBody(once + once);
  EXPECT_FALSE(fields.isComplete());
  EXPECT_EQ(fields.size(), 1U);
}

}  // namespace

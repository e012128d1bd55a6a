#include <MPUEvent/Quarn_Event.h>
#include <gtest/gtest.h>

#include <iostream>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using namespace mpuevent::support;
using Pegasus::EmpEvLogMsg_s;
using Pegasus::Quarn_Event;

Quarn_Event eventOf(const std::string& record, unsigned int length) {
  return {reinterpret_cast<const EmpEvLogMsg_s*>(record.data()), length};
}

Quarn_Event eventOf(const std::string& record) {
  return eventOf(record, static_cast<unsigned int>(record.size()));
}

RecordBuilder distinctRecord() {
  return RecordBuilder()
      .enclosureSerial("ENC-1")
      .controllerSerial("CARD-2")
      .slot(0x01020304)
      .logInstance(0x05060708)
      .sequenceId(0x090A0B0C)
      .timestamp(0x8D0E0F10)
      .source(22)
      .type(2)
      .category(9)
      .idVersion(7)
      .id(0xFFFE);
}

TEST(BaseEvent, DecodesEveryHeaderField) {
  // Numbers of 2^31 and above print negative here.
  EXPECT_EQ(utf8(eventOf(distinctRecord().str()).str()),
            "Enclosure Ser#: 'ENC-1', Card Ser#: 'CARD-2', Slot: 16909060, "
            "Log Instance # 84281096, Sequence ID=151653132, Timestamp=-1928458480, "
            "Source: 'ICS', Category: 'Network', EventType=2, EventID: '65534', Summary: '', "
            "Body: ''");
  EXPECT_EQ(utf8(Quarn_Event(nullptr, 300).str()),
            "Enclosure Ser#: '', Card Ser#: '', Slot: 0, Log Instance # 0, Sequence ID=0, "
            "Timestamp=0, Source: '', Category: '', EventType=0, EventID: '', Summary: '', "
            "Body: ''");
}

TEST(BaseEvent, SettersReplaceWhatGettersAndStrShow) {
  Quarn_Event event(nullptr, 0);
  event.setEnclosureSerialNumber("a");
  event.setControllerSerialNumber("b");
  event.setControllerSlotID(1);
  event.setEventLogInstanceNumber(2);
  event.setSequenceID(3);
  event.setTimestamp(4);
  event.setSource("c");
  event.setCategory("d");
  event.setEventType(5);
  event.setEventID("e");
  event.setSummary("f");
  event.setBody("g");
  EXPECT_EQ(utf8(event.str()),
            "Enclosure Ser#: 'a', Card Ser#: 'b', Slot: 1, Log Instance # 2, Sequence ID=3, "
            "Timestamp=4, Source: 'c', Category: 'd', EventType=5, EventID: 'e', Summary: 'f', "
            "Body: 'g'");
  EventFields expected;
  expected.texts = {"a", "b", "c", "d", "e", "f", "g"};
  expected.numbers = {1, 2, 3, 4, 5};
  EXPECT_EQ(fieldsOf(event), expected);
}

TEST(BaseEvent, SerialNumbersEndAtTheirFieldAndKeepTheirBytes) {
  const std::string full(64, 'x');  // and no NUL
  const std::string utf8Text = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  const std::string lastCharacters = "\xEF\xBF\xBF\xF4\x8F\xBF\xBF";
  const std::pair<std::string, std::string> cases[] = {
      {full + "longer",    full                              },
      {utf8Text,           utf8Text                          },
      {lastCharacters,     lastCharacters                    },
      {"r\xE9seau",        "r\xC3\xA9seau"                   },
      {"ab\xE2\x82",       "ab\xC3\xA2\xC2\x82"              },
      {"\xE0\x9F\xBF",     "\xC3\xA0\xC2\x9F\xC2\xBF"        },
      {"\xED\xA0\x80",     "\xC3\xAD\xC2\xA0\xC2\x80"        },
      {"\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xC2\x80\xC2\x80"},
  };
  for (const auto& [serial, expected] : cases) {
    const Quarn_Event event =
        eventOf(RecordBuilder().enclosureSerial(serial).controllerSerial("next").str());
    EXPECT_EQ(utf8(event.getEnclosureSerialNumber()), expected);
    EXPECT_EQ(utf8(event.getControllerSerialNumber()), "next");
  }
}

TEST(BaseEvent, TracesALengthThatDoesNotFit) {
  const std::string record = RecordBuilder().structLength(40).payload(std::string(48, 'p')).str();
  {
    const TraceCapture trace;
    const Quarn_Event event = eventOf(record);
    const std::vector<std::string> lines = trace.lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0],
              "Quarn_Event:152               :----: Quarn_Event constructed with len=200, but "
              "evStructLength=40");
    EXPECT_EQ(lines[1], "Quarn_Event:153               :----: Contents of Event data is:");
    EXPECT_EQ(lines[2], "Quarn_Event:154               :----: " + utf8(event.str()));
  }
  const TraceCapture trace;
  eventOf(RecordBuilder().payload(std::string(48, 'p')).str());
  eventOf(RecordBuilder().str());
  EXPECT_TRUE(trace.lines().empty());
}

std::string trimmed(const std::string& line) { return line.substr(line.find(":----: ") + 7); }

TEST(BaseEvent, TraceNumbersAreDecimalButForEventIdsThatFollowTheStream) {
  const std::ios_base::fmtflags before = std::cout.flags();
  const auto isnsc = Payload().u32(1).u32(1).u32(1).at(24).u32(0xA000).padTo(64);
  const auto last = [](const RecordBuilder& record) {
    const TraceCapture trace;
    decode(record.str());
    return trimmed(trace.lines().back());
  };
  const struct {
    std::ios_base::fmtflags flags;
    const char* id;
    const char* type;
  } cases[] = {
      {std::ios_base::dec,                           "26",   "40960"  },
      {std::ios_base::hex,                           "1a",   "a000"   },
      {std::ios_base::hex | std::ios_base::showbase, "0x1a", "0xa000" },
      {std::ios_base::oct | std::ios_base::showbase, "032",  "0120000"},
  };
  for (const auto& [flags, id, type] : cases) {
    std::cout.flags(flags);
    {
      const TraceCapture trace;
      eventOf(RecordBuilder().source(200).category(100).type(99).structLength(40).str());
      const std::vector<std::string> lines = trace.lines();
      ASSERT_EQ(lines.size(), 6U);
      EXPECT_EQ(trimmed(lines[0]),
                "Quarn_Event::sourceFromEmpValue() has no case for source # 200");
      EXPECT_TRUE(lines[1].ends_with("category # 100")) << lines[1];
      EXPECT_TRUE(lines[2].ends_with("Event Type # 99")) << lines[2];
      EXPECT_EQ(trimmed(lines[3]), "Quarn_Event constructed with len=152, but evStructLength=40");
      EXPECT_TRUE(
          lines[5].ends_with("Timestamp=86407, Source: '200', Category: '100', "
                             "EventType=0, EventID: '258', Summary: '', Body: ''"))
          << lines[5];
    }
    for (const auto source : std::initializer_list<std::uint8_t>{13, 23, 24}) {
      SCOPED_TRACE(+source);
      EXPECT_EQ(last(RecordBuilder().source(source).id(26)),
                "Unknown EventID: 0x" + std::string(id));
    }
    EXPECT_EQ(last(RecordBuilder().source(18).id(26)), "Unknown EventID: " + std::string(id));
    for (const auto source : std::initializer_list<std::uint8_t>{4, 5, 7}) {
      SCOPED_TRACE(+source);
      EXPECT_EQ(last(RecordBuilder().source(source).id(260)), "Unknown EventID: 0x260");
    }
    const Payload classed = Payload().u32(1).u32(2).u32(3).u32(4).u32(492);
    EXPECT_EQ(last(RecordBuilder().source(5).id(1).payload(classed)), "IOMGR_Event: Length=0x492");
    const TraceCapture trace;
    decode(RecordBuilder().source(31).payload(isnsc).str());
    const std::vector<std::string> lines = trace.lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_NE(lines[0].find("raw_event_log_data size = 64"), std::string::npos) << lines[0];
    EXPECT_EQ(trimmed(lines[1]), "Unknown ics_type" + std::string(type));
    EXPECT_NE(lines[2].find("event_id_buf actual data size = 19"), std::string::npos) << lines[2];
  }
  std::cout.flags(before);
}

// The words are rows of a golden text.
TEST(Vocabularies, TraceTheirGaps) {
  const Quarn_Event event(nullptr, 0);
  const TraceCapture trace;
  for (const unsigned int code : {0U, 31U, 32U, 33U}) event.sourceFromEmpValue(code);
  EXPECT_EQ(utf8(event.sourceFromEmpValue(0xFFFFFFFF)), "-1");
  for (const unsigned int code : {0U, 13U, 14U}) event.categoryFromEmpValue(code);
  for (const unsigned int code : {3U, 4U}) event.eventTypeFromEmpValue(code);
  const std::string source =
      "Quarn_Event:173               :----: Quarn_Event::sourceFromEmpValue() has no case for "
      "source # ";
  const std::string category =
      "Quarn_Event:300               :----: Quarn_Event::categoryFromEmpValue() has no case for "
      "category # ";
  EXPECT_EQ(trace.lines(),
            (std::vector<std::string>{
                source + "32", source + "4294967295", category + "0", category + "14",
                "Quarn_Event:361               :----: Quarn_Event::eventTypeFromEmpValue() has no "
                "case for Event Type # 4"}));
}

}  // namespace

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

TEST(BaseEvent, EventTypeHasAWordAndANumber) {
  const char* const words[] = {"", "Informational", "Warning", "Error", "", ""};
  for (std::uint8_t type = 0; type < 6; ++type) {
    Quarn_Event event = eventOf(RecordBuilder().type(type).str());
    EXPECT_EQ(utf8(event.getEventType()), words[type]);
    EXPECT_EQ(std::as_const(event).getEventType(), type <= 3 ? type : 0U);
  }
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

TEST(BaseEvent, FieldsThatAreNotHeldReadAsNothing) {
  const std::string record = distinctRecord().str();
  const Quarn_Event cut = eventOf(record.substr(0, 134));
  EXPECT_EQ(cut.getControllerSlotID(), 0x01020304U);
  EXPECT_EQ(cut.getEventLogInstanceNumber(), 0U);
  EXPECT_EQ(utf8(cut.getEventID()), "0");
  EXPECT_EQ(utf8(eventOf(record.substr(0, 67)).getControllerSerialNumber()), "CAR");
  EXPECT_EQ(utf8(eventOf(record, 0xFFFFFFFF).getEnclosureSerialNumber()), "");
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

TEST(BaseEvent, TraceNumbersTakeTheStreamsBaseAndLeaveItAlone) {
  const TraceCapture trace;
  std::cout << std::hex;
  eventOf(RecordBuilder().source(200).str());
  EXPECT_TRUE((std::cout.flags() & std::ios_base::hex) != 0);
  std::cout << std::dec;
  ASSERT_EQ(trace.lines().size(), 1U);
  EXPECT_EQ(trace.lines()[0],
            "Quarn_Event:173               :----: Quarn_Event::sourceFromEmpValue() has no case "
            "for source # c8");
}

// The golden text of the samples shows the names of the sources that have a decoder.
TEST(Vocabularies, HaveGaps) {
  const Quarn_Event event(nullptr, 0);
  const TraceCapture trace;
  const std::pair<unsigned int, const char*> sources[] = {
      {0,          "iSCSI 1"   },
      {11,         "MIP Local" },
      {31,         "iSNS"      },
      {32,         "32"        },
      {33,         "ES Adapter"},
      {34,         "34"        },
      {0xFFFFFFFF, "-1"        },
  };
  for (const auto& [code, name] : sources) EXPECT_EQ(utf8(event.sourceFromEmpValue(code)), name);
  const std::pair<unsigned int, const char*> categories[] = {
      {0,  "0"     },
      {1,  "System"},
      {4,  "Device"},
      {6,  "Device"},
      {13, "iSNS"  },
      {14, "14"    },
  };
  for (const auto& [code, word] : categories) {
    EXPECT_EQ(utf8(event.categoryFromEmpValue(code)), word);
  }
  EXPECT_EQ(event.eventTypeFromEmpValue(3), 3U);
  EXPECT_EQ(event.eventTypeFromEmpValue(4), 0U);
  const std::string source =
      "Quarn_Event:173               :----: Quarn_Event::sourceFromEmpValue() has no case for "
      "source # ";
  const std::string category =
      "Quarn_Event:300               :----: Quarn_Event::categoryFromEmpValue() has no case for "
      "category # ";
  EXPECT_EQ(
      trace.lines(),
      (std::vector<std::string>{
          source + "32", source + "34", source + "4294967295", category + "0", category + "14",
          "Quarn_Event:361               :----: Quarn_Event::eventTypeFromEmpValue() has no "
          "case for Event Type # 4"}));
}

}  // namespace

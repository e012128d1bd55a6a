#include <MPUEvent/NETWORK_CONFIGMP_Event.h>
#include <gtest/gtest.h>

#include <array>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using mpuevent::support::TraceCapture;
using mpuevent::support::utf8;
using namespace Pegasus;
using Texts = std::array<std::string, 3>;  // EventID, Summary, Body

RecordBuilder recordOf(std::uint16_t id, const Payload& payload) {
  return RecordBuilder().source(24).id(id).payload(payload);
}

Texts decode(const RecordBuilder& record) {
  const auto fields = mpuevent::support::fieldsOf(*mpuevent::support::decode(record.str()));
  return {fields.texts[4], fields.texts[5], fields.texts[6]};
}

EmpEvLogMsg_s const* pointerTo(const std::string& record) {
  return reinterpret_cast<EmpEvLogMsg_s const*>(record.data());
}

const Payload text = Payload().text("eth0=up & <ok>").text("unused");
const std::string shown = "eth0=up & <ok>";
const std::string textBody = "<Text>eth0=up & <ok></Text> ";

Payload mmsg() {
  Payload bytes;
  bytes.u8(0xE7).u24(0x8A0B0C).u32(0x01020304).u32(0xFFFFFFFB).u32(0x05).u32(0x11121314);
  bytes.u32(0xFFFFFF91).u32(0x21222324).u32(0xDEADBEEF).u32(0x00000102).u32(0x0A0B0C0D);
  return bytes.text("late & <lost>");
}
const std::string mmsgBody =
    "<OpCode_Protocol>231</OpCode_Protocol> <OpCode_Type>0x008A0B0C</OpCode_Type> "
    "<Requestor>16909060</Requestor> <Dest_EP>-5</Dest_EP> <Control_Flags>0x05</Control_Flags> "
    "<MMSG_Length>286397204</MMSG_Length> <Return_Code>-111</Return_Code> "
    "<Handle>555885348</Handle> <General_Use1>0xDEADBEEF</General_Use1> "
    "<General_Use2>0x00000102</General_Use2> <General_Use3>0x0A0B0C0D</General_Use3> "
    "<Text>late & <lost></Text> ";

Payload responseEvent() {
  Payload bytes;
  bytes.u32(0x01020304).u32(0xFFFFFFFD).u32(0x11121314).u32(30).u32(500000);
  return bytes.u32(0x0A0B0C0D).u32(0x1A1B1C1D).u32(0xFA2B2C2D).text("no event");
}
const std::string responseEventBody =
    "<Thread_Index>16909060</Thread_Index> <Dest_Endpoint>-3</Dest_Endpoint> "
    "<Request_Handle>286397204</Request_Handle> <Timeout_seconds>30</Timeout_seconds> "
    "<Timeout_microseconds>500000</Timeout_microseconds> <pSema>0x0A0B0C0D</pSema> "
    "<pMmsgLh>0x1A1B1C1D</pMmsgLh> <pTimedout>0xFA2B2C2D</pTimedout> <Text>no event</Text> ";

Payload link(std::uint32_t port, std::uint32_t status) {
  return Payload().u32(port).u32(0xEEEEEEEE).u32(status).u8(0xA1).u8(0xEE).u8(0xB2).u8(0xEE);
}
std::string linkBody(const std::string& port, const std::string& status) {
  return "<LAG_Port>" + port + "</LAG_Port> <Operatioanl_Status>" + status +
         "</Operatioanl_Status> <Admin_State>178</Admin_State> "
         "<Physical_BladeId>161</Physical_BladeId> ";
}

TEST(NetworkConfig, DecodesEachEvent) {
  struct Case {
    std::uint16_t id;
    Payload payload;
    const char* eventId;
    std::string summary;
    String (*render)(EmpEvLogMsg_s const*);
    std::string body;
  };
  const Payload dump = Payload().text("BPDU").u32(0x0180C2AF);
  const auto dumpRenderer = [](EmpEvLogMsg_s const* record) {
    return get_NCS_dump_event_body(record, record == nullptr ? 0 : 9);
  };
  const char* mmsgError = "NCS MMSG Request Error";
  const char* lagStatus = "LAG Port Status Event";
  const auto mmsgRenderer = get_NCS_mmsg_event_body;
  const auto lagRenderer = get_NCS_link_event_body;
  // clang-format off
  const Case cases[] = {
      {1000, text, "NCS:Informational Text", shown, get_NCS_text_event_body, textBody},
      {1001, text, "NCS:Warning message", shown, get_NCS_text_event_body, textBody},
      {1002, text, "NCS:Error message", shown, get_NCS_text_event_body, textBody},
      {1003, dump, "Info", "Informational Text and Hex Dump Data", dumpRenderer,
       "<Text>BPDU</Text> <Hex>0180C2AF</Hex>\n"},
      {1021, mmsg(), mmsgError, "NCS: MMSG with unknown Protocol", mmsgRenderer, mmsgBody},
      {1022, mmsg(), mmsgError, "NCS: MMSG with invalid Request type", mmsgRenderer, mmsgBody},
      {1023, mmsg(), mmsgError, "NCS: MMSG with invalid Requester", mmsgRenderer, mmsgBody},
      {1024, mmsg(), mmsgError, "NCS: MMSG request with Response bit set", mmsgRenderer, mmsgBody},
      {1025, mmsg(), mmsgError, "NCS: MMSG Response Timedout", mmsgRenderer, mmsgBody},
      {1026, responseEvent(), "NCS CEE Event registration Error",
       "NCS: Failed to Register CEE response event", get_NCS_responseEvent_body, responseEventBody},
      {1030, text, "NCS: Socket Open Failure", "NCS: Socket open operation Failed",
       get_NCS_text_event_body, textBody},
      {1040, link(3, 0x410), lagStatus, "LAG Port 3, Operational Status UP", lagRenderer,
       linkBody("3", "UP")},
      {1041, link(0xFFFFFFF8, 0x411), lagStatus, "LAG Port -8, Operational Status DOWN",
       lagRenderer, linkBody("-8", "DOWN")},
      // The event and its status word need not agree.
      {1041, link(5, 0x410), lagStatus, "LAG Port 5, Operational Status DOWN", lagRenderer,
       linkBody("5", "UP")},
  };
  // clang-format on
  for (const Case& c : cases) {
    const TraceCapture trace;
    const RecordBuilder record = recordOf(c.id, c.payload);
    EXPECT_EQ(decode(record), (Texts{c.eventId, c.summary, c.body}));
    EXPECT_TRUE(trace.lines().empty());
    const std::string bytes = record.str();
    EXPECT_EQ(utf8(c.render(pointerTo(bytes))), c.body);
    EXPECT_EQ(utf8(c.render(nullptr)), "");
  }
}

TEST(NetworkConfig, CutsTheSummaryButNotTheBody) {
  const std::string begin = std::string(250, 'a') + "bcdef";
  const RecordBuilder record = recordOf(1000, Payload().text(begin + "ghi"));
  EXPECT_EQ(decode(record),
            (Texts{"NCS:Informational Text", begin, "<Text>" + begin + "ghi</Text> "}));
  const std::string bytes = record.str();
  EXPECT_EQ(utf8(get_NCS_text_event_summary(pointerTo(bytes))), begin);
  EXPECT_EQ(utf8(get_NCS_text_event_summary(nullptr)), "");
}

TEST(NetworkConfig, DumpsWhatTheLengthLeavesBehindTheText) {
  const Payload payload = Payload().text("abc").u24(0x01FE7F);
  const std::string bytes = recordOf(1000, payload).str();
  const auto expected = [](const std::string& hex) {
    return "<Text>abc</Text> <Hex>" + hex + "</Hex>\n";
  };
  const std::pair<int, const char*> cases[] = {
      {65535, "01FE7F"},
      {6,     "01FE"  },
      {4,     ""      },
      {2,     ""      }
  };
  for (const auto& [length, hex] : cases) {
    const auto structLength = static_cast<std::uint16_t>(length);
    EXPECT_EQ(decode(recordOf(1003, payload).structLength(structLength))[2], expected(hex));
    EXPECT_EQ(utf8(get_NCS_dump_event_body(pointerTo(bytes), length)), expected(hex));
  }
  EXPECT_EQ(utf8(get_NCS_dump_event_body(pointerTo(bytes), -2147483647 - 1)), expected(""));
  EXPECT_EQ(decode(recordOf(1003, Payload()))[2], "<Text></Text> <Hex></Hex>\n");
}

TEST(NetworkConfig, LeavesOutWhatIsNotHeld) {
  const Payload shortMmsg = Payload().bytes(mmsg().str().substr(0, 40));
  EXPECT_EQ(decode(recordOf(1021, shortMmsg))[2],
            mmsgBody.substr(0, mmsgBody.find("late")) + "</Text> ");
  EXPECT_EQ(decode(recordOf(1040, Payload().u32(3).zeros(7)))[2], "<LAG_Port>3</LAG_Port> ");
  EXPECT_EQ(decode(recordOf(1040, Payload().u24(7))),
            (Texts{"LAG Port Status Event", "LAG Port 0, Operational Status UP", ""}));
  EXPECT_EQ(decode(recordOf(1000, Payload())),
            (Texts{"NCS:Informational Text", "", "<Text></Text> "}));
}

TEST(NetworkConfig, DumpsUnknownEvents) {
  for (const int id : {999, 1004, 1020, 1027, 1029, 1031, 1039, 1042}) {
    const TraceCapture trace;
    const std::string number = std::to_string(id);
    EXPECT_EQ(decode(recordOf(static_cast<std::uint16_t>(id), Payload().u32(0x00ABCDEF))),
              (Texts{number, "***UNKNOWN EventID***", "<Hex>00ABCDEF</Hex>"}));
    EXPECT_EQ(trace.lines(),
              std::vector<std::string>{"NETWORK_CONFIGMP_Event:114    :----: Unknown EventID: 0x" +
                                       number});
  }
}

}  // namespace

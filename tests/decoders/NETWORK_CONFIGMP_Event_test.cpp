#include <MPUEvent/NETWORK_CONFIGMP_Event.h>
#include <gtest/gtest.h>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using mpuevent::support::Texts;
using mpuevent::support::TraceCapture;
using mpuevent::support::utf8;
using namespace Pegasus;

RecordBuilder recordOf(std::uint16_t id, const Payload& payload) {
  return RecordBuilder().source(24).id(id).payload(payload);
}

Texts decode(const RecordBuilder& record) {
  return mpuevent::support::textsOf(*mpuevent::support::decode(record.str()));
}

EmpEvLogMsg_s const* pointerTo(const std::string& record) {
  return reinterpret_cast<EmpEvLogMsg_s const*>(record.data());
}

// The golden text of the samples shows each event; the functions show the same bodies.
TEST(NetworkConfig, OffersEachBody) {
  const auto dump = [](EmpEvLogMsg_s const* record) {
    return get_NCS_dump_event_body(record, record == nullptr ? 0 : 60);
  };
  const std::pair<std::uint16_t, String (*)(EmpEvLogMsg_s const*)> cases[] = {
      {1000, get_NCS_text_event_body   },
      {1001, get_NCS_text_event_body   },
      {1002, get_NCS_text_event_body   },
      {1003, dump                      },
      {1021, get_NCS_mmsg_event_body   },
      {1025, get_NCS_mmsg_event_body   },
      {1026, get_NCS_responseEvent_body},
      {1030, get_NCS_text_event_body   },
      {1040, get_NCS_link_event_body   },
      {1041, get_NCS_link_event_body   },
  };
  const Payload payload = Payload().text("eth0=up & <ok>").padTo(55).text("late");
  for (const auto& [id, render] : cases) {
    const TraceCapture trace;
    const std::string record = recordOf(id, payload).str();
    EXPECT_EQ(utf8(render(pointerTo(record))), decode(recordOf(id, payload))[2]) << id;
    EXPECT_EQ(utf8(render(nullptr)), "");
    EXPECT_TRUE(trace.lines().empty());
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
  const auto expected = [](const std::string& text, const std::string& hex) {
    return "<Text>" + text + "</Text> <Hex>" + hex + "</Hex>\n";
  };
  const std::pair<std::uint16_t, const char*> cases[] = {
      {65535, "01FE7F"},
      {6,     "01FE"  },
      {4,     ""      },
      {2,     ""      }
  };
  for (const auto& [length, hex] : cases) {
    EXPECT_EQ(decode(recordOf(1003, payload).structLength(length))[2], expected("abc", hex));
  }
  EXPECT_EQ(decode(recordOf(1003, Payload()))[2], "<Text></Text> <Hex></Hex>\n");

  // A caller's length bounds the text as well, and the record's own bounds neither.
  const std::string bytes = recordOf(1003, payload).structLength(1).str();
  const std::pair<int, std::string> offered[] = {
      {7,               expected("abc", "01FE7F")},
      {6,               expected("abc", "01FE")  },
      {2,               expected("ab",  "")      },
      {-2147483647 - 1, expected("",    "")      },
  };
  for (const auto& [length, body] : offered) {
    EXPECT_EQ(utf8(get_NCS_dump_event_body(pointerTo(bytes), length)), body) << length;
  }
}

TEST(NetworkConfig, LeavesOutWhatIsNotHeld) {
  const std::string response = decode(recordOf(1026, Payload().u32(0x01020304).zeros(27)))[2];
  EXPECT_TRUE(response.starts_with("<Thread_Index>16909060</Thread_Index> <Dest_Endpoint>0<"));
  EXPECT_TRUE(response.ends_with("<pMmsgLh>0x00000000</pMmsgLh> <Text></Text> ")) << response;
  EXPECT_EQ(decode(recordOf(1040, Payload().u32(3).zeros(7)))[2], "<LAG_Port>3</LAG_Port> ");
  EXPECT_EQ(decode(recordOf(1040, Payload().u24(7))),
            (Texts{"LAG Port Status Event", "LAG Port 0, Operational Status UP", ""}));
  EXPECT_EQ(decode(recordOf(1000, Payload())),
            (Texts{"NCS:Informational Text", "", "<Text></Text> "}));
}

}  // namespace

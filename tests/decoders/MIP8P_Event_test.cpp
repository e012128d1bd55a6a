#include <MPUEvent/MIP8P_Event.h>
#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "decoders/EventPayload.h"
#include "support/TraceCapture.h"

namespace {

using namespace mpuevent::support;
using namespace Pegasus;

std::unique_ptr<Quarn_Event> event(std::uint32_t eventClass, std::uint32_t number,
                                   std::uint32_t dataLength = 0, const Payload& data = {}) {
  return decodePayload(7, eventPayload(eventClass, number, dataLength, data));
}

/// The elements behind the three of the head.
std::string carried(const Quarn_Event& event) {
  const std::string end = "<MIP_Event_Line_Num>4711</MIP_Event_Line_Num> ";
  const std::string body = bodyOf(event);
  const std::size_t at = body.find(end);
  return at == std::string::npos ? "no head: " + body : body.substr(at + end.size());
}

const char lwsem[] =
    "<lwsem_valid_bit>0x81828384</lwsem_valid_bit> <lwsem_value>0x85868788</lwsem_value> ";
const char mmsg[] =
    "<mmsg_length>0x00008182</mmsg_length> <mmsg_requestor>0x00000083</mmsg_requestor> "
    "<mmsg_dest_ep>0x00000084</mmsg_dest_ep> <mmsg_return_code>0x898A8B8C</mmsg_return_code> "
    "<mmsg_general_use1>0x8D8E8F90</mmsg_general_use1> "
    "<mmsg_general_use2>0x91929394</mmsg_general_use2> <mmsg_opcode>0x85868788</mmsg_opcode> ";
// The record's other fields are shown alike; the I/O manager's tests have them all.
const char msa[] =
    "<msa_full_hi_level>0x00008182</msa_full_hi_level> "
    "<msa_full_lo_level>0x00008384</msa_full_lo_level> ";

using Show = char* (MIP8P_Event::*)(MIP_EVL*, char*);

TEST(Mip, NamesTheEventsOfEachClass) {
  struct Case {
    std::uint32_t eventClass;  // 0 for functions that no class leads to
    Show show;
    std::uint32_t number;
    const char* name;
    std::string rest;
  };
  const Show management = &MIP8P_Event::get_MIP8P_management_class_event_body;
  const Show isr = &MIP8P_Event::get_MIP8P_isr_class_event_body;
  const Show startup = &MIP8P_Event::get_MIP8P_startup_class_event_body;
  const Show message = &MIP8P_Event::get_MIP8P_mmsg_class_event_body;
  const Show evl = &MIP8P_Event::get_MIP8P_evl_class_event_body;
  const Show dma = &MIP8P_Event::get_MIP8P_dma_class_event_body;
  const Show database = &MIP8P_Event::get_MIP8P_database_class_event_body;
  const Show math = &MIP8P_Event::get_MIP8P_math_class_event_body;
  const Case cases[] = {
      {1,  management, 6,          "MIP8P Unexpected Error Event", ""                                    },
      {1,  management, 12,         "MIP8P Invalid ARC Number",     ""                                    },
      {3,  isr,        1,          "Proxy MQX Event",              lwsem                                 },
      {3,  isr,        8,          "ISR Overflow",                 ""                                    },
      {4,  startup,    1,          "MIP8P Startup MQX Error",      ""                                    },
      {6,  message,    10,         "MMSG Invalid Param",           ""                                    },
      {6,  message,    11,         "MMSG Invalid MMSG",            mmsg                                  },
      {8,  evl,        0xFFFFFFFF, "EVL Error",                    ""                                    },
      {12, dma,        1,          "DMA MQX Event",                lwsem                                 },
      {12, dma,        3,          "MIP8P Unexpected Interrupt",   "<INT_STAT =>0x81828384</INT_STAT => "},
      {12, dma,        10,         "Database Invalid Param",       ""                                    },
      {12, dma,        14,         "MIP8P MSA Event",              msa                                   },
      {0,  database,   2,          "Database ENOMEM",              ""                                    },
      {0,  database,   8,          "Database Overflow",            ""                                    },
      {0,  database,   10,         "Database Invalid Param",       ""                                    },
      {0,  math,       77,         "MATH Error",                   ""                                    },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.eventClass << ", " << c.number);
    const std::string expected =
        std::string("<Request_Type>") + c.name + "</Request_Type> " + c.rest;
    if (c.eventClass != 0) {
      const auto decoded = event(c.eventClass, c.number, 32, ramp(32));
      EXPECT_EQ(utf8(decoded->getSummary()), c.name);
      EXPECT_EQ(carried(*decoded).substr(0, expected.size()), expected);
      EXPECT_EQ(carried(*decoded).size() > expected.size(), c.rest == msa);
    }
    MIP8P_Event shown(nullptr, 0);
    std::string bytes = eventPayload(99, c.number, 0, ramp(32)).str();
    std::vector<char> place(1024, '?');
    const char* end = (shown.*c.show)(reinterpret_cast<MIP_EVL*>(bytes.data()), place.data());
    EXPECT_EQ(std::string(place.data()).substr(0, expected.size()), expected);
    EXPECT_EQ(*end, '\0');
    EXPECT_EQ(std::string(place.data()).size(), static_cast<std::size_t>(end - place.data()));
    EXPECT_EQ(utf8(shown.getSummary()), c.name);
  }
}

TEST(Mip, KnowsTheEventsOfEachClass) {
  const std::pair<const char*, const char*> classes[] = {
      {"MIP Unknown Event",                      ""                         }, // 0
      {"MIP Task Event",                         "1 3 4 5 6 12 13 14 15 16 "},
      {"MIP Unknown Event",                      ""                         },
      {"MIP ISR Event",                          "1 3 7 8 "                 },
      {"MIP Startup Task Event",                 "1 1001 1002 "             },
      {"MIP Unknown Event",                      ""                         },
      {"MIP Management Message Event",           "1 10 11 "                 },
      {"MIP Redundant Controller Process Event", ""                         },
      {"MIP EVL Event",                          "every"                    },
      {"MIP Resource Assert Event",              "every"                    },
      {"MIP Unknown Event",                      ""                         },
      {"MIP Unknown Event",                      ""                         },
      {"MIP DMA Event",                          "1 3 10 14 502 "           },
      {"MIP Unknown Event",                      ""                         },
  };
  for (std::uint32_t number = 0; number < std::size(classes); ++number) {
    std::string known;
    std::size_t count = 0;
    for (const std::uint32_t eventNumber : eventNumbers()) {
      const auto decoded = event(number, eventNumber, 32, ramp(32));
      ASSERT_EQ(utf8(decoded->getEventID()), classes[number].first) << number;
      ASSERT_EQ(carried(*decoded).empty(), decoded->getSummary().size() == 0) << number;
      if (decoded->getSummary().size() == 0) continue;
      known += std::to_string(eventNumber) + ' ';
      ++count;
    }
    EXPECT_EQ(count == eventNumbers().size() ? "every" : known, classes[number].second) << number;
  }
}

TEST(Mip, CopiesTheTextOfAnAssertOverItsName) {
  const std::string longer(200, 'y');
  const std::string longest(127, 'y');
  const std::pair<std::string, std::string> texts[] = {
      {"mip_arc.c:618",   "mip_arc.c:618"  },
      {"arc.c",           "arc.cT Error"   },
      {"in src\\arc.c\\", "in src\\arc.c\\"},
      {longer,            longest          },
  };
  for (const auto& [data, shown] : texts) {
    const auto decoded = event(9, 3, 200, Payload().bytes(data));
    EXPECT_EQ(utf8(decoded->getSummary()), shown);
    EXPECT_EQ(carried(*decoded),
              "<Request_Type>ASSERT Error</Request_Type> <File>" + shown + "</File> ");
  }
  MIP8P_Event event(nullptr, 0);
  std::string bytes = eventPayload(99, 3, 2, Payload().bytes("arc.c")).str();
  char place[128] = {};
  event.get_MIP8P_assert_class_event_body(reinterpret_cast<MIP_EVL*>(bytes.data()), place);
  EXPECT_EQ(utf8(event.getSummary()), "arSERT Error");
  EXPECT_STREQ(place, "<Request_Type>ASSERT Error</Request_Type> <File>arSERT Error</File> ");
}

TEST(Mip, DumpsARecordWithAnotherEventId) {
  const TraceCapture trace;
  const auto decoded =
      decode(RecordBuilder().source(7).id(26).payload(std::string("\x01\xAB", 2)).str());
  EXPECT_EQ(textsOf(*decoded), (Texts{"26", "Unhandled Event by MIP", "<Hex>01AB</Hex>"}));
  event(33, 1, 0xFFFFFFFE);
  const std::vector<std::string> lines = {
      "MIP8P_Event:96                :----: Unknown EventID: 0x26",
      "MIP8P_Event:119               :----: MIP_Event: Length=0x4294967294"};
  EXPECT_EQ(trace.lines(), lines);
}

TEST(Mip, OffersTheBodyAndItsRecords) {
  MIP8P_Event event(nullptr, 0);
  EXPECT_EQ(event.get_MIP8P_event_body(nullptr).size(), 0U);
  const std::string record = RecordBuilder().payload(eventPayload(4, 1001, 0, {})).str();
  const auto* bytes = reinterpret_cast<const EmpEvLogMsg_s*>(record.data());
  EXPECT_EQ(utf8(event.get_MIP8P_event_body(bytes)),
            "<MIP_Event_Type>4</MIP_Event_Type> <MIP_Event_Id>1001</MIP_Event_Id> "
            "<MIP_Event_Line_Num>4711</MIP_Event_Line_Num> "
            "<Request_Type>MIP8P Starting ARCs</Request_Type> ");
  EXPECT_EQ(utf8(event.getSummary()), "MIP8P Starting ARCs");

  const std::string data = ramp(32).str();
  char place[2048];
  char* end =
      event.get_MIP8P_lwsem_event_body(reinterpret_cast<const MIP_EVL_LWSEM*>(data.data()), place);
  end = event.get_MIP8P_mmsg_event_body(reinterpret_cast<const MIP_EVL_MMSG*>(data.data()), end);
  event.get_MIP8P_msa_event_body(reinterpret_cast<const MIP_EVL_MSA_Q_EVENT*>(data.data()), end);
  EXPECT_EQ(std::string(place).find(std::string(lwsem) + mmsg + msa), 0U);

  EXPECT_EQ(event.get_MIP8P_msa_event_body(nullptr, place), place);
  EXPECT_STREQ(place, "");
  EXPECT_EQ(event.get_MIP8P_isr_class_event_body(nullptr, nullptr), nullptr);
}

}  // namespace

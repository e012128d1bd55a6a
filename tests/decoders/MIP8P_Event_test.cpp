#include <MPUEvent/MIP8P_Event.h>
#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <string>
#include <tuple>
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

#define CLASS_BODY(word) &MIP8P_Event::get_MIP8P_##word##_class_event_body

const std::pair<std::uint32_t, char* (MIP8P_Event::*)(MIP_EVL*, char*)> classes[] = {
    {1,  CLASS_BODY(management)},
    {3,  CLASS_BODY(isr)       },
    {4,  CLASS_BODY(startup)   },
    {6,  CLASS_BODY(mmsg)      },
    {8,  CLASS_BODY(evl)       },
    {9,  CLASS_BODY(assert)    },
    {12, CLASS_BODY(dma)       },
};

/// What a class's function writes, which the event's Summary names.
std::string shownBody(char* (MIP8P_Event::*show)(MIP_EVL*, char*), std::uint32_t number) {
  MIP8P_Event shown(nullptr, 0);
  std::string bytes = eventPayload(99, number, 0, ramp(32)).str();
  char place[1024];
  const char* end = (shown.*show)(reinterpret_cast<MIP_EVL*>(bytes.data()), place);
  const std::string body = place;
  EXPECT_EQ(end, place + body.size());
  EXPECT_EQ(body.starts_with("<Request_Type>"), shown.getSummary().size() != 0);
  return body;
}

TEST(Mip, OffersTheBodyOfEachClass) {
  for (const auto& [eventClass, show] : classes) {
    for (const std::uint32_t number : eventNumbers()) {
      EXPECT_TRUE(bodyOf(*event(eventClass, number, 0, ramp(32)))
                      .ends_with("</MIP_Event_Line_Num> " + shownBody(show, number)))
          << eventClass << " " << number;
    }
  }
  const auto name = [](const std::string& text) {
    return "<Request_Type>" + text + "</Request_Type> ";
  };
  // No class leads to these two functions.
  const auto database = CLASS_BODY(database);
  EXPECT_EQ(shownBody(database, 2), name("Database ENOMEM"));
  EXPECT_EQ(shownBody(database, 8), name("Database Overflow"));
  EXPECT_EQ(shownBody(database, 10), name("Database Invalid Param"));
  EXPECT_EQ(shownBody(CLASS_BODY(math), 77), name("MATH Error"));
}

TEST(Mip, CopiesTheTextOfAnAssertOverItsName) {
  const std::pair<std::string, std::string> texts[] = {
      {"mip_arc.c:618",   "mip_arc.c:618"  },
      {"arc.c",           "arc.cT Error"   },
      {"in src\\arc.c\\", "in src\\arc.c\\"},
  };
  for (const auto& [data, shown] : texts) {
    const auto decoded = event(9, 3, 200, Payload().bytes(data));
    EXPECT_EQ(utf8(decoded->getSummary()), shown);
    EXPECT_TRUE(bodyOf(*decoded).ends_with("<Request_Type>ASSERT Error</Request_Type> <File>" +
                                           shown + "</File> "));
  }
  MIP8P_Event event(nullptr, 0);
  std::string bytes = eventPayload(99, 3, 2, Payload().bytes("arc.c")).str();
  char place[128] = {};
  event.get_MIP8P_assert_class_event_body(reinterpret_cast<MIP_EVL*>(bytes.data()), place);
  EXPECT_EQ(utf8(event.getSummary()), "arSERT Error");
  EXPECT_STREQ(place, "<Request_Type>ASSERT Error</Request_Type> <File>arSERT Error</File> ");
}

TEST(Mip, TracesALengthOfItsDataThatIsNegative) {
  const TraceCapture trace;
  event(33, 1, 0xFFFFFFFE);
  const std::vector<std::string> lines = {
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

  char place[1] = {'x'};
  EXPECT_EQ(event.get_MIP8P_msa_event_body(nullptr, place), place);
  EXPECT_STREQ(place, "");
  EXPECT_EQ(event.get_MIP8P_isr_class_event_body(nullptr, nullptr), nullptr);
}

}  // namespace

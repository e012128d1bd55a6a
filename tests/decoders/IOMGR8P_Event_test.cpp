#include <MPUEvent/IOMGR8P_Event.h>
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
  return decodePayload(5, eventPayload(eventClass, number, dataLength, data));
}

#define CLASS_BODY(word) &IOMGR8P_Event::get_IOMGR8P_##word##_class_event_body

// By class, from 1 on.
char* (IOMGR8P_Event::*const classes[])(IOMGR_EVL*, char*) = {
    CLASS_BODY(manager),
    CLASS_BODY(rebuild),
    CLASS_BODY(reconfig),
    CLASS_BODY(bbscan),
    CLASS_BODY(xoe),
    CLASS_BODY(error_recovery),
    CLASS_BODY(metadata),
    CLASS_BODY(isurpproc),
    CLASS_BODY(drpproc),
    CLASS_BODY(bg),
    CLASS_BODY(database),
    CLASS_BODY(isr),
    CLASS_BODY(startup),
    CLASS_BODY(sv),
    CLASS_BODY(dlm),
    CLASS_BODY(crc_init),
    CLASS_BODY(parity),
    CLASS_BODY(parity_init),
    CLASS_BODY(parity_error),
    CLASS_BODY(parity_scan),
    CLASS_BODY(parity_rebuild),
    CLASS_BODY(micro_rebuild),
    CLASS_BODY(volume_init),
    CLASS_BODY(mmsg),
    CLASS_BODY(rcp),
    CLASS_BODY(fe),
    CLASS_BODY(carve),
    CLASS_BODY(bg_sys),
    CLASS_BODY(macro),
    CLASS_BODY(evl),
    CLASS_BODY(assert),
    CLASS_BODY(math),
};

TEST(Iomgr, KnowsNoOtherClasses) {
  for (const std::uint32_t number : {0U, 33U, 0x01000001U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(number);
    const auto unknown = event(number, 1, 40, ramp(40));
    EXPECT_EQ(utf8(unknown->getEventID()), "Unknown Event");
    EXPECT_EQ(utf8(unknown->getSummary()), "");
    EXPECT_TRUE(bodyOf(*unknown).ends_with("<Event_Line_Number>4711</Event_Line_Number>"));
  }
}

// Whatever class the payload names.
TEST(Iomgr, OffersTheBodyOfEachClass) {
  for (std::uint32_t eventClass = 1; eventClass <= std::size(classes); ++eventClass) {
    for (const std::uint32_t number : eventNumbers()) {
      IOMGR8P_Event shown(nullptr, 0);
      char place = 0;
      std::string bytes = eventPayload(99, number, 492, ramp(584)).str();
      auto* payload = reinterpret_cast<IOMGR_EVL*>(bytes.data());
      EXPECT_EQ((shown.*classes[eventClass - 1])(payload, &place), &place);
      const auto decoded = event(eventClass, number, 492, ramp(584));
      EXPECT_EQ(utf8(shown.getSummary()), utf8(decoded->getSummary()));
      EXPECT_TRUE(bodyOf(*decoded).ends_with("</Event_Line_Number>" + bodyOf(shown)))
          << eventClass << " " << number;
    }
  }
}

TEST(Iomgr, CopiesTheTextOfAnAssertOverItsName) {
  struct Case {
    std::string data;
    std::uint32_t length;
    std::string summary;
    std::string file;
  };
  const std::string nulInside("a\0b", 3);
  const std::string nulFirst("\0b", 2);
  const std::string longer(130, 'x');
  const std::string longest(127, 'x');
  const Case cases[] = {
      {"",                 0,          "ASSERT Error",        "ASSERT Error"       },
      {"",                 9,          "ASSERT Error",        "ASSERT Error"       },
      {"vt.c",             2,          "vtSERT Error",        "vtSERT Error"       },
      {"vt.c",             0xFFFFFFFF, "vt.cRT Error",        "vt.cRT Error"       },
      {"iomgr_vt.c:118",   14,         "iomgr_vt.c:118",      "iomgr_vt.c:118"     },
      {nulInside,          3,          "a",                   "a"                  },
      {nulFirst,           2,          "",                    ""                   },
      {longer,             130,        longest,               longest              },
      {"in src\\vt.c\\",   12,         "in src\\vt.c\\",      "in src\\vt.c."      },
      {"in src\\vt.c\\\\", 13,         "in src\\vt.c\\\\",    "in src\\vt.c\\\\"   },
      {"caf\xE9 in vt.c",  12,         "caf\xC3\xA9 in vt.c", "caf\xC3\xA9 in vt.c"},
  };
  for (const Case& c : cases) {
    const auto decoded = event(31, 5, c.length, Payload().bytes(c.data));
    EXPECT_EQ(utf8(decoded->getSummary()), c.summary);
    const std::string end = "<Request_Type>ASSERT Error</Request_Type><File>" + c.file + "</File>";
    EXPECT_TRUE(bodyOf(*decoded).ends_with(end)) << bodyOf(*decoded);
  }
}

TEST(Iomgr, TracesALengthOfItsDataThatIsNegative) {
  const TraceCapture trace;
  EXPECT_EQ(bodyOf(*event(33, 0xFFFFFFFE, 0xFFFFFFFE)),
            "<Event_Type>33</Event_Type><Event_Number>-2</Event_Number>"
            "<Event_Line_Number>4711</Event_Line_Number>");
  const std::vector<std::string> lines = {
      "IOMGR8P_Event:121             :----: IOMGR_Event: Length=0x4294967294"};
  EXPECT_EQ(trace.lines(), lines);
}

TEST(Iomgr, OffersTheWholeBody) {
  IOMGR8P_Event shown(nullptr, 0);
  shown.get_IOMGR8P_event_body(nullptr);
  EXPECT_EQ(bodyOf(shown), "");
  const Payload payload = eventPayload(31, 1, 4, Payload().bytes("vt.c"));
  const std::string record = RecordBuilder().structLength(22).payload(payload).str();
  shown.get_IOMGR8P_event_body(reinterpret_cast<const EmpEvLogMsg_s*>(record.data()));
  EXPECT_EQ(bodyOf(shown),
            "<Event_Type>31</Event_Type><Event_Number>1</Event_Number>"
            "<Event_Line_Number>4711</Event_Line_Number>"
            "<Request_Type>ASSERT Error</Request_Type><File>vtSERT Error</File>");
  EXPECT_EQ(utf8(shown.getSummary()), "vtSERT Error");
  for (const auto show : classes) EXPECT_EQ((shown.*show)(nullptr, nullptr), nullptr);
  EXPECT_EQ(utf8(shown.getSummary()), "vtSERT Error");
}

}  // namespace

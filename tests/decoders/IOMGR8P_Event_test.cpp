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

struct Class {
  char* (IOMGR8P_Event::*show)(IOMGR_EVL*, char*);
  const char* eventId;
  const char* events;  // and the records that each carries
};

// Event 1003 of class 24 carries a record that has a volume number as one of its fields.
const Class classes[] = {
    {CLASS_BODY(manager),        "I/O Manager Event",
     "1 lwsem, 9 interrupt, 10 message, 26 drp, 32 msa, 516 drp"                                                          },
    {CLASS_BODY(rebuild),        "Rebuild Task Event",
     "3 vt+ext, 5 vt+ext, 11, 26 drp, 506 number, 512 drp, 1001 number, 1002 number"                                      },
    {CLASS_BODY(reconfig),       "Reconfigure Task Event",
     "3 vt+ext, 4, 5 drp+vt+ext, 11, 12, 20 vt+ext, 25 isurp, 26 drp, 506 number, 512 drp, 517 "
     "dlm, 1001 number, 1002 number"                                                                                      },
    {CLASS_BODY(bbscan),         "Bad Block Scan Task Event",
     "3 vt+ext, 4, 5 drp+vt+ext, 11, 506 number, 512 drp, 1001 number, 1002 number"                                       },
    {CLASS_BODY(xoe),            "XOR Engine Event",                   "1 lwsem, 7, 8"                                    },
    {CLASS_BODY(error_recovery), "Error Recovery Event",
     "3 vt+ext, 5 drp+vt+ext, 12 drp+vt+ext, 13, 22, 26 drp, 501 dib, 510 vt+ext, 512 drp"                                },
    {CLASS_BODY(metadata),       "VMH Task Event",
     "1 lwsem, 2 mmsg, 3 vt+ext, 4, 11, 13, 21, 23, 25 isurp, 26 drp, 501 dib, 502, 508"                                  },
    {CLASS_BODY(isurpproc),      "ISURP ProcessEvent",                 "1 lwsem, 3 vt+ext, 25 isurp"                      },
    {CLASS_BODY(drpproc),        "DRP Process Event",                  "26 drp"                                           },
    {CLASS_BODY(bg),             "Background Task Event",              "1 lwsem, 25 isurp"                                },
    {CLASS_BODY(database),       "Database Event",                     "4, 6, 7, 13"                                      },
    {CLASS_BODY(isr),            "ISR Event",                          "1, 7, 8, 9 interrupt"                             },
    {CLASS_BODY(startup),        "Startup Task Event",                 "1"                                                },
    {CLASS_BODY(sv),             "Storage Virtualization Event",
     "8 isurp+sgt, 11, 12 isurp+vt+ext, 13, 14 isurp, 24, 25 isurp"                                                       },
    {CLASS_BODY(dlm),            "Diskline Metadata Event",
     "12 drp+sgt, 16 dlm, 26 drp, 513 dlm, 514 dlm, 515 dlm"                                                              },
    {CLASS_BODY(crc_init),       "CRC Initialize Task Event",
     "3 vt+ext, 4 vt+ext, 5 drp+vt+ext, 11 vt+ext, 25 isurp, 26 drp, 506 number, 512 drp, 517 dlm, "
     "1001 number, 1002 number"                                                                                           },
    {CLASS_BODY(parity),         "Parity Volume Event",
     "1 lwsem, 3 vt+ext, 4, 5 isurp+vt+ext, 11, 13, 17 isurp+sgt, 18, 19, 25 isurp, 26 drp"                               },
    {CLASS_BODY(parity_init),    "Parity Initialize Task Event",
     "4, 11, 19 isurp+sgt, 25 isurp, 506 number, 512 drp, 517 dlm, 1001 number, 1002 number"                              },
    {CLASS_BODY(parity_error),   "Parity Error Task Event",
     "1 lwsem, 4, 5 vt+ext, 11, 12 isurp+vt+ext, 13, 19 isurp+sgt, 511 drp, 512 drp"                                      },
    {CLASS_BODY(parity_scan),    "Parity Scan Task Event",
     "4, 11, 19 isurp+sgt, 25 isurp, 505 isurp, 506 number, 512 drp, 517 dlm, 518 ndfe, 1001 "
     "number, 1002 number"                                                                                                },
    {CLASS_BODY(parity_rebuild), "Parity Rebuild Task Event",
     "4, 11, 16, 19 isurp+sgt, 25 isurp, 506 number, 512 isurp, 517 dlm, 1001 number, 1002 number"                        },
    {CLASS_BODY(micro_rebuild),  "Micro Rebuild Task Event",
     "3 vt+ext, 4, 5 vt+ext, 11, 13, 16, 19 isurp+sgt, 25 isurp, 26 drp, 506 number, 512 drp, 517 "
     "dlm, 1001 number, 1002 number"                                                                                      },
    {CLASS_BODY(volume_init),    "Volume Initialize Task Event",       "3 vt+ext, 503, 506 number"                        },
    {CLASS_BODY(mmsg),           "Management Message Event",
     "1 lwsem, 5 vt+ext, 13, 26 drp, 27 mmsg, 1003 vbgt+number"                                                           },
    {CLASS_BODY(rcp),            "Redundant Controller Process Event",
     "4, 19 isurp, 25 isurp, 28 vt+ext, 29 rcd, 30 bcd"                                                                   },
    {CLASS_BODY(fe),             "Forced Error Event",                 "15 vt+ext, 501 dib, 509 fer+dlm, 511 drp, 517 drp"},
    {CLASS_BODY(carve),          "Resource Carving Event",             "every sgt"                                        },
    {CLASS_BODY(bg_sys),         "Background System Task Event",
     "1 lwsem, 4, 11, 13, 25 isurp, 28 vt+ext, 29 rcd, 30 bcd, 31 rbt, 503, 507"                                          },
    {CLASS_BODY(macro),          "Macro Task Event",                   "every lwsem"                                      },
    {CLASS_BODY(evl),            "EVL Event",                          "every"                                            },
    {CLASS_BODY(assert),         "Resource Assert Event",              "every file"                                       },
    {CLASS_BODY(math),           "Unknown Event",                      "every"                                            },
};

TEST(Iomgr, KnowsNoOtherClasses) {
  for (const std::uint32_t number : {0U, 33U, 0x01000001U, 0xFFFFFFFFU}) {
    const auto unknown = event(number, 1, 40, ramp(40));
    EXPECT_EQ(utf8(unknown->getEventID()), "Unknown Event");
    EXPECT_EQ(utf8(unknown->getSummary()), "");
    EXPECT_TRUE(bodyOf(*unknown).ends_with("<Event_Line_Number>4711</Event_Line_Number>"));
  }
}

TEST(Iomgr, KnowsTheEventsOfEachClass) {
  for (std::uint32_t eventClass = 1; eventClass <= std::size(classes); ++eventClass) {
    const Class& row = classes[eventClass - 1];
    SCOPED_TRACE(row.eventId);
    const auto decodedBody = [&](std::uint32_t number) {
      const auto [eventId, summary, body] = textsOf(*event(eventClass, number, 492, ramp(492)));
      EXPECT_EQ(eventId, row.eventId);
      EXPECT_EQ(body.find("</Event_Line_Number><Request_Type>") == std::string::npos,
                summary.empty());
      return body;
    };
    EXPECT_EQ(knownEvents(decodedBody), row.events);

    // The class's own function shows the same, whatever class the payload names.
    const auto shownBody = [&](std::uint32_t number) {
      IOMGR8P_Event shown(nullptr, 0);
      char place = 0;
      std::string bytes = eventPayload(99, number, 492, ramp(584)).str();
      EXPECT_EQ((shown.*row.show)(reinterpret_cast<IOMGR_EVL*>(bytes.data()), &place), &place);
      const auto [eventId, summary, body] = textsOf(shown);
      EXPECT_EQ(body.starts_with("<Request_Type>"), !summary.empty());
      return body;
    };
    EXPECT_EQ(knownEvents(shownBody), row.events);
  }
}

TEST(Iomgr, NamesEvents) {
  struct Case {
    std::uint32_t eventClass;
    std::uint32_t number;
    const char* name;
  };
  const Case cases[] = {
      {1,  26,         "Manager Invalid DRP"                      },
      {2,  3,          "Rebuild Unregonized Volume Type"          },
      {3,  1002,       "Reconfig Task Completed"                  },
      {4,  512,        "Bad Block Scan Scan Medium Error Repaired"},
      {5,  1,          "Manager MQX Event"                        },
      {6,  512,        "Error Recovery Medium Error Repaired"     },
      {7,  25,         "Metadata Invalid ISURP"                   },
      {8,  25,         "ISURPPROC Invalid ISURP"                  },
      {9,  26,         "DRPPROC Invalid DRP"                      },
      {10, 25,         "BG Invalid ISURP"                         },
      {11, 6,          "Database Uninit Listhead"                 },
      {12, 9,          "ISR Unexpected Interrupt"                 },
      {13, 1,          "Startup MQX Error"                        },
      {14, 24,         "SV Drive Load Error"                      },
      {15, 514,        "DLM Copy Mistmatch Detected"              },
      {16, 517,        "CRCINIT Forced Error Detected"            },
      {17, 18,         "Parity Invalid Parity Flag"               },
      {18, 19,         "Parity Init Table Error"                  },
      {19, 511,        "Parity Error Medium Error Unrepairable"   },
      {20, 517,        "Parity Scan Forced Error Detected"        },
      {20, 518,        "Parity Scan Forced Error Detected"        },
      {21, 16,         "Parity Rebuild DLM Search Error"          },
      {22, 506,        "Micro Rebuild Task Error"                 },
      {23, 503,        "Volume Init Max BG Tasks"                 },
      {24, 27,         "MMSG Invalid MMSG"                        },
      {25, 19,         "RCP Build Parity Table Error"             },
      {26, 518,        "Force Error Unhandled Event"              },
      {27, 0,          "Carve Issue"                              },
      {28, 503,        "BGSYS MAX Background Tasks"               },
      {29, 0xFFFFFFFF, "Macro MQX Event"                          },
      {30, 2,          "EVL Error"                                },
  };
  for (const auto& [eventClass, number, name] : cases) {
    const auto decoded = event(eventClass, number);
    EXPECT_EQ(utf8(decoded->getSummary()), name);
    EXPECT_NE(bodyOf(*decoded).find("<Request_Type>" + std::string(name) + "</Request_Type>"),
              std::string::npos);
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

TEST(Iomgr, DumpsARecordWithAnotherEventId) {
  const TraceCapture trace;
  const auto decoded =
      decode(RecordBuilder().source(5).id(26).payload(std::string("\x01\xAB", 2)).str());
  EXPECT_EQ(textsOf(*decoded), (Texts{"26", "Unhandled Event by IOMGR8P", "<Hex>01AB</Hex>"}));
  EXPECT_EQ(bodyOf(*event(33, 0xFFFFFFFE, 0xFFFFFFFE)),
            "<Event_Type>33</Event_Type><Event_Number>-2</Event_Number>"
            "<Event_Line_Number>4711</Event_Line_Number>");
  const std::vector<std::string> lines = {
      "IOMGR8P_Event:98              :----: Unknown EventID: 0x26",
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
  for (const Class& row : classes) EXPECT_EQ((shown.*row.show)(nullptr, nullptr), nullptr);
  EXPECT_EQ(utf8(shown.getSummary()), "vtSERT Error");
}

}  // namespace

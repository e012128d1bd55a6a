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
  int known;  // of eventNumbers()
};

const Class classes[] = {
    {CLASS_BODY(manager),        "I/O Manager Event",                  6 },
    {CLASS_BODY(rebuild),        "Rebuild Task Event",                 8 },
    {CLASS_BODY(reconfig),       "Reconfigure Task Event",             13},
    {CLASS_BODY(bbscan),         "Bad Block Scan Task Event",          8 },
    {CLASS_BODY(xoe),            "XOR Engine Event",                   3 },
    {CLASS_BODY(error_recovery), "Error Recovery Event",               9 },
    {CLASS_BODY(metadata),       "VMH Task Event",                     13},
    {CLASS_BODY(isurpproc),      "ISURP ProcessEvent",                 3 },
    {CLASS_BODY(drpproc),        "DRP Process Event",                  1 },
    {CLASS_BODY(bg),             "Background Task Event",              2 },
    {CLASS_BODY(database),       "Database Event",                     4 },
    {CLASS_BODY(isr),            "ISR Event",                          4 },
    {CLASS_BODY(startup),        "Startup Task Event",                 1 },
    {CLASS_BODY(sv),             "Storage Virtualization Event",       7 },
    {CLASS_BODY(dlm),            "Diskline Metadata Event",            6 },
    {CLASS_BODY(crc_init),       "CRC Initialize Task Event",          11},
    {CLASS_BODY(parity),         "Parity Volume Event",                11},
    {CLASS_BODY(parity_init),    "Parity Initialize Task Event",       9 },
    {CLASS_BODY(parity_error),   "Parity Error Task Event",            9 },
    {CLASS_BODY(parity_scan),    "Parity Scan Task Event",             11},
    {CLASS_BODY(parity_rebuild), "Parity Rebuild Task Event",          10},
    {CLASS_BODY(micro_rebuild),  "Micro Rebuild Task Event",           14},
    {CLASS_BODY(volume_init),    "Volume Initialize Task Event",       3 },
    {CLASS_BODY(mmsg),           "Management Message Event",           6 },
    {CLASS_BODY(rcp),            "Redundant Controller Process Event", 6 },
    {CLASS_BODY(fe),             "Forced Error Event",                 5 },
    {CLASS_BODY(carve),          "Resource Carving Event",             68},
    {CLASS_BODY(bg_sys),         "Background System Task Event",       11},
    {CLASS_BODY(macro),          "Macro Task Event",                   68},
    {CLASS_BODY(evl),            "EVL Event",                          68},
    {CLASS_BODY(assert),         "Resource Assert Event",              68},
    {CLASS_BODY(math),           "Unknown Event",                      68},
};

TEST(Iomgr, BeginsWithThreeNumbersAndTheName) {
  const auto mathError = event(32, 7);
  EXPECT_EQ(bodyOf(*mathError),
            "<Event_Type>32</Event_Type><Event_Number>7</Event_Number>"
            "<Event_Line_Number>4711</Event_Line_Number><Request_Type>MATH Error</Request_Type>");
  EXPECT_EQ(utf8(mathError->getSummary()), "MATH Error");
  EXPECT_EQ(utf8(mathError->getEventID()), "Unknown Event");
  EXPECT_NE(bodyOf(*event(27, 0xFFFFFFFE)).find("<Event_Number>-2</Event_Number>"),
            std::string::npos);
}

TEST(Iomgr, KnowsTheClasses) {
  for (std::uint32_t number = 1; number <= std::size(classes); ++number) {
    EXPECT_EQ(utf8(event(number, 1)->getEventID()), classes[number - 1].eventId) << number;
  }
  for (const std::uint32_t number : {0U, 33U, 0x01000001U, 0xFFFFFFFFU}) {
    const auto unknown = event(number, 1, 40, ramp(40));
    EXPECT_EQ(utf8(unknown->getEventID()), "Unknown Event");
    EXPECT_EQ(utf8(unknown->getSummary()), "");
    EXPECT_TRUE(bodyOf(*unknown).ends_with("<Event_Line_Number>4711</Event_Line_Number>"));
  }
}

/// Which of the records' first keys are in the body, each with a blank behind it; a key that comes
/// again at once is there once.
std::string recordsIn(const std::string& body) {
  static const std::string first =
      " lwsem_valid_bit isurp_opcode Drive_Number vt_common_flags mmsg_length Device sgt_address "
      "bcd_btsn rcd_cache_index rbt_btsn dlm_flags msa_full_hi_level fer_volume_index BTSN "
      "ndfe_flags Interrupt Message Volume_Number File ";
  std::string found;
  std::string last;
  for (std::size_t at = 0; (at = body.find('<', at)) != std::string::npos; ++at) {
    const std::string key = body.substr(at + 1, body.find('>', at) - at - 1) + " ";
    if (key == last || first.find(" " + key) == std::string::npos) continue;
    found += key;
    last = key;
  }
  return found;
}

TEST(Iomgr, NamesTheEventsOfEachClass) {
  struct Case {
    std::uint32_t eventClass;
    std::uint32_t number;
    const char* name;
    const char* records;
  };
  const Case cases[] = {
      {1,  1,          "Manager MQX Event",                         "lwsem_valid_bit "             },
      {1,  9,          "Manager Unexpected Interrupt",              "Interrupt "                   },
      {1,  10,         "Manager Unexpected Message Type",           "Message "                     },
      {1,  32,         "Manager MSA Event",                         "msa_full_hi_level "           },
      {1,  516,        "DRP Detected Error Status",                 "Drive_Number "                },
      {2,  3,          "Rebuild Unregonized Volume Type",           "vt_common_flags "             },
      {2,  11,         "Rebuild Unexpected Error",                  ""                             },
      {2,  512,        "Rebuild Medium Error Repaired",             "Drive_Number "                },
      {2,  1002,       "Rebuild Task Completed",                    "Volume_Number "               },
      {3,  4,          "Reconfig Enomem",                           ""                             },
      {3,  5,          "Reconfig Extent Search Error",              "Drive_Number vt_common_flags "},
      {3,  25,         "Reconfig Invalid ISURP",                    "isurp_opcode "                },
      {3,  517,        "Reconfig Forced Error Detected",            "dlm_flags "                   },
      {3,  1001,       "Reconfig Task Started",                     "Volume_Number "               },
      {4,  4,          "Bbscan Enomem",                             ""                             },
      {4,  5,          "Bbscan Extent Search Error",                "Drive_Number vt_common_flags "},
      {4,  512,        "Bad Block Scan Scan Medium Error Repaired", "Drive_Number "                },
      {5,  1,          "Manager MQX Event",                         "lwsem_valid_bit "             },
      {5,  8,          "XOE Empty Buffer",                          ""                             },
      {6,  12,         "Error Recovery Extent VLBN Error",          "Drive_Number vt_common_flags "},
      {6,  13,         "Error Recovery Invalid Param",              ""                             },
      {6,  501,        "Device Error",                              "Device "                      },
      {6,  510,        "Volume State Transition",                   "vt_common_flags "             },
      {7,  2,          "Metadata Invalid MMSG",                     "mmsg_length "                 },
      {7,  25,         "Metadata Invalid ISURP",                    "isurp_opcode "                },
      {7,  508,        "Drives not found for metadata request",     ""                             },
      {8,  1,          "ISURPPROC MQX Event",                       "lwsem_valid_bit "             },
      {8,  3,          "ISURPPROC Unrecognized Volume Type",        "vt_common_flags "             },
      {8,  25,         "ISURPPROC Invalid ISURP",                   "isurp_opcode "                },
      {9,  26,         "DRPPROC Invalid DRP",                       "Drive_Number "                },
      {10, 1,          "BG MQX Event",                              "lwsem_valid_bit "             },
      {10, 25,         "BG Invalid ISURP",                          "isurp_opcode "                },
      {11, 6,          "Database Uninit Listhead",                  ""                             },
      {12, 1,          "ISR installation failure",                  ""                             },
      {12, 9,          "ISR Unexpected Interrupt",                  "Interrupt "                   },
      {13, 1,          "Startup MQX Error",                         ""                             },
      {14, 8,          "SV Empty Buffer",                           "isurp_opcode sgt_address "    },
      {14, 12,         "SV VLBN Error",                             "isurp_opcode vt_common_flags "},
      {14, 14,         "SV Virtualize Error",                       "isurp_opcode "                },
      {14, 24,         "SV Drive Load Error",                       ""                             },
      {15, 12,         "DLM Extent VLBN Error",                     "Drive_Number sgt_address "    },
      {15, 26,         "DLM Invalid DRP",                           "Drive_Number "                },
      {15, 514,        "DLM Copy Mistmatch Detected",               "dlm_flags "                   },
      {16, 5,          "CRCINIT Extent Search Error",               "Drive_Number vt_common_flags "},
      {16, 11,         "CRCINIT Unexpected Error",                  "vt_common_flags "             },
      {16, 517,        "CRCINIT Forced Error Detected",             "dlm_flags "                   },
      {16, 1002,       "CRCINIT Task Completed",                    "Volume_Number "               },
      {17, 1,          "Parity MQX Event",                          "lwsem_valid_bit "             },
      {17, 5,          "Parity Extent Search Error",                "isurp_opcode vt_common_flags "},
      {17, 17,         "Parity Table Invalid Param",                "isurp_opcode sgt_address "    },
      {17, 18,         "Parity Invalid Parity Flag",                ""                             },
      {18, 4,          "Parity Init ENOMEM",                        ""                             },
      {18, 19,         "Parity Init Table Error",                   "isurp_opcode sgt_address "    },
      {18, 506,        "Parity Init Task Error",                    "Volume_Number "               },
      {18, 517,        "Parity Init Forced Error Detected",         "dlm_flags "                   },
      {19, 5,          "Parity Error Extent Search Error",          "vt_common_flags "             },
      {19, 12,         "Parity Error Search VLBN Error",            "isurp_opcode vt_common_flags "},
      {19, 19,         "Parity Error Table Error",                  "isurp_opcode sgt_address "    },
      {19, 511,        "Parity Error Medium Error Unrepairable",    "Drive_Number "                },
      {20, 11,         "Parity Scan Unexpected Error",              ""                             },
      {20, 505,        "Parity Scan Miscompare",                    "isurp_opcode "                },
      {20, 517,        "Parity Scan Forced Error Detected",         "dlm_flags "                   },
      {20, 518,        "Parity Scan Forced Error Detected",         "ndfe_flags "                  },
      {21, 16,         "Parity Rebuild DLM Search Error",           ""                             },
      {21, 19,         "Parity Rebuild Table Error",                "isurp_opcode sgt_address "    },
      {21, 512,        "Parity Rebuild Medium Error Repaired",      "isurp_opcode "                },
      {21, 1001,       "Parity Rebuild Task Started",               "Volume_Number "               },
      {22, 5,          "Micro Rebuild Extent Search Error",         "vt_common_flags "             },
      {22, 13,         "Micro Rebuild Invalid Param",               ""                             },
      {22, 26,         "Micro Rebuild Invalid DRP",                 "Drive_Number "                },
      {22, 517,        "Micro Rebuild Forced Error Detected",       "dlm_flags "                   },
      {23, 3,          "Volume Init Unrecognized Volume Type",      "vt_common_flags "             },
      {23, 503,        "Volume Init Max BG Tasks",                  ""                             },
      {23, 506,        "Volume Init Task Error",                    "Volume_Number "               },
      {24, 1,          "MMSG MQX Event",                            "lwsem_valid_bit "             },
      {24, 5,          "MMSG Extent Search Error",                  "vt_common_flags "             },
      {24, 27,         "MMSG Invalid MMSG",                         "mmsg_length "                 },
      {24, 1003,       "BG Change of State MMSG",                   "BTSN Volume_Number "          },
      {25, 4,          "RCP ENOMEM",                                ""                             },
      {25, 19,         "RCP Build Parity Table Error",              "isurp_opcode "                },
      {25, 28,         "RCP Invalid VT",                            "vt_common_flags "             },
      {25, 29,         "RCP Invalid RCD",                           "rcd_cache_index "             },
      {25, 30,         "RCP Invalid BCD",                           "bcd_btsn "                    },
      {26, 15,         "Force Error Failed to be Created",          "vt_common_flags "             },
      {26, 501,        "Device Error: Max FEs Reached",             "Device "                      },
      {26, 509,        "Force Error Created",                       "fer_volume_index dlm_flags "  },
      {26, 511,        "Medium Error Unrepairable",                 "Drive_Number "                },
      {26, 518,        "Force Error Unhandled Event",               ""                             },
      {27, 0,          "Carve Issue",                               "sgt_address "                 },
      {28, 29,         "BGSYS Invalid RCD",                         "rcd_cache_index "             },
      {28, 30,         "BGSYS Invalid BCD",                         "bcd_btsn "                    },
      {28, 31,         "BGSYS Invalid RBT",                         "rbt_btsn "                    },
      {28, 507,        "BGSYS Invalid BTSN",                        ""                             },
      {29, 0xFFFFFFFF, "Macro MQX Event",                           "lwsem_valid_bit "             },
      {30, 2,          "EVL Error",                                 ""                             },
      {32, 9,          "MATH Error",                                ""                             },
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.eventClass << ", " << c.number);
    const std::string name = std::string("<Request_Type>") + c.name + "</Request_Type>";
    const auto decoded = event(c.eventClass, c.number, 492, ramp(492));
    EXPECT_EQ(utf8(decoded->getSummary()), c.name);
    EXPECT_EQ(recordsIn(bodyOf(*decoded)), c.records);
    EXPECT_NE(bodyOf(*decoded).find("</Event_Line_Number>" + name), std::string::npos);

    // The class's own function shows the same, whatever class the payload names.
    const auto show = classes[c.eventClass - 1].show;
    IOMGR8P_Event shown(nullptr, 0);
    char place = 0;
    std::string bytes = eventPayload(99, c.number, 492, ramp(584)).str();
    EXPECT_EQ((shown.*show)(reinterpret_cast<IOMGR_EVL*>(bytes.data()), &place), &place);
    EXPECT_EQ(utf8(shown.getSummary()), c.name);
    EXPECT_EQ(recordsIn(bodyOf(shown)), c.records);
    EXPECT_EQ(bodyOf(shown).find(name), 0U);
  }
}

TEST(Iomgr, KnowsNoOtherEvents) {
  for (std::uint32_t eventClass = 1; eventClass <= std::size(classes); ++eventClass) {
    int known = 0;
    for (const std::uint32_t number : eventNumbers()) {
      const auto decoded = event(eventClass, number);
      const std::string summary = utf8(decoded->getSummary());
      const std::string body = bodyOf(*decoded);
      if (summary.empty()) {
        ASSERT_TRUE(body.ends_with("</Event_Line_Number>")) << body;
      } else if (summary != "Force Error Unhandled Event") {
        ASSERT_NE(body.find("<Request_Type>" + summary + "</Request_Type>"), std::string::npos);
        ++known;
      }
    }
    EXPECT_EQ(known, classes[eventClass - 1].known) << eventClass;
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
  EXPECT_EQ(utf8(decoded->getEventID()), "26");
  EXPECT_EQ(utf8(decoded->getSummary()), "Unhandled Event by IOMGR8P");
  EXPECT_EQ(bodyOf(*decoded), "<Hex>01AB</Hex>");
  event(33, 1, 0xFFFFFFFE);
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

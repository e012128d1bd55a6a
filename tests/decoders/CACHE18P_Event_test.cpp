// The golden text of the samples shows each layout; here is which of them goes with which id.
#include <MPUEvent/CACHE28P_Event.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using namespace mpuevent::support;

constexpr std::uint8_t cache1 = 3;
constexpr std::uint8_t cache2 = 4;

RecordBuilder bugcheck(unsigned id, std::size_t payloadSize, std::uint8_t source = cache1) {
  // 01, 02, 03 and so on: the word at offset 4 is 0x05060708.
  Payload payload;
  while (payload.str().size() < payloadSize) {
    payload.u8(static_cast<std::uint8_t>(payload.str().size() + 1));
  }
  return RecordBuilder().source(source).id(static_cast<std::uint16_t>(id)).payload(payload);
}

std::string bodyOf(unsigned id, std::size_t payloadSize) {
  return utf8(decode(bugcheck(id, payloadSize).str())->getBody());
}

/// The first and the last of a body's elements, and how many there are: "9: A 0x1, B 0x2".
std::string outline(const std::string& body) {
  std::vector<std::string> elements;
  for (std::size_t at = 0, end = 0; (end = body.find("> ", at)) != std::string::npos;
       at = end + 2) {
    const std::size_t keyEnd = body.find('>', at);
    elements.push_back(body.substr(at + 1, keyEnd - at - 1) + ' ' +
                       body.substr(keyEnd + 1, body.find("</", at) - keyEnd - 1));
  }
  if (elements.empty()) return "none";
  return std::to_string(elements.size()) + ": " + elements.front() + ", " + elements.back();
}

TEST(CacheBugchecks, ShowWhatIsLoggedWithEachId) {
  const std::pair<const char*, const char*> layouts[] = {
      {"2 10 11 14 15 53 104 106 108 160",                    "none"                                                                        },
      {"1 3 4",                                               "3: free_btree_node_count 0x1020304, btree_nodes_below_min 0x90a0b0c"         },
      {"12 31 32 33 34",                                      "1: QMIR_data 0x1020304, QMIR_data 0x1020304"                                 },
      {"13",                                                  "1: PIR data 0x1020304, PIR data 0x1020304"                                   },
      {"20",                                                  "1: diskline_mode 0x1020304, diskline_mode 0x1020304"                         },
      {"21 22 23 24 25 26 27 114 115 116",                    "9: ISURP_address 0x1020304, block_count 0x25262728"                          },
      {"28",                                                  "6: volume_number 0x1020304, capacity 0x1d1e1f20  0x191a1b1c"                 },
      {"29 30 37 61",                                         "5: MMSG_address 0x1020304, general_use_2 0x11121314"                         },
      {"35 36 43 100 101 102 103 105 107 109 110 111 161",
       "2: valid_field 0x1020304, value_field 0x5060708"                                                                                    },
      {"38",                                                  "2: Cache_1_proctable_value 0x1020304, Cache_1_arctable_size 0x5060708"       },
      {"39 40 41 42 44 45 46 50 51 52 112",
       "2: structure_address 0x1020304, first_word_after_listhead 0x5060708"                                                                },
      {"48 49",                                               "7: cache_VT_flags 0x15161718, general_use_2 0x11121314"                      },
      {"162 163 164 165 166 167 168 169 170 171",
       "11: cache_VT_flags 0x292a2b2c, block_count 0x25262728"                                                                              },
      {"60",                                                  "1: volume_number 0x1020304, volume_number 0x1020304"                         },
      {"62 65",                                               "8: CLH_address 0x1020304, new_chunkstripe_size 0x25262728"                   },
      {"63 64 66 67 68 69",                                   "11: CLH_address 0x1020304, destage_bitmap 0x41424344  0x3d3e3f40"            },
      {"70 71",                                               "23: ISURP_address 0x1020304, slave_listhead 0x91929394  0x95969798"          },
      {"72",                                                  "1: destage_extra_isurp_count 0x1020304, destage_extra_isurp_count 0x1020304" },
      {"113",                                                 "1: queue_pop_status 0x1020304, queue_pop_status 0x1020304"                   },
      {"117",                                                 "10: remaining_block_count 0x292a2b2c, block_count 0x25262728"                },
      {"118 119 120 121 122 124 125 128 133 135 150 154 159",
       "11: remaining_block_count 0x292a2b2c, block_count 0x25262728"                                                                       },
      {"123 126 127 129 134 136 137 155 156 157",
       "20: ISURP_address 0x1020304, destage_bitmap 0x696a6b6c  0x65666768"                                                                 },
      {"130 131 132",                                         "16: ISURP_address 0x1020304, remaining_block_count 0x4d4e4f50"               },
      {"138",                                                 "14: CLH_address 0x1020304, overwrite_CLH_dirty_bitmap 0x55565758  0x51525354"},
      {"139 140 141 142 143 144 147 148 149",
       "14: CLH_address 0x1020304, conflict_listhead 0x55565758  0x595a5b5c"                                                                },
      {"145 146",                                             "4: cache_index 0x1020304, free_count_other 0xd0e0f10"                        },
      {"151 152 153",                                         "11: current VLBN 0x292a2b2c, block_count 0x25262728"                         },
      {"158",                                                 "12: cache_index 0x45464748, destage_bitmap 0x41424344  0x3d3e3f40"           },
  };
  std::map<unsigned, std::string> logged;
  for (const auto& [ids, elements] : layouts) {
    std::istringstream list(ids);
    for (unsigned id = 0; list >> id;) logged[id] = elements;
  }
  for (unsigned id = 0; id <= 300; ++id) {
    SCOPED_TRACE(id);
    const EventFields event = fieldsOf(*decode(bugcheck(id, 152).str()));
    EXPECT_EQ(event.eventId(), "Bugcheck " + std::to_string(id));
    const bool known = logged.count(id) != 0;
    EXPECT_EQ(event.summary() != "Unhandled Event by CACHE18P", known);
    if (known) {
      EXPECT_EQ(outline(event.body()), logged[id]);
    }
  }
}

TEST(CacheBugchecks, SayWhatWentWrong) {
  const std::map<unsigned, std::string> summaries = {
      {3,   "Ran out of free btree nodes"                         },
      {52,  "Received sync packet with unexpected phase"          },
      {115, "Unexpected ISURP opcode"                             },
      {116, "Unexpected ISURP current state"                      },
      {119, "CLH not on hash table in host read"                  },
      {121, "CLH not on hash table in host read"                  },
      {150, "conflict detect, too many CLHs"                      },
      {154, "CLH not on hash table in conflict resolution"        },
      {159, "CLH not on hash table in finish ops resource request"},
      {161, "Error in create commnuication semaphore"             },
      {171, "This cache manager is not volume owner"              },
  };
  for (const auto& [id, summary] : summaries) {
    EXPECT_EQ(utf8(decode(bugcheck(id, 0).str())->getSummary()), summary) << id;
  }
}

TEST(CacheBugchecks, ShowOnlyElementsThatAreHeldWhole) {
  EXPECT_EQ(bodyOf(60, 3), "");
  EXPECT_EQ(bodyOf(35, 7), "<valid_field>0x1020304</valid_field> ");
  const std::string head =
      "<CLH_address>0x1020304</CLH_address> <volume_number>0x5060708</volume_number> ";
  EXPECT_EQ(bodyOf(62, 15), head);
  EXPECT_EQ(bodyOf(62, 16), head + "<VLBN>0x0d0e0f10  0x090a0b0c</VLBN> ");
  // The words behind the structure are gone, the structure itself is not.
  EXPECT_EQ(bodyOf(151, 40), bodyOf(21, 40));
}

TEST(CacheBugchecks, WithoutAMeaningAreTracedAndShownInHex) {
  for (const std::uint8_t source : {cache1, cache2}) {
    const TraceCapture trace;
    EXPECT_EQ(textsOf(*decode(bugcheck(47, 2, source).str())),
              (Texts{"Bugcheck 47", "Unhandled Event by CACHE18P", "<Hex>0102</Hex>"}));
    const std::vector<std::string> lines = trace.lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].substr(0, 15), "CACHE18P_Event:");
    EXPECT_EQ(lines[0].substr(lines[0].find(":----")), ":----: Unknown EventID: 0x47");
  }
  EXPECT_EQ(textsOf(*decode(bugcheck(145, 4, cache2).str())),
            (Texts{"Bugcheck 145", "CLH free count went over total count",
                   "<cache_index>0x1020304</cache_index> "}));
  EXPECT_EQ(utf8(decode(bugcheck(65535, 0).str())->getEventID()), "Bugcheck 65535");
}

}  // namespace

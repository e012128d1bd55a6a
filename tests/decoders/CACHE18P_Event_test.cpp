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

using mpuevent::support::decode;
using mpuevent::support::RecordBuilder;
using mpuevent::support::TraceCapture;
using mpuevent::support::utf8;

constexpr std::uint8_t cache1 = 3;
constexpr std::uint8_t cache2 = 4;

RecordBuilder bugcheck(unsigned id) {
  return RecordBuilder().source(cache1).id(static_cast<std::uint16_t>(id));
}

/// 01, 02, 03 and so on: the word at offset 4 is 0x05060708.
std::string countingBytes(std::size_t size) {
  std::string bytes;
  while (bytes.size() < size) bytes += static_cast<char>(bytes.size() + 1);
  return bytes;
}

std::string bodyOf(unsigned id, std::size_t payloadSize = 152) {
  return utf8(decode(bugcheck(id).payload(countingBytes(payloadSize)).str())->getBody());
}

/// "A=1f,B=2e:3d" becomes "<A>0x1f</A> <B>0x2e  0x3d</B> ".
std::string elements(const std::string& fields) {
  std::istringstream list(fields);
  std::string text;
  for (std::string field; std::getline(list, field, ',');) {
    const std::string key = field.substr(0, field.find('='));
    std::string value = "0x" + field.substr(key.size() + 1);
    const std::size_t colon = value.find(':');
    if (colon != std::string::npos) value.replace(colon, 1, "  0x");
    text.append("<").append(key).append(">").append(value).append("</").append(key).append("> ");
  }
  return text;
}

const std::string isurpUpToVlbn =
    "ISURP_address=1020304,type_opcode_state=5060708,scsi_flags=90a0b0c,"
    "cache_manager_flags=d0e0f10,io_manager_flags=11121314,iscsi_flags=15161718,"
    "volume_number=191a1b1c,VLBN=21222324:1d1e1f20,";
const std::string isurp = isurpUpToVlbn + "block_count=25262728,";
const std::string clh =
    "CLH_address=1020304,volume_number=5060708,VLBN=0d0e0f10:090a0b0c,CLH_flags=11121314,"
    "valid_bitmap=191a1b1c:15161718,dirty_bitmap=21222324:1d1e1f20,"
    "activity_count=25262728,host_write_activity_count=292a2b2c,"
    "disk_read_bitmap=31323334:2d2e2f30,host_write_bitmap=393a3b3c:35363738,"
    "destage_bitmap=41424344:3d3e3f40,";
const std::string mmsg =
    "MMSG_address=1020304,request_protocol=5060708,request_type=90a0b0c,"
    "general_use_1=d0e0f10,general_use_2=11121314,";

TEST(CacheBugchecks, ShowWhatIsLoggedWithEachId) {
  std::map<unsigned, std::string> logged;
  const auto log = [&logged](std::initializer_list<unsigned> ids, const std::string& fields) {
    for (const unsigned id : ids) logged[id] = elements(fields);
  };
  log({2, 10, 11, 14, 15, 53, 104, 106, 108, 160}, "");
  log({1, 3, 4},
      "free_btree_node_count=1020304,btree_node_warning=5060708,"
      "btree_nodes_below_min=90a0b0c");
  log({12, 31, 32, 33, 34}, "QMIR_data=1020304");
  log({13}, "PIR data=1020304");
  log({20}, "diskline_mode=1020304");
  log({21, 22, 23, 24, 25, 26, 27, 114, 115, 116}, isurp);
  log({28},
      "volume_number=1020304,cache_VT_flags=5060708,"
      "reconfiguration_highwater=0d0e0f10:090a0b0c,old_chunkstripe_size=11121314,"
      "new_chunkstripe_size=15161718,capacity=1d1e1f20:191a1b1c");
  log({29, 30, 37, 61}, mmsg);
  log({35, 36, 43, 100, 101, 102, 103, 105, 107, 109, 110, 111, 161},
      "valid_field=1020304,value_field=5060708");
  log({38}, "Cache_1_proctable_value=1020304,Cache_1_arctable_size=5060708");
  log({39, 40, 41, 42, 44, 45, 46, 50, 51, 52, 112},
      "structure_address=1020304,first_word_after_listhead=5060708");
  log({48, 49}, "cache_VT_flags=15161718,cache_VT_msa_queue_number=191a1b1c," + mmsg);
  log({162, 163, 164, 165, 166, 167, 168, 169, 170, 171},
      "cache_VT_flags=292a2b2c,cache_VT_msa_queue_number=2d2e2f30," + isurp);
  log({60}, "volume_number=1020304");
  log({62, 65},
      "CLH_address=1020304,volume_number=5060708,VLBN=0d0e0f10:090a0b0c,CLH_flags=11121314,"
      "cache_VT_flags=15161718,reconfiguration_highwater=1d1e1f20:191a1b1c,"
      "old_chunkstripe_size=21222324,new_chunkstripe_size=25262728");
  log({63, 64, 66, 67, 68, 69}, clh);
  log({70, 71}, isurp +
                    "main_listhead=292a2b2c:2d2e2f30,sgt_listhead=31323334:35363738,"
                    "cache_listhead=393a3b3c:3d3e3f40,IO_listhead=41424344:45464748,"
                    "iSCSI_listhead=494a4b4c:4d4e4f50,SCSI_listhead=51525354:55565758,"
                    "VT_listhead=595a5b5c:5d5e5f60,DRP_listhead=61626364:65666768,"
                    "error_DRP_listhead=696a6b6c:6d6e6f70,work_SGT_listhead=71727374:75767778,"
                    "diskline_SGT_listhead=797a7b7c:7d7e7f80,record_listhead=81828384:85868788,"
                    "FER_listhead=898a8b8c:8d8e8f90,slave_listhead=91929394:95969798");
  log({72}, "destage_extra_isurp_count=1020304");
  log({113}, "queue_pop_status=1020304");
  log({117}, "remaining_block_count=292a2b2c," + isurp);
  log({118, 119, 120, 121, 122, 124, 125, 128, 133, 135, 150, 154, 159},
      "remaining_block_count=292a2b2c,current VLBN lower=2d2e2f30," + isurp);
  log({123, 126, 127, 129, 134, 136, 137, 155, 156, 157},
      isurp +
          "CLH_address=292a2b2c,volume_number=191a1b1c,VLBN=21222324:1d1e1f20,"
          "CLH_flags=393a3b3c,valid_bitmap=41424344:3d3e3f40,dirty_bitmap=494a4b4c:45464748,"
          "activity_count=4d4e4f50,host_write_activity_count=51525354,"
          "disk_read_bitmap=595a5b5c:55565758,host_write_bitmap=61626364:5d5e5f60,"
          "destage_bitmap=696a6b6c:65666768");
  log({130, 131, 132},
      isurpUpToVlbn +
          "CLH_address=292a2b2c,CLH_volume_number=2d2e2f30,CLH_VLBN=35363738:31323334,"
          "cache_VT_flags=393a3b3c,reconfiguration_highwater=41424344:3d3e3f40,"
          "max_RAID5_shortcut_clhs_old=45464748,max_RAID5_shortcut_clhs_new=494a4b4c,"
          "remaining_block_count=4d4e4f50");
  log({138}, clh +
                 "overwrite_CLH_address=45464748,overwrite_CLH_valid_bitmap=4d4e4f50:494a4b4c,"
                 "overwrite_CLH_dirty_bitmap=55565758:51525354");
  log({139, 140, 141, 142, 143, 144, 147, 148, 149},
      clh +
          "main_listhead=45464748:494a4b4c,age_listhead=4d4e4f50:51525354,"
          "conflict_listhead=55565758:595a5b5c");
  log({145, 146},
      "cache_index=1020304,total_clh_count=5060708,free_count_this=90a0b0c,"
      "free_count_other=d0e0f10");
  log({151, 152, 153}, "current VLBN=292a2b2c,largest VLBN=2d2e2f30," + isurp);
  log({158}, "cache_index=45464748," + clh);

  for (unsigned id = 0; id <= 300; ++id) {
    SCOPED_TRACE(id);
    const auto event = decode(bugcheck(id).payload(countingBytes(152)).str());
    EXPECT_EQ(utf8(event->getEventID()), "Bugcheck " + std::to_string(id));
    const bool known = logged.count(id) != 0;
    EXPECT_EQ(utf8(event->getSummary()) != "Unhandled Event by CACHE18P", known);
    if (known) {
      EXPECT_EQ(utf8(event->getBody()), logged[id]);
    }
  }
}

TEST(CacheBugchecks, SayWhatWentWrong) {
  const std::map<unsigned, std::string> summaries = {
      {1,   "Ran out of free btree nodes"                         },
      {2,   "Null tree pointer on btree insert"                   },
      {4,   "Ran out of free btree nodes"                         },
      {52,  "Received sync packet with unexpected phase"          },
      {115, "Unexpected ISURP opcode"                             },
      {116, "Unexpected ISURP current state"                      },
      {118, "CLH not on hash table in host read"                  },
      {119, "CLH not on hash table in host read"                  },
      {121, "CLH not on hash table in host read"                  },
      {150, "conflict detect, too many CLHs"                      },
      {154, "CLH not on hash table in conflict resolution"        },
      {159, "CLH not on hash table in finish ops resource request"},
      {161, "Error in create commnuication semaphore"             },
      {162, "This cache manager is not volume owner"              },
      {171, "This cache manager is not volume owner"              },
  };
  for (const auto& [id, summary] : summaries) {
    EXPECT_EQ(utf8(decode(bugcheck(id).str())->getSummary()), summary) << id;
  }
}

TEST(CacheBugchecks, ShowOnlyElementsThatAreHeldWhole) {
  EXPECT_EQ(bodyOf(60, 3), "");
  EXPECT_EQ(bodyOf(35, 7), "<valid_field>0x1020304</valid_field> ");
  EXPECT_EQ(bodyOf(62, 15),
            "<CLH_address>0x1020304</CLH_address> <volume_number>0x5060708</volume_number> ");
  EXPECT_EQ(bodyOf(62, 16),
            "<CLH_address>0x1020304</CLH_address> <volume_number>0x5060708</volume_number> "
            "<VLBN>0x0d0e0f10  0x090a0b0c</VLBN> ");
  // The words behind the structure are gone, the structure itself is not.
  EXPECT_EQ(bodyOf(151, 40), elements(isurp));
}

TEST(CacheBugchecks, WithoutAMeaningAreTracedAndShownInHex) {
  for (const std::uint8_t source : {cache1, cache2}) {
    const TraceCapture trace;
    const auto event = decode(bugcheck(47).source(source).payload("\x2F\xA1").str());
    EXPECT_EQ(utf8(event->getEventID()), "Bugcheck 47");
    EXPECT_EQ(utf8(event->getSummary()), "Unhandled Event by CACHE18P");
    EXPECT_EQ(utf8(event->getBody()), "<Hex>2FA1</Hex>");
    const std::vector<std::string> lines = trace.lines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].substr(0, 15), "CACHE18P_Event:");
    EXPECT_EQ(lines[0].substr(lines[0].find(":----")), ":----: Unknown EventID: 0x47");
  }
  EXPECT_EQ(utf8(decode(bugcheck(65535).str())->getEventID()), "Bugcheck 65535");
}

TEST(CacheBugchecks, OfTheSecondCacheReadLikeThoseOfTheFirst) {
  const auto event = decode(bugcheck(145).source(cache2).payload(countingBytes(8)).str());
  EXPECT_EQ(utf8(event->getEventID()), "Bugcheck 145");
  EXPECT_EQ(utf8(event->getSummary()), "CLH free count went over total count");
  EXPECT_EQ(utf8(event->getBody()),
            "<cache_index>0x1020304</cache_index> <total_clh_count>0x5060708</total_clh_count> ");
  EXPECT_EQ(utf8(event->getSource()), "Cache 2");

  const Pegasus::CACHE28P_Event none(nullptr, 300);
  EXPECT_EQ(utf8(none.getEventID()), "");
  EXPECT_EQ(utf8(none.getBody()), "");
}

}  // namespace

#include <MPUEvent/STARTUPMP_Event.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/DecodedEvent.h"
#include "support/GoldenRows.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::decode;
using mpuevent::support::letters;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using mpuevent::support::TraceCapture;
using mpuevent::support::utf8;
using namespace Pegasus;
using namespace std::string_view_literals;

RecordBuilder record(std::uint16_t id, const std::string& payload) {
  return RecordBuilder().source(18).id(id).payload(payload);
}

std::string bodyOf(std::uint16_t id, const Payload& payload) {
  return utf8(decode(record(id, payload.str()).str())->getBody());
}

TEST(StartupMessage, IsFormattedLineByLine) {
  const std::pair<std::string_view, const char*> cases[] = {
      {"a b=1",                        "<Values><a_b>1</a_b> </Values>"                },
      {"",                             ""                                              },
      {"\n\n",                         ""                                              },
      {"seen\0hidden\n"sv,             "<Text1>seen</Text1> "                          },
      {" \t\v\f\r text  \n",           "<Text1>text </Text1> "                         },
      {"   \nx",                       "<Text1></Text1> <Text2>x</Text2> "             },
      {"\tslot \r id\v\f = \t 7\t8\n", "<Values><slot___id>7\t8</slot___id> </Values>" },
      {"a=1,b=2 c=x=y",                "<Values><a>1</a> <b>2</b> <c>x=y</c> </Values>"},
      {"a=,b= ",                       "<Values><a></a> <b></b> </Values>"             },
      {"=v,",                          "<Values><>v</> </Values>"                      },
      {"a=1,, b=2",                    "<Values><a>1</a> <,_b>2</,_b> </Values>"       },
      {"one\na=1 two \nb=2, \nlast",
       "<Text1>one</Text1> <Values><a>1</a> </Values><Text2>two</Text2> "
       "<Values><b>2</b> </Values><Text3></Text3> <Text4>last</Text4> "                },
  };
  for (const auto& [text, body] : cases) EXPECT_EQ(bodyOf(1, Payload().bytes(text)), body);
}

TEST(StartupMessage, EndsWithItsPayload) {
  struct Case {
    std::string_view payload;
    std::uint16_t length;
    const char* summary;
    const char* body;
  };
  const Case cases[] = {
      {"abcdef",     4,    "abcd", "<Text1>abcd</Text1> "                       },
      {"\nabc",      4,    "",     "<Text1>abc</Text1> "                        },
      {"ab\0c\nd"sv, 6,    "ab",   "<Text1>ab</Text1> "                         },
      {"ab \nc=",    9999, "ab ",  "<Text1>ab</Text1> <Values><c></c> </Values>"},
  };
  for (const Case& c : cases) {
    const auto event = decode(record(1, std::string(c.payload)).structLength(c.length).str());
    EXPECT_EQ(utf8(event->getSummary()), c.summary);
    EXPECT_EQ(utf8(event->getBody()), c.body);
  }
}

TEST(SignalReport, ShowsNoCauseWithoutASignalCode) {
  const auto shown = [](const std::string& info) {
    return "<Exception>Caught</Exception> <Signal_info><Signal_number>11</Signal_number> "
           "<Errno>-2</Errno> " +
           info +
           "</Signal_info><Registers></Registers><Process_Info><Name></Name> </Process_Info>";
  };
  const Payload start = Payload().u32(11).u32(0xFFFFFFFE);
  EXPECT_EQ(bodyOf(4, Payload(start).u16(3)), shown(""));
  EXPECT_EQ(bodyOf(4, Payload(start).u32(0x0001A0B0)),
            shown("<Signal_code>0x0001a0b0</Signal_code> <__Cause>Timer event</__Cause> "));
}

Payload snapshot(std::uint32_t words) {
  Payload payload;
  for (std::uint32_t i = 0; i < words; ++i) payload.u32(0xD1C20000 + i);
  return payload;
}

TEST(RegisterReport, FindsEachRegisterAtItsOwnWord) {
  EXPECT_EQ(bodyOf(100, snapshot(6).u16(7)),
            "<STATUS>D1C20000 Z is 01, N is 01, C is 00, V is 01, E2 is 00, E1 is 00, H is 00, "
            "R is 01, PC is C20000</STATUS> <SEMA>D1C20001 </SEMA> <LPSTART>D1C20002 </LPSTART> "
            "<LPEND>D1C20003 </LPEND> <IDENTITY>D1C20004 MANCODE is D1, MANVER is C2, "
            "ARCNUM is 00, ARCVER is 04</IDENTITY> <DEBUG>D1C20005 </DEBUG> ");
  // The last shown of as many words: the registers without a name come between.
  const std::pair<std::uint32_t, const char*> cases[] = {
      {128,  "<I_CACHE_BUID>D1C20077 </I_CACHE_BUID> "    },
      {129,  "<SCRATCH0>D1C20080 </SCRATCH0> "            },
      {256,  "<SCRATCH63>D1C200BF </SCRATCH63> "          },
      {1024, "<WR_RESP_STATUS>D1C20311 </WR_RESP_STATUS> "},
      {1055, "<ARC_CORE30>D1C2041E </ARC_CORE30> "        },
      {1088, "<EXT_CORE31>D1C2043F </EXT_CORE31> "        },
      {1300, "<EXT_CORE31>D1C2043F </EXT_CORE31> "        },
  };
  for (const auto& [words, last] : cases) {
    EXPECT_TRUE(bodyOf(100, snapshot(words)).ends_with(last)) << words;
  }
}

TEST(RegisterReport, EndsWithThePayloadAndWithTheRecord) {
  const std::string one = bodyOf(100, snapshot(1));
  for (const std::uint16_t claimed : {std::uint16_t{4}, std::uint16_t{7}}) {
    SCOPED_TRACE(claimed);
    EXPECT_EQ(utf8(decode(record(100, snapshot(3).str()).structLength(claimed).str())->getBody()),
              one);
  }
  EXPECT_EQ(utf8(decode(record(100, snapshot(1).str()).structLength(999).str())->getBody()), one);
}

TEST(StackDump, NamesWordsByAddress) {
  const Payload three = Payload().u32(0x1F).u32(0xFFFF0004).u32(0x0A0B0C0D).u32(0).u32(0xFFFFFFFF);
  EXPECT_EQ(bodyOf(101, three),
            "<arc_index>1f</arc_index> <SP>ffff0004</SP> <Sfffefffe>a0b0c0d</Sfffefffe> "
            "<Sffff0002>0</Sffff0002> <Sffff0006>ffffffff</Sffff0006> ");
  EXPECT_EQ(bodyOf(101, Payload().u32(2).u32(0x30)), "<arc_index>2</arc_index> <SP>30</SP> ");
  // Fewer than two words: their number wraps, but the record still ends. 4 / 4 - 2 is -1.
  EXPECT_EQ(utf8(decode(record(101, three.str()).structLength(4).str())->getBody()),
            "<arc_index>1f</arc_index> <SP>ffff0004</SP> <Sffff0006>a0b0c0d</Sffff0006> "
            "<Sffff000a>0</Sffff000a> <Sffff000e>ffffffff</Sffff000e> ");
  EXPECT_EQ(bodyOf(101, Payload().u32(2)), "<arc_index>2</arc_index> ");
}

TEST(StackDump, StopsWhereItsRoomEnds) {
  Payload payload = Payload().u32(1).u32(0x80000000);
  for (std::uint32_t i = 0; i < 1200; ++i) payload.u32(0xC0000000 + i);
  const TraceCapture trace;
  const std::string body = bodyOf(101, payload);
  // 43 characters, then 32 a word: word 1022 begins at 32,747 and wants 50.
  EXPECT_EQ(body.size(), 32747U);
  EXPECT_TRUE(body.ends_with("<S80000694>c00003fd</S80000694> "));
  EXPECT_EQ(trace.lines(),
            (std::vector<std::string>{"STARTUPMP_Event:903           :----: There is not enough "
                                      "space to dump the stack data",
                                      ""}));
  EXPECT_EQ(bodyOf(101, Payload().bytes(payload.str().substr(0, 8 + 4 * 1022))).size(), 32747U);
  EXPECT_EQ(trace.lines().size(), 2U);
}

TEST(StartupBodies, CanBeHadFromARecordAlone) {
  const std::pair<std::uint16_t, String (*)(EmpEvLogMsg_s const*)> cases[] = {
      {1,   get_STARTUPMP_MSG_STRING      },
      {2,   get_STARTUPMP_MSG_MMCH        },
      {3,   get_STARTUPMP_MSG_PARTIAL_MMSG},
      {4,   get_SignalInfo                },
      {100, get_R5600_INVALID_STATE_MMSG  },
      {101, get_R5600_stack_dump          },
  };
  for (const auto& [id, body] : cases) {
    SCOPED_TRACE(id);
    const std::string bytes = record(id, letters(340).at(0).bytes("text\n").str()).str();
    EXPECT_EQ(utf8(body(reinterpret_cast<EmpEvLogMsg_s const*>(bytes.data()))),
              utf8(decode(bytes)->getBody()));
    EXPECT_EQ(utf8(body(nullptr)), "");
  }
}

}  // namespace

#include <MPUEvent/STARTUPMP_Event.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"
#include "support/TraceCapture.h"

namespace {

using mpuevent::support::decode;
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

TEST(StartupEvent, HasATitleAndASummaryForEachKind) {
  struct Case {
    std::uint16_t id;
    std::string titleAndSummary;
  };
  const Case cases[] = {
      {1,   "General message: first\tline"                              },
      {2,
       "Unrecognized message received: "
       "Startup received a message that it doesn't know how to handle"  },
      {3,
       "Partial message in Alternate Event Log: "
       "An incomplete message was in an Alternate Event Log"            },
      {4,   "MPU App fatal signal: MPU application caught and exception"},
      {100, "R5600 is in invalid state: R5600 is in invalid state"      },
      {101, "stack dump: dump of the stack"                             },
      {99,  "99: Unhandled Event by STARTUPMP"                          },
  };
  const TraceCapture trace;
  for (const Case& c : cases) {
    EXPECT_TRUE(trace.lines().empty());
    const auto event = decode(record(c.id, "first\tline\nsecond").str());
    EXPECT_EQ(utf8(event->getEventID()) + ": " + utf8(event->getSummary()), c.titleAndSummary);
  }
  EXPECT_EQ(trace.lines(),
            std::vector<std::string>{"STARTUPMP_Event:259           :----: Unknown EventID: 99"});
  EXPECT_EQ(bodyOf(99, Payload().u16(0x01FE)), "<Hex>01FE</Hex>");
}

TEST(StartupMessage, IsFormattedLineByLine) {
  struct Case {
    std::string_view payload;
    const char* body;
  };
  const Case cases[] = {
      {"Boot OK\nslot = 3, state= up\n",
       "<Text1>Boot OK</Text1> <Values><slot>3</slot> <state>up</state> </Values>"       },
      {"a b=1",                          "<Values><a_b>1</a_b> </Values>"                },
      {"",                               ""                                              },
      {"\n\n",                           ""                                              },
      {"seen\0hidden\n"sv,               "<Text1>seen</Text1> "                          },
      {" \t\v\f\r text  \n",             "<Text1>text </Text1> "                         },
      {"   \nx",                         "<Text1></Text1> <Text2>x</Text2> "             },
      {"\tslot \r id\v\f = \t 7\t8\n",   "<Values><slot___id>7\t8</slot___id> </Values>" },
      {"a=1,b=2 c=x=y",                  "<Values><a>1</a> <b>2</b> <c>x=y</c> </Values>"},
      {"a=,b= ",                         "<Values><a></a> <b></b> </Values>"             },
      {"=v,",                            "<Values><>v</> </Values>"                      },
      {"a=1,, b=2",                      "<Values><a>1</a> <,_b>2</,_b> </Values>"       },
      {"one\na=1 two \nb=2, \nlast",
       "<Text1>one</Text1> <Values><a>1</a> </Values><Text2>two</Text2> "
       "<Values><b>2</b> </Values><Text3></Text3> <Text4>last</Text4> "                  },
  };
  for (const Case& c : cases) EXPECT_EQ(bodyOf(1, Payload().bytes(c.payload)), c.body);
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

/// The header of a management message at an offset that is a multiple of four, behind `text`.
Payload channelHeader(std::string_view text, std::size_t offset) {
  Payload payload;
  payload.bytes(text).at(offset + 8).u64(0x8102830485860708).u16(0x890A);
  payload.at(offset + 36).u32(0xFFFFFFF4);
  payload.at(offset + 44).u64(0x0B0C0D0E8F101112).u32(0x00131415);
  return payload;
}

const char wholeHeader[] =
    "<Message_type>129</Message_type> <MMCH_version>2</MMCH_version> "
    "<Message_length>33540</Message_length> <protocol>133</protocol> <type>8783624</type> "
    "<requestor>137</requestor> <mmsg_cont>0x0a</mmsg_cont> <return_code>-12</return_code> "
    "<general_use1>0x0b0c0d0e</general_use1> <general_use2>0x8f101112</general_use2> "
    "<general_use3>0x00131415</general_use3> ";

TEST(UnknownMessage, HasItsHeaderAtTheWordThatItsTextEndsIn) {
  struct Case {
    std::string_view text;
    std::size_t headerOffset;
    const char* shown;
  };
  const Case cases[] = {
      {"\n",           0, ""       },
      {"abc",          0, "abc"    },
      {"abc\n",        4, "abc"    },
      {"abcd",         4, "abcd"   },
      {"abcdef\n",     4, "abcdef" },
      {"abcdefg\n",    8, "abcdefg"},
      {"abc\0def\n"sv, 0, "abc"    },
  };
  for (const Case& c : cases) {
    EXPECT_EQ(bodyOf(2, channelHeader(c.text, c.headerOffset)),
              std::string("<Text>") + c.shown + "</Text> <MMCH_contents>" + wholeHeader +
                  "</MMCH_contents>")
        << c.text;
  }
}

TEST(PartialMessage, ShowsAsManyFieldsAsItsLengthTells) {
  struct Case {
    std::uint32_t rest;
    const char* nextKey;  // the first that is not shown
  };
  const Case cases[] = {
      {16,         "protocol"    },
      {17,         "requestor"   },
      {18,         "mmsg_cont"   },
      {40,         "return_code" },
      {41,         "general_use1"},
      {48,         "general_use1"},
      {49,         "general_use2"},
      {52,         "general_use2"},
      {53,         "general_use3"},
      {56,         "general_use3"},
      {57,         "end"         },
      {0xFFFFFFFF, "end"         }, // wraps
  };
  const std::string all = wholeHeader;
  for (const Case& c : cases) {
    const std::string payload = channelHeader("abcdefg\n", 8).padTo(300).str();
    const auto length = static_cast<std::uint16_t>(152 + 8 + c.rest);
    const auto event = decode(record(3, payload).structLength(length).str());
    EXPECT_EQ(utf8(event->getBody()), "<Text>abcdefg</Text> <MMCH_contents>" +
                                          all.substr(0, all.find(std::string("<") + c.nextKey)) +
                                          "</MMCH_contents>")
        << c.rest;
  }
}

TEST(SignalReport, TellsTheCauseByClass) {
  struct Case {
    std::uint32_t signal;
    std::uint32_t code;
    const char* cause;
    const char* event;
    const char* rest;
  };
  const char* const address = "<__Address>0x0xfedc0102</__Address> ";
  const Case cases[] = {
      {9,  0,          "Killed by another process",          "",
       "<__Signal_sent_by>-19136254</__Signal_sent_by> <__Sending_user>50595078</__Sending_user> "  },
      {14, 0x00010007, "Timer event",                        "",                             ""     },
      {29, 0x00020006, "Polled event:",                      "Input data available",
       "<__Band>-19136254</__Band> <__File_descriptor>50595078</__File_descriptor> "                },
      {4,  0x00030003, "Illegal instruction (code: 1)",      "Illegal opcode",               address},
      {5,  0x00030002, "Trace/breakpoint trap (code: 1)",    "Process breakpoint",           address},
      {6,  0x00030001, "Unrecognized processor fault",       "",                             address},
      {7,  0x00030000, "Bus error (code: 1)",                "Invalid address alignment",    address},
      {8,  0x00030008, "Floating point exception (code: 1)", "Integer divide by zero",       address},
      {11, 0x0003FFFF, "Segmentation violation (code: 1)",   "Address not mapped to object", address},
      {12, 0x00030001, "Unrecognized processor fault",       "",                             address},
      {17, 0x00040006, "Child process signalled an event",   "Child exited",
       "<__Exit_value>-117901064</__Exit_value> <__User_time>151653132 seconds</__User_time> "
       "<__System_time>-219025169 seconds</__System_time> "                                         },
      {34, 0x00050001, "Real time event",                    "",
       "<__Signal_value_int>-117901064</__Signal_value_int> "
       "<__Signal_value_ptr>0xf8f8f8f8</__Signal_value_ptr> "                                       },
      {34, 0x00060001, "Unrecognized event",                 "",                             ""     },
      {34, 0xFFFFFFFF, "Unrecognized event",                 "",                             ""     },
  };
  for (const Case& c : cases) {
    const Payload info = Payload().u32(c.signal).u32(2).u32(c.code).u32(0xFEDC0102).u32(0x03040506);
    std::string expected = std::string("</Signal_code> <__Cause>") + c.cause + "</__Cause> ";
    if (*c.event != 0) expected += std::string("<__Event>") + c.event + "</__Event> ";
    expected += std::string(c.rest) + "</Signal_info>";
    const std::string body =
        bodyOf(4, Payload(info).u32(0xF8F8F8F8).u32(0x090A0B0C).u32(0xF2F1F0EF));
    EXPECT_NE(body.find(expected), std::string::npos) << expected << "\n" << body;
  }
  const std::string nullAddress = bodyOf(4, Payload().u32(11).u32(0).u32(0x00030001).u32(0));
  EXPECT_NE(nullAddress.find("<__Address>0x(nil)</__Address> "), std::string::npos);
}

TEST(SignalReport, ShowsRegistersAndProcess) {
  Payload payload;
  payload.at(128);
  for (std::uint32_t i = 0; i < 44; ++i) payload.u32(0xA0B0C000 + i);
  payload.u32(0x10000380).u32(0x10068F20).u32(0).u32(0xF0060001).u32(0x00010203).text("volmgr");
  const std::string body = bodyOf(4, payload);
  EXPECT_EQ(body.find("<GPR>0: 0xa0b0c000</GPR> <GPR>1: 0xa0b0c001</GPR> "),
            body.find("<Registers>") + 11);
  const std::string tail =
      "<GPR>31: 0xa0b0c01f</GPR> <NIP>0xa0b0c020</NIP> <MSR>0xa0b0c021</MSR> "
      "<Orig_GPR3>0xa0b0c022</Orig_GPR3> <CTR>0xa0b0c023</CTR> <LINK>0xa0b0c024</LINK> "
      "<XER>0xa0b0c025</XER> <CCR>0xa0b0c026</CCR> <MQ>0xa0b0c027</MQ> <TRAP>0xa0b0c028</TRAP> "
      "<DAR>0xa0b0c029</DAR> <DSISR>0xa0b0c02a</DSISR> <RESULT>0xa0b0c02b</RESULT> </Registers>"
      "<Process_Info><PID>66051</PID> <Name>volmgr</Name> <_start>0x10000380</_start> "
      "<_end>0x10068f20</_end> <__bss_start>(nil)</__bss_start> "
      "<__data_start>0xf0060001</__data_start> </Process_Info>";
  EXPECT_EQ(body.substr(body.find("<GPR>31")), tail);
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

struct Row {
  std::string name;
  std::uint32_t word;
  std::uint32_t count;
};

/// The rows of the register table; a row begins where the one before ends, but for ARC_CORE.
std::vector<Row> registerRows() {
  const char names[] =
      "STATUS SEMA LPSTART LPEND IDENTITY DEBUG REG_6 REG_7 REG_8 REG_9 REG_A REG_B REG_C "
      "REG_D REG_E REG_F IC_IVIC IC_CTRL REG_12 IC_LIL REG_14 REG_15 REG_16 REG_17 REG_18 "
      "IC_IVIL IC_RAM_ADDRESS IC_TAG IC_WP IC_DATA REG_1E REG_1F REG_20 COUNT CONTROL LIMIT "
      "REG_24 REG_25 REG_26 REG_27 REG_28 REG_29 REG_2A REG_2B REG_2C REG_2D REG_2E REG_2F "
      "REG_30 REG_31 REG_32 REG_33 REG_34 REG_35 REG_36 REG_37 BURST_SIZE SCRATCH_A LOAD_A "
      "STORE_A BM_STATUS REG_3D REG_3E REG_3F REG_40 REG_41 REG_42 AUX_IRQ_LV12 REG_44 REG_45 "
      "REG_46 DC_IVDC DC_CTRL DC_LDL DC_IVDL DC_FLSH DC_FLDL REG_4D REG_4E REG_4F REG_50 "
      "REG_51 REG_52 REG_53 REG_54 REG_55 REG_56 REG_57 DC_RAM_ADDR DC_TAG DC_WP DC_DATA "
      "REG_5C REG_5D REG_5E REG_5F REG_60 REG_61 REG_62 REG_63 REG_64 REG_65 REG_66 REG_67 "
      "REG_68 REG_69 REG_6A REG_6B REG_6C REG_6D REG_6E REG_6F REG_70 VECBASEADR D_CACHE_BUILD "
      "REG_73 REG_74 REG_75 REG_76 I_CACHE_BUID REG_78 REG_79 REG_7A REG_7B REG_7C REG_7D "
      "REG_7E REG_7F SCRATCH*64 REG_C0*64 COUNT1 CONTROL1 LIMIT1 REG_103*253 IRQ_LEV IRQ_HINT "
      "REG_202*254 ARC_CTL ERR_STA ERR_INT_EN IC_PE_ADDR DC_PE_ADDR SCR_PE_ADDR LTAG_PE_ADDR "
      "DC_TAG_PE_ADDR SYS_PE_STA NCADDR ILLEGAL_ADDR PMUX_SEL_REG RANGE0_LO_REG RANGE0_HI_REG "
      "RANGE1_LO_REG RANGE1_HI_REG PARITY_ERR_SET_REG WR_RESP_STATUS REG_312*253 ARC_CORE*32 "
      "EXT_CORE*32 ";
  std::vector<Row> rows;
  std::uint32_t word = 0;
  std::istringstream words(names);
  for (std::string name; words >> name;) {
    const std::size_t star = name.find('*');
    const int count = star == std::string::npos ? 1 : std::stoi(name.substr(star + 1));
    name = name.substr(0, star);
    if (name == "ARC_CORE") word = 0x400;
    rows.push_back({name, word, static_cast<std::uint32_t>(count)});
    word += rows.back().count;
  }
  return rows;
}

TEST(RegisterTables, ListEveryRegister) {
  const std::vector<Row> rows = registerRows();
  ASSERT_EQ(rows.size() + 1, std::size(rtTavo4ArcRegsNames));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ArcRegister& row = rtTavo4ArcRegsNames[i];
    EXPECT_EQ(std::string(row.name), rows[i].name);
    EXPECT_EQ(row.offset, static_cast<std::int32_t>(4 * rows[i].word)) << row.name;
    EXPECT_EQ(row.instanceCount, rows[i].count) << row.name;
    EXPECT_EQ(row.widthInBits, 32U) << row.name;
  }
  EXPECT_EQ(rtTavo4ArcRegsNames[158].offset, -1);
}

TEST(RegisterTables, ListEveryField) {
  std::string tables;
  for (const ArcRegister& row : rtTavo4ArcRegsNames) {
    if (row.fields == nullptr) continue;
    tables += std::string(row.name) + ":";
    const ArcRegisterField* field = row.fields;
    for (; field->lowestBit >= 0; ++field) {
      tables += std::string(" ") + field->name + "(" + std::to_string(field->lowestBit) + ":" +
                std::to_string(field->widthInBits) + ")";
      EXPECT_EQ(field->mask, ((std::uint64_t{1} << field->widthInBits) - 1) << field->lowestBit)
          << field->name;
    }
    EXPECT_EQ(field->widthInBits, 0);
    tables += '\n';
  }
  EXPECT_EQ(tables,
            "STATUS: Z(31:1) N(30:1) C(29:1) V(28:1) E2(27:1) E1(26:1) H(25:1) R(24:1) PC(0:24)\n"
            "IDENTITY: MANCODE(24:8) MANVER(16:8) ARCNUM(8:8) ARCVER(0:8)\n"
            "VECBASEADR: rsvd(24:8) PC(0:24)\n"
            "IRQ_LEV: rsvd1(9:23) IRQ_6(8:1) IRQ_5(7:1) rsvd2(2:5)\n"
            "IRQ_HINT: rsvd(5:27) IRQ_NUM(0:5)\n"
            "ARC_CTL: rsvd(14:18) RC(13:1) IC(12:1) WR(11:1) RR(10:1) INT6(9:1) INT5(8:1) "
            "L2C_LAST(7:1) FP(6:1) WP(4:2) LI(3:1) PE(2:1) BE(1:1) AD(0:1)\n"
            "ERR_STA: rsvd(8:24) ID(7:1) II(6:1) SB(5:1) DT(4:1) IT(3:1) SC(2:1) DC(1:1) IC(0:1)\n"
            "ERR_INT_EN: rsvd(8:24) ID(7:1) II(6:1) SB(5:1) DT(4:1) IT(3:1) SC(2:1) DC(1:1) "
            "IC(0:1)\n"
            "SYS_PE_STA: rsvd(5:27) CF(4:1) PTR(0:4)\n");
  EXPECT_EQ(rtTavo4ArcRegsNames[0].fields, rtTavo4ArcSTATUSFields);
  EXPECT_NE(rtTavo4ERR_STAFields, rtTavo4ERR_INT_ENFields);
}

Payload snapshot(std::uint32_t words) {
  Payload payload;
  for (std::uint32_t i = 0; i < words; ++i) payload.u32(0xD1C20000 + i);
  return payload;
}

TEST(RegisterReport, FindsEachRegisterAtItsOwnWord) {
  // None, one, none and some and all of SCRATCH, all but one of ARC_CORE, every register, more.
  for (const std::uint32_t words : {0U, 1U, 128U, 141U, 192U, 1055U, 1088U, 1300U}) {
    std::string expected;
    for (const Row& row : registerRows()) {
      for (std::uint32_t i = 0; i < row.count && row.word + i < words; ++i) {
        if (row.name.starts_with("REG")) continue;
        char value[16];
        std::snprintf(value, sizeof value, ">%08X ",
                      static_cast<unsigned>(0xD1C20000 + row.word + i));
        expected += row.name + (row.count > 1 ? std::to_string(i) : "") + value;
      }
    }
    std::string shown;
    std::istringstream body(bodyOf(100, snapshot(words)));
    for (std::string element; std::getline(body, element, '<');) {
      const std::size_t valueEnd = element.find(' ');
      if (element.empty() || element[0] == '/') continue;
      shown += element.substr(0, valueEnd + 1);
    }
    EXPECT_EQ(shown, expected) << words;
  }
}

TEST(RegisterReport, ShowsTheFieldsOfARegister) {
  EXPECT_EQ(bodyOf(100, snapshot(6).u16(7)),
            "<STATUS>D1C20000 Z is 01, N is 01, C is 00, V is 01, E2 is 00, E1 is 00, H is 00, "
            "R is 01, PC is C20000</STATUS> <SEMA>D1C20001 </SEMA> <LPSTART>D1C20002 </LPSTART> "
            "<LPEND>D1C20003 </LPEND> <IDENTITY>D1C20004 MANCODE is D1, MANVER is C2, "
            "ARCNUM is 00, ARCVER is 04</IDENTITY> <DEBUG>D1C20005 </DEBUG> ");
  struct Case {
    std::size_t word;
    std::uint32_t value;
    const char* element;
  };
  const Case cases[] = {
      {0x71,  0x9A00000B, "<VECBASEADR>9A00000B rsvd is 9A, PC is 0B</VECBASEADR> "           },
      {0x200, 0xFFFFFF0B,
       "<IRQ_LEV>FFFFFF0B rsvd1 is 7FFFFF, IRQ_6 is 01, IRQ_5 is 00, rsvd2 is 02</IRQ_LEV> "  },
      {0x201, 0x80000031, "<IRQ_HINT>80000031 rsvd is 4000001, IRQ_NUM is 11</IRQ_HINT> "     },
      {0x300, 0x0000A569,
       "<ARC_CTL>0000A569 rsvd is 02, RC is 01, IC is 00, WR is 00, RR is 01, INT6 is 00, "
       "INT5 is 01, L2C_LAST is 00, FP is 01, WP is 02, LI is 01, PE is 00, BE is 00, AD is 01"
       "</ARC_CTL> "                                                                          },
      {0x301, 0x000001A5,
       "<ERR_STA>000001A5 rsvd is 01, ID is 01, II is 00, SB is 01, DT is 00, IT is 00, SC is 01, "
       "DC is 00, IC is 01</ERR_STA> "                                                        },
      {0x302, 0x0000005A,
       "<ERR_INT_EN>0000005A rsvd is 00, ID is 00, II is 01, SB is 00, DT is 01, IT is 01, "
       "SC is 00, DC is 01, IC is 00</ERR_INT_EN> "                                           },
      {0x308, 0x0000003C, "<SYS_PE_STA>0000003C rsvd is 01, CF is 01, PTR is 0C</SYS_PE_STA> "},
  };
  Payload payload = snapshot(0x312);
  for (const Case& c : cases) payload.at(4 * c.word).u32(c.value);
  const std::string body = bodyOf(100, payload);
  for (const Case& c : cases) EXPECT_NE(body.find(c.element), std::string::npos) << c.element;
}

TEST(RegisterReport, EndsWithThePayloadAndWithTheRecord) {
  const std::string one = bodyOf(100, snapshot(1));
  for (const std::uint16_t claimed : {std::uint16_t{4}, std::uint16_t{7}}) {
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
  struct Case {
    std::uint16_t id;
    String (*body)(EmpEvLogMsg_s const*);
  };
  const Case cases[] = {
      {1,   get_STARTUPMP_MSG_STRING      },
      {2,   get_STARTUPMP_MSG_MMCH        },
      {3,   get_STARTUPMP_MSG_PARTIAL_MMSG},
      {4,   get_SignalInfo                },
      {100, get_R5600_INVALID_STATE_MMSG  },
      {101, get_R5600_stack_dump          },
  };
  for (const Case& c : cases) {
    const std::string bytes = record(c.id, channelHeader("text\n", 4).padTo(340).str()).str();
    EXPECT_EQ(utf8(c.body(reinterpret_cast<EmpEvLogMsg_s const*>(bytes.data()))),
              utf8(decode(bytes)->getBody()));
    EXPECT_EQ(utf8(c.body(nullptr)), "");
  }
}

}  // namespace

#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace {

using mpuevent::support::EventFields;
using mpuevent::support::Payload;
using mpuevent::support::RecordBuilder;
using mpuevent::support::utf8;
using namespace Pegasus;

RecordBuilder recordOf(std::uint16_t id, std::uint8_t type, const Payload& payload) {
  return RecordBuilder().source(23).id(id).type(type).payload(payload);
}

EventFields decode(const RecordBuilder& record) {
  return mpuevent::support::fieldsOf(*mpuevent::support::decode(record.str()));
}

/// A location block; the event's data can follow.
Payload located() { return Payload().u16(0xFDE8).text("ddlm.c").field("grant", 23); }
const std::string location = "<File>ddlm.c</File> <Func>grant</Func> <Line>65000</Line> ";
const std::string noLocation = "<File></File> <Func></Func> <Line>0</Line> ";

Payload words(std::initializer_list<std::uint32_t> values) {
  Payload payload = located();
  for (const std::uint32_t value : values) payload.u32(value);
  return payload;
}

const std::pair<std::uint16_t, String (*)(EmpEvLogMsg_s*, char*)> kinds[] = {
    {2000, get_SCC_text_event_body   },
    {2005, get_SCC_dump_event_body   },
    {2010, get_SCC_shmem_event_body  },
    {2011, get_SCC_lock_event_body   },
    {2012, get_SCC_shmem_event_body  },
    {2013, get_SCC_mmsg_event_body   },
    {2015, get_SCC_requestEvent_body },
    {2016, get_SCC_responseEvent_body},
    {2017, get_SCC_timerEvent_body   },
    {2018, get_SCC_ddlm_event_body   },
    {2019, get_SCC_cpm_event_body    },
};

TEST(SystemConfig, ShowsALocationUnlessInformational) {
  const Payload payload = words({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}).text("one two; three");
  for (const auto& [id, render] : kinds) {
    SCOPED_TRACE(id);
    const EventFields informational = decode(recordOf(id, 1, payload));
    const std::string summary = informational.summary();
    const std::string body = informational.body() + location;

    // Two more processes log the same records; a type that is none of the three is no warning.
    for (const RecordBuilder& record :
         {recordOf(id, 2, payload), recordOf(id, 3, payload), recordOf(id, 0, payload).source(19),
          recordOf(id, 4, payload).source(25)}) {
      const EventFields event = decode(record);
      EXPECT_EQ(event.summary(), summary);
      EXPECT_EQ(event.body(), body);
    }

    // The function knows its layout without the event id.
    std::string record = recordOf(7, 0, payload).str();
    char rendered[64];
    EXPECT_EQ(utf8(render(reinterpret_cast<EmpEvLogMsg_s*>(record.data()), rendered)), body);
    EXPECT_EQ(rendered, summary);
    EXPECT_EQ(utf8(render(reinterpret_cast<EmpEvLogMsg_s*>(record.data()), nullptr)), body);
    EXPECT_EQ(utf8(render(nullptr, rendered)), "");
    EXPECT_STREQ(rendered, "");
  }
}

TEST(SystemConfig, TakesTheLocationFromPayloadsOfMoreThan32Bytes) {
  const std::string name28(28, 'f');
  const std::string name29(29, 'F');
  const auto block = [](std::string_view file) { return Payload().u16(0x3132).text(file); };
  const auto body = [](const Payload& payload) {
    return decode(recordOf(2000, 3, payload)).body();
  };
  EXPECT_EQ(body(block("f.c").padTo(32)), "<Text>12f.c</Text> " + noLocation);
  EXPECT_EQ(body(located().bytes("x")), "<Text>x</Text> " + location);
  EXPECT_EQ(body(block("f.c").bytes("cut_behind_its_26th_letter").bytes("x")),
            "<Text>x</Text> <File>f.c</File> <Func>cut_behind_its_26th_letter</Func> "
            "<Line>12594</Line> ");
  EXPECT_EQ(body(block(name28).bytes("gx")),
            "<Text>x</Text> <File>" + name28 + "</File> <Func>g</Func> <Line>12594</Line> ");
  EXPECT_EQ(body(block(name29).bytes("x")),
            "<Text>x</Text> <File>" + name29 + "</File> <Func></Func> <Line>12594</Line> ");

  const auto cut = [](const Payload& payload) {
    return decode(recordOf(2000, 3, payload).structLength(40)).body();
  };
  const std::string noText = "<Text></Text> ";
  EXPECT_EQ(cut(Payload().u8(1)), noText + "<File></File> <Func></Func> ");
  EXPECT_EQ(cut(Payload().u16(0x0102)), noText + "<File></File> <Func></Func> <Line>258</Line> ");
  EXPECT_EQ(cut(Payload().u16(3).bytes("f.c")),
            noText + "<File>f.c</File> <Func></Func> <Line>3</Line> ");
  EXPECT_EQ(cut(block("f.c").bytes("g")),
            noText + "<File>f.c</File> <Func>g</Func> <Line>12594</Line> ");
}

TEST(SystemConfig, UnpacksALocationBlock) {
  std::string block = Payload().u16(0xFDE8).text("ddlm.c").text("gr").padTo(32).str();
  auto* locinfo = reinterpret_cast<SCC_EVENT_LOCINFO_t*>(block.data());
  int line = 0;
  char function[31] = "..............................";
  char file[8] = ".......";
  SCC_fetch_event_location_information(locinfo, &line, function, file);
  EXPECT_EQ(line, 65000);
  EXPECT_STREQ(file, "ddlm.c");
  EXPECT_STREQ(function, "gr");
  EXPECT_EQ(function[23], '.');  // the 23 bytes held have their NUL
  block.replace(9, 23, 23, 'f');
  SCC_fetch_event_location_information(locinfo, &line, function, file);
  EXPECT_EQ(function, std::string(23, 'f'));
  EXPECT_EQ(function[24], '.');
  // A file name without a NUL: 29 characters and one, in room for 30.
  block.replace(2, 30, 30, 'f');
  char fullFile[31] = "..............................";
  SCC_fetch_event_location_information(locinfo, nullptr, nullptr, fullFile);
  EXPECT_EQ(fullFile, std::string(29, 'f'));
  EXPECT_EQ(fullFile[30], '\0');
  SCC_fetch_event_location_information(locinfo, nullptr, nullptr, nullptr);
  SCC_fetch_event_location_information(nullptr, &line, function, file);
  EXPECT_EQ(line, 0);
  EXPECT_STREQ(file, "");
}

/// A text behind whose last character no byte can be read.
class TextAtAnEdge {
 public:
  explicit TextAtAnEdge(const std::string& text)
      : pageSize_(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))),
        pages_(mmap(nullptr, 2 * pageSize_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                    0)) {
    edge_ = static_cast<char*>(pages_) + pageSize_;
    EXPECT_EQ(mprotect(edge_, pageSize_, PROT_NONE), 0);
    start_ = std::copy_backward(text.begin(), text.end(), edge_);
  }
  ~TextAtAnEdge() { munmap(pages_, 2 * pageSize_); }
  TextAtAnEdge(const TextAtAnEdge&) = delete;
  TextAtAnEdge& operator=(const TextAtAnEdge&) = delete;

  char* start() { return start_; }

 private:
  std::size_t pageSize_;
  void* pages_;
  char* edge_;
  char* start_;
};

TEST(SystemConfig, CutsSummariesAndReadsNoCharacterThatDoesNotMatter) {
  const std::string word62(62, 'w');
  const std::string word63(63, 'w');
  const std::string word28(28, 'a');
  const std::string words58 = word28 + ' ' + std::string(29, 'b');
  constexpr char nul = '\0';
  struct Case {
    std::string text;
    int limit;
    std::string summary;
  };
  // Some texts have a NUL behind them.
  const Case cases[] = {
      {std::string("init(): failed") + nul,  0,               "init("         },
      {std::string("():x") + nul,            0,               "("             },
      {std::string("):x") + nul,             0,               "):x"           },
      {std::string("f(a): b() :c") + nul,    0,               "f(a): b() :c"  },
      {word62 + nul,                         0,               word62          },
      {word62 + "." + nul,                   0,               word62          },
      {word62 + "w" + nul,                   0,               ""              },
      {words58 + " ccc" + nul,               0,               words58 + " ccc"},
      {words58 + " cccc" + nul,              0,               words58         },
      {words58 + "bbbb cccc" + nul,          0,               words58 + "bbbb"},
      {words58 + "bbbbb cccc" + nul,         0,               word28          },
      {std::string("tab\t" + word62) + nul,  0,               "tab"           },
      {std::string("line\n" + word62) + nul, 0,               "line"          },
      {std::string("four five six") + nul,   9,               "four five"     },
      {std::string("four five six") + nul,   8,               "four"          },
      {std::string("four. five") + nul,      -1,              ""              },
      {"one two.",                           0,               "one two"       },
      {"one;",                               9,               "one"           },
      {"f():",                               0,               "f("            },
      {word63,                               0,               ""              },
      {"a " + word63,                        0,               "a"             },
      {word63,                               99,              ""              },
      {"four five",                          8,               "four"          },
      {"",                                   -1,              ""              },
      {"",                                   -2147483647 - 1, ""              },
  };
  for (const Case& c : cases) {
    TextAtAnEdge source(c.text);
    char summary[63];
    SCC_copySummarized(summary, source.start(), c.limit);
    EXPECT_EQ(summary, c.summary) << c.text << c.limit;
  }
}

TEST(SystemConfig, SubtractsALocationFromEveryDump) {
  struct Case {
    Payload payload;
    std::uint16_t structLength;
    const char* body;
  };
  const Payload abAndTwo = located().text("ab").u16(0x01F2);
  const Case cases[] = {
      {Payload().text("abc").u32(7).padTo(32), 32,    "<Text>abc</Text> <Hex></Hex>\n"   },
      {Payload(),                              0,     "<Text></Text> <Hex></Hex>\n"      },
      {located().bytes("x"),                   33,    "<Text>x</Text> <Hex>78</Hex>\n"   },
      {located().text("ab"),                   35,    "<Text>ab</Text> <Hex></Hex>\n"    },
      {abAndTwo,                               36,    "<Text>ab</Text> <Hex>01</Hex>\n"  },
      {abAndTwo,                               34,    "<Text>ab</Text> <Hex>6162</Hex>\n"},
      {abAndTwo,                               65535, "<Text>ab</Text> <Hex>01F2</Hex>\n"},
      {located(),                              65535, "<Text></Text> <Hex></Hex>\n"      },
  };
  for (const Case& c : cases) {
    EXPECT_EQ(decode(recordOf(2005, 1, c.payload).structLength(c.structLength)).body(), c.body);
  }
}

TEST(SystemConfig, MakesTheWholeBodySafe) {
  const std::pair<const char*, const char*> cases[] = {
      {"a=b & 50%", "a: b \\& 50\\%"},
      {"a=b < c",   "a: b \\< c"    },
      {"<b>=</b>",  "<b>: </b>"     },
      {"<File>",    "\\<File\\>"    },
  };
  for (const auto& [text, safe] : cases) {
    const EventFields event = decode(recordOf(2000, 3, located().text(text)));
    EXPECT_EQ(event.summary(), safe);
    EXPECT_EQ(event.body(), std::string("<Text>") + safe + "</Text> " + location);
  }
  // This text closes the element that it is in, and the rest of the body is plain text.
  EXPECT_EQ(decode(recordOf(2000, 3, located().text("a</>="))).body(),
            "<Text>a</>: \\</Text\\> \\<File\\>ddlm.c\\</File\\> \\<Func\\>grant\\</Func\\> "
            "\\<Line\\>65000\\</Line\\> ");
  const Payload odd = Payload().u16(9).text("<c").field("=", 27).zeros(36).u32(5);
  const std::string memory = decode(recordOf(2019, 3, odd)).body();
  EXPECT_TRUE(
      memory.ends_with("<cpmClassOffset>\\[1\\], value \\[5\\]</cpmClassOffset> "
                       "<File>\\<c</File> <Func>: </Func> <Line>9</Line> "))
      << memory;
}

}  // namespace

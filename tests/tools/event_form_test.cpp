#include "forms/EventForm.h"

#include <Pegasus/Common/String.h>
#include <ProviderTraceServices.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "TraceLines.h"
#include "forms/Utf8.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace mpuevent::tool {
namespace {

using Pegasus::Char16;
using Pegasus::String;
using support::utf8;

String units(std::initializer_list<Pegasus::Uint16> values) {
  const std::vector<Char16> text(values.begin(), values.end());
  return {text.data(), static_cast<Pegasus::Uint32>(text.size())};
}

/// What is behind the facts of every event.
struct Rest {
  std::string payload;
  std::uint16_t structLength = 0;
  std::optional<std::string_view> file;
};

/// One event, found as the 8th of its file at offset 0x1A2B, with the Body given: elements of key
/// and value.
std::string written(EventForm& form, const std::vector<std::pair<String, String>>& elements,
                    const Rest& rest = {}) {
  auto builder = support::RecordBuilder().source(11).category(8).type(3).payload(rest.payload);
  std::string record = builder.str();
  record[144] = static_cast<char>(rest.structLength >> 8);
  record[145] = static_cast<char>(rest.structLength & 0xFF);
  const Pegasus::FieldRecorder fields;
  const auto event = support::decode(record);
  event->setSummary("sum");
  String body;
  for (const auto& [key, value] : elements) {
    if (body.size() != 0) body.append(" ");
    body.append(Pegasus::Quarn_Event::xmlizeString(utf8(key).c_str(), value));
  }
  event->setBody(body);
  const std::vector<unsigned char> bytes(record.begin(), record.end());
  TextBuffer text;
  form.write({rest.file, 7, 0x1A2B, bytes, "Quarn_Event", *event, &fields}, text);
  return std::string(text.view());
}

constexpr char kJsonFacts[] =
    R"({"index":7,"offset":6699,"decoder":"Quarn_Event","enclosure_serial":"ENC-0815-3307",)"
    R"("controller_serial":"CTL-0426-1189","controller_slot":1,"log_instance":3,)"
    R"("sequence_id":1042,"timestamp":86407,"source_code":11,"source":"MIP Local",)"
    R"("category_code":8,"category":"iSCSI","event_type_code":3,"event_type":"Error",)"
    R"("event_code":258,"event_id_version":5,"event_id":"258","summary":"sum",)";

TEST(JsonForm, WritesOneObjectALine) {
  constexpr char rest[] =
      R"(,"raw_event_type":3,"record_length":152,"struct_length":0,"payload":null,"file":null})";
  const struct {
    std::vector<std::pair<String, String>> elements;
    const char* json;
  } cases[] = {
      {{{"A", "1"}, {"", ""}},
       R"("body":"<A>1</A> <></>","fields":[{"key":"A","value":"1"},{"key":"","value":""}])"          },
      {{{"A", "</A> <B>9</B>"}, {"\u00C4", "\U0001F600\""}, {"C", "3"}},
       R"("body":"<A></A> <B>9</B></A> <Ä>😀\"</Ä> <C>3</C>","fields":[)"
       R"({"key":"A","value":"</A> <B>9</B>"},{"key":"Ä","value":"😀\""},{"key":"C","value":"3"}])"},
  };
  const auto form = makeJsonForm({});
  for (const auto& [elements, json] : cases) {
    SCOPED_TRACE(json);
    EXPECT_EQ(written(*form, elements), std::string(kJsonFacts) + json + rest + "\n");
  }
}

TEST(JsonForm, KeepsWhatTheDecoderDoesNotShow) {
  const struct {
    ShowPayload show;
    bool body;
    Rest rest;
    const char* json;
  } cases[] = {
      {ShowPayload::automatic,
       true,  {"\x0A\xB1", 2, "a\"\xC3\xA9"},
       R"("record_length":154,"struct_length":2,"payload":null,"file":"a\"é"})"     },
      {ShowPayload::automatic,
       false, {"\x0A\xB1", 2, "\xE9\x9B"},
       R"("record_length":154,"struct_length":2,"payload":"0AB1","file":"é\u009B"})"},
      {ShowPayload::automatic,
       true,  {"\x0A\xB1", 0x1203, {}},
       R"("record_length":154,"struct_length":4611,"payload":"0AB1","file":null})"   },
      {ShowPayload::always,
       true,  {"", 0, {}},
       R"("record_length":152,"struct_length":0,"payload":"","file":null})"          },
      {ShowPayload::never,
       false, {"\x0A", 9, {}},
       R"("record_length":153,"struct_length":9,"payload":null,"file":null})"        },
  };
  for (const auto& [show, body, rest, json] : cases) {
    const auto form = makeJsonForm({show});
    std::vector<std::pair<String, String>> elements;
    if (body) elements.emplace_back("A", "1");
    const std::string line = written(*form, elements, rest);
    EXPECT_TRUE(line.ends_with(std::string(json) + "\n")) << line;
  }
}

// Texts are copied in blocks: a character to escape at every place of texts of every length.
TEST(JsonForm, EscapesAtEveryPlace) {
  const auto form = makeJsonForm({ShowPayload::never});
  const std::pair<std::string, std::string> cases[] = {
      {"\"",       R"(\")"          },
      {"\\",       R"(\\)"          },
      {"\x1F\n",   R"(\u001F\u000A)"},
      {"\x7F",     R"(\u007F)"      },
      {"\u0080",   R"(\u0080)"      },
      {"\u009F\n", R"(\u009F\u000A)"},
      {"\u00A0",   "\u00A0"         },
      {"\u4E2D",   "\u4E2D"         },
  };
  for (const auto& [character, escaped] : cases) {
    for (std::size_t size = 0; size < 75; ++size) {
      for (std::size_t place = 0; place <= size; ++place) {
        const std::string before(place, 'b');
        const std::string after(size - place, 'a');
        const std::string text = before + character + after;
        const std::string json = before + escaped + after;
        const std::string line = written(*form, {
                                                    {("k" + text).c_str(), text.c_str()}
        });
        ASSERT_TRUE(line.starts_with(kJsonFacts + (R"("body":"<k)" + json + ">" + json + "</k") +
                                     json + R"(>","fields":[{"key":"k)" + json + R"(","value":")" +
                                     json + R"("}],"raw_event_type":3,)"))
            << line;
      }
    }
  }
}

TEST(Columns, AreTheSameInCsvAndJson) {
  const std::vector<std::pair<String, String>> elements = {
      {"A", "1,\"2\"\n"},
      {"B", "\x1b"     },
      {"A", ""         },
      {"A", "\u00C4"   }
  };
  const std::string columns = "fields.A,index,file,fields.B,fields.A[*],payload,fields.C[*],time";
  const Rest rest = {"\x0A\xB1", 2, {}};
  const auto csv = makeCsvForm({ShowPayload::always, columns});
  TextBuffer header;
  csv->begin(header);
  EXPECT_EQ(header.view(), columns + "\r\n");
  EXPECT_EQ(written(*csv, elements, rest),
            "\"1,\"\"2\"\"\n\",7,,\x1b,\"1,\"\"2\"\"\n; ; \u00C4\",0AB1,,\r\n");
  const auto shown = makeCsvForm({ShowPayload::always, "fields.B,fields.A", false, false, true});
  EXPECT_EQ(written(*shown, elements, rest), "\\x1B,\"1,\"\"2\"\"\\x0A\"\r\n");
  const auto json = makeJsonForm({ShowPayload::always, false, true, true, columns});
  EXPECT_EQ(written(*json, elements, rest),
            R"({"fields.A":"1,\"2\"\u000A","index":7,"file":null,"fields.B":"\u001B",)"
            R"("fields.A[*]":"1,\"2\"\u000A; ; Ä","payload":"0AB1","fields.C[*]":null,)"
            R"("time":null})"
            "\n");
}

constexpr char kTextFacts[] =
    "Index:             7\n"
    "Offset:            0x1a2b\n"
    "Decoder:           Quarn_Event\n"
    "Enclosure serial:  ENC-0815-3307\n"
    "Controller serial: CTL-0426-1189\n"
    "Controller slot:   1\n"
    "Log instance:      3\n"
    "Sequence id:       1042\n"
    "Timestamp:         86407\n"
    "Source:            MIP Local (11)\n"
    "Category:          iSCSI (8)\n"
    "Event type:        Error (3)\n"
    "Event code:        258\n"
    "Event id version:  5\n"
    "Event id:          258\n"
    "Summary:           sum\n";

TEST(TextForm, WritesALineForEachFactAndElement) {
  const auto form = makeTextForm(ShowPayload::automatic, false);
  EXPECT_EQ(written(*form, {}), std::string(kTextFacts) + "Body:\n");
  form->beginFile("a\x1b.cmap");
  const std::vector<std::pair<String, String>> elements = {
      {"Key",      "1"          },
      {"Long key", "2\x1b[31m\n"},
      {"K\x1b[1m", ""           }
  };
  EXPECT_EQ(written(*form, elements), std::string("\n==> a\\x1B.cmap <==\n") + kTextFacts +
                                          "Body:\n"
                                          "  Key:      1\n"
                                          "  Long key: 2\\x1B[31m\\x0A\n"
                                          "  K\\x1B[1m:\n");
}

TEST(TextForm, EndsEveryColourOnItsLine) {
  std::istringstream lines(written(*makeTextForm(ShowPayload::automatic, true),
                                   {
                                       {"Key", "1"}
  },
                                   {"payload", 7, {}}));
  int coloured = 0;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t last = line.rfind('\x1b');
    if (last == std::string::npos) continue;
    ++coloured;
    EXPECT_EQ(line.substr(last, 4), "\x1b[0m") << line;
    if (line.find("(3)") != std::string::npos) {
      EXPECT_NE(line.find("\x1b[1;31mError\x1b[0m (3)"), std::string::npos) << line;
    }
  }
  EXPECT_GT(coloured, 10);
}

TEST(TraceLines, AreSuppressedAgainAtTheEnd) {
  {
    const TraceLines lines;
    EXPECT_FALSE(Pegasus::ProviderTraceServices::ptsGetTraceSuppressForPid());
  }
  EXPECT_TRUE(Pegasus::ProviderTraceServices::ptsGetTraceSuppressForPid());
}

TEST(TextForm, DumpsThePayload) {
  const auto form = makeTextForm(ShowPayload::automatic, false);
  const Rest rest = {std::string("0123456789ABCDE\0\x7F\xE9~", 19), 20, {}};
  EXPECT_EQ(written(*form, {}, rest),
            std::string(kTextFacts) +
                "Body:\n"
                "Record length:     171\n"
                "Struct length:     20\n"
                "Payload:           19 bytes\n"
                "  0000  30 31 32 33 34 35 36 37  38 39 41 42 43 44 45 00  |0123456789ABCDE.|\n"
                "  0010  7F E9 7E                                          |..~|\n");
}

TEST(Utf8, IsValidWhateverTheUnits) {
  const struct {
    String text;
    std::string_view utf8;
  } cases[] = {
      {units({0x41, 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF}),
       "A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"                                            },
      {units({0xD83D, 0xDE00, 0x41}),
       "\xF0\x9F\x98\x80"
       "A"                                                                                        },
      {units({0xDBFF, 0xDFFF}),                         "\xF4\x8F\xBF\xBF"                        },
      {units({0xD83D}),                                 "\xEF\xBF\xBD"                            },
      {units({0xD83D, 0x41}),
       "\xEF\xBF\xBD"
       "A"                                                                                        },
      {units({0xDE00, 0xD83D, 0xD83D, 0xDE00}),         "\xEF\xBF\xBD\xEF\xBF\xBD\xF0\x9F\x98\x80"},
  };
  Utf8Text text;
  for (const auto& [units, utf8] : cases) {
    EXPECT_EQ(std::string_view(text.assign(units)), utf8);
    // Behind ASCII of every length, as that is copied in blocks.
    for (unsigned before = 0; before < 70; ++before) {
      const std::string ascii(before, 'x');
      EXPECT_EQ(std::string_view(text.assign(String(ascii.c_str()) + units + ascii.c_str())),
                ascii + std::string(utf8) + ascii);
    }
  }
}

// Copied in blocks as well.
TEST(Utf8, ShowsControlCharacters) {
  constexpr std::string_view text = "a\x1b\n\x7F\\ \xC2\x80\xC2\x9F\xC2\xA0\xC3\xA9\xC2";
  constexpr std::string_view visible = "a\\x1B\\x0A\\x7F\\ \\x80\\x9F\xC2\xA0\xC3\xA9\xC2";
  for (std::size_t before = 0; before < 70; ++before) {
    const std::string ascii(before, '~');
    TextBuffer shown;
    appendVisible(shown, std::string_view(ascii + std::string(text) + ascii));
    Utf8Text padded;
    // Without the broken character at the end, which a text of an event cannot have.
    const std::string valid = ascii + std::string(text.substr(0, text.size() - 1)) + ascii;
    appendVisible(shown, padded.assign(String(valid.c_str())));
    const std::string expected(visible);
    EXPECT_EQ(shown.view(),
              ascii + expected + ascii + ascii + expected.substr(0, expected.size() - 1) + ascii);
  }
}

}  // namespace
}  // namespace mpuevent::tool

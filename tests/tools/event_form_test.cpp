#include "EventForm.h"

#include <Pegasus/Common/String.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Utf8.h"
#include "support/DecodedEvent.h"
#include "support/RecordBuilder.h"

namespace mpuevent::tool {
namespace {

using Pegasus::Char16;
using Pegasus::String;

String units(std::initializer_list<Pegasus::Uint16> values) {
  const std::vector<Char16> text(values.begin(), values.end());
  return {text.data(), static_cast<Pegasus::Uint32>(text.size())};
}

/// One event, found as the 8th of its file at offset 0x1A2B, with the Body given.
std::string written(EventForm& form, const String& body) {
  const std::string record = support::RecordBuilder().source(11).category(8).type(3).str();
  const auto event = support::decode(record);
  event->setSummary("sum");
  event->setBody(body);
  const std::vector<unsigned char> bytes(record.begin(), record.end());
  std::string text;
  form.write({7, 0x1A2B, bytes, "Quarn_Event", *event}, text);
  return text;
}

constexpr char kJsonFacts[] =
    R"({"index":7,"offset":6699,"decoder":"Quarn_Event","enclosure_serial":"ENC-0815-3307",)"
    R"("controller_serial":"CTL-0426-1189","controller_slot":1,"log_instance":3,)"
    R"("sequence_id":1042,"timestamp":86407,"source_code":11,"source":"MIP Local",)"
    R"("category_code":8,"category":"iSCSI","event_type_code":3,"event_type":"Error",)"
    R"("event_code":258,"event_id_version":5,"event_id":"258","summary":"sum",)";

TEST(JsonForm, WritesOneObjectALine) {
  const struct {
    const char* body;
    const char* json;
  } cases[] = {
      {"",                                          R"("body":"","fields":[]})"              },
      {"no elements",                               R"("body":"no elements","fields":null})" },
      {"<A>1</A> <></>",
       R"("body":"<A>1</A> <></>","fields":[{"key":"A","value":"1"},{"key":"","value":""}]})"},
      {"<G><A>\\\"</A><H><B>2</B></H></G><C>3</C>",
       R"("body":"<G><A>\\\"</A><H><B>2</B></H></G><C>3</C>","fields":[{"key":"G","fields":[)"
       R"({"key":"A","value":"\\\""},{"key":"H","fields":[{"key":"B","value":"2"}]}]},)"
       R"({"key":"C","value":"3"}]})"                                                        },
  };
  const auto form = makeJsonForm();
  for (const auto& [body, json] : cases) {
    EXPECT_EQ(written(*form, body), std::string(kJsonFacts) + json + "\n") << body;
  }
}

// Texts are copied in blocks: a character to escape at every place of texts of every length.
TEST(JsonForm, EscapesAtEveryPlace) {
  const auto form = makeJsonForm();
  const std::pair<std::string, std::string> cases[] = {
      {"\"",   R"(\")"    },
      {"\\",   R"(\\)"    },
      {"\x1F", R"(\u001F)"},
      {"\n",   R"(\u000A)"},
      {"\x7F", "\x7F"     },
  };
  for (const auto& [character, escaped] : cases) {
    for (std::size_t size = 0; size < 75; ++size) {
      for (std::size_t place = 0; place <= size; ++place) {
        const std::string before(place, 'b');
        const std::string after(size - place, 'a');
        const std::string text = before + character + after;
        const std::string json = before + escaped + after;
        ASSERT_EQ(written(*form, ("<k" + text + ">" + text + "</k" + text + ">").c_str()),
                  kJsonFacts + (R"("body":"<k)" + json + ">" + json + "</k" + json) +
                      R"(>","fields":[{"key":"k)" + json + R"(","value":")" + json + "\"}]}\n");
      }
    }
  }
}

TEST(TextForm, WritesALineForEachFactAndElement) {
  constexpr char facts[] =
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
  const struct {
    const char* body;
    const char* text;
  } cases[] = {
      {"",                                                          "Body:\n"                             },
      {"no\nelements",                                              "Body:              no\\x0Aelements\n"},
      {"<Key>1</Key><G><Long key>2\x1b[31m</Long key></G> <K></K>",
       "Body:\n"
       "  Key:        1\n"
       "  G:\n"
       "    Long key: 2\\x1B[31m\n"
       "  K:\n"                                                                                           },
  };
  for (const auto& [body, text] : cases) {
    const auto form = makeTextForm(false);
    EXPECT_EQ(written(*form, body), std::string(facts) + text) << body;
    EXPECT_EQ(written(*form, body), std::string("\n").append(facts) + text) << body;
  }
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
    EXPECT_EQ(text.assign(units), utf8);
    // Behind ASCII of every length, as that is copied in blocks.
    for (unsigned before = 0; before < 70; ++before) {
      const std::string ascii(before, 'x');
      EXPECT_EQ(text.assign(String(ascii.c_str()) + units + ascii.c_str()),
                ascii + std::string(utf8) + ascii);
    }
  }
}

TEST(Utf8, ShowsControlCharacters) {
  std::string shown;
  appendVisible(shown, "a\x1b\n\x7F\\ \xC2\x80\xC2\x9F\xC2\xA0\xC3\xA9\xC2");
  EXPECT_EQ(shown, "a\\x1B\\x0A\\x7F\\ \\x80\\x9F\xC2\xA0\xC3\xA9\xC2");
}

}  // namespace
}  // namespace mpuevent::tool

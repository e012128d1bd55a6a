#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/NumberedKey.h"
#include "event/Tables.h"

namespace {

using namespace mpuevent;

std::string shown(Format format, std::uint64_t value) {
  BodyWriter body(Separator::none, 1);
  body.number(format, value);
  return std::string(body.view());
}

TEST(Formats, ReadLikeThePrintfFormatsThatTheyAreNamedAfter) {
  struct Case {
    Format format;
    std::uint64_t value;
    const char* text;
  };
  const Case cases[] = {
      {Format::dec,          0xFFFFFFFE,         "-2"                        },
      {Format::dec,          0x7FFFFFFF,         "2147483647"                },
      {Format::udec,         0xFFFFFFFE,         "4294967294"                },
      {Format::udec,         0xFFFFFFFFFFFFFFFF, "18446744073709551615"      },
      {Format::hexLower,     0,                  "0x0"                       },
      {Format::hexLower,     0xA0B,              "0xa0b"                     },
      {Format::hexUpper8,    0xA0B,              "0x00000A0B"                },
      {Format::hexLower8,    0xA0B,              "0x00000a0b"                },
      {Format::hexUpper2,    0xA,                "0x0A"                      },
      {Format::hexLower6,    0xA0B,              "0x000a0b"                  },
      {Format::hexLower4,    0xA0,               "0x00a0"                    },
      {Format::hexLower4,    0xFA0B1,            "0xfa0b1"                   },
      {Format::hexLower2,    0xA,                "0x0a"                      },
      {Format::bareHexLower, 0xA0B,              "a0b"                       },
      {Format::markedHex2,   0xA,                "0A (hex)"                  },
      {Format::markedHex8,   0xA0B,              "00000A0B (hex)"            },
      {Format::markedHex16,  0xA0B,              "0000000000000A0B (hex)"    },
      {Format::markedPair,   0xA0B0000000C,      "(00000A0B, 0000000C) (hex)"},
      {Format::trueFalse,    0,                  "FALSE"                     },
      {Format::trueFalse,    256,                "TRUE"                      },
      {Format::pointer,      0,                  "(nil)"                     },
      {Format::pointer,      0xA0B,              "0xa0b"                     },
      {Format::pointer0x,    0,                  "0x(nil)"                   },
      {Format::pointer0x,    0xA0B,              "0x0xa0b"                   },
      {Format::seconds,      0xFFFFFFFF,         "-1 seconds"                },
  };
  for (const Case& c : cases) EXPECT_EQ(shown(c.format, c.value), c.text);
}

TEST(Fields, ShowEachWidthIfItsLastByteIsHeld) {
  struct Case {
    Width width;
    Format format;
    const char* text;
  };
  const Case cases[] = {
      {Width::u8,              Format::hexLower,  "0xa2"                                 },
      {Width::u16,             Format::hexLower,  "0xa2a3"                               },
      {Width::u24,             Format::hexLower,  "0xa3a4a5"                             },
      {Width::u32,             Format::hexLower,  "0xa2a3a4a5"                           },
      {Width::u48,             Format::hexLower,  "0xa2a3a4a5a6a7"                       },
      {Width::u64,             Format::hexLower,  "0xa2a3a4a5a6a7a8a9"                   },
      {Width::wordPair,        Format::hexUpper8, "0xA2A3A4A5:A6A7A8A9"                  },
      {Width::wordPairSwapped, Format::hexUpper8, "0xA6A7A8A9:A2A3A4A5"                  },
      {Width::wordPairSwapped, Format::hexLower8, "0xa6a7a8a9  0xa2a3a4a5"               },
      {Width::wordQuad,        Format::hexUpper8, "0xA2A3A4A5:A6A7A8A9:AAABACAD:AEAFB0B1"},
  };
  std::string bytes;
  for (int byte = 0xA1; byte <= 0xB1; ++byte) bytes += static_cast<char>(byte);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const Field field = {"Key", 1, c.width, c.format};
    const std::size_t end = 1 + byteCount(c.width);
    BodyWriter whole(Separator::none);
    writeField(whole, RecordView(bytes.data(), end), field);
    EXPECT_EQ(whole.view(), "<Key>" + std::string(c.text) + "</Key>");
    BodyWriter cut(Separator::none);
    writeField(cut, RecordView(bytes.data(), end - 1), field);
    EXPECT_EQ(cut.view(), "");
  }
}

TEST(BodyWriter, GrowsCutsAndSeparates) {
  BodyWriter body(Separator::blank, 1);
  std::string expected;
  for (int i = 0; i < 300; ++i) {
    const std::string value(static_cast<std::size_t>(i), 'v');
    body.element("k", value);
    expected += "<k>" + value + "</k> ";
  }
  EXPECT_EQ(body.view(), expected);
  body.cut(9);
  body.openGroup("g");
  body.hexBytes("\x01\xAB");
  body.closeGroup("g");
  EXPECT_EQ(body.view(), "<k></k> <<g>01AB</g>");
}

TEST(NumberedKeys, CutTheirNameBehind48Characters) {
  const std::string name(60, 'n');
  NumberedKey key(name);
  EXPECT_EQ(key(4294967295), name.substr(0, 48) + "4294967295");
  EXPECT_EQ(key(0xA0B, 16), name.substr(0, 48) + "a0b");
  EXPECT_EQ(NumberedKey("GPR")(7), "GPR7");
}

TEST(Tables, FindRowsByTheirNumber) {
  static constexpr CodeText rows[] = {
      {2,          "two" },
      {5,          "five"},
      {0xFFFFFFFF, "last"}
  };
  EXPECT_EQ(textOf(rows, 2), "two");
  EXPECT_EQ(textOf(rows, 5), "five");
  EXPECT_EQ(textOf(rows, 0xFFFFFFFF), "last");
  for (const std::uint32_t gap : {0U, 1U, 3U, 6U, 0xFFFFFFFEU}) EXPECT_EQ(textOf(rows, gap), "");
  static constexpr std::string_view texts[] = {"zero", "one"};
  EXPECT_EQ(textAt(texts, 1), "one");
  EXPECT_EQ(textAt(texts, 2), "");
  constexpr CodeText twice[] = {
      {1, "a"},
      {1, "b"}
  };
  EXPECT_TRUE(rising(rows, &CodeText::code));
  EXPECT_FALSE(rising(twice, &CodeText::code));
}

}  // namespace

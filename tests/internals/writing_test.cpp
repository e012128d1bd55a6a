#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/Codes.h"
#include "event/Fields.h"
#include "event/Lists.h"
#include "event/NumberedKey.h"
#include "event/Tables.h"

namespace {

using namespace mpuevent;

std::string shown(Format format, std::uint64_t value) {
  SizedWriter<1> body(Separator::none);
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
      {Format::yesNo,        0,                  "No"                        },
      {Format::yesNo,        256,                "Yes"                       },
      {Format::pointer,      0,                  "(nil)"                     },
      {Format::pointer,      0xA0B,              "0xa0b"                     },
      {Format::pointer0x,    0,                  "0x(nil)"                   },
      {Format::pointer0x,    0xA0B,              "0x0xa0b"                   },
      {Format::seconds,      0xFFFFFFFF,         "-1 seconds"                },
  };
  for (const Case& c : cases) EXPECT_EQ(shown(c.format, c.value), c.text);
}

TEST(Numbers, AreDecimalAtEachLength) {
  for (std::uint64_t start = 1; start < 100'000'000'000; start *= 10) {
    for (const std::uint64_t value : {start - 1, start, start + start / 7, 5 * start - 1}) {
      EXPECT_EQ(shown(Format::udec, value), std::to_string(value));
      const auto low = static_cast<std::int32_t>(value);
      EXPECT_EQ(shown(Format::dec, value), std::to_string(low));
      EXPECT_EQ(shown(Format::dec, -value), std::to_string(static_cast<std::int32_t>(-value)));
    }
  }
}

TEST(Fields, ShowEachWidthIfItsLastByteIsHeld) {
  static constexpr Field rows[] = {
      {"Key",                                      1, Width::u8,              Format::hexLower },
      {"Key",                                      1, Width::u16,             Format::hexLower },
      {"Key",                                      1, Width::u24,             Format::hexLower },
      {"Key",                                      1, Width::u32,             Format::hexLower },
      {"Key",                                      1, Width::u48,             Format::hexLower },
      {"Key",                                      1, Width::u64,             Format::hexLower },
      {"Key",                                      1, Width::wordPair,        Format::hexUpper8},
      {"Key",                                      1, Width::wordPairSwapped, Format::hexUpper8},
      {"Key",                                      1, Width::wordPairSwapped, Format::hexLower8},
      {"A_key_of_more_than_thirty-two_characters", 1, Width::wordQuad,        Format::hexUpper8},
  };
  const char* const texts[] = {
      "0xa2",
      "0xa2a3",
      "0xa3a4a5",
      "0xa2a3a4a5",
      "0xa2a3a4a5a6a7",
      "0xa2a3a4a5a6a7a8a9",
      "0xA2A3A4A5:A6A7A8A9",
      "0xA6A7A8A9:A2A3A4A5",
      "0xa6a7a8a9  0xa2a3a4a5",
      "0xA2A3A4A5:A6A7A8A9:AAABACAD:AEAFB0B1",
  };
  std::string bytes;
  for (int byte = 0xA1; byte <= 0xB9; ++byte) bytes += static_cast<char>(byte);
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    SCOPED_TRACE(texts[i]);
    const std::string key(rows[i].key);
    // At the end of what is held, one byte short of it, and with more behind.
    for (const std::size_t held : {rows[i].end(), rows[i].end() - 1, bytes.size()}) {
      const std::string exact(bytes, 0, held);
      const RecordView view(exact.data(), held);
      BodyBuffer one(Separator::none);
      writeField(one, view, rows[i]);
      EXPECT_EQ(one.view(),
                held < rows[i].end() ? "" : "<" + key + ">" + texts[i] + "</" + key + ">");
      BodyBuffer packedOne(Separator::none);
      writeFields(packedOne, view, Fields(packed<rows>).subspan(i, 1));
      EXPECT_EQ(packedOne.view(), one.view());
    }
  }
}

TEST(Codes, ShowTheirTextOrTheFallback) {
  static constexpr CodeText texts[] = {
      {2, "two"}
  };
  static constexpr Field field = {"Key", 1, Width::u16, Format::dec};
  const auto shownAs = [](std::string_view bytes, const Fallback& fallback) {
    BodyBuffer body(Separator::none);
    writeCode(body, RecordView(bytes.data(), bytes.size()), field, packed<texts>, fallback);
    return std::string(body.view());
  };
  const std::string_view known("\x00\x00\x02", 3);
  const std::string_view unknown("\x00\xA0\x02", 3);
  EXPECT_EQ(shownAs(known, {"Code ", "!"}), "<Key>two</Key>");
  EXPECT_EQ(shownAs(unknown, {}), "<Key>40962</Key>");
  EXPECT_EQ(shownAs(unknown, {"Code ", "!"}), "<Key>Code 40962!</Key>");
  EXPECT_EQ(shownAs(unknown, toWord("None")), "<Key>None</Key>");
  EXPECT_EQ(shownAs(known.substr(0, 2), {}), "");
  EXPECT_EQ(textOf(packed<texts>, 0x100000002), "");
}

TEST(Lists, EndWithTheBytesHeldWhateverTheyClaim) {
  static constexpr Field rows[] = {
      {"A", 0, Width::u8,  Format::dec},
      {"B", 1, Width::u16, Format::dec},
  };
  static constexpr Layout entry = {4, packed<rows>};
  const std::string bytes("\x09\x01\x00\x02\xFF\x03\x00\x04\xFF\x05", 10);
  const RecordView view(bytes.data(), bytes.size());
  struct Case {
    std::size_t start;
    std::uint64_t count;
    std::size_t end;
    const char* text;
  };
  const Case cases[] = {
      {1,                            0,                  1,  ""                                        },
      {1,                            1,                  5,  "<A>1</A><B>2</B>"                        },
      {1,                            2,                  9,  "<A>1</A><B>2</B><A>3</A><B>4</B>"        },
      {1,                            3,                  10, "<A>1</A><B>2</B><A>3</A><B>4</B><A>5</A>"},
      {1,                            0x40000000,         10, "<A>1</A><B>2</B><A>3</A><B>4</B><A>5</A>"}, // wraps 32 bits
      {1,                            0x4000000000000000, 10, "<A>1</A><B>2</B><A>3</A><B>4</B><A>5</A>"}, // and 64
      {10,                           1,                  10, ""                                        },
      {static_cast<std::size_t>(-2), 7,                  10, ""                                        },
  };
  for (const Case& c : cases) {
    BodyBuffer body(Separator::none);
    EXPECT_EQ(writeList(body, view, c.start, c.count, entry), c.end) << c.start << ' ' << c.count;
    EXPECT_EQ(body.view(), c.text) << c.start << ' ' << c.count;
  }
}

TEST(BodyWriter, GrowsCutsAndSeparates) {
  SizedWriter<1> body;
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

TEST(NumberedKeys, CutTheirNameBehind38Characters) {
  const std::string name(60, 'n');
  NumberedKey key(name);
  EXPECT_EQ(key(4294967295), name.substr(0, 38) + "4294967295");
  EXPECT_EQ(key(0xA0B, Format::bareHexLower), name.substr(0, 38) + "a0b");
  EXPECT_EQ(NumberedKey("GPR")(7), "GPR7");
}

TEST(Tables, FindRowsByTheirNumber) {
  static constexpr CodeText rows[] = {
      {2,          "two" },
      {5,          "five"},
      {0xFFFFFFFF, "last"}
  };
  EXPECT_EQ(textOf(packed<rows>, 2), "two");
  EXPECT_EQ(textOf(packed<rows>, 5), "five");
  EXPECT_EQ(textOf(packed<rows>, 0xFFFFFFFF), "last");
  for (const std::uint32_t gap : {0U, 1U, 3U, 6U, 0xFFFFFFFEU})
    EXPECT_EQ(textOf(packed<rows>, gap), "");
  constexpr CodeText twice[] = {
      {1, "a"},
      {1, "b"}
  };
  EXPECT_TRUE(rising(rows, &CodeText::code));
  EXPECT_FALSE(rising(twice, &CodeText::code));
}

}  // namespace

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/ProviderException.h>
#include <gtest/gtest.h>

#include <new>
#include <sstream>
#include <string>

namespace {

using namespace Pegasus;
using namespace std::string_literals;

String fromBytes(const std::string& bytes) {
  return String(bytes.data(), static_cast<Uint32>(bytes.size()));
}

String fromUnits(const std::u16string& units) {
  String text;
  for (const char16_t unit : units) text.append(Char16(static_cast<Uint16>(unit)));
  return text;
}

std::u16string unitsOf(const String& text) {
  std::u16string units;
  for (Uint32 i = 0; i < text.size(); ++i) units += static_cast<char16_t>(Uint16(text[i]));
  EXPECT_EQ(Uint16(text.getChar16Data()[text.size()]), 0);
  return units;
}

std::string utf8Of(const String& text) { return std::string(text.getCString()); }

/// The message of the exception that the call ends with; it is of the plain class or one derived.
template <class Call>
std::string complaint(Call call) {
  try {
    call();
  } catch (const Exception& exception) {
    return utf8Of(exception.getMessage());
  }
  return "none";
}

TEST(PegasusString, ReadsUtf8) {
  const struct {
    std::string bytes;
    std::u16string units;
  } cases[] = {
      {"",                                                 u""                              },
      {"\x01\x1F\x7F",                                     u"\x01\x1F\x7F"                  },
      {"a\0b"s,                                            u"a\0b"s                         },
      {"\xC2\x80\xDF\xBF",                                 u"\u0080\u07FF"                  },
      {"\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBC",             u"\u0800\u20AC\uFFFC"            },
      {"\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBD", u"\U00010000\U0001F600\U0010FFFD"},
      {"\xEF\xBB\xBF"
       "a",                                         u"\uFEFFa"                       },
      {"\xEF\xBF\xBE\xEF\xBF\xBF\xED\xA0\x80",             u"\uFFFD\uFFFD\uFFFD"            },
  };
  for (const auto& test : cases) {
    EXPECT_EQ(unitsOf(fromBytes(test.bytes)), test.units) << testing::PrintToString(test.bytes);
  }
}

TEST(PegasusString, TextSurvivesWhereverTheNonAsciiStands) {
  for (std::size_t before = 0; before < 40; ++before) {
    const std::string x(before, 'x');
    const std::string bytes = x + "\xC2\x80:0123456789abcdefgh\xF0\x9F\x98\x80-end";
    const String text = fromBytes(bytes);
    EXPECT_EQ(unitsOf(text),
              std::u16string(before, u'x') + u"\x80:0123456789abcdefgh\U0001F600-end");
    EXPECT_EQ(utf8Of(text), bytes);
    EXPECT_TRUE(fromUnits(unitsOf(text)) == text);
  }
}

TEST(PegasusString, RefusesOtherBytes) {
  const std::string fifty = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN";
  const struct {
    std::string bytes;
    std::string complaint;  // index, and what follows the fixed words
  } cases[] = {
      {"ab\x80",                          "2:ab 0x80"             },
      {"caf\xE9",                         "3:caf 0xE9"            },
      {"\xC3\x41",                        "0: 0xC3 0x41"          },
      {"\xF0\x9F\x98\x41",                "0: 0xF0 0x9F 0x98 0x41"},
      {"\xE0\x9F\xBF",                    "0: 0xE0 0x9F 0xBF"     },
      {"\xF0\x8F\xBF\xBF",                "0: 0xF0 0x8F 0xBF 0xBF"},
      {"\xF4\x90\x80\x80",                "0: 0xF4 0x90 0x80 0x80"},
      {fifty + "\x9B-and-so-on-for-long",
       "50:abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMN 0x9B 0x2D 0x61 0x6E 0x64 0x2D 0x73 0x6F 0x2D "
       "0x6F 0x6E"                                                },
  };
  for (const auto& test : cases) {
    const std::size_t colon = test.complaint.find(':');
    const std::string expected =
        "The byte sequence starting at index " + test.complaint.substr(0, colon) +
        " is not valid UTF-8 encoding: " + test.complaint.substr(colon + 1);
    EXPECT_EQ(complaint([&] { fromBytes(test.bytes); }), expected);
  }

  String kept = "kept";
  EXPECT_THROW(kept.append("\xFF"), Exception);
  EXPECT_THROW(kept = "\xFF", Exception);
  EXPECT_EQ(utf8Of(kept), "kept");
}

TEST(PegasusString, WritesLatin1ToStreamsAndUtf8ToCStrings) {
  const struct {
    std::u16string units;
    std::string streamed;
    std::string utf8;
  } cases[] = {
      {u"A\x7F",              "A\x7F",                 "A\x7F"                           },
      {u"\u0100\u20AC\uFFFD", "\\x0100\\x20AC\\xFFFD", "\xC4\x80\xE2\x82\xAC\xEF\xBF\xBD"},
      {u"\U0001F600",         "\\xD83D\\xDE00",        "\xF0\x9F\x98\x80"                },
      {u"a\0b"s,              "a\\x0000b",             "a"                               },
      {u"ab\xD83D"s,          "ab\\xD83D",             "ab"                              },
      {u"\xD83D-\xDE00"s,     "\\xD83D-\\xDE00",       "\xED\xA0\xBD-\xED\xB8\x80"       },
  };
  for (const auto& test : cases) {
    const String text = fromUnits(test.units);
    std::ostringstream stream;
    stream << text;
    EXPECT_EQ(stream.str(), test.streamed);
    EXPECT_EQ(utf8Of(text), test.utf8);
  }
}

constexpr const char* noBytes = nullptr;

TEST(PegasusString, RefusesNullPointersAndIndexesPastTheEnd) {
  const struct {
    void (*misuse)(String&);
    std::string message;
  } cases[] = {
      {[](String&) { String made(noBytes, 0); },                  "null pointer"       },
      {[](String& text) { text.append(noBytes); },                "null pointer"       },
      {[](String& text) { text[4] = Char16('x'); },               "index out of bounds"},
      {[](String& text) { static_cast<const String&>(text)[4]; }, "index out of bounds"},
      {[](String& text) { text.remove(2, 2); },                   "index out of bounds"},
      {[](String& text) { String made(text, 4); },                "index out of bounds"},
  };
  String text = "abc";
  for (const auto& test : cases) {
    EXPECT_EQ(complaint([&] { test.misuse(text); }), test.message);
  }
  EXPECT_EQ(Uint16(text[3]), 0);
  EXPECT_THROW(text.reserveCapacity(0x40000000), std::bad_alloc);
  EXPECT_EQ(utf8Of(text), "abc");
}

TEST(PegasusString, ChangingOneCopyLeavesTheOther) {
  const struct {
    void (*change)(String&);
    std::string result;
  } cases[] = {
      {[](String& text) { text[1] = Char16('-'); },                         "A-cDef"      },
      {[](String& text) { text.append('x'); },                              "AbcDefx"     },
      {[](String& text) { text.append(String("123").getChar16Data(), 2); }, "AbcDef12"    },
      {[](String& text) { text.appendPrintf("<%s:%d>", "k", -7); },         "AbcDef<k:-7>"},
      {[](String& text) { text.assign("12345", 3); },                       "123"         },
      {[](String& text) { text = text + text; },                            "AbcDefAbcDef"},
      {[](String& text) { text.clear(); },                                  ""            },
      {[](String& text) { text.remove(1, 2); },                             "ADef"        },
      {[](String& text) { text.toLower(); },                                "abcdef"      },
  };
  for (const auto& test : cases) {
    String text = "AbcDef";
    const String copy = text;
    test.change(text);
    EXPECT_EQ(utf8Of(text), test.result);
    EXPECT_EQ(utf8Of(copy), "AbcDef");
  }
}

TEST(PegasusString, SearchesAndCuts) {
  const String text = "one two one";
  EXPECT_EQ(text.find(1, Char16('o')), 6U);
  EXPECT_EQ(text.reverseFind(Char16('o')), 8U);
  EXPECT_EQ(text.find("two"), 4U);
  EXPECT_EQ(text.find("ones"), PEG_NOT_FOUND);
  EXPECT_EQ(text.find(""), PEG_NOT_FOUND);
  EXPECT_EQ(utf8Of(text.subString(4, 3)), "two");
  EXPECT_EQ(utf8Of(text.subString(8, 99)), "one");
  EXPECT_EQ(utf8Of(String(text, 5)), "one t");
}

TEST(PegasusString, Compares) {
  EXPECT_TRUE("abc" == String("abc") && String("abc") != "abd" && String("abc") != "ab");
  EXPECT_TRUE(String("ab") < "abc" && String("b") > "abc" && String("ab") <= "ab");
  EXPECT_GT(String::compare(fromBytes("\xEF\xBF\xBC"), "z"), 0);
  EXPECT_EQ(String::compare("abcX", "abcY", 3), 0);
  EXPECT_EQ(String::compareNoCase("aBZ", "AbZ"), 0);
  EXPECT_FALSE(String::equalNoCase("@", "`") || String::equalNoCase("[", "{"));
  // The one stops at a NUL, the other does not.
  EXPECT_EQ(String::compare(fromBytes("a\0b"s), fromBytes("a\0c"s)), 0);
  EXPECT_FALSE(fromBytes("a\0b"s) == fromBytes("a\0c"s));
}

TEST(PegasusException, CarriesTextAndCode) {
  const String text = fromBytes("why\0not"s);
  try {
    throw CIMOperationFailedException(text);
  } catch (const CIMException& exception) {
    EXPECT_EQ(exception.getCode(), CIM_ERR_FAILED);
    EXPECT_TRUE(exception.getMessage() == text);
  }
  EXPECT_STREQ(cimStatusCodeToString(CIM_ERR_METHOD_NOT_FOUND), "CIM_ERR_METHOD_NOT_FOUND");
}

}  // namespace

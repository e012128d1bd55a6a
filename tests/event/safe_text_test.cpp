#include <MPUEvent/Quarn_Event.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "support/DecodedEvent.h"
#include "support/ExpectedText.h"

namespace {

using mpuevent::support::utf8;
using Pegasus::Quarn_Event;

std::string safe(const std::string& text) {
  return utf8(Quarn_Event::makeSafeString(text.data(), static_cast<int>(text.size())));
}

TEST(SafeText, EscapesTextAndKeepsElements) {
  struct Case {
    std::string text;
    std::string expected;
  };
  const Case cases[] = {
      {"",                  ""                         },
      {"a=b",               "a: b"                     },
      {"50%",               "50\\%"                    },
      {"a\rb\\c&d>e\x01",   "a\\\rb\\\\c\\&d\\>e\\\x01"},
      {"\xC3\xA9",          "\\\xC3\x83\\\xC2\xA9"     }, // each byte by itself
      {"<",                 "\\<"                      },
      {"<K>v</>!",          "<K>v</>\\!"               },
      {"<K>v</K",           "\\<K\\>v\\</K"            }, // the closing tag needs one character more
      {"<K>v</K?=",         "<K>v</K?: "               }, // which may be any character
      {"<K>v</Kx>=",        "<K>v</Kx\\>: "            }, // so this one ends at the x
      {"<K>v</",            "\\<K\\>v\\</"             },
      {"<>a>b</>a>!",       "<>a>b</>a\\>\\!"          }, // an empty tag goes on to the next ">"
      {"<a><b>1&2</b></a>", "<a><b>1\\&2</b></a>"      },
      {"<a><a>&</a></a>",   "<a>\\<a\\>\\&</a>\\</a\\>"},
      {"<a><b>&</a>",       "<a>\\<b\\>\\&</a>"        },
      {"A<B>1</B> <C>2",    "A<B>1</B> \\<C\\>2"       },
  };
  for (const Case& c : cases) {
    EXPECT_EQ(safe(c.text), c.text.empty() ? "" : c.expected) << c.text;
    EXPECT_EQ(utf8(Quarn_Event::makeSafeString(c.text.c_str(), 0)), c.expected) << c.text;
  }
  EXPECT_EQ(safe(std::string("a\0b", 3)), std::string("a\\\0b", 4));
  EXPECT_EQ(utf8(Quarn_Event::makeSafeString("abc", -1)), "");
  EXPECT_EQ(utf8(Quarn_Event::makeSafeString(nullptr, 0)), "");
}

TEST(SafeText, FollowsTheRuleOnTangledTags) {
  std::mt19937 random(20260);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  const std::string alphabets[] = {"<>/ab", "<>/a", "<</>ab=&", "<>/abcdefghijkl"};
  for (int i = 0; i < 60000; ++i) {
    const std::string& alphabet = alphabets[below(std::size(alphabets))];
    std::string text;
    for (std::size_t left = below(48) + 1; left > 0; --left) {
      const std::string name(1, alphabet[below(alphabet.size())]);
      const std::string pieces[] = {"</", "<" + name + ">", "</" + name + ">"};
      const std::size_t piece = below(12);
      text += piece < std::size(pieces) ? pieces[piece] : name;
    }
    ASSERT_EQ(safe(text),
              utf8(Pegasus::String(mpuevent::support::expectedSafeString(text).c_str())))
        << text;
  }
}

// Many open names that begin alike and closing tags that nearly fit: places are then looked up in
// a tree of the names. Names hold "</", repeat themselves, at length too, and stand at the very
// end.
TEST(SafeText, FollowsTheRuleWhereNamesAreLookedUp) {
  std::mt19937 random(20261);
  const auto below = [&random](std::size_t limit) { return random() % limit; };
  for (int i = 0; i < 2000; ++i) {
    std::string knot = "a</a";
    std::string part = knot;
    while (below(i % 2 == 0 ? 4 : 100) != 0) {
      knot += i % 3 == 0 ? "</a" : "</a</ab";
      if (below(4) == 0) part = knot;
    }
    std::vector<std::string> names = {knot + knot, part + "zz"};
    for (int count = 0; count < 40; ++count) {
      std::string& name = names.emplace_back("a");
      for (std::size_t left = below(3) + 1; left > 0; --left) name += "ab/<"[below(4)];
    }
    std::shuffle(names.begin(), names.end(), random);
    std::string text;
    for (const std::string& name : names) text += "<" + name + ">";
    for (int count = 0; count < 60; ++count) text += "</a!";
    for (int count = 0; count < 12; ++count) {
      const std::string& name = names[below(names.size())];
      const std::string pieces[] = {"</" + name, "</" + name + ">", "</a", "a", "<" + name + ">",
                                    "</" + knot, "</" + knot + "zz"};
      text += pieces[below(std::size(pieces))];
    }
    ASSERT_EQ(safe(text), mpuevent::support::expectedSafeString(text)) << text;
  }
}

// Names that begin at each closing tag of a long one, and that one again and again: what takes a
// tree of the names too long is left to an index of all places.
TEST(SafeText, FindsTheEndBehindTheWorstNames) {
  std::mt19937 random(20262);
  std::string knot;
  for (int i = 0; i < 300; ++i) knot += std::string("</") + "abcd"[random() % 4];
  std::string text;
  for (std::size_t at = 2; at < knot.size(); at += 3) text += "<" + knot.substr(at) + "!>";
  for (int i = 0; i < 300; ++i) text += knot + "<q>";
  std::string expected;
  for (const char character : text) {
    if (character == '<' || character == '>' || character == '!') expected += '\\';
    expected += character;
  }
  EXPECT_TRUE(safe("<e>" + text + "</e>") == "<e>" + expected + "</e>");
}

TEST(SafeText, NestsAsDeepAsTheTextIsLong) {
  // Distinct names, so that each element holds all that follow; then the same left open.
  std::string opening;
  std::string closing;
  for (int i = 0; i < 4000; ++i) {
    const std::string name = std::to_string(i + 10000);
    opening += "<" + name + ">";
    closing.insert(0, "</" + name + ">");
  }
  EXPECT_EQ(safe(opening + "&" + closing), opening + "\\&" + closing);
  EXPECT_EQ(safe(opening + "&"), mpuevent::support::expectedSafeString(opening + "&"));
  const std::string inner = opening + "=" + closing.substr(0, closing.size() / 2);
  EXPECT_EQ(safe("<all>" + inner + "</all>"),
            "<all>" + mpuevent::support::expectedSafeString(inner) + "</all>");
}

TEST(Hex, DumpsBytes) {
  const char bytes[] = {0, static_cast<char>(0xAB), 0x7F};
  char digits[8] = "zzzzzzz";
  EXPECT_EQ(Quarn_Event::hexified(digits, bytes, 3), 6);
  EXPECT_STREQ(digits, "00AB7F");
  EXPECT_EQ(digits[7], '\0');
  EXPECT_EQ(Quarn_Event::hexified(digits, bytes, -5), 0);
  digits[0] = '~';
  EXPECT_EQ(Quarn_Event::hexified(digits, nullptr, 3), 0);
  EXPECT_EQ(digits[0], '\0');
  EXPECT_EQ(utf8(Quarn_Event::hexifiedString(nullptr, 3)), "");
  EXPECT_EQ(std::string(digits, 3), std::string("\0"
                                                "0A",
                                                3));
  EXPECT_EQ(utf8(Quarn_Event::hexifiedString(bytes, 3)), "00AB7F");
  EXPECT_EQ(utf8(Quarn_Event::hexifiedString(bytes, 0)), "");
}

TEST(Xmlize, WrapsWithoutEscaping) {
  EXPECT_EQ(utf8(Quarn_Event::xmlize("K", "a<b")), "<K>a<b</K>");
  EXPECT_EQ(utf8(Quarn_Event::xmlize(nullptr, nullptr)), "<></>");
  EXPECT_EQ(utf8(Quarn_Event::xmlize("K\xE9", "\xC3\xA9")),
            "<K\xC3\xA9>\xC3\x83\xC2\xA9</K\xC3\xA9>");
  EXPECT_EQ(utf8(Quarn_Event::xmlizeString("Key", "v&")), "<Key>v&</Key>");
}

TEST(SafeKeyname, CompactsInPlace) {
  struct Case {
    std::string text;  // and the bytes behind it
    int length;
    std::string expected;
  };
  const auto bytes = [](const char* text, std::size_t size) { return std::string(text, size); };
  const Case cases[] = {
      {bytes("Slot ID\0",  8), 0,  bytes("Slot_ID\0", 8)},
      {bytes("a-b\0",      4), 0,  bytes("abb\0",     4)},
      {bytes("a-b\0",      4), 3,  bytes("ab\0\0",    4)},
      {bytes("a-bc",       4), 3,  bytes("ab\0c",     4)},
      {bytes("abcX",       4), 3,  bytes("abcX",      4)}, // nothing dropped, no NUL
      {bytes("a\0b\tc\nZ", 7), 6,  bytes("ab_c_\0Z",  7)},
      {bytes("\x80_9z!",   5), 5,  bytes("_9z\0!",    5)},
      {bytes("a-b\0",      4), -1, bytes("a-b\0",     4)},
  };
  for (const Case& c : cases) {
    std::string text = c.text;
    Quarn_Event::makeSafeKeyname(text.data(), c.length);
    EXPECT_EQ(text, c.expected) << c.text << " " << c.length;
  }
}

}  // namespace

#include <MPUEvent/QuarnEvent.h>
#include <gtest/gtest.h>

#include <string>

#include "support/DecodedEvent.h"

namespace {

using mpuevent::support::utf8;
using Pegasus::QuarnEvent;

char stringFormat[] = "%s";

std::string entry(std::string key, const std::string& value) {
  QuarnEvent event(nullptr, 0);
  event.addEntry(key.data(), stringFormat, value.c_str());
  return utf8(event.getBody());
}

TEST(EntryList, FormatsElementsOneBehindTheOther) {
  QuarnEvent event(nullptr, 0);
  char count[] = "Count";
  char number[] = "%d";
  char pair[] = "0x%08X:%08X";
  event.addEntry(count, number, -5);
  event.addEntry(count, pair, 0xAB12U, 7U);
  EXPECT_EQ(utf8(event.getBody()), "<Count>-5</Count><Count>0x0000AB12:00000007</Count>");
}

TEST(EntryList, APeriodReplacesALoneTrailingBackslash) {
  EXPECT_EQ(entry("K", "abc\\"), "<K>abc.</K>");
  EXPECT_EQ(entry("K", "abc\\\\"), "<K>abc\\\\</K>");
  EXPECT_EQ(entry("K", "\\"), "<K>.</K>");
  EXPECT_EQ(entry("K", ""), "<K></K>");
  EXPECT_EQ(entry("K\\\\", "v"), "<K\\\\>v</K\\\\>");
  EXPECT_EQ(entry("", "v"), "<>v</>");

  QuarnEvent event(nullptr, 0);
  char key[] = "Key\\";
  event.addEntry(nullptr, stringFormat, "v");
  event.addEntry(key, nullptr);
  event.appendBody(nullptr);
  EXPECT_EQ(utf8(event.getBody()), "");
  event.addEntry(key, stringFormat, "v");
  EXPECT_STREQ(key, "Key.");
  EXPECT_EQ(utf8(event.getBody()), "<Key.>v</Key.>");
}

TEST(EntryList, KeepsLongElementsWhole) {
  // Around the size at which an element no longer fits the buffer on the stack, for the opening
  // tag, the value and the closing tag.
  for (const std::size_t keySize : {1U, 1020U, 1021U, 1022U, 2044U, 2045U, 2046U, 5000U}) {
    for (const std::size_t valueSize : {0U, 1U, 1000U, 2036U, 2037U, 2038U, 2039U, 2040U, 3000U}) {
      const std::string key(keySize, 'k');
      std::string value(valueSize, 'v');
      if (valueSize > 0) value.back() = '\\';
      std::string expected = value;
      if (valueSize > 0) expected.back() = '.';
      ASSERT_EQ(entry(key, value), "<" + key + ">" + expected + "</" + key + ">")
          << keySize << " " << valueSize;
    }
  }
}

TEST(EntryList, AppendsTextsOfAnySizeAndCoding) {
  QuarnEvent event(nullptr, 0);
  std::string expected;
  for (int i = 0; i < 300; ++i) {
    std::string text(static_cast<std::size_t>(i), static_cast<char>('a' + i % 26));
    event.appendBody(text.data());
    expected += text;
  }
  char latin1[] = "\xE9";
  char utf8Text[] = "\xE2\x82\xAC";
  event.appendBody(latin1);
  event.appendBody(utf8Text);
  EXPECT_EQ(utf8(event.getBody()), expected + "\xC3\xA9\xE2\x82\xAC");
}

}  // namespace

#include <MPUEvent/StringFormat.h>
#include <MPUEvent/XmlString.h>
#include <gtest/gtest.h>

namespace {

using Pegasus::StringFormat;
using Pegasus::XmlString;

TEST(StringFormat, WritesNumbersOfOneAndTwoWords) {
  EXPECT_EQ(StringFormat::decimal(0), "0");
  EXPECT_EQ(StringFormat::decimal(4294967295, 4294967295), "18446744073709551615");
  EXPECT_EQ(StringFormat::decimal(1, 2), "4294967298");
  EXPECT_EQ(StringFormat::hex(31, 8), "0x0000001f");
  EXPECT_EQ(StringFormat::hex(0, 0), "0x0");
  EXPECT_EQ(StringFormat::hex(0xABCDEF, 4), "0xabcdef");
  EXPECT_EQ(StringFormat::hex(1, 0, 8), "0x100000000");
  EXPECT_EQ(StringFormat::hex(0, 0x1A, 20), "0x0000000000000000001a");
  EXPECT_EQ(StringFormat::hex(7, 100).size(), 102U);
}

TEST(XmlString, BuildsElementsAndCollectsThem) {
  EXPECT_EQ(XmlString::addStringElement("K", "a<&b"), "<K>a<&b</K>");
  EXPECT_EQ(XmlString::addStringElement("", "v"), "<>v</>");
  EXPECT_EQ(XmlString::addDecimalElement("Count", 4294967295), "<Count>4294967295</Count>");
  EXPECT_EQ(XmlString::addHexElement("Flags", 255), "<Flags>0x000000ff</Flags>");
  EXPECT_EQ(XmlString::addHexElement("Pair", 2, 0xAB), "<Pair>0x2000000ab</Pair>");
  // Short texts are copied in steps that depend on their size.
  const std::string text = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKL";
  for (std::size_t size = 0; size <= text.size(); ++size) {
    const std::string part = text.substr(0, size);
    EXPECT_EQ(XmlString::addStringElement(part, "v" + part),
              "<" + part + ">v" + part + "</" + part + ">");
  }
  XmlString body;
  EXPECT_EQ(body.text(), "");
  body.append(XmlString::addDecimalElement("a", 1));
  body.append(XmlString::addDecimalElement("b", 2));
  EXPECT_EQ(body.text(), "<a>1</a><b>2</b>");
}

}  // namespace

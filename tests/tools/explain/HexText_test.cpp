#include "explain/HexText.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <string_view>

namespace {

using mpuevent::tool::readHexText;

// 51 bytes: two lines, the second one again, three bytes more.
std::string bytes() {
  const std::string line = "ENC-0815\x01\xAB\xCD\xEF be!";
  return "0123456789abcdef" + line + line + std::string("\x7F\0\xFE", 3);
}

std::string withReturns(const std::string& text) {
  return std::regex_replace(text, std::regex("\n"), "\r\n");
}

TEST(HexText, ReadsWhatProgramsAndPeopleWrite) {
  const std::string_view plainLine = "454e432d3038313501abcdef20626521";
  const std::string plain = "30313233343536373839616263646566\n" + std::string(plainLine) + '\n' +
                            std::string(plainLine) + "\n7f00fe\n";
  const std::string texts[] = {plain,
                               // xxd, whose characters may look like digits
                               R"(
00000000: 3031 3233 3435 3637 3839 6162 6364 6566  0123456789abcdef
00000010: 454e 432d 3038 3135 01ab cdef 2062 6521  ENC-0815.... be!
00000020: 454e 432d 3038 3135 01ab cdef 2062 6521  ENC-0815.... be!
00000030: 7f00 fe                                  ...
)",
                               // hexdump -C, quoted in a mail
                               withReturns(R"(Hi,
here it is:

> 00000000  30 31 32 33 34 35 36 37  38 39 61 62 63 64 65 66  |0123456789abcdef|
> 00000010  45 4e 43 2d 30 38 31 35  01 ab cd ef 20 62 65 21  |ENC-0815.... be!|
> *
> 00000030  7f 00 fe                                          |...|
> 00000033

Regards
)"),
                               // hexdump: words of a little-endian machine, the last one filled up
                               R"(
0000000 3130 3332 3534 3736 3938 6261 6463 6665
0000010 4e45 2d43 3830 3531 ab01 efcd 6220 2165
*
0000030 007f 00fe
0000033
)",
                               // od: offsets and words in octal
                               R"(
0000000 030460 031462 032464 033466 034470 061141 062143 063145
0000020 047105 026503 034060 032461 125401 167715 061040 020545
*
0000060 000177 000376
0000063
)",
                               // od -t x1z
                               R"(
0000000 30 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66  >0123456789abcdef<
0000020 45 4e 43 2d 30 38 31 35 01 ab cd ef 20 62 65 21  >ENC-0815.... be!<
*
0000060 7f 00 fe                                         >...<
0000063
)",
                               // from explain's own dump
                               R"(
Payload, 51 bytes:
  0088  30 31 32 33 34 35 36 37  |01234567|  Text, summary
  0090  38 39 61 62 63 64 65 66  |89abcdef|  Text
  0098  45 4E 43 2D 30 38 31 35  |ENC-0815|  Text
  00A0  01 AB CD EF 20 62 65 21  |.... be!|  Text
  00A8  45 4E 43 2D 30 38 31 35  |ENC-0815|  Text
  00B0  01 AB CD EF 20 62 65 21  |.... be!|  Text
  00B8  7F 00 FE                 |...|       Text
)",
                               R"(unsigned char record[] = {
  0x30, 0x31323334, 0x35363738, 0x3961, 0x6263, 0x646566,
  0x45,0x4e,0x43,0x2d,0x30,0x38,0x31,0x35, 0x1, 0xab, 0xcd, 0xef, 0x20, 0x62, 0x65, 0x21,
  0x454e432d, 0x30383135, 0x01abcdef, 0x20626521,
  0x7F, 0x00, 0xFE
};
)",
                               R"("\x45\x4e\x43\x2d0815")"};
  for (const std::string& text : texts) {
    const auto read = readHexText(text);
    EXPECT_EQ(read.error, "") << text;
    const std::string got(read.bytes.begin(), read.bytes.end());
    EXPECT_EQ(got, &text == std::end(texts) - 1 ? std::string("ENC-\x08\x15") : bytes()) << text;
  }
}

TEST(HexText, SaysWhatIsWrong) {
  const std::string_view row =
      "00000000: 454e 432d 3038 3135 01ab cdef 2062 6521  ENC-0815.... be!\n";
  const std::string behind = "00000020: 7f00 fe                                  ...\n";
  EXPECT_EQ(readHexText("").error, "there are no hex digits");
  EXPECT_EQ(readHexText("no digits\n").error, "there are no hex digits");
  EXPECT_EQ(readHexText(std::string(row) + behind).error, "line 2: a line before it is missing");
  EXPECT_EQ(readHexText(std::string(row) + "0000001 0: 45\n" + behind).error, "line 2 is no hex");
  EXPECT_EQ(readHexText("45 4e\n4 5\n45\n").error, "line 2 is no hex");
  // A star that claims far more than there is.
  EXPECT_NE(readHexText("00000000  45 4e 43 2d\n*\nffffffff\n").error, "");
}

}  // namespace

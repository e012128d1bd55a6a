#include <CMAP/CMAPErrorCodes.h>
#include <CMAP/CMAPMessageHeader.h>
#include <CMAP/Quarn_istream.h>
#include <gtest/gtest.h>

#include <cstring>
#include <numeric>
#include <string>

namespace {

using namespace Pegasus;

Uint32 handleOf(const CMAPMessageHeader& header) {
  const unsigned char* at = header.getWireBytes() + 40;
  return Uint32{at[0]} << 24 | Uint32{at[1]} << 16 | Uint32{at[2]} << 8 | at[3];
}

TEST(CMAPMessageHeader, OnlyDefaultConstructionDrawsAHandle) {
  const Uint32 before = CMAPMessageHeader::nextHandleValue;
  CMAPMessageHeader::nextHandleValue = 0x01020304;
  const CMAPMessageHeader first;
  CMAPMessageHeader second;
  const CMAPMessageHeader copy(second);
  const CMAPMessageHeader wired(first.getWireBytes());
  EXPECT_EQ(handleOf(first), 0x01020304U);
  EXPECT_EQ(handleOf(second), 0x01020305U);
  EXPECT_EQ(handleOf(copy), 0x01020305U);
  EXPECT_EQ(handleOf(wired), 0x01020304U);
  second = first;
  EXPECT_EQ(handleOf(second), 0x01020304U);
  EXPECT_EQ(CMAPMessageHeader::nextHandleValue, 0x01020306U);
  CMAPMessageHeader::nextHandleValue = before;
}

TEST(CMAPMessageHeader, KeepsWireBytesAndDumpsThem) {
  unsigned char wire[64];
  std::iota(std::begin(wire), std::end(wire), static_cast<unsigned char>(0xC0));
  CMAPMessageHeader header(wire);
  EXPECT_EQ(std::memcmp(header.getWireBytes(), wire, 64), 0);
  EXPECT_EQ(header.getTotalLength(), 0xCACB);
  EXPECT_STREQ(header.str().getCString(),
               "Type: 200, version: 201, length: 51915, protocol: 0xcc, opcode: 0xcdcecf, "
               "requestor: 208, control: 0xd1, destination: 210, return code: 0xe4e5e6e7, "
               "handle: 3907644139");

  header.setTotalLength(0x0102);
  wire[10] = 0x01;
  wire[11] = 0x02;
  EXPECT_EQ(std::memcmp(header.getWireBytes(), wire, 64), 0);
}

TEST(QuarnImemstream, DeliversWhatIsLeft) {
  char buffer[8] = {};
  Quarn_imemstream memory("abcdef", 6);
  Quarn_istream& stream = memory;
  EXPECT_EQ(stream.gcount(), 0);
  const struct {
    char* buffer;
    int count;
    int delivered;
    std::string bytes;
  } reads[] = {
      {buffer,  4,  4,  "abcd"},
      {buffer,  -1, -1, ""    },
      {nullptr, 1,  -1, ""    },
      {nullptr, 0,  0,  ""    },
      {buffer,  8,  2,  "ef"  },
      {buffer,  1,  0,  ""    },
  };
  for (const auto& test : reads) {
    EXPECT_EQ(stream.read(test.buffer, test.count).gcount(), test.delivered);
    if (test.delivered > 0) {
      EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(test.delivered)), test.bytes);
    }
  }
  EXPECT_EQ(Quarn_imemstream(nullptr, 0).read(buffer, 5).gcount(), 0);
}

TEST(CMAPErrorCodes, CodesLeadToTexts) {
  const auto& entries = CMAPErrorCodes::_errorCodeArray;
  ASSERT_EQ(entries.size(), 172U);
  for (Uint32 i = 0; i < entries.size(); ++i) {
    EXPECT_EQ(CMAPErrorCodes::getIndex(entries[i].code), i);
    EXPECT_GT(CMAPErrorCodes::getTextForIndex(i).size(), 0U);
  }
  EXPECT_EQ(CMAPErrorCodes::getIndex(0xFFFFFFFF), 172U);
  EXPECT_STREQ(CMAPErrorCodes::getTextForIndex(172).getCString(), "Unknown CMAP error");
}

}  // namespace

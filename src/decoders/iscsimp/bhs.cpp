// The iSCSI header segments (RFC 3720) that payloads carry, and the addresses.
#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/elements.h"
#include "decoders/iscsimp/tables.h"

namespace mpuevent::iscsimp {

using enum Width;
using enum Format;

namespace {

constexpr std::uint8_t opcodeMask = 0x3F;
constexpr std::uint8_t loginRequest = 3;
constexpr std::uint8_t textRequest = 4;

constexpr Flag loginRequestFlags[] = {
    {"Immediate", 0, 0x40},
    {"Transit",   1, 0x80},
    {"Continue",  1, 0x40},
};

constexpr Field loginRequestFields[] = {
    {"Version-max",       2,  u8,  udec     },
    {"Version-min",       3,  u8,  udec     },
    {"TotalAHSLength",    4,  u8,  udec     },
    {"DataSegmentLength", 4,  u24, udec     },
    {"ISID",              8,  u48, hexLower6},
    {"TSIH",              14, u16, hexLower4},
    {"ITT",               16, u32, hexLower8},
    {"CID",               20, u16, hexLower4},
    {"CmdSN",             24, u32, udec     },
    {"ExpStatSN",         28, u32, udec     },
};

constexpr Flag textRequestFlags[] = {
    {"Immediate", 0, 0x40},
    {"Final",     1, 0x80},
    {"Continue",  1, 0x40},
};

constexpr Field textRequestFields[] = {
    {"TotalAHSLength",    4,  u8,  udec     },
    {"DataSegmentLength", 4,  u24, udec     },
    {"ITT",               16, u32, hexLower8},
    {"TTT",               20, u32, hexLower8},
    {"CmdSN",             24, u32, udec     },
    {"ExpStatSN",         28, u32, udec     },
};

}  // namespace

void writeBhs(BodyWriter& body, RecordView bhs) {
  switch (bhs.u8(0) & opcodeMask) {
    case loginRequest:
      return writeLoginRequestBhs(body, bhs);
    case textRequest:
      return writeTextRequestBhs(body, bhs);
    default:
      return;
  }
}

void writeLoginRequestBhs(BodyWriter& body, RecordView bhs) {
  const unsigned stages = bhs.u8(1);
  writeWord(body, bhs, "Opcode", 0, u8, "Login Request");
  writeFlags(body, bhs, loginRequestFlags);
  writeWord(body, bhs, "CSG", 1, u8, stage_names[stages >> 2 & 3]);
  writeWord(body, bhs, "NSG", 1, u8, stage_names[stages & 3]);
  writeFields(body, bhs, loginRequestFields);
}

void writeTextRequestBhs(BodyWriter& body, RecordView bhs) {
  writeWord(body, bhs, "Opcode", 0, u8, "Text Request");
  writeFlags(body, bhs, textRequestFlags);
  writeFields(body, bhs, textRequestFields);
}

void writeIpAddress(BodyWriter& out, RecordView layout, std::size_t at) {
  const std::uint32_t address = layout.u32(at);
  for (unsigned shift = 24;; shift -= 8) {
    out.decimal(address >> shift & 0xFF);
    if (shift == 0) return;
    out.character('.');
  }
}

}  // namespace mpuevent::iscsimp

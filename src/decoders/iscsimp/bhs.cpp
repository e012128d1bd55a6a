// The iSCSI header segments (RFC 3720) that payloads carry, and the addresses.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "decoders/iscsimp/builders.h"
#include "decoders/iscsimp/tables.h"
#include "event/Fields.h"

namespace mpuevent::iscsimp {

using enum Width;
using enum Format;

namespace {

/// An element that is "Yes" if any bit of the mask is set in the byte, else "No".
struct Flag {
  struct Packed {
    TextBefore key;
    std::uint16_t offset;
    std::uint8_t mask;
  };
  constexpr Packed packed(auto place) const { return {place(key), offset, mask}; }

  std::string_view key;
  std::uint16_t offset;
  std::uint8_t mask;
};

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

static_assert(endWithin(headerSegmentSize, loginRequestFields, textRequestFields));

void writeFlags(BodyWriter& body, RecordView bhs, std::span<const Flag::Packed> flags) {
  for (const auto& [key, offset, mask] : flags) {
    if (bhs.holds(offset, 1)) body.element(key.view(), yesNo, bhs.u8(offset) & mask);
  }
}

/// Writes the current and the next stage. Both stand in one byte, in two bits each, so that neither
/// is a field.
void writeStages(BodyWriter& body, RecordView bhs) {
  constexpr std::size_t at = 1;
  if (!bhs.holds(at, 1)) return;
  body.element("CSG", textOf(packed<stage_names>, bhs.u8(at) >> 2 & 3));
  body.element("NSG", textOf(packed<stage_names>, bhs.u8(at) & 3));
}

/// Writes the opcode in words, if the byte that it stands in is held.
void writeOpcode(BodyWriter& body, RecordView bhs, std::string_view name) {
  if (bhs.holds(0, 1)) body.element("Opcode", name);
}

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
  writeOpcode(body, bhs, "Login Request");
  writeFlags(body, bhs, packed<loginRequestFlags>);
  writeStages(body, bhs);
  writeFields(body, bhs, packed<loginRequestFields>);
}

void writeTextRequestBhs(BodyWriter& body, RecordView bhs) {
  writeOpcode(body, bhs, "Text Request");
  writeFlags(body, bhs, packed<textRequestFlags>);
  writeFields(body, bhs, packed<textRequestFields>);
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

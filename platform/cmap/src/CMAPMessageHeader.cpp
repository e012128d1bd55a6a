#include <CMAP/CMAPMessageHeader.h>

#include <cstdio>
#include <cstring>

namespace Pegasus {
namespace {

struct Field {
  Uint32 offset;
  Uint32 width;
};

constexpr Field messageType = {8, 1};
constexpr Field version = {9, 1};
constexpr Field totalLength = {10, 2};
constexpr Field protocol = {12, 1};
constexpr Field opcodeType = {13, 3};
constexpr Field requestor = {16, 1};
constexpr Field control = {17, 1};
constexpr Field destination = {18, 1};
constexpr Field returnCode = {36, 4};
constexpr Field handle = {40, 4};

Uint32 readField(const unsigned char* wire, const Field& field) {
  Uint32 value = 0;
  for (Uint32 i = 0; i < field.width; ++i) value = (value << 8) | wire[field.offset + i];
  return value;
}

void writeField(unsigned char* wire, const Field& field, Uint32 value) {
  for (Uint32 i = field.width; i > 0; --i, value >>= 8) {
    wire[field.offset + i - 1] = static_cast<unsigned char>(value);
  }
}

}  // namespace

constinit std::atomic<Uint32> CMAPMessageHeader::nextHandleValue{1};

CMAPMessageHeader::CMAPMessageHeader() : wire_() { writeField(wire_, handle, nextHandleValue++); }

CMAPMessageHeader::CMAPMessageHeader(const unsigned char* wire) {
  std::memcpy(wire_, wire, wireSize);
}

Uint16 CMAPMessageHeader::getTotalLength() const {
  return static_cast<Uint16>(readField(wire_, totalLength));
}

void CMAPMessageHeader::setTotalLength(Uint16 length) { writeField(wire_, totalLength, length); }

String CMAPMessageHeader::str() const {
  const auto field = [this](const Field& which) { return readField(wire_, which); };
  char line[256];
  std::snprintf(line, sizeof(line),
                "Type: %u, version: %u, length: %u, protocol: 0x%02x, opcode: 0x%06x, "
                "requestor: %u, control: 0x%02x, destination: %u, return code: 0x%08x, handle: %u",
                field(messageType), field(version), field(totalLength), field(protocol),
                field(opcodeType), field(requestor), field(control), field(destination),
                field(returnCode), field(handle));
  return line;
}

}  // namespace Pegasus

// Events of the AWR module: trees of texts, binary snapshots and event names.
#include <initializer_list>

#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

Payload node(std::uint32_t type, std::string_view data) {
  return Payload().u32(type).u32(static_cast<std::uint32_t>(data.size())).bytes(data);
}

Payload text(std::string_view value) { return node(0, Payload().text(value).str()); }
Payload binary(const Payload& bytes) { return node(1, bytes.str()); }
Payload name(std::string_view value) { return node(3, Payload().text(value).str()); }

Payload container(std::initializer_list<Payload> children) {
  std::string data;
  for (const Payload& child : children) data += child.str();
  return node(2, data);
}

}  // namespace

std::vector<Sample> samplesOfAWR8P() {
  const Payload registers =
      Payload().u32(0x80004010).u32(0x0000FF10).text("BIST <ok>; err=0").u16(0x5C5C).u8(0x5C);
  return {
      Sample(1, 1, informational, systemEvents, text("AWR image 2.07 loaded")),
      Sample(2, 1, informational, systemEvents,
             container({name("AWR_BOOT"), text("boot complete after 1840 ms")})),
      Sample(7, 1, error, hardwareEvents,
             container({name("AWR_CHECK"), text("parity error in bank 3"), binary(registers),
                        text("limit 61 \xC2\xB0 C"), text("read back \xB1 2\\")})),
      Sample(8, 1, warning, hardwareEvents,
             container({container({text("channel 0"), binary(Payload().u64(0x4142434445464748))}),
                        container({text("channel 1"), container({binary(Payload().u8(0x3D)),
                                                                 node(9, "later firmware")})}),
                        container({}), text("2 channels")})),
      Sample(9, 1, warning, systemEvents, node(17, "node of no known type")),
      Sample(10, 1, informational, systemEvents),
  };
}

}  // namespace mpuevent::samples

// What the network configuration process logs.
#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

Payload mmsg(std::uint8_t protocol, std::uint32_t type, std::int32_t returnCode,
             std::string_view text) {
  return Payload()
      .u8(protocol)
      .u24(type)
      .u32(15)
      .u32(28)
      .u32(0x41)
      .u32(116)
      .u32(static_cast<std::uint32_t>(returnCode))
      .u32(90211)
      .u32(0x0000C0A8)
      .u32(0x00000002)
      .u32(0xFFFF0000)
      .text(text);
}

Payload link(std::uint32_t port, std::uint32_t status, std::uint8_t blade, std::uint8_t admin) {
  return Payload().u32(port).u32(0x00000100).u32(status).u8(blade).u8(0).u8(admin).u8(0);
}

}  // namespace

std::vector<Sample> samplesOfNETWORK_CONFIGMP() {
  return {
      Sample(1000, 1, informational, networkEvents,
             Payload().text("management port eth0: 100 Mb/s, full duplex")),
      Sample(1001, 1, warning, networkEvents,
             Payload().text("DHCP lease of eth1 ends in 300 s, server does not answer")),
      Sample(1002, 1, error, networkEvents,
             Payload().text("duplicate address 10.20.3.41 <00:0c:ca:01:23:45>")),
      Sample(1003, 1, informational, networkEvents,
             Payload().text("unexpected BPDU").u64(0x0180C2000000000C).u64(0xCA01234500264242)),
      Sample(1021, 1, error, networkEvents, mmsg(0x2F, 0x000104, -22, "protocol 47")),
      Sample(1022, 1, error, networkEvents, mmsg(0x06, 0x0000FE, -38, "request type 254")),
      Sample(1023, 1, error, networkEvents, mmsg(0x06, 0x000012, -1, "requester 15")),
      Sample(1024, 1, error, networkEvents, mmsg(0x06, 0x800012, 0, "response bit in a request")),
      Sample(1025, 1, warning, networkEvents, mmsg(0x0B, 0x000001, -110, "no answer of iSNSC")),
      Sample(1026, 1, error, networkEvents,
             Payload()
                 .u32(4)
                 .u32(28)
                 .u32(90215)
                 .u32(30)
                 .u32(500000)
                 .u32(0x1002F4C0)
                 .u32(0x1002F4E8)
                 .u32(0x7FFFE0A4)
                 .text("response event of a link query")),
      Sample(1027, 1, warning, networkEvents, Payload().u32(0x0000A5F0).u16(0x0102)),
      Sample(1030, 1, error, networkEvents, Payload().text("AF_NETLINK: errno 24")),
      Sample(1040, 1, informational, networkEvents, link(3, 0x410, 1, 2)),
      Sample(1041, 1, warning, networkEvents, link(4, 0x411, 2, 1)),
  };
}

}  // namespace mpuevent::samples

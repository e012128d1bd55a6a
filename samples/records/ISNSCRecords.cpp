// What the iSNS client logs: its messages to and from the process that configures it, and texts.
#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

enum Event : std::uint32_t { icsRequest = 1, icsResponse, icsMessage, isnsRequest, textEvent = 7 };
enum Reason : std::uint32_t { information = 1, received, sent };
enum Kind : std::uint32_t { ics = 1, isns = 2, text = 3 };

Payload payload(Kind kind, Event event, Reason reason, std::string_view module,
                std::uint32_t line) {
  return Payload().u32(kind).u32(event).u32(reason).field(module, 8).u32(line);
}

/// The ICS message up to what its type adds.
Payload icsPayload(Event event, Reason reason, std::uint32_t line, std::uint32_t type) {
  return payload(ics, event, reason, "isnsmsg", line)
      .u32(type)
      .u32(0x1F42A0C0)
      .u32(0x1F42A118)
      .u8(event == icsResponse ? 2 : 1)
      .u8(3)
      .u16(event == icsResponse ? 72 : 344)
      .u32(0x0B000001 | (event == icsResponse ? 0x800000U : 0U))
      .u8(6)
      .u8(0x81)
      .u8(0x1C)
      .u8(0)
      .u64(0x0000000000000800)
      .u64(0)
      .u32(0)
      .u32(0x0004A1F7)
      .u32(0x00000010)
      .u32(0)
      .u32(0x7F3C0001)
      .zeros(8);
}

Payload clientConfiguration(std::string_view nodeId, std::string_view alias) {
  return icsPayload(icsRequest, received, 512, 0x00000001)
      .u32(0x00000003)
      .u32(0x0A140332)
      .u32(0xFFFFFF00)
      .u32(3205)
      .u32(0x0A140329)
      .u32(0xFFFFFE00)
      .field(nodeId, 224)
      .text(alias);
}

}  // namespace

std::vector<Sample> samplesOfISNSC() {
  return {
      Sample(1, 1, informational, isnsEvents,
             clientConfiguration("iqn.2004-05.com.array:storage.000318", "array 318 <rack=7>")),
      Sample(1, 1, warning, isnsEvents, clientConfiguration("", "")),
      Sample(1, 1, informational, isnsEvents,
             icsPayload(icsResponse, sent, 540, 0x00800001).u32(0x00000000)),
      Sample(1, 1, error, isnsEvents,
             icsPayload(icsResponse, sent, 547, 0x00800001).u32(0x80040017)),
      Sample(2, 1, warning, isnsEvents, icsPayload(icsMessage, received, 561, 0x0000002A)),
      Sample(3, 1, informational, isnsEvents,
             payload(text, textEvent, information, "isnscli", 88)
                 .u8(0)
                 .u8(3)
                 .u16(2)
                 .u32(0xA)
                 .u32(0xC0A80117)
                 .u32(0xC85)),
      Sample(
          3, 1, error, isnsEvents,
          payload(text, textEvent, received, "isnsreg", 1204).u8(0).u8(1).u16(1).u32(0xFFFFFFFF)),
      Sample(3, 1, informational, isnsEvents,
             payload(text, textEvent, sent, "isnsreg", 1311).u8(0).u8(0).u16(7)),
      Sample(4, 1, informational, isnsEvents,
             payload(isns, isnsRequest, sent, "isnspdu", 77).u16(0x0001).u16(0x000F).u32(128)),
  };
}

}  // namespace mpuevent::samples

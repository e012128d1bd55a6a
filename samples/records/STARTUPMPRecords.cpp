// A controller that starts, a management process that dies, and a controller chip that stops.
#include <string>
#include <string_view>

#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

enum EventId : std::uint16_t {
  generalMessage = 1,
  unknownMessage = 2,
  partialMessage = 3,
  fatalSignal = 4,
  chipState = 100,
  stackDump = 101,
};

Sample message(Severity severity, std::string_view text) {
  return Sample(generalMessage, 1, severity, systemEvents, Payload().text(text));
}

/// The header of a management message, behind a text that ends on a word.
Payload channelHeader(std::string_view text, std::uint8_t requestor, std::uint16_t length) {
  return Payload()
      .bytes(text)
      .zeros(8)  // list head, used in memory only
      .u8(1)
      .u8(2)
      .u16(length)
      .u8(3)
      .u24(0x000412)
      .u8(requestor)
      .u8(0x40)
      .u16(0x0017)
      .zeros(16)
      .u32(0xFFFFFFEA)  // failed with -22
      .u32(0x00031F07)
      .u32(0x0000002C)
      .u32(0x10A40000)
      .u32(0xC0FFEE00);
}

/// What a process leaves that dies of a signal.
Payload died(std::uint32_t signal, std::uint32_t code, std::string_view name) {
  Payload info;
  info.u32(signal).u32(0).u32(code);
  info.at(128);
  for (std::uint32_t i = 0; i < 32; ++i) info.u32(i == 1 ? 0x7FFFF5C0 : 0x30010000 + i * 0x1A4);
  info.u32(0x1002F3A8).u32(0x0000D032).u32(3).u32(0x0FE98E20);           // NIP to CTR
  info.u32(0x1002F390).u32(0x20000000).u32(0x44002482).u32(0);           // LINK to MQ
  info.u32(0x00000300).u32(0x00000014).u32(0x42000000).u32(0xFFFFFFF2);  // TRAP to RESULT
  info.u32(0x10000380).u32(0x10068F20).u32(0x10065BC4).u32(0x10060000);
  info.u32(417).text(name);
  return info;
}

Sample signal(const Payload& info) { return Sample(fatalSignal, 1, error, systemEvents, info); }

/// The registers of the processor core in the first `words` words.
Payload registers(std::uint32_t words) {
  Payload dump;
  for (std::uint32_t i = 0; i < words; ++i) dump.u32(i * 0x01000193 ^ 0x811C9DC5);
  return dump.at(0).u32(0x4A012F5C).at(16).u32(0x00021503).padTo(0);
}

Payload stack(std::uint32_t words) {
  Payload dump;
  dump.u32(1).u32(0x8003FFA0);
  for (std::uint32_t i = 0; i < words; ++i) {
    dump.u32(i % 3 == 0 ? 0x80010000 + i * 0x2C : i % 3 == 1 ? i : 0);
  }
  return dump;
}

}  // namespace

std::vector<Sample> samplesOfSTARTUPMP() {
  return {
      message(informational, "Boot OK\nslot = 3, state= up\n"),
      message(informational,
              "Startup 4.12.0-77 (release)\n"
              "  primary image=A, secondary image=B, active = A\n"
              "boot count=17 reset cause=power-on\n"
              "\n"
              "mode=normal, continuing with 9 applications  \n"),
      message(warning, "application SNMPMP restarted, pid=731, restarts = 2"),
      message(error, "No answer from MIP within 30000 ms"),
      Sample(generalMessage, 1, informational, systemEvents),

      Sample(unknownMessage, 1, warning, managementEvents,
             channelHeader("unexpected message type 31042 on channel 23\n", 7, 152)),
      Sample(unknownMessage, 1, warning, managementEvents,
             channelHeader("no such handler!", 11, 64).bytes("rest")),
      Sample(partialMessage, 1, warning, managementEvents,
             channelHeader("cut in alternate log: 56 of 152\n", 5, 152)),
      // Behind the text only as much is left as is needed for the requestor.
      Sample(partialMessage, 1, warning, managementEvents,
             Payload(channelHeader("cut in alternate log: 18 of 88.\n", 6, 88)).padTo(202)),

      signal(died(11, 0x00030001, "iscsimp").at(12).u32(0x00000014)),
      signal(died(7, 0x00030002, "volmgr").at(12).u32(0x30017FFF)),
      signal(died(8, 0x00030001, "environ").at(12).u32(0x1000A2C4)),
      signal(died(4, 0x00030005, "snmp").at(12).u32(0x10013C00)),
      signal(died(5, 0x00030001, "eventlog").at(12).u32(0x10002008)),
      signal(died(31, 0x00030001, "smis").at(12).u32(0)),
      signal(died(6, 0, "startup").at(12).u32(398).u32(100)),
      signal(died(14, 0x00010003, "hacc")),
      signal(died(29, 0x00020001, "es_adapter").at(12).u32(65).u32(9)),
      signal(died(17, 0x00040001, "startup").at(20).u32(139).u32(12).u32(3)),
      signal(died(34, 0x0005FFFF, "rcp").at(20).u32(0x10045678)),
      signal(died(9, 0xFFFFFFFA, "ddlm")),

      Sample(chipState, 1, error, hardwareEvents, registers(1088)),
      Sample(chipState, 1, error, hardwareEvents, registers(141)),  // ends inside SCRATCH

      Sample(stackDump, 1, error, hardwareEvents, stack(48)),
      Sample(stackDump, 1, error, hardwareEvents, stack(0)),

      Sample(77, 1, warning, systemEvents, Payload().u32(0x0000004D).text("?")),
  };
}

}  // namespace mpuevent::samples

// Events of the I/O manager, at least one with each typed record, and of MIP, whose payloads and
// records are the same.
#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

/// The words before the data, then the data.
Payload event(std::uint32_t eventClass, std::uint32_t number, std::uint32_t line,
              const Payload& data = {}) {
  const auto length = static_cast<std::uint32_t>(data.str().size());
  return Payload().u32(eventClass).u32(number).u32(0x20).u32(line).u32(length).bytes(data.str());
}

/// A block number whose low word is stored first.
Payload lowFirst(std::uint64_t number) {
  const auto low = static_cast<std::uint32_t>(number);
  return Payload().u32(low).u32(static_cast<std::uint32_t>(number >> 32));
}

Payload durableName(std::uint32_t last) {
  return Payload().u32(0x60000E4A).u32(0x0031B700).u32(0x4557A123).u32(last);
}

Payload lwsem(std::uint32_t value) { return Payload().u32(1).u32(value); }

Payload isurp(std::uint64_t block, std::uint32_t count) {
  Payload record;
  record.u8(0).u8(0x28).u8(4).u8(2).u32(0x00000100).u32(0x00400000).u32(0x00000083);
  return record.bytes(lowFirst(block).str()).u32(count);
}

Payload drp(std::uint32_t drive, std::uint64_t block, std::uint8_t status) {
  Payload record;
  record.u8(0).u8(3).u16(0).bytes(lowFirst(block).str()).u32(0x80);
  record.bytes(lowFirst(block + 0x2A).str()).u32(0x56).u32(drive).u8(status).u8(0x11).u8(0x25);
  return record.u8(0x02).u32(0x0000000F);
}

Payload volume(std::uint32_t number, std::uint16_t extents) {
  Payload record;
  record.u32(0x00000005).u8(5).u8(0).u8(9).u8(1).u32(number);
  record.at(16).u64(0x0000000174A5B000).u64(0x00000000E2F01200);
  record.at(44).u32(2);
  record.at(240).u32(0x00010004).u16(0).u16(extents).u32(7).u32(0).u32(0x0000003C).u32(extents);
  for (std::uint16_t i = 0; i < extents; ++i) {
    record.u8(0).u8(static_cast<std::uint8_t>(i)).u16(0).u16(1).u16(0x0040);
    record.u64(0x0000000004000000U * i).u64(0x0000000000010800).u64(0x000000001D1C5970);
    record.u64(0x000000001D1C5970U * i).u64(0x1000U * i).u64(0x1000U * i + 0xFFF);
    record.u64(0x000000000E8E2CB8).bytes(durableName(0x10U + i).str());
  }
  return record;
}

Payload managementMessage() {
  return Payload().u16(64).u8(7).u8(2).u32(0x0312).u32(0x80040005).u32(12).u32(0x1F400);
}

Payload device(std::uint16_t number, std::uint16_t regions) {
  Payload record;
  record.u64(0x000000001D1C5970).u16(number).u16(3);
  record.at(48).u32(0x00000009).u32(0x4557A123).u32(0x4557A188).u32(2048).u32(512).u32(10).u32(3);
  for (std::uint16_t i = 0; i < regions; ++i) {
    record.u16(static_cast<std::uint16_t>(i + 1)).u16(0x8000).u32(0x800U * i);
    record.u32(0x5245474EU).u32(0x800).u32(i == 2 ? 96 : 0);
  }
  return record.at(476).bytes(durableName(number).str());
}

Payload scatterGather(std::uint32_t entries) {
  Payload table;
  for (std::uint32_t i = 0; i < entries; ++i) table.u32(0x21400000 + i * 0x10000).u32(0x8000);
  return table.padTo(64);
}

Payload disklineMetadata() {
  Payload record;
  record.u8(0).u8(0x41).u8(6).u8(0).u32(0x0000120C).u32(0x0000120B).u32(11);
  for (std::uint32_t i = 0; i < 4; ++i) {
    record.bytes(lowFirst(0x0000000100A3F000U + i * 0x80).str()).u64(0x4557A12300000000U + i);
    record.bytes(lowFirst(0x0000000000A51000U + i * 0x80).str()).u32(0x00000300U >> i);
    for (std::uint16_t k = 0; k < 8; ++k) record.u16(static_cast<std::uint16_t>(i << 8 | k));
  }
  return record;
}

Payload forcedError() {
  Payload record;
  record.u16(5).u16(0x0003).u16(11).u16(0).bytes(lowFirst(0x0000000100A3F02A).str());
  return record.bytes(lowFirst(0x0000000000A5102A).str());
}

Payload backgroundControl() {
  Payload record;
  record.u8(6).u8(0).u16(0x0102).bytes(lowFirst(0x00000000E2F01200).str()).u32(4);
  record.bytes(lowFirst(0x0000000004000000).str()).bytes(durableName(5).str()).u32(1183);
  return record.u32(0x00000021).u16(0x0008).u16(0x0004);
}

Payload redundantControl() {
  Payload record;
  record.u8(9).u8(0).u16(40).bytes(lowFirst(0x00000000001F3480).str());
  return record.bytes(durableName(6).str()).u32(1184).u32(0x00000044).u16(0x0215).u16(0x0003);
}

Payload redundantTask() {
  Payload record;
  record.u16(0x000A).u16(5).u32(0x00000011).bytes(lowFirst(0x00000000E2F01200).str()).u32(3);
  return record.bytes(lowFirst(0x0000000001A00000).str()).u32(1185);
}

Payload messageQueue(std::uint32_t base) {
  Payload record;
  record.u16(0x0030).u16(0x0008).u16(0x0012).u16(0x0014).u16(2).u16(0x0401).u32(base);
  record.u8(4).u8(1).u16(64).u16(0x0402).u16(0x0403).u16(0x0404).u16(0x0405);
  return record.u32(base + 0x50);
}

}  // namespace

std::vector<Sample> samplesOfIOMGR8P() {
  std::vector<Sample> samples;
  const auto add = [&samples](std::uint8_t severity, const Payload& payload) {
    samples.emplace_back(std::uint16_t{1}, std::uint8_t{1}, severity, volumeEvents, payload);
  };
  const auto both = [](const Payload& first, const Payload& second) {
    return Payload().bytes(first.str()).bytes(second.str());
  };

  add(informational, event(2, 1001, 412, Payload().u32(5)));
  add(informational, event(2, 1002, 608, Payload().u32(5)));
  add(warning, event(20, 506, 377, Payload().u32(12)));
  add(error, event(1, 1, 2210, lwsem(0xFFFFFFFE)));
  add(error, event(1, 9, 2377, Payload().u32(0x00000400)));
  add(warning, event(1, 10, 2391, Payload().u32(0x0000C0DE)));
  add(error, event(1, 32, 2402, messageQueue(0x9F020400)));
  add(error, event(1, 516, 1893, drp(11, 0x0000000000A51000, 0x83)));
  add(warning, event(4, 512, 744, drp(3, 0x000000001C3A0F80, 0x03)));
  add(error, event(3, 5, 905, both(drp(7, 0x0000000000010880, 0), volume(5, 1))));
  add(error, event(6, 501, 1320, device(11, 3)));
  add(informational, event(6, 510, 1377, volume(5, 10)));
  add(error, event(7, 2, 288, managementMessage()));
  add(warning, event(7, 508, 295));
  add(error, event(14, 8, 511,
                   both(isurp(0x000000001F3480, 256), both(scatterGather(8), scatterGather(3)))));
  add(error, event(14, 12, 560, both(isurp(0x0000000174A5AFF0, 64), volume(12, 2))));
  add(error, event(15, 16, 1029, disklineMetadata()));
  add(warning, event(20, 505, 340, isurp(0x0000000100A3F000, 128)));
  add(warning,
      event(20, 518, 351, Payload().u16(0x0002).u16(9).bytes(lowFirst(0x0000000000A5102A).str())));
  add(warning, event(21, 512, 702, isurp(0x00000000E2F01200, 128)));
  add(informational,
      event(24, 1003, 118,
            Payload().u32(1183).u32(5).u32(3).u32(8).u32(4).u32(0x11).u64(0x00000000E2F01200)));
  add(error, event(25, 29, 1571, redundantControl()));
  add(error, event(25, 30, 1588, backgroundControl()));
  add(error, event(26, 509, 845, both(forcedError(), disklineMetadata())));
  add(warning, event(26, 520, 870));
  add(warning, event(27, 3, 92, scatterGather(5)));
  add(error, event(28, 31, 1604, redundantTask()));
  add(warning, event(29, 1, 64, lwsem(2)));
  add(error, event(31, 0, 233, Payload().text("iomgr_vt.c:1187")));
  add(error, event(31, 0, 234, Payload().bytes("vt.c")));
  add(error, event(32, 7, 51));
  add(warning, event(2, 77, 430, Payload().u32(5)));
  add(warning, event(40, 1, 19, lwsem(1)));
  samples.emplace_back(std::uint16_t{2}, std::uint8_t{1}, warning, volumeEvents,
                       Payload().u32(0x00000011).u32(0xA5A50102));
  return samples;
}

std::vector<Sample> samplesOfMIP8P() {
  std::vector<Sample> samples;
  const auto add = [&samples](std::uint8_t severity, const Payload& payload) {
    samples.emplace_back(std::uint16_t{1}, std::uint8_t{1}, severity, hardwareEvents, payload);
  };
  add(informational, event(4, 1001, 77));
  add(informational, event(4, 1002, 131));
  add(error, event(1, 1, 640, lwsem(0xFFFFFFFF)));
  add(error, event(1, 3, 655, Payload().u32(0x00000200)));
  add(warning, event(1, 4, 671, Payload().u32(0x0000031A)));
  add(warning, event(1, 5, 690, Payload().u32(0x0000C0DE)));
  add(error, event(1, 14, 702, messageQueue(0x9F031000)));
  add(error, event(1, 15, 718, Payload().u32(2)));
  add(error, event(1, 16, 725, Payload().u32(3)));
  add(warning, event(1, 2, 733));
  add(error, event(2, 8, 91));
  add(error, event(3, 3, 204, Payload().u32(0x00000400)));
  add(error, event(3, 7, 211, Payload().u32(0x00000017)));
  add(error, event(6, 11, 322, managementMessage()));
  add(warning, event(7, 1, 15));
  add(warning, event(8, 4, 48));
  add(error, event(9, 0, 233, Payload().text("mip_arc.c:618")));
  add(error, event(12, 502, 410, Payload().u32(0x00000010)));
  add(error, event(12, 14, 426, messageQueue(0x9F033000)));
  samples.emplace_back(std::uint16_t{3}, std::uint8_t{1}, warning, hardwareEvents,
                       Payload().u32(0x00000002).u32(0x5A5A0304));
  return samples;
}

}  // namespace mpuevent::samples

// Bugchecks of both cache managers: one for each structure that is logged, with what was held in
// it when the check failed.
#include <initializer_list>

#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

namespace {

Payload words(std::initializer_list<std::uint32_t> values) {
  Payload payload;
  for (const std::uint32_t value : values) payload.u32(value);
  return payload;
}

Payload isurp(std::uint32_t opcode = 0x2A010003) {
  return words(
      {0x8C41D2E0, opcode, 0x00000110, 0x00000C02, 0x00000009, 0x80000001, 14, 0x00F3A180, 2, 128});
}

Payload isurpAnd(std::initializer_list<std::uint32_t> values) {
  return isurp().bytes(words(values).str());
}

Payload clh(std::uint32_t activityCount, std::uint32_t flags = 0x00000041) {
  return words({0x90072B40, 14, 0x00F3A100, 2, flags, 0xFFFF0000, 0x0000FFFF, 0x00FF0000, 0,
                activityCount, 1, 0x0F000000, 0, 0x000000F0, 0, 0, 0x80000000});
}

Payload mmsg(std::uint32_t protocol, std::uint32_t request) {
  return words({0x8C2000A0, protocol, request, 14, 3});
}

/// List heads of lists without an element, which point to themselves.
Payload emptyLists(Payload structure, std::uint32_t address, unsigned count) {
  for (unsigned list = 0; list < count; ++list) {
    structure.u32(address + 8 * list).u32(address + 8 * list);
  }
  return structure;
}

Sample bugcheck(std::uint16_t id, const Payload& payload = {}) {
  return Sample(id, 1, error, cacheEvents, payload);
}

}  // namespace

std::vector<Sample> samplesOfCACHE18P() {
  return {
      bugcheck(1, words({12, 64, 52})),
      bugcheck(2),
      bugcheck(12, words({0x40000310})),
      bugcheck(13, words({0x00008004})),
      bugcheck(20, words({7})),
      bugcheck(21, isurp(0x9F010000)),
      bugcheck(28, words({14, 0x00000204, 0x00F40000, 0x00000002, 1024, 2048, 0xE8E08800, 6})),
      bugcheck(29, mmsg(2, 0x7F)),
      bugcheck(35, words({1, 0xFFFFFFFF})),
      bugcheck(38, words({0x20004000, 96})),
      bugcheck(44, words({0x8C41D2E0, 0xBADC0FFE})),
      bugcheck(48, mmsg(4, 0x11).u32(0x00000201).u32(2)),
      bugcheck(60, words({14})),
      bugcheck(62, words({0x90072B40, 14, 0x00F3A180, 2, 0x00000041, 0x00000204, 0x00F40000, 2,
                          1024, 2048})),
      bugcheck(63, clh(3)),
      bugcheck(70, emptyLists(isurp(), 0x8C41D308, 14)),
      bugcheck(72, words({0})),
      bugcheck(113, words({0xFFFFFFFD})),
      bugcheck(117, isurpAnd({64})),
      bugcheck(118, isurpAnd({64, 0x00F3A1C0})),
      bugcheck(123, isurpAnd({0x90072B40, 15, 0x00F3A100, 2, 0x00000043, 0xFFFF0000, 0x0000FFFF,
                              0x00FF0000, 0, 2, 1, 0x0F000000, 0, 0x000000F0, 0, 0, 0x80000000})),
      bugcheck(130, isurpAnd({0x90072B40, 14, 0x00F3A100, 2, 0x00000206, 0x00F40000, 2, 5, 9, 32})),
      bugcheck(138, clh(1).u32(0x90072BC0).u64(0x0000FFFF00000000).u64(0x00000000FF000000)),
      bugcheck(139, emptyLists(clh(0, 0x80000041), 0x90072B84, 3)),
      bugcheck(145, words({0, 16384, 16385, 8112})),
      bugcheck(151, isurpAnd({0x00F3A1C0, 0x00F3A200})),
      bugcheck(158, clh(0).u32(3)),
      bugcheck(162, isurpAnd({0x00000201, 2})),
      bugcheck(47, words({0x00000110, 0xDEADC0DE})),
  };
}

std::vector<Sample> samplesOfCACHE28P() {
  return {
      bugcheck(10),
      bugcheck(36, words({1, 0xFFFFFFFE})),
      bugcheck(126, isurp(0x28010002).u32(0x900801C0).padTo(108)),
      bugcheck(161, words({0, 4})),
      bugcheck(512, words({0x00000002})),
  };
}

}  // namespace mpuevent::samples

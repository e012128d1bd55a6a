#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

std::vector<Sample> samplesOfMIP_LOCAL() {
  return {
      Sample(3, 1, informational, systemEvents, Payload().u32(0x00000C41).u32(0x0001D4C0)),
      Sample(17, 1, warning, hardwareEvents, Payload().text("watchdog kicked late: 412 ms")),
      Sample(18, 2, error, hardwareEvents),
  };
}

// A module newer than the vocabularies: source, category and type are all unknown numbers.
std::vector<Sample> samplesOfUNNAMED() {
  return {
      Sample(4097, 3, 4, 14, Payload().u16(0x0203).u16(0x0001).u64(0x000000A5F31C2E07)),
      Sample(65535, 255, 0, 0),
  };
}

}  // namespace mpuevent::samples

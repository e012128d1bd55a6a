// Events of the modules whose payload is shown in hex: what their firmware is known to log is
// counters, register words, printable notes and now and then a longer snapshot.
#include "records/SampleRecords.h"

namespace mpuevent::samples {

using support::Payload;

std::vector<Sample> samplesOfICHAR() {
  return {
      Sample(26, 1, informational, ioEvents,
             Payload().u32(7).u16(0x0310).u16(0x00FE).u64(0x0000001F4A2B3C00)),
      Sample(27, 1, warning, ioEvents, Payload().text("port 3: queue depth 512 exceeded")),
      Sample(41, 2, error, hardwareEvents,
             Payload().u8(3).u24(0x01A2F4).u32(0xDEADC0DE).u32(0x80004010).zeros(6).u16(0x1F2E)),
      Sample(96, 1, informational, ioEvents),
  };
}

std::vector<Sample> samplesOfOB0() {
  return {
      Sample(1, 1, informational, systemEvents, Payload().text("OB0 firmware 4.12.0-77 started")),
      Sample(5, 1, warning, environmentalEvents,
             Payload().u16(48).u16(55).field("TEMP-MID", 16).u32(86100)),
      Sample(258, 1, error, hardwareEvents,
             Payload().u32(0xC0000175).u32(0x0000FF10).u32(0x80FF007F)),
  };
}

std::vector<Sample> samplesOfOB1() {
  return {
      Sample(1, 1, informational, systemEvents, Payload().text("OB1 firmware 4.12.0-77 started")),
      Sample(6, 1, informational, hardwareEvents,
             Payload().u8(1).u8(4).u16(0x2A51).u32(119200).u32(0x00000003)),
      Sample(513, 2, error, hardwareEvents, Payload().u64(0xFEDCBA9876543210).zeros(24).u32(0xE1)),
      Sample(514, 1, warning, hardwareEvents),
  };
}

std::vector<Sample> samplesOfHACCMP() {
  return {
      Sample(11, 1, informational, managementEvents,
             Payload().text("peer controller in slot 1 is present")),
      Sample(12, 1, warning, managementEvents,
             Payload().u32(1).u32(3).u32(2500).text("heartbeat missed")),
      Sample(13, 1, error, managementEvents,
             Payload().u32(1).u32(0).u32(10000).text("heartbeat lost, taking over").padTo(48)),
      Sample(20, 1, informational, managementEvents, Payload().field("active-active", 32).u8(2)),
  };
}

std::vector<Sample> samplesOfMSMMP() {
  Payload segments;
  segments.u16(24).u16(0x0102);
  for (std::uint32_t segment = 0; segment < 24; ++segment) {
    segments.u32(segment * 0x00100000)
        .u32(0x000F0000 + segment * 0x111)
        .u16(static_cast<std::uint16_t>(segment * 7))
        .u8(static_cast<std::uint8_t>(segment % 5))
        .u8(0);
  }
  return {
      Sample(2, 1, informational, systemEvents, Payload().u32(0x20000000).u32(0x1B3F0000)),
      Sample(3, 1, warning, systemEvents, Payload().text("shared memory 91% used")),
      Sample(4, 1, informational, systemEvents, segments),
      Sample(9, 1, error, systemEvents, Payload().u32(0x8000000B).u64(0x00000000F00DBEEF)),
  };
}

std::vector<Sample> samplesOfDRIVEADMP() {
  Payload page;
  page.u8(0x2F).u8(0).u16(252);
  while (page.str().size() < 256) page.u8(static_cast<std::uint8_t>(page.str().size() * 37 + 11));
  return {
      Sample(1, 1, informational, deviceEvents,
             Payload().u32(5).field("S2A7K0381745", 20).field("04.05G04", 8)),
      Sample(2, 1, informational, driveEvents, Payload().u32(11).text("drive inserted")),
      Sample(3, 1, warning, driveEvents, Payload().u32(11).u16(0x0B01).u8(0x5D).u8(0x00)),
      Sample(4, 1, error, driveEvents, Payload().u32(11).u32(0x40000051).text("drive failed")),
      Sample(7, 1, warning, deviceEvents, page),
  };
}

std::vector<Sample> samplesOfENVIRONMP() {
  return {
      Sample(1, 1, informational, environmentalEvents,
             Payload().u8(2).u8(1).u16(5820).text("FAN 2 rpm normal")),
      Sample(2, 1, warning, environmentalEvents,
             Payload().u8(2).u8(3).u16(1240).text("FAN 2 slow")),
      Sample(3, 1, error, environmentalEvents,
             Payload().u8(1).u8(0).u16(0).text("PSU 1: no input voltage")),
      Sample(8, 1, warning, environmentalEvents,
             Payload().u32(3).u32(61).u32(60).text("sensor at 61 \xC2\xB0 C, limit 60")),
      Sample(15, 1, informational, environmentalEvents),
  };
}

std::vector<Sample> samplesOfSNMPMP() {
  return {
      Sample(26, 1, informational, networkEvents,
             Payload().u8(10).u8(20).u8(3).u8(41).u16(162).text("trap sent")),
      Sample(27, 1, warning, networkEvents,
             Payload().u8(10).u8(20).u8(3).u8(42).u16(162).text("no answer from manager")),
      Sample(30, 2, warning, networkEvents, Payload().text("bad community <public> & 2 more")),
      Sample(31, 1, informational, managementEvents,
             Payload().u32(0x2B060104).u32(0x01822A01).u16(3)),
  };
}

}  // namespace mpuevent::samples

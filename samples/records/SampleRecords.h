#ifndef MPUEVENT_SAMPLES_SAMPLERECORDS_H
#define MPUEVENT_SAMPLES_SAMPLERECORDS_H

#include <MPUEvent/Quarn_Event.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/RecordBuilder.h"

namespace mpuevent::samples {

enum Severity : std::uint8_t { informational = 1, warning = 2, error = 3 };

enum Category : std::uint8_t {
  systemEvents = 1,
  managementEvents = 2,
  environmentalEvents = 3,
  deviceEvents = 4,
  volumeEvents = 5,
  driveEvents = 6,
  scsiEvents = 7,
  iscsiEvents = 8,
  networkEvents = 9,
  hardwareEvents = 10,
  ioEvents = 11,
  cacheEvents = 12,
  isnsEvents = 13,
};

/// One event as its module logs it; the rest of the record's header is the log's business.
struct Sample {
  Sample(std::uint16_t id, std::uint8_t idVersion, std::uint8_t type, std::uint8_t category,
         const support::Payload& payload = {});

  std::uint16_t id;
  std::uint8_t idVersion;
  std::uint8_t type;
  std::uint8_t category;
  std::string payload;
};

/// A source byte, the decoder class that it stands for, and events of it. A module's samples are
/// the function samplesOfNAME().
struct Module {
  std::string_view name;  ///< of the class without "_Event"; of a plain source a name of its own
  std::uint8_t source;
  /// `new` of the class with its decoder constructor; the caller owns the event.
  Pegasus::Quarn_Event* (*construct)(Pegasus::EmpEvLogMsg_s* record, int length);
  std::vector<Sample> (*samples)();
  bool plain = false;  ///< a source without a decoder
};

/// Every module with a decoder, by rising source, and two without.
const std::vector<Module>& modules();

/// A record of the sample, of which the header fields can still be changed.
support::RecordBuilder record(const Module& module, const Sample& sample);

}  // namespace mpuevent::samples

#endif

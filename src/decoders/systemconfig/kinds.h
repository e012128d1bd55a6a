#ifndef DECODERS_SYSTEMCONFIG_KINDS_H
#define DECODERS_SYSTEMCONFIG_KINDS_H

#include <cstdint>
#include <string_view>

#include "decoders/systemconfig/location.h"
#include "event/RecordView.h"
#include "event/SafeBody.h"

namespace mpuevent::systemconfig {

/// The payload of a record: where the event was logged, and its data.
struct SccPayload {
  explicit SccPayload(const Record& record);

  LocationBlock location;
  RecordView data;  ///< laid out by the kind of event
  /// The length that the record tells of its payload, less the size of a location block, whether
  /// there is one or not. It may be below 0, and more than what is held.
  int lengthBehindLocation;
};

/// What an event tells of.
enum class Kind : std::uint8_t {
  text,
  dump,
  sharedMemory,
  lock,
  message,
  request,
  response,
  timer,
  lockManager,
  persistentMemory,
};

/// Writes the elements of one kind of event. Returns the summary, which is a part of the record or
/// a fixed text.
std::string_view writeKind(Kind kind, SafeBody& body, const SccPayload& event);

}  // namespace mpuevent::systemconfig

#endif

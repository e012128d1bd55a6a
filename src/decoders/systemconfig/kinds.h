#ifndef DECODERS_SYSTEMCONFIG_KINDS_H
#define DECODERS_SYSTEMCONFIG_KINDS_H

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

/// Writes the elements of one kind of event. Returns the summary, which is a part of the record or
/// a fixed text.
using WriteKind = std::string_view (*)(SafeBody& body, const SccPayload& event);

std::string_view writeText(SafeBody& body, const SccPayload& event);
std::string_view writeDump(SafeBody& body, const SccPayload& event);
std::string_view writeSharedMemory(SafeBody& body, const SccPayload& event);
std::string_view writeLock(SafeBody& body, const SccPayload& event);
std::string_view writeMessage(SafeBody& body, const SccPayload& event);
std::string_view writeRequest(SafeBody& body, const SccPayload& event);
std::string_view writeResponse(SafeBody& body, const SccPayload& event);
std::string_view writeTimer(SafeBody& body, const SccPayload& event);
std::string_view writeLockManager(SafeBody& body, const SccPayload& event);
std::string_view writePersistentMemory(SafeBody& body, const SccPayload& event);

}  // namespace mpuevent::systemconfig

#endif

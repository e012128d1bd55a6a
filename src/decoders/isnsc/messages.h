#ifndef DECODERS_ISNSC_MESSAGES_H
#define DECODERS_ISNSC_MESSAGES_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "event/RecordView.h"
#include "event/SafeBody.h"

namespace mpuevent::isnsc {

/// The payload of an iSNS client's record, with the message that it carries.
class IsnsPayload {
 public:
  static constexpr std::uint32_t icsCategory = 1;
  static constexpr std::uint32_t textCategory = 3;

  explicit IsnsPayload(RecordView bytes) : bytes_(bytes) {}

  std::uint32_t category() const { return bytes_.u32(0); }
  std::uint32_t event() const { return bytes_.u32(4); }
  std::uint32_t reason() const { return bytes_.u32(8); }
  std::string_view module() const { return bytes_.text(moduleAt, 8); }
  std::uint32_t line() const { return bytes_.u32(lineAt); }
  RecordView message() const { return bytes_.from(24); }

  /// Writes the elements `Module` and `Line`, with which each kind of message begins.
  void writeOrigin(SafeBody& body) const;

 private:
  static constexpr std::size_t moduleAt = 12;
  static constexpr std::size_t lineAt = 20;

  RecordView bytes_;
};

/// The Summary of an ICS message.
std::string_view icsSummary(const IsnsPayload& payload);
/// Writes a trace line if the type of the message is unknown.
void traceUnknownType(const IsnsPayload& payload);
/// Writes the group of an ICS message; of a message of unknown type it has no more than the origin.
void writeIcsMessage(SafeBody& body, const IsnsPayload& payload);

/// The Summary of a text message.
std::string_view textSummary(const IsnsPayload& payload);
/// Writes the group of a text message: as many arguments as it claims and holds.
void writeTextMessage(SafeBody& body, const IsnsPayload& payload);

}  // namespace mpuevent::isnsc

#endif

#ifndef MPUEVENT_SUPPORT_DECODEDEVENT_H
#define MPUEVENT_SUPPORT_DECODEDEVENT_H

#include <MPUEvent/Quarn_Event.h>

#include <array>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace mpuevent::support {

/// The record sent through an envelope: what `create_Quarn_Event` gives for it. Throws
/// `std::length_error` for a record longer than a message can carry.
std::unique_ptr<Pegasus::Quarn_Event> decode(std::string_view record);

/// The text in UTF-8; NULs stay in it, and half a surrogate pair becomes three bytes.
std::string utf8(const Pegasus::String& text);

/// Everything that the accessors of an event tell.
struct EventFields {
  /// Enclosure serial, controller serial, source, category, event id, summary, body.
  std::array<std::string, 7> texts;
  /// Slot, log instance, sequence id, timestamp, event type.
  std::array<unsigned int, 5> numbers;

  std::size_t textSize() const;
  const std::string& eventId() const { return texts[4]; }
  const std::string& summary() const { return texts[5]; }
  const std::string& body() const { return texts[6]; }

  bool operator==(const EventFields&) const = default;
};

EventFields fieldsOf(const Pegasus::Quarn_Event& event);

/// Event id, summary, body: what a decoder makes of its payload.
using Texts = std::array<std::string, 3>;

Texts textsOf(const Pegasus::Quarn_Event& event);

std::ostream& operator<<(std::ostream& out, const EventFields& fields);

}  // namespace mpuevent::support

#endif

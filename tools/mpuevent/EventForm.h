#ifndef MPUEVENT_TOOL_EVENTFORM_H
#define MPUEVENT_TOOL_EVENTFORM_H

#include <MPUEvent/Quarn_Event.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace mpuevent::tool {

/// One event and where it came from. Everything is the caller's.
struct DecodedEvent {
  std::uint64_t index;                    ///< in its file, from 0
  std::uint64_t offset;                   ///< of its message or record in the file
  std::span<const unsigned char> record;  ///< 152 bytes or more
  std::string_view decoder;               ///< name of the event's class
  Pegasus::Quarn_Event& event;
};

/// A way to write events, one after another.
class EventForm {
 public:
  EventForm() = default;
  EventForm(const EventForm&) = delete;
  EventForm& operator=(const EventForm&) = delete;
  virtual ~EventForm() = default;

  /// Appends the event to `to`.
  virtual void write(const DecodedEvent& decoded, std::string& to) = 0;
};

/// A block of labelled lines for people, blank lines between the blocks. `coloured` is for
/// terminals.
std::unique_ptr<EventForm> makeTextForm(bool coloured);
/// The event's `str()` and a line end.
std::unique_ptr<EventForm> makeLineForm();
/// One JSON object a line.
std::unique_ptr<EventForm> makeJsonForm();

}  // namespace mpuevent::tool

#endif

#ifndef MPUEVENT_TOOL_EVENTFORM_H
#define MPUEVENT_TOOL_EVENTFORM_H

#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/Quarn_Event.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Dates.h"
#include "TextBuffer.h"

namespace mpuevent::tool {

/// One event and where it came from. Everything is the caller's.
struct DecodedEvent {
  std::optional<std::string_view> file;   ///< its name as given, in any bytes; none: standard input
  std::uint64_t index;                    ///< in its file, from 0
  std::uint64_t offset;                   ///< of its message or record in the file
  std::span<const unsigned char> record;  ///< 152 bytes or more
  std::string_view decoder;               ///< name of the event's class
  Pegasus::Quarn_Event& event;
  const Pegasus::FieldRecorder* fields;  ///< what was recorded of the event; null: nothing
  std::optional<Moment> time = {};       ///< what the timestamp stands for; none: not known
};

/// When the payload of a record is shown in hex.
enum class ShowPayload {
  automatic,  ///< when the decoder shows nothing of it, or it is not as long as the record says
  always,
  never,
};

/// A way to write events, one after another.
class EventForm {
 public:
  EventForm() = default;
  EventForm(const EventForm&) = delete;
  EventForm& operator=(const EventForm&) = delete;
  virtual ~EventForm() = default;

  /// Appends what comes before all events.
  virtual void begin(TextBuffer& /*to*/) {}
  /// The events that follow are those of the file named, one of several.
  virtual void beginFile(std::string_view /*name*/) {}
  /// Appends the event to `to`.
  virtual void write(const DecodedEvent& decoded, TextBuffer& to) = 0;
  /// Appends what comes behind all events.
  virtual void end(TextBuffer& /*to*/) {}
};

/// A block of labelled lines for people, blank lines between the blocks, and a heading a file.
/// `coloured` is for terminals.
std::unique_ptr<EventForm> makeTextForm(ShowPayload payload, bool coloured);
/// A line of time, slot, type, source, event id and Summary for people, cut at `width` columns (0:
/// not cut), and coloured by the type.
std::unique_ptr<EventForm> makeShortForm(std::size_t width, bool coloured);
/// The event's `str()` and a line end; control characters in it are shown as in text unless it is
/// to be `exact`.
std::unique_ptr<EventForm> makeLineForm(bool exact);

/// What JSON is to hold beside what it always has.
struct JsonLayout {
  ShowPayload payload = ShowPayload::automatic;
  bool array = false;  ///< one array of all objects
  bool body = true;
  bool fields = true;
  std::string columns = {};  ///< with commas: these alone, in their order; empty: all
};

/// One JSON object a line.
std::unique_ptr<EventForm> makeJsonForm(const JsonLayout& layout);

struct CsvLayout {
  ShowPayload payload = ShowPayload::automatic;
  std::string columns = {};  ///< with commas; empty: all but the elements of the Body
  bool header = true;        ///< the names of the columns come first
  bool dated = false;        ///< the dates of events are known
  bool visible = false;      ///< control characters are made visible, for terminals
};

/// A line of comma-separated values an event, as of RFC 4180; a fact that an event has not is an
/// empty one.
std::unique_ptr<EventForm> makeCsvForm(const CsvLayout& layout);

}  // namespace mpuevent::tool

#endif

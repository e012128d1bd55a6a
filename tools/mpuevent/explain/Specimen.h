#ifndef MPUEVENT_TOOL_EXPLAIN_SPECIMEN_H
#define MPUEVENT_TOOL_EXPLAIN_SPECIMEN_H

#include <CMAP/CMAPMessageHeader.h>
#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/Quarn_Event.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "log/framing/LogReader.h"

namespace mpuevent::tool {

/// What changes in an event when bytes of its record do.
struct Effect {
  /// Names of what reads differently, as places in Specimen::names(); ascending, each once.
  std::vector<std::uint32_t> shown;
  /// The elements are others, or in another order, or the class or the event id is another.
  bool decides = false;
  bool summary = false;

  bool any() const { return decides || summary || !shown.empty(); }
  void add(std::uint32_t name);
  void add(const Effect& other);
  bool operator==(const Effect&) const = default;
};

/// A record, the event that it decodes to, and the way to see what becomes of that event when bytes
/// of the record change.
class Specimen {
 public:
  /// Keeps a copy of the record.
  explicit Specimen(const log::LogUnit& unit);

  /// The message header (zeros if the record had none) and the record: for the caller to change
  /// bytes, and to change them back.
  std::span<unsigned char> bytes() { return bytes_; }

  /// Adds to `effect` what the event of the bytes as they are now differs in from the first one.
  void compare(Effect& effect);

  /// What the numbers of an effect stand for: header fields by their JSON keys; elements by theirs,
  /// each behind those of the groups around it ("Object.Class"), and with its place among several
  /// of the same name, from 0 ("GPR[31]").
  std::vector<std::string> names() const;

  /// About how long one comparison takes. It depends on the bytes alone, not on the machine.
  std::uint64_t nanoseconds() const;

 private:
  static constexpr std::size_t headerTexts = 4;
  static constexpr std::size_t headerNumbers = 8;

  /// What an event tells, but for the elements of its Body.
  struct Facts {
    std::string_view decoder;  ///< empty: there is no event
    std::array<Pegasus::String, headerTexts> texts;
    std::array<std::uint32_t, headerNumbers> numbers{};
    Pegasus::String eventId;
    Pegasus::String summary;
    Pegasus::String body;
  };

  Facts decode() const;
  bool compareWithinElement(const Pegasus::String& body, Effect& effect) const;
  void compareElements(Effect& effect) const;

  std::vector<unsigned char> bytes_;
  Facts facts_;
  std::vector<Pegasus::RecordedField> elements_;
};

}  // namespace mpuevent::tool

#endif

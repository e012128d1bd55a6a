#ifndef DECODERS_IOMGR_EVENTCLASSES_H
#define DECODERS_IOMGR_EVENTCLASSES_H

#include <MPUEvent/Quarn_Event.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "decoders/iomgr/records.h"
#include "event/Tables.h"

namespace mpuevent::iomgr {

/// The payload of the I/O manager's and of MIP's events: what happened, by class and by number in
/// that class, and a data area with what the event carries.
class EventPayload : public RecordView {
 public:
  static constexpr std::size_t dataStart = 20;

  explicit EventPayload(RecordView bytes) : RecordView(bytes) {}

  /// For a payload whose length nobody tells: it is trusted to hold whatever is read of it.
  static EventPayload trusting(const void* payload) { return EventPayload(unbounded(payload)); }

  std::uint32_t eventClass() const { return u32(0); }
  std::uint32_t eventNumber() const { return u32(4); }
  std::uint32_t dataLength() const { return u32(16); }
  DataArea dataArea() const { return {from(dataStart), dataLength()}; }
};

/// An event's name and NULs behind it. No name is as long as that; the text of an assert may be.
using NameBuffer = std::array<char, 128>;

/// Writes the text of an assert. It may overwrite the event's name, which becomes the
/// Summary.
using TextWriter = void(BodyWriter& body, const DataArea& data, NameBuffer& name);

/// What an event carries: up to two records, the second directly behind the first, or a text.
struct Carried {
  // NOLINTNEXTLINE(google-explicit-constructor): a row of events just names its record.
  constexpr Carried(RecordKind only) : first(only) {}

  RecordKind first;
  RecordKind second = RecordKind::nothing;
};

constexpr Carried operator+(RecordKind first, RecordKind second) {
  Carried both = first;
  both.second = second;
  return both;
}

struct EventRow {
  struct Packed {
    TextBefore name;
    std::uint16_t number;
    Carried carried;
  };
  constexpr Packed packed(auto place) const { return {place(name), number, carried}; }

  std::uint16_t number;
  std::string_view name;
  Carried carried;
};

using Events = std::span<const EventRow::Packed>;

/// The number of a class's last row, if that stands for every number without a row of its own.
inline constexpr std::uint16_t anyNumber = 0xFFFF;

struct EventClass {
  std::uint16_t number;
  std::string_view eventId;
  std::span<const EventRow> events;  ///< empty if the class shows nothing
};

/// The classes of a decoder as the library holds them: the events of all of them are one table.
struct ClassTable {
  struct Row {
    TextBefore eventId;
    std::uint16_t number;
    std::uint16_t firstEvent;
    std::uint16_t eventCount;
  };

  std::span<const Row> rows;
  Events events;
};

namespace detail {

struct ClassRow {
  using Packed = ClassTable::Row;
  constexpr Packed packed(auto place) const {
    return {place(eventClass.eventId), eventClass.number, firstEvent,
            static_cast<std::uint16_t>(eventClass.events.size())};
  }

  EventClass eventClass;
  std::uint16_t firstEvent;
};

/// How many events the first `count` of the classes have.
constexpr std::size_t eventCount(std::span<const EventClass> classes, std::size_t count) {
  std::size_t events = 0;
  for (const EventClass& eventClass : classes.first(count)) events += eventClass.events.size();
  return events;
}

constexpr const EventRow& eventAt(std::span<const EventClass> classes, std::size_t index) {
  std::size_t number = 0;
  for (; index >= classes[number].events.size(); ++number) index -= classes[number].events.size();
  return classes[number].events[index];
}

template <const auto& classes>
inline constexpr auto allEvents = []<std::size_t... i>(std::index_sequence<i...>) {
  return std::array{eventAt(classes, i)...};
}
(std::make_index_sequence<eventCount(classes, std::size(classes))>());

template <const auto& classes>
inline constexpr auto classRows = []<std::size_t... i>(std::index_sequence<i...>) {
  return std::array{
      ClassRow{classes[i], static_cast<std::uint16_t>(eventCount(classes, i))}
      ...
  };
}
(std::make_index_sequence<std::size(classes)>());

}  // namespace detail

template <const auto& classes>
constexpr ClassTable packedClasses() {
  return {std::span<const ClassTable::Row>(packed<detail::classRows<classes>>),
          Events(packed<detail::allEvents<classes>>)};
}

/// A class that was looked up.
struct FoundClass {
  std::string_view eventId;
  Events events;
};

std::optional<FoundClass> classOf(const ClassTable& classes, std::uint32_t number);

/// Whether the classes, and the events of each, have the order that lookups need: for a
/// `static_assert`.
constexpr bool classesRise(std::span<const EventClass> classes) {
  return rising(classes, &EventClass::number) &&
         std::all_of(classes.begin(), classes.end(), [](const EventClass& eventClass) {
           return rising(eventClass.events, &EventRow::number);
         });
}

/// Writes the name of the payload's event, as `Request_Type`, and what the event carries. Returns
/// the Summary. An event that is none of `events` writes nothing and has an empty Summary.
Pegasus::String writeEvent(BodyWriter& body, const EventPayload& payload, Events events,
                           TextWriter* writeFile);

/// Copies an assert's text over the event's name and returns what stands there then. No NUL is
/// copied behind the text, so that the rest of the name shows behind a shorter text: the output
/// wants it so.
std::string_view overwriteName(const DataArea& data, NameBuffer& name);

// What the exported functions write that are for one class or one record. They trust that all a
// payload or record should have is there. A null pointer writes nothing.

/// The payload's event as one of `events`, whatever class the payload names. Sets Summary.
void writeTrusted(BodyWriter& body, Pegasus::Quarn_Event& event, Events events,
                  TextWriter* writeFile, const void* payload);
/// A record by itself.
void writeTrusted(BodyWriter& body, RecordKind kind, const void* record);

// The events that both decoders have.

inline constexpr EventRow evlEvents[] = {
    {anyNumber, "EVL Error", RecordKind::nothing},
};
inline constexpr EventRow mathEvents[] = {
    {anyNumber, "MATH Error", RecordKind::nothing},
};

}  // namespace mpuevent::iomgr

#endif

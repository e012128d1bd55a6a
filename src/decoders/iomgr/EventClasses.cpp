#include "decoders/iomgr/EventClasses.h"

#include <algorithm>

#include "event/Text.h"

namespace mpuevent::iomgr {

namespace {

const EventRow::Packed* eventOf(Events events, std::uint32_t number) {
  const EventRow::Packed* row = findRow(events, &EventRow::Packed::number, number);
  if (row != nullptr || events.empty() || events.back().number != anyNumber) return row;
  return &events.back();
}

}  // namespace

std::optional<FoundClass> classOf(const ClassTable& classes, std::uint32_t number) {
  const ClassTable::Row* row = findRow(classes.rows, &ClassTable::Row::number, number);
  if (row == nullptr) return std::nullopt;
  return FoundClass{row->eventId.view(), classes.events.subspan(row->firstEvent, row->eventCount)};
}

Pegasus::String writeEvent(BodyWriter& body, const EventPayload& payload, Events events,
                           TextWriter* writeFile) {
  const EventRow::Packed* event = eventOf(events, payload.eventNumber());
  if (event == nullptr) return {};
  const std::string_view eventName = event->name.view();
  body.element("Request_Type", eventName);

  const DataArea data = payload.dataArea();
  const auto [first, second] = event->carried;
  if (first == RecordKind::file) {
    NameBuffer name{};
    eventName.copy(name.data(), name.size() - 1);
    writeFile(body, data, name);
    return toString(name.data());
  }
  if (first != RecordKind::nothing) writeRecord(body, data, 0, layoutOf(first));
  if (second != RecordKind::nothing) {
    writeRecord(body, data, layoutOf(first).size, layoutOf(second));
  }
  return asciiString(eventName);
}

std::string_view overwriteName(const DataArea& data, NameBuffer& name) {
  const std::size_t length = std::min<std::size_t>(data.length, name.size() - 1);
  const std::string_view text = data.bytes(0, length);
  std::copy(text.begin(), text.end(), name.begin());
  return name.data();
}

void writeTrusted(BodyWriter& body, Pegasus::Quarn_Event& event, Events events,
                  TextWriter* writeFile, const void* payload) {
  if (payload == nullptr) return;
  event.setSummary(writeEvent(body, EventPayload::trusting(payload), events, writeFile));
}

void writeTrusted(BodyWriter& body, RecordKind kind, const void* record) {
  const RecordLayout& layout = layoutOf(kind);
  writeRecord(body, DataArea(RecordView(record, layout.size), 0), 0, layout);
}

}  // namespace mpuevent::iomgr

#include "decoders/iomgr/EventClasses.h"

#include <algorithm>

#include "event/Text.h"

namespace mpuevent::iomgr {

namespace {

const EventRow* eventOf(std::span<const EventRow> events, std::uint32_t number) {
  const EventRow* row = findRow(events, &EventRow::number, number);
  if (row != nullptr || events.empty() || events.back().number != anyNumber) return row;
  return &events.back();
}

}  // namespace

const EventClass* classOf(std::span<const EventClass> classes, std::uint32_t number) {
  return findRow(classes, &EventClass::number, number);
}

Pegasus::String writeEvent(BodyWriter& body, const EventPayload& payload,
                           std::span<const EventRow> events) {
  const EventRow* event = eventOf(events, payload.eventNumber());
  if (event == nullptr) return {};
  body.element("Request_Type", event->name);

  NameBuffer name{};
  event->name.copy(name.data(), name.size() - 1);
  const DataArea data = payload.dataArea();
  const auto& [first, second, writeText] = event->carried;
  if (first != nullptr) writeRecord(body, data, 0, *first);
  if (second != nullptr) writeRecord(body, data, first->size, *second);
  if (writeText != nullptr) writeText(body, data, name);
  return toString(name.data());
}

std::string_view overwriteName(const DataArea& data, NameBuffer& name) {
  const std::size_t length = std::min<std::size_t>(data.length, name.size() - 1);
  const std::string_view text = data.bytes(0, length);
  std::copy(text.begin(), text.end(), name.begin());
  return name.data();
}

BodyWriter classBody(Separator separator, Pegasus::Quarn_Event& event,
                     std::span<const EventRow> events, const void* payload) {
  BodyWriter body(separator);
  if (payload == nullptr) return body;
  event.setSummary(writeEvent(body, EventPayload::trusting(payload), events));
  return body;
}

BodyWriter recordBody(Separator separator, const RecordLayout& layout, const void* record) {
  BodyWriter body(separator);
  writeRecord(body, DataArea(RecordView(record, layout.size), 0), 0, layout);
  return body;
}

}  // namespace mpuevent::iomgr

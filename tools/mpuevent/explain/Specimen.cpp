#include "explain/Specimen.h"

#include <CMAP/CMAPOperationFailedException.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>

#include "EventDecoder.h"
#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

namespace {

using Pegasus::RecordedField;
using Pegasus::String;

// In the order of the header's bytes.
constexpr std::string_view kHeaderNames[] = {
    "enclosure_serial", "controller_serial", "controller_slot",  "log_instance",
    "sequence_id",      "timestamp",         "struct_length",    "source",
    "event_type",       "category",          "event_id_version", "event_code"};
constexpr std::uint32_t kTextNames[] = {0, 1, 7, 9};
constexpr std::uint32_t kNumberNames[] = {2, 3, 4, 5, 6, 8, 10, 11};
constexpr std::uint32_t kFirstElement = std::size(kHeaderNames);

std::size_t valueEnd(const RecordedField& element) {
  return std::size_t{element.valueStart} + element.valueLength;
}

const Pegasus::Char16* unitsOf(const String& text, std::size_t at) {
  return text.getChar16Data() + at;
}

bool sameUnits(const String& a, std::size_t atA, const String& b, std::size_t atB,
               std::size_t count) {
  return std::memcmp(unitsOf(a, atA), unitsOf(b, atB), count * sizeof(Pegasus::Char16)) == 0;
}

// How many units two texts have in common at their beginning, of `limit` at most.
std::size_t commonBegin(const String& a, const String& b, std::size_t limit) {
  constexpr std::size_t block = 64;
  std::size_t at = 0;
  while (limit - at >= block && sameUnits(a, at, b, at, block)) at += block;
  while (at < limit && *unitsOf(a, at) == *unitsOf(b, at)) ++at;
  return at;
}

std::size_t commonEnd(const String& a, const String& b, std::size_t limit) {
  constexpr std::size_t block = 64;
  std::size_t count = 0;
  while (limit - count >= block &&
         sameUnits(a, a.size() - count - block, b, b.size() - count - block, block)) {
    count += block;
  }
  while (count < limit && *unitsOf(a, a.size() - count - 1) == *unitsOf(b, b.size() - count - 1)) {
    ++count;
  }
  return count;
}

bool sameKeys(const String& bodyA, const RecordedField& a, const String& bodyB,
              const RecordedField& b) {
  return a.depth == b.depth && a.isGroup == b.isGroup && a.keyLength == b.keyLength &&
         sameUnits(bodyA, a.keyStart, bodyB, b.keyStart, a.keyLength);
}

bool sameValues(const String& bodyA, const RecordedField& a, const String& bodyB,
                const RecordedField& b) {
  return a.valueLength == b.valueLength &&
         sameUnits(bodyA, a.valueStart, bodyB, b.valueStart, a.valueLength);
}

}  // namespace

void Effect::add(std::uint32_t name) {
  const auto place = std::lower_bound(shown.begin(), shown.end(), name);
  if (place == shown.end() || *place != name) shown.insert(place, name);
}

void Effect::add(const Effect& other) {
  for (const std::uint32_t name : other.shown) add(name);
  decides = decides || other.decides;
  summary = summary || other.summary;
}

Specimen::Specimen(const log::LogUnit& unit) {
  const EventDecoder::MessageHeader header = EventDecoder::messageHeader(unit);
  bytes_.assign(header.begin(), header.end());
  bytes_.insert(bytes_.end(), unit.record.begin(), unit.record.end());
  const Pegasus::FieldRecorder recorder;
  facts_ = decode();
  elements_.assign(recorder.begin(), recorder.end());
}

Specimen::Facts Specimen::decode() const {
  const auto record = std::span(bytes_).subspan(log::messageHeaderSize);
  EventDecoder::MessageHeader header;
  std::copy_n(bytes_.begin(), header.size(), header.begin());
  Facts facts;
  std::unique_ptr<Pegasus::Quarn_Event> event;
  try {
    event = EventDecoder::decode(header, record);
  } catch (const Pegasus::CMAPOperationFailedException&) {
    // The header promises more bytes than there are.
  }
  if (event == nullptr) return facts;
  const Record fields = log::recordOf(record);
  facts.decoder = EventDecoder::className(fields.source());
  facts.texts = {event->getEnclosureSerialNumber(), event->getControllerSerialNumber(),
                 event->getSource(), event->getCategory()};
  facts.numbers = {event->getControllerSlotID(), event->getEventLogInstanceNumber(),
                   event->getSequenceID(),       event->getTimestamp(),
                   fields.structLength(),        std::as_const(*event).getEventType(),
                   fields.idVersion(),           fields.id()};
  facts.eventId = event->getEventID();
  facts.summary = event->getSummary();
  facts.body = event->getBody();
  return facts;
}

void Specimen::compare(Effect& effect) {
  const Facts now = decode();
  if (now.decoder.empty()) {
    effect.decides = true;
    return;
  }
  for (std::size_t i = 0; i < headerTexts; ++i) {
    if (!String::equal(now.texts[i], facts_.texts[i])) effect.add(kTextNames[i]);
  }
  for (std::size_t i = 0; i < headerNumbers; ++i) {
    if (now.numbers[i] != facts_.numbers[i]) effect.add(kNumberNames[i]);
  }
  effect.decides = effect.decides || now.decoder != facts_.decoder ||
                   !String::equal(now.eventId, facts_.eventId);
  effect.summary = effect.summary || !String::equal(now.summary, facts_.summary);
  if (!String::equal(now.body, facts_.body) && !compareWithinElement(now.body, effect)) {
    compareElements(effect);
  }
}

// The quick way, which nearly all changes allow: what is not the same lies within one value, and no
// tag came or went.
bool Specimen::compareWithinElement(const String& body, Effect& effect) const {
  const std::size_t shorter = std::min(body.size(), facts_.body.size());
  const std::size_t begin = commonBegin(body, facts_.body, shorter);
  const std::size_t behind = commonEnd(body, facts_.body, shorter - begin);
  const std::size_t end = facts_.body.size() - behind;
  auto element = std::upper_bound(
      elements_.begin(), elements_.end(), begin,
      [](std::size_t at, const RecordedField& field) { return at < field.valueStart; });
  if (element == elements_.begin()) return false;
  --element;
  if (element->isGroup || end > valueEnd(*element)) return false;
  const Pegasus::Char16* const changed = unitsOf(body, begin);
  const Pegasus::Char16* const changedEnd = unitsOf(body, body.size() - behind);
  if (std::find(changed, changedEnd, Pegasus::Char16('<')) != changedEnd) return false;
  effect.add(kFirstElement + static_cast<std::uint32_t>(element - elements_.begin()));
  return true;
}

// Decodes once more, with the elements recorded.
void Specimen::compareElements(Effect& effect) const {
  const Pegasus::FieldRecorder recorder;
  const Facts now = decode();
  const auto [before, after] =
      std::mismatch(elements_.begin(), elements_.end(), recorder.begin(), recorder.end(),
                    [&](const RecordedField& a, const RecordedField& b) {
                      return sameKeys(facts_.body, a, now.body, b);
                    });
  effect.decides = effect.decides || before != elements_.end() || after != recorder.end();
  // Where the keys part, it is another layout.
  const auto count = static_cast<std::uint32_t>(before - elements_.begin());
  for (std::uint32_t i = 0; i < count; ++i) {
    if (!elements_[i].isGroup &&
        !sameValues(facts_.body, elements_[i], now.body, recorder.begin()[i])) {
      effect.add(kFirstElement + i);
    }
  }
}

std::uint64_t Specimen::nanoseconds() const { return 1500 + bytes_.size() + facts_.body.size(); }

std::vector<std::string> Specimen::names() const {
  std::vector<std::string> names(std::begin(kHeaderNames), std::end(kHeaderNames));
  std::vector<std::string> groups;
  std::unordered_map<std::string, std::size_t> counts;
  Utf8Text key;
  for (const RecordedField& element : elements_) {
    groups.resize(element.depth);
    std::string name = groups.empty() ? std::string() : groups.back() + '.';
    name +=
        std::string_view(key.assign(facts_.body.subString(element.keyStart, element.keyLength)));
    if (element.isGroup) {
      groups.push_back(name);
    } else {
      ++counts[name];
    }
    names.push_back(std::move(name));
  }
  std::unordered_map<std::string, std::size_t> seen;
  for (std::size_t i = 0; i < elements_.size(); ++i) {
    std::string& name = names[kFirstElement + i];
    if (elements_[i].isGroup || counts[name] == 1) continue;
    const std::size_t place = seen[name]++;
    name += '[' + std::to_string(place) + ']';
  }
  return names;
}

}  // namespace mpuevent::tool

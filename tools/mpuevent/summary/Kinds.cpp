#include "summary/Kinds.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "event/HexDigits.h"
#include "forms/Utf8.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

namespace {

// Length, source, type, category, version and id: what a decoder goes by, beside the payload.
constexpr std::size_t kCodesAt = Record::structLengthAt;

std::uint64_t word(const unsigned char* at) {
  std::uint64_t word = 0;
  std::memcpy(&word, at, sizeof word);
  return word;
}

// Two records of the same hash and different texts would be taken for one kind; in 64 bits they
// don't meet by chance.
std::uint64_t hash(std::span<const unsigned char> bytes) {
  constexpr std::uint64_t factor = 0x9E3779B97F4A7C15;
  std::uint64_t hash = bytes.size();
  const auto mix = [&hash](std::uint64_t word) {
    hash = (hash ^ word) * factor;
    hash ^= hash >> 29;
  };
  std::size_t at = 0;
  for (; at + sizeof(std::uint64_t) <= bytes.size(); at += sizeof(std::uint64_t)) {
    mix(word(&bytes[at]));
  }
  for (; at < bytes.size(); ++at) mix(bytes[at]);
  return hash;
}

// A decoder without a layout for an event id shows the payload in hex and nothing else.
bool isUndecoded(std::string_view body, std::string_view summary) {
  constexpr std::string_view begin = "<Hex>";
  constexpr std::string_view end = "</Hex>";
  if (summary.starts_with("Unhandled Event by ")) return true;
  if (!body.starts_with(begin) || !body.ends_with(end)) return false;
  return body.substr(begin.size(), body.size() - begin.size() - end.size())
             .find_first_not_of(upperHexDigits) == std::string_view::npos;
}

}  // namespace

void Kinds::add(const log::LogUnit& unit) {
  const std::uint32_t kind = kindOf(unit);
  if (kind == none) {
    ++leftOut_;
  } else {
    ++kinds_[kind].events;
    kinds_[kind].time.add(log::recordOf(unit.record).timestamp());
  }
}

std::uint32_t Kinds::kindOf(const log::LogUnit& unit) {
  const Record record = log::recordOf(unit.record);
  const std::uint64_t codes = std::uint64_t{record.u32(Record::sourceAt)} << 16 | record.id();
  // Of each source one event is decoded in any case.
  if (kindsByBytes_.size() < mostDecodes || sources_[record.source()].name.empty()) {
    const auto [known, isNew] =
        kindsByBytes_.try_emplace(hash(unit.record.subspan(kCodesAt)), none);
    if (isNew) {
      known->second = decode(unit);
      const auto [same, first] = codes_.try_emplace(codes, Codes{known->second});
      if (!first && same->second.kind != known->second) same->second.several = true;
    }
    return known->second;
  }
  const auto known = codes_.find(codes);
  return known == codes_.end() || known->second.several ? none : known->second.kind;
}

std::uint32_t Kinds::decode(const log::LogUnit& unit) {
  const std::unique_ptr<Pegasus::Quarn_Event> event = EventDecoder::decode(unit);
  const Record record = log::recordOf(unit.record);
  Source& source = sources_[record.source()];
  if (source.name.empty()) {
    Utf8Text name;
    source.name = std::string_view(name.assign(event->getSource()));
    source.decoder = EventDecoder::className(record.source());
  }
  Utf8Text body;
  Utf8Text summary;
  if (source.decoder == "Quarn_Event" ||
      isUndecoded(body.assign(event->getBody()), summary.assign(event->getSummary()))) {
    source.undecodedCodes.insert(record.id());
  }
  return kindOfTexts(unit, *event);
}

std::uint32_t Kinds::kindOfTexts(const log::LogUnit& unit, const Pegasus::Quarn_Event& event) {
  const Record record = log::recordOf(unit.record);
  KindSummary kind;
  kind.sourceCode = record.source();
  kind.source = sources_[record.source()].name;
  kind.type = record.type();
  kind.eventCode = record.id();
  kind.eventId = firmwareText_(event.getEventID());
  kind.summary = firmwareText_(event.getSummary());
  const std::string texts =
      std::to_string(kind.sourceCode) + '\n' + kind.eventId + '\0' + kind.summary;
  const auto known = kindsByTexts_.find(texts);
  if (known != kindsByTexts_.end()) return known->second;
  if (kinds_.size() == mostKinds) return none;
  const auto number = static_cast<std::uint32_t>(kinds_.size());
  kinds_.push_back(std::move(kind));
  kindsByTexts_.emplace(texts, number);
  return number;
}

std::vector<KindSummary> Kinds::byFrequency() const {
  std::vector<KindSummary> kinds = kinds_;
  std::stable_sort(kinds.begin(), kinds.end(),
                   [](const KindSummary& a, const KindSummary& b) { return a.events > b.events; });
  return kinds;
}

void Kinds::describe(SourceSummary& source) const {
  const Source& known = sources_[source.code];
  source.name = known.name;
  source.decoder = known.decoder;
  source.undecodedCodes.assign(known.undecodedCodes.begin(), known.undecodedCodes.end());
}

}  // namespace mpuevent::tool

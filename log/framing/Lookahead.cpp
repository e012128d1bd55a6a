#include "log/framing/Lookahead.h"

#include "log/framing/Confirmation.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace mpuevent::log {

namespace {

constexpr std::size_t kSmallestMessage = messageHeaderSize + Record::headerSize;
// A total length counts modulo this.
constexpr std::size_t kTotalLengths = 0x10000;
// So many zeros behind a unit are no accident.
constexpr std::size_t kBlank = Lookahead::longestLook;
// Where units follow one another for so long, the first one is no accident.
constexpr int kLongChain = 8;

Record recordAt(const unsigned char* bytes) {
  return {reinterpret_cast<const Pegasus::EmpEvLogMsg_s*>(bytes), 0};
}

// Whether, by the sequence ids, `to` may be the next of `from`'s log.
bool mayComeNext(const Record& from, const Record& to) {
  return from.logInstance() == to.logInstance() && movesOn(from.sequenceId(), to.sequenceId());
}

// How many records lie between two of a log, by their sequence ids.
std::uint32_t missingBetween(const Record& from, const Record& to) {
  return to.sequenceId() - from.sequenceId() - 1;
}

// Whether so many may stand within the length that a record gives.
bool mayHaveSwallowed(std::size_t length, std::uint32_t missing) {
  return missing != 0 && missing <= length / Record::headerSize;
}

}  // namespace

Record Lookahead::recordOf(const Candidate& unit) const {
  return recordAt(window_.at(unit.at + (unit.form == LogForm::messages ? messageHeaderSize : 0)));
}

void Lookahead::remember(const Candidate& unit) {
  form_ = unit.form;
  ++units_;
  if (unit.verdict == Verdict::sound) ++soundUnits_;
  if (unit.verdict > Verdict::possible) profile_.remember(recordOf(unit), unit.writer);
}

Candidate Lookahead::message(std::size_t at) {
  const unsigned char* bytes = window_.at(at);
  const Record record = recordAt(bytes + messageHeaderSize);
  const std::size_t total = RecordView(bytes, messageHeaderSize).u16(totalLengthAt);
  Candidate unit{Verdict::none, LogForm::messages, at, total,
                 kSmallestMessage + record.structLength()};
  if (total < messageHeaderSize && total + kTotalLengths == unit.lengthFromRecord) {
    unit.length = unit.lengthFromRecord;
  }
  if (unit.agrees()) {
    const Verdict header = judgeHeader(record, profile_);
    unit.verdict = header >= Verdict::byText    ? Verdict::sound
                   : header == Verdict::byCodes ? Verdict::byText
                                                : Verdict::byCodes;
  } else if (form_ != LogForm::records && mayBeHeader(record.data(), profile_)) {
    if (judgeHeader(record, profile_) == Verdict::sound) unit.verdict = Verdict::byCodes;
  }
  return unit;
}

Candidate Lookahead::record(std::size_t at) const {
  const Record record = recordAt(window_.at(at));
  const std::size_t length = Record::headerSize + record.structLength();
  return {judgeHeader(record, profile_), LogForm::records, at, length, length};
}

Candidate Lookahead::peekUnit(std::size_t at, LogForm form) {
  const std::size_t needed =
      at + (form == LogForm::messages ? kSmallestMessage : Record::headerSize);
  if (window_.hold(needed) < needed) return {};
  return form == LogForm::messages ? message(at) : record(at);
}

Candidate Lookahead::peekUnit(std::size_t at) {
  if (wanted_ != LogForm::automatic) return peekUnit(at, wanted_);
  const LogForm first = form_ == LogForm::records ? LogForm::records : LogForm::messages;
  const LogForm second = first == LogForm::records ? LogForm::messages : LogForm::records;
  const Candidate one = peekUnit(at, first);
  if (one.verdict == Verdict::sound) return one;
  const Candidate other = peekUnit(at, second);
  return other.verdict > one.verdict ? other : one;
}

bool Lookahead::goesOn(const Candidate& unit, Candidate& next) const {
  if (unit.verdict != Verdict::sound || unit.form != form_ || !unit.agrees() ||
      !window_.inView(unit.end() + kSmallestMessage)) {
    return false;
  }
  const std::size_t header = unit.form == LogForm::messages ? messageHeaderSize : 0;
  const unsigned char* bytes = window_.at(unit.end());
  const Record record = recordAt(bytes + header);
  const std::size_t length = header + Record::headerSize + record.structLength();
  if (header != 0 && RecordView(bytes, messageHeaderSize).u16(totalLengthAt) != length)
    return false;
  if (header == 0 && mayHaveSwallowed(unit.length, missingBetween(recordOf(unit), record)))
    return false;
  const FoundWriter writer = profile_.find(record);
  if (!isOfKnownWriter(record, profile_, writer)) return false;
  next = {Verdict::sound, unit.form, unit.end(), length, length, writer};
  return true;
}

bool Lookahead::follows(const Candidate& unit, const Candidate& next) const {
  if (next.form != unit.form) {
    return next.form == LogForm::messages ? next.agrees() && next.verdict >= Verdict::byText
                                          : next.verdict == Verdict::sound;
  }
  if (next.verdict >= Verdict::byText) return true;
  if (next.verdict == Verdict::byCodes) {
    return next.form == LogForm::messages || mayComeNext(recordOf(unit), recordOf(next));
  }
  return next.verdict == Verdict::possible && haveSameSerials(unit, next);
}

bool Lookahead::haveSameSerials(const Candidate& one, const Candidate& other) const {
  return sameSerials(recordOf(one), recordOf(other)) && !serialsAreAPattern(recordOf(other));
}

Follower Lookahead::peekFollower(const Candidate& unit, bool waits) {
  const auto hold = [&](std::size_t count) {
    return waits ? window_.hold(count) : window_.holdUnlessIdle(count);
  };
  const std::size_t held = hold(unit.end() + kSmallestMessage);
  if (held < unit.end() + kSmallestMessage && !window_.ended())
    return {Follower::Kind::notThere, {}};
  if (held <= unit.end()) return {Follower::Kind::end, {}};
  const Candidate next = peekUnit(unit.end());
  if (next.verdict != Verdict::none && follows(unit, next)) return {Follower::Kind::unit, next};
  const std::size_t blank = std::min(hold(unit.end() + kBlank) - unit.end(), kBlank);
  if (isBlank(window_.at(unit.end()), blank)) return {Follower::Kind::blank, {}};
  return {Follower::Kind::nothing, {}};
}

std::optional<Candidate> Lookahead::peekSettled(const Candidate& unit, bool waits) {
  if (unit.agrees()) return unit;
  std::array<std::size_t, 2> lengths = {unit.length, unit.lengthFromRecord};
  std::sort(lengths.begin(), lengths.end());
  std::optional<Candidate> first;
  for (const std::size_t length : lengths) {
    Candidate settled = unit;
    settled.length = length;
    if (length < kSmallestMessage || window_.hold(settled.end()) < settled.end()) continue;
    const Follower follower = peekFollower(settled, waits);
    if (follower.kind == Follower::Kind::end) return settled;
    if (follower.kind != Follower::Kind::unit) continue;
    if (form_ != LogForm::messages && follower.unit.form != LogForm::messages) continue;
    // The wrong one may lead to a copy of a message.
    if (mayComeNext(recordOf(settled), recordOf(follower.unit))) return settled;
    if (!first) first = settled;
  }
  return first;
}

bool Lookahead::peekConfirmed(const Candidate& found, std::uint64_t gap) {
  if (found.verdict < Verdict::byCodes) return false;
  if (!found.agrees() && form_ != LogForm::messages) return false;
  // Half a header, such as that of a copy that damage has hit, is too little in a log of whole
  // ones.
  if (found.form == LogForm::records && found.verdict < Verdict::sound &&
      form_ != LogForm::automatic && soundUnits_ * 8 >= units_ * 7 &&
      !profile_.knowsSerials(recordOf(found))) {
    return false;
  }
  // Before anything is known of the log, two lengths that agree are too little.
  if (found.form == LogForm::messages && found.verdict == Verdict::byCodes &&
      form_ == LogForm::automatic) {
    return false;
  }
  const std::optional<Candidate> settled = peekSettled(found, true);
  return settled && Confirmation(*this, *settled, gap).peek();
}

std::optional<Candidate> Lookahead::findAt(std::size_t at, std::size_t held) {
  if (wanted_ != LogForm::records && held >= at + kSmallestMessage) {
    const Candidate unit = message(at);
    if (unit.verdict >= Verdict::byCodes) return unit;
  }
  if (wanted_ != LogForm::messages && held >= at + Record::headerSize &&
      mayBeHeader(window_.at(at), profile_)) {
    const Candidate unit = record(at);
    if (unit.verdict >= Verdict::byCodes) return unit;
  }
  return std::nullopt;
}

bool Lookahead::peekConfirmedAt(std::size_t at, std::size_t held, std::uint64_t passed) {
  const std::optional<Candidate> unit = findAt(at, held);
  if (!unit) return false;
  // What half looks like a unit is not waited for while a sound one behind it is there.
  const std::size_t needed = unit->end() + kSmallestMessage;
  const bool isThere = window_.holdUnlessIdle(needed) >= needed || window_.ended();
  if (!isThere && unit->verdict < Verdict::sound && peekSoundBehind(at)) return false;
  return peekConfirmed(*unit, passed + at);
}

bool Lookahead::peekSoundBehind(std::size_t at) {
  const std::uint64_t here = window_.offset() + at;
  if (soundAt_ > here) return true;
  const std::size_t held = window_.holdUnlessIdle(farthest);
  searchedTo_ = std::max(searchedTo_, here + 1);
  for (; searchedTo_ + Record::headerSize <= window_.offset() + held; ++searchedTo_) {
    const auto place = static_cast<std::size_t>(searchedTo_ - window_.offset());
    const std::optional<Candidate> unit = findAt(place, held);
    if (unit && unit->verdict == Verdict::sound && unit->agrees() && unit->end() <= held) {
      soundAt_ = searchedTo_++;
      return true;
    }
  }
  return false;
}

std::optional<std::size_t> Lookahead::peekNext(std::size_t from, std::size_t to,
                                               std::uint64_t passed) {
  for (std::size_t at = from; at < to; ++at) {
    std::size_t held = window_.holdUnlessIdle(at + kBlank);
    if (held < at + kSmallestMessage) {
      // A short record may be all that comes for now.
      if (!window_.ended() && peekConfirmedAt(at, held, passed)) return at;
      held = window_.hold(at + kSmallestMessage);
    }
    if (held < at + Record::headerSize) return std::nullopt;
    const std::size_t block = std::min(held - at, kBlank);
    if (block > kSmallestMessage && isBlank(window_.at(at), block)) {
      at += block - kSmallestMessage;
    } else if (peekConfirmedAt(at, held, passed)) {
      return at;
    }
  }
  return std::nullopt;
}

std::optional<std::size_t> Lookahead::peekUnitAcross(const Candidate& unit) {
  for (std::size_t at = unit.at + 1; at < unit.end(); ++at) {
    const std::size_t held = window_.hold(at + kSmallestMessage);
    const std::optional<Candidate> inner = findAt(at, held);
    if (!inner || inner->verdict < Verdict::byText || !peekConfirmed(*inner, unit.length)) continue;
    const Chain chain = peekChain(*inner, unit.end());
    // A second damage may end the chain, but what goes on from this unit is no copy.
    const bool goesOn =
        chain.units > 1 && profile_.isSequential() && mayComeNext(recordOf(unit), recordOf(*inner));
    if (chain.end > unit.end() || goesOn) return at;
    at = std::max(at, chain.end - 1);  // a log within the payload
  }
  return std::nullopt;
}

Lookahead::Chain Lookahead::peekChain(Candidate unit, std::size_t enough) {
  for (int units = 1;; ++units) {
    if (unit.end() > enough) return {unit.end(), units};
    const Follower follower = peekFollower(unit, true);
    if (follower.kind != Follower::Kind::unit) return {unit.end(), units};
    if (units == kLongChain || !follower.unit.agrees()) return {enough + 1, units};
    unit = follower.unit;
  }
}

std::optional<std::size_t> Lookahead::peekUnitSwallowed(const Candidate& unit,
                                                        const Candidate& follower) {
  const Record first = recordOf(unit);
  const Record last = recordOf(follower);
  const std::uint32_t missing = missingBetween(first, last);
  if (!mayHaveSwallowed(unit.length, missing) || first.u8(0) == 0 || !sameLog(first, last)) {
    return std::nullopt;
  }
  const std::string_view serials = first.bytes(0, serialsSize);
  const std::string_view bytes(reinterpret_cast<const char*>(window_.at(unit.at)), unit.length);
  const std::size_t at = bytes.find(serials, Record::headerSize);
  if (at == std::string_view::npos || bytes.size() - at < Record::headerSize) return std::nullopt;
  std::size_t end = at;
  std::uint32_t units = 0;
  for (; end + Record::headerSize <= unit.length; ++units) {
    const Candidate inner = record(unit.at + end);
    if (inner.verdict != Verdict::sound) return std::nullopt;
    end += inner.length;
  }
  if (end != unit.length || units != missing) return std::nullopt;
  return unit.at + at;
}

bool Lookahead::peekLengthsLeadTo(std::size_t end, LogForm form) {
  std::size_t at = 0;
  while (at < end) {
    const Candidate unit = peekUnit(at, form);
    const bool possible = unit.verdict != Verdict::none ||
                          (form == LogForm::messages && unit.length >= kSmallestMessage &&
                           judgeHeader(recordOf(unit), profile_) != Verdict::none);
    if (!possible ||
        unit.length < (form == LogForm::messages ? kSmallestMessage : Record::headerSize))
      return false;
    at = unit.end();
  }
  return at == end;
}

}  // namespace mpuevent::log

#include "log/framing/LogReader.h"

#include <algorithm>
#include <span>
#include <utility>

#include "log/framing/IntactRecords.h"

namespace mpuevent::log {

namespace {

constexpr std::size_t kMagics = 10;  // the longest that tells what a file is packed with
constexpr std::size_t kSmallestMessage = messageHeaderSize + Record::headerSize;

// The farthest look: behind a unit that begins within the one that begins at the last place.
static_assert(Lookahead::farthest + Lookahead::longestUnit + Lookahead::longestLook <=
              InputWindow::farthest);
static_assert(2 * Lookahead::longestUnit + Lookahead::longestLook <= InputWindow::farthest);

}  // namespace

LogReader::LogReader(ReadBytes read, LogForm form, Report report, IsIdle isIdle, ReadBytesAt readAt)
    : window_(std::move(read), std::move(isIdle)),
      readAt_(std::move(readAt)),
      wanted_(form),
      ahead_(window_, form),
      report_(std::move(report)) {}

bool LogReader::next(LogUnit& unit) {
  window_.advance(std::exchange(taken_, 0));
  if (Candidate after; upcoming_ && ahead_.goesOn(*upcoming_, after)) {
    take(unit, *upcoming_);
    upcoming_ = after;
    upcoming_->at = 0;
    return true;
  }
  while (window_.hold(1) > 0) {
    if (window_.offset() == 0) {
      const std::size_t held = std::min(window_.hold(kMagics), kMagics);
      packing_ = packingOf({window_.at(0), held}, true).value_or(Packing::none);
    }
    if (const std::optional<Candidate> candidate = peekUnitHere()) {
      if (gap_.length != 0) closeGap(false);
      gap_.statedLength = 0;  // of what was not taken here
      take(unit, *candidate);
      return true;
    }
    resynchronise();
  }
  if (gap_.length != 0) closeGap(true);
  return false;
}

std::optional<Candidate> LogReader::peekUnitHere() {
  cutAt_.reset();
  if (upcoming_) {
    const Candidate unit = *upcoming_;
    upcoming_.reset();
    if (peekMayBeTaken(unit)) return unit;
    cutAt_.reset();
  }
  if (window_.offset() < trustedTo_) return peekUnitByLength(trusted_);
  if (wanted_ != LogForm::automatic) return peekUnitHere(wanted_);
  window_.hold(Record::headerSize);
  if (window_.holdUnlessIdle(kSmallestMessage) < kSmallestMessage && !window_.ended()) {
    // A short record may be all that comes for now.
    if (const std::optional<Candidate> unit = peekUnitHere(LogForm::records)) return unit;
  }
  const bool recordsFirst = ahead_.form() == LogForm::records;
  const LogForm first = recordsFirst ? LogForm::records : LogForm::messages;
  if (const std::optional<Candidate> unit = peekUnitHere(first)) return unit;
  return peekUnitHere(recordsFirst ? LogForm::messages : LogForm::records);
}

std::optional<Candidate> LogReader::peekUnitHere(LogForm form) {
  const Candidate unit = ahead_.peekUnit(0, form);
  if (unit.verdict < Verdict::possible) return std::nullopt;
  if (unit.agrees()) {
    if (peekMayBeTaken(unit)) return unit;
  } else if (const std::optional<Candidate> settled = ahead_.peekSettled(unit, false)) {
    return settled;
  }
  return std::nullopt;
}

bool LogReader::peekIsWhole(const Candidate& unit) {
  if (ahead_.peekWhole(unit.end())) return true;
  if (unit.verdict >= Verdict::byText && gap_.length == 0) gap_.statedLength = unit.length;
  return false;
}

bool LogReader::peekMayBeTaken(const Candidate& unit) {
  if (!peekIsWhole(unit)) return false;
  const bool first = accounting_.events == 0;
  const Follower follower = ahead_.peekFollower(unit, unit.verdict < Verdict::byCodes);
  switch (follower.kind) {
    case Follower::Kind::notThere:
    case Follower::Kind::end:
      return unit.verdict >= Verdict::byCodes;
    case Follower::Kind::unit:
      // To lead to the next unit is one chance in the few hundred bytes that a unit has.
      if (unit.verdict < Verdict::byCodes && !ahead_.haveSameSerials(unit, follower.unit)) {
        return false;
      }
      if (unit.verdict == Verdict::byCodes && first && !ahead_.peekConfirmed(unit, gap_.length)) {
        return false;
      }
      if (unit.form == LogForm::records) cutAt_ = ahead_.peekUnitSwallowed(unit, follower.unit);
      if (follower.unit.agrees() && !cutAt_) {
        upcoming_ = follower.unit;
        upcoming_->at = 0;
      }
      break;
    case Follower::Kind::blank:
      if (unit.verdict < Verdict::byCodes) return false;
      cutAt_ = ahead_.peekUnitAcross(unit);
      break;
    case Follower::Kind::nothing:
      if (unit.verdict < Verdict::sound) return false;
      cutAt_ = ahead_.peekUnitAcross(unit);
      break;
  }
  if (cutAt_ && gap_.length == 0) gap_.statedLength = unit.length;
  return !cutAt_;
}

std::optional<Candidate> LogReader::peekUnitByLength(LogForm form) {
  Candidate unit = ahead_.peekUnit(0, form);
  const bool complete =
      unit.length >= Record::headerSize + (form == LogForm::messages ? messageHeaderSize : 0);
  if (!complete || !ahead_.peekWhole(unit.length)) return std::nullopt;
  return unit;
}

void LogReader::resynchronise() {
  if (canTrustAllLengths()) return;
  constexpr std::size_t step = Lookahead::farthest;
  std::optional<std::size_t> next = cutAt_;
  if (!next) {
    const std::uint64_t done = searchedTo_ > window_.offset() ? searchedTo_ - window_.offset() : 0;
    const std::size_t from = std::max<std::size_t>(1, static_cast<std::size_t>(done));
    next = ahead_.peekNext(from, step, gap_.length);
    searchedTo_ = window_.offset() + (next ? *next : step);
    const std::size_t end = next ? *next : window_.hold(step);
    if (canTrustLengths(end, next)) return;
  }
  while (!next && window_.hold(step) >= step) {
    pass(step);
    next = ahead_.peekNext(0, step, gap_.length);
  }
  pass(next ? *next : window_.hold(1));
}

// Whether what comes is records of which the lengths can be trusted, for want of better evidence:
// asked in a log that is intact so far, until the answer is no.
bool LogReader::canTrustAllLengths() {
  const bool areSound = accounting_.events != 0 && soundEvents_ * 2 >= accounting_.events;
  // A length that leads past a unit to another one is wrong.
  if (askedForAll_ || wanted_ == LogForm::messages || (areSound && cutAt_)) return false;
  askedForAll_ = true;
  if (accounting_.bytes() != accounting_.eventBytes || gap_.length != 0) return false;
  const bool goesOn = trusted_ == LogForm::records && trustedTo_ == window_.offset();
  if (accounting_.events != 0 && !goesOn && ahead_.form() != LogForm::records) return false;
  std::optional<std::uint64_t> end = endOfIntactRecords();
  if (!end && (goesOn || !areSound)) end = endOfLikelyRecords(goesOn ? 1 : 3);
  if (!end) return false;
  trusted_ = LogForm::records;
  trustedTo_ = *end;
  askedForAll_ = false;
  return true;
}

// The end of the input, if it can be seen and lengths lead there.
std::optional<std::uint64_t> LogReader::endOfIntactRecords() {
  const std::uint64_t offset = window_.offset();
  if (readAt_) return log::endOfIntactRecords(readAt_, offset);
  const std::size_t held = window_.holdUnlessIdle(InputWindow::farthest);
  if (!window_.ended()) return std::nullopt;
  const auto readAt = [&](std::uint64_t at, unsigned char* to, std::size_t room) {
    const std::size_t from = std::min(static_cast<std::size_t>(at - offset), held);
    const std::size_t count = std::min(room, held - from);
    std::copy_n(window_.at(from), count, to);
    return static_cast<long>(count);
  };
  return log::endOfIntactRecords(readAt, offset);
}

// The end of those in view, if they are as many as needed.
std::optional<std::uint64_t> LogReader::endOfLikelyRecords(std::size_t needed) {
  const std::size_t held = window_.holdUnlessIdle(InputWindow::farthest);
  const LikelyRecords records = likelyRecords({window_.at(0), held});
  if (records.count < needed) return std::nullopt;
  return window_.offset() + records.length;
}

bool LogReader::canTrustLengths(std::size_t end, std::optional<std::size_t> next) {
  if (window_.offset() < trustedTo_) return false;  // the trust was in vain
  const bool known = next || end < Lookahead::farthest;
  const auto trust = [&](LogForm form, std::size_t length) {
    trusted_ = form;
    trustedTo_ = window_.offset() + length;
    return true;
  };
  if (known && gap_.length == 0) {
    const LogForm forms[] = {LogForm::messages, LogForm::records};
    for (const LogForm form : forms) {
      const bool wanted = wanted_ == LogForm::automatic || wanted_ == form;
      const Verdict after = next ? ahead_.peekUnit(*next, form).verdict : Verdict::byCodes;
      // At the beginning there may be the end of a record, and its lengths lead anywhere.
      const bool fits =
          after >= Verdict::byCodes && (after != Verdict::sound || accounting_.events != 0);
      if (wanted && fits && ahead_.peekLengthsLeadTo(end, form)) return trust(form, end);
    }
  }
  // Whoever names the form of what is not recognised knows better.
  if (next || wanted_ == LogForm::automatic || ahead_.form() != LogForm::automatic) return false;
  const std::optional<Candidate> unit = peekUnitByLength(wanted_);
  return unit && trust(wanted_, unit->length);
}

void LogReader::take(LogUnit& unit, const Candidate& candidate) {
  const std::size_t header = candidate.form == LogForm::messages ? messageHeaderSize : 0;
  const std::uint64_t offset = window_.offset();
  if (candidate.form != ahead_.form()) tellForm(candidate.form);
  const std::size_t total = RecordView(window_.at(0), messageHeaderSize).u16(totalLengthAt);
  if (!candidate.agrees() || (header != 0 && candidate.length % 0x10000 != total)) {
    tellLengths(candidate, total);
  }
  if (offset >= trustedTo_) ahead_.remember(candidate);
  accounting_.countEvent(candidate.length);
  if (candidate.verdict == Verdict::sound) ++soundEvents_;
  unit.offset = offset;
  unit.header = header == 0 ? nullptr : window_.at(0);
  unit.record = {window_.at(header), candidate.length - header};
  taken_ = candidate.length;
}

void LogReader::tellForm(LogForm form) {
  if (ahead_.form() == LogForm::automatic || std::exchange(changed_, true)) return;
  const bool toMessages = form == LogForm::messages;
  tell({toMessages ? Finding::Kind::nowMessages : Finding::Kind::nowRecords, window_.offset()});
}

void LogReader::tellLengths(const Candidate& candidate, std::size_t total) {
  tell({Finding::Kind::lengthsDisagree, window_.offset(), candidate.length, total,
        candidate.lengthFromRecord});
}

void LogReader::pass(std::size_t count) {
  const unsigned char* bytes = window_.at(0);
  std::size_t blank = 0;
  while (blank < count && (bytes[count - 1 - blank] == 0 || bytes[count - 1 - blank] == 0xFF)) {
    ++blank;
  }
  if (gap_.length == 0 && wanted_ != LogForm::records && count >= 12 && count < kSmallestMessage) {
    gap_.tooShort = RecordView(bytes, count).u16(totalLengthAt) == count;
  } else {
    gap_.tooShort = false;
  }
  gap_.blankAtEnd = blank == count ? gap_.blankAtEnd + blank : blank;
  gap_.length += count;
  window_.advance(count);
}

void LogReader::closeGap(bool atEnd) {
  const Gap gap = std::exchange(gap_, {});
  const std::uint64_t begin = window_.offset() - gap.length;
  if (accounting_.events == 0 && atEnd && gap.statedLength == 0) {
    tell({Finding::Kind::notALog, begin, gap.length, 0, 0, true});
    return;
  }
  std::uint64_t padding = 0;
  if (atEnd && gap.statedLength <= gap.length &&
      (gap.blankAtEnd == gap.length || gap.blankAtEnd >= Record::headerSize)) {
    padding = gap.blankAtEnd;
  }
  if (const std::uint64_t skipped = gap.length - padding; skipped != 0) {
    const auto kind = gap.statedLength > skipped ? Finding::Kind::cutOff
                      : gap.tooShort             ? Finding::Kind::tooShort
                                                 : Finding::Kind::skipped;
    tell({kind, begin, skipped, gap.statedLength, 0, atEnd && padding == 0});
  }
  if (padding != 0)
    tell({Finding::Kind::padding, begin + gap.length - padding, padding, 0, 0, true});
}

void LogReader::tell(const Finding& finding) {
  accounting_.count(finding);
  report_(finding);
}

}  // namespace mpuevent::log

#include "log/framing/Confirmation.h"

namespace mpuevent::log {

namespace {

// A candidate that holds for so many followers is believed.
constexpr int kConvincing = 4;

// By how much ids may run ahead of the records that can have stood in the gap.
constexpr std::uint32_t kTolerance = 16;

}  // namespace

Confirmation::Confirmation(Lookahead& ahead, const Candidate& found, std::uint64_t gap)
    : ahead_(ahead), found_(found), gap_(gap) {
  const Record record = ahead_.recordOf(found_);
  sequenceId_ = record.sequenceId();
  last_ = ahead_.profile().lastSequenceId(record);
  movesOn_ = last_ && movesOn(*last_, sequenceId_);
  const bool established = ahead_.form() != LogForm::automatic;
  needed_ = found_.verdict == Verdict::sound    ? 1
            : !established                      ? 3
            : found_.verdict == Verdict::byText ? 1
                                                : 2;
}

bool Confirmation::peek() {
  Candidate unit = found_;
  for (;;) {
    if (!ahead_.peekWhole(unit.end())) return false;
    if (unit.end() + Lookahead::longestLook > InputWindow::farthest) return followers_ >= needed_;
    Follower follower = ahead_.peekFollower(unit, false);
    if (follower.kind == Follower::Kind::notThere) {
      if (isSoundAlone()) return true;
      follower = ahead_.peekFollower(unit, true);
    }
    if (follower.kind == Follower::Kind::nothing) return atTheBreak();
    if (follower.kind != Follower::Kind::unit) return atTheEnd(follower.kind);
    ++followers_;
    const Step step = withFollower(follower.unit);
    if (step != Step::goOn) return step == Step::yes;
    if (followers_ == kConvincing || !follower.unit.agrees()) return true;
    unit = follower.unit;
  }
}

Confirmation::Step Confirmation::withFollower(const Candidate& follower) {
  if (isOtherForm() && follower.form != found_.form) return Step::no;
  const Record next = ahead_.recordOf(follower);
  // The end of a payload may have a length that leads to the first record.
  if (ahead_.form() == LogForm::automatic && found_.verdict < Verdict::byText &&
      follower.verdict == Verdict::sound && !sameSerials(ahead_.recordOf(found_), next)) {
    return Step::no;
  }
  const bool sameAsFound = sameLog(ahead_.recordOf(found_), next);
  const bool fits = sameAsFound && movesOn(sequenceId_, next.sequenceId());
  if (last_) return withLast(follower, sameAsFound, fits);
  if (followers_ == 1 && sameAsFound && !fits) {
    odd_ = true;
    oddFollower_ = next.sequenceId();
    return Step::goOn;
  }
  if (odd_) return sameAsFound && movesOn(oddFollower_, next.sequenceId()) ? Step::no : Step::goOn;
  return followers_ >= needed_ ? Step::yes : Step::goOn;
}

Confirmation::Step Confirmation::withLast(const Candidate& follower, bool sameAsFound, bool fits) {
  const Record next = ahead_.recordOf(follower);
  const std::optional<std::uint32_t> lastOfNext = ahead_.profile().lastSequenceId(next);
  const bool nextMovesOn = lastOfNext && movesOn(*lastOfNext, next.sequenceId());
  if (!movesOn_ && nextMovesOn && ahead_.profile().isSequential()) return Step::no;
  if (!movesOn_) return Step::goOn;
  if (followers_ == 1 && sameAsFound && !fits && nextMovesOn) return Step::no;
  return followers_ >= needed_ ? Step::yes : Step::goOn;
}

// Another form than before is believed only where it goes on: a message may have lost its header.
bool Confirmation::isOtherForm() const {
  return ahead_.form() != LogForm::automatic && found_.form != ahead_.form();
}

// Whether nothing needs to follow when nothing comes for now.
bool Confirmation::isSoundAlone() const {
  return found_.verdict == Verdict::sound && !isOtherForm() &&
         (!last_ || movesOn_ || !ahead_.profile().isSequential());
}

bool Confirmation::atTheEnd(Follower::Kind kind) const {
  if (isOtherForm() && followers_ == 0) return false;
  if (last_) return movesOn_ || !ahead_.profile().isSequential();
  // Zeros follow upon much in other files.
  const bool counts = kind == Follower::Kind::end || found_.verdict == Verdict::sound;
  return followers_ + (counts ? 1 : 0) >= needed_;
}

bool Confirmation::atTheBreak() const {
  if (followers_ != 0) {
    return followers_ >= needed_ && (!last_ || !ahead_.profile().isSequential());
  }
  const std::uint64_t fitting = gap_ / Record::headerSize + kTolerance;
  return movesOn_ && found_.verdict == Verdict::sound && !isOtherForm() &&
         sequenceId_ - *last_ <= fitting;
}

}  // namespace mpuevent::log

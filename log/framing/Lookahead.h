#ifndef MPUEVENT_LOG_FRAMING_LOOKAHEAD_H
#define MPUEVENT_LOG_FRAMING_LOOKAHEAD_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "log/framing/LogUnit.h"
#include "log/input/InputWindow.h"
#include "log/recognition/HeaderVerdict.h"
#include "log/recognition/LogProfile.h"

namespace mpuevent::log {

/// What may be a message or a record, at a distance from the position of the window.
struct Candidate {
  Verdict verdict = Verdict::none;
  LogForm form = LogForm::automatic;
  std::size_t at = 0;
  std::size_t length = 0;            ///< of all of it
  std::size_t lengthFromRecord = 0;  ///< the same by `evStructLength`; differs in a damaged message
  FoundWriter writer = {};           ///< if that is known already

  std::size_t end() const { return at + length; }
  bool agrees() const { return length == lengthFromRecord; }
};

/// What stands where a candidate ends.
struct Follower {
  enum class Kind {
    unit,      ///< another message or record
    end,       ///< the end of the input
    blank,     ///< zeros or 0xFF
    nothing,   ///< bytes that make no sense there
    notThere,  ///< nothing yet: the source is idle
  };
  Kind kind = Kind::nothing;
  Candidate unit;
};

/// Looks at what lies ahead in a log, to tell messages and records from other bytes. The functions
/// named peek... may read, which ends the validity of pointers into the window; none moves it.
///
/// A header alone can look like one by accident, or because a payload holds a copy of one. So what
/// counts is where its length leads and whether its sequence id fits in.
class Lookahead {
 public:
  /// The longest message or record.
  static constexpr std::size_t longestUnit = 64 + 152 + 0xFFFF;
  /// How far behind the end of a unit its follower is looked at.
  static constexpr std::size_t longestLook = 1024;
  /// How far from the position a candidate may stand.
  static constexpr std::size_t farthest = std::size_t{128} << 10;

  Lookahead(InputWindow& window, LogForm wanted) : window_(window), wanted_(wanted) {}

  /// The form of what was read last; automatic before.
  LogForm form() const { return form_; }
  const LogProfile& profile() const { return profile_; }
  /// Takes note of a unit that is being given out.
  void remember(const Candidate& unit);

  /// What is there in the form given; no verdict if fewer bytes than a header are.
  Candidate peekUnit(std::size_t at, LogForm form);
  /// What is there in the form that has more to say for it; the form read last goes first.
  Candidate peekUnit(std::size_t at);

  /// Whether `unit` is followed by another, `next`, as nearly all are: both in view, sound, of one
  /// form, with lengths that agree, by writers who are known. If not, that tells nothing; it only
  /// is the short way to what the others find out.
  bool goesOn(const Candidate& unit, Candidate& next) const;

  /// What stands behind a unit that is whole; without `waits` an idle source is not waited for.
  Follower peekFollower(const Candidate& unit, bool waits);

  /// A message whose lengths disagree, with the one that leads on; nothing if neither does. Any
  /// other unit as it is.
  std::optional<Candidate> peekSettled(const Candidate& unit, bool waits);

  /// Whether a candidate found by searching, at least `gap` bytes behind the last unit, is one.
  bool peekConfirmed(const Candidate& unit, std::uint64_t gap);

  /// Where, within the length that a unit gives, another one begins that reaches beyond it: bytes
  /// of the first one are missing, or its length is wrong.
  std::optional<std::size_t> peekUnitAcross(const Candidate& unit);

  /// Where another unit begins within a record, if the record's length leads exactly to the one
  /// that comes some places after the next, by the sequence ids.
  std::optional<std::size_t> peekUnitSwallowed(const Candidate& record, const Candidate& follower);

  /// The first confirmed unit in [from, to), with `passed` bytes before the position being no
  /// unit's.
  std::optional<std::size_t> peekNext(std::size_t from, std::size_t to, std::uint64_t passed);

  /// Whether the lengths of what may be headers, from the position on, lead exactly to `end`.
  bool peekLengthsLeadTo(std::size_t end, LogForm form);

  /// The header of a unit in view; valid until the next look.
  Record recordOf(const Candidate& unit) const;

  /// Whether two units in view have the same serials, and these are more than a fill pattern.
  bool haveSameSerials(const Candidate& one, const Candidate& other) const;

  /// Whether `count` bytes from the position on are there.
  bool peekWhole(std::size_t count) { return window_.hold(count) >= count; }

 private:
  struct Chain {
    std::size_t end;
    int units;
  };

  Candidate message(std::size_t at);
  Candidate record(std::size_t at) const;
  bool follows(const Candidate& unit, const Candidate& next) const;
  // The units that follow one another from this one on, as far as `enough` and no more.
  Chain peekChain(Candidate unit, std::size_t enough);
  // What a search may take there, of `held` bytes in view.
  std::optional<Candidate> findAt(std::size_t at, std::size_t held);
  bool peekConfirmedAt(std::size_t at, std::size_t held, std::uint64_t passed);
  // Whether a sound unit, of which all bytes are in view, begins behind that place.
  bool peekSoundBehind(std::size_t at);

  InputWindow& window_;
  const LogForm wanted_;
  LogForm form_ = LogForm::automatic;
  LogProfile profile_;
  std::uint64_t units_ = 0;
  std::uint64_t soundUnits_ = 0;
  std::uint64_t searchedTo_ = 0;  // for sound units, in the input; each place once
  std::uint64_t soundAt_ = 0;     // the last one found
};

}  // namespace mpuevent::log

#endif

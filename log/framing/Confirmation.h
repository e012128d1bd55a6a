#ifndef MPUEVENT_LOG_FRAMING_CONFIRMATION_H
#define MPUEVENT_LOG_FRAMING_CONFIRMATION_H

#include <cstdint>
#include <optional>

#include "log/framing/Lookahead.h"

namespace mpuevent::log {

/// Whether a candidate that was found by searching is a unit of the log, and no copy of one inside
/// a payload: by the units that follow it, and by how their sequence ids go on from the last unit
/// read. Where the ids fit for the follower but not for the candidate, the candidate is a copy.
class Confirmation {
 public:
  /// `gap` bytes lie between the last unit read and this one.
  Confirmation(Lookahead& ahead, const Candidate& found, std::uint64_t gap);

  bool peek();

 private:
  enum class Step { yes, no, goOn };

  Step withFollower(const Candidate& follower);
  Step withLast(const Candidate& follower, bool sameAsFound, bool fits);
  bool isOtherForm() const;
  bool isSoundAlone() const;
  bool atTheEnd(Follower::Kind kind) const;
  bool atTheBreak() const;

  Lookahead& ahead_;
  const Candidate found_;
  const std::uint64_t gap_;
  std::uint32_t sequenceId_;
  std::optional<std::uint32_t> last_;  // sequence id of the last unit of the same log, if any
  bool movesOn_;                       // from that one
  int needed_;                         // followers
  int followers_ = 0;
  std::uint32_t oddFollower_ = 0;
  bool odd_ = false;  // the first follower does not move on from the candidate
};

}  // namespace mpuevent::log

#endif

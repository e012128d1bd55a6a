#ifndef MPUEVENT_TOOL_EXPLAIN_EXAMINATION_H
#define MPUEVENT_TOOL_EXPLAIN_EXAMINATION_H

#include <chrono>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "explain/Specimen.h"

namespace mpuevent::tool {

enum class Part { message, header, payload };

/// Neighbouring bytes of one part that make the same.
struct ByteRun {
  std::ptrdiff_t offset;  ///< from the record's first byte; of the message header below 0
  std::size_t length;
  Part part;
  std::string field;
  /// Not all of it was seen for itself.
  bool sampled;
};

/// What each byte of a record makes, found by decoding the record again and again with bytes
/// changed.
///
/// Every byte has each of its bits flipped, for itself. Bytes with which nothing ever changes get
/// all 255 other values, and so do those that only change what is shown, lest one value decides the
/// layout; these rounds change all such bytes at once, and look closer when the event changes. A
/// long record costs too much for that: then the bytes get fewer values or are sampled, and what
/// lies between two bytes that make the same is taken to make the same, too.
class Examination {
 public:
  /// Nothing is tried any more when it has taken `limit`, or ten times that for a record of which
  /// every byte can be tried.
  Examination(const log::LogUnit& unit, std::chrono::milliseconds limit);

  /// All bytes of the record once, in order, and before them those of its message header if it has
  /// one.
  std::vector<ByteRun> runs();

 private:
  using Positions = std::vector<std::size_t>;

  /// What is known of a byte.
  struct Finding {
    Effect effect;
    bool known = false;
    bool sampled = false;
  };

  bool outOfTime() const;
  void allow(int percent);
  Effect effectOf(std::span<const std::size_t> positions, unsigned mask);

  void flipBits();
  void flipBits(std::size_t position);
  void flipSome(std::size_t count);
  void divide(std::size_t begin, std::size_t end, std::size_t& left);
  void fillGaps();

  Positions open(bool silent) const;
  void tryAllValues(bool silent);
  void tryTogether(Positions positions, bool silent);
  static bool tells(const Effect& effect, bool silent);
  std::optional<std::size_t> findOne(std::span<const std::size_t> positions, unsigned mask,
                                     bool silent);

  std::string label(const Finding& finding, const std::vector<std::string>& names) const;

  Specimen specimen_;
  std::size_t firstByte_;  // of the specimen's: its message header may be none of the record's
  std::chrono::steady_clock::time_point begin_;
  std::chrono::milliseconds limit_;
  std::chrono::steady_clock::time_point end_;
  std::vector<Finding> findings_;  // of each of the specimen's bytes
  unsigned masks_ = 0;             // how many of the bits are flipped
};

}  // namespace mpuevent::tool

#endif

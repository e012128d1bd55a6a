#ifndef MPUEVENT_LOG_RECOGNITION_LOGPROFILE_H
#define MPUEVENT_LOG_RECOGNITION_LOGPROFILE_H

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

#include "event/RecordView.h"

namespace mpuevent::log {

/// Both serial numbers, which open a record.
constexpr std::size_t serialsSize = 2 * Record::serialSize;

/// Whether two records, of which these are the bytes, have the same serials. Asked of every record
/// that is read: all words without a branch, which takes less than a call.
inline bool sameSerials(const unsigned char* one, const unsigned char* other) {
  std::uint64_t difference = 0;
  for (std::size_t at = 0; at < serialsSize; at += sizeof difference) {
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::memcpy(&a, one + at, sizeof a);
    std::memcpy(&b, other + at, sizeof b);
    difference |= a ^ b;
  }
  return difference == 0;
}
inline bool sameSerials(const Record& one, const Record& other) {
  return sameSerials(one.data(), other.data());
}
/// Whether both are by the same controller in the same log, so that their sequence ids compare.
bool sameLog(const Record& one, const Record& other);
/// Whether `to` comes after `from` in a log's sequence, by at most `most`.
inline bool movesOn(std::uint32_t from, std::uint32_t to, std::uint32_t most = 0xFFFF) {
  return to - from - 1 < most;
}

/// Who wrote a record, as a LogProfile found it, so that it needs not look for it again.
struct FoundWriter {
  std::size_t index = SIZE_MAX;
  std::uint64_t added = 0;  ///< how many writers had been added by then

  bool isKnown() const { return index != SIZE_MAX; }
};

/// What the records of a log read so far have in common: who wrote them, and how far each writer's
/// sequence ids have come. A few writers are remembered, those seen last.
class LogProfile {
 public:
  /// `found` is what find() gave for it, if that was asked for.
  void remember(const Record& record, FoundWriter found = {}) {
    if (!found.isKnown() || found.added != added_) found = find(record);
    if (!found.isKnown()) {
      found.index = add(record);
    } else {
      ++steps_;
      if (movesOn(writers_[found.index].sequenceId, record.sequenceId())) ++stepsOn_;
    }
    writers_[found.index].sequenceId = record.sequenceId();
  }

  /// By an earlier record of the same log.
  FoundWriter find(const Record& record) const {
    const std::uint32_t logInstance = record.logInstance();
    for (std::size_t index = 0; index < count_; ++index) {
      const Writer& writer = writers_[index];
      if (writer.logInstance == logInstance && isBy(writer, record)) return {index, added_};
    }
    return {};
  }

  bool knowsSerials(const Record& record) const;
  /// A quick look: false if knowsSerials() is.
  bool mayKnowSerials(const unsigned char* bytes) const { return firsts_[bytes[0]]; }
  /// The sequence id of the last record of the same writer and log.
  std::optional<std::uint32_t> lastSequenceId(const Record& record) const;
  /// Whether this is a log whose sequence ids move on from record to record.
  bool isSequential() const { return steps_ < 4 || stepsOn_ * 4 >= steps_ * 3; }

 private:
  struct Writer {
    std::array<unsigned char, serialsSize> serials;
    std::uint32_t logInstance;
    std::uint32_t sequenceId;
  };

  static bool isBy(const Writer& writer, const Record& record) {
    return sameSerials(writer.serials.data(), record.data());
  }
  std::size_t add(const Record& record);  // without its sequence id

  static constexpr std::size_t most = 8;
  std::array<Writer, most> writers_;
  std::size_t count_ = 0;
  std::size_t oldest_ = 0;
  std::uint64_t added_ = 0;
  std::bitset<256> firsts_;  // with which bytes the serials begin
  std::uint64_t steps_ = 0;
  std::uint64_t stepsOn_ = 0;
};

}  // namespace mpuevent::log

#endif

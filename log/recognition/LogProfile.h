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

bool sameSerials(const Record& one, const Record& other);
/// Whether both are by the same controller in the same log, so that their sequence ids compare.
bool sameLog(const Record& one, const Record& other);
/// Whether `to` comes after `from` in a log's sequence, by at most `most`.
inline bool movesOn(std::uint32_t from, std::uint32_t to, std::uint32_t most = 0xFFFF) {
  return to - from - 1 < most;
}

/// What the records of a log read so far have in common: who wrote them, and how far each writer's
/// sequence ids have come. A few writers are remembered, those seen last.
class LogProfile {
 public:
  void remember(const Record& record) {
    const std::uint32_t sequenceId = record.sequenceId();
    if (find(record) == nullptr) {
      add(record);
    } else {
      ++steps_;
      if (movesOn(writers_[found_].sequenceId, sequenceId)) ++stepsOn_;
    }
    writers_[found_].sequenceId = sequenceId;
  }

  bool knowsSerials(const Record& record) const {
    // Most often of the writer seen last.
    return (count_ != 0 && isBy(writers_[found_], record)) || knowsOtherSerials(record);
  }
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
    return std::memcmp(writer.serials.data(), record.data(), serialsSize) == 0;
  }
  bool knowsOtherSerials(const Record& record) const;
  static bool isBy(const Writer& writer, const Record& record, std::uint32_t logInstance) {
    return writer.logInstance == logInstance && isBy(writer, record);
  }
  /// Of the same log; `found_` tells which one it is.
  const Writer* find(const Record& record) const {
    const bool isLast = count_ != 0 && isBy(writers_[found_], record, record.logInstance());
    return isLast ? &writers_[found_] : findOther(record, record.logInstance());
  }
  const Writer* findOther(const Record& record, std::uint32_t logInstance) const;
  void add(const Record& record);  // `found_`, without its sequence id

  static constexpr std::size_t most = 8;
  std::array<Writer, most> writers_;
  std::size_t count_ = 0;
  std::size_t oldest_ = 0;
  mutable std::size_t found_ = 0;  // the last one asked for, most often asked for again
  std::bitset<256> firsts_;        // with which bytes the serials begin
  std::uint64_t steps_ = 0;
  std::uint64_t stepsOn_ = 0;
};

}  // namespace mpuevent::log

#endif

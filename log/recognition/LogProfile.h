#ifndef MPUEVENT_LOG_RECOGNITION_LOGPROFILE_H
#define MPUEVENT_LOG_RECOGNITION_LOGPROFILE_H

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "event/RecordView.h"

namespace mpuevent::log {

/// Both serial numbers, which open a record.
constexpr std::size_t serialsSize = 2 * Record::serialSize;

bool sameSerials(const Record& one, const Record& other);
/// Whether both are by the same controller in the same log, so that their sequence ids compare.
bool sameLog(const Record& one, const Record& other);
/// Whether `to` comes after `from` in a log's sequence, by at most `most`.
bool movesOn(std::uint32_t from, std::uint32_t to, std::uint32_t most = 0xFFFF);

/// What the records of a log read so far have in common: who wrote them, and how far each writer's
/// sequence ids have come. A few writers are remembered, those seen last.
class LogProfile {
 public:
  void remember(const Record& record);

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

  const Writer* find(const Record& record) const;

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

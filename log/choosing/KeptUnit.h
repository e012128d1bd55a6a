#ifndef MPUEVENT_LOG_CHOOSING_KEPTUNIT_H
#define MPUEVENT_LOG_CHOOSING_KEPTUNIT_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "log/framing/LogUnit.h"

namespace mpuevent::log {

/// A copy of a unit, for when its reader has gone on, and its place.
class KeptUnit {
 public:
  /// `file` is any number that tells its file from others, `index` its place in there.
  KeptUnit(const LogUnit& unit, std::size_t file, std::uint64_t index)
      : file_(file), index_(index), offset_(unit.offset) {
    if (unit.header != nullptr) bytes_.assign(unit.header, unit.header + messageHeaderSize);
    recordAt_ = bytes_.size();
    bytes_.insert(bytes_.end(), unit.record.begin(), unit.record.end());
  }

  std::size_t file() const { return file_; }
  std::uint64_t index() const { return index_; }
  std::span<const unsigned char> record() const { return std::span(bytes_).subspan(recordAt_); }
  /// Points into this one.
  LogUnit unit() const { return {offset_, recordAt_ == 0 ? nullptr : bytes_.data(), record()}; }

 private:
  std::size_t file_;
  std::uint64_t index_;
  std::uint64_t offset_;
  std::size_t recordAt_ = 0;
  std::vector<unsigned char> bytes_;
};

}  // namespace mpuevent::log

#endif

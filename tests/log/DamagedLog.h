#ifndef MPUEVENT_TESTS_LOG_DAMAGEDLOG_H
#define MPUEVENT_TESTS_LOG_DAMAGEDLOG_H

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "log/framing/LogUnit.h"

namespace mpuevent::support {

/// A log of made-up records, of which one knows where each one stands and which ones damage has
/// touched. Payloads are noise, zeros, text, or hold copies of records of the log.
class DamagedLog {
 public:
  struct Unit {
    std::size_t at;
    std::size_t size;
    std::uint32_t sequenceId;
    bool touched = false;
    bool headTouched = false;  // its first byte need not be where `at` says
  };

  DamagedLog(std::uint32_t seed, log::LogForm form, std::size_t units);

  const std::string& bytes() const { return bytes_; }
  const std::vector<Unit>& units() const { return units_; }

  /// Each at a random place, of 1 to 4,096 bytes.
  void overwrite(int fill);  ///< with the byte, or with noise if it is below 0
  void cut();
  void insert();
  void changeALength();
  void append(std::size_t count, char fill) { bytes_.append(count, fill); }
  void beginInsideARecord();

 private:
  std::size_t random(std::size_t least, std::size_t most) {
    return std::uniform_int_distribution<std::size_t>(least, most)(random_);
  }
  std::string noise(std::size_t size);
  std::string makeRecord(std::uint32_t sequenceId);
  std::string payload();
  std::string copy();
  void touch(std::size_t begin, std::size_t end);
  void erase(std::size_t begin, std::size_t end);

  std::mt19937 random_;
  log::LogForm form_;
  std::vector<std::string> records_;
  std::string bytes_;
  std::vector<Unit> units_;
};

}  // namespace mpuevent::support

#endif

#ifndef MPUEVENT_LOG_FOLLOWING_LOGPART_H
#define MPUEVENT_LOG_FOLLOWING_LOGPART_H

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "log/following/FilePlace.h"

namespace mpuevent::log {

/// An open file, whatever becomes of its name.
class LogPart {
 public:
  LogPart() = default;
  explicit LogPart(const std::string& name);
  LogPart(LogPart&& other) noexcept;
  LogPart& operator=(LogPart&& other) noexcept;
  ~LogPart();

  bool isOpen() const { return descriptor_ >= 0; }
  /// Why it is not open, as an errno value.
  int error() const { return error_; }
  int descriptor() const { return descriptor_; }
  /// All zeros if it is not open.
  struct stat status() const;
  /// As ReadBytesAt.
  long readAt(std::uint64_t offset, unsigned char* to, std::size_t room) const;
  /// Its end, with the last bytes before that.
  FilePlace end() const;
  /// Whether the bytes before the place are those that it knows.
  bool holds(const FilePlace& place) const;

 private:
  /// Of the bytes in [from, to); nothing if not all are there.
  std::optional<std::uint64_t> digest(std::uint64_t from, std::uint64_t to) const;

  int descriptor_ = -1;
  int error_ = 0;
};

bool isSameFile(const struct stat& one, const struct stat& other);
bool isOlder(const struct stat& one, const struct stat& other);

/// What was rotated away from the file: those beside it that have its name with a date, a number or
/// "old" behind it, in the order in which they were last written to. Packed ones are left out.
std::vector<LogPart> rotatedParts(const std::string& name);

}  // namespace mpuevent::log

#endif
